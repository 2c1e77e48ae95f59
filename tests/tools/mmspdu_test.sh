#!/usr/bin/env bash
# Checks what mmspdu prints and how it ends.
#
#     mmspdu_test.sh <mmspdu> <samples directory>
#
# PDUs are written in the form of printf.
# shellcheck disable=SC2059
set -uo pipefail

mmspdu=$1
samples=$(cd "$2" && pwd -P) || exit 1
expected=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd -P)/expected
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
export LC_ALL=C.UTF-8

checks=0
failures=0

fail() {
    failures=$((failures + 1))
    printf 'FAILED: %s\n' "$*"
}

# same <what> <expected> <actual>
same() {
    checks=$((checks + 1))
    [[ $2 == "$3" ]] || fail "$1"$'\n'"  expected: $2"$'\n'"  actual:   $3"
}

# run <argument>...: leaves status, out and err (files), and the number of lines in err.
run() {
    status=0
    "$mmspdu" "$@" >out 2>err || status=$?
    error_lines=$(wc -l <err)
}

# What may reach a terminal: valid UTF-8 without control or invisible format characters.
check_harmless() {
    checks=$((checks + 1))
    iconv -f UTF-8 -t UTF-8 out >/dev/null 2>&1 || fail "$1: the output is not UTF-8"
    if tr -d '\n' <out | grep -qP '[\x{0}-\x{1f}\x{7f}-\x{9f}\x{61c}\x{200b}-\x{200f}\x{2028}-\x{202e}\x{2060}-\x{206f}\x{feff}\x{fff9}-\x{fffb}\x{e0000}-\x{e007f}]'; then
        fail "$1: the output has control characters"
    fi
}

check_ascii() {
    checks=$((checks + 1))
    ! LC_ALL=C grep -q '[^ -~]' out || fail "$1: the output is not ASCII"
}

# --- the samples -----------------------------------------------------------------------------

