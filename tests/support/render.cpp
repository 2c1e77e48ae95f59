#include "support/render.hpp"

#include <algorithm>
#include <cctype>

namespace test {

Kind kind_of(uint8_t field_id) {
    switch (field_id) {
    case 1: // Bcc, Cc, From, To
    case 2:
    case 9:
    case 12:
        return Kind::group;
    case 3:
        return Kind::disposition;
    case 5: // Content-Id, Content-Location, Message-Id, X-Mms-Content-Location and so on
    case 6:
    case 10:
    case 13:
    case 17:
    case 28:
    case 56:
    case 57:
        return Kind::text;
    case 7:
        return Kind::content_type;
    case 11: // Subject, X-Mms-Response-Text
    case 25:
        return Kind::encoded_string;
    case 15: // X-Mms-Delivery-Time, X-Mms-Expiry
    case 16:
        return Kind::special_time;
    case 59:
        return Kind::container;
    case 60:
        return Kind::generic;
    default:
        return Kind::integer;
    }
}

std::string in_braces(const char *charset) {
    return charset != nullptr ? "{" + std::string(charset) + "}" : "";
}

std::string shown(const MMS_EncodedString *string) {
    return string != nullptr ? shown(string->pText) + in_braces(string->pCharset) : "(null)";
}

std::string shown(const MMS_Mailbox *mailbox) {
    const char *name = mailbox->pDisplayName;
    require(mailbox->pAddress != nullptr || name != nullptr);
    return (name != nullptr ? std::string(name) + "|" : "") + shown(mailbox->pAddress) +
           (mailbox->type == 128 ? "" : " of a wrong type");
}

std::string shown(const MMS_Group *group) {
    std::string all;
    each_carried<MMS_Mailbox>(group->pMailboxList, [&](const MMS_Mailbox *mailbox) {
        all += (all.empty() ? "" : " & ") + shown(mailbox);
    });
    require(MMS_GetMailboxCount(group) != 0);
    return all;
}

std::string shown(const MMS_SpecialTime *time) {
    return std::to_string(time->token) + ":" + std::to_string(time->value);
}

std::string shown(const MMS_Parameter *parameter) {
    const char *value = parameter->pValue;
    return ";" + shown(parameter->pName) + (value != nullptr ? "=" + std::string(value) : "") +
           in_braces(parameter->pCharset);
}

std::string shown(const MMS_ContentType *type) {
    std::string all = shown(type->pMediaType);
    each_carried<MMS_Parameter>(type->pParameters,
                                [&](const MMS_Parameter *parameter) { all += shown(parameter); });
    return all;
}

std::string shown(const MMS_ContentDisposition *disposition) {
    const char *name = disposition->pFilename;
    return shown(disposition->pDisposition) + (name != nullptr ? " " + std::string(name) : "") +
           in_braces(disposition->pCharset);
}

std::string shown(const MMS_GenericData *data) {
    return "'" + shown(data->pHeaderName) + "'=" + shown(data->pHeaderValue);
}

std::string shown(uint8_t field_id, const void *value) {
    switch (kind_of(field_id)) {
    case Kind::text:
        return shown(static_cast<const char *>(value));
    case Kind::encoded_string:
        return shown(static_cast<const MMS_EncodedString *>(value));
    case Kind::group:
        return shown(static_cast<const MMS_Group *>(value));
    case Kind::content_type:
        return shown(static_cast<const MMS_ContentType *>(value));
    case Kind::disposition:
        return shown(static_cast<const MMS_ContentDisposition *>(value));
    case Kind::special_time:
        return shown(static_cast<const MMS_SpecialTime *>(value));
    case Kind::generic:
        return shown(static_cast<const MMS_GenericData *>(value));
    case Kind::container:
        return shown(static_cast<const MMS_Container *>(value));
    case Kind::integer:
        break;
    }
    return std::to_string(reinterpret_cast<uintptr_t>(value));
}

std::string shown(const MMS_Entity *entity) {
    std::string all;
    bool nested = false;
    each<MMS_Field>(entity->pFieldList, [&](const MMS_Field *field) {
        const char *name = MMS_SearchFieldMapForName(field->fieldId);
        const Kind kind = kind_of(field->fieldId);
        nested = nested || kind == Kind::container;
        if (kind == Kind::integer) {
            const MMS_EnumeratedRange range = MMSGetEnumeratedRangeByFieldName(name);
            const uint32_t number = slot_value(field);
            require(range.highest == 0 || (number >= range.lowest && number <= range.highest));
        }
        all += all.empty() ? "" : ", ";
        all +=
            (kind == Kind::generic ? "" : shown(name) + "=") + shown(field->fieldId, field->pValue);
    });
    const uint8_t *content = MMS_GetContent(entity);
    const uint32_t length = MMS_GetContentLength(entity);
    require((content != nullptr) == (length != 0));
    require(entity->isMultipart == (nested ? 1 : 0));
    require(!nested || length == 0);
    if (length != 0) {
        const std::string body(content, content + length);
        all += " #" + (length < 100 ? body : std::to_string(length)) + "#";
    }
    return all;
}

std::string shown(const MMS_Container *container) {
    std::string all;
    each_carried<MMS_Entity>(container->pEntityList,
                             [&](const MMS_Entity *entity) { all += "(" + shown(entity) + ")"; });
    return all;
}

std::string generic_key(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name + ":";
}

Contents contents(const MMS_Entity *entity) {
    Contents all;
    each<MMS_Field>(entity->pFieldList, [&](const MMS_Field *field) {
        const char *name = MMS_SearchFieldMapForName(field->fieldId);
        const auto *generic = static_cast<const MMS_GenericData *>(field->pValue);
        switch (kind_of(field->fieldId)) {
        case Kind::generic:
            require(all.emplace(generic_key(generic->pHeaderName), shown(generic)).second);
            break;
        case Kind::container:
            require(all.emplace(name, "").second);
            break;
        default:
            require(all.emplace(shown(name), shown(field->fieldId, field->pValue)).second);
            break;
        }
    });
    const uint8_t *content = MMS_GetContent(entity);
    if (content != nullptr) {
        all["#"].assign(content, content + MMS_GetContentLength(entity));
    }
    return all;
}

std::string lines(const Contents &contents) {
    std::string all;
    for (const auto &[name, value] : contents) {
        all.append(name).append("=").append(value).append("\n");
    }
    return all;
}

std::string lines(const MMS_Container *container, uint32_t first) {
    std::string all;
    uint32_t position = 0;
    each_carried<MMS_Entity>(container->pEntityList, [&](const MMS_Entity *entity) {
        if (position++ >= first) {
            const MMS_Container *parts = nested(entity);
            all.append("(").append(lines(contents(entity)));
            all.append(parts != nullptr ? lines(parts) : "").append(")");
        }
    });
    return all;
}

MMS_Container *nested(const MMS_Entity *entity) {
    const MMS_Field *field = MMS_FindField(entity, INTERNAL_NESTED_MULTIPART_FIELD_NAME);
    require((field != nullptr ? 1 : 0) == entity->isMultipart);
    return field != nullptr ? static_cast<MMS_Container *>(field->pValue) : nullptr;
}

} // namespace test
