// GMime: the message as a MIME message with binary parts.
//
// Measured in decoding: the parse from memory with the bodies copied out of the input (the stream
// is not persistent), the addresses, and the text of every header, which GMime decodes when it is
// asked for. Binary bodies need no decoding beyond that. Numbers stay the texts that they are, and
// encoded headers are written from the text that parsing kept: both spare GMime work.
#include <cstdlib>
#include <memory>
#include <string_view>

#include <gmime/gmime.h>

#include "sides.hpp"

namespace bench {
namespace {

struct Unref {
    void operator()(void *object) const { g_object_unref(object); }
};
template <typename Object>
using Owned = std::unique_ptr<Object, Unref>;

constexpr std::string_view multipart_type = "multipart/";

// --- building ------------------------------------------------------------------------------------

void set_type_parameters(GMimeObject *object, const Part &part) {
    GMimeContentType *type = g_mime_object_get_content_type(object);
    for (const Parameter &parameter : part.parameters) {
        g_mime_content_type_set_parameter(type, parameter.name.c_str(), parameter.value.c_str());
    }
}

Owned<GMimeStream> memory_stream(const std::string &octets) {
    return Owned<GMimeStream>(g_mime_stream_mem_new_with_buffer(octets.data(), octets.size()));
}

Owned<GMimeObject> leaf(const Part &part) {
    const size_t slash = part.media_type.find('/');
    GMimePart *mime = g_mime_part_new_with_type(part.media_type.substr(0, slash).c_str(),
                                                part.media_type.substr(slash + 1).c_str());
    Owned<GMimeObject> object(GMIME_OBJECT(mime));
    set_type_parameters(object.get(), part);
    if (!part.content_id.empty()) {
        g_mime_part_set_content_id(mime,
                                   part.content_id.substr(1, part.content_id.size() - 2).c_str());
    }
    if (!part.content_location.empty()) {
        g_mime_part_set_content_location(mime, part.content_location.c_str());
    }
    const Owned<GMimeStream> body = memory_stream(part.body);
    const Owned<GMimeDataWrapper> wrapper(
        g_mime_data_wrapper_new_with_stream(body.get(), GMIME_CONTENT_ENCODING_BINARY));
    g_mime_part_set_content(mime, wrapper.get());
    g_mime_part_set_content_encoding(mime, GMIME_CONTENT_ENCODING_BINARY);
    return object;
}

Owned<GMimeObject> to_mime(const Part &part, size_t level) {
    if (!part.media_type.starts_with(multipart_type)) {
        return leaf(part);
    }
    GMimeMultipart *multipart =
        g_mime_multipart_new_with_subtype(part.media_type.substr(multipart_type.size()).c_str());
    Owned<GMimeObject> object(GMIME_OBJECT(multipart));
    set_type_parameters(object.get(), part);
    g_mime_multipart_set_boundary(multipart, ("=-level-" + std::to_string(1000 + level)).c_str());
    for (const Part &nested : part.parts) {
        g_mime_multipart_add(multipart, to_mime(nested, level + 1).get());
    }
    return object;
}

void add_mailbox(GMimeMessage *message, GMimeAddressType type, const Mailbox &mailbox) {
    g_mime_message_add_mailbox(
        message, type, mailbox.display_name.empty() ? nullptr : mailbox.display_name.c_str(),
        mailbox.address.c_str());
}

void set_header(GMimeMessage *message, const char *name, const std::string &value) {
    g_mime_object_set_header(GMIME_OBJECT(message), name, value.c_str(), nullptr);
}

void set_headers(GMimeMessage *message, const Content &content) {
    for (const NumberHeader &header : number_headers) {
        if (content.*header.value != 0) {
            set_header(message, header.name, std::to_string(content.*header.value));
        }
    }
    for (const TextHeader &header : text_headers) {
        const std::string &value = content.*header.value;
        if (!value.empty() && header.value == &Content::message_id) {
            g_mime_message_set_message_id(message, value.c_str());
        } else if (!value.empty()) {
            set_header(message, header.name, value);
        }
    }
    set_header(message, "X-Mms-Mms-Version", std::to_string(content.version));
    if (content.expiry_token != 0) {
        set_header(message, "X-Mms-Expiry",
                   std::to_string(content.expiry_token) + " " + std::to_string(content.expiry));
    }
    if (content.date != 0) {
        GDateTime *date = g_date_time_new_from_unix_utc(content.date);
        g_mime_message_set_date(message, date);
        g_date_time_unref(date);
    }
    if (!content.subject.empty()) {
        g_mime_message_set_subject(message, content.subject.c_str(), "UTF-8");
    }
    add_mailbox(message, GMIME_ADDRESS_TYPE_FROM, content.from);
    for (const Mailbox &mailbox : content.to) {
        add_mailbox(message, GMIME_ADDRESS_TYPE_TO, mailbox);
    }
}

std::string written(GMimeObject *object) {
    const Owned<GMimeStream> stream(g_mime_stream_mem_new());
    g_mime_object_write_to_stream(object, nullptr, stream.get());
    const GByteArray *octets = g_mime_stream_mem_get_byte_array(GMIME_STREAM_MEM(stream.get()));
    return {reinterpret_cast<const char *>(octets->data), octets->len};
}

std::string to_mime(const Content &content) {
    const Owned<GMimeMessage> message(g_mime_message_new(FALSE));
    set_headers(message.get(), content);
    if (!content.body.media_type.empty()) {
        g_mime_message_set_mime_part(message.get(), to_mime(content.body, 0).get());
    }
    return written(GMIME_OBJECT(message.get()));
}

// --- reading -------------------------------------------------------------------------------------

std::string text_or_empty(const char *text) { return text != nullptr ? text : std::string(); }

std::string header(GMimeMessage *message, const char *name) {
    return text_or_empty(g_mime_object_get_header(GMIME_OBJECT(message), name));
}

uint32_t number(const std::string &text) {
    return static_cast<uint32_t>(std::strtoul(text.c_str(), nullptr, 10));
}

std::vector<Parameter> parameters_of(GMimeContentType *type) {
    std::vector<Parameter> parameters;
    GMimeParamList *list = g_mime_content_type_get_parameters(type);
    for (int i = 0; i < g_mime_param_list_length(list); ++i) {
        GMimeParam *parameter = g_mime_param_list_get_parameter_at(list, i);
        const std::string name = g_mime_param_get_name(parameter);
        if (name != "boundary") {
            parameters.push_back({name, g_mime_param_get_value(parameter)});
        }
    }
    return parameters;
}

std::string body_of(GMimePart *part) {
    const Owned<GMimeStream> stream(g_mime_stream_mem_new());
    g_mime_data_wrapper_write_to_stream(g_mime_part_get_content(part), stream.get());
    const GByteArray *octets = g_mime_stream_mem_get_byte_array(GMIME_STREAM_MEM(stream.get()));
    return {reinterpret_cast<const char *>(octets->data), octets->len};
}

Part from_mime(GMimeObject *object) {
    Part part;
    GMimeContentType *type = g_mime_object_get_content_type(object);
    part.parameters = parameters_of(type);
    const std::string subtype = g_mime_content_type_get_media_subtype(type);
    if (GMIME_IS_MULTIPART(object)) {
        part.media_type = std::string(multipart_type) + subtype;
        for (int i = 0; i < g_mime_multipart_get_count(GMIME_MULTIPART(object)); ++i) {
            part.parts.push_back(from_mime(g_mime_multipart_get_part(GMIME_MULTIPART(object), i)));
        }
        return part;
    }
    part.media_type = std::string(g_mime_content_type_get_media_type(type)) + "/" + subtype;
    const std::string id = text_or_empty(g_mime_object_get_content_id(object));
    part.content_id = id.empty() ? id : "<" + id + ">";
    part.content_location = text_or_empty(g_mime_part_get_content_location(GMIME_PART(object)));
    part.body = body_of(GMIME_PART(object));
    return part;
}

std::vector<Mailbox> mailboxes(GMimeMessage *message, GMimeAddressType type) {
    std::vector<Mailbox> all;
    InternetAddressList *list = g_mime_message_get_addresses(message, type);
    for (int i = 0; i < internet_address_list_length(list); ++i) {
        InternetAddress *address = internet_address_list_get_address(list, i);
        all.push_back({text_or_empty(internet_address_get_name(address)),
                       internet_address_mailbox_get_addr(INTERNET_ADDRESS_MAILBOX(address))});
    }
    return all;
}

Content from_mime(GMimeMessage *message) {
    Content content;
    for (const NumberHeader &row : number_headers) {
        content.*row.value = number(header(message, row.name));
    }
    for (const TextHeader &row : text_headers) {
        content.*row.value = header(message, row.name);
    }
    content.message_id = text_or_empty(g_mime_message_get_message_id(message));
    content.version = number(header(message, "X-Mms-Mms-Version"));
    const std::string expiry = header(message, "X-Mms-Expiry");
    content.expiry_token = number(expiry);
    content.expiry = expiry.empty() ? 0 : number(expiry.substr(expiry.find(' ') + 1));
    GDateTime *date = g_mime_message_get_date(message);
    content.date = date != nullptr ? static_cast<uint32_t>(g_date_time_to_unix(date)) : 0;
    content.subject = text_or_empty(g_mime_message_get_subject(message));
    const std::vector<Mailbox> from = mailboxes(message, GMIME_ADDRESS_TYPE_FROM);
    content.from = from.empty() ? Mailbox() : from.front();
    content.to = mailboxes(message, GMIME_ADDRESS_TYPE_TO);
    GMimeObject *body = g_mime_message_get_mime_part(message);
    if (body != nullptr && g_mime_object_get_header(body, "Content-Type") != nullptr) {
        content.body = from_mime(body);
    }
    return content;
}

// Asks for the text of every header, and for the addresses.
void read_headers(GMimeObject *object) {
    GMimeHeaderList *list = g_mime_object_get_header_list(object);
    const int count = g_mime_header_list_get_count(list);
    for (int i = 0; i < count; ++i) {
        g_mime_header_get_value(g_mime_header_list_get_header_at(list, i));
    }
}

void read_all(GMimeMessage *message) {
    read_headers(GMIME_OBJECT(message));
    g_mime_message_get_from(message);
    g_mime_message_get_to(message);
    g_mime_message_get_subject(message);
    g_mime_message_foreach(
        message, [](GMimeObject *, GMimeObject *part, void *) { read_headers(part); }, nullptr);
}

// --- the side ------------------------------------------------------------------------------------

struct FreeArray {
    void operator()(GByteArray *array) const { g_byte_array_unref(array); }
};

class GmimeSide : public Side {
public:
    explicit GmimeSide(const Content &content) : octets_(g_byte_array_new()) {
        const std::string octets = to_mime(content);
        g_byte_array_append(octets_.get(), reinterpret_cast<const uint8_t *>(octets.data()),
                            static_cast<unsigned>(octets.size()));
        message_ = parse();
        read_all(message_.get());
    }

    [[nodiscard]] Content content() const override { return from_mime(parse().get()); }

    void decode() const override { read_all(parse().get()); }

    void encode() const override {
        const Owned<GMimeStream> stream(g_mime_stream_mem_new());
        g_mime_object_write_to_stream(GMIME_OBJECT(message_.get()), nullptr, stream.get());
    }

private:
    [[nodiscard]] Owned<GMimeMessage> parse() const {
        const Owned<GMimeStream> stream(g_mime_stream_mem_new_with_byte_array(octets_.get()));
        g_mime_stream_mem_set_owner(GMIME_STREAM_MEM(stream.get()), FALSE);
        const Owned<GMimeParser> parser(g_mime_parser_new_with_stream(stream.get()));
        g_mime_parser_set_persist_stream(parser.get(), FALSE);
        return Owned<GMimeMessage>(g_mime_parser_construct_message(parser.get(), nullptr));
    }

    std::unique_ptr<GByteArray, FreeArray> octets_;
    Owned<GMimeMessage> message_;
};

const AddSide added("GMime", [](const Content &content) -> std::unique_ptr<Side> {
    g_mime_init();
    return std::make_unique<GmimeSide>(content);
});

} // namespace
} // namespace bench
