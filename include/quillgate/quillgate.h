#ifndef QUILLGATE_QUILLGATE_H
#define QUILLGATE_QUILLGATE_H

/* The whole interface of libquillgate. Each header can also be included alone. */
#include "quillgate/certlist.h"
#include "quillgate/dialogs.h"
#include "quillgate/toolkit.h"

#endif
