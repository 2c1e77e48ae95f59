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
\x8f\x82|X-Mms-Priority: High (0x82)
\x94\x80|X-Mms-Sender-Visibility: Hide (0x80)
\x9b\x81|X-Mms-Read-Status: Deleted without being read (0x81)
\x95\x87|X-Mms-Status: Unreachable (0x87)
\x92\x88|X-Mms-Response-Status: Error-unsupported-message (0x88)
\x92\xea|X-Mms-Response-Status: Error-permanent-address-hiding-not-supported (0xEA)
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
\x8c\x80\x8a\x84|the value of X-Mms-Message-Class at offset 3 (0x3) is 0x84, expected: a Text-string or an octet from 0x80 to 0x83
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
\x8c\x80\x84\xa3\x02\x01\x01\x83a\x01\x00\xa6\x01\x01\x01\x83|the data of part 2/1 at offset 16 (0x10) runs past the end of the PDU (0 of 1 octet left)
CASES

# 251 multiparts one inside of the other, of which 250 are decoded; the length of the last is 0.
{
    printf '\x8c\x80\x84\xa3'
    for ((i = 0; i < 251; ++i)); do printf '\x01\x01\x00\xa3'; done
} >pdu
run show pdu
same "nesting: status" 1 "$status"
same "nesting" "mmspdu: pdu: not understood: part 1$(printf '/1%.0s' {1..250}) is left out: it is a multipart nested more than 250 deep" "$(cat err)"
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

# --- recode and check ------------------------------------------------------------------------

# part <title>: what check says behind that title.
part() {
    sed -n "s/^    $1: //p" out
}

# sample|size and difference|what becomes of the message
while IFS='|' read -r name encoding message; do
    sample=$samples/$name.mms
    run check "$sample"
    same "check $name: first line" "$sample: m-" "$(head -n 1 out | grep -o '^.*: m-')"
    same "check $name: encoding" "$encoding" "$(part Encoding)"
    same "check $name: message" "$message" "$(part Message)"
    check_harmless "check $name"
    encodable=$status
    rm -f recoded
    run recode --validate "$sample" recoded
    same "recode $name: status" "$encodable" "$status"
    [[ $status -eq 0 ]] || continue
    # What was encoded once stays as it is.
    "$mmspdu" recode - - <recoded >again
    checks=$((checks + 1))
    cmp recoded again || fail "recode $name: the second time"
    diff <(sed 's/, the default.*//' "$expected/$name.txt" | sort) \
        <("$mmspdu" show recoded | sed 's/, the default.*//' | sort) || fail "recode $name: message"
done <<'CASES'
delivery-ind|gives the same 61 octets|stays the same
read-rec-ind|gives the same 77 octets|stays the same
notification-ind|gives 116 octets, the PDU has 119|stays the same
retrieve-conf-nested|gives 778 octets, the PDU has 774|stays the same but for the order of its headers
send-req-mixed-jpeg|gives 22491 octets, the PDU has 22489|stays the same but for the order of its headers
send-req-related-ucs2|gives 439 octets, the PDU has 441|stays the same but for the order of its headers
hostile-terminal|not possible: a value cannot take its wire form: From: address 1: the text begins with 0x1B|
CASES

# octets|difference|reason|message: "=" stays the same, "order" but for the order of its headers.
while IFS='|' read -r octets difference reason message; do
    printf "$octets" >pdu
    run check pdu
    [[ $message != = ]] || message='stays the same'
    [[ $message != order ]] || message='stays the same but for the order of its headers'
    same "check $octets" "$difference|$reason|$message" \
        "$(part 'First difference')|$(part Reason)|$(part Message)"
