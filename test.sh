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

echo "== Build with sanitizers"
cmake --preset asan -DTESK_WERROR=ON
cmake --build --preset asan

echo "== Suite under the sanitizers"
ctest --preset asan -j "$jobs" --output-on-failure

echo "== Suite as shipped"
ctest --preset release -j "$jobs" --output-on-failure
