#!/bin/sh
# Runs a program in a private view of the file system in which the test's
# engine stands at the engine path the app was built with. The app is the
# shipped binary, unchanged: only this process tree sees the engine there,
# and nothing is written at that path on the machine.
#
# Usage: run-in-engine-root.sh ENGINE_PATH ENGINE WORKDIR PROGRAM [ARGS...]
# Exits 77 when this machine cannot make a private mount namespace.
set -eu
if [ "${ZQB_A11Y_IN_NAMESPACE:-}" != 1 ]; then
  if [ "$(id -u)" -eq 0 ]; then
    set -- unshare --mount --propagation private "$0" "$@"
  else
    set -- unshare --user --map-current-user --mount --propagation private "$0" "$@"
  fi
  ZQB_A11Y_IN_NAMESPACE=1 "$@" || status=$?
  exit "${status:-0}"
fi

engine_path=$1 engine=$2 workdir=$3
shift 3
here=$(pwd)
root=$workdir/engine-root
mkdir -p "$root"
mount -t tmpfs -o mode=0755 engine-root "$root" 2>/dev/null || {
  echo "cannot mount a private root: skipping" >&2
  exit 77
}
# Every top-level entry of the real root, as it is (symlinks stay symlinks).
for entry in /* /.[!.]*; do
  [ -e "$entry" ] || [ -L "$entry" ] || continue
  name=${entry#/}
  if [ -L "$entry" ]; then
    ln -s "$(readlink "$entry")" "$root/$name"
  elif [ -d "$entry" ]; then
    mkdir "$root/$name"
    mount --rbind "$entry" "$root/$name"
  else
    touch "$root/$name"
    mount --bind "$entry" "$root/$name"
  fi
done
# The engine path may or may not start in a directory the machine has; the
# engine itself is a bind of the test's engine onto an empty file.
engine_dir=$(dirname "$engine_path")
if [ -e "$engine_dir" ]; then
  echo "the engine's folder exists on this machine; refusing to cover it" >&2
  exit 1
fi
top=/$(printf '%s' "$engine_path" | cut -d/ -f2)
if [ -e "$top" ]; then
  # The top directory exists (e.g. /opt): cover it with a copy-free overlay
  # of its own entries so the new folder lives only in this view.
  mount -t tmpfs -o mode=0755 engine-top "$root$top"
  for entry in "$top"/* "$top"/.[!.]*; do
    [ -e "$entry" ] || [ -L "$entry" ] || continue
    name=${entry##*/}
    if [ -L "$entry" ]; then
      ln -s "$(readlink "$entry")" "$root$top/$name"
    elif [ -d "$entry" ]; then
      mkdir "$root$top/$name"
      mount --rbind "$entry" "$root$top/$name"
    else
      touch "$root$top/$name"
      mount --bind "$entry" "$root$top/$name"
    fi
  done
fi
mkdir -p "$root$engine_dir"
touch "$root$engine_path"
mount --bind "$engine" "$root$engine_path"
cd /
exec chroot "$root" /bin/sh -c 'cd "$1" && shift && exec "$@"' sh "$here" "$@"
