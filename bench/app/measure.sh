#!/usr/bin/env bash
# Measures the app against the bare Qt floor in one run, on a private X server
# and session bus, with an engine that answers at once. Run on demand; the test
# command never runs it. See bench/README.md for what each figure means.
#
# Usage: bench/app/measure.sh [--runs N] [--idle-runs N] [--idle-seconds S]
#                             [--refreshes N] [--folders "3 100 1000"]
#                             [--folder-refreshes N] [--build DIR] [--no-build]
set -euo pipefail

repo=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
build="$repo/build/bench"
runs=5
idle_runs=3
idle_seconds=60
refreshes=1000
folder_counts="3 100 1000"
folder_refreshes=50
do_build=1
while [ $# -gt 0 ]; do
    case "$1" in
    --runs) runs=$2; shift 2 ;;
    --idle-runs) idle_runs=$2; shift 2 ;;
    --idle-seconds) idle_seconds=$2; shift 2 ;;
    --refreshes) refreshes=$2; shift 2 ;;
    --folders) folder_counts=$2; shift 2 ;;
    --folder-refreshes) folder_refreshes=$2; shift 2 ;;
    --build) build=$(realpath -m "$2"); shift 2 ;;
    --no-build) do_build=0; shift ;;
    -h | --help) sed -n '2,9p' "$0"; exit 0 ;;
    *) echo "measure.sh: unknown option $1" >&2; exit 2 ;;
    esac
done

for tool in Xvfb dbus-daemon cmake ninja awk; do
    command -v "$tool" >/dev/null || { echo "measure.sh: $tool is needed" >&2; exit 2; }
done

bench_dir="$build/bench/app"
engine="$bench_dir/zqb-bench-engine"
app="$build/src/app/zqb-agent-app"
probed_app="$bench_dir/zqb-bench-app"
floor="$build/bench/floor/zqb-bench-floor"
launcher="$bench_dir/zqb-bench-x"
engine_log="$bench_dir/engine-calls.log"
title="Backing Up" # the badge title of the fake engine's state "backing-up"

if [ "$do_build" = 1 ]; then
    # The engine path is fixed at build time, so this build runs the fake engine.
    cmake -S "$repo" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
        -DZQB_ENGINE_PATH="$engine" -DZQB_BUILD_TESTS=OFF -DZQB_BUILD_BENCH=ON \
        -DZQB_BUILD_FUZZ=OFF -DZQB_SANITIZE=OFF >/dev/null
    ninja -C "$build" -j2 zqb-agent-app zqb-bench-app zqb-bench-floor zqb-bench-x \
        zqb-bench-engine >/dev/null
fi

