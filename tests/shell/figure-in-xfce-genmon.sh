#!/usr/bin/env bash
# The figure where a panel's tray shows only the icon: xfce4-panel under Xvfb with a Generic Monitor
# (xfce4-genmon-plugin) whose command is `inkwarden --status --format genmon`, as the README's recipe
# sets it up. Checked from screenshots, read with OCR:
#
#   1. Before sign-in the panel shows no figure (so that the check below can fail).
#   2. After a browser sign-in the panel shows the figure the item's label holds.
#   3. A click on the figure opens Inkwarden's popover.
#
# Usage: figure-in-xfce-genmon.sh INKWARDEN DEVSERVER DESKTOP_ENTRY
set -euo pipefail
app=$1
devserver=$2
entry=$3
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
for tool in Xvfb xfce4-panel xdotool import convert tesseract gnome-keyring-daemon; do
    command -v "$tool" >/dev/null || { echo "FAIL: $tool is missing: install the packages of scripts/lib/packages.sh"; exit 1; }
done
[ -e /usr/lib/x86_64-linux-gnu/xfce4/panel/plugins/libgenmon.so ] || [ -n "$(find /usr/lib -name libgenmon.so 2>/dev/null)" ] \
    || { echo "FAIL: xfce4-genmon-plugin is missing"; exit 1; }
# shellcheck source=../../scripts/lib/headless.sh
source "$here/../../scripts/lib/headless.sh"
# shellcheck source=../../scripts/lib/screen-text.sh
source "$here/../../scripts/lib/screen-text.sh"

keep_screenshot() { [ -n "${INKWARDEN_SCREENSHOTS:-}" ] && mkdir -p "$INKWARDEN_SCREENSHOTS" && cp "$1" "$INKWARDEN_SCREENSHOTS/"; return 0; }

width=1280
panel_strip="${width}x30+0+0"

headless_begin
# The Generic Monitor first in the top panel, running the status command every second.
genmon_id=40
panel_xml="$XDG_CONFIG_HOME/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml"
python3 - "$panel_xml" "$genmon_id" <<'PY'
import sys, xml.etree.ElementTree as ET
path, plugin = sys.argv[1], sys.argv[2]
tree = ET.parse(path)
root = tree.getroot()
ids = root.find("./property[@name='panels']/property[@name='panel-1']/property[@name='plugin-ids']")
value = ET.Element("value", {"type": "int", "value": plugin})
ids.insert(0, value)
plugins = root.find("./property[@name='plugins']")
plugins.append(ET.Element("property", {"name": f"plugin-{plugin}", "type": "string", "value": "genmon"}))
tree.write(path, encoding="UTF-8", xml_declaration=True)
PY
mkdir -p "$XDG_CONFIG_HOME/xfce4/panel"
cat >"$XDG_CONFIG_HOME/xfce4/panel/genmon-$genmon_id.rc" <<RC
Command=$app --status --format genmon
UseLabel=0
Text=
UpdatePeriod=1000
Font=Sans 10
RC

headless_start_display "${width}x800"
headless_start_bus
headless_start_keyring
headless_start_devserver "$devserver"
headless_register_scheme "$app" "$entry"
headless_start_panel
headless_start_app "$app"
headless_wait_for_item

# --- 1. No figure before sign-in.
sleep 2
before="$HEADLESS_SCRATCH/genmon-before-sign-in.png"
import -window root "$before"
keep_screenshot "$before"
[ "$(headless_item_label)" = "◉ —" ] || headless_fail "before sign-in the item's label is '$(headless_item_label)'"

# --- 2. The figure after sign-in.
headless_sign_in "$app"
headless_wait_for_figures
label=$(headless_wait_for_figure_label) || headless_fail "no figure on the item"
digits=$(tr -cd '0-9' <<<"$label")
[ -n "$digits" ] || headless_fail "the figure '$label' has no digits to look for"
if screen_text_find "$before" "$digits" "$panel_strip" >/dev/null; then
    headless_fail "the panel showed $digits before sign-in: the check cannot tell"
fi
headless_pass "before sign-in the panel shows no figure"

# genmon runs the command once a second: give it a few.
point=""
for _ in $(seq 10); do
    sleep 1
    after="$HEADLESS_SCRATCH/genmon-after-sign-in.png"
    import -window root "$after"
    point=$(screen_text_find "$after" "$digits" "$panel_strip") && break
done
keep_screenshot "$after"
[ -n "$point" ] || { screen_text_words "$after" "$panel_strip" >&2; headless_fail "the panel does not show the figure '$label'"; }
headless_pass "the panel shows the figure '$label' at $point"

# --- 3. A click on it opens the popover.
# The sign-in opened the popover to show its outcome; it is closed first, as a person would.
if headless_wait_popover 1 1; then
    headless_activate 0 0
    headless_wait_popover 0 15 || headless_fail "the popover of the sign-in did not close"
    sleep 0.5
fi
read -r x y <<<"$point"
xdotool mousemove "$x" "$y" click 1
headless_wait_popover 1 15 || headless_fail "a click on the figure did not open the popover"
headless_pass "a click on the figure opened the popover"
headless_log "PASS"
