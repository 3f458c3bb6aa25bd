#!/usr/bin/python3
"""Reads what a panel reads of a running Inkwarden over the session bus, and holds it against a
translation file (or English when none is given).

Usage: read-panel-texts.py ITEM_SERVICE [TS_FILE]

Prints the menu's labels and the tool tip's heading; exits 1 when any of them is not what the
translation says (or not the English text, without a file)."""

import sys
import xml.etree.ElementTree as ET

import dbus

MENU_TEXTS = ["Open Inkwarden", "Refresh", "Settings", "Hide amounts", "Quit Inkwarden"]
TOOL_TIP = "Inkwarden Royalties"


def catalog(path):
    texts = {}
    if path:
        for context in ET.parse(path).getroot().iter("context"):
            for message in context.iter("message"):
                texts[(context.findtext("name"), message.findtext("source"))] = message.findtext("translation")
    return texts


def labels(layout):
    _, properties, children = layout
    found = []
    if "label" in properties:
        found.append(str(properties["label"]))
    for child in children:
        found += labels(child)
    return found


def main():
    service = sys.argv[1]
    texts = catalog(sys.argv[2] if len(sys.argv) > 2 else None)
    bus = dbus.SessionBus()
    item = bus.get_object(service, "/StatusNotifierItem")
    properties = dbus.Interface(item, "org.freedesktop.DBus.Properties")
    menu_path = properties.Get("org.kde.StatusNotifierItem", "Menu")
    menu = dbus.Interface(bus.get_object(service, menu_path), "com.canonical.dbusmenu")
    _, layout = menu.GetLayout(0, -1, dbus.Array([], signature="s"))
    shown = [label.replace("_", "") for label in labels(layout)]
    tool_tip = str(properties.Get("org.kde.StatusNotifierItem", "ToolTip")[2])
    print("menu: " + " | ".join(shown))
    print("tool tip: " + tool_tip)
    expected_menu = [texts.get(("StatusItem", text), text) if texts else text for text in MENU_TEXTS]
    expected_tip = texts.get(("StatusNotifierItem", TOOL_TIP), TOOL_TIP) if texts else TOOL_TIP
    problems = []
    if shown != expected_menu:
        problems.append(f"menu {shown}, expected {expected_menu}")
    if tool_tip != expected_tip:
        problems.append(f"tool tip heading {tool_tip!r}, expected {expected_tip!r}")
    if texts and any(expected == english for expected, english in zip(expected_menu, MENU_TEXTS)):
        problems.append("the translation file leaves a menu entry in English")
    for problem in problems:
        print("FAIL: " + problem)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
