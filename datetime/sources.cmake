# Date and time engine.
# start of the engine
list(APPEND QV_PORTABLE_SOURCES datetime/dtstart.cpp)
# date-time record and calendar arithmetic
list(APPEND QV_PORTABLE_SOURCES datetime/calendar.cpp datetime/datetime.cpp)
# international settings
list(APPEND QV_PORTABLE_SOURCES datetime/intl.cpp datetime/words.cpp)
list(APPEND QV_WINDOWS_SOURCES datetime/intlstore_win.cpp)
# date-time to text
list(APPEND QV_PORTABLE_SOURCES datetime/dttext.cpp)

# text to date-time
list(APPEND QV_PORTABLE_SOURCES datetime/parse.cpp)

# month grid, week numbers and zodiac
list(APPEND QV_PORTABLE_SOURCES datetime/monthgrid.cpp datetime/zodiac.cpp)

