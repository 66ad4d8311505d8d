#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# Fails when the compiler of the release refuses anything but the programs themselves: a test, a
# benchmark, a tool.  The suite builds those with another one, which warns of other things, and some
# of them it does not build at all.  Nothing is optimised, so that what only the optimiser sees is not
# warned of (a value that may not be set, a place past an array's end), and nothing is linked: a
# release build of everything shows both.  Installs nothing: the packages that
# it needs are those that test.sh installs, in either form.  No build has to be there: the
# precompiled headers that it reads it makes itself.  Three minutes, five beside the suite.
set -euo pipefail
cd "$(dirname "$0")/../.."

cmake --preset release -DTESK_WERROR=ON >/dev/null
cmake --build --preset release --target tesk_test_headers tesk_window_test_headers >/dev/null
# Without what the programs are made of: that is built for release anyway.
of_programs=$(ninja -C build/release -t inputs programs | grep '\.o$')
others='NR == FNR { built[$1]; next }
        { for (i = 1; i < NF; ++i) if ($i == "-o" && !($(i + 1) in built)) print }'
commands=$(sed -nE 's/^  "command": "(.*)",$/\1/p' build/release/compile_commands.json |
  awk "$others" <(echo "$of_programs") - |
  grep -vE -- '-c [^ ]*/(cmake_pch\.hxx\.cxx|mocs_compilation\.cpp|qrc_[a-z]+\.cpp)$' |
  sed -E 's/^.*ccache //; s/ -o [^ ]+ / /; s/\\"/"/g; s/\\\\/\\/g')
count=$(wc -l <<<"$commands")
[ "$count" -gt 80 ] || { echo "only $count units found: the list is not right"; exit 2; }
echo "== $count units beside the programs"
tr '\n' '\0' <<<"$commands" | xargs -0 -P "$(nproc)" -I '{}' sh -c '{} -fsyntax-only'
