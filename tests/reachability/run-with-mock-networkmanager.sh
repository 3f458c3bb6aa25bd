#!/usr/bin/env bash
# Runs a test program against NetworkManager as python3-dbusmock plays it, on a private bus that the
# program sees as its system bus, so no test ever reads or changes the machine's real network state.
#
# The program gets:
#   DBUS_SYSTEM_BUS_ADDRESS                      the private bus with the mock NetworkManager on it
#   INKWARDEN_TEST_BUS_WITHOUT_NETWORKMANAGER    a second private bus with no NetworkManager on it
#   INKWARDEN_TEST_MOCK_NETWORKMANAGER=1         tells the test that it runs under this script
#
# Usage: run-with-mock-networkmanager.sh TEST-PROGRAM [ARGUMENTS...]
set -euo pipefail

if [ "$#" -lt 1 ]; then
    echo "usage: $0 TEST-PROGRAM [ARGUMENTS...]" >&2
    exit 2
fi

here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# dbusmock comes from Debian's package, for Debian's interpreter, whatever python3 comes first on PATH.
python="${INKWARDEN_DBUSMOCK_PYTHON:-/usr/bin/python3}"

for tool in dbus-daemon dbus-send "$python"; do
    if ! command -v "$tool" >/dev/null; then
        echo "$0: $tool is missing (install the packages in scripts/lib/packages.sh)" >&2
        exit 1
    fi
done
if ! "$python" -c 'import dbusmock' 2>/dev/null; then
    echo "$0: python3-dbusmock is missing (install the packages in scripts/lib/packages.sh)" >&2
    exit 1
fi

daemon_pids=()
mock_pid=""
logdir="$(mktemp -d)"

# shellcheck disable=SC2317 # runs through the EXIT trap
cleanup() {
    local pid
    for pid in $mock_pid "${daemon_pids[@]}"; do
        kill "$pid" 2>/dev/null || true
        wait "$pid" 2>/dev/null || true
    done
    rm -rf "$logdir"
}
trap cleanup EXIT

# Starts a private bus as a child of this script; sets bus_address once the daemon listens.
start_bus() {
    local address_file="$logdir/bus-${#daemon_pids[@]}.address"
    # As root it warns that it cannot raise its file limit; harmless here, so that goes to its log.
    dbus-daemon --config-file="$here/private-bus.conf" --nofork --print-address=3 3>"$address_file" \
        2>>"$logdir/dbus-daemon.log" &
    daemon_pids+=("$!")
    for _ in $(seq 200); do
        bus_address="$(head -n 1 "$address_file" 2>/dev/null || true)"
        if [ -n "$bus_address" ]; then
            return 0
        fi
        sleep 0.02
    done
    echo "$0: dbus-daemon did not start:" >&2
    cat "$logdir/dbus-daemon.log" >&2
    exit 1
}

start_bus
mock_bus="$bus_address"
start_bus
empty_bus="$bus_address"

DBUS_SYSTEM_BUS_ADDRESS="$mock_bus" "$python" -m dbusmock --system --template networkmanager \
    >"$logdir/dbusmock.log" 2>&1 &
mock_pid=$!

# The test must not start before the mock owns NetworkManager's name: Qt looks for it only when it loads.
name_owned() {
    dbus-send --bus="$mock_bus" --print-reply=literal --dest=org.freedesktop.DBus /org/freedesktop/DBus \
        org.freedesktop.DBus.NameHasOwner string:org.freedesktop.NetworkManager 2>/dev/null | grep -q true
}
for _ in $(seq 200); do
    if name_owned; then
        break
    fi
    if ! kill -0 "$mock_pid" 2>/dev/null; then
        echo "$0: the mock NetworkManager exited:" >&2
        cat "$logdir/dbusmock.log" >&2
        exit 1
    fi
    sleep 0.05
done
if ! name_owned; then
    echo "$0: the mock NetworkManager did not appear on the bus" >&2
    cat "$logdir/dbusmock.log" >&2
    exit 1
fi

status=0
DBUS_SYSTEM_BUS_ADDRESS="$mock_bus" \
    INKWARDEN_TEST_BUS_WITHOUT_NETWORKMANAGER="$empty_bus" \
    INKWARDEN_TEST_MOCK_NETWORKMANAGER=1 \
    "$@" || status=$?
exit "$status"
