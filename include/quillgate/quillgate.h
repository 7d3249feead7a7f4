#ifndef QUILLGATE_QUILLGATE_H
#define QUILLGATE_QUILLGATE_H

/**
 * @mainpage The interface for host programs
 *
 * - @ref dialogs "Dialogs": the certificate dialog, in one call
 * - @ref certlist "Certificate list service": the same without a window
 * - @ref toolkit "Toolkit access": the flat functions over the cryptographic library
 * - @ref records "Records and their values"
 * - @ref codes "Return codes"
 *
 * What holds for all of them stands in quillgate/api.h.
 */

/**
 * @file
 * The whole interface of libquillgate. Each header can also be included alone.
 */

#include "quillgate/certlist.h"
#include "quillgate/dialogs.h"
#include "quillgate/toolkit.h"

#endif
