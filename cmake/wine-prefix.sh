#!/bin/sh
# Makes the Wine prefix that the Windows tests run in: a fresh wineboot, and
# font replacements so that the faces the plug-in asks for resolve to the
# Liberation fonts (metric twins of Times New Roman and Arial).
set -e
here=$(CDPATH= cd -- "$(dirname -- "$0")" && pwd)
: "${LW_WINEPREFIX:=$here/../build/windows/wineprefix}"
export WINEPREFIX="$LW_WINEPREFIX"
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="
stamp="$WINEPREFIX/.lwmotio3-ready"
if [ ! -f "$stamp" ]; then
  mkdir -p "$WINEPREFIX"
  wine wineboot --init >/dev/null 2>&1
  key='HKCU\Software\Wine\Fonts\Replacements'
  for pair in "Times New Roman=Liberation Serif" "Arial=Liberation Sans" "MS Sans Serif=Liberation Sans"; do
    wine reg add "$key" /v "${pair%%=*}" /t REG_SZ /d "${pair#*=}" /f >/dev/null 2>&1
  done
  wineserver -w
  touch "$stamp"
fi

# Windows go to the X server when there is a display and to the null driver
# when there is none, so that tests which make windows also run headless.
graphics_stamp="$WINEPREFIX/.lwmotio3-graphics"
[ -f "$graphics_stamp" ] && exit 0
wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /t REG_SZ /d x11,null /f >/dev/null 2>&1
wineserver -w
touch "$graphics_stamp"
