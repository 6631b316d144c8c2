# Isolation core: start-up, settings, files, formatting, wait cursor, timers, trees.
list(APPEND QV_PORTABLE_SOURCES core/globals.cpp)
list(APPEND QV_WINDOWS_SOURCES
    core/os_win.cpp
    core/resource.cpp
    core/startup.cpp
    core/profile.cpp
    core/waitcursor.cpp)
