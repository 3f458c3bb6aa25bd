#!/usr/bin/env bash
# The real Inkwarden started under each of its languages, on a private session bus with a
# StatusNotifierWatcher, a keyring and the development server, without a display: what a panel reads
# over D-Bus (the menu's entries with their access keys, the item's title for screen readers, the
# tool tip's heading), the tool tip bars get from `inkwarden --status`, and `inkwarden --help`, each
# as the language's translation file says. With LANG=C and no LANGUAGE, the same texts are English,
# exactly as written.
#
# Usage: speaks-the-language.sh INKWARDEN DEVSERVER WATCHER TRANSLATIONS_FOLDER
set -euo pipefail
app=$1
devserver=$2
watcher=$3
translations=$4
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=../../scripts/lib/headless.sh
source "$here/../../scripts/lib/headless.sh"


headless_begin
export QT_QPA_PLATFORM=offscreen
headless_start_bus
headless_start_keyring
headless_start_devserver "$devserver"
"$watcher" >"$HEADLESS_SCRATCH/watcher.log" 2>&1 &
HEADLESS_PIDS+=($!)
gdbus wait --session --timeout 10 org.kde.StatusNotifierWatcher || headless_fail "the test watcher did not start"

# The translation of an English text in a context of the file ($1), or the text itself without one.
translated() {
    local ts=$1 context=$2 source=$3
    if [ -z "$ts" ]; then
        printf '%s' "$source"
        return
    fi
    /usr/bin/python3 "$here/read-panel-texts.py" --translate "$ts" "$context" "$source"
}

# One run: $1 names it, $2 is the translation file (empty for English), the rest is the environment.
speaks() {
    local name=$1 ts=$2
    shift 2
    local heading signed_out description tooltip help
    heading=$(translated "$ts" PanelStatusBuilder "Inkwarden Royalties")
    signed_out=$(translated "$ts" PanelStatusBuilder "Not signed in")
    description=$(translated "$ts" main "Your book royalties at a glance, in the panel.")
    [ -n "$heading" ] && [ -n "$signed_out" ] && [ -n "$description" ] \
        || headless_fail "$name: the translation file has no tool tip or description"

    env -u LANGUAGE -u LC_ALL -u LC_MESSAGES -u LANG "$@" "$app" >>"$HEADLESS_SCRATCH/inkwarden.log" 2>&1 &
    HEADLESS_APP_PID=$!
    HEADLESS_APP_LOG="$HEADLESS_SCRATCH/inkwarden.log"
    headless_wait_for_item
    /usr/bin/python3 "$here/read-panel-texts.py" "$(headless_item_service)" ${ts:+"$ts"} >&2 \
        || headless_fail "$name: the panel menu, title or tool tip is not in the language"

    tooltip=$(env -u LANGUAGE -u LC_ALL -u LC_MESSAGES -u LANG "$@" "$app" --status --format waybar)
    case "$tooltip" in *"\"tooltip\":\"$heading\\n$signed_out\""*) ;;
        *) headless_fail "$name: the bar's tool tip is not '$heading', '$signed_out': $tooltip" ;; esac
    help=$(env -u LANGUAGE -u LC_ALL -u LC_MESSAGES -u LANG "$@" "$app" --help)
    grep -qF "$description" <<<"$help" || headless_fail "$name: --help does not describe Inkwarden as '$description'"

    headless_stop "$HEADLESS_APP_PID"
    wait "$HEADLESS_APP_PID" 2>/dev/null || true
    headless_pass "$name: menu and access keys, title, tool tip ('$heading'), bar tool tip and --help"
}

speaks "LANG=C" "" LANG=C
speaks "LANG=C.UTF-8" "" LANG=C.UTF-8
for language in de fr es it ja; do
    speaks "LANGUAGE=$language" "$translations/inkwarden_$language.ts" LANG=C.UTF-8 LANGUAGE="$language"
done
speaks "LANG=ja_JP.UTF-8" "$translations/inkwarden_ja.ts" LANG=ja_JP.UTF-8
speaks "LANGUAGE=pt_BR:fr" "$translations/inkwarden_fr.ts" LANG=pt_BR.UTF-8 LANGUAGE=pt_BR:fr
