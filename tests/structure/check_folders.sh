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

# folder_of PATH: the innermost folder of the list that the path is in.
folder_of() {
  for folder in $folders; do
    case "$1" in "$folder"/*) echo "$folder"; return ;; esac
  done
}

failed=0
for folder in $folders; do
  files=$(find "$folder" -name '*.h' -o -name '*.cpp')
  for file in $files; do
    [ "$(folder_of "$file")" = "$folder" ] || continue
    while read -r include; do
      target=$(folder_of "$include")
      [ -n "$target" ] || { echo "$file includes $include, which is in no folder of the program"; failed=1; continue; }
      case " $folder $(allowed "$folder") " in
        *" $target "*) ;;
        *) echo "$file must not include $include"; failed=1 ;;
      esac
    done < <(sed -n 's/^#include "\(.*\/.*\)"$/\1/p' "$file")
    case "$folder" in
      model | files | db/jet | db | stations | stations/journal | switcher/wire | switcher/unsent | \
        switcher/comparison | switcher/presets | gateway/ember | views/rules)
        if grep -nE '^#include <(Q|qt)' "$file"; then echo "$file must not know the toolkit"; failed=1; fi ;;
      config | switcher | gateway)
        if grep -nE '^#include <Q(Widget|Application|MessageBox|Dialog|Painter|Print)' "$file"; then
          echo "$file must not know windows"; failed=1
        fi ;;
    esac
  done
done

# Every test that is written is run.
for test in $(find tests -name '*_test.cpp'); do
  name=$(basename "$test" .cpp)
  grep -qE "(^|[ (])$name\.cpp" "$(dirname "$test")/CMakeLists.txt" ||
    { echo "$test is not registered"; failed=1; }
done
exit $failed
