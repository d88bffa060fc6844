# shellcheck shell=bash
# Building and testing with a preset; sourced by the scripts. Logs stay short: the whole output
# lies in build/PRESET.*.log and is shown when something fails.

jobs=$(nproc)
mkdir -p build

# quietly LOG COMMAND...: runs the command and shows the end of its output only when it fails.
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

# run_tests PRESET: runs all tests and prints ctest's closing lines, and before them what failed.
run_tests() {
  local log=build/$1.test.log
  echo "Testing the preset $1"
  if ctest --preset "$1" --parallel "$jobs" --no-tests=error >"$log" 2>&1 </dev/null; then
    sed -n '/tests passed/,$p' "$log"
  else
    grep -vE ' Start +[0-9]+: | Passed +[0-9.]+ sec' "$log" | tail -n 300 >&2
    return 1
  fi
}
