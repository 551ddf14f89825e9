# Reads the DLL's export and import tables with the mingw objdump and checks
# that the three entry points are exported under their exact names and that
# every imported DLL is one that Windows itself provides.
execute_process(COMMAND ${OBJDUMP} -p ${DLL} OUTPUT_VARIABLE dump RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "objdump failed on ${DLL}")
endif()

foreach(name DllMain PLUGIN16DoBuild PLUGIN16GetPluginParams)
  if(NOT dump MATCHES "\\][ \t]+${name}\n")
    message(FATAL_ERROR "export ${name} missing from ${DLL}")
  endif()
endforeach()

if(NOT dump MATCHES "Magic[ \t]+020b")
  message(FATAL_ERROR "${DLL} is not a 64-bit (PE32+) image")
endif()

set(system_dlls kernel32 user32 gdi32 gdiplus comctl32 comdlg32 shell32 ole32 oleaut32 advapi32 version msvcrt
    ucrtbase shlwapi)
string(REGEX MATCHALL "DLL Name: [^\n]+" imports "${dump}")
foreach(line ${imports})
  string(REGEX REPLACE "DLL Name: " "" dll "${line}")
  string(TOLOWER "${dll}" dll)
  string(REGEX REPLACE "\\.dll$" "" base "${dll}")
  if(base MATCHES "^api-ms-win-")
    continue()
  endif()
  list(FIND system_dlls ${base} known)
  if(known EQUAL -1)
    message(FATAL_ERROR "${DLL} imports ${dll}, which Windows does not provide")
  endif()
  message(STATUS "imports ${dll}")
endforeach()
