# Tests of the Windows build that look at the built files themselves.

# The DLL must export the entry points by name and import only system DLLs.
add_test(NAME dll_exports_and_imports
  COMMAND ${CMAKE_COMMAND} -DDLL=$<TARGET_FILE:lwmotio3> -DOBJDUMP=${LW_MINGW_TRIPLE}-objdump
          -P ${CMAKE_CURRENT_SOURCE_DIR}/check_dll.cmake)

# The plug-in tests the process that loads it by the process's version record.
# Each probe host carries a different record; the expected exit code says
# whether the plug-in must load or refuse.
function(lw_host_probe name company file_version expected)
  set(target host_probe_${name})
  if(company STREQUAL "")
    add_executable(${target} ${CMAKE_CURRENT_SOURCE_DIR}/hosts/host_probe.cpp)
  else()
    set(LW_PROBE_COMPANY "${company}")
    set(LW_PROBE_FILE_VERSION "${file_version}")
    configure_file(${CMAKE_CURRENT_SOURCE_DIR}/hosts/host_version.rc.in ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc @ONLY)
    add_executable(${target} ${CMAKE_CURRENT_SOURCE_DIR}/hosts/host_probe.cpp ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  endif()
  add_dependencies(${target} lwmotio3)
  add_test(NAME host_check_${name} COMMAND ${target} Z:$<TARGET_FILE:lwmotio3>)
  set_tests_properties(host_check_${name} PROPERTIES FIXTURES_REQUIRED wine)
  set_tests_properties(host_check_${name} PROPERTIES PASS_REGULAR_EXPRESSION "^${expected}")
endfunction()

lw_host_probe(maker "Brindle Foundries" "16.0.0.0" loaded)
lw_host_probe(minor_version "Brindle Foundries" "16.2" loaded)
lw_host_probe(no_record "" "" loaded)
lw_host_probe(company_case "brindle foundries" "16.0.0.0" refused)
lw_host_probe(other_company "Other Foundries" "16.0.0.0" refused)
lw_host_probe(version_160 "Brindle Foundries" "160" refused)
lw_host_probe(version_15 "Brindle Foundries" "15.9" refused)