done <<'CASES'
\x8c\x82\x98T\x00\x8d\x92\x85\x01\x01|||=
\x98T\x00\x8c\x82|at offset 0 (0x0), X-Mms-Transaction-Id in the PDU, X-Mms-Message-Type in the encoding|X-Mms-Message-Type is one of the leading headers, which have a fixed order|order
\x8c\x86\x85\x01\x01\x8bm\x00|at offset 2 (0x2), Date in the PDU, Message-Id in the encoding|Message-Id is one of the leading headers, which have a fixed order|order
\x8c\x82\x97a\x00\x82c\x00\x97b\x00|at offset 5 (0x5), Cc in the PDU, To in the encoding|the To headers are gathered where the first of them stands|=
\x8c\x82\x96a\x00\x85\x01\x01\x96b\x00|at offset 3 (0x3), in Subject|Subject is repeated, and only its last value is kept|=
\x8c\x82\x96a\x00\x85\x01\x01\x96a\x00|at offset 8 (0x8), Subject in the PDU, the end of the PDU in the encoding|Subject is repeated, and only its last value is kept|=
\x8c\x82\x8d\x92\x8d\x93|at offset 3 (0x3), in X-Mms-Mms-Version|X-Mms-Mms-Version is repeated, and only its last value is kept|=
\x8c\x82\x8d\x80\x8d\x92|at offset 3 (0x3), in X-Mms-Mms-Version|X-Mms-Mms-Version is passed over in decoding|=
\x8c\x82X-App\x00v\x00\x85\x01\x01|at offset 2 (0x2), "X-App" in the PDU, Date in the encoding|"X-App" is passed over in decoding|=
\x8c\x82\xb0\x80\x85\x01\x01|at offset 2 (0x2), Additional-headers in the PDU, Date in the encoding|Additional-headers is passed over in decoding|=
\x8c\x82\x89\x01\x81\x85\x01\x01|at offset 2 (0x2), From in the PDU, Date in the encoding|From is passed over in decoding|=
\x8c\x80\x89\x01\x81\x97a\x00\x84\x83|at offset 8 (0x8), Content-Type in the PDU, X-Mms-Sender-Visibility in the encoding|X-Mms-Sender-Visibility is a default that decoding fills in|order
\x8c\x80\x97a\x00\x94\x80\x89\x01\x81|at offset 2 (0x2), To in the PDU, From in the encoding|a From that asks the network for the address is written anew behind the leading headers|=
\x8c\x80\x97a\x00\x94\x80|at offset 2 (0x2), To in the PDU, From in the encoding|a From that asks the network for the address is added|=
\x8c\x80\x89\x02\x81\x00\x94\x80|at offset 3 (0x3), in From|From is passed over in decoding; a From that asks the network for the address is written anew|=
\x8c\x80\x89\x01\x81\x8f\x81\x94\x80|at offset 5 (0x5), X-Mms-Priority in the PDU, X-Mms-Sender-Visibility in the encoding|an m-send-req leaves out X-Mms-Priority where it has its default value|order
\x8c\x80\x89\x01\x81\x94\x80\x88\x06\x81\x04\xff\xff\xff\xff|at offset 7 (0x7), X-Mms-Expiry in the PDU, the end of the PDU in the encoding|an m-send-req leaves out X-Mms-Expiry where it has its default value|changes: it loses "X-Mms-Expiry: relative, 4294967295 s (49710 days 6 hours 28 minutes 15 seconds)"
\x8c\x80\x89\x01\x81\x94\x80\x87\x03\x81\x01\x00|at offset 7 (0x7), X-Mms-Delivery-Time in the PDU, the end of the PDU in the encoding|an m-send-req leaves out X-Mms-Delivery-Time where it has its default value|changes: it loses "X-Mms-Delivery-Time: relative, 0 s"
\x8c\x86\x98T\x00\x85\x01\x01|at offset 2 (0x2), X-Mms-Transaction-Id in the PDU, Date in the encoding|PDUs of this type are written without X-Mms-Transaction-Id|changes: it loses "X-Mms-Transaction-Id: T"
\x8c\x82\x8aAuto\x00|at offset 3 (0x3), in X-Mms-Message-Class|X-Mms-Message-Class is written as a well-known number instead of a text|=
\x8c\x82\x8aauto\x00|at offset 3 (0x3), in X-Mms-Message-Class|not determined|changes: "X-Mms-Message-Class: auto" becomes "X-Mms-Message-Class: Auto"
\x8c\x82\x85\x02\x00\x01|at offset 3 (0x3), in Date|Date is written in another form, which decodes to the same|=
\x8c\x82\x98\x7fT\x00|at offset 3 (0x3), in X-Mms-Transaction-Id|X-Mms-Transaction-Id is written without an octet 0x7F that its text does not need|=
\x8c\x82\x84\x1f\x03\x83\x81\xea|at offset 3 (0x3), in Content-Type|Content-Type has its length written in as few octets as possible|=
\x8c\x82\x84\x05\x83\x81\x02\x03\xe7|at offset 3 (0x3), in Content-Type|not determined|changes: "Content-Type: Charset: UNKNOWN" becomes "Content-Type: Charset: UTF-8"
\x8c\x82\x97"a<b" <c@d>\x00|at offset 3 (0x3), in To|not determined|changes: "To: "a<b" <c@d>" becomes "To: "a" <b>"
\x8c\x82\x84\xa3\x80\x01\x01\x01\x83a|at offset 4 (0x4), in the number of parts|the number of parts is written in as few octets as possible|=
\x8c\x82\x84\xa3\x01\x80\x01\x01\x83a|at offset 5 (0x5), in the headers length of part 1|the headers length of part 1 is written in as few octets as possible|=
\x8c\x82\x84\xa3\x01\x0b\x01text/plain\x00b|at offset 5 (0x5), in the headers length of part 1|Content-Type of part 1 is written as a well-known number instead of a text|=
\x8c\x82\x84\xa3\x01\x0e\x01\x83Content-ID\x00a\x00b|at offset 5 (0x5), in the headers length of part 1|"Content-ID" of part 1 is written with a well-known number instead of a name|=
\x8c\x82\x84\xa3\x01\x07\x01\x83\x8ea\x00\x8eb\x00b|at offset 5 (0x5), in the headers length of part 1|Content-Location of part 1 is repeated, and only its last value is kept|=
\x8c\x82\x84\xa3\x01\x09\x01\x83X\x00a\x00x\x00a\x00b|at offset 5 (0x5), in the headers length of part 1|"X" of part 1 is repeated, and only its last value is kept|=
\x8c\x82\x84\xa3\x01\x06\x01\x83\xb0\x80\x8ea\x00b|at offset 5 (0x5), in the headers length of part 1|header 0xB0 of part 1 is passed over in decoding|=
\x8c\x82\x84\xa3\x01\x08\x01\x83\xae\x05\x81\x81\xea\x88\x81b|at offset 5 (0x5), in the headers length of part 1|Content-Disposition of part 1 is written in another form, which decodes to the same|=
\x8c\x82\x84\xa3\x01\x07\x01\x83\xae\x04\x81\x86\x22\x00x|at offset 5 (0x5), in the headers length of part 1|not determined|changes: in part 1 it loses "Filename:"
\x8c\x82\x84\xa3\x01\x01\x07\xa6\x01\x04\x01\x83\x8ea\x00x|at offset 6 (0x6), in the data length of part 1|the data length of part 1 is not that of the parts in it|=
\x8c\x82\x84\xa3\x01\x01\x09\xa6\x01\x05\x01\x83\xc0ab\x00x|at offset 6 (0x6), in the data length of part 1|Content-Id of part 1/1 is written with a quotation mark in front|=
\x8c\x82\x98T\x00\x96\x05a\x00|at offset 5 (0x5), what is not understood in the PDU, the end of the PDU in the encoding|decoding ended where the PDU is not understood|=
\x8c\x82\x84\xa3\x02\x01\x01\x83a\x01|at offset 4 (0x4), in the number of parts|only 1 of its parts could be decoded|=
\x8c\x82\x84\xa3\x01\x01\x02\x83a|at offset 6 (0x6), in the data length of part 1|decoding ended where the PDU is not understood|=
CASES

