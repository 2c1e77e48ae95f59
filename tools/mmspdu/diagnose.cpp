#include "diagnose.hpp"

#include "text_output.hpp"
#include "wording.hpp"

#include <cstdlib>
#include <cstring>
#include <new>
#include <string_view>

namespace mmspdu {
namespace {

constexpr uint8_t length_quote = 31;

// Thrown where a PDU stops being what it should be.
struct Fault {
    std::string what;
    size_t stop; // where the library's cursor is then
};

std::string octet_count(uint64_t count) { return counted(count, "octet"); }

struct FreeText {
    void operator()(char *text) const { std::free(text); }
};
using OwnedText = std::unique_ptr<char, FreeText>;

struct DestroyContentType {
    void operator()(MMS_ContentType *type) const { MMS_DestroyContentType(type); }
};
using OwnedContentType = std::unique_ptr<MMS_ContentType, DestroyContentType>;

// --- the forms of values ---------------------------------------------------------------------

// A value on its own, as the header's codec sees it.
struct Value {
    const uint8_t *octets;
    uint32_t length;
    uint8_t code;
};

struct Outcome {
    uint32_t status;
    uint32_t consumed;
};

Outcome check_octet(const Value &value) {
    Outcome outcome{};
    uint8_t octet = 0;
    const char *name = MMS_SearchMapForString(MMS_HEADER_MAP, value.code);
    outcome.status =
        MMSDecodeEnumerated(value.octets, value.length, &outcome.consumed, name, &octet);
    return outcome;
}

Outcome check_version(const Value &value) {
    Outcome outcome{};
    uint8_t version = 0;
    outcome.status = MMSDecodeVersion(value.octets, value.length, &outcome.consumed, &version);
    return outcome;
}

Outcome check_date(const Value &value) {
    Outcome outcome{};
    uint32_t date = 0;
    outcome.status = MMSDecodeDate(value.octets, value.length, &outcome.consumed, &date);
    return outcome;
}

Outcome check_number(const Value &value) {
    Outcome outcome{};
    uint32_t number = 0;
    outcome.status = MMSDecodeLongInteger(value.octets, value.length, &outcome.consumed, &number);
    return outcome;
}

Outcome check_time(const Value &value) {
    Outcome outcome{};
    MMS_SpecialTime *time = nullptr;
    outcome.status = MMSDecodeSpecialTime(value.octets, value.length, &outcome.consumed, &time);
    MMS_DestroySpecialTime(time);
    return outcome;
}

Outcome check_mms_text(const Value &value) {
    Outcome outcome{};
    char *text = nullptr;
    outcome.status =
        MMSDecodeTextString(value.octets, value.length, &outcome.consumed, &text, value.code);
    const OwnedText owned(text);
    return outcome;
}

Outcome check_text(const Value &value) {
    Outcome outcome{};
    char *text = nullptr;
    outcome.status = DecodeTextString(value.octets, value.length, &text, &outcome.consumed);
    const OwnedText owned(text);
    return outcome;
}

Outcome check_quoted(const Value &value) {
    Outcome outcome{};
    char *text = nullptr;
    outcome.status = DecodeQuotedString(value.octets, value.length, &text, &outcome.consumed);
    const OwnedText owned(text);
    return outcome;
}

Outcome check_encoded_string(const Value &value) {
    Outcome outcome{};
    char *text = nullptr;
    const char *charset = nullptr;
    outcome.status =
        DecodeEncodedStringValue(value.octets, value.length, &charset, &text, &outcome.consumed);
    const OwnedText owned(text);
    return outcome;
}

Outcome check_recipient(const Value &value) {
    Outcome outcome{};
    MMS_Mailbox *mailbox = nullptr;
    outcome.status = MMSDecodeToCc(value.octets, value.length, &outcome.consumed, &mailbox);
    MMS_DestroyMailbox(mailbox);
    return outcome;
}

Outcome check_sender(const Value &value) {
    Outcome outcome{};
    MMS_Mailbox *mailbox = nullptr;
    outcome.status = MMSDecodeFrom(value.octets, value.length, &outcome.consumed, &mailbox);
    MMS_DestroyMailbox(mailbox);
    // Of a sender that is no address, or is left to the network, nothing is kept, and its field is
    // passed over.
    const bool dropped =
        outcome.status == MMS_STATUS_WRONG_FORM || outcome.status == MMS_STATUS_OUT_OF_RANGE;
    return dropped ? Outcome{outcome.status, value.length} : outcome;
}

Outcome check_content_type(const Value &value) {
    Outcome outcome{};
    MMS_ContentType *type = nullptr;
    outcome.status = MMSDecodeContentType(value.octets, value.length, &outcome.consumed, &type);
    MMS_DestroyContentType(type);
    return outcome;
}

Outcome check_disposition(const Value &value) {
    Outcome outcome{};
    MMS_ContentDisposition *disposition = nullptr;
    outcome.status =
        MMSDecodeContentDisposition(value.octets, value.length, &outcome.consumed, &disposition);
    MMS_DestroyContentDisposition(disposition);
    return outcome;
}

using Check = Outcome (*)(const Value &value);

struct Form {
    Check check;
    const char *expected;
};

constexpr Form octet_form{check_octet, "one octet,"};
constexpr Form version_form{check_version, "a version in one octet"};
constexpr Form date_form{check_date, "a Long-integer of at most 4 octets"};
constexpr Form number_form{check_number,
                           "a Long-integer of at most 4 octets or a Text-string of digits"};
constexpr Form time_form{
    check_time, "a length, the octet 0x80 or 0x81, and a Long-integer of at most 4 octets"};
constexpr Form mms_text_form{check_mms_text, "a Text-string"};
constexpr Form class_form{check_mms_text, "a Text-string or an octet from 0x80 to 0x83"};
constexpr Form text_form{check_text, "a Text-string"};
constexpr Form quoted_form{check_quoted, "a Quoted-string or Text-string"};
constexpr Form string_form{
    check_encoded_string,
    "a Text-string, or a length, a character set and a Text-string that fill it"};
constexpr Form recipient_form{check_recipient,
                              "an address as a Text-string, or with a length and a character set "
                              "in front of it"};
constexpr Form sender_form{check_sender, "a length, the octet 0x80 or 0x81, and an address"};
constexpr Form content_type_form{check_content_type, "a media type, with parameters or without"};
constexpr Form disposition_form{check_disposition,
                                "a length, the octet 0x80 or 0x81, and parameters"};

enum MmsCode : uint8_t { content_type_code = 4, from_code = 9 };

struct CodeForm {
    uint8_t code;
    const Form *form;
};

constexpr CodeForm mms_forms[] = {
    {1, &recipient_form}, {2, &recipient_form},  {3, &mms_text_form},  {4, &content_type_form},
    {5, &date_form},      {6, &octet_form},      {7, &time_form},      {8, &time_form},
    {9, &sender_form},    {10, &class_form},     {11, &mms_text_form}, {12, &octet_form},
    {13, &version_form},  {14, &number_form},    {15, &octet_form},    {16, &octet_form},
    {18, &octet_form},    {19, &string_form},    {20, &octet_form},    {21, &octet_form},
    {22, &string_form},   {23, &recipient_form}, {24, &mms_text_form}, {25, &octet_form},
    {27, &octet_form},    {55, &mms_text_form},  {56, &mms_text_form}, {59, &octet_form},
};

constexpr CodeForm wsp_forms[] = {{14, &text_form}, {46, &disposition_form}, {64, &quoted_form}};

// Null for a header whose value is passed over.
const Form *find_form(std::span<const CodeForm> forms, uint8_t code) {
    for (const CodeForm &row : forms) {
        if (row.code == code) {
            return row.form;
        }
    }
    return nullptr;
}

// The octets that an enumerated header accepts, as runs.
std::string accepted_octets(uint8_t code) {
    const auto accepts = [code](uint32_t octet) {
        const auto value = static_cast<uint8_t>(octet);
        return octet <= UINT8_MAX && check_octet({&value, 1, code}).status == MMS_STATUS_OK;
    };
    std::string runs;
    for (uint32_t low = 0; low <= UINT8_MAX; ++low) {
        if (!accepts(low)) {
            continue;
        }
        uint32_t high = low;
        while (accepts(high + 1)) {
            ++high;
        }
        runs += (runs.empty() ? "" : ", ") + octet_name(low);
        if (high != low) {
            runs += " to " + octet_name(high);
        }
        low = high;
    }
    return runs;
}

// The octets of the media type at the start; 0 when there is none.
uint32_t media_length(const Value &value) {
    uint32_t consumed = 0;
    uint32_t number = 0;
    if (DecodeIntegerValue(value.octets, value.length, &number, &consumed) == MMS_STATUS_OK) {
        return consumed;
    }
    char *text = nullptr;
    static_cast<void>(DecodeTextString(value.octets, value.length, &text, &consumed));
    const OwnedText owned(text);
    return owned != nullptr && std::strchr(text, '/') != nullptr ? consumed : 0;
}

// The octets of the parameter at the start; 0 when it cannot be read.
uint32_t parameter_length(const Value &value) {
    char *name = nullptr;
    char *text = nullptr;
    const char *charset = nullptr;
    uint8_t text_owned = 0;
    uint8_t name_owned = 0;
    uint32_t consumed = 0;
    static_cast<void>(DecodeParameter(value.octets, value.length, &name, &text, &charset,
                                      &text_owned, &name_owned, &consumed));
    const OwnedText owned_name(name_owned != 0 ? name : nullptr);
    const OwnedText owned_text(text_owned != 0 ? text : nullptr);
    return consumed;
}

// The place of what cannot be read in a value of length, first item and parameters, which stands at
// that offset; empty when it has another form. `first_length` measures the first item.
std::string parameter_fault(const Value &value, size_t offset, const char *first_item,
                            uint32_t (*first_length)(const Value &value)) {
    uint32_t announced = 0;
    uint32_t at = 0;
    if (DecodeValueLength(value.octets, value.length, &announced, &at) != MMS_STATUS_OK) {
        return "";
    }
    const auto rest = [&] { return Value{value.octets + at, value.length - at, value.code}; };
    uint32_t length = at == value.length ? 0 : first_length(rest());
    if (length == 0) {
        return std::string("; no ") + first_item + " " + at_offset(offset + at);
    }
    for (uint32_t number = 1; length != 0; ++number) {
        at += length;
        if (at == value.length) {
            return "";
        }
        length = parameter_length(rest());
        if (length == 0) {
            return "; parameter " + std::to_string(number) + " " + at_offset(offset + at) +
                   " cannot be read within the value's " + octet_count(announced);
        }
    }
    return "";
}

// --- the walk --------------------------------------------------------------------------------

// Goes through a PDU as the decoder does, with the decoder's own codecs, up to the fault.
class Walk {
public:
    explicit Walk(std::span<const uint8_t> pdu)
        : pdu_(pdu), size_(static_cast<uint32_t>(pdu.size())) {}

