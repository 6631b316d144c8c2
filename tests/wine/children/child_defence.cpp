/*
 * A child process for the defensive-ending tests: does what its argument
 * says and exits 0 if it is still alive afterwards.  The tests read its exit
 * code (255 = ended by the library).
 */
#include <string.h>

#include "qviso32.h"

static int QVCALLBACK vetoEnding(uint32_t, OSErrorInfo *) { return 0; }
static int QVCALLBACK allowEnding(uint32_t, OSErrorInfo *) { return 1; }

int main(int argc, char **argv)
{
    const char *what = argc > 1 ? argv[1] : "";
    if (!strcmp(what, "start")) {
        // Loading the library is the whole test.
    } else if (!strcmp(what, "defensive")) {
        OSErrorSetErrorInfo(RV_TreeBroken);
    } else if (!strcmp(what, "quit")) {
        DefenceQuit();
        OSErrorSetErrorInfo(RV_TreeBroken);
    } else if (!strcmp(what, "veto")) {
        OSErrorRegisterCallback(0, vetoEnding);
        OSErrorSetErrorInfo(RV_AssertionFailure);
    } else if (!strcmp(what, "allow")) {
        OSErrorRegisterCallback(0, allowEnding);
        OSErrorSetErrorInfo(RV_ListBroken);
    } else if (!strcmp(what, "failure")) {
        if (OSErrorSetErrorMode(RV_Failure, 0) != 1)
            return 3;
        OSErrorSetErrorInfo(RV_Failure, nullptr);
    } else {
        return 2;
    }
    return 0;
}
