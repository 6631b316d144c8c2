/*
 * Start of the date and time engine.  The settings cache and word tables
 * arrive with the international settings; until then there is nothing to
 * prepare.
 */
#include "dtstart.h"

int qvDateTimeStart(HMODULE)
{
    return 1;
}
