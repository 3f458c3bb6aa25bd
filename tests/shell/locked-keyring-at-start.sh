#!/usr/bin/env bash
# A keyring that is locked when Inkwarden starts, with the real gnome-keyring and its own unlock
# prompt (gcr-prompter) on Xvfb, the real Inkwarden and the development server:
#
#   1. Signed in once, Inkwarden is stopped and the login keyring locked over the Secret Service.
#   2. Started again, Inkwarden says "Unlock your keyring to show your royalties." in its tool tip,
#      shows no figure and opens no browser sign-in.
#   3. The keyring's own prompt asks for the password, once; answered, Inkwarden reads the key and
#      shows the figure by itself, still without any browser window.
#
# Usage: locked-keyring-at-start.sh INKWARDEN DEVSERVER
set -euo pipefail
app=$1
devserver=$2
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=../../scripts/lib/headless.sh
source "$here/../../scripts/lib/headless.sh"

fail() {
    headless_log "FAIL: $*"
    [ -n "${HEADLESS_APP_LOG:-}" ] && [ -s "$HEADLESS_APP_LOG" ] && { headless_log "--- inkwarden log"; cat "$HEADLESS_APP_LOG" >&2; }
    exit 1
}
pass() { headless_log "ok: $*"; }

headless_begin
headless_start_display 1024x768
# The popover is not looked at here; the prompt is, on the display.
export QT_QPA_PLATFORM=offscreen
headless_start_bus
# A password that the test types into the keyring's prompt.
password=inkwarden-test
headless_start_keyring "$password"
headless_start_devserver "$devserver"
opened="$HEADLESS_SCRATCH/opened.log"
login=/org/freedesktop/secrets/collection/login

status_of() { "$app" --status --format waybar 2>/dev/null || true; }
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
gdbus call --session --dest org.freedesktop.secrets --object-path /org/freedesktop/secrets \
    --method org.freedesktop.Secret.Service.Lock "['$login']" >/dev/null
[ "$(locked)" = "(<true>,)" ] || fail "the login keyring did not lock: $(locked)"
pass "signed in, stopped, keyring locked"
: >"$opened"

# --- 2. Started with the keyring locked.
headless_start_app "$app"
message=
for _ in $(seq 200); do
    message=$(status_of)
    [[ "$message" == *"Unlock your keyring to show your royalties."* ]] && break
    sleep 0.05
done
[[ "$message" == *"Unlock your keyring to show your royalties."* ]] || fail "no keyring message: $message"
[[ "$message" == *'"class":"ok"'* ]] && fail "a figure while the keyring is locked: $message"
pass "the tool tip says to unlock the keyring"

# --- 3. The keyring's own prompt, answered.
prompt=
for _ in $(seq 300); do
    prompt=$(xdotool search --onlyvisible --class gcr-prompter 2>/dev/null | head -n 1 || true)
    [ -n "$prompt" ] && break
    sleep 0.05
done
[ -n "$prompt" ] || fail "no unlock prompt appeared"
pass "the keyring's unlock prompt appeared"
sleep 0.5
grep -q 'connect' "$opened" 2>/dev/null && fail "a browser sign-in began: $(cat "$opened")"
# No window manager here: the prompt gets the keyboard directly, and the keys come as real ones
# (XTEST), which GTK takes where it ignores sent events.
xdotool windowfocus --sync "$prompt" 2>/dev/null || xdotool windowfocus "$prompt"
[ -n "${INKWARDEN_SCREENSHOTS:-}" ] && import -window root "$INKWARDEN_SCREENSHOTS/locked-keyring-prompt.png"
xdotool type --delay 20 "$password"
xdotool key Return
for _ in $(seq 200); do [ "$(locked)" = "(<false>,)" ] && break; sleep 0.05; done
[ "$(locked)" = "(<false>,)" ] || fail "the prompt did not unlock the keyring"
status=
for _ in $(seq 300); do
    status=$(status_of)
    [[ "$status" == *'"class":"ok"'* ]] && break
    sleep 0.05
done
[[ "$status" == *'"class":"ok"'* ]] || fail "no figure after unlocking: $status"
[[ "$status" == *"Unlock your keyring"* ]] && fail "the message stayed: $status"
pass "figures after unlocking: $status"
if [ -s "$opened" ]; then fail "something was opened in the browser: $(cat "$opened")"; fi
[ "$(xdotool search --onlyvisible --class gcr-prompter 2>/dev/null | wc -l)" = 0 ] || fail "a prompt is still open"
pass "no browser window at any point, and the prompt is gone"
