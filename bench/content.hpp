// What a message holds, free of any wire form: every side of the comparison is built from it and is
// asked for it again, so that none of them gets away with less.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

struct Mailbox {
    std::string display_name;
    std::string address;
    bool operator==(const Mailbox &) const = default;
};

struct Parameter {
    std::string name;
    std::string value;
    bool operator==(const Parameter &) const = default;
};

// A body part; one without a media type stands for a message without a body.
struct Part {
    std::string media_type;
    std::vector<Parameter> parameters;
    std::string content_id;
    std::string content_location;
    std::string body;
    std::vector<Part> parts; // of a multipart
    bool operator==(const Part &) const = default;
};

// Numbers are those of the MMS headers; 0 and the empty text stand for an absent header.
struct Content {
    uint32_t message_type = 0;
    uint32_t version = 0;
    uint32_t date = 0;
    uint32_t message_size = 0;
    uint32_t expiry_token = 0;
    uint32_t expiry = 0;
    uint32_t priority = 0;
    uint32_t delivery_report = 0;
    uint32_t read_report = 0;
    uint32_t sender_visibility = 0;
    std::string transaction_id;
    std::string message_id;
    std::string message_class;
    std::string content_location;
    std::string subject; // in UTF-8
    Mailbox from;
    std::vector<Mailbox> to;
    Part body;
    bool operator==(const Content &) const = default;
};

// The headers that each side treats alike.
struct NumberHeader {
    const char *name;
    uint32_t Content::*value;
};
inline constexpr NumberHeader number_headers[] = {
    {"X-Mms-Message-Type", &Content::message_type},
    {"X-Mms-Message-Size", &Content::message_size},
    {"X-Mms-Priority", &Content::priority},
    {"X-Mms-Delivery-Report", &Content::delivery_report},
    {"X-Mms-Read-Report", &Content::read_report},
    {"X-Mms-Sender-Visibility", &Content::sender_visibility},
};

struct TextHeader {
    const char *name;
    std::string Content::*value;
};
inline constexpr TextHeader text_headers[] = {
    {"X-Mms-Transaction-Id", &Content::transaction_id},
    {"Message-Id", &Content::message_id},
    {"X-Mms-Message-Class", &Content::message_class},
    {"X-Mms-Content-Location", &Content::content_location},
};

} // namespace bench