# Messages that cannot be encoded: octets|why. OUT stays as it is.
while IFS='|' read -r octets fault; do
    printf "$octets" >pdu
    printf 'old' >kept
    run recode pdu kept
    same "recode $octets: status" 1 "$status"
    same "recode $octets" "mmspdu: pdu: cannot be encoded: $fault" "$(cat err)"
    same "recode $octets: OUT" old "$(cat kept)"
    run check pdu
    same "check $octets" "1 not possible: $fault" "$status $(part Encoding)"
done <<CASES
\\x8c\\x82\\x97"\\x01B" <a@b>\\x00|a value cannot take its wire form: To: address 1: the text begins with 0x01
\\x8c\\x82\\x97a\\x00\\x97B <$(printf 'a%.0s' {1..321})>\\x00|something required is missing: To: address 2: it was too long to be kept
\\x8c\\x82\\x96\\x05\\x80\\x7f\\xc3\\xbc\\x00|something required is missing: Subject: there is no number for the character set "UNKNOWN"
\\x8c\\x82\\x98\\x7f\\x1bT\\x00|a value cannot take its wire form: X-Mms-Transaction-Id: the text begins with 0x1B
\\x8c\\x86\\x98\\x7f\\x1bT\\x00\\x8b\\x7f\\x7fm\\x00|a value cannot take its wire form: Message-Id: the text begins with 0x7F
\\x8c\\x82\\x84\\x05\\x83\\x85\\x7f\\x02\\x00|a value cannot take its wire form: Content-Type: parameter "Name": the text begins with 0x02
\\x8c\\x82\\x84\\x1f\\x32\\x83Application-ID\\x00$(printf 'a%.0s' {1..33})\\x00|a value cannot take its wire form: Content-Type: parameter "Application-ID": the value is too long, it has 33 octets
\\x8c\\x82\\x84\\x1f\\x84\\x01\\x83$(printf '%0.s\\x85\\x00' {1..256})|a value is out of range: Content-Type: it has 256 parameters, more than 255
\\x8c\\x82\\x84\\xa3\\x02\\x01\\x00\\x83\\x01\\x00\\xa6\\x01\\x06\\x00\\x05\\x83\\x85\\x7f\\x02\\x00|a value cannot take its wire form: part 2/1: Content-Type: parameter "Name": the text begins with 0x02
\\x8c\\x82\\x84\\xa3\\x01\\x05\\x00\\x83\\xc0\\x7f\\x03\\x00|a value cannot take its wire form: part 1: Content-Id: the text begins with 0x03
\\x8c\\x82\\x84\\xa3\\x01\\x08\\x00\\x83\\xae\\x05\\x81\\x86\\x7f\\x04\\x00|a value cannot take its wire form: part 1: Content-Disposition: parameter "Filename": the text begins with 0x04
\\x8c\\x82\\x84\\xa3\\x01\\x06\\x00\\x83X\\x00\\x7f\\x05\\x00|a value cannot take its wire form: part 1: "X": the text begins with 0x05
CASES

