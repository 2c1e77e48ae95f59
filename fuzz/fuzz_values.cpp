// One value: the first octet of the input chooses the decoder and the rest is the value. What was
// decoded is encoded and decoded again.
#include <ctime>
#include <functional>
#include <vector>

#include "fuzz.hpp"

namespace {

using namespace fuzz;

using Check = std::function<void(const Octets &)>;

// Place, room, count, size only.
using Encode = std::function<uint32_t(uint8_t *, uint32_t, uint32_t *, uint8_t)>;

struct Value {
    std::string text;
    Encode encode; // may be left out
};

using Decode = std::function<uint32_t(const uint8_t *, uint32_t, uint32_t *, Value &)>;

// --- which values are read as they were written --------------------------------------------------

// Surely none of the values that have no form, or one that is read as another value: control
// characters, quotes, brackets and encoded words (of ASCII too, which is sent as it is), empty
// names and values, numbers of a meaning of their own, texts that are too long. The other targets
// have most of these.
bool faithful(const std::string &value, const char *excluded) {
    const std::string text = value + ";";
    for (const char *form : {"=?", "=;", "==", ";=", ";;", "|=", " |", " ;", "(null)", "UNKNOWN",
                             "Padding", "Charset"}) {
        if (text.find(form) != std::string::npos) {
            return false;
        }
    }
    const bool ascii = isASCII(text.c_str()) != 0;
    return text.size() < 32 && std::strchr(" |", text[0]) == nullptr &&
           !(ascii && text.find("{UTF-8}") != std::string::npos) &&
           std::all_of(value.begin(), value.end(), [&](unsigned char c) {
               return c >= ' ' && c != 0x7F && std::strchr(excluded, c) == nullptr;
           });
}

// --- what every codec keeps to -------------------------------------------------------------------

struct Read {
    uint32_t status;
    uint32_t consumed;
    Value value;
};

Read read(const Decode &decode, const Octets &octets) {
    const Block block(octets);
    Read result{0, 77, {}};
    result.status = decode(block.get(), block.size(), &result.consumed, result.value);
    require(result.status != MMS_STATUS_REFUSED && result.status <= 7 && result.status != 4);
    require(result.consumed <= block.size());
    const uint32_t passed_over = result.status == MMS_STATUS_OUT_OF_RANGE ? 1 : 0; // a version is
    require(result.status == MMS_STATUS_OK ||
            (result.consumed <= passed_over && !result.value.encode));
    return result;
}

enum class Form {
    other,
    measured, // its octets are those of a field
    loose,    // octets may be left over inside of it
};

// Decodes the octets, and those alone that were consumed; encodes the value and decodes that.
Check codec(const Decode &decode, Form form = Form::other, const char *excluded = "\"<>") {
    return [=](const Octets &octets) {
        const auto [status, consumed, value] = read(decode, octets);
        if (status != MMS_STATUS_OK) {
            return;
        }
        const Read alone = read(decode, Octets(octets.begin(), octets.begin() + consumed));
        require(form == Form::loose ||
                (alone.consumed == consumed && alone.value.text == value.text));
        uint32_t length = 0;
        GetFieldLength(octets.data(), static_cast<uint32_t>(octets.size()), &length);
        require(form != Form::measured || length == consumed);
        if (value.encode) {
            const Written wire = written(value.encode);
            if (faithful(value.text, excluded)) {
                require(wire.status == MMS_STATUS_OK);
                const Read back = read(decode, wire.octets);
                require(back.status == MMS_STATUS_OK && back.consumed == wire.octets.size());
                require(StrCaseCmp(back.value.text.c_str(), value.text.c_str()) == 0);
            }
        }
    };
}

// --- codecs in one shape -------------------------------------------------------------------------

// Those of MMS values return uint8_t and take their arguments in another order.
template <typename Result>
auto in_order(uint8_t (*decode)(const uint8_t *, uint32_t, uint32_t *, Result *)) {
    return [=](const uint8_t *input, uint32_t size, Result *result, uint32_t *count) {
        return decode(input, size, count, result);
    };
}
template <typename Given>
auto in_order(uint8_t (*encode)(uint8_t *, uint8_t, uint32_t, uint32_t *, Given)) {
    return [=](uint8_t *place, uint32_t room, Given value, uint32_t *count, uint8_t only) {
        return encode(place, only, room, count, value);
    };
}

template <typename Number, typename Decoder, typename Encoder>
Decode number(Decoder decode, Encoder encode) {
    return [=](const uint8_t *input, uint32_t size, uint32_t *count, Value &value) -> uint32_t {
        Number decoded = 0;
        const uint32_t status = decode(input, size, &decoded, count);
        if (status == MMS_STATUS_OK) {
            value = {std::to_string(decoded), [=](auto *place, auto room, auto... rest) {
                         return encode(place, room, decoded, rest...);
                     }};
        }
        return status;
    };
}

// A text or record in a block of its own, or null after a failure.
template <typename Owner, typename Decoder, typename Encoder>
Decode record(Decoder decode, Encoder encode) {
    return [=](const uint8_t *input, uint32_t size, uint32_t *count, Value &value) -> uint32_t {
        typename Owner::element_type untouched{};
        auto *result = &untouched;
        const uint32_t status = decode(input, size, &result, count);
        require((status == MMS_STATUS_OK) == (result != nullptr));
        if (result != nullptr) {
            const std::shared_ptr<typename Owner::element_type> owner = Owner(result);
            value = {shown(result), [=](auto *place, auto room, auto... rest) {
                         return encode(place, room, owner.get(), rest...);
                     }};
        }
        return status;
    };
}

template <uint8_t lowest, uint8_t highest>
uint32_t decode_octet(const uint8_t *input, uint32_t size, uint8_t *value, uint32_t *count) {
    return DecodeOctet(input, size, value, count, lowest, highest);
}

template <const auto &name>
uint32_t decode_enumerated(const uint8_t *input, uint32_t size, uint8_t *value, uint32_t *count) {
    return MMSDecodeEnumerated(input, size, count, name, value);
}

template <uint8_t code>
Decode mms_text() {
    return record<TextPtr>(
        [](auto *input, auto size, char **text, auto *count) {
            return MMSDecodeTextString(input, size, count, text, code);
        },
        [](auto *place, auto room, const char *text, auto *count, auto only) {
            return MMSEncodeTextString(place, room, count, only, code, text);
        });
}

uint32_t decode_string(const uint8_t *input, uint32_t size, MMS_EncodedString **string,
                       uint32_t *count) {
    const char *charset = nullptr;
    char untouched = 'x';
    char *text = &untouched;
    const uint32_t status = DecodeEncodedStringValue(input, size, &charset, &text, count);
    const TextPtr owner(text);
    *string = text != nullptr ? MMS_CreateEncodedString(text, charset) : nullptr;
    return status;
}

uint32_t encode_string(uint8_t *place, uint32_t room, const MMS_EncodedString *string,
                       uint32_t *count, uint8_t only) {
    return EncodeEncodedStringValue(place, room, string->pCharset, string->pText, count, only);
}

// A parameter that is passed over has no name.
uint32_t decode_parameter(const uint8_t *input, uint32_t size, uint32_t *count, Value &value) {
    char *name = nullptr;
    char *text = nullptr;
    const char *charset = nullptr;
    uint8_t text_owned = 77;
    uint8_t name_owned = 77;
    const uint32_t status =
        DecodeParameter(input, size, &name, &text, &charset, &text_owned, &name_owned, count);
    require(name_owned <= (name != nullptr ? 1 : 0) && text_owned <= (text != nullptr ? 1 : 0));
    if (name != nullptr) {
        const std::shared_ptr<MMS_Parameter> one = ParameterPtr(MMS_CreateParameter(name, text));
        one->pCharset = charset;
        value = {shown(one.get()), [=](auto *place, auto room, auto... rest) {
                     return EncodeParameter(place, room, one->pName, one->pValue, one->pCharset,
                                            rest...);
                 }};
    }
    const TextPtr owners[] = {TextPtr(name_owned != 0 ? name : nullptr),
                              TextPtr(text_owned != 0 ? text : nullptr)};
    return status;
}

// An address is encoded with the code of its header in front, which the decoder is not given.
template <uint8_t code>
Decode mailbox(uint8_t (*decode)(const uint8_t *, uint32_t, uint32_t *, MMS_Mailbox **)) {
    return record<MailboxPtr>(
        [=](auto *input, auto size, MMS_Mailbox **mailbox, auto *count) {
            const uint32_t coded = size != 0 && *input == (code | 0x80) ? 1 : 0;
            const uint32_t status = decode(input + coded, size - coded, count, mailbox);
            *count += status == MMS_STATUS_OK ? coded : 0;
            return status;
        },
        [](auto *place, auto room, MMS_Mailbox *mailbox, auto *count, auto only) {
            MMS_ListNode node = {mailbox, nullptr};
            slList list;
            slList_Init(&list, nullptr, offsetof(MMS_ListNode, pNext));
            slList_InsertLast(&list, &node);
            const MMS_Group group = {nullptr, &list};
            return MMSEncodeGroup(place, only, room, count, code, &group);
        });
}

// --- texts in memory -----------------------------------------------------------------------------

// The octets up to the first zero as a text in an exact block.
Block as_text(Octets octets) {
    octets.push_back(0);
    octets.resize(std::strlen(reinterpret_cast<const char *>(octets.data())) + 1);
    return Block(octets);
}

char *characters(const Block &text) { return reinterpret_cast<char *>(text.get()); }

void name_and_address(const Octets &octets) {
    const Block input = as_text(octets);
    char *texts[] = {heap_text("old"), heap_text("old")};
    const uint32_t status = ParseNameAndAddress(characters(input), &texts[0], &texts[1]);
    const TextPtr owners[] = {TextPtr(texts[0]), TextPtr(texts[1])};
    require(std::strcmp(texts[1], "old") == 0 || status == MMS_STATUS_OK);
}

void transfer_encodings(const Octets &octets) {
    const Block input(octets);
    const Block printable(Octets(coreQPDecode_data_size(input.get(), input.size()) + 1));
    const uint32_t count = coreQPDecode(input.get(), input.size(), printable.get());
    require(count < printable.size() && printable.get()[count] == 0);
    const Block decoded(Octets(octets.size() / 4 * 3));
    const uint32_t base64 = coreBase64Decode(input.get(), input.size(), decoded.get());
    require(base64 == 0 || base64 == decoded.size());
    constexpr const char *digits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const auto six_bits = [&](uint32_t at) {
        return octets[at] == '=' ? 0 : std::strchr(digits, octets[at]) - digits;
    };
    for (uint32_t i = 0; i < base64; ++i) {
        const uint32_t at = i / 3 * 4 + i % 3;
        require(decoded.get()[i] ==
                ((six_bits(at) << (2 + i % 3 * 2) | six_bits(at + 1) >> (4 - i % 3 * 2)) & 0xFF));
    }
}

// A run of words begins with what its first word is.
void encoded_word(const Octets &octets) {
    const Block input = as_text(octets);
    const Block word(Octets(754));
    const char *charset = nullptr;
    uint32_t consumed = 77;
    char *run = characters(input);
    const uint32_t status =
        MMSUtilParseSingleEncodedWord(run, &charset, &consumed, characters(word));
    const uint32_t run_status = MMSUtilDecodeEncodedWord(run, &charset, &run);
    const TextPtr owner(run);
    require((run_status == MMS_STATUS_OK) == (run != nullptr) && consumed < input.size());
    require(status == MMS_STATUS_OK ||
            (status == MMS_STATUS_MALFORMED && consumed == 0 && run == nullptr));
    require(run == nullptr || std::string(run).find(characters(word)) == 0);
}

// Every text that fits into one word comes back from it.
void word_of(const Octets &octets) {
    const Block input = as_text(octets);
    const uint32_t size = MMSUtilQEncode(characters(input), nullptr);
    const Block encoded((Octets(size)));
    require(MMSUtilQEncode(characters(input), characters(encoded)) == size);
    const TextPtr word(MMSUtilEncodeEncodedWord(characters(input), MMS_CHARSET_UTF_8));
    require((word != nullptr) == (input.size() > 1 && size <= 753));
    if (word) {
        const char *charset = nullptr;
        char *back = nullptr;
        require(MMSUtilDecodeEncodedWord(word.get(), &charset, &back) == MMS_STATUS_OK);
        require_same(TextPtr(back).get(), characters(input));
    }
}

void strings(const Octets &octets) {
    const Block input = as_text(octets);
    const std::string text(characters(input));
    for (const char *set : {"> ", " \n"}) {
        const char *next = nullptr;
        const TextPtr token(StringToken(characters(input), set, &next));
        require((token != nullptr) == (next != nullptr));
        require(!token || token.get() == text.substr(0, text.find_first_of(set)));
    }
    const char *at = characters(input);
    Skip_CRLF_SPACE_HT(&at);
    require(at == characters(input) + std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    const Block copy((Octets(octets.size() / 2 + 1)));
    StringCopy(characters(input), characters(copy), copy.size() - 1);
    require_same(characters(copy), text.substr(0, copy.size() - 1));
    removeWSFromStringEnd(characters(input));
    require_same(characters(input), text.substr(0, text.find_last_not_of(" \t") + 1));
}

void calendar(const Octets &octets) {
    uint32_t seconds = 0;
    for (const uint8_t octet : octets) {
        seconds = seconds << 8 | octet;
    }
    time_date date{};
    time_clock clock{};
    time_sec_to_time_and_date(seconds, &clock, &date);
    const std::time_t time = seconds;
    std::tm expected{};
    require(gmtime_r(&time, &expected) != nullptr);
    require(date.year == expected.tm_year + 1900 && date.month == expected.tm_mon + 1);
    require(date.day == expected.tm_mday && clock.hour == expected.tm_hour);
    require(clock.minute == expected.tm_min && clock.second == expected.tm_sec);
    uint32_t back = 0;
    require(time_and_date_to_sec(&clock, &date, &back) == seconds && back == seconds);
}

// The seeds choose by position: new rows go to the end.
const Check checks[] = {
    codec(number<uint8_t>(decode_octet<0x20, 0x81>, EncodeOctet)),
    codec(number<uint8_t>(DecodeShortInteger, EncodeShortInteger), Form::measured),
    codec(number<uint8_t>(DecodeShortLength, EncodeShortLength)),
    codec(number<uint32_t>(DecodeLongInteger, EncodeLongInteger), Form::measured),
    codec(number<uint32_t>(DecodeIntegerValue, EncodeIntegerValue), Form::measured),
    codec(number<uint32_t>(DecodeUintvarInteger, EncodeUintvarInteger)),
    codec(number<uint32_t>(DecodeValueLength, EncodeValueLength)),
    codec(record<TextPtr>(DecodeTextString, EncodeTextString), Form::other, ""),
    codec(record<TextPtr>(DecodeTokenText, EncodeTokenText), Form::other, " ()<>@,;:\\\"/[]?={}"),
    codec(record<TextPtr>(DecodeQuotedString, EncodeQuotedString)),
    codec([](const uint8_t *input, uint32_t size, uint32_t *count, Value & /*value*/) {
        return GetFieldLength(input, size, count);
    }),
    codec(record<EncodedStringPtr>(decode_string, encode_string)),
    codec(decode_parameter),
    name_and_address,
    codec(number<uint8_t>(in_order(MMSDecodeVersion), EncodeShortInteger), Form::measured),
    codec(mms_text<0>()),
    codec(number<uint32_t>(in_order(MMSDecodeDate), in_order(MMSEncodeDate)), Form::measured),
    codec(record<SpecialTimePtr>(in_order(MMSDecodeSpecialTime), in_order(MMSEncodeSpecialTime)),
          Form::loose),
    codec(mailbox<23>(MMSDecodeToCc)),
    codec(mailbox<9>(MMSDecodeFrom)),
    codec(number<uint32_t>(in_order(MMSDecodeLongInteger), in_order(MMSEncodeLongInteger))),
    codec(number<uint32_t>(in_order(MMSDecodeLongInteger), in_order(MMSEncodeContentDuration))),
    codec(number<uint8_t>(decode_enumerated<X_MMS_RESPONSE_STATUS_FIELD_NAME>, EncodeOctet)),
    codec(record<ContentTypePtr>(
              in_order(MMSDecodeContentType),
              [](uint8_t *place, uint32_t room, const MMS_ContentType *type, uint32_t *count,
                 uint8_t only) { return MMSEncodeContentType(type, place, only, room, count); }),
          Form::measured),
    codec(record<ContentDispositionPtr>(in_order(MMSDecodeContentDisposition),
                                        in_order(MMSEncodeContentDisposition)),
          Form::measured),
    transfer_encodings,
    codec(mms_text<10>()),
    codec(number<uint8_t>(decode_enumerated<X_MMS_STATUS_FIELD_NAME>, EncodeOctet)),
    encoded_word,
    word_of,
    codec(mms_text<3>()),
    calendar,
    strings,
};

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size != 0) {
        checks[data[0] % std::size(checks)](Octets(data + 1, data + size));
    }
    return 0;
}
