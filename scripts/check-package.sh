#!/usr/bin/env bash
# Checks the Debian package that scripts/package.sh left in build/package:
#   scripts/check-package.sh
# 1. lintian reports no error and no warning (overrides in debian/ say why).
# 2. An install test on a private copy of this machine: a mount namespace
#    whose root is an overlay over the real one, so dpkg, the app and the
#    scripted engine change nothing outside it. There the package is installed
#    with dpkg; its desktop entries and AppStream data are validated; dpkg -L
#    must list exactly the files it placed; the installed zqb-agent-app runs
#    under Xvfb on a private session bus against a scripted engine at the
#    engine's fixed path (which exists inside the namespace only) until its
#    window "ZQB Agent" is mapped and it has run "ui-status", then quits on
#    Ctrl+Q; removing leaves only the inert autostart entry, and purging leaves
#    no file of the package behind.
# Needs root, or unprivileged user namespaces for a namespace of its own.
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
self="$here/$(basename "$0")"
package=zqb-agent
engine_path="/Library/Application Support/ZQB Agent/zqb-agent"

fail() {
  echo "check-package: $*" >&2
  exit 1
}

# Paths (relative to /) that the install test may change besides the package's
# own files: dpkg's bookkeeping and log, the caches that other packages'
# triggers rebuild when a desktop entry or icon arrives or leaves, the X
# server's compiled keymaps, and what the test itself changes: the scripted
# engine and man's automatic index update (switched off below).
not_ours='^((var/lib/dpkg|var/log|var/cache|var/lib/xkb|var/lib/man-db|Library)(/|$)|usr/share/applications/mimeinfo\.cache$|usr/share/icons/hicolor/icon-theme\.cache$)'

# Non-directory entries of an overlay's upper layer, relative, sorted.
changed_files() {
  (cd "$1" && find . -mindepth 1 ! -type d -printf '%P\n' | LC_ALL=C sort)
}

# Directories the upper layer holds that the real root does not have.
new_directories() {
  (cd "$1" && find . -mindepth 1 -type d -printf '%P\n' | LC_ALL=C sort) |
    while IFS= read -r d; do [ -d "/$d" ] || printf '%s\n' "$d"; done
}

# --- inside the private root (chroot) ----------------------------------------

in_root_install() {
  dpkg -i "/tmp/$(basename "$1")" >/tmp/dpkg.log 2>&1 || fail "dpkg -i failed: $(cat /tmp/dpkg.log)"
  [ "$(dpkg-query -W -f='${db:Status-Status}' "$package")" = installed ] ||
    fail "dpkg did not install $package"
  for f in /usr/bin/zqb-agent-app /usr/share/applications/zqb-agent.desktop \
      /etc/xdg/autostart/zqb-agent.desktop /usr/share/metainfo/local.zqb.agent.metainfo.xml \
      /usr/share/icons/hicolor/scalable/apps/zqb-agent.svg /usr/share/man/man1/zqb-agent-app.1.gz \
      /usr/share/doc/$package/copyright; do
    [ -e "$f" ] || fail "not installed: $f"
  done
  desktop-file-validate /usr/share/applications/zqb-agent.desktop \
    /etc/xdg/autostart/zqb-agent.desktop || fail "an installed desktop entry is not valid"
  appstreamcli validate --no-net /usr/share/metainfo/local.zqb.agent.metainfo.xml >/dev/null ||
    fail "the installed AppStream data is not valid"
  grep -qx 'Exec=zqb-agent-app --background' /etc/xdg/autostart/zqb-agent.desktop ||
    fail "the autostart entry does not start the app in the background"
  # Under /etc it belongs to the person: dpkg keeps their edits and purge removes it.
  dpkg-query -W -f='${Conffiles}\n' "$package" | grep -q '^ /etc/xdg/autostart/zqb-agent.desktop ' ||
    fail "the autostart entry is not a conffile"
  dpkg -L "$package" >/tmp/listed
}

