#!/usr/bin/env bash
# Checks the Debian packages that scripts/lib/build-package.sh made: their control fields and
# dependencies, every file they install, the desktop entry and the metainfo with the desktop's own
# validators, the inkwarden:// handler as the desktop-file-utils trigger leaves it after install,
# and then the unpacked programs themselves: --version, the development server answering, and a
# headless start of Inkwarden that opens its popover, stays up and quits cleanly on SIGTERM, with
# every QML module and Qt plugin it loaded coming from a package it depends on.
#
# Runs on the private session bus of tests/desktop/run-with-session-bus.sh, which also gives it a
# scratch HOME and XDG folders.
#
#   check-package.sh PACKAGE_DIR VERSION
set -euo pipefail
if [ "$#" -ne 2 ]; then
    echo "usage: $0 PACKAGE_DIR VERSION" >&2
    exit 2
fi
package_dir=$1
version=$2
app_deb="$package_dir/Inkwarden-$version.deb"
arch=$(dpkg --print-architecture)
devserver_deb="$package_dir/inkwarden-devserver_${version}_${arch}.deb"

failures=0
fail() {
    echo "FAIL: $*"
    failures=$((failures + 1))
}
pass() {
    echo "PASS: $*"
}

work=$(mktemp -d "${TMPDIR:-/tmp}/inkwarden-package.XXXXXX")
pids=()
cleanup() {
    for pid in "${pids[@]}"; do
        kill "$pid" 2>/dev/null || true
        wait "$pid" 2>/dev/null || true
    done
    rm -rf "$work"
}
trap cleanup EXIT

for deb in "$app_deb" "$devserver_deb"; do
    [ -f "$deb" ] || { echo "FAIL: $deb was not built"; exit 1; }
done

# --- Control fields -----------------------------------------------------------------------------
field() { dpkg-deb --field "$1" "$2"; }

[ "$(field "$app_deb" Package)" = inkwarden ] && pass "package name inkwarden" || fail "package name: $(field "$app_deb" Package)"
[ "$(field "$app_deb" Version)" = "$version" ] && pass "version $version" || fail "version: $(field "$app_deb" Version)"
[ "$(field "$app_deb" Architecture)" = "$arch" ] && pass "architecture $arch" || fail "architecture: $(field "$app_deb" Architecture)"
[ -n "$(field "$app_deb" Maintainer)" ] || fail "no Maintainer"
[ -n "$(field "$app_deb" Description)" ] || fail "no Description"

depends=$(field "$app_deb" Depends)
recommends=$(field "$app_deb" Recommends)
# Each dependency as written, alternatives and all, one a line.
depends_list=$(printf '%s\n' "$depends" | tr ',' '\n' | sed 's/^ *//; s/ *$//')
# Just the package names, alternatives included.
depends_names=$(printf '%s\n' "$depends" | tr ',|' '\n\n' | sed 's/(.*)//; s/^ *//; s/ *$//' | sort -u)

expect_dependency() {
    if printf '%s\n' "$depends_list" | grep -qxF -- "$1"; then
        pass "depends on $1"
    else
        fail "Depends lacks \"$1\": $depends"
    fi
}
# What the program loads or runs without linking it: the QML modules of the popover, the Secret
# Service, the icon and figure fonts, the browser opener, the triggers for the handler and icons, and
# Qt's Wayland plugin, without which a Wayland-only session cannot start it.
for dependency in qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript qml6-module-qtquick \
    qml6-module-qtquick-controls qml6-module-qtquick-layouts qml6-module-qtquick-templates \
    qml6-module-qtquick-window fonts-material-design-icons-iconfont fonts-roboto-unhinted \
    xdg-utils desktop-file-utils hicolor-icon-theme qt6-wayland \
    'gnome-keyring | libkf5wallet-bin (>= 5.97) | keepassxc'; do
    expect_dependency "$dependency"
done
# dpkg-shlibdeps ran: the libraries the program links are there with their versions.
for library in libqt6quick6 libqt6svg6 libqt6dbus6 libqt6keychain1 libqcoro6core0 libicu72 libc6; do
    if printf '%s\n' "$depends_list" | grep -qE "^$library \(>= "; then
        pass "shared library dependency $library"
    else
        fail "no versioned dependency on $library: $depends"
    fi
done
printf '%s\n' "$recommends" | grep -qw libglib2.0-bin && pass "recommends libglib2.0-bin" \
    || fail "Recommends lacks libglib2.0-bin: $recommends"
printf '%s\n' "$recommends" | grep -qw qt6-translations-l10n && pass "recommends qt6-translations-l10n" \
    || fail "Recommends lacks qt6-translations-l10n: $recommends"
