#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# Builds the console and opens it on a simulated switcher.  On a machine without a display its
# screen is served over VNC on the loopback address, with a password that is made anew each time,
# and a picture is saved when the map is complete.
set -euo pipefail
cd "$(dirname "$0")"
root=$PWD

# shellcheck source=tools/setup/packages.sh
. tools/setup/packages.sh
# shellcheck disable=SC2086
need $build_packages $run_packages

echo "Building (the first time takes a few minutes) ..."
cmake --preset release >/dev/null
cmake --build --preset release --target teskctl tesksim teskpilot teskpilot_plugin

# The program's folder is the folder of its executable: the demonstration has one of its own,
# with its own settings, database and window places.
bin=$root/build/release/bin
demo=$root/build/demo
line=$demo/switcher-line
settings=$demo/Orvotesk.ini
places="$demo/user/Orvo/Orvo Intercom Control.conf"
mkdir -p "$(dirname "$places")"
cp -f "$bin/teskctl" "$demo/teskctl"
if [ ! -f "$settings" ]; then
  sed 's/$/\r/' >"$settings" <<EOF
[CONFIGURATION]
COM Port=1

[SERIAL DEVICES]
COM1=$line
EOF
fi
if [ ! -f "$places" ]; then
  cat >"$places" <<EOF
[Settings]
MainLeft=0
MainTop=0
MainWidth=19200
MainHeight=12000
ButnsTop=4500
XmapLeft=2700
XmapTop=300
XmapWidth=16000
XmapHeight=9600
EOF
fi

# wait_for COMMAND: tries it for half a minute.
wait_for() {
  for _ in $(seq 300); do
    "$@" && return 0
    sleep 0.1
  done
  return 1
}

simulator= screen= console=
cleanup() {
  # The console first, so that it saves its database; then what it stands on.
  for process in $console $screen $simulator; do
    kill "$process" 2>/dev/null && wait "$process" 2>/dev/null
  done
  return 0
}
trap cleanup EXIT
trap 'exit 130' INT TERM

"$bin/tesksim" --demo --log --link "$line" </dev/null >"$demo/tesksim.log" 2>&1 &
simulator=$!
wait_for test -e "$line" || { cat "$demo/tesksim.log"; exit 1; }

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  echo "Starting the console on the simulated switcher. Its files are in $demo."
  XDG_CONFIG_HOME=$demo/user "$demo/teskctl" &
  console=$!
  wait "$console"
  exit
fi

# shellcheck disable=SC2086
need $screen_packages
port=5900
while (exec 3<>"/dev/tcp/127.0.0.1/$port") 2>/dev/null; do port=$((port + 1)); done
# Other users of this machine can reach the loopback address, too.
password=$(head -c 64 /dev/urandom | base64 | tr -dc '[:alnum:]' | head -c 8)
(umask 077 && tigervncpasswd -f <<<"$password" >"$demo/screen.password")
Xvnc -displayfd 1 -localhost -rfbport "$port" -SecurityTypes VncAuth \
  -PasswordFile "$demo/screen.password" -geometry 1280x800 -depth 24 \
  >"$demo/display" 2>"$demo/screen.log" &
screen=$!
wait_for test -s "$demo/display" || { cat "$demo/screen.log"; exit 1; }

# The pilot makes the picture and leaves: from then on nothing but the screen drives the console.
pilot=$demo/pilot.socket
DISPLAY=:$(cat "$demo/display") XDG_CONFIG_HOME=$demo/user QT_PLUGIN_PATH=$bin \
  QT_QPA_GENERIC_PLUGINS=teskpilot:$pilot "$demo/teskctl" &
console=$!
echo "There is no display here: the console's screen is served over VNC at 127.0.0.1:$port,"
echo "for this machine only. The password is $password. Its files are in $demo. End it with Ctrl+C."

# The console asks for the tally once it has the whole map.
wait_for grep -q 'rx poll tally' "$demo/tesksim.log" || { echo "The map does not come."; exit 1; }
picture=$demo/console.png
"$bin/teskpilot" "$pilot" \
  "{\"do\":\"grab\",\"object\":\"frmMain\",\"file\":\"$picture\"}" '{"do":"leave"}' >/dev/null
echo "The map is complete. A picture of the screen: $picture"
wait "$console"
