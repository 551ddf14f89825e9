#!/bin/sh
# The whole default render, from process start to file written, against the
# reduction and GIF writing alone of the same frames by FFmpeg (palettegen,
# then paletteuse with Floyd-Steinberg) and ImageMagick (-colors 256 with
# Floyd-Steinberg), all in the same run. Each is run RUNS times (default 7);
# the median wall time and the median processor time (user + system) are
# shown, and the render's time as a ratio to each tool's.
#
#   bench/render_vs_tools.sh [BUILD_DIR [RUNS]]      (default build/native, 7)
#
# Below 1 the render, reduction and encoding together take less time than
# the tool takes for reduction and encoding alone.
#
# With BASELINE naming another build's lwmotio3 (an older commit built in a
# worktree), its default render is timed in the same run and the speed-up
# shown:  BASELINE=/tmp/old/build/native/lwmotio3 bench/render_vs_tools.sh
set -eu

root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build/native}
runs=${2:-7}
case $build in /*) ;; *) build=$(pwd)/$build ;; esac
renderer=$build/lwmotio3
[ -x "$renderer" ] || { echo "build $renderer first" >&2; exit 1; }
for tool in ffmpeg convert; do
  command -v $tool >/dev/null || { echo "$tool is not installed" >&2; exit 1; }
done

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
: >"$work/settings.ini"
export XDG_CONFIG_HOME="$work/config"
cd "$work"
"$renderer" render --ini settings.ini --frames-dir frames 2>/dev/null
delay=$(sed -n '1s/.* //p' frames/index.txt)
rate=$(awk -v d="$delay" 'BEGIN { printf "%g", 100 / d }')

# median_times REPEATS COMMAND...: "wall cpu" in milliseconds, the medians of
# the runs. Each run times the command REPEATS times in a row and divides, so
# that the timer's hundredths of a second do not swamp short commands.
median_times() {
  repeats=$1
  shift
  : >times.txt
  i=0
  while [ $i -lt "$runs" ]; do
    /usr/bin/time -f "%e %U %S" -o one.txt sh -c '
      n=$1; shift; while [ "$n" -gt 0 ]; do "$@" >/dev/null 2>&1; n=$((n - 1)); done' timed "$repeats" "$@"
    awk -v n="$repeats" '{ printf "%.1f %.1f\n", $1 * 1000 / n, ($2 + $3) * 1000 / n }' one.txt >>times.txt
    i=$((i + 1))
  done
  wall=$(cut -d' ' -f1 times.txt | sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }')
  cpu=$(cut -d' ' -f2 times.txt | sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }')
  echo "$wall $cpu"
}

ours=$(median_times 10 "$renderer" render --ini settings.ini -o ours.gif)
[ -z "${BASELINE:-}" ] || baseline=$(median_times 10 "$BASELINE" render --ini settings.ini -o baseline.gif)
plain=$(median_times 10 "$renderer" render --ini settings.ini --plain -o plain.gif)
ffmpeg=$(median_times 3 ffmpeg -v error -y -framerate "$rate" -i frames/frame-%04d.png \
  -filter_complex "[0:v]split[a][b];[a]palettegen[p];[b][p]paletteuse=dither=floyd_steinberg" ffmpeg.gif)
magick=$(median_times 1 convert frames/frame-*.png -colors 256 -dither FloydSteinberg magick.gif)

ratio() { awk -v a="$1" -v b="$2" 'BEGIN { if (b > 0) printf "%.2f", a / b; else print "-" }'; }
line() {  # NAME "WALL CPU"
  set -- "$1" $2
  printf '%-34s %8s ms %8s ms\n' "$1" "$2" "$3"
}
printf '%-34s %11s %11s\n' "" "wall" "processor"
line "lwmotio3 render (optimised)" "$ours"
line "lwmotio3 render --plain" "$plain"
line "ffmpeg palettegen + paletteuse" "$ffmpeg"
line "convert -colors 256 -dither FS" "$magick"
set -- $ours
o_wall=$1 o_cpu=$2
set -- $ffmpeg
echo "render / ffmpeg:   wall $(ratio "$o_wall" "$1"), processor $(ratio "$o_cpu" "$2")"
set -- $magick
echo "render / convert:  wall $(ratio "$o_wall" "$1"), processor $(ratio "$o_cpu" "$2")"
if [ -n "${BASELINE:-}" ]; then
  line "baseline render" "$baseline"
  set -- $baseline
  echo "speed-up over the baseline: wall $(ratio "$1" "$o_wall"), processor $(ratio "$2" "$o_cpu")"
fi
echo "sizes: ours $(wc -c <ours.gif), plain $(wc -c <plain.gif), ffmpeg $(wc -c <ffmpeg.gif), convert $(wc -c <magick.gif) bytes"
