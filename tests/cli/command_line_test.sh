#!/bin/sh
# The command line as a user meets it: exit codes 0, 1 and 2 with one line
# of stderr per refusal, warnings for values the dialog changes, text in
# UTF-8, files that cannot be read or written, whole frame folders, and a
# render too big for the memory it may use.
# usage: command_line_test.sh LWMOTIO3 WORK_DIR
. "$(dirname "$0")/cli_test_setup.sh"

# says CODE PART ARGS...: the run exits with CODE and says PART on exactly
# one line of stderr.
says() {
  code=$1 part=$2
  shift 2
  "$cli" "$@" 2>err.txt >out.txt
  status=$?
  [ "$status" -eq "$code" ] || fail "$* exited $status, not $code: $(cat err.txt)"
  [ "$(wc -l <err.txt)" -eq 1 ] || fail "$* said $(wc -l <err.txt) lines: $(cat err.txt)"
  grep -q -- "$part" err.txt || fail "$* did not say '$part': $(cat err.txt)"
}

# Usage errors of every command, and --version.
says 2 "no command given" 
says 2 "unknown command 'paint'" paint
says 2 "unexpected argument 'x'" describe x
says 2 "unknown option '--all'" effects --all
says 2 "unexpected argument 'x'" settings x
says 2 "unexpected argument 'stray'" render stray
says 2 "unknown option '--bogus'" render --bogus
says 2 "unknown setting 'NoSuchKey'" render --set NoSuchKey=1
says 2 "cannot be given together" render -o a.gif --frames-dir frames
says 2 "use --frames-dir" render -o picture.png
[ ! -e a.gif ] && [ ! -e picture.png ] && [ ! -e frames ] || fail "a usage error left a file"
"$cli" --version | grep -q "^lwmotio3 [0-9]" || fail "--version does not name the version"

# Standard output is checked.
for command in settings effects describe; do
  "$cli" $command >/dev/full 2>err.txt
  [ $? -eq 1 ] && grep -q "No space left on device" err.txt || fail "$command >/dev/full: $(cat err.txt)"
done

# Settings files that cannot be read; endless input never hangs.
says 1 "No such file" render --ini missing.ini
says 1 "is a folder" settings --ini "$work"
timeout 20 "$cli" render --ini /dev/zero 2>err.txt
[ $? -eq 1 ] && grep -q "not a regular file" err.txt || fail "--ini /dev/zero: $(cat err.txt)"
mkdir -p "$XDG_CONFIG_HOME/Brindle Foundries/LWMOTIO3.INI"
"$cli" settings >out.txt 2>err.txt || fail "an unreadable user settings file stopped settings"
grep -q "warning: .*it is a folder" err.txt && grep -q "^MainDelay = 8$" out.txt ||
  fail "an unreadable user settings file: $(cat err.txt)"
rm -rf "$XDG_CONFIG_HOME"

# Text is UTF-8 on the command line and Windows-1252 in the settings file.
"$cli" render -q --frames-dir by-text --set MainSimpleFrames=2 --text "Café €" || fail "--text Café € failed"
"$cli" render -q --frames-dir by-set --set MainSimpleFrames=2 --set "MainText=Café €" || fail "--set MainText failed"
cmp -s by-text/frame-0002.png by-set/frame-0002.png || fail "--set MainText draws other frames than --text"
says 1 "cannot be written in Windows-1252" render --set "MainText=Ωmega"
printf 'MainText = Caf\351\n' >cafe.ini
"$cli" settings --ini cafe.ini | grep -q "$(printf '^MainText = Caf\351$')" || fail "redirected settings are not Windows-1252"
# On a terminal (where one can be had): settings in UTF-8, and status lines.
if script -qc true /dev/null >/dev/null 2>&1; then
  script -qc "'$cli' settings --ini cafe.ini" /dev/null | grep -q "MainText = Café" ||
    fail "settings on a terminal are not UTF-8"
  script -qc "'$cli' render -o shown.gif" /dev/null | grep -q "Wrote shown.gif" || fail "no status on a terminal"
  script -qc "'$cli' render -q -o unseen.gif" /dev/null | grep -q "Wrote" && fail "status despite --quiet"