    // Throws a Fault; returns when there is none.
    void run() {
        const Bound whole{size_, "the PDU"};
        bool last = false;
        while (at_ != size_ && !last) {
            last = mms_header(whole);
        }
        if (!multipart_) {
            const uint32_t body = at_;
            at_ = size_;
            if (body != size_) {
                record(ItemKind::data, body);
            }
            return;
        }
        multipart("", 0);
        if (at_ != size_) {
            fail(octet_count(size_ - at_) + " left over after the last part, " + at_offset(at_));
        }
        if (!too_deep_.empty()) {
            fail("part " + too_deep_ + " is left out: it is a multipart nested more than " +
                 std::to_string(deepest_nesting) + " deep");
        }
    }

    // The headers seen.
    [[nodiscard]] const HeaderCodes &present() const { return present_; }
    // What was passed.
    Layout &layout() { return layout_; }

private:
    static constexpr uint32_t deepest_nesting = 250;

    // What the values have to end in.
    struct Bound {
        uint32_t end;
        std::string name;
    };

    // What stands between `begin` and the cursor.
    void record(ItemKind kind, uint32_t begin, uint8_t code = 0, bool kept = true) {
        if (layout_.items.size() < most_items) {
            layout_.items.push_back({begin, at_, part_, kind, code, kept});
        }
    }

