#!/usr/bin/env bash
# Measures the release build of Inkwarden in the panel, unseen (the set-up of
# scripts/run-headless.sh: Xvfb, a private session bus, the keyring, xfce4-panel, the development
# server), beside a bare QGuiApplication doing nothing, measured in the same run.
#
#   scripts/bench-shell.sh [--idle-seconds N] [--settle S] [--runs R] [--no-build]
#
# Prints, each with its ratio to the bare QGuiApplication where one makes sense:
#   start to registration    from just before Inkwarden starts until xfce4-panel's watcher announces
#                            the item (StatusNotifierItemRegistered, timestamped by dbus-monitor)
#   PSS idle                 proportional set size (/proc/PID/smaps_rollup) 15 seconds after the
#                            item registered, popover never opened (Inkwarden hands back what
#                            starting needed 10 seconds after start); RSS beside it
#   PSS popover open         0.3 s after the popover appeared (loading the views), and 3 s after
#                            (what it keeps while someone reads it)
#   PSS after closing        S seconds, and again 30 s, after the popover was closed
#   popover first / again    Activate to a viewable window titled "Inkwarden Royalties" (xdotool, polled back
#                            to back; one poll's cost is the resolution): the median of R runs
#                            (default 5) for a second opening; the first opening of a launch is
#                            measured in R launches
#   wake-ups and CPU         context switches (voluntary + involuntary, all threads) per minute and
#                            CPU time over N idle seconds (default 60): signed out and waiting for
#                            the browser with the popover closed (it was opened once, 60 s before), signed in
#                            before the popover first opens, and after five openings and closings
#                            (from 60 s after the last closing: giving the window and Qt Quick's
#                            caches up takes one or two wake-ups of its own, once, before then)
# The signed-in launches find a key from a first sign-in, so they show figures as they would for
# someone who uses Inkwarden.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/packages.sh
source scripts/lib/headless.sh

idle=60
settle=3
runs=5
build=1
while [ "$#" -gt 0 ]; do
    case "$1" in
        --idle-seconds) idle=$2; shift ;;
        --settle) settle=$2; shift ;;
        --runs) runs=$2; shift ;;
        --no-build) build=0 ;;
        -h|--help) inkwarden_print_usage "$0"; exit 0 ;;
        *) echo "$0: unknown argument $1 (see --help)" >&2; exit 2 ;;
    esac
    shift
done

app="$PWD/build/release/InkwardenMenuBar/inkwarden"
devserver="$PWD/build/release/devserver/inkwarden-devserver"
bare="$PWD/build/release/bench-shell/inkwarden-bare-gui-app"
if [ "$build" = 1 ]; then
    inkwarden_ensure_packages "${INKWARDEN_BUILD_PACKAGES[@]}" "${INKWARDEN_RUN_PACKAGES[@]}" \
        "${INKWARDEN_PANEL_PACKAGES[@]}"
    cmake --preset release >/dev/null
    cmake --build --preset release --target inkwarden inkwarden-devserver
    cmake -S bench/shell -B build/release/bench-shell -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
    cmake --build build/release/bench-shell
fi
for binary in "$app" "$devserver" "$bare"; do
    [ -x "$binary" ] || { echo "$0: $binary is missing: run without --no-build" >&2; exit 1; }
done

