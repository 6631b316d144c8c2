/*
 * A child process for the defensive endings only the real DLL can show: does
 * what its argument says and exits 0 if it is still alive afterwards.  The
 * tests read its exit code (255 = ended by the library); the rules that
 * decide an ending are tested natively, as death tests.
 */
#include <string.h>

#include "qviso32.h"

static int QVCALLBACK vetoEnding(uint32_t, OSErrorInfo *) { return 0; }

int main(int argc, char **argv)
{
    const char *what = argc > 1 ? argv[1] : "";
    if (!strcmp(what, "start")) {
        // Loading the library is the whole test.
    } else if (!strcmp(what, "defensive")) {
        OSErrorSetErrorInfo(RV_TreeBroken);
    } else if (!strcmp(what, "veto")) {
        OSErrorRegisterCallback(0, vetoEnding);
        OSErrorSetErrorInfo(RV_AssertionFailure);
    } else {
        return 2;
    }
    return 0;
}
