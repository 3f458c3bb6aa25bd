#!/usr/bin/env bash
# The real binary on a Wayland-only session, unseen: a headless sway (no Xwayland, no DISPLAY), a
# private session bus, an unlocked keyring, waybar (whose tray is the StatusNotifierWatcher) and the
# development server, all as an unprivileged user.
#
#   1. Inkwarden starts on the Wayland platform, with no X server to fall back to.
#   2. Its item registers with waybar's watcher and waybar draws it in the tray.
#   3. Activate opens the popover as a floating window of 360 x 560 that has the keyboard; a second
#      Activate closes it; Escape closes it (other keys do not); a click elsewhere closes it.
#   4. With a pointer: a click on the icon opens the popover and a second one closes it; resting on
#      the icon shows the tool tip with the figure; a right click shows the item's menu, whose
#      "Open Inkwarden" opens the popover.
#   5. "Quit Inkwarden" in that menu ends the process with status 0.
#
# Usage: wayland-session-with-waybar.sh INKWARDEN DEVSERVER DESKTOP_ENTRY
set -euo pipefail
app=$1
devserver=$2
entry=$3
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
for tool in sway waybar grim wtype swaymsg python3 convert tesseract gnome-keyring-daemon; do
    command -v "$tool" >/dev/null || { echo "FAIL: $tool is missing: install the Wayland packages of scripts/lib/packages.sh"; exit 1; }
done
# shellcheck source=../../scripts/lib/headless-wayland.sh
source "$here/../../scripts/lib/headless-wayland.sh"

fail() {
    headless_log "FAIL: $*"
    [ -n "${WAYLAND_APP_LOG:-}" ] && [ -s "$WAYLAND_APP_LOG" ] && { headless_log "--- inkwarden log"; cat "$WAYLAND_APP_LOG" >&2; }
    [ -n "${WAYLAND_SCRATCH:-}" ] && [ -s "$WAYLAND_SCRATCH/sway.log" ] && { headless_log "--- sway log (end)"; tail -n 20 "$WAYLAND_SCRATCH/sway.log" >&2; }
    exit 1
}
pass() { headless_log "ok: $*"; }

# shellcheck source=../../scripts/lib/screen-text.sh
source "$here/../../scripts/lib/screen-text.sh"

# Seconds a window may take to come or go; generous for a loaded CI machine.
settle=15
width=1280
height=800
shots=${INKWARDEN_SCREENSHOTS:-}  # a folder to keep the screenshots in, for looking at them

wayland_begin
app=$(wayland_readable "$app")
wayland_start_compositor "${width}x${height}"
wayland_start_bus
wayland_start_keyring
wayland_start_keyboard
wayland_start_pointer
wayland_start_bar
# No newer version announced: its prompt would take the first Escape.
wayland_start_devserver "$devserver" --latest-app-version ""
wayland_mark_version_seen "$app"
wayland_register_scheme "$app" "$entry"

keep_shot() { [ -n "$shots" ] && cp "$1" "$shots/" || true; }

# Stays hidden for the given seconds.
stays_hidden() {
    local until=$(($(date +%s) + $1))
    while [ "$(date +%s)" -lt "$until" ]; do
        [ -z "$(wayland_popover_windows)" ] || return 1
        sleep 0.05
    done
    return 0
}

# Under the tray's right end: where waybar shows the item's tool tip and menu.
tip_area="500x150+$((width - 500))+$WAYLAND_BAR_HEIGHT"
menu_area="500x250+$((width - 500))+0"
# OCR of small text misreads now and then at one scale and not at the next: three tries each.
# "X Y" of a menu entry whose first word is WORD.
menu_entry_point() {
    local scale
    for scale in 4 3 5; do
        SCREEN_TEXT_SCALE=$scale screen_text_words "$1" "$menu_area" |
            awk -v word="$2" '$5 == word { print int($1 + $3 / 2), int($2 + $4 / 2); found = 1; exit } END { exit !found }' &&
            return 0
    done
    return 1
}
# "X Y" of the figure with these digits in the image's tool tip area.
tip_figure_point() {
    local scale
    for scale in 4 3 5; do
        SCREEN_TEXT_SCALE=$scale screen_text_find "$1" "$2" "$tip_area" && return 0
    done
    return 1
}

# Stays shown for the given seconds.
stays_shown() {
    local until=$(($(date +%s) + $1))
    while [ "$(date +%s)" -lt "$until" ]; do
        [ -n "$(wayland_popover_windows)" ] || return 1
        sleep 0.05
    done
    return 0
}

# The first sway window titled "Inkwarden Royalties" (the popover), as JSON, or nothing.
popover_window() { wayland_popover_windows | head -n 1; }
window_field() { python3 -c 'import json, sys; w = json.loads(sys.argv[1]); print(eval(sys.argv[2], {}, w))' "$1" "$2"; }

