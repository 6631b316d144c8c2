# Error reporting.
# the error state
list(APPEND QV_PORTABLE_SOURCES error/errorstate.cpp)
# error texts

# error presentation

