# The shared start of the command-line tests, sourced with the program and
# a work folder as $1 and $2: cli (an absolute path), a fresh work folder to
# run in, a configuration folder of the test's own, and fail(), which counts.
set -u
cli=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
work=$2
rm -rf "$work" && mkdir -p "$work" && cd "$work" || exit 1
export XDG_CONFIG_HOME="$work/config"
failures=0

fail() { echo "FAIL: $*"; failures=$((failures + 1)); }
