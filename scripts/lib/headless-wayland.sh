# shellcheck shell=bash
# A Wayland-only desktop nobody sees, for running Inkwarden on a machine without a display: a
# headless sway (wlroots, software rendering, one virtual output, no Xwayland), a session bus of its
# own, an unlocked keyring, waybar (whose tray is the StatusNotifierWatcher), the development server
# and a scratch home. Sway refuses to run as root, so when this runs as root (as CI does) the whole
# session runs as an unprivileged user, created if missing; otherwise as the caller. Nothing outside
# the scratch folder is used, and everything started here is stopped on exit. Sourced by the tests
# (bash, set -euo pipefail).
#
#   wayland_begin                   session user, scratch home and environment; cleans up on exit
#   wayland_as_user CMD...          runs CMD as the session's user, in the session's environment
#   wayland_readable FILE           FILE, or a copy of it that the session's user can read
#   wayland_start_compositor [WxH]  headless sway on one virtual output of that size
#   wayland_start_bus               a private session bus
#   wayland_start_keyring           gnome-keyring's secrets, unlocked with an empty password
#   wayland_start_bar [JSON]        waybar on top with its tray (and JSON, more modules' settings),
#                                   until its StatusNotifierWatcher is on the bus
#   wayland_start_devserver BIN [OPTION...]  the development server on a free port; writes the settings
#   wayland_mark_version_seen BIN   so that the popover opens only when asked to
#   wayland_register_scheme BIN ENTRY  the inkwarden:// handler for the session's user
#   wayland_start_app BIN           Inkwarden on Wayland, in the background (WAYLAND_APP_PID)
#   wayland_sign_in BIN             plays the browser: authorizes and hands the callback over
#   wayland_wait_for_figures        until the account is known and the statistics were asked for
#   wayland_start_keyboard          a keyboard on the seat, as a desktop has one
#   wayland_key KEY                 presses and releases KEY (an XKB key name, e.g. Escape)
#   wayland_start_pointer           a pointer on the seat (scripts/lib/wayland-pointer.py)
#   wayland_pointer COMMAND...      move X Y, click|press|release left|right|middle; waits until
#                                   the compositor has handled it
#   wayland_screenshot FILE         the whole output, with grim
#   wayland_popover_windows         sway's nodes titled "Inkwarden Royalties…", as JSON, one a line

here_wayland="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# The generic helpers (logging, stopping processes, finding the item in two screenshots).
# shellcheck source=headless.sh
source "$here_wayland/headless.sh"

WAYLAND_USER_NAME=${WAYLAND_USER_NAME:-inkwarden-test}
WAYLAND_PIDS=()   # started here and stopped on exit, last first
WAYLAND_ENV=()    # NAME=VALUE of the session, given to everything run in it
WAYLAND_KEEP=${WAYLAND_KEEP:-0}  # 1: leave everything running (and the scratch folder in place)

