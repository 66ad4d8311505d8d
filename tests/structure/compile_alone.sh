#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# Fails when a source file of the product does not compile by itself: the quick builds compile the
# files of a folder together, where one can live on what another includes.  Three minutes; the
# debug build finds the same.
set -euo pipefail
cd "$(dirname "$0")/../.."

# shellcheck source=tools/setup/packages.sh
. tools/setup/packages.sh
# shellcheck disable=SC2086
need $build_packages $fuzz_packages

cmake --preset debug -B build/alone -DCMAKE_CXX_COMPILER=clang++ -DBUILD_TESTING=OFF \
  -DTESK_WERROR=ON >/dev/null
folders='app|bench|config|db|files|gateway|model|packaging|stations|switcher|tools|views'
# What includes a file that the build generates is left to the build.
commands=$(sed -nE 's/^  "command": "(.*)",$/\1/p' build/alone/compile_commands.json |
  grep -E -- "-c $PWD/($folders)/[^ ]*\.cpp\$" |
  grep -vFf <(grep -rlE --include='*.cpp' '#include ".*\.moc"' app config tools views) |
  sed -E 's/^.*ccache //; s/ -o [^ ]+ / /; s/\\"/"/g; s/\\\\/\\/g')
count=$(wc -l <<<"$commands")
[ "$count" -gt 200 ] || { echo "only $count files found: the list is not right"; exit 2; }
echo "== $count source files, each by itself"
tr '\n' '\0' <<<"$commands" | xargs -0 -P "$(nproc)" -I '{}' sh -c '{} -fsyntax-only'
