# Date and time engine.
list(APPEND QV_PORTABLE_SOURCES datetime/dtstart.cpp)
