#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# Fails when the compiler of the release refuses a test, a benchmark or a tool: the suite builds them
# with another one, which warns of other things, and some of them it does not build at all.  Nothing is
# linked or optimised.  Two minutes.
set -euo pipefail
cd "$(dirname "$0")/../.."

# shellcheck source=tools/setup/packages.sh
. tools/setup/packages.sh
# shellcheck disable=SC2086
need $build_packages

cmake --preset release -DTESK_WERROR=ON >/dev/null
cmake --build --preset release --target tesk_test_headers tesk_window_test_headers >/dev/null
# Without what the programs are made of: that is built for release anyway.
commands=$(sed -nE 's/^  "command": "(.*)",$/\1/p' build/release/compile_commands.json |
  grep -E -- ' -o (tests|bench|tools/(gallery|stage))/' |
  grep -vE -- '-c [^ ]*/(cmake_pch\.hxx\.cxx|mocs_compilation\.cpp|qrc_[a-z]+\.cpp)$' |
  sed -E 's/^.*ccache //; s/ -o [^ ]+ / /; s/\\"/"/g; s/\\\\/\\/g')
count=$(wc -l <<<"$commands")
[ "$count" -gt 80 ] || { echo "only $count units found: the list is not right"; exit 2; }
echo "== $count units of tests, benchmarks and tools"
tr '\n' '\0' <<<"$commands" | xargs -0 -P "$(nproc)" -I '{}' sh -c '{} -fsyntax-only'
