# Dialog helpers: tab strips and automatic dialog subclassing.
# the classic dialog-template walker
list(APPEND QV_PORTABLE_SOURCES dialogs/dlgtemplate.cpp)
# the library's own resources: the tab and check-box bitmaps
list(APPEND QV_WINDOWS_SOURCES resources/qviso32.rc)
# the tab strip and its labels, the dialog and button subclassing
list(APPEND QV_WINDOWS_SOURCES dialogs/tabs_win.cpp dialogs/subclass_win.cpp)
