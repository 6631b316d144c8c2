/*
 * What start-up does for the native test programs: the fake seam in its
 * known state, a resource module, and the error state reset to its default
 * modes.  Linked into every native test program.
 */
#include <gtest/gtest.h>

#include "../../base/globals.h"
#include "../../error/errorstate.h"
#include "fake_os.h"
#include "qvcore.h"

/* The resource library is a Windows service; the fake hands out the global. */
extern "C" HMODULE QVAPI ResourceGetHandle(void)
{
    return ResourceModule;
}

namespace {
class NativeStart : public ::testing::Environment {
public:
    void SetUp() override { fakeos::reset(); ResourceModule = reinterpret_cast<HMODULE>(0x10000); qvErrorReset(); }
};
const auto *const Registered = ::testing::AddGlobalTestEnvironment(new NativeStart);
} // namespace