    [[noreturn]] void fail(std::string what) const { throw Fault{std::move(what), at_}; }

    [[nodiscard]] const uint8_t *here() const { return pdu_.data() + at_; }
    [[nodiscard]] uint8_t octet() const { return pdu_[at_]; }
    [[nodiscard]] Value value(uint32_t length, uint8_t code = 0) const {
        return {here(), length, code};
    }

    void expect_more(const std::string &subject, const Bound &bound) const {
        if (at_ == bound.end) {
            fail(bound.name + " ends " + at_offset(at_) + ", where " + subject + " is expected");
        }
    }

    // The length of the value here, with its length prefix.
    [[nodiscard]] uint32_t measure(const std::string &subject, const Bound &bound) const {
        expect_more(subject, bound);
        uint32_t length = 0;
        if (GetFieldLength(here(), bound.end - at_, &length) != MMS_STATUS_OK) {
            fail(subject + " " + at_offset(at_) + " " + measuring_fault(bound));
        }
        return length;
    }

    // Why the value here cannot be measured.
    [[nodiscard]] std::string measuring_fault(const Bound &bound) const {
        if (octet() > length_quote) {
            return "is a text without a zero octet before the end of " + bound.name;
        }
        uint32_t announced = 0;
        uint32_t prefix = 0;
        switch (DecodeValueLength(here(), bound.end - at_, &announced, &prefix)) {
        case MMS_STATUS_OK:
            return "runs past the end of " + bound.name + " (" +
                   std::to_string(bound.end - at_ - prefix) + " of " + octet_count(announced) +
                   " left)";
        case MMS_STATUS_NO_ROOM:
            return "has a length that the end of " + bound.name + " cuts off";
        default:
            return "has a length that is no Uintvar of 32 bits";
        }
    }

