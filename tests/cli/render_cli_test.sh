#!/bin/sh
# The headless renderer from the outside: a default render and a frame
# folder are written and readable; every refusal is one line on stderr, a
# non-zero exit, and no output file.
# usage: render_cli_test.sh LWMOTIO3 WORK_DIR
. "$(dirname "$0")/cli_test_setup.sh"

# refuses EXIT_CODE MESSAGE_PART ARGS...: the run must exit with the code,
# say MESSAGE_PART on exactly one line, and leave no out.gif behind.
refuses() {
  code=$1 part=$2
  shift 2
  "$cli" render -o out.gif "$@" 2>err.txt >/dev/null
  status=$?
  [ "$status" -eq "$code" ] || fail "$* exited $status, not $code"
  [ "$(wc -l <err.txt)" -eq 1 ] || fail "$* said $(wc -l <err.txt) lines: $(cat err.txt)"
  grep -q -- "$part" err.txt || fail "$* did not say '$part': $(cat err.txt)"
  [ ! -e out.gif ] && [ ! -e out.gif.tmp ] || fail "$* left an output file"
  rm -f out.gif out.gif.tmp
}

refuses 2 "unknown setting 'NoSuchKey'" --set NoSuchKey=1
refuses 2 "takes a whole number" --set MainDelay=ten
refuses 2 "needs KEY=VALUE" --set MainDelay
refuses 1 "the text is empty" --text ""
refuses 1 "cannot be written in Windows-1252" --text "Ωmega"
# Any effect still waiting to be built is refused as such.
unbuilt=$("$cli" effects | grep "not built yet" | head -n 1 | awk '{print $1}')
[ -z "$unbuilt" ] || refuses 1 "is not built yet" --effect "$unbuilt"
refuses 1 "no effect 'Nope'" --effect Nope
refuses 1 "cannot read" --ini "$work/missing.ini"
refuses 2 "unknown option '--bogus'" --bogus
refuses 2 "takes on or off" --custom-palette maybe
refuses 2 "from 50 to 150" --character-space 151
"$cli" render -o "$work/no/such/folder/out.gif" 2>err.txt
[ $? -eq 1 ] && grep -q "cannot write" err.txt || fail "an unwritable output was not refused: $(cat err.txt)"

# A spiral too large to hold ends as a failed build, not a crash.
"$cli" render -o out.gif --effect Spiral --set MainFontSize=144 --text "$(printf '%0260d' 0 | tr 0 W)" 2>err.txt
[ $? -eq 1 ] && grep -q "Memory error" err.txt && [ ! -e out.gif ] || fail "a huge spiral did not fail cleanly: $(cat err.txt)"

"$cli" render --help | grep -q -- "--frames-dir" || fail "render --help does not document --frames-dir"
"$cli" effects | grep -q "17  Simple" || fail "effects does not list Simple at row 17"

"$cli" render -q -o default.gif --effect simple --text "Café" 2>err.txt || fail "default render failed: $(cat err.txt)"
frames=$(identify default.gif 2>/dev/null | wc -l)
[ "$frames" -eq 32 ] || fail "default render has $frames frames, not 32"
[ ! -e "$XDG_CONFIG_HOME/Brindle Foundries" ] || fail "a render made the data folder, which it does not need"

"$cli" render --frames-dir frames --set MainSimpleFrames=5 2>err.txt || fail "frame folder failed: $(cat err.txt)"
[ "$(wc -l <frames/index.txt)" -eq 5 ] || fail "index.txt does not list 5 frames"
identify frames/frame-0005.png >/dev/null 2>&1 || fail "frame-0005.png is not a readable PNG"
grep -q "^frame-0005.png 108$" frames/index.txt || fail "the last frame does not carry the pause"

echo "$failures failed"
[ "$failures" -eq 0 ]
