#!/bin/sh
# lwmotio3 gallery from the outside: one GIF per built effect, each listed in
# index.html with the frame count its file really has; the user's own
# settings and fills are not read.
# usage: gallery_cli_test.sh LWMOTIO3 WORK_DIR
. "$(dirname "$0")/cli_test_setup.sh"

# A user file that would change every render: the gallery must not see it.
mkdir -p "$XDG_CONFIG_HOME/Brindle Foundries"
printf '[PlugIn]\nMainDelay = 77\n' >"$XDG_CONFIG_HOME/Brindle Foundries/LWMOTIO3.INI"

"$cli" gallery out 2>err.txt || fail "gallery failed: $(cat err.txt)"
built=$("$cli" effects | grep -vc "not built yet")
textures=$("$cli" textures | wc -l)
listed=$(grep -c "<img src=" out/index.html)
[ "$listed" -eq $((built + textures)) ] || fail "index.html lists $listed pictures, not $built effects and $textures textures"
for gif in out/*.gif; do
  frames=$(identify "$gif" | wc -l)
  grep -q "src=\"$(basename "$gif")\".*<td class=\"n\">$frames</td>" out/index.html ||
    fail "$gif has $frames frames, which index.html does not say"
done
[ "$(identify -format '%T\n' out/simple.gif | head -1)" -eq 8 ] || fail "the user's MainDelay reached the gallery"
"$cli" gallery 2>/dev/null; [ $? -eq 2 ] || fail "gallery without a folder is not a usage error"

echo "$failures failed"
[ "$failures" -eq 0 ]
