#!/usr/bin/env python3
"""Writes the sample PDUs of our own making next to this file.

    samples/make.py            writes them
    samples/make.py --check    says which of the files are not what it would write
"""

import pathlib
import sys

HERE = pathlib.Path(__file__).resolve().parent


def uintvar(number: int) -> bytes:
    """Seven bits an octet, highest first; all octets but the last have the top bit set."""
    octets = [number & 0x7F]
    while number := number >> 7:
        octets.append(0x80 | number & 0x7F)
    return bytes(reversed(octets))


def sized(value: bytes) -> bytes:
    """The value with its length in front."""
    if len(value) <= 30:
        return bytes([len(value)]) + value
    return b"\x1f" + uintvar(len(value)) + value


def text(octets: bytes) -> bytes:
    """A text string: quoted if its first octet could be taken for something else."""
    return (b"\x7f" if octets[:1] >= b"\x80" else b"") + octets + b"\x00"


def utf8(octets: bytes) -> bytes:
    """An encoded string in UTF-8 (character set 106)."""
    return sized(b"\xea" + text(octets))


def long_integer(number: int) -> bytes:
    octets = number.to_bytes((number.bit_length() + 7) // 8 or 1, "big")
    return bytes([len(octets)]) + octets


def part(content_type: bytes, headers: bytes, data: bytes) -> bytes:
    heading = content_type + headers
    return uintvar(len(heading)) + uintvar(len(data)) + heading + data


def multipart(*parts: bytes) -> bytes:
    return uintvar(len(parts)) + b"".join(parts)


# The sender's display name is in UTF-8.
NOTIFICATION_IND = b"".join([
    b"\x8c\x82",                                            # X-Mms-Message-Type: m-notification-ind
    b"\x98" + text(b"N-2026-0042"),                         # X-Mms-Transaction-Id
    b"\x8d\x92",                                            # X-Mms-MMS-Version: 1.2
    b"\x89" + sized(                                        # From: an address is present
        b"\x80" + utf8('"Zoë" <+15550100/TYPE=PLMN>'.encode())),
    b"\x96" + text(b"Harbour at dawn"),                     # Subject
    b"\x8a\x80",                                            # X-Mms-Message-Class: Personal
    b"\x8e" + long_integer(48213),                          # X-Mms-Message-Size
    b"\x88" + sized(b"\x81" + long_integer(259200)),        # X-Mms-Expiry: in three days
    b"\x83" + text(b"http://mmsc.example.net/m/2026-0042"),  # X-Mms-Content-Location
])

SMIL = b"""\
<smil><head><layout><root-layout width="160" height="120"/>\
<region id="Image" width="100%" height="60%" fit="meet"/>\
<region id="Text" top="60%" width="100%" height="40%" fit="scroll"/></layout></head>\
<body><par dur="5000ms"><img src="dot.gif" region="Image"/>\
<text src="greeting.txt" region="Text"/></par></body></smil>"""

# One white pixel.
GIF = b"".join([
    b"GIF89a",
    b"\x01\x00\x01\x00\x80\x00\x00",                # screen of 1 by 1, two colours
    b"\xff\xff\xff\x00\x00\x00",                    # white, black
    b"\x2c\x00\x00\x00\x00\x01\x00\x01\x00\x00",    # image of 1 by 1 at 0, 0
    b"\x02\x02\x44\x01\x00",                        # pixel data
    b"\x3b",                                        # end
])

# A related message with a SMIL part to start with, and an alternative part with parts of its own.
RETRIEVE_CONF_NESTED = b"".join([
    b"\x8c\x84",                                            # X-Mms-Message-Type: m-retrieve-conf
    b"\x98" + text(b"R-2026-0042"),                         # X-Mms-Transaction-Id
    b"\x8d\x92",                                            # X-Mms-MMS-Version: 1.2
    b"\x8b" + text(b"2026-0042@mmsc.example.net"),          # Message-ID
    b"\x85" + long_integer(1768464000),                     # Date: 2026-01-15 08:00:00 UTC
    b"\x89" + sized(b"\x80" + text(b"+15550100/TYPE=PLMN")),  # From: an address is present
    b"\x97" + text(b"+15550101/TYPE=PLMN"),                 # To
    b"\x97" + text(b"bob@example.net"),                     # To
    b"\x96" + utf8("Grüße vom Hafen".encode()),             # Subject
    b"\x8a\x80",                                            # X-Mms-Message-Class: Personal
    b"\x8f\x81",                                            # X-Mms-Priority: Normal
    b"\x84" + sized(                                        # Content-Type: multipart/related
        b"\xb3"
        + b"\x8a" + text(b"<smil>")                         #   Start
        + b"\x89" + text(b"application/smil")),             #   Type
    multipart(
        part(
            text(b"application/smil"),                      # Content-Type: application/smil
            b"\xc0\x22" + text(b"<smil>"),                  # Content-ID
            SMIL,
        ),
        part(
            sized(                                          # Content-Type: text/plain
                b"\x83"
                + b"\x81\xea"                               #   Charset: UTF-8
                + b"\x85" + text(b"greeting.txt")),         #   Name
            b"\x8e" + text(b"greeting.txt")                 # Content-Location
            + text(b"Content-Duration") + text(b"5")        # Content-Duration, by name
            + text(b"X-Foo") + text(b"bar"),                # X-Foo, by name
            "Schöne Grüße – привет, 世界 🙂\n".encode(),
        ),
        part(
            b"\x9d",                                        # Content-Type: image/gif
            b"\x8e" + text(b"dot.gif")                      # Content-Location
            + b"\xae" + sized(                              # Content-Disposition: attachment
                b"\x81"
                + b"\x86" + text(b"dot.gif")),              #   Filename
            GIF,
        ),
        part(
            b"\xa6",                                        # Content-Type: multipart/alternative
            b"\xc0\x22" + text(b"<alternative>"),           # Content-ID
            multipart(
                part(
                    sized(b"\x83" + b"\x81\x83"),           # Content-Type: text/plain, US-ASCII
                    b"",
                    b"See you tomorrow.\n",
                ),
                part(
                    sized(b"\x82" + b"\x81\xea"),           # Content-Type: text/html, UTF-8
                    b"",
                    "<p>See you <b>tomorrow</b> – at 8.</p>\n".encode(),
                ),
            ),
        ),
    ),
])

DELIVERY_IND = b"".join([
    b"\x8c\x86",                                            # X-Mms-Message-Type: m-delivery-ind
    b"\x8d\x92",                                            # X-Mms-MMS-Version: 1.2
    b"\x8b" + text(b"2026-0042@mmsc.example.net"),          # Message-ID
    b"\x97" + text(b"+15550101/TYPE=PLMN"),                 # To
    b"\x85" + long_integer(1768467725),                     # Date: 2026-01-15 09:02:05 UTC
    b"\x95\x81",                                            # X-Mms-Status: Retrieved
])

CLEAR_SCREEN = b"\x1b[2J\x1b[H"         # escape sequence: clears the screen
RED = b"\x1b[31m"                       # escape sequence: red from here on
SET_TITLE = b"\x1b]0;owned\x07"         # escape sequence: the title of the terminal's window
C1_RED = "\u009b31m".encode()           # the same as RED, with the one-character introducer
REVERSED = "\u202e".encode()            # bidi override: what follows reads from right to left
ISOLATE = "\u2067".encode()             # bidi isolate, from right to left
INVALID = b"\xff\xc3(\xe2\x82\xed\xa0\x80"  # stray octet, two cut-off sequences, a surrogate

# Text that would take over a terminal if it were printed as it is.
HOSTILE_TERMINAL = b"".join([
    b"\x8c\x80",                                            # X-Mms-Message-Type: m-send-req
    b"\x98" + text(b"H-2026-0042"),                         # X-Mms-Transaction-Id
    b"\x8d\x92",                                            # X-Mms-MMS-Version: 1.2
    b"\x89" + sized(b"\x80" + utf8(                         # From: an address is present
        b'"' + RED + b"Eve" + REVERSED + b"knaB" + INVALID + b'" <+15550166/TYPE=PLMN>')),
    b"\x97" + text(b"+15550101/TYPE=PLMN"),                 # To
    b"\x96" + utf8(                                         # Subject
        b"Your " + CLEAR_SCREEN + b"bill " + SET_TITLE + C1_RED + REVERSED + b"diap" + INVALID),
    b"\x84\xa3",                                            # Content-Type: multipart/mixed
    multipart(
        part(
            sized(                                          # Content-Type: text/plain
                b"\x83"
                + b"\x81\xea"                               #   Charset: UTF-8
                + b"\x85" + text(                           #   Name
                    b"bill" + SET_TITLE + REVERSED + b"fdp.exe")),
            b"\xae" + sized(                                # Content-Disposition: attachment
                b"\x81"
                + b"\x86" + text(                           #   Filename
                    b"../" + RED + b"bill" + REVERSED + b"fdp" + INVALID + b".exe")),
            b"first line\r" + CLEAR_SCREEN + b"over the first line\n"
            + SET_TITLE + C1_RED + ISOLATE + b"second line\x08\x08\x00\x7f" + INVALID + b"\n",
        ),
    ),
])

FILES = {
    "notification-ind.mms": NOTIFICATION_IND,
    "retrieve-conf-nested.mms": RETRIEVE_CONF_NESTED,
    "delivery-ind.mms": DELIVERY_IND,
    "hostile-terminal.mms": HOSTILE_TERMINAL,
}


def main() -> int:
    if sys.argv[1:] == ["--check"]:
        differing = [name for name, octets in FILES.items()
                     if not (HERE / name).is_file() or (HERE / name).read_bytes() != octets]
        for name in differing:
            print(f"{name} is not what make.py writes", file=sys.stderr)
        if not differing:
            print(f"{len(FILES)} files are what make.py writes.")
        return 1 if differing else 0
    if sys.argv[1:]:
        print(__doc__, file=sys.stderr)
        return 2
    for name, octets in FILES.items():
        (HERE / name).write_bytes(octets)
        print(f"{name}: {len(octets)} octets")
    return 0


if __name__ == "__main__":
    sys.exit(main())
