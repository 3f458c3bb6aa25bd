#!/usr/bin/env bash
# Runs Inkwarden on a machine without a display, as scripts/run.sh does on a desktop, but unseen:
# Xvfb, a session bus of its own, an unlocked keyring, xfce4-panel (whose systray is a
# StatusNotifierWatcher), the development server on a free port and Inkwarden, in a scratch home.
# It signs in through the browser sign-in, playing the browser with curl, waits for the figures,
# then writes a screenshot of the screen with the panel, opens the popover from the item and
# writes a second one. Prints the paths of both PNG files.
#
#   scripts/run-headless.sh [--keep] [--output DIR] [--size WxH] [--no-build]
#
#   --keep        leave everything running afterwards (prints how to stop it)
#   --output DIR  where the screenshots go (default: $TMPDIR or /tmp)
#   --size WxH    the virtual screen (default 1280x800)
#   --no-build    use the release build as it is
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/packages.sh
source scripts/lib/headless.sh

output=${TMPDIR:-/tmp}
size=1280x800
build=1
while [ "$#" -gt 0 ]; do
    case "$1" in
        --keep) HEADLESS_KEEP=1 ;;
        --output) output=$2; shift ;;
        --size) size=$2; shift ;;
        --no-build) build=0 ;;
        -h|--help) inkwarden_print_usage "$0"; exit 0 ;;
        *) echo "$0: unknown argument $1 (see --help)" >&2; exit 2 ;;
    esac
    shift
done
mkdir -p "$output"
output=$(cd "$output" && pwd)

app="$PWD/build/release/InkwardenMenuBar/inkwarden"
devserver="$PWD/build/release/devserver/inkwarden-devserver"
if [ "$build" = 1 ]; then
    inkwarden_ensure_packages "${INKWARDEN_BUILD_PACKAGES[@]}" "${INKWARDEN_RUN_PACKAGES[@]}" \
        "${INKWARDEN_PANEL_PACKAGES[@]}"
    cmake --preset release >/dev/null
    cmake --build --preset release --target inkwarden inkwarden-devserver
fi
[ -x "$app" ] && [ -x "$devserver" ] || { echo "$0: build Inkwarden first (cmake --preset release)" >&2; exit 1; }

headless_begin
headless_start_display "$size"
headless_start_bus
headless_start_keyring
headless_start_panel
headless_start_devserver "$devserver"
headless_register_scheme "$app" data/com.inkwarden.menubar.desktop

stamp=$(date +%Y%m%d-%H%M%S)
before="$HEADLESS_SCRATCH/panel-without-item.png"
import -window root "$before"

echo "Starting Inkwarden: without a key it asks the browser to sign in; here the script is the browser."
headless_start_app "$app"
headless_wait_for_item
headless_sign_in "$app"
headless_wait_for_figures
echo "Connected: $(sed -n 's/^accountID=//p' "$HEADLESS_SETTINGS"); the statistics were asked for."
sleep 2  # the figure reaches the panel and the popover finishes drawing

# The hand-over of the callback shows the popover: close it for the picture of the panel alone.
if [ -n "$(headless_popover_windows)" ]; then
    headless_activate 0 0
    headless_wait_popover 0 5 || echo "warning: the popover did not close" >&2
    sleep 0.5
fi
panel_png="$output/inkwarden-headless-panel-$stamp.png"
popover_png="$output/inkwarden-headless-popover-$stamp.png"
import -window root "$panel_png"

point=$(headless_item_point "$before" "$panel_png")
if [ -z "$point" ]; then
    point="$(( ${size%x*} - 120 )) 13"
    echo "The item was not found in the panel picture; activating at $point, on the panel."
else
    echo "The item is at $point in the panel."
fi
# shellcheck disable=SC2086
headless_activate $point
headless_wait_popover 1 10 || echo "warning: no window titled Inkwarden appeared" >&2
sleep 1.5  # the dashboard's first frame
import -window root "$popover_png"
if window=$(headless_popover_windows | head -n 1) && [ -n "$window" ]; then
    echo "Popover window: $(xdotool getwindowgeometry "$window" | tr -s ' \n' ' ')"
fi

echo "$panel_png"
echo "$popover_png"
if [ "$HEADLESS_KEEP" = 1 ]; then
    echo "Inkwarden keeps running on DISPLAY=$DISPLAY, DBUS_SESSION_BUS_ADDRESS=$DBUS_SESSION_BUS_ADDRESS"
fi