work=$(mktemp -d /tmp/zqb-bench.XXXXXX)
pids_to_stop=()
cleanup() {
    for p in "${pids_to_stop[@]}"; do kill -KILL "$p" 2>/dev/null || true; done
    [ -n "${bus_pid:-}" ] && kill "$bus_pid" 2>/dev/null || true
    [ -n "${xvfb_pid:-}" ] && kill "$xvfb_pid" 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT

# --- a private X server and session bus --------------------------------------
exec 3>"$work/display"
# -noreset: by default the server starts over whenever its last client leaves,
# which includes compiling the keymap again in a child process (some 20 ms of
# CPU); between runs that would land on the next program's start-up.
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp -noreset >"$work/xvfb.log" 2>&1 &
xvfb_pid=$!
exec 3>&-
for _ in $(seq 100); do [ -s "$work/display" ] && break; sleep 0.05; done
[ -s "$work/display" ] || { echo "measure.sh: Xvfb did not start" >&2; exit 1; }
export DISPLAY=":$(head -n1 "$work/display")"
bus_info=$(dbus-daemon --session --fork --print-address=1 --print-pid=1)
export DBUS_SESSION_BUS_ADDRESS=$(echo "$bus_info" | sed -n 1p)
bus_pid=$(echo "$bus_info" | sed -n 2p)
export XDG_RUNTIME_DIR="$work/runtime"
mkdir -m 700 "$XDG_RUNTIME_DIR"
export QT_QPA_PLATFORM=xcb
unset WAYLAND_DISPLAY SESSION_MANAGER
export LC_ALL=C.UTF-8

results="$work/results"
: >"$results"
put() { echo "$1 $2" >>"$results"; } # figure-name value

# --- process helpers ---------------------------------------------------------
alive() { # a zombie counts as gone
    local state
    state=$(awk '{print $3}' "/proc/$1/stat" 2>/dev/null) || return 1
    [ -n "$state" ] && [ "$state" != Z ]
}
stop() {
    kill -TERM "$1" 2>/dev/null || true
    for _ in $(seq 100); do alive "$1" || return 0; sleep 0.05; done
    kill -KILL "$1" 2>/dev/null || true
    for _ in $(seq 100); do alive "$1" || return 0; sleep 0.05; done
}
pss_kib() { awk '/^Pss:/ {print $2}' "/proc/$1/smaps_rollup"; }
# The machine has few CPUs, so nothing here may start a process while a
# measured program starts up: a fork of sed or grep would compete with it for
# a CPU and be counted against it. Parsing and waiting use shell builtins only.
mkfifo "$work/nap"
exec {nap_fd}<>"$work/nap" # opened read-write, it never delivers a byte
nap() { read -rt "$1" -u "$nap_fd" _ || true; }
# Starts a program through the launcher; sets L_PID, L_WINDOW, L_EXEC_NS, L_MAP_MS.
launch() {
    local line=""
    # Into a file, not a pipe: the program inherits the launcher's output and
    # keeps it open, so a command substitution would wait for it to exit.
    "$launcher" launch --timeout 30 -- "$@" >"$work/launch.out" 2>>"$work/launch.log" || {
        echo "measure.sh: $1 mapped no window:" >&2
        cat "$work/launch.log" >&2
        exit 1
    }
    IFS= read -r line <"$work/launch.out" || true
    [[ $line =~ pid=([0-9]+) ]] && L_PID=${BASH_REMATCH[1]}
    [[ $line =~ window=(0x[0-9a-f]+) ]] && L_WINDOW=${BASH_REMATCH[1]}
    [[ $line =~ exec_ns=([0-9]+) ]] && L_EXEC_NS=${BASH_REMATCH[1]}
    [[ $line =~ map_ms=([0-9.]+) ]] && L_MAP_MS=${BASH_REMATCH[1]}
    pids_to_stop+=("$L_PID")
}
file_has_line() { # file extended-regex
    local line
    [ -f "$1" ] || return 1
    while IFS= read -r line; do
        [[ $line =~ $2 ]] && return 0
    done <"$1"
    return 1
}
wait_for_line() { # file extended-regex timeout-seconds
    local i
    for ((i = 0; i < $3 * 20; i++)); do
        file_has_line "$1" "$2" && return 0
        nap 0.05
    done
    return 1
}
value_of() { awk -v k="$2" '$1 == k {print $2; exit}' "$1"; }
ns_to_ms() { awk -v a="$1" -v b="$2" 'BEGIN {printf "%.3f", (a - b) / 1e6}'; }

# --- A: start-up and memory, floor / app / probed app alternating --------------
# PSS shares each shared page among the processes that map it, so it moves
# with whatever else runs on the machine: the floor and the app are sampled at
# the same moment, and the private and anonymous figures, which other
# processes cannot move, are recorded beside it.
put_memory() { # prefix pid
    awk -v p="$1" '/^Pss:/ {pss = $2} /^Pss_Anon:/ {anon = $2} /^Private_/ {priv += $2}
        END {print p ".pss_kib", pss; print p ".pss_anon_kib", anon; print p ".private_kib", priv}' \
        "/proc/$2/smaps_rollup" >>"$results"
}
start_app() {
    : >"$engine_log"
    launch "$app"
    app_pid=$L_PID
    app_exec_ns=$L_EXEC_NS
    put app.map_ms "$L_MAP_MS"
    wait_for_line "$engine_log" ' ui-status$' 15 || echo "measure.sh: the app never asked for ui-status" >&2
}
# After the sleep that follows start-up, when a process no longer disturbs it.
put_first_refresh() {
    local first_ns
    first_ns=$(awk '$2 == "ui-status" {print $1; exit}' "$engine_log")
    [ -n "$first_ns" ] && put app.first_refresh_started_ms "$(ns_to_ms "$first_ns" "$app_exec_ns")"
}
# Maps no window, so it is started directly; its first refresh is the first
# ui-status in the (emptied) engine log.
start_background() {
    "$app" --background >/dev/null 2>>"$work/background.log" &
    bg_pid=$!
    pids_to_stop+=("$bg_pid")
    wait_for_line "$engine_log" ' ui-status$' 15 || echo "measure.sh: the background app never asked for ui-status" >&2
}
start_floor() {
    rm -f "$work/floor-frame.txt"
    ZQB_BENCH_OUT="$work/floor-frame.txt" launch "$floor"
    floor_pid=$L_PID
    floor_exec_ns=$L_EXEC_NS
    put floor.map_ms "$L_MAP_MS"
}
# After the sleep that follows start-up, like put_first_refresh.
put_floor_frame() {
    local ns
    ns=$(value_of "$work/floor-frame.txt" first_frame_ns 2>/dev/null)
    [ -n "$ns" ] && put floor.first_frame_ms "$(ns_to_ms "$ns" "$floor_exec_ns")"
}
echo "Start-up and memory: $runs runs each, alternating (engine answers at once)..." >&2
for ((run = 1; run <= runs; run++)); do
    if ((run % 2)); then
        start_floor
        nap 1
        start_app
    else
        start_app
        nap 1
        start_floor
    fi
    nap 5 # after the app's first refresh
    put_first_refresh
    put_floor_frame
    put_memory floor "$floor_pid"
    put_memory app "$app_pid"
    stop "$app_pid"

    # The same app started at login: --background, no window. It runs beside
    # the same floor (one app per session: the windowed one has ended).
    : >"$engine_log"
    nap 1
    start_background
    nap 5 # after its first refresh
    put_memory floor_bg "$floor_pid"
    put_memory bg "$bg_pid"
    stop "$bg_pid"
    stop "$floor_pid"

    out="$work/probe-$run.txt"
    : >"$engine_log"
    nap 1 # as before the other launches: the server has finished with the last clients
    ZQB_BENCH_OUT="$out" ZQB_BENCH_TITLE="$title" ZQB_BENCH_REFRESHES="$refreshes" \
        launch "$probed_app"
    put probed.map_ms "$L_MAP_MS"
    if wait_for_line "$out" '^done' $((30 + refreshes / 20)); then
        for k in main qapp launched first_refresh state_on_screen; do
            ns=$(value_of "$out" "${k}_ns")
            [ -n "$ns" ] && put "probed.${k}_ms" "$(ns_to_ms "$ns" "$L_EXEC_NS")"
        done
        for k in pss pss_anon private; do
            put "probed.${k}_first_kib" "$(value_of "$out" "${k}_first_kib")"
            put "probed.${k}_after_n_kib" "$(value_of "$out" "${k}_after_${refreshes}_kib")"
            put "probed.${k}_after_2n_kib" "$(value_of "$out" "${k}_after_$((2 * refreshes))_kib")"
        done
        for k in cpu_per_refresh_us main_cpu_per_refresh_us wall_per_refresh_us \
            idle_max_gap_us idle_max_stall_us idle_max_busy_us max_gap_us max_stall_us \
            max_busy_us stall_over_4ms \
            stall_over_8ms; do
            put "probed.$k" "$(value_of "$out" "$k")"
        done
        grep '^error' "$out" >&2 || true
    else
        echo "measure.sh: the probed app did not finish run $run:" >&2
        cat "$out" >&2
    fi
    stop "$L_PID"

    # The same probed app against documents of more and longer folders (the
    # engine reads ZQB_BENCH_FOLDERS from the environment it inherits). The
    # memory passes are shortened; CPU and stall passes stay 200 refreshes.
    for n in $folder_counts; do
        out="$work/probe-f$n-$run.txt"
        nap 1
        ZQB_BENCH_FOLDERS="$n" ZQB_BENCH_OUT="$out" ZQB_BENCH_TITLE="$title" \
            ZQB_BENCH_REFRESHES="$folder_refreshes" launch "$probed_app"
        if wait_for_line "$out" '^done' $((60 + folder_refreshes / 5)); then
            ns=$(value_of "$out" state_on_screen_ns)
            [ -n "$ns" ] && put "f$n.state_on_screen_ms" "$(ns_to_ms "$ns" "$L_EXEC_NS")"
            put "f$n.map_ms" "$L_MAP_MS"
            for k in cpu_per_refresh_us main_cpu_per_refresh_us wall_per_refresh_us \
                max_busy_us max_stall_us max_gap_us; do
                put "f$n.$k" "$(value_of "$out" "$k")"
            done
            grep '^error' "$out" >&2 || true
        else
            echo "measure.sh: the probed app with $n folders did not finish run $run:" >&2
            cat "$out" >&2
        fi
        stop "$L_PID"
    done
    echo "  run $run/$runs done" >&2
done

# --- B: idle with the window hidden, floor and app side by side ----------------
# Wakeups are voluntary context switches summed over the process's threads;
# CPU is utime+stime of the whole process (all threads), from /proc.
thread_switches() { # pid -> "tid voluntary nonvoluntary" lines
    local t
    for t in /proc/"$1"/task/*; do
        awk -v tid="${t##*/}" '/^voluntary_ctxt_switches/ {v = $2}
            /^nonvoluntary_ctxt_switches/ {n = $2} END {print tid, v, n}' "$t/status" 2>/dev/null
    done
}
cpu_ticks() { awk '{print $14 + $15}' "/proc/$1/stat"; }
switch_delta() { # before-file after-file main-tid -> "all main"
    awk -v main="$3" 'NR == FNR {v[$1] = $2; next}
        {d = $2 - ($1 in v ? v[$1] : 0); all += d; if ($1 == main) m = d}
        END {print all + 0, m + 0}' "$1" "$2"
}
ticks_per_second=$(getconf CLK_TCK)