for sample in "$samples"/*.mms; do
    name=$(basename "$sample" .mms)
    run show "$sample"
    same "$name: status" 0 "$status"
    same "$name: standard error" "" "$(cat err)"
    checks=$((checks + 1))
    diff -u "$expected/$name.txt" out || fail "$name: output"
    check_harmless "$name"
    LC_ALL=C run show "$sample"
    check_ascii "$name in the C locale"
done
same "files with expected output" "$(find "$expected" -name '*.txt' | wc -l)" \
    "$(find "$samples" -name '*.mms' | wc -l)"

run show - <"$samples/retrieve-conf-nested.mms"
checks=$((checks + 1))
diff -u "$expected/retrieve-conf-nested.txt" out || fail "standard input"

same "unknown locale" 'From: "Zo\u{EB}" <+15550100/TYPE=PLMN> (UTF-8)' \
    "$(env LC_ALL=no_such_LOCALE "$mmspdu" show "$samples/notification-ind.mms" | grep From)"

# --- single values ---------------------------------------------------------------------------

# shows <octets for printf> <expected lines, joined by "/">: the header lines of a
# m-notification-ind, which has no defaults, without that of its type.
shows() {
    printf "\\x8c\\x82$1" >pdu
    run show pdu
    same "$1: status" 0 "$status"
    same "$1" "$2" "$(tail -n +2 out | paste -sd '/')"
    check_harmless "$1"
}

while IFS='|' read -r octets lines; do
    [[ -z $octets ]] || shows "$octets" "$lines"
done <<'CASES'
\x8d\x9f|X-Mms-Mms-Version: 1
\x8d\x80|
\x86\x80|X-Mms-Delivery-Report: Yes (0x80)
\x8f\x80|X-Mms-Priority: Low (0x80)
\x8f\x82|X-Mms-Priority: High (0x82)
\x94\x80|X-Mms-Sender-Visibility: Hide (0x80)
\x94\x81|X-Mms-Sender-Visibility: Show (0x81)
\xbb\x80|X-Mms-Drm-Content: Yes (0x80)
\x9b\x81|X-Mms-Read-Status: Deleted without being read (0x81)
\x95\x80|X-Mms-Status: Expired (0x80)
\x95\x84|X-Mms-Status: Unrecognised (0x84)
\x95\x87|X-Mms-Status: Unreachable (0x87)
\x92\x80|X-Mms-Response-Status: Ok (0x80)
\x92\x88|X-Mms-Response-Status: Error-unsupported-message (0x88)
\x92\xc4|X-Mms-Response-Status: Error-transient-partial-success (0xC4)
\x92\xe4|X-Mms-Response-Status: Error-permanent-message-not-found (0xE4)
\x92\xea|X-Mms-Response-Status: Error-permanent-address-hiding-not-supported (0xEA)
\x99\xc0|X-Mms-Retrieve-Status: Error-transient-failure (0xC0)
\x99\xe3|X-Mms-Retrieve-Status: Error-permanent-content-unsupported (0xE3)
\x85\x00|Date: 1970-01-01 00:00:00 UTC (0 s)
\x85\x04\xff\xff\xff\xff|Date: 2106-02-07 06:28:15 UTC (4294967295 s)
\x88\x06\x80\x04\x3c\x58\x00\x00|X-Mms-Expiry: absolute, 2002-01-30 14:15:28 UTC (1012400128 s)
\x87\x05\x81\x03\x01\x51\xbd|X-Mms-Delivery-Time: relative, 86461 s (1 day 1 minute 1 second)
\x88\x03\x81\x01\x3b|X-Mms-Expiry: relative, 59 s
\x8e\x01\x01|X-Mms-Message-Size: 1 octet
\xb7app\x00\xb8reply\x00|X-Mms-Applic-ID: app/X-Mms-Reply-Applic-ID: reply
\x8ax-own\x00|X-Mms-Message-Class: x-own
\x8a\x83|X-Mms-Message-Class: Auto
\x93\x06\x84\x7f\xfcbe\x00|X-Mms-Response-Text: übe (ISO-8859-1)
\x96a\\b\x0ac\x09\x00|Subject: a\\b\nc\t
\x96\x05\x80\x7f\xc3\xbc\x00|Subject: ü (UNKNOWN)
\x96\x08\x02\x03\xe8\x7f\xfeab\x00|Subject: ﹡\x62 (ISO-10646-UCS-2)
\x96\x07\x83\x7fa\xe9\xef\xbb\x00|Subject: a\xE9\xEF\xBB (US-ASCII)
\x96\x0a\xea\x7f\xef\xbb\xbf\xf4\x90\x80\x80\x00|Subject: \u{FEFF}\xF4\x90\x80\x80 (UTF-8)
\x97a@b\x00\x82"C, D" <c@d>\x00\x81<e@f>\x00\x97g\x00|To: a@b/To: g/Cc: "C, D" <c@d>/Bcc: e@f
\x89\x01\x81|
CASES

# body <octets of the content type> <octets of the body> <expected lines, joined by "/">: the bar
# in front of each line of the body is written "!" here.
body() {
    printf "\\x8c\\x82\\x84$1$2" >pdu
    run show --lines 3 pdu
    same "$1 $2: status" 0 "$status"
    same "$1 $2" "$3" "$(sed -n '/^Body/,$p' out | tail -n +2 | sed 's/^|/!/' | paste -sd '/')"
    check_harmless "$1 $2"
}

while IFS='|' read -r type octets lines; do
    [[ -z $type ]] || body "$type" "$octets" "$lines"
done <<'CASES'
\x83|a|! a
\x83|a\x0d\x0ab\x0dc\x0d\x0d\x0a\x0a|! a/! b\rc\r/! 
\x83|1\x0a2\x0a3\x0a4|! 1/! 2/! 3/(1 more line)
\x83|1\x0a2\x0a3\x0a4\x0a5\x0a|! 1/! 2/! 3/(2 more lines)
\x83|\xef\xbf\xbe\xef\xb7\x90\xf3\xa0\x81\x81\xe2\x81\xaa\xc2\xad|! \u{FFFE}\u{FDD0}\u{E0041}\u{206A}\u{AD}
\x83|\xc0\x80\xe0\x9f\xbf\xf0\x8f\xbf\xbf\xf0\x9f\x99\x82|! \xC0\x80\xE0\x9F\xBF\xF0\x8F\xBF\xBF🙂
\x03\x83\x81\x84|\xa4\x85|! ¤\u{85}
\x03\x83\x81\x8a|\xe1\xff\xae|! α\xFF\xAE
\x03\x83\x81\x8c|\xfd\xdd|! ıİ
\x0e\x83\x81iso-8859-15\x00|\xa4|! €
\x0e\x83\x81../../evil1\x00|\xc3\xbc\xfc|! ü\xFC
\x05\x83\x81\x02\x03\xf4|A+AOQ-b+2D3eAA-c+-d+!e+A-\x80+2AA-|! Aäb😀c+d\x2B!e\x41\x80\u{D800}
\x05\x83\x81\x02\x03\xf7|\xff\xfeA\x00\x3d\xd8\x00\xde\x00\xd8b|! A😀\u{D800}\x62
\x05\x83\x81\x02\x03\xf7|\x00A|! A
\x05\x83\x81\x02\x03\xf5|\xfe\xff\x00A\x00\x0a|! \u{FEFF}A
\x05\x83\x81\x02\x03\xf6|A\x00\xac\x20|! A€
\x05\x83\x81\x02\x03\xe8|\x00A\x00\x0d\x00\x0a\xff\xfe|! A/! \u{FFFE}
\x05\x83\x81\x02\x03\xe8|\xff\xfeA\x00|! A
application/smil\x00|<|! <
Image/SVG+XML\x00|<|! <
\xa7|<|! <
\x9e|<|
CASES

# --- PDUs that are not understood ------------------------------------------------------------

# refused <octets for printf> <fault>: shown, named and told by the status.
refused() {
    printf "$1" >pdu
    run show pdu
    same "$1: status" 1 "$status"
    same "$1" "mmspdu: pdu: not understood: $2" "$(cat err)"
    same "$1: last line" "Not understood: $2" "$(tail -n 1 out)"
    check_harmless "$1"
}

while IFS='|' read -r octets fault; do
    [[ -z $fault ]] || refused "$octets" "$fault"
done <<'CASES'
|there are no octets
\x8c|the PDU ends at offset 1 (0x1), where the value of X-Mms-Message-Type is expected
\x01|the octet 0x01 at offset 0 (0x0) begins neither a header nor the name of one
\x8c\x80\x89\x04\x80|the value of From at offset 3 (0x3) runs past the end of the PDU (1 of 4 octets left)
\x8c\x80\x97\x1f\x81|the value of To at offset 3 (0x3) has a length that the end of the PDU cuts off
\x8c\x80\x97\x1f\xff\xff\xff\xff\x7f|the value of To at offset 3 (0x3) has a length that is no Uintvar of 32 bits
\x8c\x80\x98abc|the value of X-Mms-Transaction-Id at offset 3 (0x3) is a text without a zero octet before the end of the PDU
\x8c\x80X-A|the name of a header at offset 2 (0x2) is a text without a zero octet before the end of the PDU
\x8c\x80X-\x1b[2J\x00\x05|the value of "X-\u{1B}[2J" at offset 9 (0x9) runs past the end of the PDU (0 of 5 octets left)
\x8c\x80\xb0\x05|the value of Additional-headers at offset 3 (0x3) runs past the end of the PDU (0 of 5 octets left)
\x8c\x80\x8f\x85|the value of X-Mms-Priority at offset 3 (0x3) is 0x85, expected: one octet, 0x80 to 0x82
\x8c\x80\x99\xff|the value of X-Mms-Retrieve-Status at offset 3 (0x3) is 0xFF, expected: one octet, 0x80, 0xC0 to 0xC2, 0xE0 to 0xE3
\x8c\x80\x85\x05\x01\x02\x03\x04\x05|the value of Date at offset 3 (0x3) has the wrong form, expected: a Long-integer of at most 4 octets
\x8c\x80\x88\x04\x81\x01\x05\x00|the value of X-Mms-Expiry at offset 3 (0x3) fills only 4 of its 5 octets, expected: a length, the octet 0x80 or 0x81, and a Long-integer of at most 4 octets
\x8c\x80\x84\x05\xa3\x81\xea\x85a|the value of Content-Type at offset 3 (0x3) has the wrong form, expected: a media type, with parameters or without; parameter 2 at offset 7 (0x7) cannot be read within the value's 5 octets
\x8c\x80\x84abc\x00|the value of Content-Type at offset 3 (0x3) has the wrong form, expected: a media type, with parameters or without
\x8c\x80\x84\xa3|the PDU ends at offset 4 (0x4), where the number of parts is expected
\x8c\x80\x84\xa3\x81|the number of parts at offset 4 (0x4) is a Uintvar that the end of the PDU cuts off
\x8c\x80\x84\xa3\x00abc|3 octets left over after the last part, at offset 5 (0x5)
\x8c\x80\x84\xa3\x01\x01|the PDU ends at offset 6 (0x6), where the data length of part 1 is expected
\x8c\x80\x84\xa3\x01\x00\x00|the header block of part 1 ends at offset 7 (0x7), where the Content-Type of part 1 is expected
\x8c\x80\x84\xa3\x01\x01\x03\x83ab|the data of part 1 at offset 8 (0x8) runs past the end of the PDU (2 of 3 octets left)
\x8c\x80\x84\xa3\x01\x01\x03\x83|the data of part 1 at offset 8 (0x8) runs past the end of the PDU (0 of 3 octets left)
\x8c\x80\x84\xa3\x01\x04\x00\x83\x8e\x00|the PDU ends at offset 10 (0xA), where the header block of part 1 goes on (3 of 4 octets left)
\x8c\x80\x84\xa3\x01\x03\x00\x83\x8ea|the value of Content-Location of part 1 at offset 9 (0x9) is a text without a zero octet before the end of the header block of part 1
\x8c\x80\x84\xa3\x01\x06\x00\x83\xae\x03\x81\x86a|the value of Content-Disposition of part 1 at offset 9 (0x9) has the wrong form, expected: a length, the octet 0x80 or 0x81, and parameters; parameter 1 at offset 11 (0xB) cannot be read within the value's 3 octets
\x8c\x80\x84\xa3\x01\x06\x00\x83X-F\x00\x85|the value of "X-F" of part 1 at offset 12 (0xC) is 0x85, expected: a Text-string
\x8c\x80\x84\xa3\x02\x01\x01\x83a\x01\x00\xa6\x01\x01\x01\x83|the data of part 2.1 at offset 16 (0x10) runs past the end of the PDU (0 of 1 octet left)
CASES

# 251 multiparts one inside of the other, of which 250 are decoded; the length of the last is 0.
{
    printf '\x8c\x80\x84\xa3'
    for ((i = 0; i < 251; ++i)); do printf '\x01\x01\x00\xa3'; done
} >pdu
run show pdu
same "nesting: status" 1 "$status"
same "nesting" "mmspdu: pdu: not understood: part 1$(printf '.1%.0s' {1..250}) is left out: it is a multipart nested more than 250 deep" "$(cat err)"
same "nesting: parts shown" 250 "$(grep -c '^ *Part' out)"

# 1000 parts, of which 999 are decoded.
{
    printf '\x8c\x80\x84\xa3\x87\x68'
    for ((i = 0; i < 1000; ++i)); do printf '\x01\x00\x83'; done
} >pdu
run show pdu
same "1000 parts: last part" "Part 999: 0 octets" "$(grep '^Part' out | tail -n 1)"
same "1000 parts" "mmspdu: pdu: not understood: part 1000 at offset 3003 (0xBBB) is more than the 999 parts that are decoded" "$(cat err)"

# Every beginning of a message that ends inside of its body says so, on one line.
sample=$samples/retrieve-conf-nested.mms
header_block=166
size=$(stat -c %s "$sample")
for ((length = header_block; length < size; length += 3)); do
    head -c "$length" "$sample" >pdu
    run show pdu
    [[ $status -eq 1 && $error_lines -eq 1 ]] || fail "first $length octets: $status, $(cat err)"
    [[ $(tail -n 1 out) == "Not understood: "* ]] || fail "first $length octets: $(tail -n 1 out)"
    checks=$((checks + 1))
done

# --- files and usage -------------------------------------------------------------------------

# trouble <what is said> <argument>...
trouble() {
    run "${@:2}"
    same "${*:2}: status" 2 "$status"
    same "${*:2}" "mmspdu: $1" "$(cat err)"
}

truncate -s 4G large
trouble 'large: too large: a PDU has less than 4 GiB' show large
rm large
trouble 'none: No such file or directory' show none
trouble '.: Is a directory' show .
trouble 'standard input: Is a directory' show - <.
trouble 'no\n\u{1B}[31m: No such file or directory' show $'no\n\e[31m'
for usage in '' 'show' 'show a b' 'other' 'show --lines' 'show --lines x a' 'show --lines -1 a' \
    'show --lines 4294967296 a' 'show --what a' '--what'; do
    read -ra arguments <<<"$usage"
    run "${arguments[@]}"
    same "usage '$usage': status" 2 "$status"
    same "usage '$usage': lines of complaint" 1 "$error_lines"
    same "usage '$usage': output" "" "$(cat out)"
done

printf '\x8c\x80\x84\x83' >long
for ((i = 0; i < 5000; ++i)); do printf 'some text\n'; done >>long
for full in "show $samples/delivery-ind.mms" 'show pdu' '--help' '--version' \
    'show --lines 10000 long'; do
    read -ra arguments <<<"$full"
    status=0
    "$mmspdu" "${arguments[@]}" >/dev/full 2>err || status=$?
    same "$full > /dev/full: status" 2 "$status"
    same "$full > /dev/full" "mmspdu: standard output: No space left on device" "$(cat err)"
done

for help in '--help' 'show --help'; do
    read -ra arguments <<<"$help"
    run "${arguments[@]}"
    same "$help: status" 0 "$status"
    same "$help: exit statuses" 3 "$(grep -c '^  [012]  ' out)"
done
run --version
same "--version: status" 0 "$status"
grep -qE '^mmspdu [0-9]+\.[0-9]+\.[0-9]+$' out || fail "--version: $(cat out)"

printf '%d checks, %d failures\n' "$checks" "$failures"
[[ $failures -eq 0 ]]
