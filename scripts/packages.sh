# SPDX-License-Identifier: MIT
# Sourced by common.sh: the Debian packages that the scripts need, and their installation.

build_packages=(cmake ninja-build g++ ccache qtbase5-dev libqt5serialport5-dev libqt5svg5-dev libssl-dev libboost-dev
    libtomlplusplus-dev pandoc weasyprint fonts-dejavu-core fonts-dejavu-extra fonts-noto-cjk)
lab_packages=(python3-labgrid python3-pytest python3-pytest-xdist ser2net)
test_packages=(libbenchmark-dev librapidcheck-dev tshark ser2net python3 python3-jsonschema
    python3-pyatspi at-spi2-core dbus x11-utils xvfb xauth "${lab_packages[@]}")
run_packages=(xvfb xauth fonts-dejavu-core fonts-liberation fonts-noto-cjk)

# need_packages NAME...: quick and silent if all are installed; uses sudo only if not root.
need_packages() {
    local missing=() name
    for name in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || missing+=("$name")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    command -v apt-get >/dev/null || { echo "No apt-get here, install these yourself: ${missing[*]}" >&2; return 1; }
    echo "Installing: ${missing[*]}"
    local as_root=()
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    "${as_root[@]}" apt-get update -qq </dev/null
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" \
        </dev/null >/dev/null || { echo "Could not install: ${missing[*]}" >&2; return 1; }
}
