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
#   5. Orca itself (run without speech; what it would say is read from its log): the popover opened
#      again starts on the chosen period, said to be chosen; Right chooses the next period, and the
#      refresh it starts is told; Tab moves on to a period not chosen; idle, it says nothing; a
#      server fault is told with the words of the error banner.
#
# Usage: screen-reader.sh INKWARDEN DEVSERVER WATCHER
set -euo pipefail
app=$1
devserver=$2
watcher=$3
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=../../scripts/lib/headless.sh
source "$here/../../scripts/lib/headless.sh"

reader() { /usr/bin/python3 "$here/read-accessibility-tree.py" "$@"; }
# What Orca would have said after line MARK of its log, an utterance a line.
orca_said() { tail -n +"$(($1 + 1))" "$orca_log" | sed -n "s/^[0-9:.]* - SPEECH OUTPUT: '\(.*\)' *{.*$/\1/p"; }
orca_mark() { wc -l <"$orca_log"; }
# Whether the lines of standard input match each extended regular expression given, in that order
# (other lines may come between).
in_order() {
    local line k=0 patterns=("$@")
    while IFS= read -r line; do
        [ "$k" -lt "${#patterns[@]}" ] && [[ $line =~ ${patterns[k]} ]] && k=$((k + 1))
    done
    [ "$k" -eq "${#patterns[@]}" ]
}
# Waits up to SECONDS until Orca, since line MARK of its log, has said what matches each PATTERN, in
# order; prints what it said.
orca_says() {
    local mark=$1 seconds=$2
    shift 2
    for _ in $(seq $((seconds * 10))); do
        orca_said "$mark" | in_order "$@" && break
        sleep 0.1
    done
    orca_said "$mark" | sed 's/^/  orca: /' >&2
    orca_said "$mark" | in_order "$@"
}
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
headless_name_has_owner org.a11y.Bus || headless_fail "the accessibility bus did not start"
headless_start_keyring
headless_start_devserver "$devserver"
# The newer version the development server offers would open its prompt over the dashboard.
sed -i 's/^lastPresentedAppVersion=seen$/lastPresentedAppVersion=999.0.0/' "$HEADLESS_SETTINGS"
"$watcher" >"$HEADLESS_SCRATCH/watcher.log" 2>&1 &
HEADLESS_PIDS+=($!)
gdbus wait --session --timeout 10 org.kde.StatusNotifierWatcher || headless_fail "the test watcher did not start"

# Qt's bridge to AT-SPI, on as it is when a screen reader runs.
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QT_QPA_PLATFORM=xcb LANG=C.UTF-8
unset LANGUAGE LC_ALL LC_MESSAGES
headless_start_app "$app"
headless_wait_for_item

# --- 1. Signed out: the connect screen.
[ -n "$(headless_popover_windows)" ] || headless_activate 1000 12
headless_wait_popover 1 20 || headless_fail "the popover did not open"
# Signed out at start, Inkwarden asks the browser for a sign-in; the screen settles once it has.
for _ in $(seq 100); do headless_sign_in_began && break; sleep 0.1; done
sleep 1
tree_shows connect || headless_fail "the connect screen is not what a screen reader needs"
reader press "Connect manually" >&2 || headless_fail "could not press Connect manually"
unfolded=""
for _ in $(seq 20); do
    unfolded=$(reader tree connect 2>&1) || true
    grep -q "\[text\] 'Server URL'" <<<"$unfolded" && break
    sleep 0.25
done
grep -q "\[text\] 'Server URL'" <<<"$unfolded" || { printf "%s\n" "$unfolded" >&2; headless_fail "the unfolded form has no field named Server URL"; }
headless_pass "connect screen: window, pane and every control named; the form unfolds when pressed through AT-SPI"

# --- 2. Signed in: the dashboard.
headless_sign_in "$app"
headless_wait_for_figures
[ -n "$(headless_popover_windows)" ] || headless_activate 1000 12
headless_wait_popover 1 20 || headless_fail "the popover did not open on the dashboard"
tree_shows dashboard || headless_fail "the dashboard is not what a screen reader needs"
headless_pass "dashboard: period picker, described settings button, one line per figure, every control named"

