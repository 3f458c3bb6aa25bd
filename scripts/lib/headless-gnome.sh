# shellcheck shell=bash
# GNOME Shell, unseen, for the desktop of scripts/lib/headless.sh: GNOME Shell 43 as the X11
# compositor of an Xvfb display with GLX (Mesa's software GL), Debian's AppIndicator extension as
# the StatusNotifierWatcher and host, and a private system bus on which python3-dbusmock plays
# logind (without logind the shell stops at start-up). Settings go to dconf under the scratch
# home; the machine's own buses, settings and sessions are never touched. Sourced after
# headless.sh (bash, set -euo pipefail).
#
#   headless_gnome_start_display [WxH]   Xvfb with GLX
#   headless_gnome_start_system_bus      a private system bus carrying the mock logind
#   headless_gnome_start_shell           gnome-shell --x11 --replace with the extension, out of
#                                        the overview it opens with
#   headless_gnome_top_bar_height        the height of the top bar, from the work area

HEADLESS_GNOME_EXTENSIONS=/usr/share/gnome-shell/extensions
HEADLESS_GNOME_PYTHON=${INKWARDEN_DBUSMOCK_PYTHON:-/usr/bin/python3}

# The uuid of Debian's AppIndicator extension, from its metadata.
headless_gnome_extension_uuid() {
    local metadata
    for metadata in "$HEADLESS_GNOME_EXTENSIONS"/*/metadata.json; do
        [ -e "$metadata" ] || continue
        if grep -q '"settings-schema": *"org.gnome.shell.extensions.appindicator"' "$metadata"; then
            sed -n 's/.*"uuid": *"\([^"]*\)".*/\1/p' "$metadata"
            return 0
        fi
    done
    headless_die "the AppIndicator extension is not installed (gnome-shell-extension-appindicator)"
}

headless_gnome_start_display() {
    headless_start_display "${1:-1280x800}" +extension GLX
}

headless_gnome_start_system_bus() {
    local address_file="$HEADLESS_SCRATCH/system-bus.address" here
    here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
    "$HEADLESS_GNOME_PYTHON" -c 'import dbusmock' 2>/dev/null \
        || headless_die "python3-dbusmock is missing for $HEADLESS_GNOME_PYTHON"
    : >"$address_file"
    # The reachability tests' throw-away bus: anyone may own and call anything, nothing is activated.
    dbus-daemon --config-file="$here/../../tests/reachability/private-bus.conf" --nofork --print-address=3 \
        3>"$address_file" >"$HEADLESS_SCRATCH/system-bus.log" 2>&1 &
    HEADLESS_PIDS+=($!)
    for _ in $(seq 200); do [ -s "$address_file" ] && break; sleep 0.05; done
    [ -s "$address_file" ] || { cat "$HEADLESS_SCRATCH/system-bus.log" >&2; headless_die "the system bus did not start"; }
    DBUS_SYSTEM_BUS_ADDRESS=$(head -n 1 "$address_file")
    export DBUS_SYSTEM_BUS_ADDRESS
    "$HEADLESS_GNOME_PYTHON" -m dbusmock --system --template logind >"$HEADLESS_SCRATCH/logind.log" 2>&1 &
    HEADLESS_PIDS+=($!)
    for _ in $(seq 200); do
        gdbus call --system --dest org.freedesktop.DBus --object-path /org/freedesktop/DBus \
            --method org.freedesktop.DBus.NameHasOwner org.freedesktop.login1 2>/dev/null | grep -q true && return 0
        sleep 0.05
    done
    cat "$HEADLESS_SCRATCH/logind.log" >&2
    headless_die "the mock logind did not appear on the system bus"
}

headless_gnome_shell_property() {
    gdbus call --session --dest org.gnome.Shell --object-path /org/gnome/Shell \
        --method org.freedesktop.DBus.Properties.Get org.gnome.Shell "$1" 2>/dev/null
}

headless_gnome_fail() {
    [ -s "$HEADLESS_SCRATCH/shell.log" ] && { headless_log "--- gnome-shell log"; cat "$HEADLESS_SCRATCH/shell.log" >&2; }
    headless_die "$*"
}

headless_gnome_start_shell() {
    local uuid
    uuid=$(headless_gnome_extension_uuid)
    export XDG_CURRENT_DESKTOP=GNOME XDG_SESSION_DESKTOP=gnome XDG_SESSION_TYPE=x11
    # dconf keeps these under the scratch home ($XDG_CONFIG_HOME/dconf); its service is started
    # by the private session bus and stopped with it.
    export GSETTINGS_BACKEND=dconf
    gsettings set org.gnome.shell enabled-extensions "['$uuid']"
    gsettings set org.gnome.shell disable-user-extensions false
    # No welcome tour over the desktop, and no animations for a screenshot to catch halfway.
    gsettings set org.gnome.shell welcome-dialog-last-shown-version "'99.0'"
    gsettings set org.gnome.desktop.interface enable-animations false
    # Root sessions get a warning banner at the top: nothing may cover the top bar.
    gsettings set org.gnome.desktop.notifications show-banners false
    [ "$(gsettings get org.gnome.shell enabled-extensions)" = "['$uuid']" ] \
        || headless_die "GSettings did not keep enabled-extensions (is dconf-gsettings-backend installed?)"

    gnome-shell --x11 --replace >"$HEADLESS_SCRATCH/shell.log" 2>&1 &
    HEADLESS_PIDS+=($!)
    HEADLESS_GNOME_SHELL_PID=$!
    # The extension's StatusNotifierWatcher comes once the shell has loaded it.
    gdbus wait --session --timeout 60 org.kde.StatusNotifierWatcher \
        || headless_gnome_fail "GNOME Shell did not start the AppIndicator extension's StatusNotifierWatcher"
    kill -0 "$HEADLESS_GNOME_SHELL_PID" 2>/dev/null || headless_gnome_fail "GNOME Shell ended at start-up"
    # A session starts in the overview, which covers the windows: wait for it and leave it.
    local shown=0
    for _ in $(seq 300); do
        headless_gnome_shell_property OverviewActive | grep -q true && { shown=1; break; }
        sleep 0.1
    done
    [ "$shown" = 1 ] || headless_gnome_fail "GNOME Shell did not finish its start-up (no overview)"
    for _ in $(seq 300); do
        gdbus call --session --dest org.gnome.Shell --object-path /org/gnome/Shell \
            --method org.freedesktop.DBus.Properties.Set org.gnome.Shell OverviewActive '<false>' >/dev/null 2>&1 || true
        headless_gnome_shell_property OverviewActive | grep -q false && break
        sleep 0.1
    done
    headless_gnome_shell_property OverviewActive | grep -q false || headless_gnome_fail "GNOME Shell stayed in the overview"
    headless_log "GNOME Shell $(gnome-shell --version | awk '{ print $NF }') on $DISPLAY with $uuid"
}

# The height of the top bar: where the work area begins (the top bar reserves its strip).
headless_gnome_top_bar_height() {
    xprop -root _NET_WORKAREA | sed -n 's/.*= *[0-9]*, *\([0-9]*\),.*/\1/p'
}