rss_kib() { sed -n 's/^VmRSS:[[:space:]]*\([0-9]*\) kB/\1/p' "/proc/$1/status"; }
pss_kib() { sed -n 's/^Pss:[[:space:]]*\([0-9]*\) kB/\1/p' "/proc/$1/smaps_rollup"; }
# CPU time (user + system) in clock ticks.
cpu_ticks() { awk '{ print $14 + $15 }' "/proc/$1/stat"; }
# "TID voluntary involuntary" context switches of each thread alive now.
switches() {
    local status
    for status in /proc/"$1"/task/*/status; do
        awk '/^Pid:/ { t = $2 } /^voluntary_ctxt_switches/ { v = $2 } /^nonvoluntary_ctxt_switches/ { n = $2 }
             END { if (t) print t, v + 0, n + 0 }' "$status" 2>/dev/null || true
    done
}
ms_between() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.1f", (b - a) * 1000 }'; }
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { if (b > 0) printf "%.2f x", a / b; else print "-" }'; }
mb() { awk -v k="$1" 'BEGIN { printf "%.1f MB", k * 1024 / 1000000 }'; }
median() { sort -g | awk '{ v[NR] = $1 } END { if (NR % 2) print v[(NR + 1) / 2]; else printf "%.1f\n", (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }

# "wakeups-per-minute cpu-percent" of each PID over the same $idle seconds, one a line: the growth
# of every thread's counters, threads started meanwhile counted from zero (a thread that ends
# within the window takes its switches with it: they are missed).
idle_wakeups() {
    local pid ticks
    ticks=$(getconf CLK_TCK)
    for pid in "$@"; do
        switches "$pid" >"$HEADLESS_SCRATCH/switches-before-$pid"
        cpu_ticks "$pid" >"$HEADLESS_SCRATCH/cpu-before-$pid"
    done
    sleep "$idle"
    for pid in "$@"; do
        switches "$pid" >"$HEADLESS_SCRATCH/switches-after-$pid"
        cpu_ticks "$pid" >"$HEADLESS_SCRATCH/cpu-after-$pid"
    done
    for pid in "$@"; do
        awk -v s="$idle" -v hz="$ticks" -v c0="$(cat "$HEADLESS_SCRATCH/cpu-before-$pid")" \
            -v c1="$(cat "$HEADLESS_SCRATCH/cpu-after-$pid")" \
            'NR == FNR { v[$1] = $2; n[$1] = $3; next }
            { d += $2 - v[$1] + $3 - n[$1] }
            END { printf "%.0f %.2f\n", d * 60 / s, (c1 - c0) * 100 / hz / s }' \
            "$HEADLESS_SCRATCH/switches-before-$pid" "$HEADLESS_SCRATCH/switches-after-$pid"
    done
}

headless_begin
headless_start_display 1280x800
headless_start_bus
headless_start_keyring
headless_start_panel
headless_start_devserver "$devserver"
headless_register_scheme "$app" data/com.inkwarden.menubar.desktop

"$bare" >"$HEADLESS_SCRATCH/bare.log" 2>&1 &
bare_pid=$!
HEADLESS_PIDS+=("$bare_pid")

# The resolution of the popover timing: what one poll costs.
poll_start=$(headless_now)
for _ in 1 2 3 4 5 6 7 8 9 10; do headless_popover_windows >/dev/null; done
poll_ms=$(awk -v a="$poll_start" -v b="$(headless_now)" 'BEGIN { printf "%.1f", (b - a) * 100 }')

point="1160 13"
time_popover() {
    local t0
    t0=$(headless_now)
    # shellcheck disable=SC2086
    headless_activate $point
    headless_wait_popover 1 15 || headless_die "no window titled Inkwarden appeared"
    ms_between "$t0" "$(headless_now)"
}
close_popover() {
    # shellcheck disable=SC2086
    headless_activate $point
    headless_wait_popover 0 5 || headless_die "the popover did not close"
    # A click on the item right after a close is taken for the click that closed it.
    sleep 0.5
}
stop_app() {
    headless_stop "$HEADLESS_APP_PID"
    wait "$HEADLESS_APP_PID" 2>/dev/null || true
    for _ in $(seq 100); do headless_registered_items | grep -q 'StatusNotifierItem' || break; sleep 0.05; done
    sleep 1
}

# --- Signed out: the sign-in has begun and waits for the browser; the popover was opened once.
before_png="$HEADLESS_SCRATCH/without-item.png"
with_png="$HEADLESS_SCRATCH/with-item.png"
import -window root "$before_png"
headless_start_app "$app"
headless_wait_for_item
for _ in $(seq 200); do grep -q '^pendingAuthVerifier=' "$HEADLESS_SETTINGS" && break; sleep 0.05; done
sleep 1
import -window root "$with_png"
found=$(headless_item_point "$before_png" "$with_png")
[ -n "$found" ] && point=$found
time_popover >/dev/null
sleep 1
close_popover
# Past the 20 s after which the closed popover gives up its window, and the expiry of Qt Quick's
# caches after it (about 30 s more): the waiting that lasts.
sleep 60
echo "Measuring $idle idle seconds signed out, waiting for the browser…" >&2
read -r wake_out cpu_out bare_wake_out bare_cpu_out < <(idle_wakeups "$HEADLESS_APP_PID" "$bare_pid" | tr '\n' ' '; echo)

# Signed in once, so that the measured launches find their key and show figures.
headless_sign_in "$app"
headless_wait_for_figures
sleep 2
if [ -n "$(headless_popover_windows)" ]; then close_popover; fi
stop_app

# --- Signed in: $runs launches, each timed to registration and to its first opening; the first
# launch is measured at rest, with the popover open, after closing and after repeated openings.
# Appended to, so that emptying it before each launch leaves no hole for the next line to follow.
monitor_log="$HEADLESS_SCRATCH/monitor.log"
: >"$monitor_log"
dbus-monitor --session \
    "type='signal',interface='org.kde.StatusNotifierWatcher',member='StatusNotifierItemRegistered'" \
    >>"$monitor_log" 2>&1 &
HEADLESS_PIDS+=($!)
sleep 0.5
registrations=()
firsts=()
agains=()
for run in $(seq "$runs"); do
    : >"$monitor_log"
    started=$(headless_now)
    headless_start_app "$app"
    pid=$HEADLESS_APP_PID
    registered=
    for _ in $(seq 400); do
        registered=$(sed -n 's/^signal time=\([0-9.]*\) .*member=StatusNotifierItemRegistered.*/\1/p' "$monitor_log" | head -n 1)
        [ -n "$registered" ] && break
        sleep 0.025
    done
    [ -n "$registered" ] || { cat "$HEADLESS_APP_LOG" >&2; headless_die "the watcher announced no item"; }
    registrations+=("$(ms_between "$started" "$registered")")
    headless_wait_for_item
    sleep "$settle"
    [ -z "$(headless_popover_windows)" ] || headless_die "the popover is open before it was asked for"
    if [ "$run" = 1 ]; then
        sleep $((15 - settle > 0 ? 15 - settle : 0))
        pss_idle=$(pss_kib "$pid"); rss_idle=$(rss_kib "$pid"); bare_pss_idle=$(pss_kib "$bare_pid")
        echo "Measuring $idle idle seconds signed in, before the popover…" >&2
        read -r wake_before cpu_before bare_wake_before bare_cpu_before < <(idle_wakeups "$pid" "$bare_pid" | tr '\n' ' '; echo)
    fi
    firsts+=("$(time_popover)")
    if [ "$run" = 1 ]; then
        sleep 0.3
        pss_appearing=$(pss_kib "$pid")
        sleep 2.7
        pss_open=$(pss_kib "$pid"); bare_pss_open=$(pss_kib "$bare_pid")
        close_popover
        for _ in $(seq "$((runs > 4 ? runs : 4))"); do
            agains+=("$(time_popover)")
            sleep 0.3
            close_popover
        done
        sleep "$settle"
        pss_closed=$(pss_kib "$pid"); bare_pss_closed=$(pss_kib "$bare_pid")
        sleep $((30 - settle > 0 ? 30 - settle : 0))
        pss_closed30=$(pss_kib "$pid"); bare_pss_closed30=$(pss_kib "$bare_pid")
        sleep 30
        echo "Measuring $idle idle seconds after five openings and closings…" >&2
        read -r wake_after cpu_after bare_wake_after bare_cpu_after < <(idle_wakeups "$pid" "$bare_pid" | tr '\n' ' '; echo)
    else
        close_popover
    fi
    stop_app
done

registration_ms=$(printf '%s\n' "${registrations[@]}" | median)
first_ms=$(printf '%s\n' "${firsts[@]}" | median)
again_ms=$(printf '%s\n' "${agains[@]}" | median)

row() { printf '%-52s %-20s %-22s %s\n' "$@"; }
echo
echo "Inkwarden $(git describe --always --dirty 2>/dev/null || echo) release, Qt $(pkg-config --modversion Qt6Gui 2>/dev/null), Xvfb + xfce4-panel $(xfce4-panel --version 2>/dev/null | head -n 1 | awk '{print $2}'), $(nproc) cores, QT_QUICK_BACKEND=${QT_QUICK_BACKEND:-(unset)}"
row "" "Inkwarden" "bare QGuiApplication" "ratio"
row "start to item registration (median of $runs)" "$registration_ms ms" "-" "-"
row "PSS idle, popover never opened (RSS $(mb "$rss_idle"))" "$(mb "$pss_idle")" "$(mb "$bare_pss_idle")" "$(ratio "$pss_idle" "$bare_pss_idle")"
row "PSS with the popover open, 0.3 s after it appeared" "$(mb "$pss_appearing")" "$(mb "$bare_pss_open")" "$(ratio "$pss_appearing" "$bare_pss_open")"
row "PSS with the popover open, 3 s after it appeared" "$(mb "$pss_open")" "$(mb "$bare_pss_open")" "$(ratio "$pss_open" "$bare_pss_open")"
row "PSS ${settle} s after closing it" "$(mb "$pss_closed")" "$(mb "$bare_pss_closed")" "$(ratio "$pss_closed" "$pss_idle") idle"
row "PSS 30 s after closing it" "$(mb "$pss_closed30")" "$(mb "$bare_pss_closed30")" "$(ratio "$pss_closed30" "$pss_idle") idle"
row "popover, first opening (median of $runs launches)" "$first_ms ms" "-" "(poll ~$poll_ms ms)"
row "popover, again (median of ${#agains[@]})" "$again_ms ms" "-" "-"
row "wake-ups/min, CPU: signed out, waiting, closed" "$wake_out, $cpu_out %" "$bare_wake_out, $bare_cpu_out %" "-"
row "wake-ups/min, CPU: signed in, before the popover" "$wake_before, $cpu_before %" "$bare_wake_before, $bare_cpu_before %" "-"
row "wake-ups/min, CPU: after 5 openings and closings" "$wake_after, $cpu_after %" "$bare_wake_after, $bare_cpu_after %" "-"
echo "(idle windows: $idle s each; wake-ups = voluntary + involuntary context switches over all threads;"
echo " 1 MB = 1,000,000 bytes; the first opening of each launch, the again openings of the first)"
