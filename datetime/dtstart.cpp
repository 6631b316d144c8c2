/*
 * Start of the date and time engine: the international settings cache is
 * filled and the word tables are loaded.  A word that cannot be loaded makes
 * the library's start fail: dates could not be shown or read without it.
 */
#include "dtstart.h"

#include "intl.h"
#include "words.h"

int qvDateTimeStart()
{
    qvIntlRead();
    return words::load() ? 1 : 0;
}
