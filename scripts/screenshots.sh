#!/usr/bin/env bash
# Renders the main window in its typical states, in a light and a dark
# palette, to PNG files under screenshots/ (headless, Qt's offscreen platform).
#   scripts/screenshots.sh [output folder]
set -euo pipefail
cd "$(dirname "$0")/.."
out=${1:-screenshots}
build=${ZQB_SCREENSHOT_BUILD:-build/screenshots}

cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZQB_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" --target zqb-ui-screenshots
mkdir -p "$out"
QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 "$build/tests/ui/zqb-ui-screenshots" "$out"
