#!/bin/sh
# GIF size of a default Simple build: plain and supercompressed from lwmotio3
# render, each also after gifsicle -O3. Builds the renderer first if needed.
#
#   bench/gif_size.sh [BUILD_DIR]      (default build/native)
#
# The settings are the compiled-in ones (an empty settings file). The ratios
# compare our supercompressed file with the plain file optimised by gifsicle.
set -eu

root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build/native}
case $build in /*) ;; *) build=$(pwd)/$build ;; esac
renderer=$build/lwmotio3
if [ ! -x "$renderer" ]; then
  cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
  cmake --build "$build" -j2 --target lwmotio3_cli >/dev/null
fi
command -v gifsicle >/dev/null || { echo "gifsicle is not installed" >&2; exit 1; }

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
: >"$work/settings.ini"

render() {  # render OUTPUT SUPERCOMPRESS
  "$renderer" render --ini "$work/settings.ini" --effect Simple \
    --set "MainSupercompress=$2" -o "$1" 2>/dev/null
}
render "$work/plain.gif" 0
render "$work/super.gif" 1
gifsicle -O3 "$work/plain.gif" -o "$work/plain-O3.gif"
gifsicle -O3 "$work/super.gif" -o "$work/super-O3.gif"

size() { wc -c <"$1" | tr -d ' '; }
plain=$(size "$work/plain.gif")
super=$(size "$work/super.gif")
plainO3=$(size "$work/plain-O3.gif")
superO3=$(size "$work/super-O3.gif")
frames=$(gifsicle --info "$work/plain.gif" | sed -n 's/.* \([0-9][0-9]*\) images.*/\1/p')

ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.3f", a / b }'; }
echo "frames                                  $frames"
echo "plain                                   $plain bytes"
echo "plain, gifsicle -O3                     $plainO3 bytes"
echo "supercompressed                         $super bytes"
echo "supercompressed, gifsicle -O3           $superO3 bytes"
echo "supercompressed / plain                 $(ratio "$super" "$plain")"
echo "supercompressed / plain -O3             $(ratio "$super" "$plainO3")"
echo "supercompressed -O3 / supercompressed   $(ratio "$superO3" "$super")"
