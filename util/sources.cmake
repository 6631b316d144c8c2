# Number and text utilities.
# random numbers
list(APPEND QV_PORTABLE_SOURCES util/random.cpp)
# text and number readers, argument scanning, roman numerals

# sorting