# Samples two running programs over the idle period; figures are recorded
# under the two prefixes. The engine log counts the refreshes meanwhile.
measure_idle() { # floor-prefix app-prefix floor-pid app-pid
    local who pid all main ticks calls_before calls_after
    local -A pids=([$1]=$3 [$2]=$4)
    for who in "$1" "$2"; do
        pid=${pids[$who]}
        thread_switches "$pid" >"$work/$who.before"
        cpu_ticks "$pid" >"$work/$who.cpu_before"
    done
    calls_before=$(grep -c ui-status "$engine_log" || true)
    sleep "$idle_seconds"
    calls_after=$(grep -c ui-status "$engine_log" || true)
    for who in "$1" "$2"; do
        pid=${pids[$who]}
        thread_switches "$pid" >"$work/$who.after"
        read -r all main < <(switch_delta "$work/$who.before" "$work/$who.after" "$pid")
        ticks=$(($(cpu_ticks "$pid") - $(cat "$work/$who.cpu_before")))
        put "$who.idle_wakeups_per_min" "$(awk -v a="$all" -v s="$idle_seconds" 'BEGIN {printf "%.1f", a * 60 / s}')"
        put "$who.idle_main_wakeups_per_min" "$(awk -v a="$main" -v s="$idle_seconds" 'BEGIN {printf "%.1f", a * 60 / s}')"
        put "$who.idle_cpu_percent" "$(awk -v t="$ticks" -v h="$ticks_per_second" -v s="$idle_seconds" 'BEGIN {printf "%.3f", 100 * t / h / s}')"
        put "$who.idle_threads" "$(wc -l <"$work/$who.after")"
    done
    put "$2.idle_refreshes_per_min" "$(awk -v c=$((calls_after - calls_before)) -v s="$idle_seconds" 'BEGIN {printf "%.1f", c * 60 / s}')"
}