# Every name is one Debian knows (has a candidate version for), when apt has its package lists.
if [[ "$(apt-cache policy libc6 2>/dev/null)" == *"Candidate: "[0-9]* ]]; then
    mapfile -t named < <( { printf '%s\n' "$depends_names"; printf '%s\n' "$recommends" | tr ',' '\n' |
        sed 's/(.*)//; s/^ *//; s/ *$//'; } | sort -u)
    known=$(apt-cache policy "${named[@]}" |
        awk '/^[^ ].*:$/ { name = substr($0, 1, length($0) - 1) } /^  Candidate:/ { if ($2 != "(none)") print name }' |
        sort -u)
    unknown=$(comm -23 <(printf '%s\n' "${named[@]}") <(printf '%s\n' "$known"))
    [ -z "$unknown" ] && pass "apt knows all ${#named[@]} packages named in Depends and Recommends" \
        || fail "apt knows no package named" $unknown
else
    echo "SKIP: apt has no package lists to look the dependencies up in"
fi

# What `apt install ./Inkwarden-<version>.deb` does on a Debian with nothing installed yet, as apt
# plans it (simulated, from an empty package status): it resolves, and brings a Secret Service, the
# QML modules, the icon font and the Wayland plugin.
if [[ "$(apt-cache policy libc6 2>/dev/null)" == *"Candidate: "[0-9]* ]]; then
    : > "$work/empty-status"
    if apt-get install --simulate -o Dir::State::status="$work/empty-status" -o Debug::NoLocking=1 \
        "$(cd "$(dirname "$app_deb")" && pwd)/$(basename "$app_deb")" > "$work/fresh-install.log" 2>&1; then
        planned=$(awk '$1 == "Inst" { print $2 }' "$work/fresh-install.log")
        missing=()
        for name in inkwarden gnome-keyring qml6-module-qtquick-controls qml6-module-qtquick-layouts \
            fonts-material-design-icons-iconfont libqt6keychain1 xdg-utils qt6-wayland; do
            printf '%s\n' "$planned" | grep -qxF "$name" || missing+=("$name")
        done
        [ "${#missing[@]}" -eq 0 ] && pass "apt installs it on an empty Debian with $(printf '%s\n' "$planned" | wc -l) packages" \
            || { fail "a fresh install would not bring ${missing[*]}; apt planned:"; echo $planned; }
    else
        fail "apt cannot install the package on an empty Debian:"
        tail -n 20 "$work/fresh-install.log"
    fi
fi

[ "$(field "$devserver_deb" Package)" = inkwarden-devserver ] && pass "second package inkwarden-devserver" \
    || fail "devserver package name: $(field "$devserver_deb" Package)"
[ "$(field "$devserver_deb" Version)" = "$version" ] || fail "devserver version: $(field "$devserver_deb" Version)"
field "$devserver_deb" Depends | grep -q 'libqt6httpserver6 (>= ' && pass "devserver depends on libqt6httpserver6" \
    || fail "devserver Depends: $(field "$devserver_deb" Depends)"

# --- Contents -----------------------------------------------------------------------------------
app_contents=$(dpkg-deb --contents "$app_deb")
devserver_contents=$(dpkg-deb --contents "$devserver_deb")
files_of() { printf '%s\n' "$1" | awk '$1 !~ /^d/ { sub(/^\./, "", $6); print $6 }' | sort; }

expected_app_files=(
    /usr/bin/inkwarden
    /usr/lib/inkwarden/inkwarden-popover.so
    /usr/share/applications/com.inkwarden.menubar.desktop
    /usr/share/doc/inkwarden/copyright
    /usr/share/icons/hicolor/scalable/apps/com.inkwarden.menubar.svg
    /usr/share/icons/hicolor/symbolic/apps/com.inkwarden.menubar-symbolic.svg
    /usr/share/metainfo/com.inkwarden.menubar.metainfo.xml
)
icon_sizes=(16 22 24 32 48 64 128 256 512)
for size in "${icon_sizes[@]}"; do
    expected_app_files+=("/usr/share/icons/hicolor/${size}x${size}/apps/com.inkwarden.menubar.png")
done
expected=$(printf '%s\n' "${expected_app_files[@]}" | sort)
actual=$(files_of "$app_contents")
if [ "$expected" = "$actual" ]; then
    pass "inkwarden installs exactly the ${#expected_app_files[@]} expected files"
else
    fail "inkwarden contents differ (< expected, > packaged):"
    diff <(printf '%s\n' "$expected") <(printf '%s\n' "$actual") || true
fi
expected=$(printf '%s\n' /usr/bin/inkwarden-devserver /usr/share/doc/inkwarden-devserver/copyright)
actual=$(files_of "$devserver_contents")
[ "$expected" = "$actual" ] && pass "inkwarden-devserver installs exactly its program and copyright" \
    || fail "inkwarden-devserver contents: $actual"
