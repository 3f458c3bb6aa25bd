#!/usr/bin/env bash
# What Orca (or any AT-SPI client) finds of the real Inkwarden, on Xvfb with a session bus, its
# accessibility bus (at-spi2-core), a keyring, a StatusNotifierWatcher and the development server:
#
#   1. Signed out, the opened popover is a window named "Inkwarden Royalties" under the application
#      "Inkwarden", showing the connect screen, every control named; "Connect manually", pressed
#      through AT-SPI as Orca presses, unfolds the named fields.
#   2. Signed in, the dashboard: the period picker and its segments, the described settings button,
#      the headline and every row read as one line each, every control named.
#   3. A refresh (its button pressed through AT-SPI) is announced, as notifications, as it begins and
#      with the figure it brings; while nothing happens (the clocks tick), nothing is announced.
#   4. The settings screen: fields, check boxes and move buttons named and described.
#
# Usage: screen-reader.sh INKWARDEN DEVSERVER WATCHER
set -euo pipefail
app=$1
devserver=$2
watcher=$3
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=../../scripts/lib/headless.sh
source "$here/../../scripts/lib/headless.sh"

fail() {
    headless_log "FAIL: $*"
    [ -s "${HEADLESS_APP_LOG:-}" ] && { headless_log "--- inkwarden log"; cat "$HEADLESS_APP_LOG" >&2; }
    exit 1
}
pass() { headless_log "ok: $*"; }
reader() { /usr/bin/python3 "$here/read-accessibility-tree.py" "$@"; }
# Retries a tree check while the popover settles (the views load the first time it opens).
tree_shows() {
    local out
    for _ in $(seq 40); do
        out=$(reader tree "$1" 2>&1) && { printf '%s\n' "$out" >&2; return 0; }
        sleep 0.25
    done
    printf '%s\n' "$out" >&2
    return 1
}

headless_begin
headless_start_display 1280x800
headless_start_bus
/usr/libexec/at-spi-bus-launcher --launch-immediately >"$HEADLESS_SCRATCH/at-spi.log" 2>&1 &
HEADLESS_PIDS+=($!)
for _ in $(seq 100); do headless_name_has_owner org.a11y.Bus && break; sleep 0.05; done
headless_name_has_owner org.a11y.Bus || fail "the accessibility bus did not start"
headless_start_keyring
headless_start_devserver "$devserver"
# The newer version the development server offers would open its prompt over the dashboard.
sed -i 's/^lastPresentedAppVersion=seen$/lastPresentedAppVersion=999.0.0/' "$HEADLESS_SETTINGS"
"$watcher" >"$HEADLESS_SCRATCH/watcher.log" 2>&1 &
HEADLESS_PIDS+=($!)
gdbus wait --session --timeout 10 org.kde.StatusNotifierWatcher || fail "the test watcher did not start"

# Qt's bridge to AT-SPI, on as it is when a screen reader runs.
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QT_QPA_PLATFORM=xcb LANG=C.UTF-8
unset LANGUAGE LC_ALL LC_MESSAGES
headless_start_app "$app"
headless_wait_for_item

# --- 1. Signed out: the connect screen.
[ -n "$(headless_popover_windows)" ] || headless_activate 1000 12
headless_wait_popover 1 20 || fail "the popover did not open"
# Signed out at start, Inkwarden asks the browser for a sign-in; the screen settles once it has.
for _ in $(seq 100); do headless_sign_in_began && break; sleep 0.1; done
sleep 1
tree_shows connect || fail "the connect screen is not what a screen reader needs"
reader press "Connect manually" >&2 || fail "could not press Connect manually"
unfolded=""
for _ in $(seq 20); do
    unfolded=$(reader tree connect 2>&1) || true
    grep -q "\[text\] 'Server URL'" <<<"$unfolded" && break
    sleep 0.25
done
grep -q "\[text\] 'Server URL'" <<<"$unfolded" || { printf "%s\n" "$unfolded" >&2; fail "the unfolded form has no field named Server URL"; }
pass "connect screen: window, pane and every control named; the form unfolds when pressed through AT-SPI"

# --- 2. Signed in: the dashboard.
headless_sign_in "$app"
headless_wait_for_figures
[ -n "$(headless_popover_windows)" ] || headless_activate 1000 12
headless_wait_popover 1 20 || fail "the popover did not open on the dashboard"
tree_shows dashboard || fail "the dashboard is not what a screen reader needs"
pass "dashboard: period picker, described settings button, one line per figure, every control named"

# --- 3. Announcements: a refresh is told, the clocks are not.
sleep 3.5  # the cooldown after the first figures
quiet=$(reader announcements 3)
[ -z "$quiet" ] || fail "announced while nothing happened: $quiet"
# The listener stays idle on the bus, as a screen reader does; the press comes from elsewhere, once
# it listens.
ready="$HEADLESS_SCRATCH/listening"
reader announcements 6 "$ready" >"$HEADLESS_SCRATCH/heard" &
listener=$!
for _ in $(seq 100); do [ -e "$ready" ] && break; sleep 0.05; done
[ -e "$ready" ] || fail "the listener did not start"
reader press Refresh >&2 || fail "could not press Refresh"
wait "$listener"
heard=$(cat "$HEADLESS_SCRATCH/heard")
printf 'heard:\n%s\n' "$heard" >&2
grep -qx "Refreshing" <<<"$heard" || fail "the refresh was not announced as it began"
grep -qE '^Refreshed\. (Gross|Net) royalties: \$[0-9,.]+$' <<<"$heard" || fail "the new figure was not announced"
pass "a refresh is announced twice (begins, and its figure); 3 quiet seconds announce nothing"

# --- 4. The settings screen.
reader press "Settings" >&2 || fail "could not press the settings button"
tree_shows settings || fail "the settings screen is not what a screen reader needs"
pass "settings: fields, check boxes and move buttons named and described"