    uint32_t uintvar(const std::string &subject, ItemKind kind) {
        expect_more(subject, {size_, "the PDU"});
        uint32_t number = 0;
        uint32_t consumed = 0;
        const uint32_t status = DecodeUintvarInteger(here(), size_ - at_, &number, &consumed);
        if (status != MMS_STATUS_OK) {
            fail(subject + " " + at_offset(at_) +
                 (status == MMS_STATUS_NO_ROOM ? " is a Uintvar that the end of the PDU cuts off"
                                               : " is no Uintvar of 32 bits"));
        }
        at_ += consumed;
        record(kind, at_ - consumed);
        return number;
    }

    // Fails for a value that the codec of its form does not take.
    [[noreturn]] void fail_value(const std::string &subject, const Form &form, const Value &value,
                                 const Outcome &outcome) const {
        const auto offset = static_cast<size_t>(value.octets - pdu_.data());
        const std::string place = subject + " " + at_offset(offset);
        if (outcome.status == MMS_STATUS_OK) {
            fail(place + " fills only " + std::to_string(outcome.consumed) + " of its " +
                 octet_count(value.length) + ", expected: " + form.expected);
        }
        const bool shown = value.length == 1;
        fail(place + (shown ? " is " + octet_name(*value.octets) : " has the wrong form") +
             ", expected: " + form.expected + value_detail(form, value, offset));
    }

    // What more can be said about such a value.
    static std::string value_detail(const Form &form, const Value &value, size_t offset) {
        if (form.check == check_octet) {
            return " " + accepted_octets(value.code);
        }
        if (form.check == check_content_type) {
            return parameter_fault(value, offset, "media type", media_length);
        }
        if (form.check == check_disposition) {
            return parameter_fault(value, offset, "disposition", [](const Value &token) {
                const uint8_t octet = *token.octets;
                return octet == 0x80 || octet == 0x81 ? 1U : 0U;
            });
        }
        return "";
    }

    // --- headers of the message ---

    // True after Content-Type, which is the last.
    bool mms_header(const Bound &bound) {
        if (octet() < 0x80) {
            application_header(bound);
            return false;
        }
        const uint32_t begin = at_;
        const auto code = static_cast<uint8_t>(octet() & 0x7FU);
        ++at_;
        present_.set(code);
        const std::string subject = "the value of " + header_name(MMS_HEADER_MAP, code);
        const uint32_t length = measure(subject, bound);
        const Value field = value(length, code);
        at_ += length;
        const Form *form = find_form(mms_forms, code);
        bool kept = false;
        if (form != nullptr && counts(*form)) {
            const Outcome outcome = form->check(field);
            if (outcome.consumed != length) {
                // The decoder stays in front of a recipient that it refuses.
                at_ -= form->check == check_recipient ? length : 0;
                fail_value(subject, *form, field, outcome);
            }
            kept = outcome.status == MMS_STATUS_OK;
        }
        record(ItemKind::header, begin, code, kept);
        multipart_ = code == content_type_code && is_multipart(field);
        return code == content_type_code;
    }

    // False for addresses beyond those that are decoded.
    bool counts(const Form &form) {
        constexpr uint32_t most_addresses = 1500;
        if (form.check == check_sender) {
            return ++senders_ <= most_addresses;
        }
        return form.check != check_recipient || ++recipients_ <= most_addresses;
    }