printf '%s\n' "$app_contents" | grep -q '^-rwxr-xr-x root/root .* ./usr/bin/inkwarden$' \
    && pass "/usr/bin/inkwarden is an executable owned by root" || fail "/usr/bin/inkwarden mode or owner"

# --- Unpacked files -----------------------------------------------------------------------------
root="$work/root"
mkdir -p "$root"
dpkg-deb -x "$app_deb" "$root"
dpkg-deb -x "$devserver_deb" "$root"
desktop_entry="$root/usr/share/applications/com.inkwarden.menubar.desktop"

# The popover module takes the store's and the platform's code from the executable that loads it:
# whatever its own libraries do not define, the stripped executable must still export.
module="$root/usr/lib/inkwarden/inkwarden-popover.so"
exported=$(nm -D --defined-only "$root/usr/bin/inkwarden" | awk '{ print $NF }' | sort -u)
needed=$(ldd -r "$module" 2>&1 | sed -n 's/^undefined symbol: \([^[:space:]]*\).*/\1/p' | sort -u)
missing=$(comm -23 <(printf '%s\n' "$needed") <(printf '%s\n' "$exported") | grep -v '^$' || true)
if [ -n "$needed" ] && [ -z "$missing" ]; then
    pass "the executable exports the $(printf '%s\n' "$needed" | wc -l) symbols the popover module takes from it"
else
    fail "the popover module needs symbols the executable does not export: ${missing:-(none needed?)}"
fi
# An Inkwarden that nobody opened maps none of Qt Quick: only the module links it.
if readelf -d "$root/usr/bin/inkwarden" | grep -q 'NEEDED.*libQt6\(Quick\|Qml\)'; then
    fail "the executable links Qt Quick or QML itself"
else
    pass "the executable links neither Qt Quick nor QML"
fi

if desktop-file-validate "$desktop_entry"; then pass "desktop-file-validate"; else fail "desktop-file-validate"; fi
grep -qx 'MimeType=x-scheme-handler/inkwarden;' "$desktop_entry" && pass "desktop entry handles inkwarden://" \
    || fail "desktop entry lacks the inkwarden scheme"
grep -qx 'Exec=inkwarden %u' "$desktop_entry" || fail "desktop entry Exec is not \"inkwarden %u\""
grep -qx 'Icon=com.inkwarden.menubar' "$desktop_entry" || fail "desktop entry Icon is not the installed icon name"

metainfo="$root/usr/share/metainfo/com.inkwarden.menubar.metainfo.xml"
if appstreamcli validate --no-net --strict "$metainfo"; then pass "appstreamcli validate"; else fail "appstreamcli validate"; fi
grep -q "<release version=\"$version\"" "$metainfo" && pass "metainfo names release $version" \
    || fail "metainfo has no release $version"
grep -q '<launchable type="desktop-id">com.inkwarden.menubar.desktop</launchable>' "$metainfo" \
    || fail "metainfo does not launch the desktop entry"
# Software centres and menus in Inkwarden's languages show its own words.
for language in de fr es it ja; do
    for key in GenericName Comment Keywords; do
        grep -q "^$key\[$language\]=." "$desktop_entry" || fail "desktop entry has no $key[$language]"
    done
    grep -q "<summary xml:lang=\"$language\">" "$metainfo" || fail "metainfo has no summary in $language"
    [ "$(grep -c "<p xml:lang=\"$language\">" "$metainfo")" = 2 ] || fail "metainfo's description is not in $language"
done
pass "desktop entry and metainfo in de, fr, es, it and ja"

for size in "${icon_sizes[@]}"; do
    png="$root/usr/share/icons/hicolor/${size}x${size}/apps/com.inkwarden.menubar.png"
    file -b "$png" | grep -q "^PNG image data, $size x $size, 8-bit/color RGBA" \
        || fail "icon ${size}x${size} is $(file -b "$png")"
done
pass "icons are RGBA PNG files of their folder's size"

# What the desktop-file-utils trigger does on install: afterwards the desktop's own lookup names
# Inkwarden as the handler of inkwarden:// addresses.
update-desktop-database "$root/usr/share/applications"
handler=$(XDG_DATA_DIRS="$root/usr/share" xdg-mime query default x-scheme-handler/inkwarden)
[ "$handler" = com.inkwarden.menubar.desktop ] && pass "xdg-mime names com.inkwarden.menubar.desktop for inkwarden://" \
    || fail "xdg-mime query default x-scheme-handler/inkwarden gave \"$handler\""

