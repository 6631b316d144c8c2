# The bottom layer: the operating-system seam and the library-wide globals.
# Nothing here includes a family header.
list(APPEND QV_PORTABLE_SOURCES base/globals.cpp)
list(APPEND QV_WINDOWS_SOURCES base/os_win.cpp)
