# shellcheck shell=bash
# A desktop nobody sees, for running and measuring Inkwarden on a machine without a display:
# Xvfb, a session bus of its own, an unlocked keyring, xfce4-panel (whose systray is a
# StatusNotifierWatcher), the development server and a scratch home. Sourced by
# scripts/run-headless.sh and scripts/bench-shell.sh (bash, set -euo pipefail).
#
#   headless_begin                 scratch home and environment; cleans everything up on exit
#   headless_start_display [WxH] [ARG…]  Xvfb on a free display number, with extra Xvfb arguments
#   headless_start_bus             a private session bus
#   headless_start_keyring [PW]    gnome-keyring's secrets, unlocked (with password PW when given)
#   headless_start_kwallet         KDE's wallet daemon with its wallet created and open, as on Plasma 5
#   headless_open_kwallet          opens the wallet without a dialog, as the login does
#   headless_start_panel           xfce4-panel, until its StatusNotifierWatcher is on the bus
#   headless_start_devserver BIN   the development server on a free port; writes the settings
#   headless_start_app BIN         Inkwarden, in the background (HEADLESS_APP_PID)
#   headless_sign_in BIN           plays the browser: authorizes and hands the callback over
#   headless_wait_for_figures      until the account is known and the statistics were asked for
#   headless_wait_for_figure_label until the item's label shows the figure, and prints it

HEADLESS_PIDS=()    # started here and stopped on exit, last first
HEADLESS_KEEP=0     # 1: leave everything running (and the scratch folder in place)

headless_log() { printf '%s\n' "$*" >&2; }
headless_die() { headless_log "error: $*"; exit 1; }
# A test's verdicts: a failed check says why, shows Inkwarden's log and ends the script.
headless_fail() {
    headless_log "FAIL: $*"
    [ -s "${HEADLESS_APP_LOG:-}" ] && { headless_log "--- inkwarden log"; cat "$HEADLESS_APP_LOG" >&2; }
    exit 1
}
headless_pass() { headless_log "ok: $*"; }
headless_now() { date +%s.%N; }

headless_begin() {
    HEADLESS_SCRATCH=$(mktemp -d "${TMPDIR:-/tmp}/inkwarden-headless.XXXXXX")
    trap headless_cleanup EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM
    export HOME="$HEADLESS_SCRATCH/home"
    export XDG_CONFIG_HOME="$HOME/.config" XDG_CACHE_HOME="$HOME/.cache" XDG_DATA_HOME="$HOME/.local/share"
    export XDG_RUNTIME_DIR="$HEADLESS_SCRATCH/runtime"
    mkdir -p "$XDG_CONFIG_HOME/xfce4/xfconf/xfce-perchannel-xml" "$XDG_CACHE_HOME" "$XDG_DATA_HOME" \
        "$XDG_RUNTIME_DIR"
    chmod 700 "$XDG_RUNTIME_DIR"
    cp /etc/xdg/xfce4/panel/default.xml "$XDG_CONFIG_HOME/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml"
    # LANGUAGE too: the checks read Inkwarden's English (a test of another language sets it itself).
    unset WAYLAND_DISPLAY XDG_SESSION_DESKTOP DESKTOP_SESSION GNOME_DESKTOP_SESSION_ID KDE_FULL_SESSION \
        QT_QPA_PLATFORM SESSION_MANAGER GNOME_KEYRING_CONTROL SSH_AUTH_SOCK LANGUAGE
    export XDG_CURRENT_DESKTOP=XFCE XDG_SESSION_TYPE=x11
    HEADLESS_SETTINGS="$XDG_CONFIG_HOME/inkwarden/inkwarden.conf"
    # There is no browser here: the script plays it. What Inkwarden asks to open is only noted
    # (instead of a "no browser" dialog over the panel).
    mkdir -p "$HEADLESS_SCRATCH/bin"
    local opener
    for opener in xdg-open exo-open kde-open kde-open5; do
        printf '#!/bin/sh\nprintf "%%s\\n" "$*" >> "%s/opened.log"\n' "$HEADLESS_SCRATCH" \
            >"$HEADLESS_SCRATCH/bin/$opener"
        chmod +x "$HEADLESS_SCRATCH/bin/$opener"
    done
    export PATH="$HEADLESS_SCRATCH/bin:$PATH" BROWSER="$HEADLESS_SCRATCH/bin/xdg-open"
}