echo "Idle with the window hidden: $idle_runs runs of ${idle_seconds}s, floor and app together..." >&2
for ((run = 1; run <= idle_runs; run++)); do
    : >"$engine_log"
    launch "$floor"
    floor_pid=$L_PID floor_window=$L_WINDOW
    launch "$app"
    app_pid=$L_PID
    app_exec_ns=$L_EXEC_NS app_window=$L_WINDOW
    wait_for_line "$engine_log" ui-status 15 || true
    # The app hides its window on close; the floor would quit, so it is unmapped.
    "$launcher" close "$app_window"
    "$launcher" unmap "$floor_window"
    sleep 2
    if command -v xwininfo >/dev/null &&
        xwininfo -id "$app_window" 2>/dev/null | grep -q 'IsViewable'; then
        echo "measure.sh: the app's window did not hide" >&2
    fi
    alive "$app_pid" || { echo "measure.sh: closing the window ended the app" >&2; exit 1; }

    measure_idle floor app "$floor_pid" "$app_pid"
    stop "$app_pid"

    # The same, started in the background: its window has never been shown.
    : >"$engine_log"
    start_background
    sleep 2
    alive "$bg_pid" || { echo "measure.sh: the background app ended" >&2; exit 1; }
    measure_idle floor_bg bg "$floor_pid" "$bg_pid"
    stop "$bg_pid"
    stop "$floor_pid"
    echo "  idle run $run/$idle_runs done" >&2
