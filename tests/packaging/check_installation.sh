#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# check_installation.sh CMAKE BUILD SOURCE: installs into a folder of its own and fails when a file
# is missing or there is one too many, when a page names another one that is not installed, when the
# desktop would refuse an entry, or when a manual page and the program's own help do not name the same
# options, commands and exit codes.
set -uo pipefail
cmake=$1 build=$2 source=$3

root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
failed=0
fail() { echo "$*"; failed=1; }

# same WHAT EXPECTED FOUND: fails with the lines that differ.
same() {
  local difference
  difference=$(diff <(sort <<<"$2") <(sort <<<"$3")) || fail "$1 (< expected, > found):"$'\n'"$difference"
}

DESTDIR=$root "$cmake" --install "$build" --prefix /usr >/dev/null || exit 1
share=$root/usr/share

# --- The files

programs="teskctl tesksim teskpanel tesksetup"
expected=$(
  for program in $programs; do echo "bin/$program share/man/man1/$program.1.gz"; done
  for size in 16 22 24 32 48 64 128; do
    echo "share/icons/hicolor/${size}x$size/apps/teskctl.png"
  done
  (cd "$source/app" && find help -type f -printf 'share/doc/teskctl/%p\n')
  cat <<EOF
share/icons/hicolor/scalable/apps/teskctl.svg
share/applications/teskctl.desktop
share/applications/tesksetup.desktop
share/metainfo/invalid.orvo.teskctl.metainfo.xml
share/doc/teskctl/copyright
share/doc/teskctl/changelog.gz
share/doc/teskctl/ember.md
share/doc/teskctl/install.md
share/doc/teskctl/panel-format.md
share/doc/teskctl/wire-format.md
EOF
)
same "Installed files" "$(tr ' ' '\n' <<<"$expected")" "$(cd "$root/usr" && find . -type f -printf '%P\n')"

while read -r page named; do
  [ -f "$share/doc/teskctl/$named" ] || fail "$page names $named, which is not installed"
done < <(
  cd "$share" || exit
  for page in doc/teskctl/*.md doc/teskctl/help/*.html man/man1/*.gz; do
    # Tesk.mdb and WorkingDb.md$ are no pages.
    gzip -dcf "$page" | grep -oP '[\w-]+\.md(?![\w$])' | sort -u | sed "s|^|$page |"
  done
)

for picture in "$share"/icons/hicolor/*x*/apps/teskctl.png; do
  size=$(sed 's|.*/\([0-9]*\)x.*|\1|' <<<"$picture")
  # Width and height stand in the header, high byte first.
  same "Size of $picture" "$(printf '0 0 0 %d 0 0 0 %d' "$size" "$size")" \
    "$(od -An -tu1 -j16 -N8 "$picture" | xargs)"
done

version=$(sed -n 's/^CMAKE_PROJECT_VERSION:.*=//p' "$build/CMakeCache.txt")
same "Version of the changelog" "teskctl ($version)" \
  "$(gzip -dc "$share/doc/teskctl/changelog.gz" | sed -n '1s/).*/)/p')"
grep -q "<release version=\"$version\"" "$share"/metainfo/*.xml ||
  fail "The metainfo knows no release $version"
# The whole licence, whatever its lines are wrapped in.
same "Licence" "$(sed 1,4d "$source/LICENSE" | xargs -n1)" \
  "$(sed '1,/^License: Expat$/d;1,/^License: Expat$/d;s/^ \.$//' "$share/doc/teskctl/copyright" | xargs -n1)"
# What is compiled into the programs has authors of its own.
for author in "Niels Lohmann" "Florian Loitsch" "Bjoern Hoehrmann"; do
  grep -q "$author" "$share/doc/teskctl/copyright" || fail "The copyright does not name $author"
done

# --- The desktop

# checked_by PROGRAM ARGUMENT...: runs a checker; without it that much is not checked.
checked_by() {
  command -v "$1" >/dev/null || { echo "Not checked, there is no $1: ${*: -1}"; return; }
  "$@" || fail "$1 does not like ${*: -1}"
}

for entry in "$share"/applications/*.desktop; do
  checked_by desktop-file-validate "$entry"
  command=$(sed -n 's/^Exec=//p' "$entry")
  [ -x "$root/usr/bin/$command" ] || fail "$entry starts $command, which is not there"
  icon=$(sed -n 's/^Icon=//p' "$entry")
  [ -f "$share/icons/hicolor/scalable/apps/$icon.svg" ] || fail "$entry has no icon $icon"
done
metainfo=$(echo "$share"/metainfo/*.xml)
checked_by appstreamcli validate --no-net "$metainfo"
same "Programs of the metainfo" "$(tr ' ' '\n' <<<"$programs")" \
  "$(sed -n 's|.*<binary>\(.*\)</binary>.*|\1|p' "$metainfo")"
launched=$(sed -n 's|.*<launchable.*>\(.*\)</launchable>.*|\1|p' "$metainfo")
[ -f "$share/applications/$launched" ] || fail "The metainfo starts $launched, which is not there"

# --- The manual pages

# items PAGE MACRO: what the items of the page's lists name by the macro.
items() { gzip -dc "$share/man/man1/$1.1.gz" | sed -n "s/^\.It $2 -\{0,1\}\([^ ]*\).*/\1/p"; }

# statuses PAGE: the items of its list of exit codes.
statuses() {
  gzip -dc "$share/man/man1/$1.1.gz" | sed -n '/^\.Sh EXIT STATUS/,/^\.El/s/^\.It //p'
}

for program in $programs; do
  page=$share/man/man1/$program.1.gz
  plain=$root/$program.1
  gzip -dc "$page" >"$plain"
  checked_by mandoc -T lint -W warning "$plain"
  if command -v groff >/dev/null; then
    complaints=$(groff -mandoc -ww -z "$plain" 2>&1)
    [ -z "$complaints" ] || fail "$complaints"
  fi
done

# The console has neither options nor a help that it prints.
same "Options in teskctl.1" "" "$(items teskctl Fl)"

for program in tesksim teskpanel tesksetup; do
  help=$("$root/usr/bin/$program" --help) || fail "$program has no help"
  options=$(sed -n 's/^  --\([a-z-]*\).*/\1/p' <<<"$help")
  [ -n "$options" ] || fail "$program --help names no options"
  same "Options in $program.1" "$options" "$(items $program Fl)"
done

for program in tesksim teskpanel; do
  help=$("$root/usr/bin/$program" --help)
  commands=$(sed -n '/^Commands/,/^$/s/^  \([a-z-]*\).*/\1/p' <<<"$help")
  [ -n "$commands" ] || fail "$program --help names no commands"
  same "Commands in $program.1" "$commands" "$(items $program Cm)"
done

same "Exit codes in teskpanel.1" \
  "$("$root/usr/bin/teskpanel" --help | sed -n '/^Exit status/,$s/^  \([0-9]*\)  .*/\1/p')" \
  "$(statuses teskpanel)"
for program in tesksim tesksetup; do
  same "Exit codes in $program.1" \
    "$("$root/usr/bin/$program" --help | sed -n '/^Exit status/,$p' | grep -o '[0-9]')" \
    "$(statuses $program)"
done

exit $failed
