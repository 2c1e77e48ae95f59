#include "show.hpp"

#include "names.hpp"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <span>
#include <string>
#include <string_view>

namespace mmspdu {
namespace {

uint32_t integer_of(const MMS_Field &field) {
    return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(field.pValue));
}

std::string hexadecimal(uint32_t value) {
    char text[2 + 8 + 1];
    static_cast<void>(std::snprintf(text, sizeof text, "0x%02X", value));
    return text;
}

std::string counted(uint64_t count, std::string_view unit) {
    return std::to_string(count) + " " + std::string(unit) + (count == 1 ? "" : "s");
}

// --- times -----------------------------------------------------------------------------------

std::string seconds_text(uint32_t seconds) { return std::to_string(seconds) + " s"; }

std::string utc_text(uint32_t seconds) {
    const auto time = static_cast<time_t>(seconds);
    struct tm parts {};
    char text[32] = "";
    if (gmtime_r(&time, &parts) != nullptr) {
        static_cast<void>(std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S UTC", &parts));
    }
    return std::string(text) + " (" + seconds_text(seconds) + ")";
}

struct Unit {
    uint32_t seconds;
    const char *name;
};

constexpr Unit units[] = {{86400, "day"}, {3600, "hour"}, {60, "minute"}, {1, "second"}};

std::string duration_words(uint32_t seconds) {
    std::string words;
    for (const Unit &unit : units) {
        const uint32_t count = seconds / unit.seconds;
        seconds %= unit.seconds;
        if (count != 0) {
            words += (words.empty() ? "" : " ") + counted(count, unit.name);
        }
    }
    return words;
}

std::string relative_text(uint32_t seconds) {
    const bool says_more = seconds >= 60;
    return seconds_text(seconds) + (says_more ? " (" + duration_words(seconds) + ")" : "");
}

// --- texts in media types --------------------------------------------------------------------

bool is_text(const MMS_Entity &entity) {
    const MMS_ContentType *type = MMS_GetContentType(&entity);
    if (type == nullptr) {
        return false;
    }
    std::string media = type->pMediaType;
    std::transform(media.begin(), media.end(), media.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return media.starts_with("text/") || media == "application/smil" ||
           media == "application/xml" || media.ends_with("+xml");
}

std::string_view charset_of(const MMS_Entity &entity) {
    const MMS_Parameter *parameter =
        MMS_FindContentTypeParameter(MMS_GetContentType(&entity), MMS_CHARSET_STRING);
    const bool given = parameter != nullptr && parameter->pValue != nullptr;
    return given ? parameter->pValue : std::string_view();
}

std::string_view content_of(const MMS_Entity &entity) {
    // The content may hold any octets; char is the element that string_view counts.
    return {reinterpret_cast<const char *>(MMS_GetContent(&entity)), MMS_GetContentLength(&entity)};
}

const MMS_Container *nested_container(const MMS_Entity &entity) {
    const MMS_Field *field = MMS_FindField(&entity, INTERNAL_NESTED_MULTIPART_FIELD_NAME);
    return field != nullptr ? static_cast<const MMS_Container *>(field->pValue) : nullptr;
}

// --- the message -----------------------------------------------------------------------------

class Shower {
public:
    Shower(std::ostream &out, const TextPrinter &printer, uint32_t lines)
        : out_(out), printer_(printer), lines_(lines) {}

    void message(const MMSLib_Message &message, const HeaderCodes &present) {
        const MMS_EntityList *entities = message.pContainer->pEntityList;
        const MMS_Entity *headers = MMS_GetFirstEntity(entities);
        if (headers == nullptr) {
            return;
        }
        present_ = &present;
        fields(*headers);
        present_ = nullptr;
        if (MMS_GetContentLength(headers) != 0) {
            out_ << "\nBody: " << octets(*headers) << '\n';
            content_lines(*headers);
        }
        parts(*entities, "Part ", true);
    }

private:
    using PrintField = void (Shower::*)(const char *name, const MMS_Field &field);
    struct Row {
        const char *header;
        PrintField print;
    };
    static std::span<const Row> rows();

    // Goes in by four columns for as long as it lives.
    class Indent {
    public:
        explicit Indent(Shower &shower) : indent_(shower.indent_) { indent_.append(4, ' '); }
        Indent(const Indent &) = delete;
        Indent &operator=(const Indent &) = delete;
        ~Indent() { indent_.resize(indent_.size() - 4); }

    private:
        std::string &indent_;
    };

    void line(std::string_view name, std::string_view value) {
        out_ << indent_ << name << ':' << (value.empty() ? "" : " ") << value << '\n';
    }

    // What is said behind the value of a header that the PDU leaves out.
    [[nodiscard]] const char *default_mark(const char *name) const {
        uint8_t code = 0;
        const bool is_default = present_ != nullptr &&
                                MMS_SearchMapForToken(MMS_HEADER_MAP, name, &code) != 0 &&
                                code < present_->size() && !present_->test(code);
        return is_default ? ", the default (not in the PDU)" : "";
    }

    [[nodiscard]] std::string text(const char *octets, const char *charset = nullptr) const {
        return printer_.text(octets != nullptr ? octets : "", charset != nullptr ? charset : "");
    }

    // The text with its character set, if it has one.
    [[nodiscard]] std::string labelled(const char *octets, const char *charset) const {
        return text(octets, charset) +
               (charset != nullptr ? " (" + text(charset) + ")" : std::string());
    }

    static std::string octets(const MMS_Entity &entity) {
        return counted(MMS_GetContentLength(&entity), "octet");
    }

    // --- fields ---

    void fields(const MMS_Entity &entity) {
        const uint16_t count = MMS_LinkedList_GetFieldCount(entity.pFieldList);
        slIterator at;
        slIterator_Init(&at, entity.pFieldList);
        for (uint16_t i = 0; i < count; ++i, slIterator_Next(&at)) {
            field(*static_cast<const MMS_Field *>(slIterator_Current(&at)));
        }
    }

    void field(const MMS_Field &field) {
        const char *name = MMS_SearchFieldMapForName(field.fieldId);
        if (name == nullptr) {
            return;
        }
        const std::string_view header = name;
        for (const Row &row : rows()) {
            if (header == row.header) {
                (this->*row.print)(name, field);
                return;
            }
        }
        octet_field(name, field);
    }

    // Every header that is in no other form is one octet.
    void octet_field(const char *name, const MMS_Field &field) {
        const uint32_t value = integer_of(field);
        const std::string number = hexadecimal(value);
        const char *meaning = value_name(name, value);
        line(name,
             (meaning != nullptr ? meaning + (" (" + number + ")") : number) + default_mark(name));
    }

    void version_field(const char *name, const MMS_Field &field) {
        constexpr uint8_t no_minor = 15;
        const auto version = static_cast<uint8_t>(integer_of(field));
        const uint8_t minor = MMSGetMinorVersion(version);
        line(name, std::to_string(MMSGetMajorVersion(version)) +
                       (minor != no_minor ? "." + std::to_string(minor) : std::string()));
    }

    void text_field(const char *name, const MMS_Field &field) {
        line(name, text(static_cast<const char *>(field.pValue)) + default_mark(name));
    }

    void encoded_string_field(const char *name, const MMS_Field &field) {
        const auto *string = static_cast<const MMS_EncodedString *>(field.pValue);
        line(name, labelled(string->pText, string->pCharset));
    }

    void date_field(const char *name, const MMS_Field &field) {
        line(name, utc_text(integer_of(field)));
    }

    void size_field(const char *name, const MMS_Field &field) {
        line(name, counted(integer_of(field), "octet"));
    }

    void duration_field(const char *name, const MMS_Field &field) {
        line(name, relative_text(integer_of(field)));
    }

    void time_field(const char *name, const MMS_Field &field) {
        constexpr uint8_t absolute = 128;
        const auto *time = static_cast<const MMS_SpecialTime *>(field.pValue);
        line(name, time->token == absolute ? "absolute, " + utc_text(time->value)
                                           : "relative, " + relative_text(time->value));
    }

    void group_field(const char *name, const MMS_Field &field) {
        const auto *group = static_cast<const MMS_Group *>(field.pValue);
        const uint16_t count = MMS_GetMailboxCount(group);
        slIterator at;
        slIterator_Init(&at, group->pMailboxList);
        for (uint16_t i = 0; i < count; ++i, slIterator_Next(&at)) {
            const auto *node = static_cast<const MMS_ListNode *>(slIterator_Current(&at));
            line(name, mailbox(*static_cast<const MMS_Mailbox *>(node->pValue)));
        }
    }

    [[nodiscard]] std::string mailbox(const MMS_Mailbox &mailbox) const {
        const MMS_EncodedString *address = mailbox.pAddress;
        const char *charset = address != nullptr ? address->pCharset : nullptr;
        const std::string name = "\"" + text(mailbox.pDisplayName, charset) + "\"";
        if (address == nullptr) {
            return name + " (the address is too long to be kept)";
        }
        if (mailbox.pDisplayName == nullptr) {
            return labelled(address->pText, charset);
        }
        return name + " <" + text(address->pText, charset) + ">" +
               (charset != nullptr ? " (" + text(charset) + ")" : std::string());
    }

    void content_type_field(const char *name, const MMS_Field &field) {
        const auto *type = static_cast<const MMS_ContentType *>(field.pValue);
        line(name, text(type->pMediaType));
        const Indent indent(*this);
        const uint16_t count = MMS_LinkedList_GetParameterCount(type->pParameters);
        slIterator at;
        slIterator_Init(&at, type->pParameters);
        for (uint16_t i = 0; i < count; ++i, slIterator_Next(&at)) {
            const auto *node = static_cast<const MMS_ListNode *>(slIterator_Current(&at));
            const auto *parameter = static_cast<const MMS_Parameter *>(node->pValue);
            line(text(parameter->pName), parameter->pValue != nullptr
                                             ? labelled(parameter->pValue, parameter->pCharset)
                                             : "(no value)");
        }
    }

    void disposition_field(const char *name, const MMS_Field &field) {
        const auto *disposition = static_cast<const MMS_ContentDisposition *>(field.pValue);
        line(name, text(disposition->pDisposition));
        if (disposition->pFilename != nullptr) {
            const Indent indent(*this);
            line(MMS_FILENAME_STRING, labelled(disposition->pFilename, disposition->pCharset));
        }
    }

    void generic_field(const char * /*name*/, const MMS_Field &field) {
        const auto *data = static_cast<const MMS_GenericData *>(field.pValue);
        line(text(data->pHeaderName), text(data->pHeaderValue));
    }

    // The nested parts are shown after the fields.
    void container_field(const char * /*name*/, const MMS_Field & /*field*/) {}

    // --- parts ---

    // The entities of a container, numbered behind the prefix.
    void parts(const MMS_EntityList &entities, const std::string &prefix, bool headers_first) {
        const uint16_t count = MMS_LinkedList_GetEntityCount(&entities);
        uint32_t number = headers_first ? 0 : 1;
        slIterator at;
        slIterator_Init(&at, const_cast<MMS_EntityList *>(&entities));
        for (uint16_t i = 0; i < count; ++i, ++number, slIterator_Next(&at)) {
            const auto *node = static_cast<const MMS_ListNode *>(slIterator_Current(&at));
            if (number != 0) {
                part(*static_cast<const MMS_Entity *>(node->pValue),
                     prefix + std::to_string(number));
            }
        }
    }

    void part(const MMS_Entity &entity, const std::string &title) {
        const MMS_Container *nested = nested_container(entity);
        out_ << '\n'
             << indent_ << title << ": "
             << (nested != nullptr ? counted(MMS_GetEntityCount(nested), "part") : octets(entity))
             << '\n';
        const Indent indent(*this);
        fields(entity);
        if (nested != nullptr) {
            parts(*nested->pEntityList, title + ".", false);
        } else {
            content_lines(entity);
        }
    }

    void content_lines(const MMS_Entity &entity) {
        if (!is_text(entity)) {
            return;
        }
        const TextLines lines = printer_.lines(content_of(entity), charset_of(entity), lines_);
        for (const std::string &text : lines.first) {
            out_ << indent_ << "| " << text << '\n';
        }
        const uint64_t hidden = lines.count - lines.first.size();
        if (hidden != 0) {
            out_ << indent_ << '(' << counted(hidden, lines.first.empty() ? "line" : "more line")
                 << ")\n";
        }
    }

    std::ostream &out_;
    const TextPrinter &printer_;
    uint32_t lines_;
    std::string indent_;
    const HeaderCodes *present_ = nullptr; // while the headers of the message are printed
};

std::span<const Shower::Row> Shower::rows() {
    static const Row table[] = {
        {X_MMS_MMS_VERSION_FIELD_NAME, &Shower::version_field},
        {X_MMS_TRANSACTION_ID_FIELD_NAME, &Shower::text_field},
        {X_MMS_MESSAGE_CLASS_FIELD_NAME, &Shower::text_field},
        {X_MMS_CONTENT_LOCATION_FIELD_NAME, &Shower::text_field},
        {X_MMS_APPLIC_ID_FIELD_NAME, &Shower::text_field},
        {X_MMS_REPLY_APPLIC_ID_FIELD_NAME, &Shower::text_field},
        {MESSAGE_ID_FIELD_NAME, &Shower::text_field},
        {SUBJECT_FIELD_NAME, &Shower::encoded_string_field},
        {X_MMS_RESPONSE_TEXT_FIELD_NAME, &Shower::encoded_string_field},
        {DATE_FIELD_NAME, &Shower::date_field},
        {X_MMS_DELIVERY_TIME_FIELD_NAME, &Shower::time_field},
        {X_MMS_EXPIRY_FIELD_NAME, &Shower::time_field},
        {X_MMS_MESSAGE_SIZE_FIELD_NAME, &Shower::size_field},
        {TO_FIELD_NAME, &Shower::group_field},
        {CC_FIELD_NAME, &Shower::group_field},
        {BCC_FIELD_NAME, &Shower::group_field},
        {FROM_FIELD_NAME, &Shower::group_field},
        {CONTENT_TYPE_FIELD_NAME, &Shower::content_type_field},
        {CONTENT_ID_FIELD_NAME, &Shower::text_field},
        {CONTENT_LOCATION_FIELD_NAME, &Shower::text_field},
        {CONTENT_DURATION_FIELD_NAME, &Shower::duration_field},
        {CONTENT_DISPOSITION_FIELD_NAME, &Shower::disposition_field},
        {INTERNAL_GENERIC_ENTITY_HEADER_FIELD_NAME, &Shower::generic_field},
        {INTERNAL_NESTED_MULTIPART_FIELD_NAME, &Shower::container_field},
    };
    return table;
}

} // namespace

void show_message(std::ostream &out, const TextPrinter &printer, const DecodedPdu &pdu,
                  uint32_t lines) {
    Shower(out, printer, lines).message(*pdu.message, pdu.present);
}

} // namespace mmspdu
