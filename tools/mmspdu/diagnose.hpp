// Decoding of a PDU, with the place and the reason where it is not understood.
#pragma once

#include "mmslib.h"

#include <bitset>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace mmspdu {

struct DestroyMessage {
    void operator()(MMSLib_Message *message) const { MMSLib_Message_Destroy(message); }
};
using OwnedMessage = std::unique_ptr<MMSLib_Message, DestroyMessage>;

// MMS headers by their codes.
using HeaderCodes = std::bitset<128>;

enum class ItemKind : uint8_t {
    header, // that a code names
    named_header,
    part_count,
    headers_length,
    data_length,
    content_type, // of a part
    data,
};

// A stretch of a PDU.
struct Item {
    uint32_t begin;
    uint32_t end;
    uint16_t part; // its place in Layout::parts
    ItemKind kind;
    uint8_t code; // of a header
    bool kept; // false for a header that is passed over, and for a length that is not the right one
};

// Of more items than these the first ones are listed.
constexpr size_t most_items = 100'000;

// What a PDU consists of, up to the place where it is not understood.
struct Layout {
    std::vector<Item> items;            // one behind the other
    std::vector<std::string> parts{""}; // the numbers of the parts; the first is the message itself
};

struct DecodedPdu {
    OwnedMessage message; // what was understood; null when that is nothing
    std::string fault;    // what was not, printable anywhere; empty when all was understood
    HeaderCodes present;  // the headers that the PDU has; the others of the message are defaults
    Layout layout;
};

// The name of the header with that code, and one that is given as text, both printable anywhere.
std::string header_name(const MMS_MapEntry *map, uint8_t code);
std::string printable_name(std::string_view name);

// The octets have to outlive the message.
DecodedPdu decode_pdu(std::span<const uint8_t> octets);

} // namespace mmspdu
