// Header values on Reader and Writer. A failing read leaves the Reader and the result alone, the
// version's range failure excepted.
#pragma once

#include "codec/wsp.hpp"
#include "model/model.hpp"

namespace mms {

// The name of a character set or media type that the tables do not hold.
constexpr const char *unknown_name = "UNKNOWN";

// Encoded strings. `charset` is null, a constant of the character-set map, or `unknown_name`.
MMS_Status read_encoded_string(Reader &in, const char *&charset, TextView &text);
MMS_Status read_encoded_string(Reader &in, OwnedEncodedString &string);
void write_encoded_string(Writer &out, const char *charset, std::span<const TextView> pieces);

// A parameter as it is read.
struct ReadParameter {
    bool named = false; // false: consumed and to be dropped
    const char *known_name = nullptr;
    TextView name; // when there is no known name
    const char *known_value = nullptr;
    OwnedText value; // when there is no known value; both null: no value
    const char *charset = nullptr;
    bool is_text = false; // the value came as text
};

MMS_Status read_parameter(Reader &in, ReadParameter &parameter);
void write_parameter(Writer &out, const char *name, const char *value, const char *charset);
// The text as one encoded word in a Text-string; an empty one where no word can hold it.
void write_encoded_word(Writer &out, const char *text, const char *charset);

// An address text and the display name in front of it.
struct Address {
    bool has_display_name = false;
    TextView display_name;
    TextView address;
};

// False when a quote or bracket is not closed; a display name found before is kept.
bool split_address(TextView text, Address &address);

MMS_Status read_recipient(Reader &in, OwnedMailbox &mailbox);
MMS_Status read_sender(Reader &in, OwnedMailbox &mailbox);

constexpr uint8_t message_class_code = 10;
// The token of a From that has an address.
constexpr uint8_t address_present = 0x80;

MMS_Status read_version(Reader &in, uint8_t &version);
MMS_Status read_mms_text(Reader &in, uint8_t header_code, OwnedText &text);
MMS_Status read_special_time(Reader &in, OwnedSpecialTime &time);
MMS_Status read_number(Reader &in, uint32_t &value);
MMS_Status read_enumerated(Reader &in, const Header &header, uint8_t &value);

void write_mms_text(Writer &out, uint8_t header_code, const char *text);
void write_special_time(Writer &out, const MMS_SpecialTime &time);
void write_content_duration(Writer &out, uint32_t seconds);

MMS_Status read_content_type(Reader &in, OwnedContentType &content_type);
MMS_Status read_disposition(Reader &in, OwnedDisposition &disposition);

void write_content_type(Writer &out, const MMS_ContentType &content_type);
void write_disposition(Writer &out, const MMS_ContentDisposition &disposition);

} // namespace mms
