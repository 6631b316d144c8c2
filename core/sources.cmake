# Isolation core.
# start-up, instances and the resource library
list(APPEND QV_PORTABLE_SOURCES core/globals.cpp)
list(APPEND QV_WINDOWS_SOURCES core/os_win.cpp core/resource.cpp core/startup.cpp)
# profile settings
list(APPEND QV_WINDOWS_SOURCES core/profile.cpp)
# files and locking

# formatting and memory
list(APPEND QV_PORTABLE_SOURCES core/format.cpp)

# wait cursor, timers and messages
list(APPEND QV_WINDOWS_SOURCES core/waitcursor.cpp core/message.cpp)
# tree links

