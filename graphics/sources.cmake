# Graphics: masked blits, bitmap and frame helpers, regions, DIBs and metafiles.
list(APPEND QV_PORTABLE_SOURCES graphics/halfintensity.cpp graphics/dibcodec.cpp graphics/wmfcodec.cpp)
list(APPEND QV_WINDOWS_SOURCES graphics/threestep_win.cpp graphics/maskblt_win.cpp graphics/frames_win.cpp
     graphics/regions_win.cpp graphics/dib_win.cpp graphics/metafile_win.cpp)
# films: frame animation over the masked blit and a timer
list(APPEND QV_WINDOWS_SOURCES graphics/film_win.cpp)
