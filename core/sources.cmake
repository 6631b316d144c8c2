# Isolation core.
# instances and the resource library
list(APPEND QV_WINDOWS_SOURCES core/instance_win.cpp core/resource_win.cpp)
# locale settings
list(APPEND QV_WINDOWS_SOURCES core/locale_win.cpp)
# profile settings
list(APPEND QV_WINDOWS_SOURCES core/profile_win.cpp)
# files and locking
list(APPEND QV_PORTABLE_SOURCES core/filecopy.cpp)
list(APPEND QV_WINDOWS_SOURCES core/files_win.cpp)

# formatting and memory
list(APPEND QV_PORTABLE_SOURCES core/format.cpp core/loadformat.cpp)

# wait cursor, timers and messages
list(APPEND QV_WINDOWS_SOURCES core/waitcursor_win.cpp core/message_win.cpp)
# tree links
list(APPEND QV_PORTABLE_SOURCES core/tree.cpp)

# locale queries
list(APPEND QV_WINDOWS_SOURCES core/localeinfo_win.cpp)
# resource texts, help and dialogs from the resource library
list(APPEND QV_WINDOWS_SOURCES core/resstring_win.cpp core/help_win.cpp core/dialogbox_win.cpp)