# Mandatory headers: with each header left out, for every type and for none, what check says is
# missing is what the library refuses. The headers are those of the table below, by their names.
declare -A header=(
    [X-Mms-Mms-Version]='\x8d\x92' [X-Mms-Transaction-Id]='\x98T\x00' [Message-Id]='\x8bm\x00'
    [X-Mms-Status]='\x95\x81' [X-Mms-Read-Status]='\x9b\x80' [Date]='\x85\x00'
    [From]='\x89\x04\x80ab\x00' [To]='\x97a\x00' [Content-Type]='\x84\x83')
order=(X-Mms-Mms-Version X-Mms-Transaction-Id Message-Id X-Mms-Status X-Mms-Read-Status Date From To
    Content-Type)

# needed <type octet> <header left out>: what is missing then.
needed() {
    local octets='' name
    [[ $1 == none ]] || octets="\\x8c\\x$1"
    for name in "${order[@]}"; do
        [[ $name == "$2" ]] || octets+=${header[$name]}
    done
    printf "$octets" >pdu
    run check pdu
    missing=$(part 'Mandatory headers' | sed 's/^missing: //')
    run recode --validate pdu recoded
    refused=$(sed 's/.*something required is missing: //' err)
    same "$1 without $2" "${refused:-all present}" "$missing"
}

for type in none $(printf '%x ' {128..147}); do
    needs=''
    for left_out in nothing "${order[@]}"; do
        needed "$type" "$left_out"
        case $missing in
        'all present') ;;
        X-Mms-Message-Type) needs=X-Mms-Message-Type ;;
        "$left_out") needs+=" $left_out" ;;
        'one of To, Cc and Bcc') needs+=" recipient" ;;
        *) fail "$type without $left_out: missing: $missing" ;;
        esac
    done
    case $type in
    none) wanted=X-Mms-Message-Type ;;
    80) wanted=' X-Mms-Mms-Version X-Mms-Transaction-Id recipient Content-Type' ;;
    83) wanted=' X-Mms-Mms-Version X-Mms-Transaction-Id X-Mms-Status' ;;
    86) wanted=' X-Mms-Mms-Version Message-Id X-Mms-Status Date To' ;;
    87) wanted=' X-Mms-Mms-Version Message-Id X-Mms-Read-Status To' ;;
    88) wanted=' X-Mms-Mms-Version Message-Id X-Mms-Read-Status Date From To' ;;
    *) wanted=' X-Mms-Mms-Version X-Mms-Transaction-Id' ;;
    esac
    same "mandatory headers of $type" "$wanted" "$needs"
done
for recipient in '\x81a\x00' '\x82a\x00'; do
    printf "\\x8c\\x80\\x98T\\x00\\x8d\\x92$recipient\\x84\\x83" >pdu
    run check pdu
    same "recipient $recipient" "0 all present" "$status $(part 'Mandatory headers')"
done
printf '\x8c\x88\x98T\x00' >pdu
printf 'old' >kept
run recode --validate pdu kept
same "several missing" "1 old mmspdu: pdu: cannot be encoded: something required is missing: X-Mms-Mms-Version, Message-Id, To, X-Mms-Read-Status, Date, From" "$status $(cat kept) $(cat err)"