    void application_header(const Bound &bound) {
        const uint32_t begin = at_;
        const OwnedText name = text_name(bound);
        at_ += measure("the value of " + printable_name(name.get()), bound);
        record(ItemKind::named_header, begin, 0, false);
    }

    // The name of a header that is given as text.
    OwnedText text_name(const Bound &bound) {
        char *text = nullptr;
        uint32_t consumed = 0;
        const uint32_t status = DecodeTextString(here(), bound.end - at_, &text, &consumed);
        OwnedText name(text);
        if (status == MMS_STATUS_NO_ROOM) {
            fail("the name of a header " + at_offset(at_) +
                 " is a text without a zero octet before the end of " + bound.name);
        }
        if (status != MMS_STATUS_OK) {
            fail("the octet " + octet_name(octet()) + " " + at_offset(at_) +
                 " begins neither a header nor the name of one");
        }
        at_ += consumed;
        return name;
    }

    static bool is_multipart(const Value &field) {
        MMS_ContentType *type = nullptr;
        uint32_t consumed = 0;
        const uint32_t status = MMSDecodeContentType(field.octets, field.length, &consumed, &type);
        const OwnedContentType owned(type);
        return status == MMS_STATUS_OK && MMS_IsMultipart(type) != 0;
    }

    // --- parts ---

    // The body here; `prefix` stands before the numbers of its parts.
    void multipart(const std::string &prefix, uint32_t depth) {
        const std::string whose =
            prefix.empty() ? "" : " of part " + prefix.substr(0, prefix.size() - 1);
        const uint32_t count = uintvar("the number of parts" + whose, ItemKind::part_count);
        for (uint32_t number = 1; number <= count && number != 0; ++number) {
            part(prefix + std::to_string(number), depth);
        }
    }

    void part(const std::string &number, uint32_t depth) {
        constexpr uint32_t most_parts = 999;
        if (parts_ == most_parts) {
            fail("part " + number + " " + at_offset(at_) + " is more than the " +
                 std::to_string(most_parts) + " parts that are decoded");
        }
        ++parts_;
        layout_.parts.push_back(number);
        part_ = static_cast<uint16_t>(parts_);
        const uint32_t headers_length =
            uintvar("the headers length of part " + number, ItemKind::headers_length);
        const size_t length_item = layout_.items.size();
        const uint32_t data_length =
            uintvar("the data length of part " + number, ItemKind::data_length);
        const bool nested = part_headers(number, headers_length);
        if (nested && depth < deepest_nesting) {
            const uint32_t start = at_;
            multipart(number + "/", depth + 1);
            if (at_ - start != data_length && length_item < layout_.items.size()) {
                layout_.items[length_item].kept = false;
            }
            return;
        }
        if (nested && too_deep_.empty()) {
            too_deep_ = number;
        }
        part_data(number, data_length);
    }

    void part_data(const std::string &number, uint32_t length) {
        if (length > size_ - at_) {
            fail("the data of part " + number + " " + at_offset(at_) +
                 " runs past the end of the PDU (" + std::to_string(size_ - at_) + " of " +
                 octet_count(length) + " left)");
        }
        at_ += length;
        record(ItemKind::data, at_ - length);
    }

    // True for a part that is a multipart.
    bool part_headers(const std::string &number, uint32_t length) {
        const uint32_t start = at_;
        const bool cut = length > size_ - at_;
        const Bound bound{cut ? size_ : at_ + length,
                          cut ? "the PDU" : "the header block of part " + number};
        const std::string subject = "the Content-Type of part " + number;
        const uint32_t type_length = measure(subject, bound);
        const Value type = value(type_length);
        const Outcome outcome = check_content_type(type);
        if (outcome.status != MMS_STATUS_OK) {
            fail_value(subject, content_type_form, type, outcome);
        }
        const bool nested = is_multipart(type);
        at_ += outcome.consumed;
        record(ItemKind::content_type, start);
        while (at_ != bound.end) {
            entity_header(number, bound);
        }
        if (cut) {
            fail("the PDU ends " + at_offset(at_) + ", where the header block of part " + number +
                 " goes on (" + std::to_string(at_ - start) + " of " + octet_count(length) +
                 " left)");
        }
        return nested;
    }

