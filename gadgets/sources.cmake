# Gadgets: the custom window classes.
# registration, the instance-record convention, the shared drawing helpers
list(APPEND QV_PORTABLE_SOURCES gadgets/lcdcolour.cpp)
list(APPEND QV_WINDOWS_SOURCES gadgets/register_win.cpp gadgets/gadget_win.cpp gadgets/gadutil_win.cpp
     gadgets/colorpicker_win.cpp)
# the time bars' arithmetic and the list box gadget's text
list(APPEND QV_PORTABLE_SOURCES gadgets/timecalc.cpp gadgets/lbtext.cpp)
# the time bars
list(APPEND QV_WINDOWS_SOURCES gadgets/timebar_win.cpp gadgets/timetracker_win.cpp gadgets/timesetter_win.cpp)
# the list box gadget
list(APPEND QV_WINDOWS_SOURCES gadgets/qvlistbox_win.cpp)
# the virtual list boxes: portable engines, windows and painting over them
list(APPEND QV_PORTABLE_SOURCES gadgets/vlistcore.cpp gadgets/dvlistcore.cpp)
list(APPEND QV_WINDOWS_SOURCES gadgets/vlistbox_win.cpp gadgets/dvlistbox_win.cpp gadgets/vlistpaint_win.cpp
     gadgets/vlistshell_win.cpp)
# the colour picker's palette and names
list(APPEND QV_PORTABLE_SOURCES gadgets/colornames.cpp)
# the small gadgets, one file each
list(APPEND QV_WINDOWS_SOURCES gadgets/qvbitmap_win.cpp gadgets/stopwatch_win.cpp gadgets/datetracker_win.cpp
     gadgets/tumbler_win.cpp gadgets/supertext_win.cpp gadgets/qvcombo_win.cpp
     gadgets/page_win.cpp gadgets/fieldmapper_win.cpp)
# the grid of text cells
list(APPEND QV_WINDOWS_SOURCES gadgets/waffle_win.cpp)
# the gauge
list(APPEND QV_WINDOWS_SOURCES gadgets/gasgauge_win.cpp)
# the free-time finder: its arithmetic and its window
list(APPEND QV_PORTABLE_SOURCES gadgets/freetime.cpp)
list(APPEND QV_WINDOWS_SOURCES gadgets/freetime_win.cpp)
