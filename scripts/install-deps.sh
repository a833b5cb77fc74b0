#!/usr/bin/env bash
# Installs the Debian 12 packages the project needs, only when some are missing.
# Usage: scripts/install-deps.sh [build|test]
set -euo pipefail

build_packages=(
  build-essential cmake ninja-build pkg-config
  qt6-base-dev qt6-base-dev-tools qt6-svg-dev libqt6svg6 qt6-qpa-plugins qt6-wayland
  nlohmann-json3-dev libxcb1-dev qt6-l10n-tools
  dbus dbus-x11 xvfb xauth fonts-dejavu-core
  qt6-base-private-dev libwayland-dev libwayland-bin
)
test_packages=(
  clang libclang-rt-14-dev libbenchmark-dev libsimdjson-dev libx11-dev
  dunst libnotify-bin x11-utils xdotool imagemagick
  desktop-file-utils appstream
  dpkg-dev debhelper lintian
  sway grim libwayland-dev libwayland-bin wayland-protocols
  at-spi2-core python3 python3-gi gir1.2-atspi-2.0 util-linux
  gdb
  gnome-shell gnome-shell-extension-appindicator gjs
  xfwm4 xfce4-panel xfce4-notifyd xfconf exo-utils gir1.2-gtk-3.0
  xfce4-session gnome-tweaks # the desktops' own startup settings
  # KDE Plasma 5 on Wayland; plasma-wayland-protocols gives the test its
  # pointer and keyboard (KWin's fake input), and the kitemmodels module the
  # application launcher through which it starts the app again.
  kwin-wayland plasma-workspace plasma-desktop kded5 qtwayland5 xwayland qdbus-qt5
  plasma-wayland-protocols qml-module-org-kde-kitemmodels
  qt6-translations-l10n fonts-noto-cjk fonts-noto-core
)

packages=("${build_packages[@]}")
if [ "${1:-test}" = test ]; then
  packages+=("${test_packages[@]}")
fi

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
sudo_cmd=()
[ "$(id -u)" -eq 0 ] || sudo_cmd=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