# The box "W H X Y" of what differs between two screenshots in the bar, else nothing.
bar_change() {
    convert "$1" "$2" -crop "x${WAYLAND_BAR_HEIGHT}+0+0" +repage -compose difference -composite \
        -threshold 25% -trim -format '%w %h %X %Y' info: 2>/dev/null | tr -d '+' || true
}

# --- 1. Inkwarden on Wayland only.
before="$WAYLAND_SCRATCH/bar-without-item.png"
wayland_screenshot "$before"
keep_shot "$before"
wayland_start_app "$app"
wayland_wait_for_item
maps=$(cat "/proc/$WAYLAND_APP_PID/maps")
grep -q '/platforms/libqwayland-[a-z]*\.so' <<<"$maps" || fail "Inkwarden did not load Qt's Wayland platform plugin"
! grep -q '/platforms/libqxcb\.so' <<<"$maps" || fail "Inkwarden loaded the X11 platform plugin"
! tr '\0' '\n' <"/proc/$WAYLAND_APP_PID/environ" | grep -q '^DISPLAY=' || fail "Inkwarden has a DISPLAY"
pass "Inkwarden runs on Qt's Wayland platform, without DISPLAY"

# --- 2. In waybar's tray.
watcher=$(wayland_name_owner_pid org.kde.StatusNotifierWatcher)
[ "$watcher" = "$WAYLAND_BAR_PID" ] || fail "the StatusNotifierWatcher is process $watcher, not waybar ($WAYLAND_BAR_PID)"
pass "the item $(wayland_item_service) is registered with waybar's watcher"

wayland_sign_in "$app"
wayland_wait_for_figures
pass "signed in; the item's label is $(wayland_item_property XAyatanaLabel)"

after="$WAYLAND_SCRATCH/bar-with-item.png"
box=""
for _ in $(seq 100); do
    wayland_screenshot "$after"
    box=$(bar_change "$before" "$after")
    [ -n "$box" ] && break
    sleep 0.1
done
keep_shot "$after"
[ -n "$box" ] || fail "waybar drew nothing for the item"
read -r box_w box_h box_x box_y <<<"$box"
# The tray's icon size is 20: a square of about that size at the bar's right end.
[ "$box_w" -ge 12 ] && [ "$box_w" -le 26 ] && [ "$box_h" -ge 12 ] && [ "$box_h" -le 26 ] \
    && [ "$box_x" -ge $((width - 80)) ] || fail "what changed in the bar is ${box_w}x${box_h} at $box_x,$box_y, not a tray icon"
item_x=$((box_x + box_w / 2))
item_y=$((box_y + box_h / 2))
pass "waybar draws the item in its tray: ${box_w}x${box_h} at $box_x,$box_y"

# --- 3. The popover.
# The sign-in came back through a second launch, which shows the popover: sway's decision on it.
expect_popover() {
    local what=$1 window="" focused=""
    wayland_wait_popover 1 "$settle" || fail "$what did not open the popover"
    # The window is mapped before its size settles.
    for _ in $(seq 100); do
        window=$(popover_window)
        [ -n "$window" ] && [ "$(window_field "$window" 'rect["width"], rect["height"]')" = "(360, 560)" ] && break
        sleep 0.05
    done
    [ -n "$window" ] || fail "$what: the popover closed again at once"
    [ "$(window_field "$window" 'app_id')" = com.inkwarden.menubar ] || fail "$what: the popover's app_id is not com.inkwarden.menubar: $window"
    [ "$(window_field "$window" 'floating')" = True ] || fail "$what: sway tiled the popover: $window"
    [ "$(window_field "$window" 'rect["width"], rect["height"]')" = "(360, 560)" ] || fail "$what: the popover is not 360 x 560: $window"
    [ "$(window_field "$window" "0 <= rect['x'] and rect['x'] + rect['width'] <= $width and $WAYLAND_BAR_HEIGHT <= rect['y'] and rect['y'] + rect['height'] <= $height")" = True ] \
        || fail "$what: the popover is not whole on the screen below the bar: $window"
    for _ in $(seq 100); do
        focused=$(window_field "$(popover_window)" focused 2>/dev/null || true)
        [ "$focused" = True ] && break
        sleep 0.05
    done
    [ "$focused" = True ] || fail "$what: the open popover does not have the keyboard focus: $(popover_window)"
    pass "$what opened the popover: floating, 360 x 560 at $(window_field "$window" 'rect["x"], rect["y"]'), with the keyboard focus"
}
expect_popover "the sign-in callback"
shot="$WAYLAND_SCRATCH/popover.png"
wayland_screenshot "$shot"
keep_shot "$shot"