# --- 3. Announcements: a refresh is told, the clocks are not.
sleep 3.5  # the cooldown after the first figures
quiet=$(reader announcements 3)
[ -z "$quiet" ] || headless_fail "announced while nothing happened: $quiet"
# The listener stays idle on the bus, as a screen reader does; the press comes from elsewhere, once
# it listens.
ready="$HEADLESS_SCRATCH/listening"
reader announcements 6 "$ready" >"$HEADLESS_SCRATCH/heard" &
listener=$!
for _ in $(seq 100); do [ -e "$ready" ] && break; sleep 0.05; done
[ -e "$ready" ] || headless_fail "the listener did not start"
reader press Refresh >&2 || headless_fail "could not press Refresh"
wait "$listener"
heard=$(cat "$HEADLESS_SCRATCH/heard")
printf 'heard:\n%s\n' "$heard" >&2
grep -qx "Refreshing" <<<"$heard" || headless_fail "the refresh was not announced as it began"
grep -qE '^Refreshed\. (Gross|Net) royalties: \$[0-9,.]+$' <<<"$heard" || headless_fail "the new figure was not announced"
headless_pass "a refresh is announced twice (begins, and its figure); 3 quiet seconds announce nothing"

# --- 4. The settings screen.
reader press "Settings" >&2 || headless_fail "could not press the settings button"
tree_shows settings || headless_fail "the settings screen is not what a screen reader needs"
headless_pass "settings: fields, check boxes and move buttons named and described"

# --- 5. Orca itself.
# The update prompt that the development server's newer version brought is dismissed first.
reader press "Later" >/dev/null 2>&1 || true
reader press "Back" >&2 || headless_fail "could not go back from the settings"
orca_log="$HEADLESS_SCRATCH/orca.debug"
: >"$orca_log"
orca --replace --disable speech --debug-file "$orca_log" >"$HEADLESS_SCRATCH/orca.log" 2>&1 &
HEADLESS_PIDS+=($!)
for _ in $(seq 300); do grep -qs "EVENT MANAGER: Activated" "$orca_log" && break; sleep 0.1; done
grep -qs "EVENT MANAGER: Activated" "$orca_log" || { cat "$HEADLESS_SCRATCH/orca.log" >&2; headless_fail "Orca did not start"; }
# Closed with Escape, as a user of the keyboard does (Orca then forgets the window).
xdotool key Escape
headless_wait_popover 0 10 || headless_fail "the popover did not close on Escape"
sleep 1  # a click just after the popover closed is the click that closed it
mark=$(orca_mark)
headless_activate 1000 12
headless_wait_popover 1 20 || headless_fail "the popover did not open again"
# (Orca names the panels around it first, unless the window's activation reaches it after the focus:
# that varies with the load of the machine.)
orca_says "$mark" 15 "^Today\.$" "^selected radio button$" \
    || { grep -E "SPEECH|focused for|window:" "$orca_log" | tail -30 >&2; headless_fail "Orca did not start on the chosen period as the popover opened"; }
headless_pass "Orca: the popover opens on the period chosen, said to be chosen"

sleep 3.5  # any cooldown of the last refresh
mark=$(orca_mark)
xdotool key Right
orca_says "$mark" 15 "^Yesterday\.$" "^selected radio button$" "^notification Refreshing\.$" \
    '^notification Refreshed\. (Gross|Net) royalties: \$[0-9,.]+\.$' \
    || headless_fail "Orca did not follow a period chosen with Right, or its refresh"
mark=$(orca_mark)
xdotool key Tab
orca_says "$mark" 10 "^This Month\.$" "^not selected radio button$" || headless_fail "Orca did not follow Tab"
# Then nothing happens but the clocks of the status lines and the cooldown's count: Orca says nothing.
sleep 1  # what it says of the last focus, all of it
mark=$(orca_mark)
sleep 4
idle=$(orca_said "$mark")
[ -z "$idle" ] || headless_fail "Orca spoke while nothing happened: $idle"
headless_pass "Orca: Right chooses and says the next period, and its refresh is told; Tab says a period not chosen; 4 idle seconds say nothing"

curl -sf -o /dev/null -X POST -d '{"stats": {"status": 500}}' "$HEADLESS_SERVER/__admin/faults" \
    || headless_fail "could not set the server's fault"
sleep 3.5  # the cooldown of the last refresh
mark=$(orca_mark)
reader press Refresh >&2 || headless_fail "could not press Refresh"
orca_says "$mark" 15 "^notification Refreshing\.$" "^notification .+" || headless_fail "Orca told nothing of the failed refresh"
alert=$(reader alerts)
[ -n "$alert" ] || headless_fail "no error banner is shown"
# (Orca ends what it says with a full stop, unless the words have one.)
orca_said "$mark" | grep -qxF -e "notification $alert" -e "notification $alert." || headless_fail "Orca did not say the error banner's words: $alert"
curl -sf -o /dev/null -X DELETE "$HEADLESS_SERVER/__admin/faults"
headless_pass "Orca: a failed refresh is told in the error banner's words ($alert)"
