#!/usr/bin/env bash
# A keyring that is locked when Inkwarden starts, with the real gnome-keyring and its own unlock
# prompt (gcr-prompter) on Xvfb, the real Inkwarden and the development server:
#
#   1. Signed in once, Inkwarden is stopped and the login keyring locked over the Secret Service.
#   2. Started again, Inkwarden says "Unlock your keyring to show your royalties." in its tool tip,
#      shows no figure and opens no browser sign-in.
#   3. The keyring's own prompt asks for the password, once. Dismissed, it does not come back and the
#      message stays; the keyring unlocked elsewhere (as the login or Seahorse would), Inkwarden reads
#      the key and shows the figure by itself.
#   4. Locked and started again, the prompt answered: the figure, still without any browser window.
#
# Usage: locked-keyring-at-start.sh INKWARDEN DEVSERVER
set -euo pipefail
app=$1
devserver=$2
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=../../scripts/lib/headless.sh
source "$here/../../scripts/lib/headless.sh"


headless_begin
headless_start_display 1024x768
# The popover is not looked at here; the prompt is, on the display.
export QT_QPA_PLATFORM=offscreen
headless_start_bus
# A password that the test types into the keyring's prompt.
password=inkwarden-test
headless_start_keyring "$password"
headless_start_devserver "$devserver"
login=/org/freedesktop/secrets/collection/login

status_of() { "$app" --status --format waybar 2>/dev/null || true; }
wait_for_prompt() {
    local prompt=
    for _ in $(seq 300); do
        prompt=$(xdotool search --onlyvisible --class gcr-prompter 2>/dev/null | head -n 1 || true)
        [ -n "$prompt" ] && break
        sleep 0.05
    done
    printf '%s' "$prompt"
}
prompts() { xdotool search --onlyvisible --class gcr-prompter 2>/dev/null | wc -l; }
wait_for_figure() {
    local status=
    for _ in $(seq 300); do
        status=$(status_of)
        [[ "$status" == *'"class":"ok"'* ]] && break
        sleep 0.05
    done
    printf '%s' "$status"
}
# Unlocks the login keyring with its password without a prompt, through gnome-keyring's own call for
# that; the secret must travel in a session of the same connection.
unlock_elsewhere() {
    /usr/bin/python3 - "$login" "$password" <<'PY'
import sys
import dbus

bus = dbus.SessionBus()
service = bus.get_object("org.freedesktop.secrets", "/org/freedesktop/secrets")
_, session = service.OpenSession("plain", dbus.String("", variant_level=1),
                                 dbus_interface="org.freedesktop.Secret.Service")
secret = dbus.Struct((session, dbus.ByteArray(b""), dbus.ByteArray(sys.argv[2].encode()), "text/plain"))
service.UnlockWithMasterPassword(dbus.ObjectPath(sys.argv[1]), secret,
                                 dbus_interface="org.gnome.keyring.InternalUnsupportedGuiltRiddenInterface")
PY
}
lock() {
    gdbus call --session --dest org.freedesktop.secrets --object-path /org/freedesktop/secrets \
        --method org.freedesktop.Secret.Service.Lock "['$login']" >/dev/null
    [ "$(locked)" = "(<true>,)" ] || headless_fail "the login keyring did not lock: $(locked)"
}
locked() {
    gdbus call --session --dest org.freedesktop.secrets --object-path "$login" \
        --method org.freedesktop.DBus.Properties.Get org.freedesktop.Secret.Collection Locked
}

# --- 1. Signed in once; then the keyring is locked.
headless_start_app "$app"
headless_sign_in "$app"
headless_wait_for_figures
headless_stop "$HEADLESS_APP_PID"
wait "$HEADLESS_APP_PID" 2>/dev/null || true
lock
headless_pass "signed in, stopped, keyring locked"

# --- 2. Started with the keyring locked.
headless_start_app "$app"
message=
for _ in $(seq 200); do
    message=$(status_of)
    [[ "$message" == *"Unlock your keyring to show your royalties."* ]] && break
    sleep 0.05
done
[[ "$message" == *"Unlock your keyring to show your royalties."* ]] || headless_fail "no keyring message: $message"
[[ "$message" == *'"class":"ok"'* ]] && headless_fail "a figure while the keyring is locked: $message"
headless_pass "the tool tip says to unlock the keyring"

# --- 3. The keyring's own prompt, dismissed; the keyring unlocked elsewhere.
prompt=$(wait_for_prompt)
[ -n "$prompt" ] || headless_fail "no unlock prompt appeared"
headless_pass "the keyring's unlock prompt appeared"
[ -n "${INKWARDEN_SCREENSHOTS:-}" ] && import -window root "$INKWARDEN_SCREENSHOTS/locked-keyring-prompt.png"
# No window manager here: the prompt gets the keyboard directly, and the keys come as real ones
# (XTEST), which GTK takes where it ignores sent events.
xdotool windowfocus --sync "$prompt" 2>/dev/null || xdotool windowfocus "$prompt"
xdotool key Escape
for _ in $(seq 100); do [ "$(prompts)" = 0 ] && break; sleep 0.05; done
[ "$(prompts)" = 0 ] || headless_fail "the prompt did not go"
[ "$(locked)" = "(<true>,)" ] || headless_fail "the keyring unlocked although the prompt was dismissed"
# Long enough for a second request to show up.
sleep 3
[ "$(prompts)" = 0 ] || headless_fail "the prompt came back after it was dismissed"
message=$(status_of)
[[ "$message" == *"Unlock your keyring to show your royalties."* ]] || headless_fail "the message went: $message"
headless_sign_in_began && headless_fail "a browser sign-in began"
headless_pass "dismissed: the message stays, no second prompt, no browser"
unlock_elsewhere
[ "$(locked)" = "(<false>,)" ] || headless_fail "the keyring did not unlock"
status=$(wait_for_figure)
[[ "$status" == *'"class":"ok"'* ]] || headless_fail "no figure after unlocking elsewhere: $status"
[[ "$status" == *"Unlock your keyring"* ]] && headless_fail "the message stayed: $status"
headless_pass "unlocked elsewhere: figures by themselves: $status"

# --- 4. Locked again and started: the prompt, answered.
headless_stop "$HEADLESS_APP_PID"
wait "$HEADLESS_APP_PID" 2>/dev/null || true
lock
# The service allows one statistics request every 3 seconds per key: the new run's first refresh
# must not land in the old run's window (a rate limit is not what this step is about).
sleep 3
headless_start_app "$app"
prompt=$(wait_for_prompt)
[ -n "$prompt" ] || headless_fail "no unlock prompt appeared"
sleep 0.5
headless_sign_in_began && headless_fail "a browser sign-in began"
xdotool windowfocus --sync "$prompt" 2>/dev/null || xdotool windowfocus "$prompt"
xdotool type --delay 20 "$password"
xdotool key Return
for _ in $(seq 200); do [ "$(locked)" = "(<false>,)" ] && break; sleep 0.05; done
[ "$(locked)" = "(<false>,)" ] || headless_fail "the prompt did not unlock the keyring"
status=$(wait_for_figure)
[[ "$status" == *'"class":"ok"'* ]] || headless_fail "no figure after unlocking: $status"
[[ "$status" == *"Unlock your keyring"* ]] && headless_fail "the message stayed: $status"
headless_pass "figures after answering the prompt: $status"
headless_sign_in_began && headless_fail "a browser sign-in began"
[ "$(prompts)" = 0 ] || headless_fail "a prompt is still open"
headless_pass "no browser sign-in at any point, and the prompt is gone"