wayland_activate "$item_x" "$item_y"
wayland_wait_popover 0 "$settle" || fail "Activate on the item did not close the open popover"
pass "Activate closed the popover"

# A moment later, as a person's next click would be (an Activate right after a close is ignored).
sleep 0.5
wayland_activate "$item_x" "$item_y"
expect_popover "Activate($item_x, $item_y)"
wayland_activate "$item_x" "$item_y"
wayland_wait_popover 0 "$settle" || fail "a second Activate did not close the popover"
pass "a second Activate closed the popover"

sleep 0.5
wayland_activate "$item_x" "$item_y"
expect_popover "Activate after a close"
# Other keys leave it open; Escape closes it.
wayland_key Shift_L
wayland_key a
stays_shown 2 || fail "keys other than Escape closed the popover"
wayland_key Escape
wayland_wait_popover 0 "$settle" || fail "Escape did not close the popover"
pass "Escape closed the popover (Shift and a did not)"

# A click elsewhere (on the empty desktop) takes the focus from it, which closes it.
sleep 0.5
wayland_activate "$item_x" "$item_y"
expect_popover "Activate after Escape"
wayland_pointer move 200 600
wayland_pointer click left
wayland_wait_popover 0 "$settle" || fail "a click on the desktop did not close the popover"
pass "a click on the desktop closed the popover"

# --- 4. With the pointer in waybar's tray.
# A click on the icon: waybar calls Activate. A second click closes the popover, and it stays closed.
sleep 0.5
wayland_pointer move "$item_x" "$item_y"
wayland_pointer click left
expect_popover "a click on the icon in waybar's tray"
wayland_pointer click left
wayland_wait_popover 0 "$settle" || fail "a second click on the icon did not close the popover"
stays_hidden 2 || fail "the click on the icon that closed the popover opened it again"
pass "a second click on the icon closed the popover, and it stayed closed"

# Resting on the icon shows the tool tip, with the figure.
digits=$(tr -cd '0-9' <<<"$(wayland_item_property XAyatanaLabel)")
[ -n "$digits" ] || fail "the item's label has no figure"
wayland_pointer move "$((item_x - 2))" "$item_y"
wayland_pointer move "$item_x" "$item_y"
shot="$WAYLAND_SCRATCH/tool-tip.png"
tip=""
for _ in $(seq 20); do
    sleep 0.5
    wayland_screenshot "$shot"
    # Light text on a dark tip: negated for OCR.
    convert "$shot" -negate "$shot.negated.png"
    tip=$(tip_figure_point "$shot.negated.png" "$digits") && break
done
keep_shot "$shot"
[ -n "$tip" ] || { screen_text_words "$shot.negated.png" "$tip_area" >&2; fail "no tool tip with the figure $digits under the icon"; }
pass "resting on the icon shows the tool tip with the figure $digits (read with OCR at $tip)"

# A right click opens the item's menu; its "Open Inkwarden" opens the popover.
wayland_pointer click right
shot="$WAYLAND_SCRATCH/menu.png"
open_point=""
for _ in $(seq 20); do
    sleep 0.3
    wayland_screenshot "$shot"
    open_point=$(menu_entry_point "$shot" Open) && [ -n "$(menu_entry_point "$shot" Quit)" ] && break
    open_point=""
done
keep_shot "$shot"
[ -n "$open_point" ] || { screen_text_words "$shot" "$menu_area" >&2; fail "a right click on the icon showed no menu with Open and Quit"; }
pass "a right click on the icon shows the item's menu: $(screen_text_words "$shot" "$menu_area" | awk '{ printf "%s ", $5 }')"
read -r open_x open_y <<<"$open_point"
wayland_pointer move "$open_x" "$open_y"
wayland_pointer click left
expect_popover "Open Inkwarden in the item's menu"
wayland_key Escape
wayland_wait_popover 0 "$settle" || fail "Escape did not close the popover"

# --- 5. "Quit Inkwarden" in the item's menu ends Inkwarden with status 0.
sleep 0.5
wayland_pointer move "$item_x" "$item_y"
wayland_pointer click right
quit_point=""
for _ in $(seq 20); do
    sleep 0.3
    wayland_screenshot "$shot"
    quit_point=$(menu_entry_point "$shot" Quit) && break
done
[ -n "$quit_point" ] || fail "the second right click showed no menu"
read -r quit_x quit_y <<<"$quit_point"
wayland_pointer move "$quit_x" "$quit_y"
wayland_pointer click left
status=0
wait "$WAYLAND_APP_PID" || status=$?
[ "$status" = 0 ] || fail "Inkwarden ended with status $status after Quit Inkwarden"
pass "Quit Inkwarden in the item's menu ended Inkwarden with status 0"
pass "done"
