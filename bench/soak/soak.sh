#!/usr/bin/env bash
# A day with a misbehaving engine, compressed: the shipped app (zqb-soak-app:
# the app with a shorter refresh and status-read limit, set through the same
# seams the unit tests use) against the stand-in engine at high speed, with a
# backup every 30 s behind the app's back, the target going offline and back,
# and each fault in turn: status reads crashing by a signal, garbage, a hung
# read, the engine file gone for a while, the notification server restarted.
#
#   bench/soak/soak.sh [--minutes M] [--refresh-ms N] [--build DIR]
#
# Defaults: 20 minutes, a refresh every 250 ms (about a day of 15-s refreshes
# in 20 minutes), the build in build/dev. Prints the report and keeps it in
# DIR/soak-report.txt. Needs xvfb, dbus, dunst. Not part of the test command.
set -euo pipefail
minutes=20 refresh_ms=250 build=build/dev
while [ $# -gt 0 ]; do
  case $1 in
    --minutes) minutes=$2; shift 2 ;;
    --refresh-ms) refresh_ms=$2; shift 2 ;;
    --build) build=$2; shift 2 ;;
    *) echo "unknown option $1" >&2; exit 2 ;;
  esac
done
root=$(cd "$(dirname "$0")/../.." && pwd)
build=$(cd "$root" && cd "$build" && pwd)
if [ -z "${ZQB_SOAK_ON_BUS:-}" ]; then
  cmake --build "$build" --target zqb-soak-app zqb-engine-sim >/dev/null
  exec env ZQB_SOAK_ON_BUS=1 dbus-run-session -- "$0" --minutes "$minutes" \
    --refresh-ms "$refresh_ms" --build "$build"
fi

work=$(mktemp -d /tmp/zqb-soak.XXXXXX)
state=$work/state engine=$work/engine/zqb-agent sim=$build/simulator/zqb-engine-sim
mkdir -p "$work/engine" "$work/folder"
export ZQB_SIM_STATE=$state ZQB_SIM_SPEED=1000
pids=()
cleanup() { for p in "${pids[@]}"; do kill "$p" 2>/dev/null || true; done; }
trap cleanup EXIT

# The engine the app runs: notes each command, then is the stand-in.
cat > "$engine" <<SH
#!/bin/sh
echo "\$1" >> "$work/engine-runs.log"
exec "$sim" "\$@"
SH
chmod +x "$engine"

# A display and a notification server that records what it shows.
exec 3< <(Xvfb -displayfd 1 -nolisten tcp -screen 0 1280x800x24 2>/dev/null & echo "pid $!")
read -r _ xvfb <&3; pids+=("$xvfb"); read -r display <&3
export DISPLAY=:$display
cat > "$work/record.sh" <<SH
#!/bin/sh
echo "\$DUNST_SUMMARY" >> "$work/notifications.log"
SH
chmod +x "$work/record.sh"
printf '[global]\n    monitor = 0\n    stack_duplicates = false\n[all]\n    summary = "*"\n    script = %s\n' \
  "$work/record.sh" > "$work/dunstrc"
start_dunst() {
  dunst -config "$work/dunstrc" >/dev/null 2>&1 &
  dunst_pid=$!
  for _ in $(seq 100); do
    dbus-send --session --print-reply --dest=org.freedesktop.DBus / \
      org.freedesktop.DBus.NameHasOwner string:org.freedesktop.Notifications 2>/dev/null |
      grep -q true && return 0
    sleep 0.1
  done
}
start_dunst

# An enrolled engine with one folder and one backup from before the start.
"$sim" enroll --invitation-stdin --state "$state" <<<"$("$sim" make-invitation)" >/dev/null
for i in 1 2 3 4 5; do head -c 4000 /dev/urandom > "$work/folder/file-$i"; done
printf '{"schema":"zqb.agent-settings.v1","enabled":false,"intervalMinutes":240,"sources":["%s"],"exclusions":[]}' \
  "$work/folder" | "$sim" configure --json-stdin --state "$state" >/dev/null
