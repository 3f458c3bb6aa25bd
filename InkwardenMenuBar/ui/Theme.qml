pragma Singleton
import QtQuick

// The colour table of the views. Light or dark follows the desktop's palette: a dark window colour
// means a dark theme. The named colours are the system colours the rows speak of, in a light and a
// dark shade; the accent is the desktop's highlight colour.
QtObject {
    id: theme

    readonly property SystemPalette desktop: SystemPalette { colorGroup: SystemPalette.Active }
    readonly property bool dark: desktop.window.hslLightness < 0.5

    readonly property var lightColors: ({
        "blue": "#007aff",
        "orange": "#ff9500",
        "green": "#28cd41",
        "indigo": "#5856d6",
        "pink": "#ff2d55",
        "cyan": "#55bef0",
        "teal": "#59adc4",
        "purple": "#af52de",
        "brown": "#a2845e",
        "white": "#ffffff"
    })
    readonly property var darkColors: ({
        "blue": "#0a84ff",
        "orange": "#ff9f0a",
        "green": "#32d74b",
        "indigo": "#5e5ce6",
        "pink": "#ff375f",
        "cyan": "#5ac8f5",
        "teal": "#6ac4dc",
        "purple": "#bf5af2",
        "brown": "#ac8e68",
        "white": "#ffffff"
    })

    // A named colour in the current theme; "accent" and "secondary" are the desktop's own.
    function color(name) {
        if (name === "accent")
            return accent
        if (name === "secondary")
            return secondaryText
        return (dark ? darkColors : lightColors)[name] ?? desktop.windowText
    }

    readonly property color accent: desktop.highlight
    readonly property color accentText: desktop.highlightedText
    readonly property color windowBackground: desktop.window
    readonly property color controlBackground: desktop.base
    readonly property color text: desktop.windowText
    readonly property color secondaryText: Qt.rgba(text.r, text.g, text.b, 0.62)
    readonly property color tertiaryText: Qt.rgba(text.r, text.g, text.b, 0.42)
    readonly property color separator: Qt.rgba(text.r, text.g, text.b, dark ? 0.16 : 0.12)

    function withOpacity(base, opacity) {
        const c = Qt.color(base)
        return Qt.rgba(c.r, c.g, c.b, opacity)
    }
}
