#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# check_hardening.sh FOLDER: fails when a program in FOLDER, or in that of TESK_PROGRAMS, lacks what
# makes a fault in it hard to exploit: code that can stand anywhere, a stack protector, nothing
# writable that the linker has filled in.  Ends with 77, which is no failure, when the programs are
# those of a build with sanitizers, which nobody ships.
set -euo pipefail
export LC_ALL=C
folder=${TESK_PROGRAMS:-$1}
failed=0

# lacks PROGRAM WHAT
lacks() {
  echo "$1 has no $2"
  failed=1
}

for program in teskctl tesksim teskpanel tesksetup mdbdump; do
  file=$folder/$program
  symbols=$(readelf -Ws --dyn-syms "$file")
  if grep -q __asan_init <<<"$symbols"; then
    echo "$file is built for a search of faults, not to be shipped"
    exit 77
  fi
  header=$(readelf -Whdl "$file")
  grep -q 'Type: *DYN' <<<"$header" || lacks "$program" "code that can stand anywhere"
  grep -q GNU_RELRO <<<"$header" || lacks "$program" "read-only relocations"
  grep -q BIND_NOW <<<"$header" || lacks "$program" "binding before it starts"
  grep -q __stack_chk_fail <<<"$symbols" || lacks "$program" "stack protector"
  ! grep -q 'GNU_STACK.*RWE' <<<"$header" || lacks "$program" "stack without code"
done
exit "$failed"
