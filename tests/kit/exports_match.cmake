# Checks that every export in the .def has a matching declaration in the
# public headers and the other way round: a stdcall export Name@N must be
# declared QVAPI with N bytes of arguments, an undecorated one variadic
# QVCDECL.  Writes a C++ file of static checks to OUT and compiles it with CXX.
file(STRINGS ${DEF} lines REGEX "^[ \t]+[A-Za-z_]")
set(checks "")
set(def_names "")
foreach(line ${lines})
  string(STRIP "${line}" entry)
  if(entry MATCHES "^([A-Za-z_][A-Za-z0-9_]*)@([0-9]+)$")
    string(APPEND checks "static_assert(qv_bytes(&${CMAKE_MATCH_1}) == ${CMAKE_MATCH_2}, \"${entry}\");\n")
    list(APPEND def_names ${CMAKE_MATCH_1})
  elseif(entry MATCHES "^([A-Za-z_][A-Za-z0-9_]*)$")
    string(APPEND checks "static_assert(qv_variadic(&${entry}), \"${entry} is variadic cdecl\");\n")
    list(APPEND def_names ${entry})
  else()
    message(FATAL_ERROR "unexpected .def entry '${entry}'")
  endif()
endforeach()

# Declarations: QVAPI or QVCDECL right before the function's name.
file(GLOB headers ${INCLUDE}/*.h)
set(undeclared_exports "")
foreach(header ${headers})
  file(READ ${header} text)
  # The macros' own definitions (QVAPI as __attribute__((stdcall)) natively) are not declarations.
  string(REGEX REPLACE "#[ \t]*define[^\n]*" "" text "${text}")
  string(REGEX MATCHALL "(QVAPI|QVCDECL)[ \t\r\n]+[A-Za-z_][A-Za-z0-9_]*[ \t]*\\(" declarations "${text}")
  foreach(declaration ${declarations})
    string(REGEX REPLACE "^(QVAPI|QVCDECL)[ \t\r\n]+([A-Za-z_][A-Za-z0-9_]*).*" "\\2" name "${declaration}")
    list(FIND def_names ${name} at)
    if(at EQUAL -1)
      list(APPEND undeclared_exports ${name})
    endif()
  endforeach()
endforeach()
if(undeclared_exports)
  message(FATAL_ERROR "declared in include/ but not exported by qviso32.def: ${undeclared_exports}")
endif()

file(WRITE ${OUT} "// Generated from qviso32.def by exports_match.cmake.
#include \"qviso32.h\"
template <class R, class... A> constexpr int qv_bytes(R(__stdcall *)(A...))
{
    return (0 + ... + int((sizeof(A) + 3) & ~3u));
}
template <class R, class... A> constexpr bool qv_variadic(R(__cdecl *)(A..., ...)) { return true; }
${checks}")
execute_process(COMMAND ${CXX} -std=c++20 -fsyntax-only -I ${INCLUDE} ${OUT}
                RESULT_VARIABLE failed ERROR_VARIABLE errors)
if(failed)
  message(FATAL_ERROR "the .def and the declarations differ:\n${errors}")
endif()
list(LENGTH def_names count)
message(STATUS "${count} exports match their declarations")
