#!/usr/bin/env bash
# Installs what Inkwarden needs, builds it and runs it. Unless a server address is configured, it
# also starts the development server on http://localhost:8000, where Inkwarden looks by default.
# It registers Inkwarden as the handler of inkwarden:// addresses for the current user, so the
# browser sign-in comes back to it.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/packages.sh

inkwarden_ensure_packages "${INKWARDEN_BUILD_PACKAGES[@]}" "${INKWARDEN_RUN_PACKAGES[@]}"

cmake --preset release >/dev/null
cmake --build --preset release --target inkwarden inkwarden-devserver
app="$PWD/build/release/InkwardenMenuBar/inkwarden"
devserver="$PWD/build/release/devserver/inkwarden-devserver"

if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
    # No desktop here: the same under Xvfb with a real panel, in a scratch home, with screenshots.
    echo "There is no display: running Inkwarden unseen, under Xvfb with xfce4-panel, and taking screenshots."
    exec scripts/run-headless.sh --no-build "$@"
fi

# The inkwarden:// scheme handler for this user: this build of Inkwarden.
applications="${XDG_DATA_HOME:-$HOME/.local/share}/applications"
mkdir -p "$applications"
sed -e "s|^Exec=inkwarden |Exec=\"$app\" |" -e "s|^TryExec=inkwarden$|TryExec=$app|" \
    data/com.inkwarden.menubar.desktop > "$applications/com.inkwarden.menubar.desktop"
update-desktop-database "$applications" 2>/dev/null || true
xdg-mime default com.inkwarden.menubar.desktop x-scheme-handler/inkwarden
echo "inkwarden:// now opens $(xdg-mime query default x-scheme-handler/inkwarden) ($app)"

settings="${XDG_CONFIG_HOME:-$HOME/.config}/inkwarden/inkwarden.conf"
if ! grep -q '^serverURL=' "$settings" 2>/dev/null || grep -q '^serverURL=http://localhost:8000$' "$settings"; then
    if curl -s -o /dev/null http://127.0.0.1:8000/__admin/faults 2>/dev/null; then
        echo "A development server is already listening on http://127.0.0.1:8000."
    else
        "$devserver" > "${TMPDIR:-/tmp}/inkwarden-devserver.log" 2>&1 &
        devserver_pid=$!
        trap 'kill "$devserver_pid" 2>/dev/null || true' EXIT
        for _ in $(seq 100); do grep -q 'listening on' "${TMPDIR:-/tmp}/inkwarden-devserver.log" && break; sleep 0.05; done
        echo "Development server started (log: ${TMPDIR:-/tmp}/inkwarden-devserver.log):"
        sed -n '1,12p' "${TMPDIR:-/tmp}/inkwarden-devserver.log"
    fi
fi

echo "Starting Inkwarden: without a key it opens the browser sign-in; the item appears in the panel."
"$app" "$@"
