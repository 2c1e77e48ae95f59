// One value: the first octet of the input chooses the decoder, some decoders take a second octet as
// their argument, and the rest is the value. What was decoded is encoded and decoded again.
#include <algorithm>
#include <ctime>
#include <functional>
#include <iterator>
#include <optional>
#include <strings.h>

#include "fuzz.hpp"

namespace {

using namespace fuzz;

// A decoder: octets in; status, consumed octets and the value as a text out.
using Decode = std::function<uint32_t(const uint8_t *, uint32_t, uint32_t *, std::string &)>;
// An encoder: place, room, count, size only.
using Encode = std::function<uint32_t(uint8_t *, uint32_t, uint32_t *, uint8_t)>;

struct Read {
    uint32_t status;
    uint32_t consumed;
    std::string value; // as a text; empty after a failure
};

Read read(const Decode &decode, const Block &block) {
    Read result{0, 77, ""};
    result.status = decode(block.data(), block.size(), &result.consumed, result.value);
    REQUIRE(result.status != MMS_STATUS_REFUSED && result.status <= 7 && result.status != 4);
    if (result.status != MMS_STATUS_OK) {
        REQUIRE(result.consumed == 0);
        REQUIRE(result.value.empty());
    }
    REQUIRE(result.consumed <= block.size());
    return result;
}

// Decodes the octets, and once more those alone that were consumed.
Read read_twice(const Decode &decode, const Octets &octets) {
    const Read first = read(decode, Block(octets));
    if (first.status == MMS_STATUS_OK) {
        const Read alone = read(decode, Block(octets.data(), first.consumed));
        REQUIRE(alone.status == MMS_STATUS_OK && alone.consumed == first.consumed);
        REQUIRE_SAME(alone.value, first.value);
    }
    return first;
}

// What an encoder writes, the same in all its ways; nothing after a failure with the given status.
std::optional<Octets> written(const Encode &encode, uint32_t accepted_failure = MMS_STATUS_OK) {
    uint32_t size = 77;
    const uint32_t status = encode(nullptr, 0, &size, 1);
    REQUIRE(status == MMS_STATUS_OK || status == accepted_failure);
    uint32_t count = 78;
    if (status != MMS_STATUS_OK) {
        const Block room(4096);
        REQUIRE(size == 0);
        REQUIRE(encode(room.data(), room.size(), &count, 0) == status && count == 0);
        return std::nullopt;
    }
    const Block exact(size);
    REQUIRE(encode(exact.data(), size, &count, 0) == MMS_STATUS_OK && count == size);
    const Block small(size - 1);
    count = 78;
    REQUIRE(encode(small.data(), size - 1, &count, 0) == MMS_STATUS_NO_ROOM && count == 0);
    return exact.octets();
}

// What the encoder writes decodes to that value, and all of it is consumed.
void require_returns(const Decode &decode, const Encode &encode, const std::string &value) {
    const Octets octets = written(encode).value();
    const Read back = read(decode, Block(octets));
    REQUIRE(back.status == MMS_STATUS_OK && back.consumed == octets.size());
    REQUIRE_SAME(back.value, value);
}

// --- numbers -------------------------------------------------------------------------------------

template <typename Number>
using Decoder = uint32_t (*)(const uint8_t *, uint32_t, Number *, uint32_t *);
template <typename Number>
using Encoder = uint32_t (*)(uint8_t *, uint32_t, Number, uint32_t *, uint8_t);

template <typename Number, Decoder<Number> decode, Encoder<Number> encode>
void wsp_number(const Octets &octets) {
    Number number = 0;
    const Decode reader = [&](const uint8_t *input, uint32_t size, uint32_t *count,
                              std::string &value) {
        const uint32_t status = decode(input, size, &number, count);
        value = status == MMS_STATUS_OK ? std::to_string(number) : "";
        return status;
    };
    const Read first = read_twice(reader, octets);
    if (first.status == MMS_STATUS_OK) {
        const Number decoded = number;
        require_returns(
            reader,
            [=](uint8_t *place, uint32_t room, uint32_t *count, uint8_t size_only) {
                return encode(place, room, decoded, count, size_only);
            },
            first.value);
    }
}

using MmsDecoder = uint8_t (*)(const uint8_t *, uint32_t, uint32_t *, uint32_t *);
using MmsEncoder = uint8_t (*)(uint8_t *, uint8_t, uint32_t, uint32_t *, uint32_t);

template <MmsDecoder decode, MmsEncoder encode>
void mms_number(const Octets &octets) {
    uint32_t number = 0;
    const Decode reader = [&](const uint8_t *input, uint32_t size, uint32_t *count,
                              std::string &value) {
        const uint32_t status = decode(input, size, count, &number);
        value = status == MMS_STATUS_OK ? std::to_string(number) : "";
        return status;
    };
    const Read first = read_twice(reader, octets);
    if (first.status == MMS_STATUS_OK) {
        const uint32_t decoded = number;
        require_returns(
            reader,
            [=](uint8_t *place, uint32_t room, uint32_t *count, uint8_t size_only) {
                return encode(place, size_only, room, count, decoded);
            },
            first.value);
    }
}

// The octets that follow an argument octet; no octet counts as 0.
uint8_t take_argument(Octets &octets) {
    const uint8_t argument = octets.empty() ? 0 : octets.front();
    octets.erase(octets.begin(), octets.begin() + (octets.empty() ? 0 : 1));
    return argument;
}

void octet(Octets octets) {
    const uint8_t lowest = take_argument(octets);
    const uint8_t highest = take_argument(octets);
    uint8_t decoded = 0;
    uint32_t count = 77;
    const Block block(octets);
    const uint32_t status =
        DecodeOctet(block.data(), block.size(), &decoded, &count, lowest, highest);
    const bool inside = !octets.empty() && octets[0] >= lowest && octets[0] <= highest;
    REQUIRE(status == (octets.empty() ? 2 : inside ? 1 : 7));
    REQUIRE(count == (inside ? 1 : 0));
    REQUIRE(!inside || decoded == octets[0]);
}

void version(const Octets &octets) {
    const Block block(octets);
    uint8_t decoded = 0;
    uint32_t count = 77;
    const uint32_t status = MMSDecodeVersion(block.data(), block.size(), &count, &decoded);
    if (octets.empty() || octets[0] < 0x80) {
        REQUIRE(status == (octets.empty() ? 2 : 6) && count == 0);
        return;
    }
    const uint8_t major = octets[0] >> 4 & 7;
    REQUIRE(status == (major != 0 ? 1 : 7) && count == 1);
    REQUIRE(major == 0 || decoded == (octets[0] & 0x7F));
    REQUIRE(MMSGetMajorVersion(decoded) == major);
    uint8_t made = 0;
    const uint8_t minor = MMSGetMinorVersion(decoded);
    REQUIRE(MMSSetMajorVersion(major, &made) == (major != 0 ? 1 : 0));
    REQUIRE(MMSSetMinorVersion(minor, &made) == (minor != 15 ? 1 : 0));
    REQUIRE(major == 0 || made == decoded);
}

void enumerated(Octets octets) {
    const uint8_t choice = take_argument(octets);
    const char *name = MMS_SearchFieldMapForName(choice % 64);
    if (name == nullptr) {
        name = "X-Own";
    }
    uint8_t decoded = 0;
    const Decode reader = [&](const uint8_t *input, uint32_t size, uint32_t *count,
                              std::string &value) {
        const uint32_t status = MMSDecodeEnumerated(input, size, count, name, &decoded);
        value = status == MMS_STATUS_OK ? std::to_string(decoded) : "";
        return status;
    };
    const Read first = read_twice(reader, octets);
    const MMS_EnumeratedRange range = MMSGetEnumeratedRangeByFieldName(name);
    if (first.status == MMS_STATUS_OK) {
        REQUIRE(first.consumed == 1 && decoded == octets[0]);
        REQUIRE(range.lowest == 0 || (decoded >= range.lowest && decoded <= range.highest));
    } else if (!octets.empty() && octets[0] >= 0x80 && range.lowest != 0) {
        REQUIRE(octets[0] < range.lowest || octets[0] > range.highest);
    }
}

// Its length is what the decoders of the same value consume.
void field_length(const Octets &octets) {
    const Block block(octets);
    uint32_t length = 77;
    const uint32_t status = GetFieldLength(block.data(), block.size(), &length);
    REQUIRE((status == MMS_STATUS_OK) == (length != 0));
    REQUIRE(length <= block.size());
    uint32_t announced = 0;
    uint32_t prefix = 0;
    char *text = nullptr;
    uint32_t consumed = 0;
    if (status != MMS_STATUS_OK) {
        REQUIRE(status == MMS_STATUS_NO_ROOM || status == MMS_STATUS_WRONG_FORM);
    } else if (DecodeValueLength(block.data(), block.size(), &announced, &prefix) == 1) {
        REQUIRE(length == prefix + announced);
    } else if (DecodeTextString(block.data(), block.size(), &text, &consumed) == 1) {
        REQUIRE(length == consumed);
        std::free(text);
    } else {
        REQUIRE(length == 1 && octets[0] >= 0x80);
    }
}

// --- texts ---------------------------------------------------------------------------------------

// Whether the text is read back from its wire form: its first character is no control character but
// HT, LF and CR, and what follows those is a character that a text may begin with.
bool readable(const std::string &text) {
    const size_t at = text.find_first_not_of("\t\r\n");
    if (text.empty() || at == std::string::npos) {
        return true;
    }
    const auto first = static_cast<unsigned char>(text[at]);
    return first >= 0x20 && (at == 0 ? first != 0x7F : first < 0x80);
}

bool has_wire_form(const std::string &text) {
    return readable(text) || text.find_first_of("\t\r\n") == 0;
}

std::string taken(char *text) {
    REQUIRE(text != nullptr);
    const std::string copy(text);
    std::free(text);
    return copy;
}

using TextDecoder = uint32_t (*)(const uint8_t *, uint32_t, char **, uint32_t *);
using TextEncoder = uint32_t (*)(uint8_t *, uint32_t, const char *, uint32_t *, uint8_t);

bool is_token(const std::string &text) {
    for (const char c : text) {
        const auto octet = static_cast<unsigned char>(c);
        if (octet <= 0x20 || octet == 0x7F || std::strchr("()<>@,;:\\\"/[]?={}", c) != nullptr) {
            return false;
        }
    }
    return true;
}

template <TextDecoder decode, TextEncoder encode>
void text(const Octets &octets) {
    const Decode reader = [](const uint8_t *input, uint32_t size, uint32_t *count,
                             std::string &value) {
        char untouched = 'x';
        char *result = &untouched;
        const uint32_t status = decode(input, size, &result, count);
        REQUIRE((status == MMS_STATUS_OK) == (result != nullptr));
        value = result != nullptr ? "=" + taken(result) : "";
        return status;
    };
    const Read first = read_twice(reader, octets);
    if (first.status != MMS_STATUS_OK) {
        return;
    }
    const std::string value = first.value.substr(1);
    const Encode writer = [&](uint8_t *place, uint32_t room, uint32_t *count, uint8_t size_only) {
        return encode(place, room, value.c_str(), count, size_only);
    };
    const bool token = encode == EncodeTokenText;
    if (token ? !is_token(value) : !has_wire_form(value)) {
        REQUIRE(!written(writer, MMS_STATUS_WRONG_FORM));
    } else if (readable(value)) {
        require_returns(reader, writer, first.value);
    } else {
        written(writer);
    }
}

void mms_text(Octets octets) {
    const uint8_t code = take_argument(octets);
    const Decode reader = [=](const uint8_t *input, uint32_t size, uint32_t *count,
                              std::string &value) {
        char untouched = 'x';
        char *result = &untouched;
        const uint32_t status = MMSDecodeTextString(input, size, count, &result, code);
        REQUIRE((status == MMS_STATUS_OK) == (result != nullptr));
        REQUIRE((code == 0) == (status == MMS_STATUS_MISSING));
        value = result != nullptr ? "=" + taken(result) : "";
        return status;
    };
    const Read first = read_twice(reader, octets);
    const std::string value = first.value.empty() ? "" : first.value.substr(1);
    const Encode writer = [&](uint8_t *place, uint32_t room, uint32_t *count, uint8_t size_only) {
        return MMSEncodeTextString(place, room, count, size_only, code, value.c_str());
    };
    if (first.status != MMS_STATUS_OK) {
        return;
    }
    if (!has_wire_form(value)) {
        REQUIRE(!written(writer, MMS_STATUS_WRONG_FORM));
    } else if (readable(value)) {
        uint8_t token = 0;
        const bool is_class =
            code == 10 && MMS_SearchMapForToken(MMS_MESSAGE_CLASS_MAP, value.c_str(), &token) != 0;
        const char *name =
            is_class ? MMS_SearchMapForString(MMS_MESSAGE_CLASS_MAP, token) : nullptr;
        require_returns(reader, writer, name != nullptr ? "=" + std::string(name) : first.value);
    }
}

void encoded_string(const Octets &octets) {
    std::string decoded;
    const char *charset = nullptr;
    const Decode reader = [&](const uint8_t *input, uint32_t size, uint32_t *count,
                              std::string &value) {
        char untouched = 'x';
        char *result = &untouched;
        const uint32_t status = DecodeEncodedStringValue(input, size, &charset, &result, count);
        REQUIRE((status == MMS_STATUS_OK) == (result != nullptr));
        if (result != nullptr) {
            decoded = taken(result);
            value = show(decoded) + show_charset(charset);
        }
        return status;
    };
    const Read first = read_twice(reader, octets);
    if (first.status != MMS_STATUS_OK) {
        return;
    }
    const std::string value = decoded;
    const char *name = charset;
    const Encode writer = [&](uint8_t *place, uint32_t room, uint32_t *count, uint8_t size_only) {
        return EncodeEncodedStringValue(place, room, name, value.c_str(), count, size_only);
    };
    if (name != nullptr && std::strcmp(name, "UNKNOWN") == 0) {
        REQUIRE(!written(writer, MMS_STATUS_MISSING));
    } else if (!has_wire_form(value)) {
        REQUIRE(!written(writer, MMS_STATUS_WRONG_FORM));
    } else if (readable(value)) {
        require_returns(reader, writer, first.value);
    }
}

// --- parameters and records ----------------------------------------------------------------------

struct Parameter {
    std::optional<std::string> name;
    std::optional<std::string> value;
    const char *charset = nullptr;
};

uint32_t decode_parameter(const uint8_t *input, uint32_t size, uint32_t *count,
                          Parameter &parameter, std::string &value) {
    char *name = nullptr;
    char *text = nullptr;
    uint8_t value_owned = 77;
    uint8_t name_owned = 77;
    parameter = {};
    const uint32_t status = DecodeParameter(input, size, &name, &text, &parameter.charset,
                                            &value_owned, &name_owned, count);
    REQUIRE(name_owned <= (name != nullptr ? 1 : 0) && value_owned <= (text != nullptr ? 1 : 0));
    REQUIRE(status == MMS_STATUS_OK || name == nullptr);
    REQUIRE(name != nullptr || text == nullptr);
    if (name != nullptr) {
        parameter.name = name;
        value = show(name) + "=" + show(text) + show_charset(parameter.charset);
    }
    if (text != nullptr) {
        parameter.value = text;
    }
    std::free(name_owned != 0 ? name : nullptr);
    std::free(value_owned != 0 ? text : nullptr);
    return status;
}

bool is_one_of(const std::string &name, std::initializer_list<const char *> names) {
    for (const char *other : names) {
        if (StrCaseCmp(name.c_str(), other) == 0) {
            return true;
        }
    }
    return false;
}

// Whether a parameter comes back as it is. Those left out have wire forms of their own, which are
// other values when they are read.
bool comes_back(const Parameter &parameter) {
    const std::string &name = *parameter.name;
    if (name.empty() || !readable(name) || is_one_of(name, {"Charset", "Padding", "Type"})) {
        return false;
    }
    uint8_t number = 0;
    if (MMS_SearchMapForToken(WSP_PARAMETER_MAP, name.c_str(), &number) != 0 &&
        name != MMS_SearchMapForString(WSP_PARAMETER_MAP, number)) {
        return false; // in another letter case
    }
    if (!parameter.value) {
        return true;
    }
    const std::string &value = *parameter.value;
    const bool file_name = is_one_of(name, {"Name", "Filename"});
    return !value.empty() && readable(value) && value[0] != '"' &&
           !(file_name && (parameter.charset != nullptr || begins_as_word(value.c_str())));
}

void parameter(const Octets &octets) {
    Parameter decoded;
    const Decode reader = [&](const uint8_t *input, uint32_t size, uint32_t *count,
                              std::string &value) {
        return decode_parameter(input, size, count, decoded, value);
    };
    const Read first = read_twice(reader, octets);
    if (first.status != MMS_STATUS_OK || !decoded.name) {
        return;
    }
    const Parameter parameter = decoded;
    const char *value = parameter.value ? parameter.value->c_str() : nullptr;
    const Encode writer = [&](uint8_t *place, uint32_t room, uint32_t *count, uint8_t size_only) {
        return EncodeParameter(place, room, parameter.name->c_str(), value, parameter.charset,
                               count, size_only);
    };
    const std::optional<Octets> wire = written(writer, MMS_STATUS_WRONG_FORM);
    const bool too_long = value != nullptr && parameter.value->size() > 32 &&
                          is_one_of(*parameter.name, {"Application-ID", "Reply-To-Application-ID"});
    if (!wire) {
        REQUIRE(too_long || !has_wire_form(*parameter.name) || !has_wire_form(*parameter.value));
    } else if (comes_back(parameter)) {
        REQUIRE(!too_long);
        require_returns(reader, writer, first.value);
    }
}

template <typename Owner>
using RecordDecoder = uint8_t (*)(const uint8_t *, uint32_t, uint32_t *, typename Owner::pointer *);

// Reads a record, keeping it in `owner`.
template <typename Owner, RecordDecoder<Owner> decode>
Decode record_reader(Owner &owner) {
    return [&owner](const uint8_t *input, uint32_t size, uint32_t *count, std::string &value) {
        typename Owner::element_type untouched{};
        typename Owner::pointer result = &untouched;
        const uint32_t status = decode(input, size, count, &result);
        REQUIRE((status == MMS_STATUS_OK) == (result != nullptr));
        owner.reset(result);
        value = result != nullptr ? show(result) : "";
        return status;
    };
}

void special_time(const Octets &octets) {
    test::SpecialTimePtr time;
    const Decode reader = record_reader<test::SpecialTimePtr, MMSDecodeSpecialTime>(time);
    const Read first = read(reader, Block(octets)); // octets may be left over inside its length
    if (first.status == MMS_STATUS_OK) {
        const MMS_SpecialTime value = *time;
        require_returns(
            reader,
            [&](uint8_t *place, uint32_t room, uint32_t *count, uint8_t size_only) {
                return MMSEncodeSpecialTime(place, size_only, room, count, &value);
            },
            first.value);
    }
}

// Whether the name and the address, joined to one text, are split where they were joined.
bool splits_again(const char *name, const char *address) {
    if (address == nullptr || std::strpbrk(address, "<> \t\r\n") != nullptr) {
        return false;
    }
    return name == nullptr || (*name != '\0' && std::strpbrk(name, "<\r\n") == nullptr &&
                               !begins_with(name, "\" \t") &&
                               std::strchr(" \t", name[std::strlen(name) - 1]) == nullptr);
}

template <RecordDecoder<test::MailboxPtr> decode, uint8_t header_code>
void mailbox(const Octets &octets) {
    test::MailboxPtr owner;
    const Decode reader = record_reader<test::MailboxPtr, decode>(owner);
    const Read first = read_twice(reader, octets);
    if (first.status != MMS_STATUS_OK) {
        return;
    }
    const MMS_EncodedString *address = owner->pAddress;
    const bool again =
        splits_again(owner->pDisplayName, address != nullptr ? address->pText : nullptr);
    const std::string start = owner->pDisplayName != nullptr ? owner->pDisplayName
                              : address != nullptr           ? address->pText
                                                             : "";
    const bool unknown = address != nullptr && address->pCharset != nullptr &&
                         std::strcmp(address->pCharset, "UNKNOWN") == 0;
    const test::GroupPtr group(MMS_Group_Create());
    REQUIRE(MMS_AddMailbox(group.get(), owner.release()) == 1);
    const Encode writer = [&](uint8_t *place, uint32_t room, uint32_t *count, uint8_t size_only) {
        return MMSEncodeGroup(place, size_only, room, count, header_code, group.get());
    };
    if (address == nullptr || unknown) {
        REQUIRE(!written(writer, MMS_STATUS_MISSING));
        return;
    }
    const std::optional<Octets> wire = written(writer, MMS_STATUS_WRONG_FORM);
    REQUIRE(wire || !has_wire_form(start) || start.empty());
    if (again && readable(start)) {
        REQUIRE((*wire)[0] == (header_code | 0x80));
        const Read back = read(reader, Block(wire->data() + 1, wire->size() - 1));
        REQUIRE(back.status == MMS_STATUS_OK && back.consumed == wire->size() - 1);
        REQUIRE_SAME(back.value, first.value);
    }
}

// Encoding a record that was read from octets of our own gives those octets.
template <typename Owner>
void require_stable(const Decode &reader, Owner &owner,
                    const std::function<uint32_t(typename Owner::pointer, uint8_t *, uint32_t,
                                                 uint32_t *, uint8_t)> &encode,
                    const std::function<bool(typename Owner::pointer)> &faithful) {
    const auto write = [&](uint8_t *place, uint32_t room, uint32_t *count, uint8_t size_only) {
        return encode(owner.get(), place, room, count, size_only);
    };
    if (!faithful(owner.get())) {
        uint32_t count = 0;
        write(nullptr, 0, &count, 1);
        return;
    }
    const Octets wire = written(write).value();
    const Read back = read(reader, Block(wire));
    REQUIRE(back.status == MMS_STATUS_OK && back.consumed == wire.size());
    REQUIRE_SAME(written(write).value(), wire);
}

bool faithful_text(const char *text) { return text == nullptr || readable(text); }

bool faithful_parameter(const char *name, const char *value) {
    return name != nullptr && *name != '\0' && faithful_text(name) && faithful_text(value) &&
           !begins_with(value, "\"") && !begins_as_word(value) &&
           !(value != nullptr && std::strlen(value) > 32 &&
             is_one_of(name, {"Application-ID", "Reply-To-Application-ID"}));
}

void content_type(const Octets &octets) {
    test::ContentTypePtr owner;
    const Decode reader = record_reader<test::ContentTypePtr, MMSDecodeContentType>(owner);
    if (read_twice(reader, octets).status != MMS_STATUS_OK) {
        return;
    }
    REQUIRE(MMS_IsMultipart(owner.get()) ==
            (StrnCaseCmp(owner->pMediaType, "multipart/", 10) == 0 ? 1 : 0));
    require_stable<test::ContentTypePtr>(
        reader, owner,
        [](MMS_ContentType *type, uint8_t *place, uint32_t room, uint32_t *count, uint8_t only) {
            return MMSEncodeContentType(type, place, only, room, count);
        },
        [](MMS_ContentType *type) {
            bool all = type->pParameters->nElement <= 255 && faithful_text(type->pMediaType) &&
                       !begins_with(type->pMediaType, "\t\r\n");
            each_carried<MMS_Parameter>(type->pParameters, [&](const MMS_Parameter *one) {
                all = all && faithful_parameter(one->pName, one->pValue);
            });
            return all;
        });
}

void disposition(const Octets &octets) {
    test::ContentDispositionPtr owner;
    const Decode reader =
        record_reader<test::ContentDispositionPtr, MMSDecodeContentDisposition>(owner);
    if (read_twice(reader, octets).status != MMS_STATUS_OK) {
        return;
    }
    require_stable<test::ContentDispositionPtr>(
        reader, owner,
        [](MMS_ContentDisposition *disposition, uint8_t *place, uint32_t room, uint32_t *count,
           uint8_t only) {
            return MMSEncodeContentDisposition(place, only, room, count, disposition);
        },
        [](MMS_ContentDisposition *disposition) {
            // A file name that no text stands for is sent without a value, and read as none.
            const char *name = disposition->pFilename;
            return faithful_parameter("Filename", name) &&
                   (name == nullptr || (*name != '\0' && MMSUtilQEncode(name, nullptr) <= 753));
        });
}

// --- texts in memory -----------------------------------------------------------------------------

// The octets up to the first zero as a text in an exact block.
Block as_text(Octets octets) {
    octets.push_back(0);
    return Block(octets.data(), std::strlen(reinterpret_cast<const char *>(octets.data())) + 1);
}

char *characters(const Block &text) { return reinterpret_cast<char *>(text.data()); }

void name_and_address(const Octets &octets) {
    const Block input = as_text(octets);
    char *name = heap_text("old");
    char *address = heap_text("old");
    const uint32_t status = ParseNameAndAddress(characters(input), &name, &address);
    const std::string split_name = taken(name);
    const std::string split = taken(address);
    REQUIRE(status == 1 || split == "old");
    REQUIRE(status == 0 || split == "old" || split.find_first_of(" ") == std::string::npos);
    if (std::strchr(characters(input), '<') == nullptr) {
        REQUIRE(status == 1 && split_name == "old");
    }
    if (status == 1 && split_name != "old" && splits_again(split_name.c_str(), split.c_str())) {
        const std::string joined = split_name + " <" + split + ">";
        char *again_name = nullptr;
        char *again = nullptr;
        REQUIRE(ParseNameAndAddress(joined.c_str(), &again_name, &again) == 1);
        REQUIRE_SAME(taken(again_name), split_name);
        REQUIRE_SAME(taken(again), split);
    }
}

void quoted_printable(const Octets &octets) {
    const Block input(octets);
    const uint32_t room = coreQPDecode_data_size(input.data(), input.size());
    const Block output(room + 1);
    const uint32_t count = coreQPDecode(input.data(), input.size(), output.data());
    REQUIRE(count <= room && output.data()[count] == 0);
    if (std::find(octets.begin(), octets.end(), '=') == octets.end()) {
        REQUIRE_SAME(Octets(output.data(), output.data() + count), octets);
    }
}

void base64(const Octets &octets) {
    const Block input(octets);
    const Block output(input.size() / 4 * 3);
    const uint32_t count = coreBase64Decode(input.data(), input.size(), output.data());
    REQUIRE(count == 0 || count == output.size());

    constexpr const char *alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    Octets padded = octets;
    padded.resize((octets.size() + 2) / 3 * 3);
    Octets encoded;
    for (size_t i = 0; i < padded.size(); i += 3) {
        const auto group =
            static_cast<uint32_t>(padded[i] << 16 | padded[i + 1] << 8 | padded[i + 2]);
        for (int shift = 18; shift >= 0; shift -= 6) {
            encoded.push_back(static_cast<uint8_t>(alphabet[group >> shift & 63]));
        }
    }
    for (size_t i = octets.size(); i < padded.size(); ++i) {
        encoded[encoded.size() - (i - octets.size()) - 1] = '=';
    }
    const Block wire(encoded);
    const Block back(static_cast<uint32_t>(padded.size()));
    REQUIRE(coreBase64Decode(wire.data(), wire.size(), back.data()) == padded.size());
    REQUIRE_SAME(back.octets(), padded);
    REQUIRE(coreBase64Decode_data_size(wire.data(), wire.size()) == padded.size() + 1);
}

void token(Octets octets) {
    const uint8_t choice = take_argument(octets);
    const Block input = as_text(octets);
    const char *delimiters[] = {"/", "\"", "> ", " \n", "\n", "", "<\n"};
    const char *set = delimiters[choice % std::size(delimiters)];
    const char *next = nullptr;
    char *result = StringToken(characters(input), set, &next);
    const size_t length = std::strcspn(characters(input), set);
    const bool at_end = length + 1 == input.size();
    REQUIRE((result == nullptr) == (at_end && std::strchr(set, '\n') == nullptr));
    REQUIRE((result == nullptr) == (next == nullptr));
    if (result != nullptr) {
        REQUIRE_SAME(taken(result), std::string(characters(input), length));
        REQUIRE(next == characters(input) + length + (at_end ? 0 : 1));
    }
}

// A run of words is what its words are, one after the other.
void encoded_word(const Octets &octets) {
    const Block input = as_text(octets);
    const Block output(754);
    const char *charset = nullptr;
    uint32_t consumed = 77;
    const uint32_t status =
        MMSUtilParseSingleEncodedWord(characters(input), &charset, &consumed, characters(output));
    char untouched = 'x';
    char *run = &untouched;
    const char *run_charset = nullptr;
    const uint32_t run_status = MMSUtilDecodeEncodedWord(characters(input), &run_charset, &run);
    REQUIRE((run_status == MMS_STATUS_OK) == (run != nullptr));
    REQUIRE(run_status == MMS_STATUS_OK || run_status == MMS_STATUS_MALFORMED);
    const std::string all = run != nullptr ? taken(run) : "";
    if (status != MMS_STATUS_OK) {
        REQUIRE(status == MMS_STATUS_MALFORMED && consumed == 0 && run_status == status);
        return;
    }
    REQUIRE(consumed < input.size() && charset == MMS_CHARSET_UTF_8);
    const std::string first(characters(output));
    if (run_status == MMS_STATUS_OK) {
        REQUIRE(run_charset == MMS_CHARSET_UTF_8 && all.compare(0, first.size(), first) == 0);
    } else {
        REQUIRE(first.empty());
    }
}

// Every text that fits into one word comes back from it.
void word_of(const Octets &octets) {
    const Block input = as_text(octets);
    const std::string text(characters(input));
    const uint32_t size = MMSUtilQEncode(characters(input), nullptr);
    const Block encoded(size);
    REQUIRE(MMSUtilQEncode(characters(input), characters(encoded)) == size);
    char *word = MMSUtilEncodeEncodedWord(characters(input), MMS_CHARSET_UTF_8);
    REQUIRE((word != nullptr) == (!text.empty() && size <= 753));
    if (word != nullptr) {
        const char *charset = nullptr;
        char *back = nullptr;
        REQUIRE(MMSUtilDecodeEncodedWord(word, &charset, &back) == MMS_STATUS_OK);
        REQUIRE_SAME(taken(back), text);
        REQUIRE(isASCII(word) == 1 && std::strpbrk(word, " \t\r\n") == nullptr);
        std::free(word);
    }
}

void strings(Octets octets) {
    const uint8_t choice = take_argument(octets);
    const Block input = as_text(octets);
    const std::string text(characters(input));
    const char *at = characters(input);
    SkipWhiteSpace(&at);
    REQUIRE(at == characters(input) + std::min(text.find_first_not_of(" \t"), text.size()));
    at = characters(input);
    Skip_CRLF_SPACE_HT(&at);
    REQUIRE(at == characters(input) + std::min(text.find_first_not_of(" \t\r\n"), text.size()));

    const uint32_t split = static_cast<uint32_t>(choice) % input.size();
    const char *right = characters(input) + split;
    const int8_t order = StrCaseCmp(characters(input), right);
    REQUIRE((order == 0) == (strcasecmp(characters(input), right) == 0));
    REQUIRE((StrnCaseCmp(characters(input), right, split) == 0) ==
            (strncasecmp(characters(input), right, split) == 0));

    const Block copy(static_cast<uint32_t>(choice) + 1);
    REQUIRE(StringCopy(characters(input), characters(copy), choice) == characters(copy));
    REQUIRE_SAME(std::string(characters(copy)), text.substr(0, choice));

    char *owned = heap_text(text);
    SetString(&owned, owned + split, 1);
    REQUIRE_SAME(taken(owned), text.substr(split));

    removeWSFromStringEnd(characters(input));
    REQUIRE_SAME(std::string(characters(input)), text.substr(0, text.find_last_not_of(" \t") + 1));
}

void calendar(const Octets &octets) {
    uint32_t seconds = 0;
    for (size_t i = 0; i < octets.size() && i < 4; ++i) {
        seconds = seconds << 8 | octets[i];
    }
    time_and_date moment{};
    time_sec_to_time_and_date(seconds, &moment.clock, &moment.date);
    std::tm reference{};
    const std::time_t time = seconds;
    REQUIRE(gmtime_r(&time, &reference) != nullptr);
    REQUIRE(moment.date.year == reference.tm_year + 1900);
    REQUIRE(moment.date.month == reference.tm_mon + 1 && moment.date.day == reference.tm_mday);
    REQUIRE(moment.clock.hour == reference.tm_hour && moment.clock.minute == reference.tm_min);
    REQUIRE(moment.clock.second == reference.tm_sec);
    REQUIRE(time_get_day_of_year(&moment.date) == reference.tm_yday + 1);
    uint32_t back = 0;
    REQUIRE(time_and_date_to_sec(&moment.clock, &moment.date, &back) == seconds && back == seconds);
}

void maps(const Octets &octets) {
    const Block input = as_text(octets);
    const char *name = characters(input);
    for (const MMS_MapEntry *map : {MMS_HEADER_MAP, WSP_HEADER_MAP, CONTENT_TYPE_MAP, CHAR_SET_MAP,
                                    WSP_PARAMETER_MAP, MMS_FIELDNAME_MAP}) {
        uint16_t number = 77;
        const bool known = MMS_SearchMapForInteger(map, name, &number) != 0;
        bool listed = false;
        for (const MMS_MapEntry *row = map; row->name != nullptr; ++row) {
            listed = listed || strcasecmp(row->name, name) == 0;
        }
        REQUIRE(known == listed && (known || number == 0));
    }
    const uint8_t id = MMS_SearchFieldMapForId(name);
    REQUIRE(id == 0 || strcasecmp(MMS_SearchFieldMapForName(id), name) == 0);
}

using Check = void (*)(const Octets &);

template <void (*check)(Octets)>
void with_argument(const Octets &octets) {
    check(octets);
}

// The seeds choose by position: new rows go to the end.
constexpr Check checks[] = {
    with_argument<octet>,
    wsp_number<uint8_t, DecodeShortInteger, EncodeShortInteger>,
    wsp_number<uint8_t, DecodeShortLength, EncodeShortLength>,
    wsp_number<uint32_t, DecodeLongInteger, EncodeLongInteger>,
    wsp_number<uint32_t, DecodeIntegerValue, EncodeIntegerValue>,
    wsp_number<uint32_t, DecodeUintvarInteger, EncodeUintvarInteger>,
    wsp_number<uint32_t, DecodeValueLength, EncodeValueLength>,
    text<DecodeTextString, EncodeTextString>,
    text<DecodeTokenText, EncodeTokenText>,
    text<DecodeQuotedString, EncodeQuotedString>,
    field_length,
    encoded_string,
    parameter,
    name_and_address,
    version,
    with_argument<mms_text>,
    mms_number<MMSDecodeDate, MMSEncodeDate>,
    special_time,
    mailbox<MMSDecodeToCc, 23>,
    mailbox<MMSDecodeFrom, 9>,
    mms_number<MMSDecodeLongInteger, MMSEncodeLongInteger>,
    mms_number<MMSDecodeLongInteger, MMSEncodeContentDuration>,
    with_argument<enumerated>,
    content_type,
    disposition,
    quoted_printable,
    base64,
    with_argument<token>,
    encoded_word,
    word_of,
    with_argument<strings>,
    calendar,
    maps,
};

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size != 0) {
        checks[data[0] % std::size(checks)](Octets(data + 1, data + size));
    }
    return 0;
}
