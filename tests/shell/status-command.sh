#!/usr/bin/env bash
# `inkwarden --status` against the real Inkwarden, on a private session bus with a keyring of its own
# and the development server, without a display:
#
#   1. With no Inkwarden running, --status says so on standard error and exits 3; a follower
#      started then waits and shows nothing.
#   2. Once Inkwarden runs, --status prints its title ("◉ —" before sign-in, state signedOut) and
#      the follower prints it as waybar JSON; the item's Title, what screen readers read, says
#      "Inkwarden: Not signed in".
#   3. After a browser sign-in the figure arrives: --status prints exactly the item's label, and the
#      follower prints the figure with the state ok, on its own (no polling: it asked once). The bar's
#      tool tip and the item's Title name the period with the figure ("Today: $1,235 · Refreshed at
#      …", "Inkwarden: Today $1,235"); "Hide amounts" in the item's menu masks the figure in all of
#      them, and choosing it again shows it.
#   4. Asking for the status sends nothing to the server.
#   5. When Inkwarden quits, the follower shows nothing again and keeps waiting.
#
# Usage: status-command.sh INKWARDEN DEVSERVER
set -euo pipefail
app=$1
devserver=$2
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=../../scripts/lib/headless.sh
source "$here/../../scripts/lib/headless.sh"

fail() {
    headless_log "FAIL: $*"
    [ -n "${HEADLESS_APP_LOG:-}" ] && [ -s "$HEADLESS_APP_LOG" ] && { headless_log "--- inkwarden log"; cat "$HEADLESS_APP_LOG" >&2; }
    [ -s "${follow_log:-}" ] && { headless_log "--- follower output"; cat "$follow_log" >&2; }
    exit 1
}
pass() { headless_log "ok: $*"; }

headless_begin
export QT_QPA_PLATFORM=offscreen
headless_start_bus
headless_start_keyring
headless_start_devserver "$devserver"

# Waits until the follower has printed a line matching the pattern (grep -E).
follower_says() {
    for _ in $(seq 300); do
        grep -qE "$1" "$follow_log" && return 0
        sleep 0.05
    done
    return 1
}
requests_seen() { curl -s "$HEADLESS_SERVER/__admin/requests" | grep -o '"path"' | wc -l; }
# The item's Title, its name for screen readers ("Inkwarden: Today $1,235").
item_title() {
    gdbus call --session --dest "$(headless_item_service)" --object-path /StatusNotifierItem \
        --method org.freedesktop.DBus.Properties.Get org.kde.StatusNotifierItem Title \
        | sed -n "s/^(<'\(.*\)'>,)$/\1/p"
}
# Waits until the item's label and Title are the given ones; prints what they were when not.
item_says() {
    local label=$1 words=$2
    for _ in $(seq 100); do
        [ "$(headless_item_label)" = "$label" ] && [ "$(item_title)" = "$words" ] && return 0
        sleep 0.05
    done
    headless_log "the item's label is '$(headless_item_label)' and its Title '$(item_title)'"
    return 1
}
# Chooses "Hide amounts" in the item's menu, as a panel does when it is clicked.
choose_hide_amounts() {
    gdbus call --session --dest "$(headless_item_service)" --object-path /MenuBar \
        --method com.canonical.dbusmenu.Event 6 clicked '<0>' 0 >/dev/null
}
# --- 1. Nothing running.
status=0
errors=$("$app" --status 2>&1 >/dev/null) || status=$?
[ "$status" = 3 ] || fail "--status without Inkwarden exited with $status, expected 3"
[ "$errors" = "Inkwarden is not running." ] || fail "--status without Inkwarden said '$errors'"
pass "--status without Inkwarden: exit 3, 'Inkwarden is not running.'"

follow_log="$HEADLESS_SCRATCH/follow.log"
"$app" --status --follow --format waybar >"$follow_log" 2>"$HEADLESS_SCRATCH/follow.err" &
follower=$!
HEADLESS_PIDS+=("$follower")
follower_says '"class":"notRunning"' || fail "the follower printed nothing while Inkwarden was not running"
grep -q '"text":""' "$follow_log" || fail "the follower shows text while Inkwarden is not running"
pass "the follower waits and shows nothing"