in_root_run() {
  export HOME=/tmp/home XDG_RUNTIME_DIR=/tmp/runtime LC_ALL=C.UTF-8 QT_QPA_PLATFORM=xcb
  mkdir -p "$HOME" && mkdir -m 700 "$XDG_RUNTIME_DIR"
  unset WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS

  exec 3>/tmp/display
  Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp >/tmp/xvfb.log 2>&1 &
  xvfb=$!
  exec 3>&-
  for _ in $(seq 100); do [ -s /tmp/display ] && break; sleep 0.1; done
  [ -s /tmp/display ] || fail "Xvfb did not start: $(cat /tmp/xvfb.log)"
  export DISPLAY=":$(cat /tmp/display)"

  dbus-run-session -- zqb-agent-app >/tmp/app.log 2>&1 &
  app=$!
  # Whatever happens, the test leaves no process behind in the namespace.
  trap 'kill $app $xvfb 2>/dev/null || true' EXIT

  window=
  for _ in $(seq 300); do
    window=$(xdotool search --onlyvisible --name '^ZQB Agent$' 2>/dev/null | head -n1) || true
    [ -n "$window" ] && break
    kill -0 $app 2>/dev/null || fail "the app ended before its window appeared: $(cat /tmp/app.log)"
    sleep 0.1
  done
  [ -n "$window" ] || fail "no window titled \"ZQB Agent\" was mapped within 30 s: $(cat /tmp/app.log)"
  xwininfo -id "$window" | grep -q 'Map State: IsViewable' || fail "the window is not viewable"
  echo "install test: window \"ZQB Agent\" mapped ($window)"

  for _ in $(seq 300); do
    grep -q '^ui-status ' /tmp/engine.log 2>/dev/null && break
    sleep 0.1
  done
  grep -q '^ui-status ' /tmp/engine.log 2>/dev/null ||
    fail "the app never ran \"ui-status\" on the engine at its fixed path"
  echo "install test: the engine ran: $(head -n1 /tmp/engine.log)"

  xdotool windowfocus "$window" key ctrl+q
  for _ in $(seq 100); do kill -0 $app 2>/dev/null || break; sleep 0.1; done
  kill -0 $app 2>/dev/null && fail "the app did not quit on Ctrl+Q"
  wait $app || fail "the app exited with status $?: $(cat /tmp/app.log)"
  echo "install test: the app quit on Ctrl+Q"
}

in_root_remove() {
  dpkg -r "$package" >/tmp/dpkg.log 2>&1 || fail "dpkg -r failed: $(cat /tmp/dpkg.log)"
  [ ! -e /usr/bin/zqb-agent-app ] || fail "removing left the app behind"
  # A removed package keeps its conffiles until purged; TryExec keeps the
  # leftover autostart entry from starting anything meanwhile.
  grep -qx 'TryExec=zqb-agent-app' /etc/xdg/autostart/zqb-agent.desktop ||
    fail "the autostart entry left after removal would still try to start the app"
  dpkg --purge "$package" >/tmp/dpkg.log 2>&1 || fail "dpkg --purge failed: $(cat /tmp/dpkg.log)"
  if dpkg-query -W "$package" >/dev/null 2>&1; then
    fail "dpkg still knows $package after purging it"
  fi
}

# --- inside the private mount namespace -----------------------------------------

