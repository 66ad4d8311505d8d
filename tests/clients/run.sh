#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# usage: run.sh BIN WORK
#
# Plays with the open gateway of the programs in BIN, by two published consumers that are installed
# below WORK.  Ends with 77, and says why, where these cannot be had: nothing was tested then.
set -u
here=$(cd "$(dirname "$0")" && pwd)
bin=$(cd "$1" && pwd) || exit 2
mkdir -p "$2" && cd "$2" || exit 2

skip() { echo "SKIPPED: $1. The open gateway was not tried with other consumers."; exit 77; }

command -v node >/dev/null && command -v npm >/dev/null || skip "node and npm are not installed"
if ! cmp -s "$here/package.json" package.json || [ ! -e installed ]; then
  rm -rf node_modules installed
  cp "$here/package.json" . || exit 2
  timeout 240 npm install --no-audit --no-fund --no-package-lock --ignore-scripts \
    --fetch-retries=1 --fetch-timeout=20000 >npm.log 2>&1 ||
    skip "the packages cannot be fetched ($(grep -m 1 -i 'code' npm.log || echo 'see npm.log'))"
  touch installed
fi
NODE_PATH=$PWD/node_modules exec node "$here/clients_test.js" "$bin"
