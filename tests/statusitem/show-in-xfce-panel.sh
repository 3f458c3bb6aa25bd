#!/bin/sh
# Shows Inkwarden's status item in a real panel, unseen: Xvfb, a private session bus and xfce4-panel
# (whose systray is a StatusNotifierWatcher and host) in a scratch home with the panel's default
# layout, then inkwarden-statusitem-demo, and writes a screenshot of the screen and of the panel.
#
#   tests/statusitem/show-in-xfce-panel.sh DEMO-BINARY [OUTPUT-DIRECTORY] [-- DEMO-ARGUMENT...]
#
# Needs xvfb, xfce4-panel, dbus-daemon, libglib2.0-bin (gdbus) and imagemagick (import, convert).
# Prints the paths of the PNG files it writes.
set -eu

if [ "$#" -lt 1 ]; then
    echo "usage: $0 DEMO-BINARY [OUTPUT-DIRECTORY] [-- DEMO-ARGUMENT...]" >&2
    exit 2
fi
demo=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
shift
output=${TMPDIR:-/tmp}
if [ "$#" -gt 0 ] && [ "$1" != "--" ]; then
    output=$1
    shift
fi
[ "$#" -gt 0 ] && [ "$1" = "--" ] && shift
mkdir -p "$output"
output=$(cd "$output" && pwd)

for program in Xvfb xfce4-panel dbus-run-session gdbus import convert; do
    if ! command -v "$program" >/dev/null 2>&1; then
        echo "$0: $program is missing" >&2
        exit 1
    fi
done

scratch=$(mktemp -d "${TMPDIR:-/tmp}/inkwarden-panel.XXXXXX")
xvfb_pid=
cleanup() {
    [ -n "$xvfb_pid" ] && kill "$xvfb_pid" 2>/dev/null || true
    rm -rf "$scratch"
}
trap cleanup EXIT

export HOME="$scratch/home"
export XDG_CONFIG_HOME="$HOME/.config"
export XDG_CACHE_HOME="$scratch/cache"
export XDG_RUNTIME_DIR="$scratch/runtime"
mkdir -p "$XDG_CONFIG_HOME/xfce4/xfconf/xfce-perchannel-xml" "$XDG_CACHE_HOME" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"
cp /etc/xdg/xfce4/panel/default.xml "$XDG_CONFIG_HOME/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml"
unset WAYLAND_DISPLAY XDG_SESSION_DESKTOP DESKTOP_SESSION GNOME_DESKTOP_SESSION_ID KDE_FULL_SESSION
export XDG_CURRENT_DESKTOP=XFCE

# The first free display number.
display=90
while [ -e "/tmp/.X11-unix/X$display" ] || [ -e "/tmp/.X$display-lock" ]; do
    display=$((display + 1))
done
Xvfb ":$display" -screen 0 1024x240x24 -nolisten tcp >"$scratch/xvfb.log" 2>&1 &
xvfb_pid=$!
export DISPLAY=":$display"
tries=0
until [ -e "/tmp/.X11-unix/X$display" ]; do
    tries=$((tries + 1))
    [ "$tries" -gt 100 ] && { echo "$0: Xvfb did not start" >&2; exit 1; }
    sleep 0.1
done

export INKWARDEN_DEMO="$demo" INKWARDEN_OUTPUT="$output" INKWARDEN_SCRATCH="$scratch"
dbus-run-session -- sh -eu -c '
    xfce4-panel >"$INKWARDEN_SCRATCH/panel.log" 2>&1 &
    panel=$!
    # The panel takes a few seconds to claim the watcher name.
    if ! gdbus wait --session --timeout 30 org.kde.StatusNotifierWatcher; then
        echo "xfce4-panel did not start a StatusNotifierWatcher" >&2
        cat "$INKWARDEN_SCRATCH/panel.log" >&2
        kill "$panel"
        exit 1
    fi
    "$INKWARDEN_DEMO" "$@" >"$INKWARDEN_SCRATCH/demo.log" 2>&1 &
    demo=$!
    sleep 4
    import -window root "$INKWARDEN_OUTPUT/inkwarden-panel-screen.png"
    convert "$INKWARDEN_OUTPUT/inkwarden-panel-screen.png" -crop 1024x40+0+0 +repage -scale 200% \
        "$INKWARDEN_OUTPUT/inkwarden-panel.png"
    echo "registered items: $(gdbus call --session --dest org.kde.StatusNotifierWatcher \
        --object-path /StatusNotifierWatcher --method org.freedesktop.DBus.Properties.Get \
        org.kde.StatusNotifierWatcher RegisteredStatusNotifierItems)"
    kill "$demo" "$panel" 2>/dev/null || true
    wait 2>/dev/null || true
    sed "s/^/demo: /" "$INKWARDEN_SCRATCH/demo.log"
' sh "$@"

echo "$output/inkwarden-panel-screen.png"
echo "$output/inkwarden-panel.png"
