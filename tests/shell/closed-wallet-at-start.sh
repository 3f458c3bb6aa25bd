#!/usr/bin/env bash
# A KDE wallet that is closed when Inkwarden starts, on a Plasma 5 session (where the key lives in
# KWallet), with the real kwalletd5 and its own password dialog on Xvfb, the real Inkwarden and the
# development server:
#
#   1. Signed in once with the wallet open, Inkwarden is stopped and the wallet closed.
#   2. Started again, Inkwarden says "Unlock your keyring to show your royalties." in its tool tip,
#      shows no figure and opens no browser sign-in; the wallet's password dialog asks, once.
#   3. The dialog is dismissed: the message stays, no second dialog, still no browser.
#   4. The wallet is opened elsewhere (as the login or the wallet manager would): Inkwarden reads the
#      key and shows the figure by itself.
#   5. A closed wallet that holds no key for Inkwarden is no key: the sign-in begins, without a
#      dialog.
#   6. The sign-in's save opens the wallet; its dialog dismissed, the message says why there is no key.
#   7. No wallet at all: the sign-in's save waits while the wallet is created through kwalletd's
#      wizard and password dialog, then the figures come.
#
# Usage: closed-wallet-at-start.sh INKWARDEN DEVSERVER
set -euo pipefail
app=$1
devserver=$2
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=../../scripts/lib/headless.sh
source "$here/../../scripts/lib/headless.sh"

fail() {
    headless_log "FAIL: $*"
    [ -n "${HEADLESS_APP_LOG:-}" ] && [ -s "$HEADLESS_APP_LOG" ] && { headless_log "--- inkwarden log"; cat "$HEADLESS_APP_LOG" >&2; }
    [ -s "$HEADLESS_SCRATCH/kwalletd.log" ] && { headless_log "--- kwalletd5 log"; tail -n 30 "$HEADLESS_SCRATCH/kwalletd.log" >&2; }
    exit 1
}
pass() { headless_log "ok: $*"; }

headless_begin
headless_start_display 1024x768
# The popover is not looked at here; the wallet's dialog is, on the display.
export QT_QPA_PLATFORM=offscreen
headless_start_bus
headless_start_kwallet
headless_start_devserver "$devserver"

status_of() { "$app" --status --format waybar 2>/dev/null || true; }
is_open() { [ "$(headless_kwallet isOpen kdewallet)" = "(true,)" ]; }
dialogs() { xdotool search --onlyvisible --class kwalletd5 2>/dev/null || true; }
# The first of kwalletd's windows to show, within 15 s; nothing when none does.
wait_for_dialog() {
    local dialog=
    for _ in $(seq 300); do
        dialog=$(dialogs | head -n 1)
        [ -n "$dialog" ] && break
        sleep 0.05
    done
    printf '%s' "$dialog"
}
close_wallet() {
    headless_kwallet close kdewallet true >/dev/null
    for _ in $(seq 100); do is_open || return 0; sleep 0.05; done
    fail "the wallet did not close"
}
wait_for_status() {
    local status=
    for _ in $(seq 300); do
        status=$(status_of)
        [[ "$status" == *"$1"* ]] && { printf '%s' "$status"; return 0; }
        sleep 0.05
    done
    printf '%s' "$status"
    return 1
}

# --- 1. Signed in once, the key saved in the open wallet; then the wallet is closed.
headless_start_app "$app"
headless_sign_in "$app"
headless_wait_for_figures
headless_stop "$HEADLESS_APP_PID"
wait "$HEADLESS_APP_PID" 2>/dev/null || true
close_wallet
# The wallet keeps the names of its entries readable; they are up to date once it is written out.
[ "$(headless_kwallet keyDoesNotExist kdewallet com.inkwarden.menubar inkwarden-api-key)" = "(false,)" ] ||
    fail "the key is not in the wallet"
pass "signed in with the key in KWallet, stopped, wallet closed"

# --- 2. Started with the wallet closed.
headless_start_app "$app"
message=$(wait_for_status "Unlock your keyring to show your royalties.") || fail "no keyring message: $message"
[[ "$message" == *'"class":"ok"'* ]] && fail "a figure while the wallet is closed: $message"
pass "the tool tip says to unlock the keyring"
dialog=$(wait_for_dialog)
[ -n "$dialog" ] || fail "the wallet's password dialog did not appear"
[ -n "${INKWARDEN_SCREENSHOTS:-}" ] && import -window root "$INKWARDEN_SCREENSHOTS/closed-wallet-dialog.png"
pass "the wallet's password dialog appeared: $(xdotool getwindowname "$dialog" 2>/dev/null || true)"

