// WSP primitives on Reader and Writer. A failing read leaves the Reader and the result alone.
#pragma once

#include "codec/reader.hpp"
#include "codec/writer.hpp"
#include "util/text.hpp"

#include <span>

namespace mms {

constexpr uint8_t longest_short_length = 30;
constexpr uint8_t length_quote = 31;
constexpr uint8_t text_quote = 0x7F;
constexpr uint8_t string_quote = 0x22;

MMS_Status read_octet(Reader &in, uint8_t low, uint8_t high, uint8_t &value);
MMS_Status read_short_integer(Reader &in, uint8_t &value);
MMS_Status read_short_length(Reader &in, uint8_t &value);
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

void write_short_integer(Writer &out, uint32_t value);
void write_short_length(Writer &out, uint32_t value);
void write_long_integer(Writer &out, uint32_t value);
void write_integer(Writer &out, uint32_t value);
void write_uintvar(Writer &out, uint32_t value);
// A length above 32 bits fails.
void write_value_length(Writer &out, uint64_t value);
// What `write_value` writes, with its Value-length in front.
template <typename Write>
void write_sized(Writer &out, Write write_value) {
    const Size size = size_of(write_value);
    if (size.status != MMS_STATUS_OK) {
        out.fail(size.status);
        return;
    }
    write_value_length(out, size.octets);
    write_value(out);
}
// The pieces make up one text.
void write_text(Writer &out, std::span<const TextView> pieces);
// Null counts as empty.
void write_text(Writer &out, const char *text);
void write_quoted(Writer &out, const char *text);

inline bool failed(MMS_Status status) { return status != MMS_STATUS_OK; }

} // namespace mms
