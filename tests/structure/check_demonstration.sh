#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# Fails when run.sh places the demonstration's main window so that its frame or its status bar
# would stick out of the screen that it serves.
set -u
cd "$1" || exit 2

# What a window manager puts around a window, in pixels: its title above, its edges beside and
# below.
title=40
edge=8

place() { sed -n "s/^Main$1=//p" run.sh; }
screen=$(sed -n 's/.*-geometry \([0-9]*x[0-9]*\).*/\1/p' run.sh)
for number in "$(place Left)" "$(place Top)" "$(place Width)" "$(place Height)" "$screen"; do
  [ -n "$number" ] || { echo "run.sh has no place for the window, or no screen"; exit 1; }
done

failed=0
right=$((($(place Left) + $(place Width)) / 15 + 2 * edge))
bottom=$((($(place Top) + $(place Height)) / 15 + title + edge))
[ "$right" -le "${screen%x*}" ] || { echo "the window ends at $right of $screen"; failed=1; }
[ "$bottom" -le "${screen#*x}" ] || { echo "the window ends at $bottom of $screen"; failed=1; }
exit $failed
