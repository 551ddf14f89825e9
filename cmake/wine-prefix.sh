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
[ -f "$stamp" ] && exit 0

mkdir -p "$WINEPREFIX"
wine wineboot --init >/dev/null 2>&1
key='HKCU\Software\Wine\Fonts\Replacements'
for pair in "Times New Roman=Liberation Serif" "Arial=Liberation Sans" "MS Sans Serif=Liberation Sans"; do
  wine reg add "$key" /v "${pair%%=*}" /t REG_SZ /d "${pair#*=}" /f >/dev/null 2>&1
done
wineserver -w
touch "$stamp"