"$sim" backup-all --state "$state" >/dev/null
backups=0

ZQB_SOAK_ENGINE=$engine ZQB_SOAK_REFRESH_MS=$refresh_ms ZQB_SOAK_READ_LIMIT_MS=3000 \
  ZQB_SOAK_OUT=$work/stall.txt "$build/bench/soak/zqb-soak-app" >"$work/app.log" 2>&1 &
app=$!
pids+=("$app")

children() { { grep -l "^PPid:[[:space:]]*$app\$" /proc/[0-9]*/status 2>/dev/null || true; } | wc -l; }
snapshot() {
  local pss anon fds threads
  pss=$(awk '/^Pss:/ {print $2}' "/proc/$app/smaps_rollup")
  anon=$(awk '/^Pss_Anon:/ {print $2}' "/proc/$app/smaps_rollup")
  fds=$(ls "/proc/$app/fd" | wc -l)
  threads=$(ls "/proc/$app/task" | wc -l)
  printf '%-6s PSS %6s KiB (anonymous %6s KiB)  fds %3s  threads %3s  children %s\n' "$1" \
    "$pss" "$anon" "$fds" "$threads" "$(children)"
}

seconds=$((minutes * 60)) most_engines=0 faults=0
declare -a report
sleep 5
report+=("$(snapshot start)")
for ((t = 1; t <= seconds; ++t)); do
  sleep 1
  kill -0 "$app" || { echo "the app ended" >&2; exit 1; }
  n=$(children); [ "$n" -gt "$most_engines" ] && most_engines=$n
  phase=$((t % 120))
  if [ $((t % 30)) -eq 0 ] && [ "$phase" -lt 90 ]; then
    sleep 1.1 # a new second: each completion time differs
    "$sim" backup-all --state "$state" >/dev/null 2>&1 && backups=$((backups + 1))
  fi
  [ "$phase" -eq 95 ] && "$sim" set-condition offline --state "$state" >/dev/null
  [ "$phase" -eq 110 ] && "$sim" set-condition online --state "$state" >/dev/null
  if [ $((t % 60)) -eq 15 ]; then
    case $((faults++ % 5)) in
      0) "$sim" inject-fault crash --times 3 --state "$state" >/dev/null ;;
      1) "$sim" inject-fault garbage --state "$state" >/dev/null ;;
      2) "$sim" inject-fault hang --state "$state" >/dev/null ;;
      3) mv "$engine" "$engine.away"; sleep 5; mv "$engine.away" "$engine" ;;
      4) kill "$dunst_pid"; wait "$dunst_pid" 2>/dev/null || true; start_dunst ;;
    esac
  fi
  [ "$t" -eq $((seconds / 2)) ] && report+=("$(snapshot middle)")
done
sleep 5 # the last backup's announcement
report+=("$(snapshot end)")

{
  echo "Soak: $minutes min, refresh every $refresh_ms ms, status-read limit 3 s"
  printf '%s\n' "${report[@]}"
  echo "refreshes (ui-status runs): $(grep -c '^ui-status$' "$work/engine-runs.log")"
  echo "backups completed: $backups"
  echo "notifications posted: $(wc -l < "$work/notifications.log" 2>/dev/null || echo 0)"
  echo "faults injected: $faults"
  echo "most engine processes alive at once (sampled each second): $most_engines"
  echo "longest main-thread stall (wall clock, 10 ms timer): $(awk '{print $2}' "$work/stall.txt") us"
  echo "backups announced exactly once: $([ "$backups" -eq "$(wc -l < "$work/notifications.log")" ] && echo yes || echo NO)"
} | tee "$build/soak-report.txt"
kill "$dunst_pid" 2>/dev/null || true
cleanup
sleep 1
rm -rf "$work" 2>/dev/null || true
