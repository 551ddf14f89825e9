#!/bin/sh
# lwmotio3 textures and the texture kind of lwmotio3 fill from the outside:
# the primary group is installed and listed, an item becomes a fill that a
# render draws, a group anywhere can be named by its path, and refusals
# leave the Material file as it was.
# usage: texture_cli_test.sh LWMOTIO3 WORK_DIR
. "$(dirname "$0")/cli_test_setup.sh"

"$cli" textures >list.txt || fail "textures failed"
[ "$(wc -l <list.txt)" -ge 8 ] || fail "the primary group has fewer than 8 items: $(cat list.txt)"
for type in "2-color fractal" "3-color fractal" "4-color fractal" "5-color fractal" Craters Perturbation; do
  grep -q "$type\$" list.txt || fail "no $type in the primary group"
done
grep -q "^  0  " list.txt || fail "items are not numbered from 0: $(head -1 list.txt)"

craters=$(grep -m1 "Craters$" list.txt | awk '{print $1}')
"$cli" fill 105 texture lwmotio3.fft "$craters" 2>err.txt || fail "fill 105 texture failed: $(cat err.txt)"
"$cli" fill 105 | grep -q "^type *4 Craters$" || fail "fill 105 does not show the crater type: $("$cli" fill 105)"
"$cli" render --frames-dir frames --set MainRolling=0 2>err.txt || fail "render failed: $(cat err.txt)"
colours=$(convert frames/frame-0001.png -format '%k' info:)
[ "$colours" -gt 50 ] || fail "a texture background shows only $colours colours"

cp "$XDG_CONFIG_HOME/Brindle Foundries/Lettermotion 3/lwmotio3.fft" "$work/copy.fft"
"$cli" textures "$work/copy.fft" | cmp -s - list.txt || fail "a group by path lists otherwise"

material="$XDG_CONFIG_HOME/Brindle Foundries/Lettermotion 3/Material00105.mtrl"
refuses() {
  part=$1
  shift
  cp "$material" before.mtrl
  "$cli" fill "$@" 2>err.txt >/dev/null
  [ $? -eq 2 ] && grep -q -- "$part" err.txt || fail "fill $* said: $(cat err.txt)"
  cmp -s before.mtrl "$material" || fail "fill $* changed the file"
}
refuses "is not one of them" 105 texture lwmotio3.fft 99
refuses "cannot read the texture group" 105 texture missing.fft 0
refuses "not an index" 105 texture lwmotio3.fft -1
refuses "takes a group and an item" 105 texture lwmotio3.fft

echo "$failures failed"
[ "$failures" -eq 0 ]
