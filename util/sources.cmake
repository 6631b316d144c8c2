# Number and text utilities.
# random numbers
list(APPEND QV_PORTABLE_SOURCES util/random.cpp)
# text and number readers, argument scanning, roman numerals
list(APPEND QV_PORTABLE_SOURCES util/text.cpp util/roman.cpp)

# sorting
list(APPEND QV_PORTABLE_SOURCES util/sort.cpp)


# dialog value validators
list(APPEND QV_PORTABLE_SOURCES util/validate.cpp)
list(APPEND QV_WINDOWS_SOURCES util/validate_win.cpp)
# program launch
list(APPEND QV_PORTABLE_SOURCES util/launch.cpp)
list(APPEND QV_WINDOWS_SOURCES util/launch_win.cpp)
# status boxes
list(APPEND QV_WINDOWS_SOURCES util/statusbox_win.cpp)
# indented and turned text drawing
list(APPEND QV_WINDOWS_SOURCES util/textdraw_win.cpp)
