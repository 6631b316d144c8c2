# Number and text utilities.
list(APPEND QV_PORTABLE_SOURCES util/random.cpp)