wayland_begin() {
    for tool in sway swaymsg waybar grim gdbus dbus-daemon gnome-keyring-daemon setpriv convert; do
        command -v "$tool" >/dev/null || headless_die "$tool is missing: install the Wayland packages of scripts/lib/packages.sh"
    done
    WAYLAND_SCRATCH=$(mktemp -d "${TMPDIR:-/tmp}/inkwarden-wayland.XXXXXX")
    trap wayland_cleanup EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM
    if [ "$(id -u)" = 0 ]; then
        # Two tests may run at once: the second useradd loses the race, and that is fine.
        id -u "$WAYLAND_USER_NAME" >/dev/null 2>&1 ||
            useradd --system --user-group --no-create-home --home-dir /nonexistent \
                --shell /usr/sbin/nologin "$WAYLAND_USER_NAME" 2>/dev/null ||
            id -u "$WAYLAND_USER_NAME" >/dev/null 2>&1 || headless_die "could not create the user $WAYLAND_USER_NAME"
        WAYLAND_USER=$WAYLAND_USER_NAME
        chown "$WAYLAND_USER:" "$WAYLAND_SCRATCH"
        # Root keeps reading the scratch folder; nobody else may.
        chmod 700 "$WAYLAND_SCRATCH"
    else
        WAYLAND_USER=$(id -un)
    fi
    local home="$WAYLAND_SCRATCH/home"
    WAYLAND_RUNTIME="$WAYLAND_SCRATCH/runtime"
    WAYLAND_SETTINGS="$home/.config/inkwarden/inkwarden.conf"
    WAYLAND_APP_LOG="$WAYLAND_SCRATCH/inkwarden.log"
    mkdir -p "$home/.config/inkwarden" "$home/.cache" "$home/.local/share/applications" "$WAYLAND_RUNTIME" \
        "$WAYLAND_SCRATCH/bin"
    chmod 700 "$WAYLAND_RUNTIME"
    # There is no browser here: the script plays it. What Inkwarden asks to open is only noted.
    local opener
    for opener in xdg-open gio kde-open kde-open5; do
        printf '#!/bin/sh\nprintf "%%s\\n" "$*" >> "%s/opened.log"\n' "$WAYLAND_SCRATCH" >"$WAYLAND_SCRATCH/bin/$opener"
        chmod 755 "$WAYLAND_SCRATCH/bin/$opener"
    done
    WAYLAND_ENV=(
        "HOME=$home" "USER=$WAYLAND_USER" "LOGNAME=$WAYLAND_USER"
        "PATH=$WAYLAND_SCRATCH/bin:/usr/local/bin:/usr/bin:/bin"
        "XDG_CONFIG_HOME=$home/.config" "XDG_CACHE_HOME=$home/.cache" "XDG_DATA_HOME=$home/.local/share"
        "XDG_RUNTIME_DIR=$WAYLAND_RUNTIME"
        "XDG_CURRENT_DESKTOP=sway" "XDG_SESSION_TYPE=wayland" "XDG_SESSION_DESKTOP=sway"
        "BROWSER=$WAYLAND_SCRATCH/bin/xdg-open"
        # Without it GTK (waybar) starts the accessibility bus on every start.
        "NO_AT_BRIDGE=1"
    )
    # What the caller set for the programs: locale, time zone, sanitizers, Qt, Inkwarden's own.
    local name
    for name in LANG LC_ALL TZ ASAN_OPTIONS UBSAN_OPTIONS \
        $(compgen -e | grep -E '^(QT_|INKWARDEN_)' | grep -vx QT_QPA_PLATFORM || true); do
        [ -n "${!name+x}" ] && WAYLAND_ENV+=("$name=${!name}")
    done
    # LeakSanitizer reads its suppressions as the session's user.
    if [ -n "${LSAN_OPTIONS:-}" ]; then
        local option options=()
        IFS=: read -r -a options <<<"$LSAN_OPTIONS"
        for option in "${options[@]}"; do
            case "$option" in suppressions=*) option="suppressions=$(wayland_readable "${option#suppressions=}")" ;; esac
            WAYLAND_LSAN_OPTIONS="${WAYLAND_LSAN_OPTIONS:+$WAYLAND_LSAN_OPTIONS:}$option"
        done
        WAYLAND_ENV+=("LSAN_OPTIONS=$WAYLAND_LSAN_OPTIONS")
    fi
    wayland_own "$WAYLAND_SCRATCH"
    headless_log "Wayland session as $WAYLAND_USER in $WAYLAND_SCRATCH"
}

# Files made here by root belong to the session's user.
wayland_own() {
    [ "$(id -u)" = 0 ] && chown -R "$WAYLAND_USER:" "$@"
    return 0
}

# The command line that runs a command as the session's user, in the session's environment, in
# WAYLAND_COMMAND. setpriv and env exec the command itself (no process stays in between), so a PID
# taken from $! is the program's own.
wayland_command() {
    if [ "$(id -u)" = 0 ]; then
        WAYLAND_COMMAND=(setpriv --reuid="$WAYLAND_USER" --regid="$WAYLAND_USER" --init-groups -- env -i "${WAYLAND_ENV[@]}" "$@")
    else
        WAYLAND_COMMAND=(env -i "${WAYLAND_ENV[@]}" "$@")
    fi
}

wayland_as_user() {
    local WAYLAND_COMMAND
    wayland_command "$@"
    "${WAYLAND_COMMAND[@]}"
}

# Starts a command as the session's user in the background, its output to LOG; its PID is in
# WAYLAND_LAST_PID and is stopped on exit. (A function run with & would be a subshell, whose PID is
# not the program's.)
wayland_spawn() {
    local log=$1 WAYLAND_COMMAND
    shift
    wayland_command "$@"
    "${WAYLAND_COMMAND[@]}" >>"$log" 2>&1 &
    WAYLAND_LAST_PID=$!
    WAYLAND_PIDS+=("$WAYLAND_LAST_PID")
}

