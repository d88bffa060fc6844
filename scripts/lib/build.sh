# shellcheck shell=bash
# Functions that build and test a preset; sourced by other scripts. They write the full output to
# build/PRESET.*.log, and show the end of it if something fails.

jobs=$(nproc)
# More than one for each processor: many tests wait for other processes.
test_jobs=$((2 * jobs))
mkdir -p build

# quietly LOG COMMAND...: runs the command with its output in LOG; shows the end of it on failure.
quietly() {
  local log=$1
  shift
  if ! "$@" >"$log" 2>&1 </dev/null; then
    echo "Failed: $*" >&2
    tail -n 200 "$log" >&2
    return 1
  fi
}

# build PRESET
build() {
  echo "Building the preset $1"
  quietly "build/$1.configure.log" cmake --preset "$1"
  quietly "build/$1.build.log" cmake --build --preset "$1" --parallel "$jobs"
}

# run_tests PRESET [CTEST_OPTION...]: runs the tests; prints the failures and the summary of ctest.
run_tests() {
  local preset=$1 log=build/$1.test.log
  shift
  echo "Testing the preset $preset"
  if ctest --preset "$preset" --parallel "$test_jobs" --no-tests=error "$@" >"$log" 2>&1 \
    </dev/null; then
    sed -n '/tests passed/,$p' "$log"
  else
    grep -vE ' Start +[0-9]+: | Passed +[0-9.]+ sec' "$log" | tail -n 300 >&2
    return 1
  fi
}
