#!/usr/bin/env bash
# check_exports.sh [--skip-needed] <shared library> <version script> [compile database]
#
# Checks that the library exports the names in the version script, no more and no fewer, that it
# needs the C library only (unless told to skip that), and that it is hardened: linked with full
# RELRO and a stack that is not executable, with stack protectors, and, when the compile database is
# given, compiled with fortified functions. (No call of the library is one that fortification
# changes, so that this does not show in the file.)
set -euo pipefail
export LC_ALL=C

check_needed=yes
if [[ ${1-} == --skip-needed ]]; then
    check_needed=no
    shift
fi
if [[ $# -ne 2 && $# -ne 3 ]]; then
    echo "usage: check_exports.sh [--skip-needed] <shared library> <version script> [database]" >&2
    exit 2
fi
library=$1
map=$2
database=${3-}

failures=0
fail() {
    printf 'FAIL: %s\n' "$*"
    failures=$((failures + 1))
}

# One token a line: names, "{", "}", "global:", "local:". Comments and semicolons are gone.
tokens=$(
    sed -e 's/#.*//' "$map" | tr '\n' ' ' | sed -e 's:/\*\([^*]\|\*\+[^*/]\)*\*\+/: :g' |
        sed -e 's/[{};]/ & /g' -e 's/\(global\|local\)[[:space:]]*:/ \1: /g' |
        tr -s '[:space:]' '\n' | sed -e '/^;\?$/d'
)

# Inside of the braces names are global until "local:" comes; before them stands the node's name.
listed=$(awk '
    $0 == "{" { inside = 1; global = 1; next }
    $0 == "}" { inside = 0; next }
    $0 == "global:" { global = 1; next }
    $0 == "local:" { global = 0; next }
    inside && global { print }' <<<"$tokens" | sort)
nodes=$(awk '$0 == "{" { print previous } { previous = $0 }' <<<"$tokens" | sort -u)

if [[ -z $listed ]]; then
    fail "$map lists no global names"
fi
if grep -q '[]*?[]' <<<"$listed"; then
    fail "$map has patterns where it must name each symbol:"
    grep '[]*?[]' <<<"$listed" | sed 's/^/    /'
fi
repeated=$(uniq -d <<<"$listed")
if [[ -n $repeated ]]; then
    fail "$map lists names more than once:"
    printf '    %s\n' $repeated
fi

# The version node is itself an absolute symbol; the names of the others may carry it after an @.
exported=$(nm -D --defined-only "$library" |
    awk -v nodes="$nodes" '
        BEGIN { count = split(nodes, names, "\n"); for (i = 1; i <= count; i++) node[names[i]] = 1 }
        { name = $NF; sub(/@.*/, "", name) }
        $(NF - 1) == "A" && name in node { next }
        { print name }' | sort -u)

missing=$(comm -23 <(sort -u <<<"$listed") <(printf '%s\n' "$exported"))
extra=$(comm -13 <(sort -u <<<"$listed") <(printf '%s\n' "$exported"))
if [[ -n $missing ]]; then
    fail "listed in $map, but not exported:"
    printf '    %s\n' $missing
fi
if [[ -n $extra ]]; then
    fail "exported, but not listed in $map:"
    printf '    %s\n' $extra
fi

dynamic=$(readelf -dW "$library")
segments=$(readelf -lW "$library")

if [[ $check_needed == yes ]]; then
    needed=$(sed -n 's/.*(NEEDED).*\[\(.*\)\].*/\1/p' <<<"$dynamic" | sort)
    if [[ $needed != libc.so.6 ]]; then
        fail "libraries needed, besides or instead of libc.so.6:" $needed
    fi
fi
if ! grep -Eq '\(BIND_NOW\)|\(FLAGS\).*BIND_NOW|\(FLAGS_1\).*\bNOW\b' <<<"$dynamic"; then
    fail "not linked with -z now"
fi
if ! grep -q 'GNU_RELRO' <<<"$segments"; then
    fail "not linked with -z relro"
fi
stack=$(awk '$1 == "GNU_STACK" { print $(NF - 1) }' <<<"$segments")
if [[ $stack != RW ]]; then
    fail "stack segment flags are '$stack', not 'RW'"
fi
if ! nm -D --undefined-only "$library" | grep -q '__stack_chk_fail'; then
    fail "compiled without stack protectors"
fi
if [[ -n $database ]]; then
    sources=$(grep '"command":' "$database" | grep -c 'mmslib_objects')
    fortified=$(grep '"command":' "$database" | grep 'mmslib_objects' | grep -c 'D_FORTIFY_SOURCE=2')
    if [[ $sources -eq 0 || $fortified -ne $sources ]]; then
        fail "$fortified of $sources sources are compiled with fortified functions"
    fi
fi

if [[ $failures -ne 0 ]]; then
    exit 1
fi
printf '%s exports the %s names listed.\n' "$(basename "$library")" "$(wc -l <<<"$listed")"
