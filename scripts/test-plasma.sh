#!/usr/bin/env bash
# Runs the app on a real KDE Plasma 5 session (Wayland, headless) as a user
# the test creates, driven with real pointer and key input through KWin: the
# same scenarios as on GNOME and XFCE (tray icon and tint, its menu, Open,
# the notification of a completed backup, a relaunch from the application
# launcher, the folder panel, Quit, and the login order where the app starts
# before the tray host).
# Needs root (the session's user is created and the engine is placed in a
# private mount namespace). The same tests run in scripts/test.sh with the
# others; this runs only them, in a build of its own.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh test

cmake -S . -B build/plasma -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZQB_WERROR=ON \
  -DZQB_TEST_PLASMA=ON -DZQB_BUILD_BENCH=OFF
cmake --build build/plasma -j "$(nproc)" --target zqb-agent-app zqb-engine-sim zqb-e2e-sni-host \
  zqb-shells-fake-input
(cd build/plasma && ctest --output-on-failure -L shell_plasma)