in_namespace() {
  local deb=$1 scratch=$2
  mount -t tmpfs -o mode=0755 zqb-package-check "$scratch"
  mkdir "$scratch/upper" "$scratch/work" "$scratch/root"
  mount -t overlay overlay -o "lowerdir=/,upperdir=$scratch/upper,workdir=$scratch/work" "$scratch/root"
  local root="$scratch/root" upper="$scratch/upper"
  mount --rbind /dev "$root/dev"
  mount -t proc proc "$root/proc"
  mount --rbind /sys "$root/sys"
  mount -t tmpfs -o mode=1777 zqb-package-tmp "$root/tmp"

  cp "$deb" "$self" "$root/tmp/"
  # The scripted engine, at the fixed path inside this namespace only: notes
  # each command and reports a connected engine.
  mkdir -p "$root$(dirname "$engine_path")"
  cat >"$root$engine_path" <<'ENGINE'
#!/bin/sh
printf '%s\n' "$*" >>/tmp/engine.log
[ "$1" = ui-status ] || exit 0
cat <<'JSON'
{"schema":"zqb.agent-ui-status.v1","agentVersion":"1.0.0","settings":{"schema":"zqb.agent-settings.v1","enabled":false,"intervalMinutes":60,"sources":[],"exclusions":[]},"transferPolicy":{"schema":"zqb.agent-transfer-policy.v1","paused":false,"bandwidthLimitKibPerSecond":0,"currentNetworkMetered":false,"allowMeteredNetwork":true,"retryAttempts":3},"runtime":{"state":"connected","message":"Connected","enrolled":true,"repositoryReady":true,"serviceReachable":true,"authorizedTargets":1,"agentUpdateAvailable":false,"compatibility":"compatible","active":false}}
JSON
ENGINE
  chmod 755 "$root$engine_path"
  # Rebuilding man's index on every dpkg run takes most of a minute and is no
  # part of what is checked here.
  rm -f "$root/var/lib/man-db/auto-update"
  local inner=(chroot "$root" /bin/bash "/tmp/$(basename "$self")")

  "${inner[@]}" --install "$(basename "$deb")"
  # What dpkg placed is exactly what it lists.
  changed_files "$upper" | grep -Ev "$not_ours" >"$scratch/placed" || true
  while IFS= read -r p; do
    [ -d "$root$p" ] && [ ! -L "$root$p" ] || printf '%s\n' "${p#/}"
  done <"$root/tmp/listed" | LC_ALL=C sort >"$scratch/listed"
  if ! diff -u "$scratch/listed" "$scratch/placed" >"$scratch/diff"; then
    fail "the files dpkg -L lists (-) differ from those the package placed (+):
$(cat "$scratch/diff")"
  fi
  echo "install test: dpkg -L lists all $(wc -l <"$scratch/placed") files the package placed"

  "${inner[@]}" --run
  "${inner[@]}" --remove

  # Purged: no file and no directory of the package, and dpkg forgot it.
  local left
  left=$( (changed_files "$upper" | grep -Ev "$not_ours"; new_directories "$upper" | grep -Ev "$not_ours") || true)
  [ -z "$left" ] || fail "purging left behind:
$left"
  if grep -q "^Package: $package\$" "$upper/var/lib/dpkg/status" ||
      compgen -G "$upper/var/lib/dpkg/info/$package.*" >/dev/null; then
    fail "dpkg's database still holds $package after the purge"
  fi
  echo "install test: purging left nothing of the package behind"
}

# --- outside ---------------------------------------------------------------------

case "${1:-}" in
  --install) in_root_install "$2"; exit ;;
  --run) in_root_run; exit ;;
  --remove) in_root_remove; exit ;;
  --namespace) in_namespace "$2" "$3"; exit ;;
esac

cd "$here/.."
out=build/package
shopt -s nullglob
debs=("$out/${package}"_*.deb)
changes=("$out/${package}"_*.changes)
[ ${#debs[@]} -eq 1 ] && [ ${#changes[@]} -eq 1 ] ||
  fail "expected one $package .deb and its .changes in $out (run scripts/package.sh)"
deb=$(realpath "${debs[0]}")

echo "Package: $(basename "$deb"), $(stat -c %s "$deb") bytes"
echo "Depends: $(dpkg-deb -f "$deb" Depends)"

echo "lintian:"
lintian --fail-on error,warning --display-info --pedantic "${changes[0]}" ||
  fail "lintian found errors or warnings"
echo "lintian: no errors, no warnings"

# A process namespace too: when the test ends, nothing it started survives.
unshare_cmd=(unshare --mount --propagation private --pid --fork)
[ "$(id -u)" -eq 0 ] || unshare_cmd+=(--user --map-root-user)
scratch=$(mktemp -d "${TMPDIR:-/tmp}/zqb-package-check.XXXXXX")
trap 'rmdir "$scratch" 2>/dev/null || true' EXIT
"${unshare_cmd[@]}" "$self" --namespace "$deb" "$scratch"
echo "The package passed its checks."
