# Tests of the Windows build that look at the built files themselves.

# The DLL must export the entry points by name and import only system DLLs.
add_test(NAME dll_exports_and_imports
  COMMAND ${CMAKE_COMMAND} -DDLL=$<TARGET_FILE:lwmotio3> -DOBJDUMP=${LW_MINGW_TRIPLE}-objdump
          -P ${CMAKE_CURRENT_SOURCE_DIR}/check_dll.cmake)
