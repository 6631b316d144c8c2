/*
 * The animated wait cursor.  Start-up loads its frames; the cursor itself
 * arrives with the wait functions.
 */
#include "qvcore.h"

extern "C" int QVAPI OSWaitInit(void)
{
    return 1;
}
