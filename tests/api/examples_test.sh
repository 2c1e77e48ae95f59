#!/usr/bin/env bash
# examples_test.sh <read> <write> <message> <mmspdu> <project directory>
# The example programs work, and README.md shows them as they are.
set -u
read_example=$1 write_example=$2 message_example=$3 mmspdu=$4 project=$5
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

printed=$("$message_example" "$work/message.mms") || fail "message: status $?"
[[ $printed == $'Hello\nto +15550100/TYPE=PLMN\nto bob@example.net\ntext/plain, 12 octets' ]] ||
    fail "message printed: $printed"
"$mmspdu" recode --validate "$work/message.mms" "$work/again" || fail "mmspdu recode: status $?"

# Every line of an example stands in the README, indented, in one piece.
for example in read.c write.c message.cpp; do
    sed 's/^\(.\)/    \1/' "$project/examples/$example" >"$work/indented"
    [[ $(<"$project/README.md") == *"$(<"$work/indented")"* ]] ||
        fail "README.md does not show examples/$example as it is"
done
exit $((failures != 0))
