# Debian packages through CPack: `cpack` in a release build makes two of them.
#   inkwarden            Inkwarden-<version>.deb: the app, its desktop entry, icons, metainfo
#   inkwarden-devserver  inkwarden-devserver_<version>_<arch>.deb: the development royalties service
# scripts/package.sh is the one command that builds them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME inkwarden)
set(CPACK_PACKAGE_VENDOR "The Inkwarden developers")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "The Inkwarden developers <maintainers@inkwarden.invalid>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_OUTPUT_FILE_PREFIX ${CMAKE_BINARY_DIR})

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL inkwarden devserver)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The shared libraries the programs link come from dpkg-shlibdeps; what it cannot see is listed below.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS OFF)

set(CPACK_DEBIAN_INKWARDEN_PACKAGE_NAME inkwarden)
set(CPACK_DEBIAN_INKWARDEN_FILE_NAME "Inkwarden-${PROJECT_VERSION}.deb")
set(CPACK_COMPONENT_INKWARDEN_DESCRIPTION "Your book royalties at a glance, in the panel
Inkwarden shows a self-publishing author's book royalties in the panel of the
desktop: today's, yesterday's or this month's gross or net royalties as a short
figure next to its icon, and a dashboard with ad spend, net royalties and sales by
format a click away. It signs in through the browser and keeps its API key in the
system keyring.")
# Loaded at run time, so invisible to dpkg-shlibdeps:
# - the QML modules the popover imports (QtQuick, Layouts, Controls with the Fusion style and
#   Templates) and the ones those load in turn (QtQml, its Models, WorkerScript, Window);
# - the Secret Service that keeps the API key: gnome-keyring, or KDE Wallet or KeePassXC, the same
#   choice Debian's own Secret Service clients offer (Debian 12 has no package that provides
#   org.freedesktop.secrets);
# - the Material Icons font for the symbols and Roboto for the figures;
# - xdg-utils, which opens the browser for sign-in and the pages; desktop-file-utils and
#   hicolor-icon-theme, whose dpkg triggers refresh the handler cache of inkwarden:// and the
#   icon cache when this package installs its files there;
# - Qt's Wayland platform plugin: on a Wayland-only session (sway, other wlroots compositors) there
#   is no X server to fall back to, and without the plugin Inkwarden does not start at all.
set(CPACK_DEBIAN_INKWARDEN_PACKAGE_DEPENDS
    "qml6-module-qtqml, qml6-module-qtqml-models, qml6-module-qtqml-workerscript, qml6-module-qtquick, \
qml6-module-qtquick-controls, \
qml6-module-qtquick-layouts, qml6-module-qtquick-templates, qml6-module-qtquick-window, \
gnome-keyring | libkf5wallet-bin (>= 5.97) | keepassxc, \
fonts-material-design-icons-iconfont, fonts-roboto-unhinted, \
xdg-utils, desktop-file-utils, hicolor-icon-theme, qt6-wayland")
# gio gives the clearer reason when the installer cannot be opened (xdg-open is the fallback); Qt's
# translations give Qt's own texts (the command line's help) in the user's language too.
set(CPACK_DEBIAN_INKWARDEN_PACKAGE_RECOMMENDS "libglib2.0-bin, qt6-translations-l10n")

set(CPACK_DEBIAN_DEVSERVER_PACKAGE_NAME inkwarden-devserver)
set(CPACK_DEBIAN_DEVSERVER_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_DEVSERVER_PACKAGE_SECTION devel)
set(CPACK_COMPONENT_DEVSERVER_DESCRIPTION "Development royalties service for Inkwarden
inkwarden-devserver is a small royalties service for developing and testing
Inkwarden: API keys, a few demo accounts with figures that grow through the day,
the browser sign-in, rate limiting, the download and dashboard pages, and switches
that make it fail on purpose.")

include(CPack)
