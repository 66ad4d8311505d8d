#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# Builds everything and tests it: the format of the sources, the whole suite under the address and
# undefined-behaviour sanitizers, and the programs as they are shipped, in use with each other.
# A release build of everything and `ctest --preset release` test the single units as shipped, too.
set -euo pipefail
cd "$(dirname "$0")"

# shellcheck source=tools/setup/packages.sh
. tools/setup/packages.sh
# shellcheck disable=SC2086
need $build_packages $run_packages $test_packages $fuzz_packages

# Most of a test of the whole program is waiting for the line.
jobs=$((4 * $(nproc)))

# say TEXT: what comes now, and how many seconds it took to get there.
say() { echo "== $* (after $SECONDS s)"; }

say Format
find . -path ./build -prune -o \( -name '*.h' -o -name '*.cpp' \) -print0 |
  xargs -0 clang-format --dry-run --Werror

say Build with sanitizers
cmake --preset asan -DTESK_WERROR=ON
cmake --build --preset asan
cmake --preset release -DTESK_WERROR=ON

# The suite leaves the processors idle much of the time, and the compiler gives way to it.
say "Suite under the sanitizers; the build for release goes on behind it"
nice -n 19 cmake --build --preset release --target programs >build/release-build.log 2>&1 &
release=$!
trap 'kill "$release" 2>/dev/null || true' EXIT
ctest --preset asan -j "$jobs" --output-on-failure

say Build for release
wait "$release" || { cat build/release-build.log; exit 1; }

say Programs as shipped
TESK_PROGRAMS=$PWD/build/release/bin ctest --preset asan -j "$jobs" -L program --output-on-failure
