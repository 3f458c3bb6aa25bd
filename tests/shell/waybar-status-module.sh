#!/usr/bin/env bash
# The figure in waybar on a Wayland-only session, unseen: waybar's tray shows only the icon, so a
# custom module runs `inkwarden --status --follow --format waybar`, as the README's recipe sets it
# up. Headless sway, a private session bus, an unlocked keyring and the development server, all as
# an unprivileged user; checked from grim screenshots, read with OCR:
#
#   1. Before Inkwarden runs the module shows nothing.
#   2. Once it runs, the module shows the title before sign-in ("◉ —", state signedOut), and no
#      figure (so that the check below can fail).
#   3. After a browser sign-in the same module process, which waybar started once, shows the figure
#      that `inkwarden --status` prints and the item's label holds (state ok).
#   4. A click on the figure opens the popover.
#
# Usage: waybar-status-module.sh INKWARDEN DEVSERVER DESKTOP_ENTRY
set -euo pipefail
app=$1
devserver=$2
entry=$3
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
for tool in sway waybar grim swaymsg convert tesseract gnome-keyring-daemon; do
    command -v "$tool" >/dev/null || { echo "FAIL: $tool is missing: install the Wayland packages of scripts/lib/packages.sh"; exit 1; }
done
# shellcheck source=../../scripts/lib/headless-wayland.sh
source "$here/../../scripts/lib/headless-wayland.sh"
# shellcheck source=../../scripts/lib/screen-text.sh
source "$here/../../scripts/lib/screen-text.sh"

fail() {
    headless_log "FAIL: $*"
    [ -n "${WAYLAND_APP_LOG:-}" ] && [ -s "$WAYLAND_APP_LOG" ] && { headless_log "--- inkwarden log"; cat "$WAYLAND_APP_LOG" >&2; }
    [ -n "${WAYLAND_SCRATCH:-}" ] && [ -s "$WAYLAND_SCRATCH/waybar.log" ] && { headless_log "--- waybar log"; cat "$WAYLAND_SCRATCH/waybar.log" >&2; }
    exit 1
}
pass() { headless_log "ok: $*"; }

width=1280
shots=${INKWARDEN_SCREENSHOTS:-}  # a folder to keep the screenshots in, for looking at them
keep_shot() { [ -n "$shots" ] && cp "$1" "$shots/"; return 0; }

wayland_begin
app=$(wayland_readable "$app")
wayland_start_compositor "${width}x800"
wayland_start_bus
wayland_start_keyring
wayland_start_pointer
# The module at the bar's left end, as the README's recipe has it.
module_command="$app --status --follow --format waybar"
wayland_start_bar "\"modules-left\": [\"custom/inkwarden\"],
    \"custom/inkwarden\": { \"exec\": \"$module_command\", \"return-type\": \"json\", \"on-click\": \"$app\" }"
# No newer version announced: nothing but the figure changes.
wayland_start_devserver "$devserver" --latest-app-version ""
wayland_mark_version_seen "$app"
wayland_register_scheme "$app" "$entry"

# The module's part of the bar, and the same negated: tesseract reads dark text on light best.
module_area="400x${WAYLAND_BAR_HEIGHT}+0+0"
module_shot() {
    local shot=$1
    wayland_screenshot "$shot.full.png"
    convert "$shot.full.png" -crop "$module_area" +repage -negate "$shot"
    rm -f "$shot.full.png"
    keep_shot "$shot"
}
# Bright pixels of the module's text (white on the dark bar), counted in the negated crop.
bright_pixels() {
    convert "$1" -colorspace Gray -threshold 50% -negate -format '%[fx:int(w*h*mean+0.5)]' info:
}
# The module's process, which waybar started (one, for as long as the bar runs).
module_pids() {
    local pid
    for pid in $(wayland_session_pids); do
        [ "$(tr '\0' ' ' <"/proc/$pid/cmdline" 2>/dev/null)" = "$module_command " ] && echo "$pid"
    done
    return 0
}
# "X Y" of the figure with these digits in the image, else fails. OCR of a few pixels high text
# misreads now and then at one scale and not at the next: it gets three tries.
figure_point() {
    local scale
    for scale in 4 3 5; do
        SCREEN_TEXT_SCALE=$scale screen_text_find "$1" "$2" && return 0
    done
    return 1
}
item_label() { wayland_item_property XAyatanaLabel | sed -n "s/^(<'\(.*\)'>,)$/\1/p"; }
status_now() { wayland_as_user "$app" --status "$@"; }

