#!/usr/bin/python3
"""Reads what a panel reads of a running, signed-out Inkwarden over the session bus, and holds it
against a translation file (or English when none is given).

Usage: read-panel-texts.py ITEM_SERVICE [TS_FILE]
       read-panel-texts.py --translate TS_FILE CONTEXT SOURCE   (prints SOURCE's translation)

Prints the menu's labels, the item's title and the tool tip's heading; exits 1 when any of them is
not what the translation says (or not the English text, without a file). The menu's labels carry
their access keys as dbusmenu marks them ("_Refresh", "更新(_R)"): each must be the translation's
"&" mark turned into dbusmenu's, and no two entries may share a key."""

import re
import sys
import xml.etree.ElementTree as ET

import dbus

# The menu's texts as the code writes them, the access key marked with "&".
MENU_TEXTS = ["&Open Inkwarden", "&Refresh", "&Settings", "&Hide amounts", "&Quit Inkwarden"]
TOOL_TIP = "Inkwarden Royalties"
# The item's title while nobody is signed in: "Inkwarden: %1" with "Not signed in".
TITLE = "Inkwarden: %1"
NOT_SIGNED_IN = "Not signed in"


def catalog(path):
    texts = {}
    if path:
        for context in ET.parse(path).getroot().iter("context"):
            for message in context.iter("message"):
                texts[(context.findtext("name"), message.findtext("source"))] = message.findtext("translation")
    return texts


def dbusmenu_label(mnemonic):
    """"&Refresh" as dbusmenu writes it, "_Refresh": a "_" of the text doubled, "&&" a plain "&"."""
    label = []
    index = 0
    while index < len(mnemonic):
        character = mnemonic[index]
        if character == "_":
            label.append("__")
        elif character != "&":
            label.append(character)
        elif mnemonic[index + 1:index + 2] == "&":
            label.append("&")
            index += 1
        elif index + 1 < len(mnemonic):
            label.append("_")
        index += 1
    return "".join(label)


def access_key(label):
    """The letter after the first single "_" of a dbusmenu label, lower case; None without one."""
    match = re.search(r"(?:^|[^_])(?:__)*_([^_])", label)
    return match.group(1).lower() if match else None


def plain(label):
    """A dbusmenu label as the host shows its words: "更新(_R)" as "更新", "_Refresh" as "Refresh"."""
    label = re.sub(r"\s*\(_[^_]\)", "", label)
    return re.sub(r"_(.)", r"\1", label)


def labels(layout):
    _, properties, children = layout
    found = []
    if "label" in properties:
        found.append(str(properties["label"]))
    for child in children:
        found += labels(child)
    return found


def main():
    if sys.argv[1] == "--translate":
        _, _, path, context, source = sys.argv
        sys.stdout.write(catalog(path).get((context, source)) or "")
        return 0
    service = sys.argv[1]
    texts = catalog(sys.argv[2] if len(sys.argv) > 2 else None)

    def translated(context, source):
        return texts.get((context, source), source) if texts else source

    bus = dbus.SessionBus()
    item = bus.get_object(service, "/StatusNotifierItem")
    properties = dbus.Interface(item, "org.freedesktop.DBus.Properties")
    menu_path = properties.Get("org.kde.StatusNotifierItem", "Menu")
    menu = dbus.Interface(bus.get_object(service, menu_path), "com.canonical.dbusmenu")
    _, layout = menu.GetLayout(0, -1, dbus.Array([], signature="s"))
    shown = labels(layout)
    tool_tip = str(properties.Get("org.kde.StatusNotifierItem", "ToolTip")[2])
    title = str(properties.Get("org.kde.StatusNotifierItem", "Title"))
    print("menu: " + " | ".join(shown))
    print("menu as shown: " + " | ".join(plain(label) for label in shown))
    print("title: " + title)
    print("tool tip: " + tool_tip)

    expected_menu = [dbusmenu_label(translated("StatusItem", text)) for text in MENU_TEXTS]
    expected_tip = translated("StatusNotifierItem", TOOL_TIP)
    expected_title = translated("PanelStatusBuilder", TITLE).replace(
        "%1", translated("PanelStatusBuilder", NOT_SIGNED_IN))
    problems = []
    if shown != expected_menu:
        problems.append(f"menu {shown}, expected {expected_menu}")
    keys = [access_key(label) for label in shown]
    if None in keys or len(set(keys)) != len(keys):
        problems.append(f"the menu's access keys {keys} are not one letter each, every one its own")
    if title != expected_title:
        problems.append(f"title {title!r}, expected {expected_title!r}")
    if tool_tip != expected_tip:
        problems.append(f"tool tip heading {tool_tip!r}, expected {expected_tip!r}")
    english_menu = [plain(dbusmenu_label(text)) for text in MENU_TEXTS]
    if texts and any(plain(expected) == english for expected, english in zip(expected_menu, english_menu)):
        problems.append("the translation file leaves a menu entry in English")
    for problem in problems:
        print("FAIL: " + problem)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
