#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# Makes the pictures of the manual (app/help/pictures) and of the README (console.png beside this
# script) from the real console on a simulated switcher with the house of house.txt.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
bin=$root/build/release/bin
into=$root/app/help/pictures
work=$root/build/pictures

# shellcheck source=tools/setup/packages.sh
. "$root/tools/setup/packages.sh"
# shellcheck disable=SC2086
need $build_packages $run_packages $picture_packages

cmake -S "$root" --preset release >/dev/null
cmake --build "$root/build/release" --target programs gallery

rm -rf "$work"
mkdir -p "$into" "$work/user/Orvo" "$work/raw"
cp "$bin/teskctl" "$bin/tesksetup" "$work"
printf '[CONFIGURATION]\r\nCOM Port=1\r\nSoftpanel Support=No\r\n\r\n[SERIAL DEVICES]\r\nCOM1=%s\r\n' \
  "$work/line" >"$work/Orvotesk.ini"
# Places and sizes in twips, fifteen to a pixel.
cat >"$work/user/Orvo/Orvo Intercom Control.conf" <<EOF
[Settings]
MainLeft=0
MainTop=0
MainWidth=19200
MainHeight=12000
XmapLeft=0
XmapTop=0
XmapWidth=9150
XmapHeight=10800
ButnsLeft=9150
ButnsTop=0
ButnsWidth=9990
ButnsHeight=6150
AlphasLeft=9150
AlphasTop=6150
AlphasWidth=9990
AlphasHeight=4650
EOF

