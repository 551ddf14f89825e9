#!/bin/sh
# Where the renderer's GIF goes: through a symbolic link (the link stays),
# to standard output, to a full device (one line, exit 1), and not over the
# file that was there when the run fails, nor a staging folder when it is
# terminated; the plain and the optimised file of the same build, with the
# optimised one no larger.
# usage: output_cli_test.sh LWMOTIO3 WORK_DIR
. "$(dirname "$0")/cli_test_setup.sh"
: >empty.ini
render() { "$cli" render -q --ini empty.ini --set MainSimpleFrames=6 "$@"; }

render --plain -o plain.gif 2>/dev/null || fail "plain render failed"
render -o optimised.gif 2>/dev/null || fail "optimised render failed"
[ "$(wc -c <optimised.gif)" -le "$(wc -c <plain.gif)" ] || fail "the optimised file is larger than the plain one"

ln -s optimised.gif link.gif
render -o link.gif 2>/dev/null || fail "render through a link failed"
[ -L link.gif ] || fail "the link was replaced by a file"
cmp -s link.gif optimised.gif || fail "the file behind the link is not the render"
[ ! -e optimised.gif.tmp ] && [ ! -e link.gif.tmp ] || fail "a temporary file was left"

render -o - >stdout.gif 2>/dev/null || fail "render to standard output failed"
cmp -s stdout.gif optimised.gif || fail "standard output does not hold the render"

if command -v script >/dev/null; then  # standard output on a terminal
  script -qec "'$cli' render -q --ini empty.ini -o - 2>err.txt" /dev/null >/dev/null
  [ $? -eq 1 ] && grep -q "terminal" err.txt || fail "a terminal as output was not refused: $(cat err.txt)"
fi

if [ -w /dev/full ]; then
  render -o /dev/full 2>err.txt
  [ $? -eq 1 ] || fail "a full device did not end with exit 1"
  [ "$(wc -l <err.txt)" -eq 1 ] && grep -q "No space left on device" err.txt ||
    fail "a full device did not say so in one line: $(cat err.txt)"
  [ -c /dev/full ] || fail "/dev/full is no longer a device"
fi

# Terminated while it writes frame files, a render removes its staging folder.
"$cli" render -q --ini empty.ini --frames-dir stopped --set MainSimpleFrames=300 --set MainFontSize=144 2>/dev/null &
pid=$!
tries=0
until [ -n "$(ls stopped.partial-0 2>/dev/null)" ] || [ $tries -ge 3000 ]; do sleep 0.01; tries=$((tries + 1)); done
kill -TERM $pid
wait $pid
[ $? -eq 143 ] || fail "a terminated render did not end by the signal"
[ ! -e stopped ] && [ ! -e stopped.partial-0 ] || fail "a terminated render left its frames: $(ls -d stopped*)"

cp plain.gif kept.gif
render --set NoSuchKey=1 -o kept.gif 2>/dev/null
cmp -s kept.gif plain.gif || fail "a failed run changed the file that was there"

echo "$failures failed"
[ "$failures" -eq 0 ]
