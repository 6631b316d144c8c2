# The Windows build: the DLL, its import library, resources, demo and tests.
set(QV_BIN_DIR ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${QV_BIN_DIR})
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${QV_BIN_DIR})
set(QV_DEF ${CMAKE_SOURCE_DIR}/qviso32.def)

add_library(qviso32 SHARED ${QV_PORTABLE_SOURCES} ${QV_WINDOWS_SOURCES})
target_include_directories(qviso32 PRIVATE include resources)
target_compile_options(qviso32 PRIVATE ${QV_LIBRARY_FLAGS})
target_compile_definitions(qviso32 PRIVATE WIN32_LEAN_AND_MEAN NOMINMAX)
# The C++ runtime is linked in, so the DLL imports nothing but system DLLs.
target_link_options(qviso32 PRIVATE ${QV_DEF} -Wl,--kill-at -static -static-libgcc -static-libstdc++)
target_link_libraries(qviso32 PRIVATE user32 gdi32 advapi32 comdlg32)
set_target_properties(qviso32 PROPERTIES PREFIX "" LINK_DEPENDS ${QV_DEF}
  # The linker's own import library keeps the decorations --kill-at strips
  # and cannot be linked against; the real one is made by dlltool below.
  IMPORT_PREFIX "" IMPORT_SUFFIX ".linker-implib")

set(QV_IMPLIB ${CMAKE_BINARY_DIR}/lib/libqviso32.dll.a)
add_custom_command(OUTPUT ${QV_IMPLIB}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/lib
  COMMAND i686-w64-mingw32-dlltool -k -d ${QV_DEF} -D qviso32.dll -l ${QV_IMPLIB}
  DEPENDS ${QV_DEF} qviso32
  COMMENT "Import library for qviso32.dll")
add_custom_target(qviso32_implib ALL DEPENDS ${QV_IMPLIB})

# What a client module links against: the headers and the import library.
add_library(qviso32_client INTERFACE)
target_include_directories(qviso32_client INTERFACE ${CMAKE_SOURCE_DIR}/include)
target_link_libraries(qviso32_client INTERFACE ${QV_IMPLIB})
add_dependencies(qviso32_client qviso32_implib)
# The name a client of the installed kit links with (see cmake/qviso32Config.cmake.in).
add_library(qviso32::qviso32 ALIAS qviso32_client)

include(cmake/kit.cmake)

add_subdirectory(resources)
add_subdirectory(demo)
add_subdirectory(tests/wine)
add_subdirectory(bench)
add_subdirectory(tests/kit)
