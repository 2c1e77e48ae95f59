#include "support/describe.hpp"

#include "support/support.hpp"

namespace test {
namespace {

std::string parameters(const MMS_ParameterList *list) {
    std::string line;
    for (uint32_t i = 0; i < MMS_LinkedList_GetParameterCount(list); ++i) {
        const MMS_Parameter *parameter = MMS_LinkedList_FindParameterByPos(list, i);
        line += "; " + shown(parameter->pName) + "=" + shown(parameter->pValue) + "/" +
                shown(parameter->pCharset);
    }
    return line;
}

std::string encoded_string(const MMS_EncodedString *string) {
    return string == nullptr ? "null" : shown(string->pCharset) + ":" + shown(string->pText);
}

std::string group(const MMS_Group *group) {
    std::string line;
    for (uint32_t i = 0; i < MMS_GetMailboxCount(group); ++i) {
        const MMS_Mailbox *mailbox = MMS_GetMailbox(group, i);
        line += "<" + shown(mailbox->pDisplayName) + "," + encoded_string(mailbox->pAddress) + ">";
    }
    return line;
}

std::string value(const MMS_Field *field) {
    const std::string name = shown(MMS_SearchFieldMapForName(field->fieldId));
    const void *record = field->pValue;
    if (name == "To" || name == "Cc" || name == "Bcc" || name == "From") {
        return group(static_cast<const MMS_Group *>(record));
    }
    if (name == "Subject" || name == "X-Mms-Response-Text") {
        return encoded_string(static_cast<const MMS_EncodedString *>(record));
    }
    if (name == "Content-Type") {
        const auto *type = static_cast<const MMS_ContentType *>(record);
        return shown(type->pMediaType) + parameters(type->pParameters);
    }
    if (name == "Content-Disposition") {
        const auto *disposition = static_cast<const MMS_ContentDisposition *>(record);
        return shown(disposition->pDisposition) + ";" + shown(disposition->pFilename) + "/" +
               shown(disposition->pCharset);
    }
    if (name == "X-Mms-Delivery-Time" || name == "X-Mms-Expiry") {
        const auto *time = static_cast<const MMS_SpecialTime *>(record);
        return std::to_string(time->token) + ":" + std::to_string(time->value);
    }
    if (name == INTERNAL_GENERIC_ENTITY_HEADER_FIELD_NAME) {
        const auto *data = static_cast<const MMS_GenericData *>(record);
        return shown(data->pHeaderName) + "=" + shown(data->pHeaderValue);
    }
    for (const char *text : {"Content-Id", "Content-Location", "Message-Id",
                             "X-Mms-Content-Location", "X-Mms-Message-Class",
                             "X-Mms-Transaction-Id", "X-Mms-Applic-ID", "X-Mms-Reply-Applic-ID"}) {
        if (name == text) {
            return shown(static_cast<const char *>(record));
        }
    }
    return std::to_string(slot_value(field));
}

void describe_into(const MMS_Container *container, const std::string &path,
                   std::vector<std::string> &lines) {
    for (uint32_t i = 0; i < MMS_GetEntityCount(container); ++i) {
        const MMS_Entity *entity = MMS_GetEntity(container, i);
        const std::string at = path + std::to_string(i);
        const MMS_Container *parts = nullptr;
        for (uint32_t j = 0; j < MMS_LinkedList_GetFieldCount(entity->pFieldList); ++j) {
            const MMS_Field *field = MMS_LinkedList_FindFieldByPos(entity->pFieldList, j);
            const std::string name = shown(MMS_SearchFieldMapForName(field->fieldId));
            if (name == INTERNAL_NESTED_MULTIPART_FIELD_NAME) {
                parts = static_cast<const MMS_Container *>(field->pValue);
            } else {
                lines.push_back(at + " " + name + ": " + value(field));
            }
        }
        const uint8_t *content = MMS_GetContent(entity);
        lines.push_back(at + " content " +
                        std::string(content, content + MMS_GetContentLength(entity)) +
                        (entity->isMultipart != 0 ? " multipart" : ""));
        if (parts != nullptr) {
            describe_into(parts, at + ".", lines);
        }
    }
}

} // namespace

std::vector<std::string> describe(const MMS_Container *container) {
    std::vector<std::string> lines;
    describe_into(container, "", lines);
    return lines;
}

} // namespace test
