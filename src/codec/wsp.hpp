// WSP primitives on Reader and Writer. A failing read leaves the Reader and the result alone.
#pragma once

#include "codec/reader.hpp"
#include "codec/writer.hpp"
#include "util/text.hpp"

#include <span>

namespace mms {

constexpr uint8_t longest_short_length = 30;
constexpr uint8_t length_quote = 31;
constexpr uint8_t longest_uintvar = 5;
constexpr uint8_t longest_length = 1 + longest_uintvar; // of a Value-length
constexpr uint8_t text_quote = 0x7F;
constexpr uint8_t string_quote = 0x22;

inline bool failed(MMS_Status status) { return status != MMS_STATUS_OK; }

inline MMS_Status read_octet(Reader &in, uint8_t low, uint8_t high, uint8_t &value) {
    if (in.empty()) {
        return MMS_STATUS_NO_ROOM;
    }
    if (in.front() < low || in.front() > high) {
        return MMS_STATUS_OUT_OF_RANGE;
    }
    value = in.front();
    in.skip(1);
    return MMS_STATUS_OK;
}

inline MMS_Status read_short_integer(Reader &in, uint8_t &value) {
    if (in.empty()) {
        return MMS_STATUS_NO_ROOM;
    }
    if (in.front() < 0x80) {
        return MMS_STATUS_WRONG_FORM;
    }
    value = in.front() & 0x7F;
    in.skip(1);
    return MMS_STATUS_OK;
}

inline MMS_Status read_short_length(Reader &in, uint8_t &value) {
    if (in.empty()) {
        return MMS_STATUS_NO_ROOM;
    }
    if (in.front() > longest_short_length) {
        return MMS_STATUS_WRONG_FORM;
    }
    value = in.front();
    in.skip(1);
    return MMS_STATUS_OK;
}

MMS_Status read_long_integer(Reader &in, uint32_t &value);
MMS_Status read_integer(Reader &in, uint32_t &value);
MMS_Status read_uintvar(Reader &in, uint32_t &value);
MMS_Status read_value_length(Reader &in, uint32_t &value);
// A Value-length and the Reader of as many octets, which must be there; `in` then stands at them.
MMS_Status read_sized(Reader &in, Reader &value);
// The text stays where it is, a zero octet behind it, which the Reader covers.
MMS_Status read_text(Reader &in, TextView &text);
MMS_Status read_quoted(Reader &in, TextView &text);
// As `read_text` and `read_quoted` into a new heap text.
MMS_Status copy_read(MMS_Status status, TextView text, OwnedText &copy);

// The octets of the field value at the front, its length prefix included.
MMS_Status measure_field(Reader in, uint32_t &length);
// Passes over a field value.
MMS_Status skip_field(Reader &in);

inline void write_short_integer(Writer &out, uint32_t value) {
    if (value > 0x7F) {
        out.fail(MMS_STATUS_WRONG_FORM);
    }
    out.octet(static_cast<uint8_t>(value | 0x80));
}
inline void write_short_length(Writer &out, uint32_t value) {
    if (value > longest_short_length) {
        out.fail(MMS_STATUS_WRONG_FORM);
    }
    out.octet(static_cast<uint8_t>(value));
}
void write_long_integer(Writer &out, uint32_t value);
void write_integer(Writer &out, uint32_t value);
// The octets of a Uintvar.
constexpr uint32_t uintvar_size(uint32_t value) {
    uint32_t size = 1;
    while ((value >>= 7) != 0) {
        ++size;
    }
    return size;
}
void write_long_uintvar(Writer &out, uint32_t value);
inline void write_uintvar(Writer &out, uint32_t value) {
    if (value < 0x80) {
        out.octet(static_cast<uint8_t>(value));
    } else {
        write_long_uintvar(out, value);
    }
}
void write_value_length(Writer &out, uint32_t value);
// What `write_value` writes, with its length in front in the form of `write_length`; the length
// leaves out so many octets at the start of the value. It is known afterwards; for one of more than
// an octet the value moves. Up to the longest Short-length every form is that octet.
template <typename Write>
void write_measured(Writer &out, void (*write_length)(Writer &, uint32_t), uint32_t uncounted,
                    Write write_value) {
    const Writer::Span span(out);
    const uint32_t start = out.count();
    out.claim(1);
    write_value(out);
    if (!out.ok()) {
        return;
    }
    const uint32_t length = out.count() - start - 1 - uncounted;
    if (length <= longest_short_length) {
        const auto octet = static_cast<uint8_t>(length);
        out.overwrite(start, &octet, 1);
        return;
    }
    uint8_t octets[longest_length];
    Writer prefix(octets, sizeof octets, false);
    write_length(prefix, length);
    out.insert(start + 1, prefix.count() - 1);
    out.overwrite(start, octets, prefix.count());
}
// What `write_value` writes, with its Value-length in front.
template <typename Write>
void write_sized(Writer &out, Write write_value) {
    write_measured(out, write_value_length, 0, write_value);
}
// The pieces make up one text.
void write_text(Writer &out, std::span<const TextView> pieces);
// Null counts as empty.
void write_text(Writer &out, const char *text);
void write_quoted(Writer &out, const char *text);

} // namespace mms
