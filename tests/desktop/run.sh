#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# tests/desktop/run.sh [steps|windows [FOLDER [LOOK|all [TASK]]]]: builds the console and has an
# operator work at it under a real window manager, on every desktop or the one called LOOK.  Prints
# how many steps each task takes, or what is wrong with the windows; without a word, both.  Leaves
# the pictures in FOLDER/LOOK.
set -euo pipefail
cd "$(dirname "$0")/../.."

what=${1:-both}
folder=${2:-build/asan/desktop}
case $what in
  steps | windows | both) ;;
  *) echo "usage: tests/desktop/run.sh [steps|windows [FOLDER [LOOK|all [TASK]]]]" >&2; exit 2 ;;
esac

# shellcheck source=tools/setup/packages.sh disable=SC1091
. tools/setup/packages.sh
# shellcheck disable=SC2086,SC2154
need $build_packages $run_packages $desktop_packages
cmake --preset asan >/dev/null
cmake --build --preset asan --target desktop_run
run=build/asan/bin/desktop_run
[ "$what" = both ] || exec "$run" "$what" "$folder" "${@:3}"
code=0
"$run" steps "$folder/steps" || code=1
"$run" windows "$folder/windows" || code=1
exit "$code"
