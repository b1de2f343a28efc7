#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs a program with a virtual board, and a test over the accessibility bus, in a session of their own:
#   session.sh PROGRAM TEST
# The bus comes when the window is there: a program that finds it when it starts can miss it (Qt 5.15).
set -euo pipefail

wait_for() { # COMMAND...: at most a minute, for a busy machine
    for _ in {1..600}; do
        if "$@"; then return; fi
        sleep 0.1
    done
    echo "in vain: $*"
    return 1
}
# The window itself: the splash before it has its title, not its size.
is_shown() { xwininfo -root -tree | grep '"Safety Workbench"' | grep -q ' 1440x900'; }
has_bus() {
    dbus-send --session --print-reply --dest=org.freedesktop.DBus / org.freedesktop.DBus.NameHasOwner \
        string:org.a11y.Bus | grep -q true
}

if [ "${3:-}" = inside ]; then
    (cd "$(dirname "$1")" && exec "$1" --seed 1) >/dev/null 2>&1 &
    wait_for is_shown
    /usr/libexec/at-spi-bus-launcher --launch-immediately --a11y=1 --screen-reader=1 >/dev/null 2>&1 &
    wait_for has_bus
    result=0
    /usr/bin/python3 "$2" || result=$?
    kill %1 %2 2>/dev/null || true
    exit "$result"
fi

for tool in xvfb-run dbus-run-session xwininfo /usr/libexec/at-spi-bus-launcher; do
    command -v "$tool" >/dev/null || { echo "$tool is missing"; exit 77; }
done
[ -d /usr/lib/python3/dist-packages/pyatspi ] || { echo "python3-pyatspi is missing"; exit 77; }
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
QT_QPA_PLATFORM=xcb GSETTINGS_BACKEND=memory HOME=$folder XDG_RUNTIME_DIR=$folder \
    xvfb-run -a -s "-screen 0 1600x1000x24" dbus-run-session -- "$0" "$1" "$2" inside