# --- The programs -------------------------------------------------------------------------------
export QT_QPA_PLATFORM=offscreen
unset DISPLAY WAYLAND_DISPLAY
inkwarden="$root/usr/bin/inkwarden"
reported=$("$inkwarden" --version 2>&1) || fail "inkwarden --version ended with $?"
[ "$reported" = "inkwarden $version" ] && pass "inkwarden --version says \"$reported\"" \
    || fail "inkwarden --version said \"$reported\""
"$inkwarden" --help 2>&1 | grep -q 'inkwarden:// address' && pass "inkwarden --help" || fail "inkwarden --help"

"$root/usr/bin/inkwarden-devserver" --port 0 > "$work/devserver.log" 2>&1 &
pids+=($!)
for _ in $(seq 200); do grep -q 'listening on http' "$work/devserver.log" && break; sleep 0.05; done
server=$(sed -n 's/.*listening on \(http[^ ]*\).*/\1/p' "$work/devserver.log" | head -n 1)
server=${server%/}
if [ -z "$server" ]; then
    fail "the packaged inkwarden-devserver did not start:"
    cat "$work/devserver.log"
    exit 1
fi
status=$(curl -s -o /dev/null -w '%{http_code}' "$server/dashboard_lite/")
[ "$status" = 200 ] && pass "packaged inkwarden-devserver answers at $server" || fail "devserver answered $status"

# Inkwarden without a key: it starts the browser sign-in against the server in its settings. A
# second launch asks it to show the popover, which loads the views and the QML modules behind them.
conf="$XDG_CONFIG_HOME/inkwarden/inkwarden.conf"
mkdir -p "$(dirname "$conf")"
printf '[General]\nserverURL=%s\n' "$server" > "$conf"
started=$(date +%s%N)
QML_IMPORT_TRACE=1 "$inkwarden" > "$work/inkwarden.log" 2>&1 &
app=$!
pids+=("$app")
for _ in $(seq 200); do grep -q '^pendingAuthState=' "$conf" && break; sleep 0.05; done
grep -q '^pendingAuthState=' "$conf" && pass "Inkwarden started and began the browser sign-in" \
    || fail "Inkwarden began no sign-in"
"$inkwarden" && pass "a second launch handed over to the running Inkwarden" || fail "second launch ended with $?"
for _ in $(seq 200); do grep -q 'QtQuick/Controls/Fusion/qmldir' "$work/inkwarden.log" && break; sleep 0.05; done
grep -q 'QtQuick/Controls/Fusion/qmldir' "$work/inkwarden.log" && pass "the popover loaded its views" \
    || fail "the popover's QML was never loaded"
# Up for at least two seconds, and still up.
while [ $(( ($(date +%s%N) - started) / 1000000 )) -lt 2000 ] && kill -0 "$app" 2>/dev/null; do sleep 0.1; done
kill -0 "$app" 2>/dev/null && pass "Inkwarden stays up" || fail "Inkwarden ended early"

# Whatever it loaded from Qt's QML and plugin folders belongs to a package that it depends on.
loaded=$( { grep -o "/usr/lib/[^\" ]*/qt6/qml/[^\" ]*qmldir" "$work/inkwarden.log" || true;
            grep -o "/usr/lib/[^ ]*/qt6/\(qml\|plugins\)/[^ ]*\.so" "/proc/$app/maps" || true; } | sort -u)
[ -n "$loaded" ] || fail "no QML module or Qt plugin was seen loading"
unowned=0
while IFS= read -r path; do
    [ -n "$path" ] || continue
    owner=$(dpkg -S "$path" 2>/dev/null | head -n 1 | cut -d: -f1)
    if [ -z "$owner" ]; then
        fail "no Debian package owns $path"
        unowned=$((unowned + 1))
    elif ! printf '%s\n' "$depends_names" | grep -qxF "$owner"; then
        fail "$path comes from $owner, which is not in Depends"
        unowned=$((unowned + 1))
    fi
done <<< "$loaded"
[ "$unowned" -eq 0 ] && pass "the $(printf '%s\n' "$loaded" | wc -l) QML modules and Qt plugins it loaded come from packages in Depends"

kill -TERM "$app"
exit_status=0
wait "$app" || exit_status=$?
[ "$exit_status" = 0 ] && pass "Inkwarden quit on SIGTERM with exit status 0" \
    || fail "Inkwarden ended with status $exit_status on SIGTERM"
if grep -v '^qt\.qml\.import' "$work/inkwarden.log" | grep -E '\.qml:[0-9]+|is not installed|AddressSanitizer|runtime error'; then
    fail "Inkwarden reported problems with its views (above)"
fi

if [ "$failures" -ne 0 ]; then
    echo "--- inkwarden log (without the import trace) ---"
    grep -v '^qt\.qml\.import' "$work/inkwarden.log" || true
    echo "$failures check(s) failed"
    exit 1
fi
echo "all package checks passed"