# Adds NAME=VALUE to the session's environment (replacing an earlier value of NAME).
wayland_setenv() {
    local name=${1%%=*} i
    for i in "${!WAYLAND_ENV[@]}"; do
        [ "${WAYLAND_ENV[i]%%=*}" = "$name" ] && unset 'WAYLAND_ENV[i]'
    done
    WAYLAND_ENV=("${WAYLAND_ENV[@]}" "$1")
}

# The path itself when the session's user can read it (a build tree in a private home may not be),
# else a copy in the scratch folder.
wayland_readable() {
    local path=$1
    path=$(readlink -f "$path")
    if wayland_as_user test -r "$path"; then
        printf '%s\n' "$path"
        return 0
    fi
    mkdir -p "$WAYLAND_SCRATCH/copies"
    local copy
    copy="$WAYLAND_SCRATCH/copies/$(basename "$path")"
    cp "$path" "$copy"
    wayland_own "$WAYLAND_SCRATCH/copies"
    chmod 755 "$WAYLAND_SCRATCH/copies"
    printf '%s\n' "$copy"
}

# Every process started from this session: they all carry its runtime folder in their environment
# (the bus's activations and the keyring's daemon too, which no PID of ours names).
wayland_session_pids() {
    local pid
    for pid in $(pgrep -u "$WAYLAND_USER" 2>/dev/null || true); do
        [ "$pid" = "$$" ] && continue
        { tr '\0' '\n' <"/proc/$pid/environ"; } 2>/dev/null | grep -qxF "XDG_RUNTIME_DIR=$WAYLAND_RUNTIME" && echo "$pid"
    done
    return 0
}