# Every process with a connection to our bus (panel, plugins, xfconfd, keyring, Inkwarden…), so
# that what the bus started for us goes too.
headless_bus_pids() {
    [ -n "${DBUS_SESSION_BUS_ADDRESS:-}" ] || return 0
    local names name
    names=$(timeout 5 gdbus call --session --dest org.freedesktop.DBus --object-path /org/freedesktop/DBus \
        --method org.freedesktop.DBus.ListNames 2>/dev/null | grep -o "':[0-9.]*'" | tr -d "'") || return 0
    for name in $names; do
        timeout 2 gdbus call --session --dest org.freedesktop.DBus --object-path /org/freedesktop/DBus \
            --method org.freedesktop.DBus.GetConnectionUnixProcessID "$name" 2>/dev/null \
            | sed -n 's/^(uint32 \([0-9]*\),)$/\1/p' || true
    done | sort -un
}

headless_stop() {
    local pid
    for pid in "$@"; do
        [ "$pid" = "$$" ] && continue
        kill "$pid" 2>/dev/null || true
    done
    for _ in $(seq 40); do
        local alive=0
        for pid in "$@"; do kill -0 "$pid" 2>/dev/null && alive=1; done
        [ "$alive" = 0 ] && return 0
        sleep 0.05
    done
    for pid in "$@"; do [ "$pid" != "$$" ] && kill -KILL "$pid" 2>/dev/null || true; done
}

