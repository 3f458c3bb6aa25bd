# Debian packages Inkwarden needs, and a helper that installs the missing ones.
# Sourced by the scripts in scripts/; safe to run again: it installs only what is missing.

INKWARDEN_BUILD_PACKAGES=(
    cmake ninja-build g++ pkg-config
    qt6-base-dev qt6-httpserver-dev
    qcoro-qt6-dev qtkeychain-qt6-dev
    libsecret-1-0
    libicu-dev tzdata
    qt6-declarative-dev qt6-svg-dev qml6-module-qtqml qml6-module-qtquick qml6-module-qtquick-controls
    qml6-module-qtquick-layouts qml6-module-qtquick-templates qml6-module-qtqml-workerscript
    qml6-module-qtquick-window qml6-module-qtqml-models fonts-material-design-icons-iconfont fonts-roboto-unhinted
    qt6-tools-dev qt6-l10n-tools qt6-translations-l10n
)

# What running Inkwarden on a desktop needs besides what it is built from: the keyring, the
# scheme-handler tools, an opener for the installer, and Qt's Wayland plugin (a Wayland-only session
# has no X server to fall back to).
INKWARDEN_RUN_PACKAGES=(
    gnome-keyring xdg-utils desktop-file-utils libglib2.0-bin curl qt6-wayland
)

# What making the Debian packages takes besides the build: dpkg-shlibdeps (dpkg-dev) and file, with
# which CPack finds the libraries the programs need, and the validators for the desktop entry and
# the metainfo that the package tests also run.
INKWARDEN_PACKAGE_PACKAGES=(
    dpkg-dev file appstream desktop-file-utils
)

# What the tests need besides the build. The Japanese font lets the Japanese popover render (and be
# measured) with real glyphs, as on a Japanese desktop, which always has one. Orca, the screen
# reader, listens to the real popover; it is run without speech, and what it would say is read from
# its log.
INKWARDEN_TEST_PACKAGES=(
    fonts-ipafont-gothic
    at-spi2-core python3-pyatspi orca
    gnome-keyring gcr libkf5wallet-bin
    dbus-daemon dbus-bin python3-dbusmock
    clang clang-format clang-tidy libclang-rt-14-dev libbenchmark-dev qt6-declarative-dev-tools
    desktop-file-utils libglib2.0-bin xdg-utils shared-mime-info
    curl openssl
)

# A real panel to look at the status item in, unseen (tests/statusitem/show-in-xfce-panel.sh,
# scripts/run-headless.sh, scripts/bench-shell.sh): the X server and panel with its Generic Monitor,
# a session bus of its own, the keyring, screenshots and OCR to read them, and the tools that find
# and time the popover window.
INKWARDEN_PANEL_PACKAGES=(
    xvfb xauth xfce4-panel xfce4-genmon-plugin imagemagick tesseract-ocr tesseract-ocr-eng
    dbus-daemon dbus-bin gnome-keyring libglib2.0-bin
    xdotool x11-utils openssl curl
)

# GNOME Shell 43 with Debian's AppIndicator extension, unseen (tests/shell/figure-on-gnome-shell.sh):
# the shell on Xvfb with Mesa's software GL, GSettings kept in dconf, logind played by
# python3-dbusmock on a private system bus, and OCR to read the figure in the top bar.
INKWARDEN_GNOME_PACKAGES=(
    gnome-shell gnome-shell-extension-appindicator
    xvfb xauth libgl1-mesa-dri dconf-gsettings-backend
    dbus-daemon dbus-bin python3-dbusmock gnome-keyring libglib2.0-bin
    imagemagick tesseract-ocr xdotool x11-utils openssl curl
)

# A Wayland-only session to look at Inkwarden in, unseen (tests/shell/wayland-session-with-waybar.sh,
# tests/shell/waybar-status-module.sh): a headless wlroots compositor and waybar, Qt's Wayland
# plugin, screenshots and key presses for Wayland, a font and OCR to read the bar back, and the
# tools that run the session as an unprivileged user (sway refuses root).
INKWARDEN_WAYLAND_PACKAGES=(
    sway waybar grim wtype qt6-wayland fonts-dejavu-core tesseract-ocr tesseract-ocr-eng imagemagick
    dbus-daemon dbus-bin gnome-keyring libglib2.0-bin python3 openssl curl passwd util-linux procps
)

inkwarden_missing_packages() {
    local package
    for package in "$@"; do
        if ! dpkg-query -W -f='${Status}\n' "$package" 2>/dev/null | grep -q '^install ok installed$'; then
            printf '%s\n' "$package"
        fi
    done
}

inkwarden_ensure_packages() {
    local missing
    mapfile -t missing < <(inkwarden_missing_packages "$@")
    if [ "${#missing[@]}" -eq 0 ]; then
        return 0
    fi
    local sudo=()
    if [ "$(id -u)" -ne 0 ]; then
        sudo=(sudo)
    fi
    echo "Installing Debian packages: ${missing[*]}"
    "${sudo[@]}" apt-get update -qq
    DEBIAN_FRONTEND=noninteractive "${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

# A script's --help: its own opening comment, from the second line to the first that is not a
# comment, without the comment marks.
inkwarden_print_usage() {
    awk 'NR == 1 { next } /^#/ { sub(/^# ?/, ""); print; next } { exit }' "$1"
}
