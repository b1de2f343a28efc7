#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs into an empty root, or unpacks a package there, and starts the programs from it:
#   installed.sh BUILD_DIR [FILE.deb]
set -u
build=$1 package=${2:-}
root=$(mktemp -d)
running=()
trap 'kill "${running[@]}" 2>/dev/null; rm -rf "$root"' EXIT
if [ -n "$package" ]; then
    dpkg-deb -x "$package" "$root" || exit 1
else
    DESTDIR=$root cmake --install "$build" --prefix /usr >/dev/null || exit 1
fi

status=0
fail() { echo "FAIL: $*"; status=1; }
need() { [ -e "$2" ] || fail "$1 names ${2#"$root"}, which is not there"; }
need_all() { # who names them, the folder; names from standard input
    local name
    while read -r name; do need "$1" "$2/$name"; done
}
checked() { # validator, arguments: where it is installed
    command -v "$1" >/dev/null || { echo "not installed, left out: $1"; return; }
    "$@" || fail "$*"
}
eventually() { # condition, within 20 s
    local tries
    for ((tries = 0; tries < 400; ++tries)); do
        "$@" && return
        sleep 0.05
    done
    return 1
}

share=$root/usr/share
desktop=$share/applications/safety-workbench.desktop
demonstration=$share/applications/safety-workbench-demo.desktop
metadata=$share/metainfo/safety-workbench.metainfo.xml
data=$root$(sed -n 's/^Path=//p' "$desktop")

# What the texts name is there, and nothing in them is left unfilled.
need "the desktop entry" "$data/VEK_logo_RGB_web.png"
need_all "a desktop entry" "$root" < <(sed -n 's/^Exec=\///p' "$desktop" "$demonstration")
[ "$(grep ^Icon= "$demonstration")" = "$(grep ^Icon= "$desktop")" ] || fail "the demonstration has another icon"
icon=$(sed -n 's/^Icon=//p' "$desktop")
for size in 48x48 256x256; do need "the desktop entry" "$share/icons/hicolor/$size/apps/$icon.png"; done
need "the desktop entry" "$share/icons/hicolor/scalable/apps/$icon.svg"
[ "$(sed -n 's/.*<icon type="stock">\(.*\)<.*/\1/p' "$metadata")" = "$icon" ] || fail "the metadata has another icon"
need_all "the metadata" "$root/usr/bin" < <(sed -n 's/.*<binary>\(.*\)<.*/\1/p' "$metadata")
need_all "the metadata" "$share/applications" < <(sed -n 's/.*<launchable.*>\(.*\)<.*/\1/p' "$metadata")
need "Wireshark" "$root"/usr/lib/*/wireshark/plugins/safety-workbench.lua
need "the project" "$share/doc/safety-workbench/copyright"
for program in "$root"/usr/bin/*; do need "${program##*/}" "$share/man/man1/${program##*/}.1.gz"; done
pages=$(zcat "$share"/man/man1/*.gz | sed 's/\\-/-/g; s/\\~/ /g; s/\\&//g')
need_all "a man page" "$root/usr/lib/udev/rules.d" < <(grep -oE '[0-9]+-[a-z-]+\.rules' <<<"$pages")
while read -r file; do
    case $file in */Document/* | */Video/*) [ -e "$build/bin/${file#*/safety-workbench/}" ] || continue ;; esac
    need "a man page" "$root$file"
done < <(grep -oE '/usr/share/.*' <<<"$pages" | sed 's/[ ,.]*$//')
grep -lE '@[A-Za-z_]+@' "$desktop" "$demonstration" "$metadata" && fail "a name was left unfilled"
grep -E '@[A-Za-z_]+@' <<<"$pages" && fail "a name was left unfilled in a man page"

# The man pages have the options that the programs have.
export QT_QPA_PLATFORM=offscreen
for program in safety-workbench-cli safety-workbench-demo virtual-board; do
    diff <("$root/usr/bin/$program" --help | grep -oE '^ .*--[a-z-]+' | grep -oE -- '--[a-z-]+' | sort -u) \
        <(zcat "$share/man/man1/$program.1.gz" | sed 's/\\-/-/g' | grep -oE -- '--[a-z-]+' | sort -u) \
        || fail "$program: options of --help (<) and of the man page (>)"
done

"$root/usr/bin/safety-workbench-cli" campaign "$data/campaigns/smoke.toml" --only crc-32 --virtual >/dev/null 2>&1 \
    || fail "the installed tool does not run the installed campaign"

checked desktop-file-validate "$desktop" "$demonstration"
checked appstreamcli validate --no-net "$metadata"
for page in "$share"/man/man1/*.gz; do
    command -v groff >/dev/null || break
    warnings=$(zcat "$page" | groff -man -ww -Tutf8 -z 2>&1)
    [ -z "$warnings" ] || fail "$page: $warnings"
done

# A file that has been read has a newer access time, where the file system keeps it.
splash=$data/VEK_logo_RGB_web.png
set_unread() { touch -a -d '3 days ago' "$1"; }
was_read() { [ -n "$(find "$1" -amin -60)" ]; }
set_unread "$desktop"
cat "$desktop" >/dev/null
was_read "$desktop" || { echo "no access times here, left out: whether the splash picture is read"; was_read() { true; }; }

# The program, from a folder that has nothing. It may wait for an answer about ports; it must not have ended.
set_unread "$splash"
mkdir "$root/elsewhere"
(cd "$root/elsewhere" && PATH=/nowhere exec "$root/usr/bin/safety-workbench") 2>/dev/null &
running=($!)
eventually was_read "$splash" || fail "safety-workbench does not find its splash picture"
kill "${running[0]}"
wait "${running[0]}" 2>/dev/null
[ $? -eq 143 ] || fail "safety-workbench ended by itself"

# The demonstration, from there too: it finds the data and its board and shows the first page.
set_unread "$splash"
(cd "$root/elsewhere" && PATH=/nowhere exec "$root/usr/bin/safety-workbench-demo" --tour "$root/tour") >/dev/null 2>&1 &
running=($!)
eventually test -s "$root/tour/01-safety-module-cmu.png" || fail "safety-workbench-demo shows no page"
was_read "$splash" || fail "safety-workbench-demo does not find the splash picture"
board=$(cat "/proc/${running[0]}/task/${running[0]}/children" 2>/dev/null)
[ "$(readlink "/proc/${board%% *}/exe")" = "$root/usr/bin/virtual-board" ] || fail "the demonstration has no board of its own"
kill "${running[0]}" 2>/dev/null
wait "${running[0]}" 2>/dev/null

[ $status -eq 0 ] && echo "installed and started from an empty root: all files there"
exit $status
