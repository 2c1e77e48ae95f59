// What the fuzz targets share: encoding with all its passes compared, the way of a message to
// octets and back.
#pragma once

#include <algorithm>
#include <cstring>

#include "support/passes.hpp"
#include "support/render.hpp"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace fuzz {

using namespace test;

// Encodes, without the check of mandatory headers, what has to have a wire form.
inline Octets octets_of(const MMSLib_Message *message) {
    uint8_t *pdu = nullptr;
    uint32_t length = 0;
    require(MMSLib_EncodeMessage(message, &pdu, &length, 0) == MMS_STATUS_OK);
    const Octets octets(pdu, pdu + length);
    std::free(pdu);
    const uint32_t checked = MMSLib_GetSize(message);
    require(checked == 0 || checked == length);
    return octets;
}

inline Written encode(const MMSLib_Message *message) {
    Written result = written([&](uint8_t *place, uint32_t room, uint32_t *count, uint8_t only) {
        return only != 0 ? MMS_Encoder_GetEncodedMessageSize(message, count, 0)
                         : MMS_Encoder_Encode(message, place, room, count, 0);
    });
    uint8_t *pdu = nullptr;
    uint32_t length = 78;
    if (result.status == MMS_STATUS_OK) {
        require(octets_of(message) == result.octets);
    } else {
        require(MMSLib_EncodeMessage(message, &pdu, &length, 0) == result.status);
        require(pdu == nullptr && length == 78 && MMSLib_GetSize(message) == 0);
    }
    return result;
}

// --- there and back ------------------------------------------------------------------------------

// Headers that a message never has when it was decoded: written and read over, or those of parts.
constexpr const char *never_back[] = {
    "Content-Disposition",  "Content-Duration",     "Content-Id",     "Content-Location",
    "X-Mms-Report-Allowed", "X-Mms-Reply-Charging", "X-Mms-MM-State", "X-Mms-Store-Status"};

// By message type, values that stand for an absent header: left out, or added where it is absent.
struct Default {
    uint8_t type;
    const char *name;
    const char *value;
    bool added;
};

constexpr Default defaults[] = {
    {0x80, "X-Mms-Delivery-Time", "129:0", false},
    {0x80, "X-Mms-Expiry", "128:4294967295", false},
    {0x80, "X-Mms-Expiry", "129:4294967295", false},
    {0x80, "X-Mms-Message-Class", "Personal", true},
    {0x80, "X-Mms-Sender-Visibility", "128", true},
    {0x80, "X-Mms-Priority", "129", true},
    {0x84, "X-Mms-Message-Class", "Personal", true},
    {0x84, "X-Mms-Delivery-Report", "129", true},
    {0x84, "X-Mms-Priority", "129", true},
    {0x84, "X-Mms-Read-Report", "129", true},
};

// What the header entity holds when the message has been encoded and decoded.
inline Contents as_received(const MMS_Container *container) {
    const MMS_Entity *entity = MMS_GetEntity(container, 0);
    const MMS_ContentType *content_type = MMS_GetContentType(entity);
    const uint8_t type = MMSLib_GetXMmsMessageType(container);
    Contents headers = contents(entity);
    for (const char *name : never_back) {
        headers.erase(name);
    }
    if (type >= 0x86 && type <= 0x88) { // these go by the message id
        headers.erase("X-Mms-Transaction-Id");
    }
    if (content_type == nullptr || MMS_IsMultipart(content_type) != 0) {
        headers.erase("#");
    }
    for (const Default &row : defaults) {
        if (type == row.type && row.added) {
            headers.emplace(row.name, row.value);
        } else if (type == row.type && headers.count(row.name) != 0 &&
                   headers.at(row.name) == row.value) {
            headers.erase(row.name);
        }
    }
    return headers;
}

// A message of the types that name their sender asks the network for the address when it has none.
inline bool asks_for_sender(const MMS_Container *container) {
    const uint8_t type = MMSLib_GetXMmsMessageType(container);
    return (type == 0x80 || type == 0x87 || type == 0x89) && MMSLib_GetFrom(container) == nullptr;
}

// The message and what comes back from its octets as two texts, which are the same when its values
// all have a wire form that is read as they are. Octets of our own are those that encoding what
// they say gives.
inline std::pair<std::string, std::string> there_and_back(const MMSLib_Message *message) {
    const MMS_Container *sent = message->pContainer;
    const Written first = encode(message);
    const Contents expected = as_received(sent);
    std::pair<std::string, std::string> texts = {lines(expected) + lines(sent, 1), ""};
    const Decoded back = decode(first.octets);
    if (first.status != MMS_STATUS_OK || !back.message) {
        return texts;
    }
    constexpr uint8_t insert_address[] = {0x89, 0x01, 0x81};
    require(!asks_for_sender(sent) ||
            std::search(first.octets.begin(), first.octets.end(), insert_address,
                        insert_address + sizeof insert_address) != first.octets.end());
    texts.second = lines(contents(MMS_GetEntity(back.message->pContainer, 0))) +
                   lines(back.message->pContainer, 1);
    if (texts.first == texts.second) {
        require(back.status == MMS_STATUS_OK);
        const Octets second = octets_of(back.message.get());
        require(second == first.octets || contents(MMS_GetEntity(sent, 0)) != expected);
        require(octets_of(decode(second).message.get()) == second);
    }
    return texts;
}

} // namespace fuzz
