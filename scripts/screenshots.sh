#!/usr/bin/env bash
# Renders the main window in its typical states, in a light and a dark
# palette, to PNG files under screenshots/ (headless, Qt's offscreen platform).
#   scripts/screenshots.sh [output folder]
# With --wayland, shows the window under a headless Wayland compositor (sway)
# instead and has the compositor take the pictures (grim), at output scale 1
# and 2: wayland-*.png and wayland-2x-*.png.
#   scripts/screenshots.sh --wayland [output folder]
set -euo pipefail
cd "$(dirname "$0")/.."
mode=offscreen
if [ "${1:-}" = --wayland ]; then
  mode=wayland
  shift
fi
out=$(realpath -m "${1:-screenshots}")
build=${ZQB_SCREENSHOT_BUILD:-build/screenshots}

cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZQB_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" --target zqb-ui-screenshots
mkdir -p "$out"
tool="$PWD/$build/tests/ui/zqb-ui-screenshots"

if [ "$mode" = offscreen ]; then
  QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 "$tool" "$out"
  exit 0
fi

# sway with no screen and no input devices, windows at the top left without
# decorations. It refuses to run as root; then it runs as nobody.
run_under_sway() { # scale, then the tool's arguments
  local scale=$1
  shift
  local dir
  dir=$(mktemp -d)
  chmod 711 "$dir"
  mkdir -m 700 "$dir/sway" "$dir/run"
  cat > "$dir/sway/config" <<CONFIG
output HEADLESS-1 resolution $((1280 * scale))x$((2400 * scale)) scale $scale
xwayland disable
default_border none
default_floating_border none
for_window [app_id=".*"] floating enable, move position 0 0
for_window [title=".*"] floating enable, move position 0 0
CONFIG
  local launch=(sway -c "$dir/sway/config")
  if [ "$(id -u)" -eq 0 ]; then
    chown -R nobody: "$dir/sway"
    launch=(setpriv --reuid=nobody --regid=nogroup --clear-groups -- "${launch[@]}")
  fi
  env -u DISPLAY -u WAYLAND_DISPLAY HOME="$dir/sway" XDG_RUNTIME_DIR="$dir/sway" \
    WLR_BACKENDS=headless WLR_LIBINPUT_NO_DEVICES=1 WLR_RENDERER=pixman \
    "${launch[@]}" > "$dir/sway.log" 2>&1 &
  local sway=$!
  local socket=
  for _ in $(seq 100); do
    socket=$(find "$dir/sway" -maxdepth 1 -type s -name 'wayland-*' | head -n1)
    [ -n "$socket" ] && break
    sleep 0.1
  done
  local status=0
  if [ -z "$socket" ]; then
    cat "$dir/sway.log" >&2
    status=1
  else
    (cd "$out" && env -u DISPLAY WAYLAND_DISPLAY="$socket" XDG_RUNTIME_DIR="$dir/run" \
      QT_QPA_PLATFORM=wayland LC_ALL=C.UTF-8 "$tool" --compositor "$@" "$out") || status=$?
  fi
  kill "$sway" 2>/dev/null || true
  wait "$sway" 2>/dev/null || true
  rm -rf "$dir"
  return "$status"
}

run_under_sway 1 --prefix wayland- --light --only 2-setup-required,3-connected-idle,4-uploading
run_under_sway 2 --prefix wayland-2x- --light --only 4-uploading
