#include "Resources.h"

#include <QtCore/QtGlobal>

void initResources()
{
    Q_INIT_RESOURCE(quillgate);
}