# A screen as in a control room.
cat >"$work/screen.json" <<EOF
{"synchronousWindowSystemEvents": false, "windowFrameMargins": false, "screens": [{"name": "desk",
 "x": 0, "y": 0, "width": 1920, "height": 1080, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]}
EOF

export HOME=$work/user XDG_CONFIG_HOME=$work/user XDG_DATA_HOME=$work/user \
  XDG_RUNTIME_DIR=$work/user LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen:configfile=$work/screen.json QT_PLUGIN_PATH=$bin
chmod 700 "$work/user"

simulator='' console='' dialog=''
cleanup() {
  for process in $dialog $console $simulator; do
    kill "$process" 2>/dev/null && wait "$process" 2>/dev/null || true
  done
  return 0
}
trap cleanup EXIT

# wait_for COMMAND: tries it for half a minute.
wait_for() {
  for _ in $(seq 300); do
    "$@" >/dev/null 2>&1 && return 0
    sleep 0.1
  done
  echo "In vain: $*" >&2
  return 1
}

# --- The pilot: everything that an operator does.

pilot=$work/pilot
ask() { "$bin/teskpilot" "$pilot" "$@"; }
does() { ask "$@" >/dev/null || { ask "$@"; return 1; }; }
trigger() { does "{\"do\":\"trigger\",\"object\":\"$1\",\"window\":\"${2:-frmMain}\"}"; }
click() { does "{\"do\":\"click\",\"object\":\"$1\"}"; }
close() { does "{\"do\":\"close\",\"object\":\"$1\"}"; }
keys() { does "{\"do\":\"keys\",\"object\":\"$1\",\"sequence\":\"$2\"}"; }
letters() { does "{\"do\":\"keys\",\"object\":\"$1\",\"text\":\"$2\"}"; }
letters_in() { does "{\"do\":\"keys\",\"window\":\"$1\",\"object\":\"$2\",\"text\":\"$3\"}"; }
turn_to() { does "{\"do\":\"set\",\"object\":\"SSActiveTabs1\",\"property\":\"currentIndex\",\"value\":$1}"; }
# cell OUTPUT INPUT
cell() { does "{\"do\":\"invoke\",\"object\":\"msfgXmap\",\"method\":\"selectCell\",\"args\":[$(($1 + 1)),$(($2 + 1))]}"; }
reads() { [[ $(ask "{\"do\":\"get\",\"object\":\"$1\",\"property\":\"$2\"}") == *"$3"* ]]; }
shows() { [[ $(ask "{\"do\":\"find\",\"object\":\"$1\"}") == *'"visible":true'* ]]; }
gone() { ! shows "$1"; }
# place OBJECT: its left edge and its width, in that which it stands in.
place() {
  ask "{\"do\":\"get\",\"object\":\"$1\",\"property\":\"geometry\"}" |
    sed -n 's/.*"value":\[\([0-9]*\),[0-9]*,\([0-9]*\),.*/\1 \2/p'
}

# grab OBJECT NAME: a picture as it is.
grab() { does "{\"do\":\"grab\",\"object\":\"$1\",\"file\":\"$work/raw/$2.png\"}"; }
# small NAME [OPTION...]: the picture of that name, small enough to ship, with a thin edge.
colors=64
small() {
  local name=$1
  shift
  convert "$work/raw/$name.png" "$@" +repage -bordercolor '#808080' -border 1 -dither None \
    -colors "$colors" -strip -define png:compression-level=9 "PNG8:$into/$name.png"
}
picture() {
  grab "$1" "$2"
  small "${@:2}"
}

# --- The switcher and its house.

mkfifo "$work/commands"
"$bin/tesksim" --baud 0 --link "$work/line" <"$work/commands" >"$work/switcher.log" &
simulator=$!
exec 3>"$work/commands"
switcher() { printf '%s\n' "$@" >&3; }
wait_for test -e "$work/line"
cat "$here/house.txt" >&3
switcher "help quit"
wait_for grep -q '^ok.*quit' "$work/switcher.log"
if grep '^error' "$work/switcher.log"; then exit 1; fi

QT_QPA_GENERIC_PLUGINS=teskpilot:$pilot "$work/teskctl" &
console=$!
wait_for reads aidMapState text 'Map '
wait_for reads sbStatusBar_1 text '"Connected'

# --- The console has the house from the switcher; a second retrieval goes wrong in one message.

trigger ID_RetreiveData
wait_for shows cmdOkSysInf
click cmdOkSysInf
wait_for reads frmSysInfo windowTitle Completed
close frmSysInfo
wait_for gone frmSysInfo
switcher "spoil relays 61 checksum"
trigger ID_RetreiveData
wait_for shows cmdOkSysInf
click cmdOkSysInf
wait_for reads frmSysInfo windowTitle Completed
letters lstMsgHistory "Output 63"
sleep 0.6
letters lstMsgHistory "Output 61 R"
picture frmSysInfo retrieve
close frmSysInfo
wait_for gone frmSysInfo
switcher "spoil none"

# --- Compared with a switcher that was changed at another place.

switcher "label out 12 NEWS 2" "label in 12 NEWS 2" "button 5 3 1 8 8" "button 5 4 0 9 9 10" \
  "relays 5 5 6"
trigger aidCompare
wait_for reads aidCompareSummary text 'differences in'
letters lstDifferences "S"
keys lstDifferences Space
picture frmCompare compare
close frmCompare
cat "$here/house.txt" >&3

# --- The whole window.

click cmdFirst
for _ in 1 2 3 4; do click cmdNext; done
cell 5 1
sleep 0.5
grab frmMain console
convert "$work/raw/console.png" -dither None -colors 128 -strip -define png:compression-level=9 \
  "PNG8:$here/console.png"
colors=192 small console -resize 760x

# --- The map.

picture aidLegend marks
picture frmXmap map -crop 608x547+0+0
letters msfgXmap c
letters_in frmXmap aidFindText am
sleep 0.3
picture frmXmap find -crop 608x367+0+0
keys msfgXmap Esc
cell 8 14
for _ in 1 2 3 4 5; do
  keys msfgXmap Shift+Right
  keys msfgXmap Shift+Down
done
picture frmXmap several-inhibits -crop 608x367+0+0
cell 5 13
trigger ID_Take frmXmap
wait_for does '{"do":"grabBox","file":"'"$work/raw/refusal.png"'"}'
small refusal
does '{"do":"closeBox"}'

# --- Labels.

trigger ID_StationAlphas
keys jgAlphas Ctrl+Home
for _ in 1 2 3 4; do keys jgAlphas Down; done
keys jgAlphas Right
letters jgAlphas O
letters edtLabel "B NORTH"
sleep 0.3
picture frmAlphas labels
keys edtLabel Esc
keys jgAlphas Esc

# --- Buttons, relays, optos.

trigger ID_ButtonProgramming
turn_to 0
picture frmButtons buttons
does '{"do":"click","object":"cmdButton_4"}'
sleep 0.3
picture frmButtons edit-button
trigger aidCopyToStations frmButtons
wait_for shows frmCopyTo
letters txtFindCopy "M"
click aidTickAll
picture frmCopyTo copy-to-stations
close frmCopyTo
wait_for gone frmCopyTo
turn_to 5
picture frmButtons relays
turn_to 6
click cmdPrev
click cmdPrev
sleep 0.3
picture frmButtons optos
turn_to 0

# --- Levels and tally.

trigger ID_SourceLevelControl
wait_for shows frmInptLevel
does '{"do":"invoke","object":"Slider1_8","method":"setFocus"}'
picture frmInptLevel levels -resize 760x
close frmInptLevel
wait_for gone frmInptLevel
trigger ID_QDVStatus
wait_for reads aidLastReport text "Last report"
picture frmQdvTally tally
close frmQdvTally
wait_for gone frmQdvTally

# --- The log.

cell 36 4
trigger ID_Take frmXmap
sleep 1
trigger aidEventLog
wait_for shows frmEventLog
picture frmEventLog event-log
close frmEventLog
wait_for gone frmEventLog

# --- What is not sent, and sending.

cell 9 20
trigger ID_ToggleInhibit frmXmap
picture aidEditMenu undo
turn_to 5
click ckRelaySel_9
sleep 0.3
read -r left _ < <(place aidMapState)
read -r last wide < <(place aidUnsent)
picture sbStatusBar unsent -crop "$((last + wide - left))x+$left+0"
trigger ID_SendData
wait_for shows cmdDownGo
picture frmDownProg send
click cmdDownGo
wait_for reads lblDownloadStatus text 'Sta 2'
picture frmDownProg sending
wait_for gone frmDownProg

# --- Export.

picture aidExportMenu export
trigger aidExportKeySheetsPdf
wait_for shows fileNameEdit
does "{\"do\":\"set\",\"object\":\"fileNameEdit\",\"property\":\"text\",\"value\":\"$work/keys.pdf\"}"
keys fileNameEdit Return
wait_for test -s "$work/keys.pdf"
pdftoppm -r 110 -f 5 -l 5 -singlefile -png "$work/keys.pdf" "$work/raw/key-sheet"
small key-sheet -trim -bordercolor white -border 12 -resize 720x

# --- What was changed, and what a console that is killed leaves to the next one.

trigger aidRecentChanges
wait_for shows frmChanges
does '{"do":"invoke","object":"lstChanges","method":"setFocus"}'
keys lstChanges Down
picture frmChanges recent-changes -resize 760x
close frmChanges
kill -KILL "$console"
wait "$console" || true
rm -f "$pilot"
QT_QPA_GENERIC_PLUGINS=teskpilot:$pilot "$work/teskctl" &
console=$!
wait_for shows aidRestore
does '{"do":"set","object":"frmMain","property":"size","value":[758,600]}'
picture aidHintStrip unsaved-run
click aidHintClose
# --- Copies of the database.

"$bin/gallery" backups "$work/raw"
mv "$work/raw/light-backups-3.png" "$work/raw/restore-backup.png"
small restore-backup

# --- The settings.

"$bin/gallery" settings "$work/raw"
mv "$work/raw/light-settings-tried.png" "$work/raw/settings.png"
small settings

# --- Key sheets, to be chosen.

"$bin/gallery" exports "$work/raw"
mv "$work/raw/light-key-sheets-chosen.png" "$work/raw/choose-key-sheets.png"
small choose-key-sheets

# --- A preset, to be recalled.

"$bin/gallery" presets "$work/raw"
mv "$work/raw/light-recall.png" "$work/raw/recall.png"
small recall

# --- What is unsent, to be sent.

"$bin/gallery" transfer "$work/raw"
mv "$work/raw/light-send-changes.png" "$work/raw/send-changes.png"
small send-changes

# --- The line that is down.

switcher unplug
wait_for reads sbStatusBar_1 text 'Not Connected'
wait_for gone aidNote
picture sbStatusBar link-down -crop 700x+0+0
close frmMain
wait "$console"
console=''

# --- Setting up another console.

pilot=$work/pilot-of-setup
QT_QPA_GENERIC_PLUGINS=teskpilot:$pilot "$work/tesksetup" &
dialog=$!
wait_for shows frmSetUp
letters txtName "Studio A"
does '{"do":"set","object":"txtFolder","property":"text","value":"/srv/intercom/Studio A"}'
does '{"do":"set","object":"cmbDevice","property":"currentText","value":"/dev/ttyUSB0"}'
click ckPanels
does '{"do":"set","object":"frmSetUp","property":"size","value":[580,380]}'
sleep 0.3
picture frmSetUp set-up
close frmSetUp

du -ch "$into"/*.png | tail -1
