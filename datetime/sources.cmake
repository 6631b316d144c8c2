# Date and time engine.
# start of the engine
list(APPEND QV_PORTABLE_SOURCES datetime/dtstart.cpp)
# date-time record and calendar arithmetic

# international settings

# date-time to text

# text to date-time

# month grid, week numbers and zodiac

