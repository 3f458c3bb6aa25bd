#!/bin/sh
# Runs a command against a fresh, unlocked gnome-keyring on a private D-Bus session bus, so that
# keyring tests never see, prompt for or change the keyring of the person who runs them.
#
#   tests/keyring/run-with-keyring.sh COMMAND [ARGUMENT...]
#
# The command finds INKWARDEN_PRIVATE_KEYRING=1 in its environment. Its exit status is the script's.
set -eu

if [ "$#" -eq 0 ]; then
    echo "usage: $0 COMMAND [ARGUMENT...]" >&2
    exit 2
fi
for tool in dbus-run-session dbus-send gnome-keyring-daemon; do
    if ! command -v "$tool" >/dev/null 2>&1; then
        echo "$0: $tool is missing (scripts/lib/packages.sh lists the packages the tests need)" >&2
        exit 1
    fi
done

scratch=$(mktemp -d "${TMPDIR:-/tmp}/inkwarden-keyring.XXXXXX")
trap 'rm -rf "$scratch"' EXIT

# gnome-keyring keeps its keyrings under XDG_DATA_HOME and its sockets under XDG_RUNTIME_DIR.
export HOME="$scratch/home"
export XDG_DATA_HOME="$scratch/data"
export XDG_CONFIG_HOME="$scratch/config"
export XDG_CACHE_HOME="$scratch/cache"
export XDG_RUNTIME_DIR="$scratch/runtime"
mkdir -p "$HOME" "$XDG_DATA_HOME" "$XDG_CONFIG_HOME" "$XDG_CACHE_HOME" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"

# No display: a keyring prompt must never appear on the desktop of whoever runs the tests. No desktop
# either, so that QtKeychain picks the Secret Service whatever session the tests start from.
unset DISPLAY WAYLAND_DISPLAY XDG_CURRENT_DESKTOP XDG_SESSION_DESKTOP DESKTOP_SESSION \
    GNOME_DESKTOP_SESSION_ID KDE_FULL_SESSION KDE_SESSION_VERSION GNOME_KEYRING_CONTROL SSH_AUTH_SOCK
export INKWARDEN_PRIVATE_KEYRING=1

status=0
dbus-run-session -- sh -c '
    owner_pid() {
        dbus-send --session --print-reply=literal --dest=org.freedesktop.DBus / \
            org.freedesktop.DBus.GetConnectionUnixProcessID string:org.freedesktop.secrets 2>/dev/null |
            awk "{ print \$2 }"
    }
    # An empty password makes a new login keyring and unlocks it. The daemon takes the Secret Service
    # name a moment after it starts: wait for that, or the first test would have the bus start a
    # second daemon.
    eval "$(echo | gnome-keyring-daemon --unlock --components=secrets)"
    export GNOME_KEYRING_CONTROL
    tries=0
    until [ -n "$(owner_pid)" ]; do
        tries=$((tries + 1))
        if [ "$tries" -gt 100 ]; then
            echo "run-with-keyring: gnome-keyring-daemon did not take the Secret Service name" >&2
            exit 1
        fi
        sleep 0.05
    done
    status=0
    "$@" || status=$?
    # The daemon would leave when the bus goes; stop it first so it writes nothing into a folder
    # that is being removed.
    pid=$(owner_pid) || true
    if [ -n "$pid" ]; then
        kill "$pid" 2>/dev/null || true
        tries=0
        while [ "$tries" -lt 50 ] && [ -r "/proc/$pid/stat" ] && ! grep -q "^[0-9]* ([^)]*) Z" "/proc/$pid/stat"; do
            sleep 0.1
            tries=$((tries + 1))
        done
    fi
    exit "$status"
' run-with-keyring "$@" || status=$?
exit "$status"
