# Error reporting.
# the error state
list(APPEND QV_PORTABLE_SOURCES error/errorstate.cpp)
# error texts
list(APPEND QV_PORTABLE_SOURCES error/errortext.cpp error/loadtext.cpp)
list(APPEND QV_WINDOWS_SOURCES error/errortext_win.cpp)

# error presentation
list(APPEND QV_PORTABLE_SOURCES error/errorcallbacks.cpp error/errormessage.cpp)
list(APPEND QV_WINDOWS_SOURCES error/presentation_win.cpp)

