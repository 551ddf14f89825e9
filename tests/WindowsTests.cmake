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

# The main dialog under Wine on a virtual screen, driven from a second
# process: text, effect, Test, Build and Cancel, the codes lwhost.exe heard,
# the settings file written at close, and the Build's GIF against the
# headless renderer's. Leaves ui/dialog.png, a screenshot of the open dialog.
add_executable(dialog_driver ${CMAKE_CURRENT_SOURCE_DIR}/ui/dialog_driver.cpp)
target_link_libraries(dialog_driver PRIVATE shell32)
set_target_properties(dialog_driver PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
add_dependencies(dialog_driver lwmotio3 lwhost_exe lwmotio3_cli)
find_program(LW_XVFB_RUN xvfb-run)
if(LW_XVFB_RUN)
  add_test(NAME dialog_ui
    COMMAND ${LW_XVFB_RUN} -a -s "-screen 0 1024x768x24"
            sh ${CMAKE_CURRENT_SOURCE_DIR}/ui/dialog_ui_test.sh ${CMAKE_SOURCE_DIR}/cmake/wine-run.sh
               ${CMAKE_BINARY_DIR} ${CMAKE_SOURCE_DIR} ${CMAKE_BINARY_DIR}/ui)
  set_tests_properties(dialog_ui PROPERTIES FIXTURES_REQUIRED wine TIMEOUT 300 RUN_SERIAL TRUE)
endif()
