# SPDX-License-Identifier: MIT
# Sourced by the other scripts: what they have in common.
. scripts/packages.sh
# A precompiled header makes ccache look closer than it need: the sources do not depend on the header's own time.
export CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime

# configure PRESET [OPTION...]: prints nothing unless it fails.
configure() {
    local output launcher=()
    command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    output=$(cmake --preset "$1" "${launcher[@]}" "${@:2}" 2>&1) || { echo "$output" >&2; return 1; }
}

# build PRESET [TARGET...]: shows its progress on a terminal, elsewhere a line per minute.
build() {
    local command=(cmake --build --preset "$1") seconds=0 builder
    [ $# -eq 1 ] || command+=(--target "${@:2}")
    if [ -t 1 ]; then
        "${command[@]}"
        return
    fi
    "${command[@]}" -- --quiet &
    builder=$!
    while kill -0 "$builder" 2>/dev/null; do
        sleep 1
        [ $((++seconds % 60)) -ne 0 ] || echo "Still building, $((seconds / 60)) min"
    done
    wait "$builder"
}