# --- 2. Inkwarden runs, not signed in.
headless_start_app "$app"
follower_says '"class":"signedOut"' || fail "the follower did not see Inkwarden start"
grep '"class":"signedOut"' "$follow_log" | grep -q '"text":"◉ —"' || fail "the signed-out line has no '◉ —'"
title=$("$app" --status) || fail "--status failed with Inkwarden running"
[ "$title" = "◉ —" ] || fail "--status printed '$title' before sign-in, expected '◉ —'"
item_says "◉ —" "Inkwarden: Not signed in" || fail "the item's Title does not say 'Inkwarden: Not signed in'"
pass "before sign-in: --status prints '◉ —', the follower says signedOut, the item's Title 'Inkwarden: Not signed in'"

# --- 3. Signed in: the figure.
headless_sign_in "$app"
headless_wait_for_figures
follower_says '"class":"ok"' || fail "the follower did not follow the sign-in"
label=$(headless_wait_for_figure_label) || fail "no figure on the item"
title=$("$app" --status)
[ "$title" = "$label" ] || fail "--status printed '$title', the item shows '$label'"
grep '"class":"ok"' "$follow_log" | tail -n 1 | grep -qF "\"text\":\"$label\"" \
    || fail "the follower's last ok line does not show '$label'"
pass "after sign-in: --status prints '$title', as the item shows it, and so does the follower"
json=$("$app" --status --format waybar)
case "$json" in *'"tooltip":"Inkwarden Royalties\n'*) ;; *) fail "the waybar line has no tool tip: $json" ;; esac
genmon=$("$app" --status --format genmon)
case "$genmon" in "<txt>$label</txt><tool>Inkwarden Royalties&#10;"*"</tool><txtclick>'$app'</txtclick>") ;;
    *) fail "the genmon line is '$genmon'" ;; esac
pass "the waybar and genmon formats carry the tool tip (and genmon's click opens Inkwarden)"
figure=${label#"· "}
case "$json" in *"\"tooltip\":\"Inkwarden Royalties\\nToday: $figure · Refreshed at "*) ;;
    *) fail "the bar's tool tip does not name the period with '$figure': $json" ;; esac
item_says "$label" "Inkwarden: Today $figure" || fail "the item's Title does not say 'Inkwarden: Today $figure'"
pass "the tool tip says 'Today: $figure · Refreshed at …', the item's Title 'Inkwarden: Today $figure'"

choose_hide_amounts
masked="${figure%%[0-9]*}•••"
item_says "· $masked" "Inkwarden: Today $masked" || fail "Hide amounts did not mask the item's label and Title"
title=$("$app" --status)
[ "$title" = "· $masked" ] || fail "--status printed '$title' with hidden amounts, expected '· $masked'"
json=$("$app" --status --format waybar)
case "$json" in *"\"tooltip\":\"Inkwarden Royalties\\nToday: $masked · Refreshed at "*) ;;
    *) fail "the bar's tool tip with hidden amounts is not 'Today: $masked · …': $json" ;; esac
case "$json" in *"$figure"*) fail "the bar's line shows the hidden amount '$figure': $json" ;; esac
choose_hide_amounts
item_says "$label" "Inkwarden: Today $figure" || fail "choosing Hide amounts again did not show the figure"
pass "Hide amounts in the menu masks label, Title and tool tip ('$masked'); chosen again, '$figure' is back"

# --- 4. No requests.
before=$(requests_seen)
for _ in 1 2 3 4 5; do "$app" --status >/dev/null; done
sleep 1
after=$(requests_seen)
[ "$before" = "$after" ] || fail "asking for the status sent $((after - before)) requests to the server"
pass "five --status calls sent no request to the server ($before requests before and after)"

# --- 5. Inkwarden quits.
lines_before=$(grep -c notRunning "$follow_log")
kill -TERM "$HEADLESS_APP_PID"
wait "$HEADLESS_APP_PID" || fail "Inkwarden did not quit cleanly on SIGTERM"
for _ in $(seq 200); do [ "$(grep -c notRunning "$follow_log")" -gt "$lines_before" ] && break; sleep 0.05; done
[ "$(tail -n 1 "$follow_log" | grep -c '"class":"notRunning"')" = 1 ] || fail "the follower still shows Inkwarden after it quit"
kill -0 "$follower" || fail "the follower ended with Inkwarden"
pass "after Inkwarden quit the follower shows nothing and keeps waiting"
headless_log "PASS"