# --- 3. Dismissed.
xdotool windowfocus --sync "$dialog" 2>/dev/null || xdotool windowfocus "$dialog"
xdotool key Escape
for _ in $(seq 100); do [ -z "$(dialogs)" ] && break; sleep 0.05; done
[ -z "$(dialogs)" ] || fail "the dialog did not go"
is_open && fail "the wallet opened although the dialog was dismissed"
# Long enough for a second request to show up.
sleep 3
[ -z "$(dialogs)" ] || fail "the dialog came back after it was dismissed"
message=$(status_of)
[[ "$message" == *"Unlock your keyring to show your royalties."* ]] || fail "the message went: $message"
headless_sign_in_began && fail "a browser sign-in began"
pass "dismissed: the message stays, no second dialog, no browser"

# --- 4. Opened elsewhere.
headless_open_kwallet
status=$(wait_for_status '"class":"ok"') || fail "no figure after the wallet opened: $status"
[[ "$status" == *"Unlock your keyring"* ]] && fail "the message stayed: $status"
pass "figures once the wallet opened: $status"
headless_sign_in_began && fail "a browser sign-in began"
headless_stop "$HEADLESS_APP_PID"
wait "$HEADLESS_APP_PID" 2>/dev/null || true

# --- 5. A closed wallet without Inkwarden's key.
headless_kwallet removeEntry "$(headless_kwallet open kdewallet 0 inkwarden-test | tr -dc '0-9')" \
    com.inkwarden.menubar inkwarden-api-key inkwarden-test >/dev/null
[ "$(headless_kwallet keyDoesNotExist kdewallet com.inkwarden.menubar inkwarden-api-key)" = "(true,)" ] ||
    fail "the key is still in the wallet"
close_wallet
headless_start_app "$app"
for _ in $(seq 200); do headless_sign_in_began && break; sleep 0.05; done
headless_sign_in_began || fail "no sign-in began: $(status_of)"
[ -z "$(dialogs)" ] || fail "a wallet dialog for a key that is not there"
pass "a closed wallet without the key: the sign-in begins, no dialog"

# --- 6. The sign-in's save into the closed wallet: the dialog asks; dismissed, the save says why.
headless_sign_in "$app"
dialog=$(wait_for_dialog)
[ -n "$dialog" ] || fail "no wallet dialog for the save"
xdotool windowfocus --sync "$dialog" 2>/dev/null || xdotool windowfocus "$dialog"
xdotool key Escape
message=$(wait_for_status "Your keyring is locked, so the API key could not be saved.") ||
    fail "the failed save does not say why: $message"
[[ "$message" == *'"class":"ok"'* ]] && fail "connected without a saved key: $message"
[ -z "$(dialogs)" ] || fail "the save asked a second time"
pass "a save the wallet refused says why: $message"

# --- 7. No wallet at all, as on a first Plasma login: no key, and the sign-in's save waits while
#        the wallet is created through kwalletd's own dialog, then connects.
headless_stop "$HEADLESS_APP_PID"
wait "$HEADLESS_APP_PID" 2>/dev/null || true
headless_kwallet close kdewallet true >/dev/null
headless_kwallet deleteWallet kdewallet >/dev/null
[ "$(headless_kwallet wallets)" = "(@as [],)" ] || fail "the wallet is still there: $(headless_kwallet wallets)"
headless_start_app "$app"
headless_sign_in "$app"
dialog=$(wait_for_dialog)
[ -n "$dialog" ] || fail "no dialog to create the wallet"
[ -n "${INKWARDEN_SCREENSHOTS:-}" ] && import -window root "$INKWARDEN_SCREENSHOTS/new-wallet-dialog.png"
pass "the save asks for a new wallet: $(xdotool getwindowname "$dialog" 2>/dev/null || true)"
# Someone reads the wizard before answering: longer than any keyring job that shows no prompt may
# take (ten seconds), which the save outlasts because the wallet was not open.
sleep 12
# The wizard: the classic wallet file, then its password twice. Places are in the window's own
# coordinates, as kwalletd lays it out.
xdotool mousemove --window "$dialog" 108 167 click 1
xdotool mousemove --window "$dialog" 362 336 click 1
password=
for _ in $(seq 100); do
    password=$(dialogs | grep -vx "$dialog" | head -n 1 || true)
    [ -n "$password" ] && break
    sleep 0.05
done
sleep 0.5
[ -n "${INKWARDEN_SCREENSHOTS:-}" ] && import -window root "$INKWARDEN_SCREENSHOTS/new-wallet-password.png"
[ -n "$password" ] || fail "no password dialog for the new wallet"
xdotool windowfocus --sync "$password" 2>/dev/null || xdotool windowfocus "$password"
xdotool type --delay 20 "wallet-password-1"
xdotool key Tab
xdotool type --delay 20 "wallet-password-1"
xdotool key Return
status=$(wait_for_status '"class":"ok"') || fail "no figure once the wallet was created: $status"
pass "the wallet created, the key saved and the figures shown: $status"
