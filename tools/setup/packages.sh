# SPDX-License-Identifier: MIT
#
# Sourced by the scripts that build or run something: installs the Debian packages that they miss.

build_packages="g++ cmake ninja-build ccache qt6-base-dev qt6-serialport-dev qt6-svg-dev
  nlohmann-json3-dev zlib1g-dev libgtest-dev libgmock-dev libbenchmark-dev libsqlite3-dev"
run_packages="fonts-dejavu-core fonts-liberation"
screen_packages="tigervnc-standalone-server tigervnc-tools"
test_packages="clang-format mdbtools appstream desktop-file-utils man-db mandoc"
package_packages="dpkg-dev file"
fuzz_packages="clang libclang-rt-dev lld"
desktop_packages="xvfb openbox xdotool x11-utils imagemagick"
picture_packages="imagemagick poppler-utils"

# need PACKAGE...: installs those that are not there, as root or with sudo.
need() {
  missing=""
  for package in "$@"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
      missing="$missing $package"
  done
  [ -z "$missing" ] && return 0
  echo "Installing:$missing"
  as_root=""
  [ "$(id -u)" -eq 0 ] || as_root="sudo"
  $as_root apt-get update -q
  # shellcheck disable=SC2086
  DEBIAN_FRONTEND=noninteractive $as_root apt-get install -q -y --no-install-recommends $missing
}
