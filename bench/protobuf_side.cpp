// Protocol buffers: the generated C++ code, without an arena.
#include <cstdlib>
#include <memory>

#include <google/protobuf/io/coded_stream.h>

#include "message.pb.h"
#include "sides.hpp"

namespace bench {
namespace {

constexpr uint32_t utf_8 = 106;
constexpr int deepest = 600; // levels of messages; the default of 100 is too few

proto::Mailbox to_proto(const Mailbox &mailbox) {
    proto::Mailbox message;
    message.set_display_name(mailbox.display_name);
    message.set_address(mailbox.address);
    return message;
}

proto::Part to_proto(const Part &part) {
    proto::Part message;
    message.set_media_type(part.media_type);
    for (const Parameter &parameter : part.parameters) {
        proto::Parameter &added = *message.add_parameters();
        added.set_name(parameter.name);
        added.set_value(parameter.value);
    }
    message.set_content_id(part.content_id);
    message.set_content_location(part.content_location);
    message.set_body(part.body);
    for (const Part &nested : part.parts) {
        *message.add_parts() = to_proto(nested);
    }
    return message;
}

proto::Message to_proto(const Content &content) {
    proto::Message message;
    message.set_message_type(content.message_type);
    message.set_version(content.version);
    message.set_date(content.date);
    message.set_message_size(content.message_size);
    if (content.expiry_token != 0) {
        message.mutable_expiry()->set_token(content.expiry_token);
        message.mutable_expiry()->set_seconds(content.expiry);
    }
    message.set_priority(content.priority);
    message.set_delivery_report(content.delivery_report);
    message.set_read_report(content.read_report);
    message.set_sender_visibility(content.sender_visibility);
    message.set_transaction_id(content.transaction_id);
    message.set_message_id(content.message_id);
    message.set_message_class(content.message_class);
    message.set_content_location(content.content_location);
    message.set_subject(content.subject);
    message.set_subject_charset(content.subject.empty() ? 0 : utf_8);
    *message.mutable_from() = to_proto(content.from);
    for (const Mailbox &mailbox : content.to) {
        *message.add_to() = to_proto(mailbox);
    }
    if (!content.body.media_type.empty()) {
        *message.mutable_body() = to_proto(content.body);
    }
    return message;
}

Mailbox from_proto(const proto::Mailbox &message) {
    return {message.display_name(), message.address()};
}

Part from_proto(const proto::Part &message) {
    Part part{message.media_type(), {}, message.content_id(), message.content_location(),
              message.body(),       {}};
    for (const proto::Parameter &parameter : message.parameters()) {
        part.parameters.push_back({parameter.name(), parameter.value()});
    }
    for (const proto::Part &nested : message.parts()) {
        part.parts.push_back(from_proto(nested));
    }
    return part;
}

Content from_proto(const proto::Message &message) {
    Content content;
    content.message_type = message.message_type();
    content.version = message.version();
    content.date = message.date();
    content.message_size = message.message_size();
    content.expiry_token = message.expiry().token();
    content.expiry = message.expiry().seconds();
    content.priority = message.priority();
    content.delivery_report = message.delivery_report();
    content.read_report = message.read_report();
    content.sender_visibility = message.sender_visibility();
    content.transaction_id = message.transaction_id();
    content.message_id = message.message_id();
    content.message_class = message.message_class();
    content.content_location = message.content_location();
    content.subject = message.subject();
    content.from = from_proto(message.from());
    for (const proto::Mailbox &mailbox : message.to()) {
        content.to.push_back(from_proto(mailbox));
    }
    content.body = from_proto(message.body());
    return content;
}

size_t depth(const Part &part) {
    size_t deepest_part = 0;
    for (const Part &nested : part.parts) {
        deepest_part = std::max(deepest_part, depth(nested));
    }
    return deepest_part + 1;
}

class ProtobufSide : public Side {
public:
    explicit ProtobufSide(const Content &content)
        : message_(to_proto(content)), octets_(message_.SerializeAsString()),
          deep_(depth(content.body) >= 100) {}

    [[nodiscard]] Content content() const override {
        proto::Message message;
        return parse(message) ? from_proto(message) : Content();
    }

    void decode() const override {
        proto::Message message;
        parse(message);
    }

    // Size and octets are worked out once each: SerializeToArray would size the message again.
    void encode() const override {
        const std::unique_ptr<uint8_t[]> block(new uint8_t[message_.ByteSizeLong()]);
        message_.SerializeWithCachedSizesToArray(block.get());
    }

private:
    // Only a stream lets the nesting go deeper than by default, so the direct way stays for all
    // other messages.
    bool parse(proto::Message &message) const {
        if (!deep_) {
            return message.ParseFromArray(octets_.data(), static_cast<int>(octets_.size()));
        }
        google::protobuf::io::CodedInputStream stream(
            reinterpret_cast<const uint8_t *>(octets_.data()), static_cast<int>(octets_.size()));
        stream.SetRecursionLimit(deepest);
        return message.ParseFromCodedStream(&stream);
    }

    proto::Message message_;
    std::string octets_;
    bool deep_;
};

const AddSide added("protobuf", [](const Content &content) -> std::unique_ptr<Side> {
    return std::make_unique<ProtobufSide>(content);
});

} // namespace
} // namespace bench
