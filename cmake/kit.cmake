# What a module programmer gets: the version resources, the MSVC-format import
# library, the shipped (stripped) DLL with its debug information beside it,
# and the install tree with its CMake package and pkg-config file.
# Included by windows.cmake after the qviso32 target is defined.

# qv_version_rc(<out var> <file name> <description>): a VERSIONINFO script for
# one shipped module, carrying the project's version.
function(qv_version_rc out filename description)
  set(QV_RC_FILENAME "${filename}")
  get_filename_component(QV_RC_INTERNAL "${filename}" NAME_WE)
  set(QV_RC_DESCRIPTION "${description}")
  set(rc "${CMAKE_BINARY_DIR}/generated/${QV_RC_INTERNAL}_version.rc")
  configure_file("${CMAKE_SOURCE_DIR}/resources/version.rc.in" "${rc}" @ONLY)
  set(${out} "${rc}" PARENT_SCOPE)
endfunction()

enable_language(RC)
qv_version_rc(QV_DLL_VERSION_RC qviso32.dll "qviso32 platform isolation library")
target_sources(qviso32 PRIVATE ${QV_DLL_VERSION_RC})

# The MSVC-format import library, written by llvm's dlltool from the same
# .def with the decorations stripped (-k), as the DLL exports the names.
find_program(QV_LLVM_DLLTOOL NAMES llvm-dlltool llvm-dlltool-14 REQUIRED)
set(QV_MSVC_IMPLIB ${CMAKE_BINARY_DIR}/lib/qviso32.lib)
add_custom_command(OUTPUT ${QV_MSVC_IMPLIB}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/lib
  COMMAND ${QV_LLVM_DLLTOOL} -m i386 -k -d ${QV_DEF} -D qviso32.dll -l ${QV_MSVC_IMPLIB}
  DEPENDS ${QV_DEF}
  COMMENT "MSVC-format import library for qviso32.dll")
add_custom_target(qviso32_msvc_implib ALL DEPENDS ${QV_MSVC_IMPLIB})

# The shipped DLL is the tested one with its debug information moved out:
# ship/qviso32.dll (stripped, with a debug link) and ship/qviso32.dll.debug.
string(REGEX REPLACE "gcc(-posix)?$" "objcopy" QV_OBJCOPY_GUESS "${CMAKE_C_COMPILER}")
find_program(QV_OBJCOPY NAMES ${QV_OBJCOPY_GUESS} i686-w64-mingw32-objcopy REQUIRED)
set(QV_SHIP_DIR ${CMAKE_BINARY_DIR}/ship)
file(MAKE_DIRECTORY ${QV_SHIP_DIR})
add_custom_command(OUTPUT ${QV_SHIP_DIR}/qviso32.dll ${QV_SHIP_DIR}/qviso32.dll.debug
  COMMAND ${QV_OBJCOPY} --only-keep-debug $<TARGET_FILE:qviso32> ${QV_SHIP_DIR}/qviso32.dll.debug
  COMMAND ${QV_OBJCOPY} --strip-all --add-gnu-debuglink=qviso32.dll.debug
          $<TARGET_FILE:qviso32> ${QV_SHIP_DIR}/qviso32.dll
  WORKING_DIRECTORY ${QV_SHIP_DIR}
  DEPENDS qviso32
  COMMENT "Stripping qviso32.dll for shipping")
add_custom_target(qviso32_ship ALL DEPENDS ${QV_SHIP_DIR}/qviso32.dll)

# The install tree: cmake --install build/win --prefix DIR.
file(GLOB QV_PUBLIC_HEADERS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/include/*.h)
install(FILES ${QV_PUBLIC_HEADERS} DESTINATION include)
install(FILES ${QV_SHIP_DIR}/qviso32.dll ${QV_BIN_DIR}/XQ1C30EN.DLL DESTINATION bin)
install(FILES ${QV_SHIP_DIR}/qviso32.dll.debug DESTINATION bin COMPONENT debug)
install(FILES ${QV_IMPLIB} ${QV_MSVC_IMPLIB} ${QV_DEF} DESTINATION lib)

include(CMakePackageConfigHelpers)
set(QV_PKG_DIR ${CMAKE_BINARY_DIR}/package)
configure_file(${CMAKE_SOURCE_DIR}/cmake/qviso32Config.cmake.in ${QV_PKG_DIR}/qviso32Config.cmake @ONLY)
write_basic_package_version_file(${QV_PKG_DIR}/qviso32ConfigVersion.cmake
  VERSION ${PROJECT_VERSION} COMPATIBILITY SameMinorVersion ARCH_INDEPENDENT)
configure_file(${CMAKE_SOURCE_DIR}/cmake/qviso32.pc.in ${QV_PKG_DIR}/qviso32.pc @ONLY)
install(FILES ${QV_PKG_DIR}/qviso32Config.cmake ${QV_PKG_DIR}/qviso32ConfigVersion.cmake
  DESTINATION lib/cmake/qviso32)
install(FILES ${QV_PKG_DIR}/qviso32.pc DESTINATION lib/pkgconfig)
