#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# tests/fuzz/run_all.sh [MINUTES [TARGET...]]: builds the fuzz targets and runs all of them, or
# those named, for MINUTES each (default 10), two at a time.  Inputs that reach new code are kept
# in build/fuzz/found/TARGET and used by the next run.  Ends at the first finding with 1 and says
# where its input lies: fix what it shows, then keep the input in tests/fuzz/corpus/TARGET.
set -euo pipefail
cd "$(dirname "$0")/../.."

minutes=${1:-10}
shift $(($# > 0 ? 1 : 0))
if ! [[ $minutes =~ ^[1-9][0-9]*$ ]]; then
  echo "usage: tests/fuzz/run_all.sh [MINUTES [TARGET...]]" >&2
  exit 2
fi
known=$(sed -n 's/^tesk_fuzz(\([a-z_]*\) .*/\1/p' tests/fuzz/CMakeLists.txt)
targets=("$@")
[ ${#targets[@]} -gt 0 ] || mapfile -t targets <<<"$known"
for target in "${targets[@]}"; do
  grep -qx "$target" <<<"$known" || { echo "no such target: $target" >&2; exit 2; }
done

# shellcheck source=tools/setup/packages.sh
. tools/setup/packages.sh
# shellcheck disable=SC2086
need $build_packages $fuzz_packages
cmake --preset fuzz
cmake --build --preset fuzz --target "${targets[@]}"

output=build/fuzz/runs
mkdir -p "$output"

# Runs one target.  It goes through the corpus first, so a finding there is one, too.
run() {
  local target=$1
  mkdir -p "build/fuzz/found/$target"
  exec build/fuzz/bin/"$target" -max_total_time=$((minutes * 60)) -timeout=25 -rss_limit_mb=2048 \
    -print_final_stats=1 -artifact_prefix="$output/$target-" \
    "build/fuzz/found/$target" "tests/fuzz/corpus/$target" >"$output/$target.log" 2>&1
}

declare -A running=()
# Without orphans, however this ends.
trap 'for pid in "${!running[@]}"; do kill "$pid" 2>/dev/null || true; done' EXIT

# Waits for one to end.
reap() {
  local pid status=0
  wait -n -p pid || status=$?
  local target=${running[$pid]}
  unset "running[$pid]"
  if [ "$status" -ne 0 ]; then
    echo "$target: FOUND something (exit status $status), see $output/$target.log"
    grep -m 1 "SUMMARY" "$output/$target.log" || true
    sed -n 's/.*Test unit written to /  the input: /p' "$output/$target.log"
    exit 1
  fi
  echo "$target: nothing found," \
    "$(sed -n 's/^stat::number_of_executed_units: *//p' "$output/$target.log") inputs tried"
}

for target in "${targets[@]}"; do
  [ ${#running[@]} -lt 2 ] || reap
  run "$target" &
  running[$!]=$target
  echo "$target: $minutes min"
done
while [ ${#running[@]} -gt 0 ]; do reap; done
