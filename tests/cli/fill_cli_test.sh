#!/bin/sh
# lwmotio3 fill from the outside: a colour set red first reaches the frames
# red first; refusals are one line, exit 2, and leave the file as it was.
# usage: fill_cli_test.sh LWMOTIO3 WORK_DIR
. "$(dirname "$0")/cli_test_setup.sh"

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

refuses "--pad takes 0 to 45" 105 gradient --pad 46
refuses "--angle does not apply" 125 gradient --angle 10
refuses "is not POS:RRGGBB" 105 gradient --marker 0:FF0000

# A two-colour gradient from red at the top to blue at the bottom, red first
# on the command line as in the frames.
"$cli" fill 105 gradient --from FF0000 --to 0000FF 2>err.txt >/dev/null || fail "fill 105 gradient failed: $(cat err.txt)"
"$cli" fill 105 | grep -q "^mode *two-colour$" || fail "fill 105 does not show the two-colour mode"
"$cli" render --frames-dir gradient --set MainRolling=0 2>err.txt || fail "render failed: $(cat err.txt)"
top=$(convert gradient/frame-0001.png -format '%[fx:int(255*p{0,0}.r)],%[fx:int(255*p{0,0}.b)]' info:)
bottom=$(convert gradient/frame-0001.png -format '%[fx:int(255*p{0,h-1}.r)],%[fx:int(255*p{0,h-1}.b)]' info:)
[ "${top%,*}" -gt 200 ] && [ "${top#*,}" -lt 60 ] || fail "the top corner is not red: $top"
[ "${bottom%,*}" -lt 60 ] && [ "${bottom#*,}" -gt 200 ] || fail "the bottom corner is not blue: $bottom"

# A gradient bar keeps its line in its own Fountain file.
"$cli" fill 125 gradient --from 00FF00 --marker 128:FF0000 >/dev/null 2>err.txt || fail "fill 125 failed: $(cat err.txt)"
fountain="$XDG_CONFIG_HOME/Brindle Foundries/Lettermotion 3/Fountain00125.mtrl"
[ "$(wc -c <"$fountain")" -eq 585 ] || fail "the Fountain file is not 585 bytes"
"$cli" fill 125 | grep -q "^marker *128:FF0000$" || fail "fill 125 does not show its marker: $("$cli" fill 125)"

echo "$failures failed"
[ "$failures" -eq 0 ]
