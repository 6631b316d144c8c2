# Telephone dialing.
# cutting a number at the characters the device waits on
list(APPEND QV_PORTABLE_SOURCES telephony/dialsplit.cpp)
# loading the telephony library, dialing and hanging up
list(APPEND QV_WINDOWS_SOURCES telephony/telephony_win.cpp telephony/line_win.cpp)
