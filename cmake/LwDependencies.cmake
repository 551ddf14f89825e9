# Libraries the core links. Native: zlib, FreeType, fontconfig. Windows: zlib
# (static, from libz-mingw-w64-dev) and the system's own DLLs.
function(lw_link_core_dependencies target)
  if(WIN32)
    find_library(LW_ZLIB_STATIC NAMES libz.a REQUIRED)
    target_link_libraries(${target} PUBLIC ${LW_ZLIB_STATIC}
      gdiplus version comctl32 comdlg32 shell32 ole32 gdi32 user32 kernel32 advapi32)
  else()
    find_package(ZLIB REQUIRED)
    find_package(Freetype REQUIRED)
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(FONTCONFIG REQUIRED IMPORTED_TARGET fontconfig)
    target_link_libraries(${target} PUBLIC ZLIB::ZLIB Freetype::Freetype PkgConfig::FONTCONFIG)
  endif()
endfunction()
