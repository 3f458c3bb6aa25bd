#!/bin/sh
# Runs a command on a private D-Bus session bus with nothing on it, in a scratch home, with no
# display and no desktop named, so that desktop tests never show anything on, or change anything in,
# the session of whoever runs them.
#
#   tests/desktop/run-with-session-bus.sh COMMAND [ARGUMENT...]
#
# The command finds INKWARDEN_PRIVATE_SESSION_BUS=1 in its environment. Its exit status is the script's.
set -eu

if [ "$#" -eq 0 ]; then
    echo "usage: $0 COMMAND [ARGUMENT...]" >&2
    exit 2
fi
if ! command -v dbus-daemon >/dev/null 2>&1; then
    echo "$0: dbus-daemon is missing (scripts/lib/packages.sh lists the packages the tests need)" >&2
    exit 1
fi

here=$(cd "$(dirname "$0")" && pwd)
scratch=$(mktemp -d "${TMPDIR:-/tmp}/inkwarden-desktop.XXXXXX")
daemon_pid=""
cleanup() {
    if [ -n "$daemon_pid" ]; then
        kill "$daemon_pid" 2>/dev/null || true
        wait "$daemon_pid" 2>/dev/null || true
    fi
    rm -rf "$scratch"
}
trap cleanup EXIT

export HOME="$scratch/home"
export XDG_CONFIG_HOME="$scratch/config"
export XDG_DATA_HOME="$scratch/data"
export XDG_CACHE_HOME="$scratch/cache"
export XDG_RUNTIME_DIR="$scratch/runtime"
mkdir -p "$HOME" "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_CACHE_HOME" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"
unset DISPLAY WAYLAND_DISPLAY XDG_CURRENT_DESKTOP XDG_SESSION_DESKTOP DESKTOP_SESSION \
    GNOME_DESKTOP_SESSION_ID KDE_FULL_SESSION KDE_SESSION_VERSION

# As root the daemon warns that it cannot raise its file limit: harmless here, so it goes to its log.
dbus-daemon --config-file="$here/session-bus.conf" --nofork --print-address=3 \
    3>"$scratch/bus-address" 2>"$scratch/dbus-daemon.log" &
daemon_pid=$!
tries=0
while [ ! -s "$scratch/bus-address" ]; do
    tries=$((tries + 1))
    if [ "$tries" -gt 250 ] || ! kill -0 "$daemon_pid" 2>/dev/null; then
        echo "$0: dbus-daemon did not start:" >&2
        cat "$scratch/dbus-daemon.log" >&2
        exit 1
    fi
    sleep 0.02
done
DBUS_SESSION_BUS_ADDRESS=$(head -n 1 "$scratch/bus-address")
export DBUS_SESSION_BUS_ADDRESS
export INKWARDEN_PRIVATE_SESSION_BUS=1

status=0
"$@" || status=$?
exit "$status"
