# Installs the build into a fresh PREFIX and checks the tree holds exactly
# the kit: every public header, the two DLLs (qviso32.dll stripped, its
# debug information beside it), both import libraries, the .def, the CMake
# package and the pkg-config file; and that both DLLs carry the version.
file(REMOVE_RECURSE ${PREFIX})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX}
                OUTPUT_QUIET RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "cmake --install failed")
endif()

file(GLOB headers RELATIVE ${SOURCE} ${SOURCE}/include/*.h)
set(expected ${headers}
  bin/qviso32.dll bin/qviso32.dll.debug bin/XQ1C30EN.DLL
  lib/libqviso32.dll.a lib/qviso32.lib lib/qviso32.def
  lib/cmake/qviso32/qviso32Config.cmake lib/cmake/qviso32/qviso32ConfigVersion.cmake
  lib/pkgconfig/qviso32.pc)
file(GLOB_RECURSE found RELATIVE ${PREFIX} ${PREFIX}/*)
list(SORT expected)
list(SORT found)
if(NOT found STREQUAL expected)
  set(missing ${expected})
  list(REMOVE_ITEM missing ${found})
  set(extra ${found})
  list(REMOVE_ITEM extra ${expected})
  message(FATAL_ERROR "install tree differs\n  missing: ${missing}\n  unexpected: ${extra}")
endif()

# The shipped DLL has no debug sections; the .debug file has them.
string(REGEX REPLACE "objcopy$" "objdump" objdump "${OBJDUMP}")
foreach(pair "qviso32.dll|0" "qviso32.dll.debug|1")
  string(REPLACE "|" ";" pair "${pair}")
  list(GET pair 0 file)
  list(GET pair 1 want)
  execute_process(COMMAND ${objdump} -h ${PREFIX}/bin/${file} OUTPUT_VARIABLE sections)
  string(FIND "${sections}" ".debug_info" at)
  if((at EQUAL -1) EQUAL want)
    message(FATAL_ERROR "bin/${file}: debug sections present is not ${want}")
  endif()
endforeach()

foreach(dll qviso32.dll XQ1C30EN.DLL)
  file(STRINGS ${PREFIX}/bin/${dll} texts ENCODING UTF-16LE REGEX "^(${VERSION}|${dll})$")
  list(REMOVE_DUPLICATES texts)
  list(LENGTH texts found)
  if(NOT found EQUAL 2)
    message(FATAL_ERROR "bin/${dll}: no version resource with ${VERSION} and its file name")
  endif()
endforeach()
file(STRINGS ${PREFIX}/lib/pkgconfig/qviso32.pc pc_version REGEX "^Version: ${VERSION}$")
if(NOT pc_version)
  message(FATAL_ERROR "qviso32.pc does not carry version ${VERSION}")
endif()
message(STATUS "install tree of ${VERSION} complete")
