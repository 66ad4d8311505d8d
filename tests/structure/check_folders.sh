#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# Fails when a source file includes a folder that it must not know.  Each line names a folder
# and what it may include besides itself.
set -u
cd "$1" || exit 2

below_app="views views/rules views/widgets views/window_place gateway/ember gateway switcher/comparison switcher/presets switcher/unsent switcher switcher/wire stations db db/jet config files model"
rooms_of_app="app/shell app/kept app/paper app/transfer app/undo app/log app/network app/backups app/presets app/journal app/run"

allowed() {
  case "$1" in
    model) echo "" ;;
    files) echo "" ;;
    db/jet) echo "files" ;;
    config) echo "files model" ;;
    db) echo "db/jet files model" ;;
    stations) echo "db db/jet files model" ;;
    stations/journal) echo "stations db db/jet files model" ;;
    switcher/wire) echo "model" ;;
    switcher) echo "switcher/wire stations db db/jet model" ;;
    switcher/unsent) echo "switcher switcher/wire stations db db/jet model" ;;
    switcher/comparison) echo "switcher/unsent switcher switcher/wire stations db db/jet model" ;;
    gateway/ember) echo "gateway switcher switcher/wire stations db db/jet model" ;;
    switcher/presets) echo "switcher switcher/wire stations db db/jet model" ;;
    gateway) echo "switcher switcher/wire stations db db/jet model" ;;
    views/rules) echo "switcher/wire stations db db/jet model" ;;
    views/widgets) echo "" ;;
    views/window_place) echo "config" ;;
    views) echo "views/rules views/widgets views/window_place switcher/comparison switcher/presets switcher/unsent switcher switcher/wire stations db db/jet config model" ;;
    app/shell) echo "$below_app" ;;
    app/kept | app/paper | app/transfer | app/undo) echo "app/shell $below_app" ;;
    app/log) echo "app/transfer app/shell $below_app" ;;
    app/network) echo "app/log app/shell $below_app" ;;
    app/backups | app/presets) echo "app/kept app/shell $below_app" ;;
    app/journal) echo "app/shell stations/journal $below_app" ;;
    app/run) echo "app/backups app/journal app/kept app/log app/transfer app/shell $below_app" ;;
    app) echo "$rooms_of_app $below_app" ;;
  esac
}

# A folder that is inside another one stands before it.
folders="model files db/jet config db stations/journal stations switcher/wire switcher/unsent switcher/comparison switcher/presets switcher gateway/ember gateway views/rules views/widgets views/window_place views $rooms_of_app app"

failed=0
{
  for folder in $folders; do echo "$folder $folder $(allowed "$folder")"; done
  echo
  for folder in $folders; do
    find "$folder" -name '*.h' -o -name '*.cpp'
  done | sort -u
} | awk '
  # The innermost folder of the list that a path is in.
  function folder_of(path,  i) {
    for (i = 1; i <= count; i++) if (index(path, folders[i] "/") == 1) return folders[i]
    return ""
  }
  function complain(text) { print text; failed = 1 }

  !listed && NF == 0 { listed = 1; next }
  !listed {
    folders[++count] = $1
    for (i = 2; i <= NF; i++) may[$1, $i] = 1
    next
  }
  {
    file = $0
    folder = folder_of(file)
    knows_no_toolkit = folder ~ /^(model|files|db\/jet|db|stations|stations\/journal|switcher\/(wire|unsent|comparison|presets)|gateway\/ember|views\/rules)$/
    knows_no_windows = folder ~ /^(config|switcher|gateway)$/
    while ((getline line < file) > 0) {
      if (line ~ /^#include "[^"]*\/[^"]*"$/) {
        split(line, parts, "\"")
        target = folder_of(parts[2])
        if (target == "") complain(file " includes " parts[2] ", which is in no folder of the program")
        else if (!((folder, target) in may)) complain(file " must not include " parts[2])
      }
      if (knows_no_toolkit && line ~ /^#include <(Q|qt)/) complain(file " must not know the toolkit")
      if (knows_no_windows && line ~ /^#include <Q(Widget|Application|MessageBox|Dialog|Painter|Print)/)
        complain(file " must not know windows")
    }
    close(file)
  }
  END { exit failed }
' || failed=1

# Every test that is written is run.
for test in $(find tests -name '*_test.cpp'); do
  name=$(basename "$test" .cpp)
  grep -qE "(^|[ (])$name\.cpp" "$(dirname "$test")/CMakeLists.txt" ||
    { echo "$test is not registered"; failed=1; }
done
exit $failed