headless_cleanup() {
    local status=$?
    trap - EXIT
    if [ "$HEADLESS_KEEP" = 1 ]; then
        headless_log "Left running (scratch: $HEADLESS_SCRATCH): stop with: kill $(headless_bus_pids | tr '\n' ' ')${HEADLESS_PIDS[*]}"
        exit "$status"
    fi
    local on_bus
    on_bus=$(headless_bus_pids | tr '\n' ' ') || true
    # shellcheck disable=SC2086
    [ -n "$on_bus" ] && headless_stop $on_bus
    local i
    for ((i = ${#HEADLESS_PIDS[@]} - 1; i >= 0; i--)); do headless_stop "${HEADLESS_PIDS[i]}"; done
    wait 2>/dev/null || true
    [ -n "${HEADLESS_SCRATCH:-}" ] && rm -rf "$HEADLESS_SCRATCH"
    exit "$status"
}

headless_start_display() {
    local size=${1:-1280x800}
    shift $(($# > 0 ? 1 : 0))
    : > "$HEADLESS_SCRATCH/display"
    Xvfb -displayfd 5 -screen 0 "${size}x24" -nolisten tcp "$@" 5>"$HEADLESS_SCRATCH/display" \
        >"$HEADLESS_SCRATCH/xvfb.log" 2>&1 &
    HEADLESS_PIDS+=($!)
    for _ in $(seq 200); do [ -s "$HEADLESS_SCRATCH/display" ] && break; sleep 0.05; done
    [ -s "$HEADLESS_SCRATCH/display" ] || { cat "$HEADLESS_SCRATCH/xvfb.log" >&2; headless_die "Xvfb did not start"; }
    DISPLAY=":$(head -n 1 "$HEADLESS_SCRATCH/display")"
    export DISPLAY
    headless_log "Xvfb on $DISPLAY ($size)"
}

headless_start_bus() {
    local socket="$XDG_RUNTIME_DIR/bus"
    dbus-daemon --session --nofork --nopidfile --address="unix:path=$socket" \
        >"$HEADLESS_SCRATCH/bus.log" 2>&1 &
    HEADLESS_PIDS+=($!)
    export DBUS_SESSION_BUS_ADDRESS="unix:path=$socket"
    for _ in $(seq 100); do
        gdbus call --session --dest org.freedesktop.DBus --object-path /org/freedesktop/DBus \
            --method org.freedesktop.DBus.GetId >/dev/null 2>&1 && return 0
        sleep 0.05
    done
    headless_die "the session bus did not start"
}

headless_name_has_owner() {
    gdbus call --session --dest org.freedesktop.DBus --object-path /org/freedesktop/DBus \
        --method org.freedesktop.DBus.NameHasOwner "$1" 2>/dev/null | grep -q true
}

headless_start_keyring() {
    if [ "$#" -gt 0 ]; then
        # A password someone can type into the keyring's unlock prompt ("" is an empty field).
        eval "$(printf '%s' "$1" | gnome-keyring-daemon --unlock --components=secrets 2>"$HEADLESS_SCRATCH/keyring.log")"
    else
        eval "$(echo | gnome-keyring-daemon --unlock --components=secrets 2>"$HEADLESS_SCRATCH/keyring.log")"
    fi
    export GNOME_KEYRING_CONTROL
    for _ in $(seq 100); do headless_name_has_owner org.freedesktop.secrets && return 0; sleep 0.05; done
    headless_die "the keyring did not come up on the bus"
}

# kwalletd5 draws its dialogs on the display (for xdotool to answer), whatever platform Inkwarden is
# given. QtKeychain picks KWallet on Plasma 5, so the session says it is one.
headless_start_kwallet() {
    export XDG_CURRENT_DESKTOP=KDE KDE_SESSION_VERSION=5 KDE_FULL_SESSION=true
    QT_QPA_PLATFORM=xcb kwalletd5 >"$HEADLESS_SCRATCH/kwalletd.log" 2>&1 &
    HEADLESS_PIDS+=($!)
    for _ in $(seq 200); do headless_name_has_owner org.kde.kwalletd5 && break; sleep 0.05; done
    headless_name_has_owner org.kde.kwalletd5 || { cat "$HEADLESS_SCRATCH/kwalletd.log" >&2; headless_die "kwalletd5 did not come up on the bus"; }
    headless_open_kwallet
}

headless_kwallet() {
    gdbus call --session --dest org.kde.kwalletd5 --object-path /modules/kwalletd5 --method "org.kde.KWallet.$1" "${@:2}"
}

# The way the login's PAM module opens the wallet: with the password's hash, no dialog. A wallet
# that is not there yet is created with it. The hash here is made up; it is only ever handed over
# this way.
headless_open_kwallet() {
    local hash
    hash="[$(printf '7,%.0s' $(seq 55))7]"
    headless_kwallet pamOpen kdewallet "@ay $hash" 0 >/dev/null
    for _ in $(seq 100); do [ "$(headless_kwallet isOpen kdewallet)" = "(true,)" ] && return 0; sleep 0.05; done
    headless_die "the wallet did not open"
}

headless_start_panel() {
    xfce4-panel >"$HEADLESS_SCRATCH/panel.log" 2>&1 &
    HEADLESS_PIDS+=($!)
    if ! gdbus wait --session --timeout 30 org.kde.StatusNotifierWatcher; then
        cat "$HEADLESS_SCRATCH/panel.log" >&2
        headless_die "xfce4-panel did not start a StatusNotifierWatcher"
    fi
    sleep 1  # the panel draws its plugins after claiming the name
}

headless_start_devserver() {
    local devserver=$1 log="$HEADLESS_SCRATCH/devserver.log"
    "$devserver" --port 0 >"$log" 2>&1 &
    HEADLESS_PIDS+=($!)
    for _ in $(seq 200); do grep -qs 'listening on http' "$log" && break; sleep 0.05; done
    HEADLESS_SERVER=$(sed -n 's/.*listening on \(http[^ ]*\).*/\1/p' "$log" | head -n 1)
    HEADLESS_SERVER=${HEADLESS_SERVER%/}
    [ -n "$HEADLESS_SERVER" ] || { cat "$log" >&2; headless_die "the development server did not start"; }
    mkdir -p "$(dirname "$HEADLESS_SETTINGS")"
    # The version is marked as seen so that the popover opens only when asked to.
    printf '[General]\nserverURL=%s\nlastPresentedAppVersion=seen\n' "$HEADLESS_SERVER" >"$HEADLESS_SETTINGS"
    headless_log "development server on $HEADLESS_SERVER (log: $log)"
}

# The inkwarden:// handler for the scratch user, as scripts/run.sh registers it.
headless_register_scheme() {
    local app=$1 source=$2 applications="$XDG_DATA_HOME/applications"
    mkdir -p "$applications"
    sed -e "s|^Exec=inkwarden |Exec=\"$app\" |" -e "s|^TryExec=inkwarden$|TryExec=$app|" \
        "$source" >"$applications/com.inkwarden.menubar.desktop"
    update-desktop-database "$applications" 2>/dev/null || true
    xdg-mime default com.inkwarden.menubar.desktop x-scheme-handler/inkwarden 2>/dev/null || true
}

headless_start_app() {
    local app=$1 version
    # "seen" stands for the version of whichever Inkwarden is started: the popover opens only when
    # asked to, not as on the first launch of a new version.
    if grep -q '^lastPresentedAppVersion=seen$' "$HEADLESS_SETTINGS" 2>/dev/null; then
        version=$("$app" --version | awk '{ print $NF }')
        sed -i "s/^lastPresentedAppVersion=seen$/lastPresentedAppVersion=$version/" "$HEADLESS_SETTINGS"
    fi
    HEADLESS_APP_LOG="$HEADLESS_SCRATCH/inkwarden.log"
    "$app" >>"$HEADLESS_APP_LOG" 2>&1 &
    HEADLESS_APP_PID=$!
    HEADLESS_PIDS+=("$HEADLESS_APP_PID")
}

headless_item_service() { printf 'org.kde.StatusNotifierItem-%s-1' "$HEADLESS_APP_PID"; }

headless_registered_items() {
    gdbus call --session --dest org.kde.StatusNotifierWatcher --object-path /StatusNotifierWatcher \
        --method org.freedesktop.DBus.Properties.Get org.kde.StatusNotifierWatcher \
        RegisteredStatusNotifierItems 2>/dev/null || true
}

headless_wait_for_item() {
    local service
    service=$(headless_item_service)
    for _ in $(seq 300); do
        headless_registered_items | grep -q "$service" && return 0
        sleep 0.05
    done
    cat "$HEADLESS_APP_LOG" >&2
    headless_die "Inkwarden's item did not register with the watcher"
}

# Whether a browser sign-in has begun: it writes its pending values into the settings before it asks
# for the browser (which, on the offscreen platform, Qt cannot even ask for).
headless_sign_in_began() {
    grep -q '^pendingAuthVerifier=' "$HEADLESS_SETTINGS" 2>/dev/null || grep -qs 'connect' "$HEADLESS_SCRATCH/opened.log"
}

# Prints the verifier and the state of the browser sign-in Inkwarden has begun, on one line, once
# both are in the settings file; after 30 seconds without them, prints nothing and fails. The file
# is read in one go each time, as Inkwarden may rewrite it in between. Generous: on a loaded machine
# a sanitized Inkwarden may be busy loading its popover first.
headless_pending_sign_in() {
    local file=$1 settings verifier state start
    start=$(date +%s)
    while [ $(($(date +%s) - start)) -lt 30 ]; do
        settings=$(cat "$file" 2>/dev/null || true)
        verifier=$(sed -n 's/^pendingAuthVerifier=//p' <<<"$settings")
        state=$(sed -n 's/^pendingAuthState=//p' <<<"$settings")
        [ -n "$verifier" ] && [ -n "$state" ] && { printf '%s %s\n' "$verifier" "$state"; return 0; }
        sleep 0.05
    done
    return 1
}

headless_sign_in() {
    local app=$1 verifier state challenge callback
    read -r verifier state < <(headless_pending_sign_in "$HEADLESS_SETTINGS") || true
    [ -n "$verifier" ] && [ -n "$state" ] || { cat "$HEADLESS_APP_LOG" >&2; headless_die "Inkwarden started no sign-in"; }
    challenge=$(printf %s "$verifier" | openssl dgst -sha256 -binary | base64 | tr '+/' '-_' | tr -d '=')
    callback=$(curl -s -o /dev/null -w '%{redirect_url}' \
        --data-urlencode "code_challenge=$challenge" --data-urlencode "state=$state" \
        "$HEADLESS_SERVER/mac-app/connect/authorize/")
    case "$callback" in inkwarden://authenticated*) ;; *) headless_die "unexpected redirect: $callback" ;; esac
    # What the desktop does with the address: a second Inkwarden, which hands it over and ends.
    "$app" "$callback" >>"$HEADLESS_APP_LOG" 2>&1 || headless_die "the second launch failed"
    headless_log "signed in through the browser sign-in (callback handed over)"
}

headless_wait_for_figures() {
    for _ in $(seq 300); do
        grep -q '^accountID=' "$HEADLESS_SETTINGS" && curl -s "$HEADLESS_SERVER/__admin/requests" | grep -q bookStatsAPI \
            && return 0
        sleep 0.1
    done
    cat "$HEADLESS_SETTINGS" "$HEADLESS_APP_LOG" >&2
    headless_die "no figures arrived"
}

# The figure next to the icon, as hosts that draw labels read it ("◉ —", "· $1,235").
headless_item_label() {
    gdbus call --session --dest "$(headless_item_service)" --object-path /StatusNotifierItem \
        --method org.freedesktop.DBus.Properties.Get org.kde.StatusNotifierItem XAyatanaLabel \
        | sed -n "s/^(<'\(.*\)'>,)$/\1/p"
}

# Prints the label once it shows a figure (after a refresh); fails after five seconds.
headless_wait_for_figure_label() {
    local label=""
    for _ in $(seq 100); do
        label=$(headless_item_label)
        case "$label" in "· "*) printf '%s\n' "$label"; return 0 ;; esac
        sleep 0.05
    done
    headless_log "the item's label is '$label', not a figure"
    return 1
}

# Ids of the mapped (viewable) windows titled "Inkwarden Royalties" (the popover).
headless_popover_windows() { xdotool search --onlyvisible --name '^Inkwarden Royalties' 2>/dev/null || true; }

headless_activate() {
    gdbus call --session --dest "$(headless_item_service)" --object-path /StatusNotifierItem \
        --method org.kde.StatusNotifierItem.Activate "$1" "$2" >/dev/null
}

# Waits until the popover is shown (want=1) or hidden (want=0), polling as fast as it can.
headless_wait_popover() {
    local want=$1 limit=${2:-10} start
    start=$(date +%s)
    while :; do
        if [ -n "$(headless_popover_windows)" ]; then [ "$want" = 1 ] && return 0
        else [ "$want" = 0 ] && return 0; fi
        [ $(($(date +%s) - start)) -ge "$limit" ] && return 1
    done
}

# Where the item sits: the box of what changed in the panel strip between BEFORE and AFTER (PNG
# screenshots taken without and with the item), as "X Y" of its left part (the icon), else empty.
headless_item_point() {
    local before=$1 after=$2 strip=${3:-40} box w h x y
    box=$(convert "$before" "$after" -crop "x${strip}+0+0" +repage -compose difference -composite \
        -threshold 25% -trim -format '%w %h %X %Y' info: 2>/dev/null) || return 0
    read -r w h x y <<<"$box"
    x=${x#+}; y=${y#+}
    [ -n "$w" ] && [ "$w" -gt 1 ] 2>/dev/null || return 0
    # The icon is the square at the item's left end; the label follows it.
    local side=$((h < w ? h : w))
    echo "$((x + side / 2)) $((y + h / 2))"
}
