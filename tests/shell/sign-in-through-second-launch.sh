#!/usr/bin/env bash
# The whole browser sign-in with the real binary: Inkwarden starts without a key and asks the
# browser to sign in; the "browser" (curl) authorizes at the development server, which sends it to
# inkwarden://authenticated?…; the desktop starts a second inkwarden with that address, which hands
# it to the first and ends; the first exchanges the code, saves the key and loads the accounts.
# Usage: sign-in-through-second-launch.sh INKWARDEN DEVSERVER
set -euo pipefail
inkwarden=$1
devserver=$2

work=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait 2>/dev/null || true; rm -rf "$work"' EXIT
export HOME="$work/home" XDG_CONFIG_HOME="$work/home/.config" XDG_CACHE_HOME="$work/home/.cache"
export XDG_DATA_HOME="$work/home/.local/share" XDG_RUNTIME_DIR="$work/run"
mkdir -p "$HOME" "$XDG_RUNTIME_DIR" && chmod 700 "$XDG_RUNTIME_DIR"
unset DISPLAY WAYLAND_DISPLAY XDG_CURRENT_DESKTOP
export QT_QPA_PLATFORM=offscreen

"$devserver" --port 0 > "$work/devserver.log" 2>&1 &
for _ in $(seq 100); do grep -q 'listening on http' "$work/devserver.log" && break; sleep 0.05; done
server=$(sed -n 's/.*listening on \(http[^ ]*\).*/\1/p' "$work/devserver.log" | head -n 1)
server=${server%/}
[ -n "$server" ] || { echo "the development server did not start"; cat "$work/devserver.log"; exit 1; }
mkdir -p "$XDG_CONFIG_HOME/inkwarden"
printf '[General]\nserverURL=%s\nlastPresentedAppVersion=seen\n' "$server" > "$XDG_CONFIG_HOME/inkwarden/inkwarden.conf"

# A keyring of its own, unlocked, for the key the sign-in brings.
eval "$(echo | gnome-keyring-daemon --unlock --components=secrets)"
for _ in $(seq 100); do gdbus call --session --dest org.freedesktop.DBus --object-path /org/freedesktop/DBus \
    --method org.freedesktop.DBus.NameHasOwner org.freedesktop.secrets | grep -q true && break; sleep 0.05; done

"$inkwarden" > "$work/first.log" 2>&1 &
first=$!
conf="$XDG_CONFIG_HOME/inkwarden/inkwarden.conf"
# Both halves of the sign-in, from one reading of the file.
for _ in $(seq 100); do
    settings=$(cat "$conf" 2>/dev/null || true)
    verifier=$(sed -n 's/^pendingAuthVerifier=//p' <<<"$settings")
    state=$(sed -n 's/^pendingAuthState=//p' <<<"$settings")
    [ -n "$verifier" ] && [ -n "$state" ] && break
    sleep 0.05
done
[ -n "$verifier" ] && [ -n "$state" ] || { echo "no sign-in was started"; cat "$work/first.log"; exit 1; }
challenge=$(printf %s "$verifier" | openssl dgst -sha256 -binary | base64 | tr '+/' '-_' | tr -d '=')

callback=$(curl -s -o /dev/null -w '%{redirect_url}' \
    --data-urlencode "code_challenge=$challenge" --data-urlencode "state=$state" \
    "$server/mac-app/connect/authorize/")
case "$callback" in inkwarden://authenticated*) ;; *) echo "unexpected redirect: $callback"; exit 1 ;; esac

"$inkwarden" "$callback"
echo "second launch handed over and ended with $?"
kill -0 "$first" || { echo "the first Inkwarden is gone"; exit 1; }

for _ in $(seq 200); do grep -q '^accountID=' "$conf" && break; sleep 0.05; done
grep -q '^accountID=acct-' "$conf" || { echo "not connected:"; cat "$conf"; cat "$work/first.log"; exit 1; }
grep -qE '^pendingAuth(State|Verifier)=' "$conf" && { echo "pending sign-in left behind"; exit 1; }
key=$(gdbus call --session --dest org.freedesktop.secrets --object-path /org/freedesktop/secrets \
    --method org.freedesktop.Secret.Service.SearchItems "{'server': 'com.inkwarden.menubar'}" 2>&1 || true)
echo "keyring items: $key"
case "$key" in *"/org/freedesktop/secrets/collection"*) ;; *) echo "no key in the keyring"; exit 1 ;; esac
for _ in $(seq 100); do grep -q 'bookStatsAPI' <(curl -s "$server/__admin/requests") && break; sleep 0.05; done
curl -s "$server/__admin/requests" | grep -q 'bookStatsAPI' || { echo "no figures were asked for"; exit 1; }
echo "signed in through the second launch: PASS"
