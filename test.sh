#!/usr/bin/env bash
# Builds everything and runs the whole test suite: the format of the sources, the suite under
# the address and undefined-behaviour sanitizers, and the suite as it is shipped.
set -euo pipefail
cd "$(dirname "$0")"

# shellcheck source=tools/setup/packages.sh
. tools/setup/packages.sh
# shellcheck disable=SC2086
need $build_packages $run_packages $test_packages

# Most of a test of the whole program is waiting for the line.
jobs=$((2 * $(nproc)))

echo "== Format"
find . -path ./build -prune -o \( -name '*.h' -o -name '*.cpp' \) -print0 |
  xargs -0 clang-format --dry-run --Werror

echo "== Build for release"
cmake --preset release -DTESK_WERROR=ON
cmake --build --preset release
cmake --preset asan -DTESK_WERROR=ON

# The suite leaves the processors idle most of the time, and the compiler gives way to it.
echo "== Suite as shipped; the build with sanitizers goes on behind it"
nice -n 19 cmake --build --preset asan >build/asan-build.log 2>&1 &
sanitized=$!
trap 'kill "$sanitized" 2>/dev/null || true' EXIT
ctest --preset release -j "$jobs" --output-on-failure

echo "== Build with sanitizers"
wait "$sanitized" || { cat build/asan-build.log; exit 1; }

echo "== Suite under the sanitizers"
ctest --preset asan -j "$jobs" --output-on-failure
