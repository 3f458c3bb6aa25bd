#!/usr/bin/env bash
# The real binary on a real panel, unseen: Xvfb, a private session bus, an unlocked keyring,
# xfce4-panel (whose systray is the StatusNotifierWatcher) and the development server.
#
#   1. The first launch of a version opens the popover by itself and records the version; the
#      second launch of the same version does not.
#   2. Activate(x, y) on the item opens the 360 x 560 popover under the clicked point, kept whole
#      on the screen; a second Activate closes it; a click elsewhere closes it; a click on the item
#      while it is open closes it and does not open it again.
#   3. "Quit Inkwarden" from the item's menu ends the process with status 0.
#
# Usage: popover-on-the-panel.sh INKWARDEN DEVSERVER DESKTOP_ENTRY
set -euo pipefail
app=$1
devserver=$2
entry=$3
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
for tool in Xvfb xfce4-panel xdotool xwininfo import convert gnome-keyring-daemon; do
    command -v "$tool" >/dev/null || { echo "FAIL: $tool is missing: install the panel packages of scripts/lib/packages.sh"; exit 1; }
done
# shellcheck source=../../scripts/lib/headless.sh
source "$here/../../scripts/lib/headless.sh"


# Seconds a window may take to come or go; generous for a loaded CI machine.
settle=15
width=1280
height=800

headless_begin
headless_start_display "${width}x${height}"
headless_start_bus
headless_start_keyring
headless_start_panel
headless_start_devserver "$devserver"
headless_register_scheme "$app" "$entry"

popover_shown() { [ -n "$(headless_popover_windows)" ]; }

# Stays hidden for the given seconds (a window that should not appear).
stays_hidden() {
    local until=$(($(date +%s) + $1))
    while [ "$(date +%s)" -lt "$until" ]; do
        popover_shown && return 1
        sleep 0.05
    done
    return 0
}

# "X Y W H" of the shown popover.
popover_geometry() {
    local window
    window=$(headless_popover_windows | head -n 1)
    [ -n "$window" ] || return 1
    xwininfo -id "$window" | awk '
        /Absolute upper-left X:/ { x = $4 } /Absolute upper-left Y:/ { y = $4 }
        /Width:/ { w = $2 } /Height:/ { h = $2 }
        END { print x, y, w, h }'
}

expect_geometry() {
    local want=$1 what=$2 got=""
    # The window is mapped before its final position arrives: wait for it to settle.
    for _ in $(seq 100); do
        got=$(popover_geometry || true)
        [ "$got" = "$want" ] && { headless_pass "$what: popover at $got"; return 0; }
        sleep 0.05
    done
    headless_fail "$what: popover at '$got', expected '$want' (x y width height)"
}

quit_from_menu() {
    gdbus call --session --dest "$(headless_item_service)" --object-path /MenuBar \
        --method com.canonical.dbusmenu.Event 5 clicked '<"">' 0 >/dev/null
    local status=0
    wait "$HEADLESS_APP_PID" || status=$?
    [ "$status" = 0 ] || headless_fail "Inkwarden ended with status $status after Quit Inkwarden"
}

settings_value() { sed -n "s/^$1=//p" "$HEADLESS_SETTINGS"; }

# --- 1. First launch of this version.
version=$("$app" --version | awk '{ print $NF }')
[ -n "$version" ] || headless_fail "inkwarden --version printed no version"
sed -i '/^lastPresentedAppVersion=/d' "$HEADLESS_SETTINGS"

before="$HEADLESS_SCRATCH/panel-without-item.png"
import -window root "$before"
headless_start_app "$app"
headless_wait_for_item
headless_wait_popover 1 "$settle" || headless_fail "the first launch of $version did not open the popover"
headless_pass "the first launch opened the popover"
[ "$(settings_value lastPresentedAppVersion)" = "$version" ] \
    || headless_fail "lastPresentedAppVersion is '$(settings_value lastPresentedAppVersion)', expected '$version'"
headless_pass "lastPresentedAppVersion=$version recorded"

# Signed in through the browser while it runs, so that the next launch is connected.
headless_sign_in "$app"
headless_wait_for_figures
quit_from_menu
headless_pass "Quit Inkwarden from the item's menu ended the process with status 0"

# --- 2. The second launch of the same version keeps the popover closed.
headless_start_app "$app"
headless_wait_for_item
stays_hidden 3 || headless_fail "the second launch of the same version opened the popover"
headless_pass "the second launch left the popover closed"

# --- 3. Activate on the item.
# Without a window manager no panel reserves space, so the popover keeps clear of the clicked
# point: centred under it, 24 pixels below, and kept whole on the screen.
headless_activate 1000 12
headless_wait_popover 1 "$settle" || headless_fail "Activate did not open the popover"
expect_geometry "820 36 360 560" "Activate(1000, 12)"
headless_activate 1000 12
headless_wait_popover 0 "$settle" || headless_fail "a second Activate did not close the popover"
headless_pass "a second Activate closed the popover"

# A moment later, as a person's next click would be (the click that closes the popover must not
# open it again, so an Activate right on the heels of closing is ignored).
sleep 0.5
headless_activate $((width - 10)) 12
headless_wait_popover 1 "$settle" || headless_fail "Activate near the right edge did not open the popover"
expect_geometry "$((width - 360)) 36 360 560" "Activate($((width - 10)), 12)"

# A click elsewhere on the screen closes it.
xdotool mousemove 200 600 click 1
headless_wait_popover 0 "$settle" || headless_fail "a click elsewhere did not close the popover"
headless_pass "a click elsewhere closed the popover"

# The click on the item that closes the popover does not open it again.
sleep 1
after="$HEADLESS_SCRATCH/panel-with-item.png"
import -window root "$after"
point=$(headless_item_point "$before" "$after")
[ -n "$point" ] || headless_fail "the item was not found in the panel"
read -r item_x item_y <<<"$point"
headless_pass "the item is at $item_x $item_y in the panel"
xdotool mousemove "$item_x" "$item_y" click 1
headless_wait_popover 1 "$settle" || headless_fail "a click on the item did not open the popover"
headless_pass "a click on the item opened the popover"
sleep 0.5
xdotool mousemove "$item_x" "$item_y" click 1
headless_wait_popover 0 "$settle" || headless_fail "a click on the item did not close the popover"
stays_hidden 2 || headless_fail "the click on the item that closed the popover opened it again"
headless_pass "the click on the item closed the popover and it stayed closed"

quit_from_menu
headless_pass "done"
