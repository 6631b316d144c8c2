# Library load and unload: the top layer, which may call every family.
list(APPEND QV_WINDOWS_SOURCES startup/startup_win.cpp)
