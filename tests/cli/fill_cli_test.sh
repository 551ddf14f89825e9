#!/bin/sh
# lwmotio3 fill from the outside: a colour set red first reaches the frames
# red first; refusals are one line, exit 2, and leave the file as it was.
# usage: fill_cli_test.sh LWMOTIO3 WORK_DIR
set -u
cli=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
work=$2
rm -rf "$work" && mkdir -p "$work" && cd "$work" || exit 1
export XDG_CONFIG_HOME="$work/config"
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

"$cli" fill | grep -q "^ 105  Simple" || fail "fill does not list Simple's background 105"

"$cli" fill 105 solid 00C010 2>err.txt || fail "fill 105 solid failed: $(cat err.txt)"
"$cli" fill 105 | grep -q "^colour *00C010$" || fail "fill 105 does not show 00C010: $("$cli" fill 105)"
material="$XDG_CONFIG_HOME/Brindle Foundries/Lettermotion 3/Material00105.mtrl"
[ "$(wc -c <"$material")" -eq 1270 ] || fail "the Material file is not 1270 bytes"
"$cli" render --frames-dir frames --set MainRolling=0 2>err.txt || fail "render failed: $(cat err.txt)"
corner=$(convert frames/frame-0001.png -format '%[pixel:p{0,0}]' info:)
[ "$corner" = "srgb(0,192,16)" ] || fail "the background corner is $corner, not srgb(0,192,16)"

# refuses ARGS...: exit 2, one line naming the cause, the file unchanged.
refuses() {
  part=$1
  shift
  cp "$material" before.mtrl
  "$cli" fill "$@" 2>err.txt >/dev/null
  status=$?
  [ "$status" -eq 2 ] || fail "fill $* exited $status, not 2"
  [ "$(wc -l <err.txt)" -eq 1 ] && grep -q -- "$part" err.txt || fail "fill $* said: $(cat err.txt)"
  cmp -s before.mtrl "$material" || fail "fill $* changed the file"
}
refuses "is not a colour" 105 solid 12345G
refuses "takes one colour" 105 solid
refuses "unknown fill kind 'plaid'" 105 plaid
refuses "control 11 is not a fill" 11 solid 000000
refuses "'x1' is not a control id" x1

echo "$failures failed"
[ "$failures" -eq 0 ]
