# Gadgets: the custom window classes.
# registration, the instance-record convention, the shared drawing helpers
list(APPEND QV_PORTABLE_SOURCES gadgets/lcdcolour.cpp gadgets/vlistcore.cpp gadgets/dvlistcore.cpp)
list(APPEND QV_WINDOWS_SOURCES gadgets/register_win.cpp gadgets/gadget_win.cpp gadgets/gadutil_win.cpp
     gadgets/colorpicker_win.cpp gadgets/placeholders_win.cpp)
# the virtual list boxes: windows and painting over the engines
list(APPEND QV_WINDOWS_SOURCES gadgets/vlistbox_win.cpp gadgets/dvlistbox_win.cpp gadgets/vlistpaint_win.cpp)
# stand-ins until the time gadgets and the dialog tabs bring their own
list(APPEND QV_WINDOWS_SOURCES gadgets/timegad_placeholders_win.cpp)
list(APPEND QV_WINDOWS_SOURCES gadgets/tabs_placeholders_win.cpp)
