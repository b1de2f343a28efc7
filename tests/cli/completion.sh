#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The completion knows the verbs, options and modules that the tool knows: completion.sh COMPLETION TOOL
set -u
. "$1"
tool=$2 status=0
fail() { echo "FAIL: $*"; status=1; }
completed() { # words so far, the last one to be completed
    COMP_WORDS=("$tool" "$@")
    COMP_CWORD=$#
    COMPREPLY=()
    _safety_workbench_cli
    printf '%s\n' "${COMPREPLY[@]}" | sort -u
}
options() { grep -oE -- '--[a-z-]+' | grep -v -- --version | sort -u; }
export LC_ALL=C

verbs=$("$tool" 2>&1 | sed 's/.*verbs: //; s/;.*//; s/,//g')
[ -n "$verbs" ] || fail "the tool names no verbs"
[ "$(completed '' | grep -v '^-' | sort)" = "$(tr ' ' '\n' <<<"$verbs" | sort)" ] || fail "verbs"
diff <("$tool" --help | options) <(completed '--' | options) || fail "options of --help (<) and of the completion (>)"
for verb in $verbs; do
    diff <("$tool" "$verb" --help | sed '/^Usage/d' | options) <(completed "$verb" '--' | options) \
        || fail "$verb: options of --help (<) and of the completion (>)"
done
for verb in status inject; do
    modules=$("$tool" "$verb" no-such-module 1 --port none 2>&1 | sed -n 's/.*there are: //; s/,//gp')
    [ "$(tr ' ' '\n' <<<"$modules" | sort)" = "$(completed "$verb" '' | grep -v '^-' | sort)" ] || fail "modules of $verb"
done
[ "$(completed --virtual sta)" = status ] || fail "a verb behind an option"
exit $status
