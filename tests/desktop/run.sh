#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# tests/desktop/run.sh [FOLDER [TASK]]: builds the console and has an operator work at it under a
# real window manager; prints how many steps each task takes, and leaves a picture of each in FOLDER.
set -euo pipefail
cd "$(dirname "$0")/../.."
# shellcheck source=tools/setup/packages.sh disable=SC1091
. tools/setup/packages.sh
# shellcheck disable=SC2086,SC2154
need $build_packages $run_packages $desktop_packages
cmake --preset asan >/dev/null
cmake --build --preset asan --target desktop_run
exec build/asan/bin/desktop_run steps "${1:-build/asan/desktop}" ${2:+"$2"}
