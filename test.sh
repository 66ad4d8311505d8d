#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# test.sh [--all]: builds the product and its tests and runs them: the format of the sources and the
# suite, in what time one has between two changes.  With --all, which the build service runs for every
# commit, the suite runs under the address and undefined-behaviour sanitizers, and with it the quick
# forms of the long runs (crashes, attacks, hours of use), which are not even built without; and what
# the compiler of the release makes of it: the programs as they are shipped, in use with each other,
# and whether it accepts the tests and the benchmarks.  A release build of everything and
# `ctest --preset release` test the single units as shipped, too.
set -euo pipefail
cd "$(dirname "$0")"

all=false
case "$*" in
  "") ;;
  --all) all=true ;;
  *) echo "usage: ./test.sh [--all]" >&2; exit 2 ;;
esac

# shellcheck source=tools/setup/packages.sh
. tools/setup/packages.sh
# shellcheck disable=SC2086
need $build_packages $run_packages $test_packages $fuzz_packages

# Most of a test of the whole program is waiting for the line.
jobs=$((4 * $(nproc)))

# say TEXT: what comes now, and how many seconds it took to get there.
say() { echo "== $* (after $SECONDS s)"; }

# behind LOG COMMAND...: runs it in the background, where it takes what the tests leave idle, which
# is much.  `behind_ends` waits for it and shows what it wrote if it failed.  It leads a process group
# of its own, so that all of it, compilers too, ends with this script.
running=
behind() {
  log=$1
  setsid nice -n 19 "${@:2}" >"$log" 2>&1 </dev/null &
  running=$!
}
behind_ends() {
  local code=0
  wait "$running" || code=$?
  # Its number may be given to somebody else from now on.
  running=
  [ "$code" = 0 ] || { cat "$log"; exit 1; }
}
trap '[ -z "$running" ] || kill -- "-$running" 2>/dev/null || true' EXIT

say Format
find . -path ./build -prune -o \( -name '*.h' -o -name '*.cpp' \) -print0 |
  xargs -0 clang-format --dry-run --Werror

if ! $all; then
  say Build
  cmake --preset quick -DTESK_WERROR=ON
  cmake --build --preset quick --target whole_program_tests
  say Suite of whole programs, and build of the others behind it
  behind build/quick-rest.log cmake --build --preset quick
  ctest --preset quick -j "$jobs" -L program --output-on-failure
  behind_ends
  say Suite of the others
  exec ctest --preset quick -j "$jobs" -LE program --output-on-failure
fi

say Build with sanitizers
cmake --preset asan -DTESK_WERROR=ON
cmake --build --preset asan

say Suite under the sanitizers
cmake --preset release -DTESK_WERROR=ON
behind build/release-build.log cmake --build --preset release --target programs
ctest --preset asan -j "$jobs" --output-on-failure

say Build for release
behind_ends

say Programs as shipped
behind build/release-rest.log tests/structure/compile_release.sh
TESK_PROGRAMS=$PWD/build/release/bin ctest --preset asan -j "$jobs" -L program --output-on-failure
# Says nothing when all is well: the last words are the suite's.
behind_ends
