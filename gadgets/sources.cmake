# Gadgets: the custom window classes.
# registration, the instance-record convention, the shared drawing helpers
list(APPEND QV_PORTABLE_SOURCES gadgets/lcdcolour.cpp)
list(APPEND QV_WINDOWS_SOURCES gadgets/register_win.cpp gadgets/gadget_win.cpp gadgets/gadutil_win.cpp
     gadgets/colorpicker_win.cpp gadgets/placeholders_win.cpp)
# stand-ins until the time gadgets, the gauge and the list boxes bring their own
list(APPEND QV_WINDOWS_SOURCES gadgets/timegad_placeholders_win.cpp)
list(APPEND QV_WINDOWS_SOURCES gadgets/tabs_placeholders_win.cpp)
list(APPEND QV_WINDOWS_SOURCES gadgets/vlist_placeholders_win.cpp)
