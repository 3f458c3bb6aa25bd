#!/usr/bin/env bash
# Measures the release build of Inkwarden in the panel, unseen (the set-up of
# scripts/run-headless.sh: Xvfb, a private session bus, the keyring, xfce4-panel, the development
# server), and compares it with a bare QGuiApplication doing nothing, measured in the same run.
#
#   scripts/bench-shell.sh [--idle-seconds N] [--settle S] [--no-build]
#
# Prints:
#   start to registration   from just before Inkwarden is started until xfce4-panel's watcher
#                           announces the item (StatusNotifierItemRegistered, as timestamped by
#                           dbus-monitor on the same bus)
#   resident memory idle    VmRSS once start-up has settled (S seconds, default 3), popover never opened
#   popover, first / again  from just before the Activate call until a window titled "Inkwarden" is
#                           viewable (xdotool search --onlyvisible, polled back to back; the cost of
#                           one poll, printed, is the resolution)
#   resident memory after   VmRSS S seconds after the popover was closed again
#   wake-ups per minute     context switches (voluntary + involuntary) summed over all threads
#                           (/proc/PID/task/*/status) across N idle seconds (default 60), before
#                           the popover first opens and after it has been closed
# Inkwarden has signed in once (a first launch that is then ended) so the measured launch shows
# figures, as it would for someone who uses it.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/packages.sh
source scripts/lib/headless.sh

idle=60
settle=3
build=1
while [ "$#" -gt 0 ]; do
    case "$1" in
        --idle-seconds) idle=$2; shift ;;
        --settle) settle=$2; shift ;;
        --no-build) build=0 ;;
        -h|--help) sed -n '2,23p' "$0" | sed 's/^# \{0,1\}//'; exit 0 ;;
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
# "TID voluntary involuntary" context switches of each thread alive now.
switches() {
    local status
    for status in /proc/"$1"/task/*/status; do
        awk '/^Pid:/ { t = $2 } /^voluntary_ctxt_switches/ { v = $2 } /^nonvoluntary_ctxt_switches/ { n = $2 }
             END { if (t) print t, v + 0, n + 0 }' "$status" 2>/dev/null || true
    done
}
ms_between() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.1f", (b - a) * 1000 }'; }
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { if (b > 0) printf "%.2f", a / b; else print "n/a" }'; }
mib() { awk -v k="$1" 'BEGIN { printf "%.1f MiB", k / 1024 }'; }

# Wake-ups per minute of each PID over the same $idle seconds, "total voluntary" per PID, one a
# line: the growth of every thread's counters, threads started meanwhile counted from zero (a
# thread that ends within the window takes its switches with it: they are missed).
idle_wakeups() {
    local pid i=0
    for pid in "$@"; do switches "$pid" >"$HEADLESS_SCRATCH/switches-before-$pid"; done
    sleep "$idle"
    for pid in "$@"; do switches "$pid" >"$HEADLESS_SCRATCH/switches-after-$pid"; done
    for pid in "$@"; do
        awk -v s="$idle" 'NR == FNR { v[$1] = $2; n[$1] = $3; next }
            { dv += $2 - v[$1]; dn += $3 - n[$1] }
            END { printf "%.1f %.1f\n", (dv + dn) * 60 / s, dv * 60 / s }' \
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

# A first launch that signs in, so that the measured launch finds its key and shows figures.
before_png="$HEADLESS_SCRATCH/without-item.png"
with_png="$HEADLESS_SCRATCH/with-item.png"
import -window root "$before_png"
headless_start_app "$app"
headless_wait_for_item
headless_sign_in "$app"
headless_wait_for_figures
sleep 2
if [ -n "$(headless_popover_windows)" ]; then headless_activate 0 0; headless_wait_popover 0 5 || true; sleep 0.5; fi
import -window root "$with_png"
point=$(headless_item_point "$before_png" "$with_png")
[ -n "$point" ] || point="1160 13"
headless_stop "$HEADLESS_APP_PID"
wait "$HEADLESS_APP_PID" 2>/dev/null || true
for _ in $(seq 100); do headless_registered_items | grep -q 'StatusNotifierItem' || break; sleep 0.05; done
sleep 1

# The measured launch: dbus-monitor timestamps the watcher's announcement.
monitor_log="$HEADLESS_SCRATCH/monitor.log"
dbus-monitor --session \
    "type='signal',interface='org.kde.StatusNotifierWatcher',member='StatusNotifierItemRegistered'" \
    >"$monitor_log" 2>&1 &
HEADLESS_PIDS+=($!)
sleep 0.5
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
headless_wait_for_item

"$bare" >"$HEADLESS_SCRATCH/bare.log" 2>&1 &
bare_pid=$!
HEADLESS_PIDS+=("$bare_pid")
sleep "$settle"
[ -z "$(headless_popover_windows)" ] || headless_die "the popover is open before it was asked for"
rss_idle=$(rss_kib "$pid")
bare_rss=$(rss_kib "$bare_pid")

echo "Measuring $idle idle seconds (Inkwarden and the bare QGuiApplication side by side)…" >&2
read -r wake_idle wake_idle_vol bare_wake bare_wake_vol < <(idle_wakeups "$pid" "$bare_pid" | tr '\n' ' '; echo)

# The resolution of the popover timing: what one poll costs.
poll_start=$(headless_now)
for _ in 1 2 3 4 5 6 7 8 9 10; do headless_popover_windows >/dev/null; done
poll_ms=$(awk -v a="$poll_start" -v b="$(headless_now)" 'BEGIN { printf "%.1f", (b - a) * 100 }')

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
}
first_ms=$(time_popover)
sleep 1; close_popover; sleep 1
second_ms=$(time_popover)
sleep 1; close_popover
sleep "$settle"
rss_after=$(rss_kib "$pid")
bare_rss_after=$(rss_kib "$bare_pid")

echo "Measuring $idle idle seconds after the popover was closed…" >&2
read -r wake_after wake_after_vol bare_wake2 bare_wake2_vol < <(idle_wakeups "$pid" "$bare_pid" | tr '\n' ' '; echo)

cat <<EOF

Inkwarden $(git describe --always --dirty 2>/dev/null || echo) release, Qt $(pkg-config --modversion Qt6Gui 2>/dev/null), Xvfb + xfce4-panel $(xfce4-panel --version 2>/dev/null | head -n 1 | awk '{print $2}'), $(nproc) cores
                                        Inkwarden     bare QGuiApplication   ratio
start to item registration              $(ms_between "$started" "$registered") ms      -
resident memory, idle (after ${settle} s)       $(mib "$rss_idle")      $(mib "$bare_rss")               $(ratio "$rss_idle" "$bare_rss")
popover shown, first time               $first_ms ms      -                      (poll resolution ~$poll_ms ms)
popover shown, again                    $second_ms ms      -
resident memory, after the popover      $(mib "$rss_after")      $(mib "$bare_rss_after")               $(ratio "$rss_after" "$bare_rss_after")
wake-ups/min, idle before the popover   $wake_idle ($wake_idle_vol vol.)   $bare_wake ($bare_wake_vol vol.)       $(ratio "$wake_idle" "$bare_wake")
wake-ups/min, idle after the popover    $wake_after ($wake_after_vol vol.)   $bare_wake2 ($bare_wake2_vol vol.)       $(ratio "$wake_after" "$bare_wake2")
(idle windows: $idle s each; wake-ups = voluntary + involuntary context switches over all threads)
EOF
