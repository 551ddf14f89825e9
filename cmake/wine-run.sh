#!/bin/sh
# Runs a Windows program of the build under Wine, in the build's own prefix
# (made by wine-prefix.sh). Used as CMAKE_CROSSCOMPILING_EMULATOR.
here=$(CDPATH= cd -- "$(dirname -- "$0")" && pwd)
: "${LW_WINEPREFIX:=$here/../build/windows/wineprefix}"
export WINEPREFIX="$LW_WINEPREFIX"
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml=}"
exec wine "$@"
