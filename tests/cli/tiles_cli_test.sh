#!/bin/sh
# lwmotio3 tiles and the tile fill from the outside: the primary group lists
# its tiles, a picture joins a group of the user's under the size rule with
# the last version kept as .bak; refusals are one line, a non-zero exit, and
# leave the group (and the fill's file) as they were.
# usage: tiles_cli_test.sh LWMOTIO3 WORK_DIR
. "$(dirname "$0")/cli_test_setup.sh"
data="$XDG_CONFIG_HOME/Brindle Foundries/Lettermotion 3"

# The primary group is put in place on first use: six tiles or more, one
# line each with its index and size.
"$cli" tiles >list.txt 2>err.txt || fail "tiles failed: $(cat err.txt)"
[ "$(grep -c '^ *[0-9][0-9]*  [0-9][0-9]* x [0-9][0-9]*$' list.txt)" -ge 6 ] || fail "tiles listed: $(cat list.txt)"
head -1 list.txt | grep -q '^ *0  ' || fail "the list does not start at tile 0: $(cat list.txt)"

convert -size 600x100 gradient:red-blue wide.png
convert -size 513x513 xc:green large.png
convert -size 20x30 xc:yellow small.png
echo "not a group" >notgroup.mtx
echo "not a picture" >picture.png

# A group of the user's is made by its first tile; one side past 512 is
# allowed.
"$cli" tiles add mine.mtx wide.png >out.txt 2>err.txt || fail "adding 600 x 100 failed: $(cat err.txt)"
"$cli" tiles mine.mtx | grep -q '^ *0  600 x 100$' || fail "mine.mtx lists: $("$cli" tiles mine.mtx)"
group="$data/mine.mtx"

# A second tile keeps the group as it was before as .bak.
cp "$group" first.mtx
"$cli" tiles add mine.mtx small.png >/dev/null 2>err.txt || fail "adding 20 x 30 failed: $(cat err.txt)"
"$cli" tiles mine.mtx | grep -q '^ *1  20 x 30$' || fail "the second tile is not listed: $("$cli" tiles mine.mtx)"
cmp -s first.mtx "$group.bak" || fail "mine.mtx.bak is not the group before the second add"

"$cli" fill 105 solid 00C010 >/dev/null 2>err.txt || fail "fill 105 solid failed: $(cat err.txt)"
material="$data/Material00105.mtrl"

# refuses FILE MESSAGE ARGS...: a non-zero exit, the one line MESSAGE, and
# FILE, the group and the fill's file as they were.
refuses() {
  file=$1
  message=$2
  shift 2
  cp "$file" before.bin
  cp "$group" group.bin
  cp "$material" material.bin
  "$cli" "$@" >/dev/null 2>err.txt
  status=$?
  [ "$status" -ne 0 ] || fail "$* exited 0"
  [ "$(wc -l <err.txt)" -eq 1 ] && [ "$(cat err.txt)" = "$message" ] || fail "$* said: $(cat err.txt)"
  cmp -s before.bin "$file" || fail "$* changed $file"
  cmp -s group.bin "$group" || fail "$* changed mine.mtx"
  cmp -s material.bin "$material" || fail "$* changed the fill's file"
}
refuses "$group" "lwmotio3 tiles: The selected image is too large to be a matrix tile." tiles add mine.mtx large.png
refuses "$data/lwmotio3.mtx" "lwmotio3 tiles: This file cannot be edited or overwritten. The default matix set \
cannot be modified. To edit this file, save it to a new name. Hold down the Shift key and click on the + button." \
  tiles add lwmotio3.mtx small.png
refuses notgroup.mtx "lwmotio3 tiles: '$work/notgroup.mtx' is not a tile group" tiles "$work/notgroup.mtx"
refuses notgroup.mtx "lwmotio3 tiles: '$work/notgroup.mtx' is not a tile group" tiles add "$work/notgroup.mtx" small.png
cp "$group.bak" bak.bin
refuses "$group" "lwmotio3 tiles: cannot read 'picture.png': Not a PNG file" tiles add mine.mtx picture.png
cmp -s bak.bin "$group.bak" || fail "a refused add changed mine.mtx.bak"

usage=" (see lwmotio3 fill --help)"
refuses "$group" "lwmotio3 fill: '$group' has no tile 2$usage" fill 105 tile mine.mtx 2
cp notgroup.mtx "$data/other.mtx"
refuses "$data/other.mtx" "lwmotio3 fill: '$data/other.mtx' is not a tile group$usage" fill 105 tile other.mtx 0

# The last tile makes a fill.
"$cli" fill 105 tile mine.mtx 1 >/dev/null 2>err.txt || fail "fill 105 tile mine.mtx 1 failed: $(cat err.txt)"
"$cli" fill 105 | grep -q "^tile *1$" || fail "fill 105 does not show tile 1: $("$cli" fill 105)"

echo "$failures failed"
[ "$failures" -eq 0 ]
