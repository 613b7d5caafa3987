#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need, only when one is missing.
set -euo pipefail

PACKAGES=(
  build-essential cmake ninja-build pkg-config ccache
  qt6-base-dev qt6-base-dev-tools qt6-qpa-plugins libgl-dev
  libgtest-dev libgmock-dev googletest libbenchmark-dev
  fonts-dejavu-core
  libproj-dev proj-data gpsd-clients
  lrzsz socat
  dpkg-dev lintian appstream desktop-file-utils
  python3 clang-format
)
if [ "${FENK_WITH_FUZZ:-0}" = 1 ]; then PACKAGES+=(clang); fi

missing=()
for p in "${PACKAGES[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "installing: ${missing[*]}"
SUDO=""
[ "$(id -u)" -ne 0 ] && SUDO="sudo"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
