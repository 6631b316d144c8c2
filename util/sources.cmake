# Number and text utilities.
# random numbers
list(APPEND QV_PORTABLE_SOURCES util/random.cpp)
# text and number readers, argument scanning, roman numerals
list(APPEND QV_PORTABLE_SOURCES util/text.cpp util/roman.cpp)

# sorting
list(APPEND QV_PORTABLE_SOURCES util/sort.cpp)

