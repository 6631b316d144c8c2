# Error state, texts and presentation.
list(APPEND QV_PORTABLE_SOURCES error/errorstate.cpp)
