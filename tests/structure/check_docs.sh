#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# Fails when a document names a file of the sources, or links to one, that is not there.
set -u
cd "$1" || exit 2

failed=0
for page in *.md docs/*.md tools/pilot/README.md; do
  # shellcheck disable=SC2016
  # `switcher/wire/frame.cpp`, `views/tally/`, `db/schema.*`, and without an ending `switcher/wire/frame`.
  while read -r path; do
    [ -d "${path%%/*}" ] || continue
    # What is built, and names that stand for others.
    case "$path" in build/* | *NAME* | *TARGET*) continue ;; esac
    compgen -G "$path" >/dev/null || compgen -G "$path.*" >/dev/null ||
      { echo "$page names $path, which is not there"; failed=1; }
  done < <(grep -oE '`[a-z_]+/[a-zA-Z0-9_./*-]*`' "$page" | tr -d '`' | sort -u)

  while read -r link; do
    [ -e "$(dirname "$page")/$link" ] || { echo "$page links to $link, which is not there"; failed=1; }
  done < <(grep -oE '\]\([^):#]+' "$page" | sed 's/^](//' | sort -u)
done
exit $failed
