#!/bin/sh
# Renders under address-space limits from too small up to enough: every run
# either writes the animation or ends with one line saying memory ran out,
# exit 1 and no file; none may crash. The limits step through the frames and the
# colour stages.
# usage: out_of_memory_test.sh LWMOTIO3 WORK_DIR
. "$(dirname "$0")/cli_test_setup.sh"
: >empty.ini
stages=""

# Status lines, which tell how far a run came, are shown on a terminal only:
# each run gets one from script(1), and its output is read from the log.
command -v script >/dev/null || { echo "script(1) is missing; nothing tested"; exit 0; }
run() {  # LIMIT: the exit status of one render under the limit; what it said in err.txt
  script -qec "ulimit -v $1; '$cli' render --ini empty.ini -o out.gif; echo \"exit \$?\"" /dev/null 2>&1 |
    tr '\r' '\n' >err.txt
  return "$(sed -n 's/^exit //p' err.txt | tail -1)"
}

# The sweep counts from the first limit at which the build starts; below it
# the loader and the C++ runtime themselves may not start.
limit=4000
until run "$limit"; grep -q "^Building" err.txt; do
  rm -f out.gif
  limit=$((limit + 100))
  [ "$limit" -le 40000 ] || { echo "FAIL: the build never starts"; exit 1; }
done
while [ "$limit" -le 40000 ]; do
  run "$limit"
  status=$?
  if grep -q "^Fontconfig error" err.txt || ! grep -q "^Building" err.txt; then
    : # fontconfig could not load its own configuration, or failed while
      # loading it before the build began: the library is not to be trusted
  elif [ "$status" -eq 0 ]; then
    [ -s out.gif ] || fail "$limit KiB: exit 0 without a file"
    break
  elif [ "$status" -eq 1 ]; then
    # One line of refusal: Memory error, or the frames foreseen not to fit.
    grep -o "lwmotio3 render: .*" err.txt | grep -v ": warning: " >refusal.txt
    [ "$(wc -l <refusal.txt)" -eq 1 ] && grep -Eq "Memory error|available to this render" refusal.txt ||
      fail "$limit KiB: not one line saying memory ran out: $(cat err.txt)"
    [ ! -e out.gif ] && [ ! -e out.gif.tmp ] || fail "$limit KiB: a file was left"
    stage=$(grep -Eo "^(Building|Quantizing|Supercompressing|Remapping|Writing)" err.txt | tail -1)
    case " $stages " in *" $stage "*) ;; *) stages="$stages $stage" ;; esac
  else
    fail "$limit KiB: exit $status: $(tail -3 err.txt)"
  fi
  rm -f out.gif out.gif.tmp
  limit=$((limit + 100))
done
[ "$status" -eq 0 ] || fail "no limit up to 40000 KiB was enough"
echo "ran out of memory while:$stages"
echo "$failures failed"
[ "$failures" -eq 0 ]
