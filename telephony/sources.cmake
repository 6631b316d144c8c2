# Telephone dialing.
list(APPEND QV_WINDOWS_SOURCES telephony/telephony_win.cpp)
