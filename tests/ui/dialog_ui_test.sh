#!/bin/sh
# The dialog under Wine on a virtual screen: the driver runs lwhost.exe twice,
# once for Test and Build and once for Cancel; screenshots are taken while the
# tile dialog and while the main dialog are open; the headless renderer renders the Build's settings, and the
# GIFs are compared frame for frame.
#   dialog_ui_test.sh WINE_RUN BUILD_DIR SOURCE_DIR OUT_DIR   (on an X display)
set -u
wine_run=$1
build=$2
source=$3
out=$4
windows_path() { printf 'Z:%s' "$(printf '%s' "$1" | tr / '\\')"; }

# The system's Python, which has the imaging library.
python=/usr/bin/python3
[ -x "$python" ] || python=python3

rm -rf "$out"
mkdir -p "$out"
win_out=$(windows_path "$out")
host=$(windows_path "$build/lwhost.exe")
plugin=$(windows_path "$build/lwmotio3.dll")

timeout 90 "$wine_run" "$build/dialog_driver.exe" build "$host" "$plugin" "$win_out" > "$out/driver_build.txt" 2>&1 &
driver=$!
# shoot NAME PICTURE: waits for NAME.ready, takes the screen, answers NAME.done.
shoot() {
  waited=0
  while [ ! -f "$out/$1.ready" ] && [ $waited -lt 600 ] && kill -0 $driver 2>/dev/null; do
    sleep 0.1
    waited=$((waited + 1))
  done
  [ -f "$out/$1.ready" ] && import -window root "$out/$2"
  touch "$out/$1.done"
}
shoot tiles tiles.png
shoot shot dialog.png
wait $driver
build_status=$?

# The renderer reads the fills the Build run saved; the cancel run puts the
# user's own back at its end.
timeout 90 "$wine_run" "$build/lwmotio3.exe" render --ini "$win_out\\build.ini" -o "$win_out\\render.gif" \
  > "$out/render.txt" 2>&1
render_status=$?

timeout 90 "$wine_run" "$build/dialog_driver.exe" cancel "$host" "$plugin" "$win_out" > "$out/driver_cancel.txt" 2>&1
cancel_status=$?

cat "$out/driver_build.txt" "$out/driver_cancel.txt" "$out/host.log"
"$python" "$source/tests/ui/check_dialog_run.py" "$out"
check_status=$?
echo "driver build: $build_status, driver cancel: $cancel_status, render: $render_status, checks: $check_status"
[ $build_status -eq 0 ] && [ $cancel_status -eq 0 ] && [ $render_status -eq 0 ] && [ $check_status -eq 0 ]