done

# --- derived figures ------------------------------------------------------------
awk '$1 == "floor.pss_kib" {f[++nf] = $2} $1 == "app.pss_kib" {a[++na] = $2}
    END {for (i = 1; i <= na && i <= nf; i++) print "app_minus_floor.pss_kib", a[i] - f[i]}' \
    "$results" >>"$results.tmp"
awk '$1 == "probed.pss_anon_after_n_kib" {x[++n] = $2} $1 == "probed.pss_anon_after_2n_kib" {y[++m] = $2}
    END {for (i = 1; i <= n && i <= m; i++) print "probed.anon_growth_kib", y[i] - x[i]}' \
    "$results" >>"$results.tmp"
awk '$1 == "floor_bg.pss_kib" {f[++nf] = $2} $1 == "bg.pss_kib" {a[++na] = $2}
    END {for (i = 1; i <= na && i <= nf; i++) print "bg_minus_floor.pss_kib", a[i] - f[i]}' \
    "$results" >>"$results.tmp"
[ -f "$results.tmp" ] && cat "$results.tmp" >>"$results" && rm -f "$results.tmp"

# --- report --------------------------------------------------------------------
stats() { # figure -> "median (min to max)"
    awk -v k="$1" '$1 == k && $2 != "" {v[n++] = $2 + 0}
        END {
            if (n == 0) { print "n/a"; exit }
            for (i = 0; i < n; i++) for (j = i + 1; j < n; j++) if (v[j] < v[i]) { t = v[i]; v[i] = v[j]; v[j] = t }
            m = (n % 2) ? v[(n - 1) / 2] : (v[n / 2 - 1] + v[n / 2]) / 2
            printf "%.2f (%.2f to %.2f)", m, v[0], v[n - 1]
        }' "$results"
}
median() { stats "$1" | awk '{print $1}'; }
verdict() { awk -v a="$1" -v b="$2" 'BEGIN {print (a != "n/a" && a + 0 <= b + 0) ? "ok" : "MISSED"}'; }

