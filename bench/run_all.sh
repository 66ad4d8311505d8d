#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# bench/run_all.sh [--quick] [--markdown | --readme]: builds the benchmarks, runs all of them and
# prints one table of what they measured, what it is compared with and the limits.
#
#   --quick      rougher figures in some two minutes instead of ten
#   --markdown   the table as Markdown
#   --readme     the same, put into README.md in place of the one that stands there
#
# Ends with 0 when every limit is held, with 1 when one was missed, with 2 when a figure could not
# be had.  The output of each program is kept in build/release/bench-runs/.
set -euo pipefail
cd "$(dirname "$0")/.."
export LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen

quick=()
layout=text
for argument in "$@"; do
  case $argument in
    --quick) quick=(--quick) ;;
    --markdown) layout=markdown ;;
    --readme) layout=readme ;;
    *) sed -n '4,12s/^# \{0,1\}//p' "$0" >&2; exit 2 ;;
  esac
done

build() {
  # shellcheck source=tools/setup/packages.sh disable=SC1091
  . tools/setup/packages.sh
  # shellcheck disable=SC2086,SC2154
  need $build_packages $run_packages mdbtools
  cmake --preset release >/dev/null
  cmake --build --preset release --target teskctl tesksim "${programs[@]}"
}

# What the figures depend on, in one line.
machine() {
  # shellcheck disable=SC1091
  local cache=build/release/CMakeCache.txt qt compiler model
  model=$(sed -n 's/^model name[^:]*: *//p' /proc/cpuinfo | head -n 1)
  qt=$(sed -n 's/^Qt6_DIR:PATH=//p' "$cache")
  qt=$(sed -n 's/^set(PACKAGE_VERSION "\(.*\)")/\1/p' "$qt"/Qt6ConfigVersion*.cmake | head -n 1)
  compiler=$(sed -n 's/^CMAKE_CXX_COMPILER:[A-Z]*=//p' "$cache")
  compiler=$("$compiler" --version | head -n 1)
  echo "$(nproc) processors, ${model:-$(uname -m)}$(grep -qw hypervisor /proc/cpuinfo &&
    echo ' (virtual)')," \
    "$(. /etc/os-release && echo "$PRETTY_NAME"), Qt $qt, $compiler," \
    "$(sed -n 's/^CMAKE_BUILD_TYPE:STRING=//p' "$cache"), load $load at the start"
}

# "85 figures, 61 of them with a limit: all held."
summary() {
  awk -F '\t' '
    $8 != "" { limits++ }
    $8 == "missed" { missed++ }
    $8 == "no result" { failed++ }
    END {
      printf "%d figures, %d of them with a limit: ", NR, limits
      if (missed + failed == 0) printf "all held"
      if (missed) printf "%d missed", missed
      if (missed && failed) printf ", "
      if (failed) printf "%d without a result", failed
      print "."
    }' "$figures"
}

# Reads a line of figures (see bench/figures.h) into its fields.
read_figure() {
  # Tabs that follow each other are one to read: they get something between them.
  local line
  IFS= read -r line || return 1
  IFS=$'\x1f' read -r what value unit other other_value ratio limit verdict <<<"${line//$'\t'/$'\x1f'}"
  figure="$value $unit"
  compared=
  [ -z "$other" ] || compared="$other $other_value $unit"
}

headings=("What" "Figure" "Compared with" "Ratio" "Limit" "Result")

print_text() {
  local width=(0 0 0 0 0 0) cells i row
  table_rows() { printf '%s\x1f' "${headings[@]}"; echo
    while read_figure; do
      printf '%s\x1f' "$what" "$figure" "$compared" "$ratio" "$limit" "$verdict"; echo
    done <"$figures"; }
  while IFS=$'\x1f' read -r -a cells; do
    for i in "${!cells[@]}"; do
      [ "${#cells[i]}" -le "${width[i]}" ] || width[i]=${#cells[i]}
    done
  done < <(table_rows)
  machine
  summary
  echo
  while IFS=$'\x1f' read -r -a cells; do
    row=
    for i in "${!cells[@]}"; do
      row+="${cells[i]}$(printf '%*s' $((width[i] - ${#cells[i]} + 2)) '')"
    done
    echo "${row%"${row##*[! ]}"}"
  done < <(table_rows)
}

print_markdown() {
  echo "Taken on: $(machine)."
  echo
  printf '| %s ' "${headings[@]}"
  printf '|\n|---|---|---|---|---|---|\n'
  while read_figure; do
    echo "| $what | $figure | $compared | $ratio | $limit | $verdict |"
  done <"$figures"
}

put_into_readme() {
  local begin='<!-- figures: bench/run_all.sh --readme -->' end='<!-- end of figures -->'
  {
    echo "<details>"
    echo "<summary>$(summary)</summary>"
    echo
    print_markdown
    echo
    echo "</details>"
  } >"$runs/table.md"
  awk -v begin="$begin" -v end="$end" -v table="$runs/table.md" '
    $0 == end { inside = 0; places++ }
    !inside { print }
    $0 == begin {
      inside = 1
      print ""
      while ((getline line < table) > 0) print line
      print ""
    }
    END { exit places != 1 }' README.md >"$runs/README.md" ||
    { echo "README.md has no place for the table" >&2; return 2; }
  cat "$runs/README.md" >README.md
}

mapfile -t programs < <(find bench -name '*_bench.cpp' -printf '%f\n' | sed 's/\.cpp$//' | sort)
build >&2

load=$(cut -d ' ' -f 1 /proc/loadavg)
if awk -v load="$load" 'BEGIN { exit !(load > 1) }'; then
  echo "The machine is busy (load $load): the figures will be rough." >&2
fi
runs=build/release/bench-runs
rm -rf "$runs"
mkdir -p "$runs"
figures=$runs/figures.tsv
: >"$figures"
missed=0
failed=0
for program in "${programs[@]}"; do
  start=$SECONDS
  status=0
  timeout 600 "build/release/bin/$program" "${quick[@]}" --figures="$figures" \
    >"$runs/$program.log" 2>&1 || status=$?
  echo "$program: $((SECONDS - start)) s" >&2
  case $status in
    0) ;;
    1) missed=1 ;;
    *) failed=1; echo "$program: no result, see $runs/$program.log" >&2 ;;
  esac
done

case $layout in
  text) print_text ;;
  markdown) summary; echo; print_markdown ;;
  readme) put_into_readme ;;
esac
awk -F '\t' '$8 == "missed" || $8 == "no result" { print $8 ": " $1 }' "$figures" >&2
[ "$failed" -eq 0 ] || exit 2
exit "$missed"
