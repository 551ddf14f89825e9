# Tools that make assets at build time run on the build machine, so they are
# built with its own compiler, not with a cross compiler.
find_program(LW_HOST_CXX NAMES g++ c++ REQUIRED)
set(LW_TOOL_DIR ${CMAKE_BINARY_DIR}/tools)
file(MAKE_DIRECTORY ${LW_TOOL_DIR})

# lw_host_tool(<name> [extra sources]): builds tools/<name>.cpp, with any
# portable sources of the tree it shares data with, into ${LW_TOOL_DIR}/<name>.
# zlib is linked for the tools that compress. Use it from the directory whose
# custom commands run the tool.
function(lw_host_tool name)
  set(sources ${CMAKE_SOURCE_DIR}/tools/${name}.cpp)
  foreach(extra ${ARGN})
    list(APPEND sources ${CMAKE_SOURCE_DIR}/${extra})
  endforeach()
  add_custom_command(OUTPUT ${LW_TOOL_DIR}/${name}
    COMMAND ${LW_HOST_CXX} -std=c++20 -O2 -Wall -Wextra -ffp-contract=off -I${CMAKE_SOURCE_DIR}
            -o ${LW_TOOL_DIR}/${name} ${sources} -lz
    DEPENDS ${sources}
    COMMENT "Building the build-machine tool ${name}"
    VERBATIM)
endfunction()