floor_map=$(median floor.map_ms)
floor_pss=$(median floor.pss_kib)
row() { printf '%-44s %-28s %-28s %s\n' "$@"; }
{
    echo
    echo "ZQB Agent against the bare Qt floor: $runs start-up runs, $idle_runs idle runs of ${idle_seconds}s"
    echo "Figures: median (min to max). Machine: $(nproc) CPUs, load $(cut -d' ' -f1-3 /proc/loadavg)"
    echo
    row "figure" "floor" "app" "budget"
    row "exec -> window mapped, ms" "$(stats floor.map_ms)" "$(stats app.map_ms)" \
        "<= $(awk -v f="$floor_map" 'BEGIN {printf "%.1f", 1.5 * f}') $(verdict "$(median app.map_ms)" "$(awk -v f="$floor_map" 'BEGIN {print 1.5 * f}')")"
    row "  probed build, ms" "" "$(stats probed.map_ms)" ""
    row "exec -> first ui-status started, ms" "" "$(stats app.first_refresh_started_ms)" ""
    row "exec -> engine state on screen, ms" "(map) $(stats floor.map_ms)" "$(stats probed.state_on_screen_ms)" \
        "<= $(awk -v f="$floor_map" 'BEGIN {printf "%.1f", f + 60}') $(verdict "$(median probed.state_on_screen_ms)" "$(awk -v f="$floor_map" 'BEGIN {print f + 60}')")"
    row "  floor: exec -> first frame on screen, ms" "$(stats floor.first_frame_ms)" "" ""
    row "  probed: exec -> main(), ms" "" "$(stats probed.main_ms)" ""
    row "  probed: exec -> QApplication made, ms" "" "$(stats probed.qapp_ms)" ""
    row "  probed: exec -> window built and shown, ms" "" "$(stats probed.launched_ms)" ""
    row "  probed: exec -> first status applied, ms" "" "$(stats probed.first_refresh_ms)" ""
    row "PSS 5 s after first refresh, KiB" "$(stats floor.pss_kib)" "$(stats app.pss_kib)" \
        "<= floor + 12288 $(verdict "$(median app.pss_kib)" "$(awk -v f="$floor_pss" 'BEGIN {print f + 12288}')")"
    row "  app minus floor, same moment, KiB" "" "$(stats app_minus_floor.pss_kib)" \
        "<= 12288 $(verdict "$(median app_minus_floor.pss_kib)" 12288)"
    row "  Pss_Anon, KiB" "$(stats floor.pss_anon_kib)" "$(stats app.pss_anon_kib)" ""
    row "  Private (clean+dirty), KiB" "$(stats floor.private_kib)" "$(stats app.private_kib)" ""
    for k in pss pss_anon private; do
        row "probed app $k: 5 s after first refresh, KiB" "" "$(stats "probed.${k}_first_kib")" ""
        row "  after $refreshes refreshes, KiB" "" "$(stats "probed.${k}_after_n_kib")" ""
        row "  after $((2 * refreshes)) refreshes, KiB" "" "$(stats "probed.${k}_after_2n_kib")" ""
    done
    row "  growth, second $refreshes refreshes: Pss_Anon, KiB" "" "$(stats probed.anon_growth_kib)" \
        "no growth (noise ~ +-100)"
    row "app CPU per refresh (all threads), us" "" "$(stats probed.cpu_per_refresh_us)" \
        "<= 2000 $(verdict "$(median probed.cpu_per_refresh_us)" 2000)"
    row "  main thread only, us" "" "$(stats probed.main_cpu_per_refresh_us)" ""
    row "  wall time per refresh, us" "" "$(stats probed.wall_per_refresh_us)" ""
    row "longest main-thread busy stretch, 200 refreshes, us" "" "$(stats probed.max_busy_us)" \
        "<= 8000 $(verdict "$(median probed.max_busy_us)" 8000)"
    row "  same with no refreshes, us" "" "$(stats probed.idle_max_busy_us)" ""
    row "longest gap less run-queue wait, us" "" "$(stats probed.max_stall_us)" \
        "<= 8000 $(verdict "$(median probed.max_stall_us)" 8000)"
    row "  stall gaps over 4 ms / over 8 ms" "" "$(median probed.stall_over_4ms) / $(median probed.stall_over_8ms)" ""
    row "  same with no refreshes, us" "" "$(stats probed.idle_max_stall_us)" ""
    row "  wall-clock gap incl. waiting for a CPU, us" "" "$(stats probed.max_gap_us)" ""
    row "  same with no refreshes, us" "" "$(stats probed.idle_max_gap_us)" ""
    row "idle hidden: wakeups per min, all threads" "$(stats floor.idle_wakeups_per_min)" "$(stats app.idle_wakeups_per_min)" ""
    row "  main thread, per min" "$(stats floor.idle_main_wakeups_per_min)" "$(stats app.idle_main_wakeups_per_min)" ""
    row "  refreshes per min (engine runs)" "" "$(stats app.idle_refreshes_per_min)" ""
    row "  threads" "$(stats floor.idle_threads)" "$(stats app.idle_threads)" ""
    row "idle hidden: CPU, %" "$(stats floor.idle_cpu_percent)" "$(stats app.idle_cpu_percent)" \
        "< 0.1 $(verdict "$(median app.idle_cpu_percent)" 0.0999)"
    bg_floor_pss=$(median floor_bg.pss_kib)
    app_over_floor=$(median app_minus_floor.pss_kib)
    row "background start (--background, no window):" "" "" ""
    row "PSS 5 s after first refresh, KiB" "$(stats floor_bg.pss_kib)" "$(stats bg.pss_kib)" \
        "<= floor + 8192 $(verdict "$(median bg.pss_kib)" "$(awk -v f="$bg_floor_pss" 'BEGIN {print f + 8192}')")"
    row "  background minus floor, same moment, KiB" "" "$(stats bg_minus_floor.pss_kib)" \
        "<= 8192 $(verdict "$(median bg_minus_floor.pss_kib)" 8192)"
    row "  below the windowed app's (app minus floor)" "" "$app_over_floor" \
        "$(verdict "$(median bg_minus_floor.pss_kib)" "$(awk -v a="$app_over_floor" 'BEGIN {print a - 1}')")"
    row "  Pss_Anon, KiB" "$(stats floor_bg.pss_anon_kib)" "$(stats bg.pss_anon_kib)" ""
    row "  Private (clean+dirty), KiB" "$(stats floor_bg.private_kib)" "$(stats bg.private_kib)" ""
    row "idle background: wakeups per min, all threads" "$(stats floor_bg.idle_wakeups_per_min)" "$(stats bg.idle_wakeups_per_min)" ""
    row "  main thread, per min" "$(stats floor_bg.idle_main_wakeups_per_min)" "$(stats bg.idle_main_wakeups_per_min)" ""
    row "  refreshes per min (engine runs)" "" "$(stats bg.idle_refreshes_per_min)" ""
    row "  threads" "$(stats floor_bg.idle_threads)" "$(stats bg.idle_threads)" ""
    row "idle background: CPU, %" "$(stats floor_bg.idle_cpu_percent)" "$(stats bg.idle_cpu_percent)" \
        "< 0.1 $(verdict "$(median bg.idle_cpu_percent)" 0.0999)"
    echo
    read -ra counts <<<"$folder_counts"
    if [ "${#counts[@]}" -gt 0 ]; then
        base=${counts[0]}
        top=${counts[${#counts[@]} - 1]}
        echo "Many folders of 200 characters (probed build, same runs; growth is the median against $base folders)"
        row "figure" "" "app" "budget"
        for n in "${counts[@]}"; do
            cpu_budget=""
            if [ "$n" = "$top" ] && [ "$n" != "$base" ]; then
                limit=$(awk -v b="$(median "f$base.cpu_per_refresh_us")" 'BEGIN {print 3 * b}')
                cpu_budget="<= 3 x $base folders = $limit $(verdict "$(median "f$n.cpu_per_refresh_us")" "$limit")"
            fi
            row "$n folders: CPU per refresh, us" "" "$(stats "f$n.cpu_per_refresh_us")" "$cpu_budget"
            row "  growth against $base folders" "" "$(awk -v a="$(median "f$n.cpu_per_refresh_us")" -v b="$(median "f$base.cpu_per_refresh_us")" 'BEGIN {printf "x %.2f", a / b}')" ""
            row "  main thread only, us" "" "$(stats "f$n.main_cpu_per_refresh_us")" ""
            row "  wall time per refresh, us" "" "$(stats "f$n.wall_per_refresh_us")" ""
            stall_budget=""
            [ "$n" = "$top" ] && stall_budget="< 16000 $(verdict "$(median "f$n.max_busy_us")" 15999)"
            row "  longest main-thread busy stretch, us" "" "$(stats "f$n.max_busy_us")" "$stall_budget"
            stall_budget=""
            [ "$n" = "$top" ] && stall_budget="< 16000 $(verdict "$(median "f$n.max_stall_us")" 15999)"
            row "  longest gap less run-queue wait, us" "" "$(stats "f$n.max_stall_us")" "$stall_budget"
            row "  wall-clock gap incl. waiting for a CPU, us" "" "$(stats "f$n.max_gap_us")" ""
            screen_budget=""
            [ "$n" = "$top" ] && screen_budget="<= $(awk -v f="$floor_map" 'BEGIN {printf "%.1f", f + 150}') $(verdict "$(median "f$n.state_on_screen_ms")" "$(awk -v f="$floor_map" 'BEGIN {print f + 150}')")"
            row "  exec -> engine state on screen, ms" "(map) $(stats floor.map_ms)" "$(stats "f$n.state_on_screen_ms")" "$screen_budget"
        done
        echo
    fi
} | tee "$build/bench-report.txt"
cp "$results" "$build/bench-raw.txt"
echo "Report: $build/bench-report.txt, raw samples: $build/bench-raw.txt" >&2