    void entity_header(const std::string &number, const Bound &bound) {
        if (octet() < 0x80) {
            named_header(number, bound);
            return;
        }
        const uint32_t begin = at_;
        const auto code = static_cast<uint8_t>(octet() & 0x7FU);
        ++at_;
        const std::string subject = "the value of " + header_name(WSP_HEADER_MAP, code);
        const uint32_t length = measure(subject + " of part " + number, bound);
        const Form *form = find_form(wsp_forms, code);
        const Value field = value(length);
        const Outcome outcome = form != nullptr ? form->check(field) : Outcome{MMS_STATUS_OK, 0};
        // A value of another form is passed over; one that is cut off is not.
        if (outcome.status == MMS_STATUS_NO_ROOM) {
            fail_value(subject + " of part " + number, *form, field, outcome);
        }
        at_ += length;
        record(ItemKind::header, begin, code, form != nullptr && outcome.status == MMS_STATUS_OK);
    }

    void named_header(const std::string &number, const Bound &bound) {
        const uint32_t begin = at_;
        const OwnedText name = text_name(bound);
        const std::string subject =
            "the value of " + printable_name(name.get()) + " of part " + number;
        const uint32_t length = measure(subject, bound);
        const bool duration = StrCaseCmp(name.get(), CONTENT_DURATION_FIELD_NAME) == 0;
        const Form &form = duration ? number_form : text_form;
        const Value field = value(length);
        const Outcome outcome = form.check(field);
        if (outcome.status != MMS_STATUS_OK || outcome.consumed != length) {
            fail_value(subject, form, field, outcome);
        }
        at_ += length;
        record(ItemKind::named_header, begin);
    }

    std::span<const uint8_t> pdu_;
    uint32_t size_;
    uint32_t at_ = 0;
    uint32_t senders_ = 0;
    uint32_t recipients_ = 0;
    uint32_t parts_ = 0;
    uint16_t part_ = 0;    // the one that the cursor is in
    std::string too_deep_; // the first part that is nested too deep
    bool multipart_ = false;
    HeaderCodes present_;
    Layout layout_;
};

// What is not understood of a PDU, of which the decoder understood all (`whole`) or stopped at that
// offset; empty for nothing. The decoder takes a last part that is cut short and leaves out what is
// nested too deep: only the walk sees these two.
std::string find_fault(Walk &walk, bool whole, size_t stop) {
    try {
        walk.run();
    } catch (const Fault &fault) {
        if (whole || fault.stop == stop) {
            return fault.what;
        }
    }
    // A limit of the library or a lack of memory, which the octets do not show.
    return whole ? "" : "decoding stopped " + at_offset(stop);
}

struct DestroyDecoder {
    void operator()(MMS_Decoder *decoder) const { MMS_Decoder_Destroy(decoder); }
};

} // namespace

std::string header_name(const MMS_MapEntry *map, uint8_t code) {
    const char *name = MMS_SearchMapForString(map, code);
    return name != nullptr ? name : "header " + octet_name(code | 0x80U);
}

std::string printable_name(std::string_view name) {
    constexpr size_t most_shown = 60;
    const std::string shown = TextPrinter(false).text(name.substr(0, most_shown));
    return "\"" + shown + (name.size() > most_shown ? "\"..." : "\"");
}

DecodedPdu decode_pdu(std::span<const uint8_t> octets) {
    if (octets.empty()) {
        return {nullptr, "there are no octets", {}, {}};
    }
    const std::unique_ptr<MMS_Decoder, DestroyDecoder> decoder(MMS_Decoder_Create());
    MMSLib_Message *message = nullptr;
    const uint32_t status =
        decoder == nullptr ? static_cast<uint32_t>(MMS_STATUS_NO_ROOM)
                           : MMS_Decoder_Decode(decoder.get(), octets.data(),
                                                static_cast<uint32_t>(octets.size()), &message);
    DecodedPdu decoded{OwnedMessage(message), {}, {}, {}};
    if (status == MMS_STATUS_NO_ROOM) {
        throw std::bad_alloc();
    }
    const auto stop = static_cast<size_t>(decoder->pCursor - octets.data());
    Walk walk(octets);
    decoded.fault = find_fault(walk, status == MMS_STATUS_OK, stop);
    decoded.present = walk.present();
    decoded.layout = std::move(walk.layout());
    return decoded;
}

} // namespace mmspdu
