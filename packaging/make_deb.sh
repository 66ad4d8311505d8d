#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# Builds the Debian package of the console and says how to install it.
set -euo pipefail
cd "$(dirname "$0")/.."

# shellcheck source=tools/setup/packages.sh
. tools/setup/packages.sh
# shellcheck disable=SC2086
need $build_packages $package_packages

cmake --workflow --preset package
echo "Install it with: apt install $PWD/build/package/teskctl_*.deb"