wayland_cleanup() {
    local status=$?
    trap - EXIT
    if [ "$WAYLAND_KEEP" = 1 ]; then
        headless_log "Left running (scratch: $WAYLAND_SCRATCH): stop with: kill $(wayland_session_pids | tr '\n' ' ')"
        exit "$status"
    fi
    local i
    # The app and the bar first, then the servers, the bus and the compositor.
    for ((i = ${#WAYLAND_PIDS[@]} - 1; i >= 0; i--)); do headless_stop "${WAYLAND_PIDS[i]}"; done
    local rest
    rest=$(wayland_session_pids | tr '\n' ' ')
    # shellcheck disable=SC2086
    [ -n "$rest" ] && headless_stop $rest
    wait 2>/dev/null || true
    [ -n "${WAYLAND_SCRATCH:-}" ] && rm -rf "$WAYLAND_SCRATCH"
    exit "$status"
}

wayland_start_compositor() {
    local size=${1:-1280x800} log="$WAYLAND_SCRATCH/sway.log"
    WAYLAND_SIZE=$size
    # Only what a test needs: one output of a known size, no Xwayland (Wayland only, no DISPLAY), no
    # bar or wallpaper of sway's own; borders, titles and floating rules stay sway's defaults.
    printf 'xwayland disable\noutput * mode %s\n' "$size" >"$WAYLAND_SCRATCH/sway.conf"
    wayland_own "$WAYLAND_SCRATCH/sway.conf"
    wayland_spawn "$log" env WLR_BACKENDS=headless WLR_RENDERER=pixman WLR_LIBINPUT_NO_DEVICES=1 WLR_HEADLESS_OUTPUTS=1 \
        sway --config "$WAYLAND_SCRATCH/sway.conf"
    WAYLAND_SWAY_PID=$WAYLAND_LAST_PID
    local socket="" display=""
    for _ in $(seq 200); do
        socket=$(find "$WAYLAND_RUNTIME" -maxdepth 1 -name "sway-ipc.*.$WAYLAND_SWAY_PID.sock" -print -quit)
        display=$(find "$WAYLAND_RUNTIME" -maxdepth 1 -name 'wayland-*' -type s -printf '%f\n' | head -n 1)
        [ -n "$socket" ] && [ -n "$display" ] && break
        kill -0 "$WAYLAND_SWAY_PID" 2>/dev/null || break
        sleep 0.05
    done
    [ -n "$socket" ] && [ -n "$display" ] || { cat "$log" >&2; headless_die "sway did not start"; }
    wayland_setenv "WAYLAND_DISPLAY=$display"
    wayland_setenv "SWAYSOCK=$socket"
    local ready=0
    for _ in $(seq 100); do
        wayland_as_user swaymsg -t get_outputs 2>/dev/null | grep -q "\"width\": ${size%x*}," && { ready=1; break; }
        sleep 0.05
    done
    [ "$ready" = 1 ] || { cat "$log" >&2; headless_die "sway has no output of $size"; }
    headless_log "sway on $display ($size, log: $log)"
}

wayland_start_bus() {
    local socket="$WAYLAND_RUNTIME/bus"
    wayland_spawn "$WAYLAND_SCRATCH/bus.log" dbus-daemon --session --nofork --nopidfile --address="unix:path=$socket"
    wayland_setenv "DBUS_SESSION_BUS_ADDRESS=unix:path=$socket"
    for _ in $(seq 100); do
        wayland_as_user gdbus call --session --dest org.freedesktop.DBus --object-path /org/freedesktop/DBus \
            --method org.freedesktop.DBus.GetId >/dev/null 2>&1 && return 0
        sleep 0.05
    done
    headless_die "the session bus did not start"
}

wayland_bus_call() {
    wayland_as_user gdbus call --session "$@"
}

wayland_name_owner_pid() {
    wayland_bus_call --dest org.freedesktop.DBus --object-path /org/freedesktop/DBus \
        --method org.freedesktop.DBus.GetConnectionUnixProcessID "$1" 2>/dev/null | sed -n 's/^(uint32 \([0-9]*\),)$/\1/p'
}

wayland_name_has_owner() {
    wayland_bus_call --dest org.freedesktop.DBus --object-path /org/freedesktop/DBus \
        --method org.freedesktop.DBus.NameHasOwner "$1" 2>/dev/null | grep -q true
}

wayland_start_keyring() {
    local control
    control=$(echo | wayland_as_user gnome-keyring-daemon --unlock --components=secrets 2>"$WAYLAND_SCRATCH/keyring.log" |
        sed -n 's/^GNOME_KEYRING_CONTROL=//p')
    [ -n "$control" ] && wayland_setenv "GNOME_KEYRING_CONTROL=$control"
    for _ in $(seq 100); do wayland_name_has_owner org.freedesktop.secrets && return 0; sleep 0.05; done
    cat "$WAYLAND_SCRATCH/keyring.log" >&2
    headless_die "the keyring did not come up on the bus"
}

# waybar at the top of the output, 30 pixels high, with its tray at the right end; more modules'
# settings (JSON members, with a "modules-left" or "modules-center") can be given.
WAYLAND_BAR_HEIGHT=30
wayland_start_bar() {
    local extra=${1:-} config="$WAYLAND_SCRATCH/waybar.json" style="$WAYLAND_SCRATCH/waybar.css"
    cat >"$config" <<EOF
{
    "layer": "top",
    "position": "top",
    "height": $WAYLAND_BAR_HEIGHT,
    "modules-right": ["tray"],
    "tray": { "icon-size": 20, "spacing": 8 }${extra:+,
    $extra}
}
EOF
    # Light text on a dark bar in one known font, so that what is drawn can be read back.
    cat >"$style" <<'EOF'
* { font-family: "DejaVu Sans"; font-size: 15px; border: none; border-radius: 0; min-height: 0; }
window#waybar { background: #1e1e1e; color: #ffffff; }
#tray, #custom-inkwarden { padding: 0 10px; }
EOF
    wayland_own "$config" "$style"
    wayland_spawn "$WAYLAND_SCRATCH/waybar.log" waybar --config "$config" --style "$style"
    WAYLAND_BAR_PID=$WAYLAND_LAST_PID
    if ! wayland_as_user gdbus wait --session --timeout 30 org.kde.StatusNotifierWatcher; then
        cat "$WAYLAND_SCRATCH/waybar.log" >&2
        headless_die "waybar did not start a StatusNotifierWatcher"
    fi
    # The bar is drawn once its layer surface is configured: wait until it is on the screen.
    local shot="$WAYLAND_SCRATCH/bar-start.png"
    for _ in $(seq 100); do
        wayland_screenshot "$shot" 2>/dev/null &&
            [ "$(convert "$shot" -format '%[hex:p{5,5}]' info: 2>/dev/null)" = 1E1E1E ] && { rm -f "$shot"; return 0; }
        sleep 0.1
    done
    cat "$WAYLAND_SCRATCH/waybar.log" >&2
    headless_die "waybar's bar did not appear"
}

wayland_start_devserver() {
    local devserver=$1 log="$WAYLAND_SCRATCH/devserver.log"
    shift
    wayland_spawn "$log" "$(wayland_readable "$devserver")" --port 0 "$@"
    for _ in $(seq 200); do grep -qs 'listening on http' "$log" && break; sleep 0.05; done
    WAYLAND_SERVER=$(sed -n 's/.*listening on \(http[^ ]*\).*/\1/p' "$log" | head -n 1)
    WAYLAND_SERVER=${WAYLAND_SERVER%/}
    [ -n "$WAYLAND_SERVER" ] || { cat "$log" >&2; headless_die "the development server did not start"; }
    printf '[General]\nserverURL=%s\n' "$WAYLAND_SERVER" >"$WAYLAND_SETTINGS"
    wayland_own "$WAYLAND_SETTINGS"
    headless_log "development server on $WAYLAND_SERVER (log: $log)"
}

# Marks APP's version as seen, so that the popover opens only when asked to (the first launch of a
# version opens it by itself).
wayland_mark_version_seen() {
    local version
    version=$(wayland_as_user "$1" --version | awk '{ print $NF }')
    [ -n "$version" ] || headless_die "$1 --version printed no version"
    printf 'lastPresentedAppVersion=%s\n' "$version" >>"$WAYLAND_SETTINGS"
}

# The inkwarden:// handler for the session's user, as scripts/run.sh registers it.
wayland_register_scheme() {
    local app=$1 source=$2 applications="$WAYLAND_SCRATCH/home/.local/share/applications"
    sed -e "s|^Exec=inkwarden |Exec=\"$app\" |" -e "s|^TryExec=inkwarden$|TryExec=$app|" \
        "$source" >"$applications/com.inkwarden.menubar.desktop"
    wayland_own "$applications"
    wayland_as_user update-desktop-database "$applications" 2>/dev/null || true
}

# Inkwarden as a Wayland client only: the Wayland platform, no DISPLAY (there is no X server).
wayland_start_app() {
    local app=$1
    wayland_spawn "$WAYLAND_APP_LOG" env QT_QPA_PLATFORM=wayland "$app"
    WAYLAND_APP_PID=$WAYLAND_LAST_PID
}

wayland_item_service() { printf 'org.kde.StatusNotifierItem-%s-1' "$WAYLAND_APP_PID"; }

wayland_registered_items() {
    wayland_bus_call --dest org.kde.StatusNotifierWatcher --object-path /StatusNotifierWatcher \
        --method org.freedesktop.DBus.Properties.Get org.kde.StatusNotifierWatcher \
        RegisteredStatusNotifierItems 2>/dev/null || true
}

wayland_wait_for_item() {
    local service
    service=$(wayland_item_service)
    for _ in $(seq 300); do
        wayland_registered_items | grep -q "$service" && return 0
        kill -0 "$WAYLAND_APP_PID" 2>/dev/null || break
        sleep 0.05
    done
    cat "$WAYLAND_APP_LOG" >&2
    headless_die "Inkwarden's item did not register with the watcher"
}

# One property of the item, as gdbus prints it.
wayland_item_property() {
    wayland_bus_call --dest "$(wayland_item_service)" --object-path /StatusNotifierItem \
        --method org.freedesktop.DBus.Properties.Get org.kde.StatusNotifierItem "$1"
}

wayland_sign_in() {
    local app=$1 verifier state challenge callback
    read -r verifier state < <(headless_pending_sign_in "$WAYLAND_SETTINGS") || true
    [ -n "$verifier" ] && [ -n "$state" ] || { cat "$WAYLAND_APP_LOG" >&2; headless_die "Inkwarden started no sign-in"; }
    challenge=$(printf %s "$verifier" | openssl dgst -sha256 -binary | base64 | tr '+/' '-_' | tr -d '=')
    callback=$(curl -s -o /dev/null -w '%{redirect_url}' \
        --data-urlencode "code_challenge=$challenge" --data-urlencode "state=$state" \
        "$WAYLAND_SERVER/mac-app/connect/authorize/")
    case "$callback" in inkwarden://authenticated*) ;; *) headless_die "unexpected redirect: $callback" ;; esac
    # What the desktop does with the address: a second Inkwarden, which hands it over and ends.
    wayland_as_user env QT_QPA_PLATFORM=wayland "$app" "$callback" >>"$WAYLAND_APP_LOG" 2>&1 ||
        headless_die "the second launch failed"
    headless_log "signed in through the browser sign-in (callback handed over)"
}

wayland_wait_for_figures() {
    for _ in $(seq 300); do
        grep -q '^accountID=' "$WAYLAND_SETTINGS" && curl -s "$WAYLAND_SERVER/__admin/requests" | grep -q bookStatsAPI &&
            return 0
        sleep 0.1
    done
    cat "$WAYLAND_SETTINGS" "$WAYLAND_APP_LOG" >&2
    headless_die "no figures arrived"
}

# The headless seat has no input devices. Each wtype brings a virtual keyboard of its own and takes
# it away when it ends; were it the seat's only keyboard, Qt would lose the keyboard, and with it the
# active window, on every key. A real desktop keeps its keyboard: a wtype that only waits plays it.
wayland_start_keyboard() {
    wayland_spawn "$WAYLAND_SCRATCH/keyboard.log" wtype -s 86400000
    for _ in $(seq 100); do
        wayland_as_user swaymsg -r -t get_inputs 2>/dev/null | grep -q '"type": "keyboard"' && return 0
        sleep 0.05
    done
    cat "$WAYLAND_SCRATCH/keyboard.log" >&2
    headless_die "no keyboard came to the seat"
}

wayland_key() {
    wayland_as_user wtype -k "$1"
}

# The seat has no pointer either: a virtual one that clients see as a mouse, fed through a pipe
# that this shell keeps open.
wayland_start_pointer() {
    local fifo="$WAYLAND_SCRATCH/pointer" script
    script=$(wayland_readable "$here_wayland/wayland-pointer.py")
    mkfifo -m 600 "$fifo"
    wayland_own "$fifo"
    exec {WAYLAND_POINTER_FD}<>"$fifo"
    WAYLAND_POINTER_LOG="$WAYLAND_SCRATCH/pointer.log"
    : >"$WAYLAND_POINTER_LOG"
    local WAYLAND_COMMAND
    wayland_command env "POINTER_EXTENT=$WAYLAND_SIZE" python3 "$script"
    "${WAYLAND_COMMAND[@]}" <"$fifo" >>"$WAYLAND_POINTER_LOG" 2>&1 &
    WAYLAND_PIDS+=($!)
    for _ in $(seq 100); do
        wayland_as_user swaymsg -r -t get_inputs 2>/dev/null | grep -q '"type": "pointer"' && return 0
        sleep 0.05
    done
    cat "$WAYLAND_POINTER_LOG" >&2
    headless_die "no pointer came to the seat"
}

wayland_pointer() {
    local answered
    answered=$(grep -c '^ok$' "$WAYLAND_POINTER_LOG" || true)
    printf '%s\n' "$*" >&"$WAYLAND_POINTER_FD"
    for _ in $(seq 200); do
        [ "$(grep -c '^ok$' "$WAYLAND_POINTER_LOG" || true)" -gt "$answered" ] && return 0
        sleep 0.025
    done
    cat "$WAYLAND_POINTER_LOG" >&2
    headless_die "the pointer did not do: $*"
}

wayland_screenshot() {
    local file=$1
    wayland_as_user grim -t png - >"$file.part" && mv "$file.part" "$file"
}

wayland_activate() {
    wayland_bus_call --dest "$(wayland_item_service)" --object-path /StatusNotifierItem \
        --method org.kde.StatusNotifierItem.Activate "$1" "$2" >/dev/null
}

# sway's windows titled "Inkwarden Royalties" (the popover; Qt adds " — Inkwarden", the
# application's name, on Wayland), one JSON object a line, each with "floating" (true for a floating
# window) and "focused".
wayland_popover_windows() {
    wayland_as_user swaymsg -r -t get_tree 2>/dev/null | python3 -c '
import json, sys
def walk(node, floating):
    if (node.get("name") or "").startswith("Inkwarden Royalties") and node.get("pid") is not None:
        print(json.dumps({"pid": node["pid"], "app_id": node.get("app_id"), "floating": floating,
                          "focused": node.get("focused"), "rect": node["rect"]}))
    for child in node.get("nodes", []):
        walk(child, floating)
    for child in node.get("floating_nodes", []):
        walk(child, True)
try:
    walk(json.load(sys.stdin), False)
except ValueError:
    pass
'
}

# Waits until the popover is shown (want=1) or gone (want=0).
wayland_wait_popover() {
    local want=$1 limit=${2:-10} start
    start=$(date +%s)
    while :; do
        if [ -n "$(wayland_popover_windows)" ]; then [ "$want" = 1 ] && return 0
        else [ "$want" = 0 ] && return 0; fi
        [ $(($(date +%s) - start)) -ge "$limit" ] && return 1
        sleep 0.05
    done
}
