#!/bin/sh
# GIF sizes from lwmotio3 render: for the built-in defaults (plain and
# supercompressed builds) and for every built effect on its defaults, the
# plain file (--plain), the optimised file the renderer writes by default, and
# the plain file after gifsicle -O3. Builds the renderer first if needed.
#
#   bench/gif_size.sh [BUILD_DIR]      (default build/native)
#
# The settings are the compiled-in ones (an empty settings file). The last
# column is the optimised file's size over gifsicle's: at most 1 is the aim.
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
export XDG_CONFIG_HOME="$work/config"

size() { wc -c <"$1" | tr -d ' '; }

# row NAME RENDER-OPTIONS...: one line of the table.
row() {
  name=$1
  shift
  if ! "$renderer" render -q --ini "$work/settings.ini" "$@" --plain -o "$work/plain.gif" </dev/null ||
    ! "$renderer" render -q --ini "$work/settings.ini" "$@" -o "$work/optimised.gif" </dev/null; then
    printf '%-26s %s\n' "$name" "(the render failed)"
    return 0
  fi
  gifsicle -O3 "$work/plain.gif" -o "$work/plain-O3.gif"
  plain=$(size "$work/plain.gif")
  optimised=$(size "$work/optimised.gif")
  o3=$(size "$work/plain-O3.gif")
  printf '%-26s %9s %10s %12s %9s\n' "$name" "$plain" "$optimised" "$o3" \
    "$(awk -v a="$optimised" -v b="$o3" 'BEGIN { printf "%.3f", a / b }')"
}

printf '%-26s %9s %10s %12s %9s\n' "build" "plain" "optimised" "gifsicle -O3" "opt/O3"
row "defaults"
row "defaults, supercompressed" --set MainSupercompress=1
"$renderer" effects | grep -v "not built yet" | while read -r number name; do
  row "$name" --effect "$number"
done
