#include "mms_side.hpp"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <benchmark/benchmark.h>

namespace bench {
namespace {

// Content that cannot be built or encoded is a mistake in the workload.
void must(bool done) {
    if (!done) {
        std::fputs("a message cannot be built\n", stderr);
        std::exit(EXIT_FAILURE);
    }
}

// --- building ------------------------------------------------------------------------------------

char *heap_text(const std::string &text) { return text.empty() ? nullptr : strdup(text.c_str()); }

MMS_Group *group_of(const std::vector<Mailbox> &mailboxes) {
    MMS_Group *group = MMS_Group_Create();
    for (const Mailbox &mailbox : mailboxes) {
        MMS_EncodedString *address = MMS_CreateEncodedString(mailbox.address.c_str(), nullptr);
        must(MMS_AddMailbox(group,
                            MMS_CreateMailbox(128, heap_text(mailbox.display_name), address)) != 0);
    }
    return group;
}

MMS_ContentType *content_type_of(const Part &part) {
    MMS_ContentType *type = MMS_CreateContentType(part.media_type.c_str());
    for (const Parameter &parameter : part.parameters) {
        must(MMS_LinkedList_AddParameter(
                 type->pParameters,
                 MMS_CreateParameter(parameter.name.c_str(), parameter.value.c_str())) != 0);
    }
    return type;
}

void add_parts(MMS_Container *container, const Part &multipart);

MMS_Entity *entity_of(const Part &part) {
    MMS_Entity *entity = MMS_Entity_Create();
    MMS_ContentType *type = content_type_of(part);
    must(MMS_SetContentType(entity, type) != 0);
    if (MMS_IsMultipart(type) != 0) {
        MMS_Container *nested = MMS_Container_Create();
        entity->isMultipart = 1;
        must(MMS_SetField(entity, INTERNAL_NESTED_MULTIPART_FIELD_NAME, nested) != 0);
        add_parts(nested, part);
    }
    if (!part.content_id.empty()) {
        must(MMS_SetContentId(entity, part.content_id.c_str()) != 0);
    }
    if (!part.content_location.empty()) {
        must(MMS_SetContentLocation(entity, part.content_location.c_str()) != 0);
    }
    must(MMS_SetContent(entity, reinterpret_cast<const uint8_t *>(part.body.data()),
                        static_cast<uint32_t>(part.body.size()), 0) != 0);
    return entity;
}

void add_parts(MMS_Container *container, const Part &multipart) {
    for (const Part &part : multipart.parts) {
        uint16_t position = 0;
        must(MMS_AddEntity(container, entity_of(part), &position) != 0);
    }
}

void *slot(uint32_t value) {
    return reinterpret_cast<void *>(uintptr_t{value}); // NOLINT(performance-no-int-to-ptr)
}

void set_plain_headers(MMS_Container *headers, const Content &content) {
    MMS_Entity *entity = MMS_GetEntity(headers, 0);
    for (const NumberHeader &header : number_headers) {
        if (content.*header.value != 0) {
            must(MMS_SetField(entity, header.name, slot(content.*header.value)) != 0);
        }
    }
    for (const TextHeader &header : text_headers) {
        const std::string &value = content.*header.value;
        if (!value.empty()) {
            must(MMSLib_SetXMmsGenericTextField(headers, header.name, value.c_str()) != 0);
        }
    }
}

void set_headers(MMS_Container *headers, const Content &content) {
    const auto version = static_cast<uint8_t>(content.version);
    set_plain_headers(headers, content);
    must(MMSLib_SetXMmsVersion(headers, MMSGetMajorVersion(version), MMSGetMinorVersion(version)) !=
         0);
    if (content.date != 0) {
        must(MMSLib_SetDate(headers, content.date) != 0);
    }
    if (content.expiry_token != 0) {
        const uint32_t absolute = content.expiry_token == 128 ? 1 : 0;
        must(MMSLib_SetXMmsExpiry(headers, MMS_CreateSpecialTime(absolute, content.expiry)) != 0);
    }
    if (!content.subject.empty()) {
        must(MMSLib_SetSubject(headers, MMS_CreateEncodedString(content.subject.c_str(),
                                                                MMS_CHARSET_UTF_8)) != 0);
    }
    must(MMSLib_SetFrom(headers, group_of({content.from})) != 0);
    if (!content.to.empty()) {
        must(MMSLib_SetTo(headers, group_of(content.to)) != 0);
    }
    if (!content.body.media_type.empty()) {
        must(MMSLib_SetContentType(headers, content_type_of(content.body)) != 0);
    }
}

OwnedMessage build(const Content &content) {
    OwnedMessage message(MMSLib_Message_Create());
    MMS_Container *container = message->pContainer;
    uint16_t position = 0;
    must(MMS_AddEntity(container, MMS_Entity_Create(), &position) != 0);
    set_headers(container, content);
    add_parts(container, content.body);
    return message;
}

// --- reading -------------------------------------------------------------------------------------

std::string text_or_empty(const char *text) { return text != nullptr ? text : std::string(); }

std::vector<Mailbox> mailboxes_of(const MMS_Group *group) {
    std::vector<Mailbox> mailboxes;
    for (uint32_t i = 0; group != nullptr && i < MMS_GetMailboxCount(group); ++i) {
        const MMS_Mailbox *mailbox = MMS_GetMailbox(group, i);
        mailboxes.push_back({text_or_empty(mailbox->pDisplayName), mailbox->pAddress->pText});
    }
    return mailboxes;
}

void read_type(const MMS_ContentType *type, Part &part) {
    part.media_type = type->pMediaType;
    for (uint32_t i = 0; i < MMS_LinkedList_GetParameterCount(type->pParameters); ++i) {
        const MMS_Parameter *parameter = MMS_LinkedList_FindParameterByPos(type->pParameters, i);
        part.parameters.push_back({parameter->pName, parameter->pValue});
    }
}

std::vector<Part> parts_of(const MMS_Container *container, uint32_t first);

Part part_of(const MMS_Entity *entity) {
    Part part;
    read_type(MMS_GetContentType(entity), part);
    part.content_id = text_or_empty(MMS_GetContentId(entity));
    part.content_location = text_or_empty(MMS_GetContentLocation(entity));
    part.body.assign(reinterpret_cast<const char *>(MMS_GetContent(entity)),
                     MMS_GetContentLength(entity));
    const MMS_Field *nested = MMS_FindField(entity, INTERNAL_NESTED_MULTIPART_FIELD_NAME);
    if (nested != nullptr) {
        part.parts = parts_of(static_cast<const MMS_Container *>(nested->pValue), 0);
    }
    return part;
}

std::vector<Part> parts_of(const MMS_Container *container, uint32_t first) {
    std::vector<Part> parts;
    for (uint32_t i = first; i < MMS_GetEntityCount(container); ++i) {
        parts.push_back(part_of(MMS_GetEntity(container, i)));
    }
    return parts;
}

void read_plain_headers(const MMS_Container *headers, Content &content) {
    const MMS_Entity *entity = MMS_GetEntity(headers, 0);
    for (const NumberHeader &header : number_headers) {
        const MMS_Field *field = MMS_FindField(entity, header.name);
        if (field != nullptr) {
            content.*header.value =
                static_cast<uint32_t>(reinterpret_cast<uintptr_t>(field->pValue));
        }
    }
    for (const TextHeader &header : text_headers) {
        content.*header.value = text_or_empty(MMSLib_GetXMmsGenericTextField(headers, header.name));
    }
}

Content read(const MMSLib_Message *message) {
    Content content;
    const MMS_Container *headers = message->pContainer;
    uint8_t major = 0;
    uint8_t minor = 0;
    read_plain_headers(headers, content);
    content.version = MMSLib_GetXMmsVersion(headers, &major, &minor) & 0x7FU;
    MMSLib_GetDate(headers, &content.date);
    if (const MMS_SpecialTime *expiry = MMSLib_GetXMmsExpiry(headers); expiry != nullptr) {
        content.expiry_token = expiry->token;
        content.expiry = expiry->value;
    }
    if (const MMS_EncodedString *subject = MMSLib_GetSubject(headers); subject != nullptr) {
        content.subject = subject->pText;
    }
    content.from = mailboxes_of(MMSLib_GetFrom(headers)).front();
    content.to = mailboxes_of(MMSLib_GetTo(headers));
    if (const MMS_ContentType *type = MMSLib_GetContentType(headers); type != nullptr) {
        read_type(type, content.body);
        content.body.parts = parts_of(headers, 1);
    }
    return content;
}

// --- coding --------------------------------------------------------------------------------------

const uint8_t *octets_of(const std::string &pdu) {
    return reinterpret_cast<const uint8_t *>(pdu.data());
}

OwnedMessage decode_pdu(const std::string &pdu) {
    MMSLib_Message *message = nullptr;
    MMSLib_DecodeMessage(octets_of(pdu), static_cast<uint32_t>(pdu.size()), &message);
    return OwnedMessage(message);
}

std::string encode_message(const MMSLib_Message *message) {
    uint8_t *octets = nullptr;
    uint32_t length = 0;
    must(MMSLib_EncodeMessage(message, &octets, &length, 1) == MMS_STATUS_OK);
    std::string pdu(reinterpret_cast<const char *>(octets), length);
    std::free(octets);
    return pdu;
}

void encode_and_free(const MMSLib_Message *message) {
    uint8_t *octets = nullptr;
    uint32_t length = 0;
    MMSLib_EncodeMessage(message, &octets, &length, 0);
    std::free(octets);
}

} // namespace

MmsSide::MmsSide(const Content &content)
    : pdu_(encode_message(build(content).get())), message_(decode_pdu(pdu_)) {
    must(encode_message(message_.get()).size() == pdu_.size());
}

Content MmsSide::content() const { return read(decode_alone().get()); }

void MmsSide::decode() const { decode_alone().reset(); }

void MmsSide::encode() const { encode_and_free(message_.get()); }

OwnedMessage MmsSide::decode_alone() const { return decode_pdu(pdu_); }

void MmsSide::recode() const { encode_and_free(decode_alone().get()); }

Floor::Floor(const MmsSide &library)
    : record_(record_heap(
          [&] { return library.decode_alone().release(); },
          [](void *message) { MMSLib_Message_Destroy(static_cast<MMSLib_Message *>(message)); })),
      pdu_(library.pdu()), addresses_(record_.sizes.size()) {
    must(record_.release_order.size() == record_.sizes.size());
}

void Floor::decode() const {
    const uint8_t *contents = record_.contents.data();
    for (size_t i = 0; i < addresses_.size(); ++i) {
        addresses_[i] = std::memcpy(std::malloc(record_.sizes[i]), contents, record_.sizes[i]);
        contents += record_.sizes[i];
    }
    benchmark::ClobberMemory();
    for (const size_t i : record_.release_order) {
        std::free(addresses_[i]);
    }
}

void Floor::encode() const {
    void *&block = addresses_.front(); // where the compiler has to leave it
    block = std::memcpy(std::malloc(pdu_.size()), pdu_.data(), pdu_.size());
    benchmark::ClobberMemory();
    std::free(block);
}

} // namespace bench
