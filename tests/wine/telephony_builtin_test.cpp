/*
 * Telephony over the system's own telephony library, which here starts no
 * line application (it reports success and hands nothing back): telephony
 * ends up disabled and dialing is a silent success.
 */
#include <gtest/gtest.h>

#include "boxhook.h"
#include "qviso32.h"

TEST(TelephonyBuiltin, ALibraryThatStartsNoLineApplicationDisablesTelephony)
{
    ASSERT_TRUE(IsTelephonyEnabled()) << "start-up loads the system's library";
    ASSERT_TRUE(boxhook::start());
    TelephonyClientStart(nullptr);
    EXPECT_FALSE(IsTelephonyEnabled());
    EXPECT_EQ(Telephony_GetNumDevices(), 0u);
    EXPECT_TRUE(Telephony_DialNumber(nullptr, 0xFFFFFFFF, 0, "555W1234", nullptr));
    EXPECT_EQ(Telephony_HangupCall(nullptr, 0), 1);
    EXPECT_TRUE(boxhook::Seen.empty());
    boxhook::stop();
}
