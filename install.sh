#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Installs the Debian packages that the project needs and that are not there yet.
#   ./install.sh run    what the console needs to be built and run
#   ./install.sh test   that, and what the tests need besides
set -euo pipefail

run_packages=(
  # compilers and build tools
  g++ cmake ninja-build ccache pkg-config
  # the dialog templates are written for the resource compiler
  binutils-mingw-w64-x86-64 mingw-w64-common
  # the console and the embedded directory
  qt6-base-dev libcli11-dev nlohmann-json3-dev libldb-dev libtalloc-dev libtdb-dev libtevent-dev
  libjemalloc-dev
  # directory servers: LDAP, and Kerberos to sign in with
  libldap-dev libkrb5-dev krb5-user
  # fonts with the metrics that the dialogs are laid out for
  fonts-liberation fonts-dejavu-core
)

test_packages=(
  "${run_packages[@]}"
  libgtest-dev libgmock-dev ldb-tools python3 git
  clang lld clang-format clang-tidy shellcheck man-db
  # a domain controller that the tests run for themselves, and a server of their own beside it
  samba-ad-dc samba-ad-provision samba-dsdb-modules samba-vfs-modules python3-samba winbind
  ldap-utils iproute2 libsasl2-dev libsasl2-modules-gssapi-mit
  # the Windows build and its tests
  g++-mingw-w64-x86-64-posix mingw-w64-tools googletest
  wine wine64 libwine-dev fonts-wine xvfb xauth locales
  # what a screen reader hears with
  at-spi2-core dbus-daemon python3-gi gir1.2-atspi-2.0
  # packages for both systems, and what looks them over
  dpkg-dev fakeroot file lintian debootstrap desktop-file-utils appstream shared-mime-info wixl msitools
  openssl osslsigncode
)

case "${1:-}" in
  run) wanted=("${run_packages[@]}") ;;
  test) wanted=("${test_packages[@]}") ;;
  *)
    echo "usage: $0 run|test" >&2
    exit 2
    ;;
esac

missing=()
for package in "${wanted[@]}"; do
  state=$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$state" = installed ] || missing+=("$package")
done
[ "${#missing[@]}" -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  if ! command -v sudo >/dev/null; then
    echo "These packages are missing: ${missing[*]}" >&2
    echo "Install them as root, or install sudo and run $0 again." >&2
    exit 1
  fi
  as_root=(sudo)
fi
echo "Installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get -q update
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get -q install -y --no-install-recommends "${missing[@]}"