fi

# Values the dialog changes are used with a warning each; --quiet silences
# them. No status lines off a terminal, and no data folder made.
"$cli" render -o warned.gif --set MainFontSize=500 --set MainPadding=-10 --set MainDelay=0 \
  --set MainSimpleScrollDirection=9 --set MainFontName=NoSuchFontAnywhere 2>err.txt || fail "a clamped render failed"
for expected in "MainFontSize = 500 .* 144 is used" "MainPadding = -10 .* 512 is used" "MainDelay = 0 .* 1 is used" \
  "MainSimpleScrollDirection = 9 " "MainFontName = NoSuchFontAnywhere is not installed"; do
  [ "$(grep -c "warning: $expected" err.txt)" -eq 1 ] || fail "no single warning '$expected': $(cat err.txt)"
done
[ "$(wc -l <err.txt)" -eq 5 ] || fail "status lines off a terminal: $(cat err.txt)"
"$cli" render -q -o quiet.gif --set MainFontSize=500 2>err.txt || fail "a quiet render failed"
[ ! -s err.txt ] || fail "--quiet still said: $(cat err.txt)"
[ ! -e "$XDG_CONFIG_HOME/Brindle Foundries" ] || fail "a solid-fill render made the data folder"

# Outputs: never over the settings file; frame folders new or empty, whole
# or not at all.
"$cli" settings >own.ini
cp own.ini own.before
says 2 "would write over the settings file" render --ini own.ini -o own.ini
cmp -s own.ini own.before || fail "-o over the settings file changed it"
mkdir full && echo old >full/frame-0001.png
says 1 "is not empty" render --frames-dir full
[ "$(ls full)" = "frame-0001.png" ] && grep -q old full/frame-0001.png || fail "a full frame folder was touched"
mkdir empty
"$cli" render -q --frames-dir empty --set MainSimpleFrames=3 && [ -f empty/frame-0003.png ] ||
  fail "an empty frame folder was not filled"

# Write failures name the path and the system's reason and leave nothing.
(trap '' XFSZ; ulimit -f 16; "$cli" render -q -o "$work/big.gif" 2>err.txt)
[ $? -eq 1 ] && grep -q "cannot write '$work/big.gif': File too large" err.txt || fail "a short GIF write: $(cat err.txt)"
[ ! -e big.gif ] && [ ! -e big.gif.tmp ] || fail "a failed GIF write left a file"
(trap '' XFSZ; ulimit -f 16; "$cli" render -q --frames-dir cut --set MainFontSize=144 2>err.txt)
[ $? -eq 1 ] && grep -q "cannot write 'cut/frame-[0-9]*.png': File too large" err.txt || fail "a short frame write: $(cat err.txt)"
[ -z "$(ls -d cut* 2>/dev/null)" ] || fail "a failed frame folder left $(ls -d cut*)"

# A render too big for its memory stops at once and says what to lower.
# Address-sanitised builds reserve more address space than any such limit.
if ! ldd "$cli" 2>/dev/null | grep -q asan; then
  long=$(printf 'Wide text %.0s' 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20)
  (ulimit -v 800000; "$cli" render -q -o huge.gif --set MainFontSize=144 --set MainSimpleFrames=2000 \
    --text "$long" 2>err.txt)
  [ $? -eq 1 ] && grep -q "need about .* lower MainFontSize or MainSimpleFrames" err.txt ||
    fail "a render too big for memory: $(cat err.txt)"
  [ "$(wc -l <err.txt)" -eq 1 ] && [ ! -e huge.gif ] || fail "a render too big for memory left more than a line"
fi

echo "$failures failed"
[ "$failures" -eq 0 ]