# Every beginning of a message is encoded as far as it is understood, and decodes to the same; when
# nothing is, nothing is written.
sample=$samples/retrieve-conf-nested.mms
for ((length = 1; length < size; length += 7)); do
    head -c "$length" "$sample" >pdu
    rm -f recoded
    run recode pdu recoded
    understood=$("$mmspdu" show pdu 2>&1 >/dev/null)
    [[ $status -eq ${understood:+1} && $error_lines -eq ${understood:+1} ]] ||
        fail "recode of $length octets: $status, $(cat err)"
    [[ -e recoded || $(cat err) == *'; nothing is written' ]] ||
        fail "recode of $length octets: $(cat err)"
    run check pdu
    # Defaults are filled in behind a header block that is understood.
    [[ $(part Message) == 'stays the same'* || ! -e recoded ||
        ($length -lt $header_block && $(part Message) == 'changes: it gains "X-Mms-Delivery-Report: '*) ]] ||
        fail "check of $length octets: $(part Message)"
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
# recode writes OUT as a whole or leaves it.
delivery=$samples/delivery-ind.mms
mkdir place
cp "$samples/notification-ind.mms" place/same
chmod 640 place/same
ln -s same place/link
run recode place/link place/link
same "IN = OUT" "0  116 640" "$status $(cat err) $(stat -c '%s %a' place/same)"
[[ -L place/link ]] || fail "IN = OUT: the link is gone"
ln -s later place/dangling
run recode "$delivery" place/dangling
same "link without a file" "0 61" "$status $(stat -c %s place/later)"
(umask 027 && "$mmspdu" recode "$delivery" place/new)
same "new file" "61 640" "$(stat -c '%s %a' place/new)"
trouble 'place/none/out: No such file or directory' recode "$delivery" place/none/out
trouble 'place: Is a directory' recode "$delivery" place
trouble '/dev/full: No space left on device' recode "$delivery" /dev/full
trouble 'none: No such file or directory' recode none place/same
# Signal 25 is the one for files that become too large.
(trap '' XFSZ && ulimit -f 1 && LLVM_PROFILE_FILE=/dev/null "$mmspdu" recode "$samples/send-req-mixed-jpeg.mms" place/same 2>err)
same "OUT too large" "2 mmspdu: place/same: File too large" "$? $(cat err)"
same "OUT too large: old size" 116 "$(stat -c %s place/same)"
same "files left" "dangling later link new same" "$(find place -mindepth 1 -printf '%f\n' | sort | paste -sd ' ')"
printf '\x8c\x82\x8f\x85' >faulty
run recode faulty recoded
same "recode of a part" "1 mmspdu: faulty: not understood: the value of X-Mms-Priority at offset 3 (0x3) is 0x85, expected: one octet, 0x80 to 0x82; what was understood is written" "$status $(cat err)"
trouble '/dev/full: No space left on device' recode faulty /dev/full

# check goes on behind a file that it cannot read, and with a name that looks like a list.
cp "$delivery" '[a,b]'
run check none faulty '[a,b]' - <"$delivery"
same "several files" "2 faulty: m-notification-ind ./[a,b]: m-delivery-ind standard input: m-delivery-ind" \
    "$status $(grep -v '^ ' out | paste -sd ' ')"
same "several files: complaints" "mmspdu: none: No such file or directory
mmspdu: faulty: not understood: the value of X-Mms-Priority at offset 3 (0x3) is 0x85, expected: one octet, 0x80 to 0x82; mandatory headers are missing: X-Mms-Mms-Version, X-Mms-Transaction-Id" "$(cat err)"
run check "$delivery" "$delivery"
same "two files without faults" "0 10" "$status $(wc -l <out)"

for usage in '' 'show' 'show a b' 'recode' 'recode a' 'recode a b c' 'recode --lines 1 a b' 'check' \
    'check --validate a' 'other' 'show --lines' 'show --lines x a' 'show --lines -1 a' \
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
    'show --lines 10000 long' "check $samples/delivery-ind.mms" \
    "recode $samples/delivery-ind.mms -" 'recode long -'; do
    read -ra arguments <<<"$full"
    status=0
    "$mmspdu" "${arguments[@]}" >/dev/full 2>err || status=$?
    same "$full > /dev/full: status" 2 "$status"
    same "$full > /dev/full" "mmspdu: standard output: No space left on device" "$(cat err)"
done

for help in '--help' 'show --help' 'recode --help' 'check --help'; do
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
