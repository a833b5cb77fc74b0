#!/usr/bin/env bash
# Runs the app on a real KDE Plasma 5 session (Wayland, headless) as a user
# the test creates, driven with real pointer and key input through KWin: the
# same scenarios as on GNOME and XFCE (tray icon and tint, its menu, Open,
# the notification of a completed backup, a relaunch from the application
# launcher, the folder panel, Quit, and the login order where the app starts
# before the tray host).
# Needs root (the session's user is created and the engine is placed in a
# private mount namespace). Installs Plasma's packages when missing (about
# 300 MB), which is why this is not part of scripts/test.sh.
set -euo pipefail
cd "$(dirname "$0")/.."

# plasma-wayland-protocols: KWin's fake-input protocol, for the test's pointer
# and keyboard; qml-module-org-kde-kitemmodels: the application launcher
# (Kickoff), through which the test starts the app again.
packages=(kwin-wayland plasma-workspace plasma-desktop kded5 qtwayland5 xwayland qdbus-qt5
          plasma-wayland-protocols qml-module-org-kde-kitemmodels)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  sudo_cmd=()
  [ "$(id -u)" -eq 0 ] || sudo_cmd=(sudo)
  export DEBIAN_FRONTEND=noninteractive
  "${sudo_cmd[@]}" apt-get update -qq
  "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
scripts/install-deps.sh test

cmake -S . -B build/plasma -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZQB_WERROR=ON \
  -DZQB_TEST_PLASMA=ON -DZQB_BUILD_BENCH=OFF
cmake --build build/plasma -j "$(nproc)" --target zqb-agent-app zqb-engine-sim zqb-e2e-sni-host \
  zqb-shells-fake-input
(cd build/plasma && ctest --output-on-failure -L shell_plasma)
