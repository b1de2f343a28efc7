#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Fails on an include line that crosses the layers: layers.sh SOURCE_DIR
#   protocol <- link, session <- app, modules, console, help, timeline, presenter <- support <- demo;  link, session <- cli;
#   simulator -> protocol only
set -u
cd "$1" || exit 2
status=0
# forbid FOLDERS INCLUDED...: no file of FOLDERS includes a header of INCLUDED
forbid() {
    local folders=$1 found
    shift
    local pattern
    pattern=$(IFS='|'; echo "$*")
    # shellcheck disable=SC2086
    found=$(grep -rnE "#include \"($pattern)/" $folders --include='*.h' --include='*.cpp') && {
        echo "$found"
        echo "-> $folders must not include: $*"
        status=1
    }
    return 0
}
forbid protocol link session app modules console help timeline presenter simulator support demo cli
forbid session link app modules console help timeline presenter simulator support demo cli
forbid simulator link session app modules console help timeline presenter support demo cli
forbid "app modules console help timeline presenter" simulator support demo cli
# The window knows its pages by name alone; they, the console and the help are built on it.
forbid app modules console help timeline presenter
forbid "timeline presenter" modules console help
# The tool has no window; of the simulator it has the terminal, of the support the board as a process.
forbid cli app modules console help timeline presenter demo
# The settings dialog has widgets and belongs to the program, but knows nothing of the window.
forbid link session app modules console help timeline presenter simulator support demo cli
grep -rnE '#include <Q(Widget|Label|Dialog|Main|Message)' protocol link session simulator cli --include='*.h' --include='*.cpp' \
    | grep -v serialportconfig && { echo "-> no widgets below the program"; status=1; }
# A test that no list names would never run.
for source in tests/*/tst_*.cpp; do
    name=$(basename "$source" .cpp)
    grep -qwE "$name|${name#tst_}" tests/CMakeLists.txt "$(dirname "$source")"/CMakeLists.txt 2>/dev/null \
        || { echo "-> $source is in no list of tests"; status=1; }
done
exit $status
