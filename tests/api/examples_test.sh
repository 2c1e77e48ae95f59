#!/usr/bin/env bash
# examples_test.sh <read> <write> <mmspdu> <project directory>
# The example programs work, and README.md shows them as they are.
set -u
read_example=$1 write_example=$2 mmspdu=$3 project=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0
fail() {
    printf 'FAILED: %s\n' "$*"
    failures=$((failures + 1))
}

"$write_example" "$work/out.mms" || fail "write: status $?"
shown=$("$read_example" "$work/out.mms") || fail "read: status $?"
[[ $shown == $'text/plain, 15 octets\nimage/gif, 35 octets' ]] || fail "read printed: $shown"
"$mmspdu" show "$work/out.mms" >"$work/shown" || fail "mmspdu show: status $?"
for fact in "+15550100/TYPE=PLMN" "Hello" "T-0001" "m-send-req"; do
    grep -qF "$fact" "$work/shown" || fail "mmspdu show does not name $fact"
done
"$read_example" "$project/README.md" >"$work/none" && fail "read understood a text file"

# Every line of an example stands in the README, indented, in one piece.
for example in read write; do
    sed 's/^\(.\)/    \1/' "$project/examples/$example.c" >"$work/indented"
    [[ $(<"$project/README.md") == *"$(<"$work/indented")"* ]] ||
        fail "README.md does not show examples/$example.c as it is"
done
exit $((failures != 0))
