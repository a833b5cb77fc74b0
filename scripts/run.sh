#!/usr/bin/env bash
# Builds the app against the stand-in engine and starts it: a demo that never
# touches a real engine or the user's own engine state.
#   scripts/run.sh
# Installs missing Debian packages first (apt-get, with sudo when not root).
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
build="$root/build/demo"

if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  echo "ZQB Agent needs a graphical desktop, but neither DISPLAY nor WAYLAND_DISPLAY is set." >&2
  echo "Run this from a terminal inside your desktop session." >&2
  exit 1
fi

"$root/scripts/install-deps.sh" build

# The demo build's engine is the stand-in, fixed at build time like a real one.
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DZQB_ENGINE_PATH="$build/simulator/zqb-engine-sim" \
  -DZQB_BUILD_TESTS=OFF -DZQB_BUILD_BENCH=OFF
cmake --build "$build" --target zqb-agent-app zqb-engine-sim -j "$(nproc)"

mkdir -p "$build/engine-state"
export ZQB_SIM_STATE="$build/engine-state"
# A small folder takes about 15 seconds: slow enough to watch, quick enough to wait for.
export ZQB_SIM_SPEED="${ZQB_SIM_SPEED:-1}"
echo "Starting ZQB Agent with the stand-in engine (state in $ZQB_SIM_STATE)."
exec "$build/src/app/zqb-agent-app"