# --- 1. Nothing while Inkwarden is not running.
for _ in $(seq 100); do [ -n "$(module_pids)" ] && break; sleep 0.05; done
follower=$(module_pids)
[ "$(wc -w <<<"$follower")" = 1 ] || fail "waybar runs no single '$module_command' (found: '$follower')"
sleep 1
shot="$WAYLAND_SCRATCH/module-not-running.png"
module_shot "$shot"
[ "$(bright_pixels "$shot")" = 0 ] || fail "the module shows something while Inkwarden is not running"
pass "waybar runs the module (process $follower); it shows nothing while Inkwarden is not running"

# --- 2. The title before sign-in.
wayland_start_app "$app"
wayland_wait_for_item
title=$(status_now) || fail "inkwarden --status ended with $? while Inkwarden runs"
[ "$title" = "◉ —" ] || fail "before sign-in inkwarden --status prints '$title'"
status_now --format waybar | grep -q '"class": *"signedOut"' || fail "before sign-in the state is not signedOut: $(status_now --format waybar)"
shot="$WAYLAND_SCRATCH/module-signed-out.png"
drawn=0
for _ in $(seq 100); do
    module_shot "$shot"
    drawn=$(bright_pixels "$shot")
    [ "$drawn" -gt 0 ] && break
    sleep 0.1
done
[ "$drawn" -gt 0 ] || fail "the module shows nothing for '$title'"
pass "before sign-in the module shows '$title' ($drawn bright pixels), state signedOut"

# --- 3. The figure after sign-in.
wayland_sign_in "$app"
wayland_wait_for_figures
label=""
for _ in $(seq 100); do
    label=$(item_label)
    case "$label" in "· "*) break ;; esac
    sleep 0.05
done
case "$label" in "· "*) ;; *) fail "the item's label is '$label', not a figure" ;; esac
title=$(status_now)
[ "$title" = "$label" ] || fail "inkwarden --status prints '$title', the item's label is '$label'"
status_now --format waybar | grep -q '"class": *"ok"' || fail "after sign-in the state is not ok: $(status_now --format waybar)"
digits=$(tr -cd '0-9' <<<"$label")
[ -n "$digits" ] || fail "the figure '$label' has no digits to look for"
# The check below must be able to fail: the screenshot before sign-in does not show the figure.
if figure_point "$shot" "$digits" >/dev/null; then
    fail "the bar showed $digits before sign-in: the check cannot tell"
fi
pass "inkwarden --status prints '$title', the item's label; before sign-in OCR finds no $digits"

shot="$WAYLAND_SCRATCH/module-figure.png"
point=""
for _ in $(seq 20); do
    module_shot "$shot"
    point=$(figure_point "$shot" "$digits") && break
    sleep 0.2
done
[ -n "$point" ] || { screen_text_words "$shot" >&2; fail "the module does not show the figure '$label'"; }
[ "$(module_pids)" = "$follower" ] || fail "the module's process changed: $follower, now '$(module_pids)'"
pass "the module shows '$label' (read with OCR at $point), from the same process $follower"

# --- 4. A click on the figure opens the popover (waybar runs `inkwarden`, which hands over).
# The sign-in opened the popover to show its outcome; it is closed first, as a person would.
if wayland_wait_popover 1 2; then
    wayland_activate 0 0
    wayland_wait_popover 0 15 || fail "the popover of the sign-in did not close"
    sleep 0.5
fi
read -r x y <<<"$point"
wayland_pointer move "$x" "$y"
wayland_pointer click left
wayland_wait_popover 1 15 || fail "a click on the figure did not open the popover"
pass "a click on the figure opened the popover"
pass "done"
