#include "show.hpp"

#include "fields.hpp"
#include "names.hpp"
#include "wording.hpp"

#include <algorithm>
#include <ctime>
#include <string>
#include <string_view>

namespace mmspdu {
namespace {

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

// --- the message -----------------------------------------------------------------------------

class Shower {
public:
    Shower(std::ostream &out, const TextPrinter &printer, const ShowStyle &style)
        : out_(out), printer_(printer), style_(style) {}

    void message(const MMSLib_Message &message, const HeaderCodes *present) {
        const MMS_EntityList *entities = message.pContainer->pEntityList;
        const MMS_Entity *headers = MMS_GetFirstEntity(entities);
        if (headers == nullptr) {
            return;
        }
        present_ = present;
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
    static PrintField printer_of(ValueKind kind);

    // Goes in by one step for as long as it lives.
    class Indent {
    public:
        explicit Indent(Shower &shower) : indent_(shower.indent_), outer_(shower.indent_.size()) {
            indent_.append(shower.style_.indent, ' ');
        }
        Indent(const Indent &) = delete;
        Indent &operator=(const Indent &) = delete;
        ~Indent() { indent_.resize(outer_); }

    private:
        std::string &indent_;
        size_t outer_;
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
        for_each_element<MMS_Field>(entity.pFieldList, [this](const MMS_Field &field) {
            const char *name = MMS_SearchFieldMapForName(field.fieldId);
            if (name != nullptr) {
                (this->*printer_of(value_kind(name)))(name, field);
            }
        });
    }

    void octet_field(const char *name, const MMS_Field &field) {
        const uint32_t value = integer_of(field);
        const std::string number = octet_name(value);
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
        for_each_record<MMS_Mailbox>(
            group->pMailboxList, [&](const MMS_Mailbox &address) { line(name, mailbox(address)); });
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
        for_each_record<MMS_Parameter>(type->pParameters, [this](const MMS_Parameter &parameter) {
            line(text(parameter.pName), parameter.pValue != nullptr
                                            ? labelled(parameter.pValue, parameter.pCharset)
                                            : "(no value)");
        });
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
        uint32_t number = headers_first ? 0 : 1;
        for_each_record<MMS_Entity>(&entities, [&](const MMS_Entity &entity) {
            if (number != 0) {
                part(entity, prefix + std::to_string(number));
            }
            ++number;
        });
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
            parts(*nested->pEntityList, title + "/", false);
        } else {
            content_lines(entity);
        }
    }

    void content_lines(const MMS_Entity &entity) {
        if (!is_text(entity)) {
            return;
        }
        const TextLines lines =
            printer_.lines(content_of(entity), charset_of(entity), style_.lines);
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
    ShowStyle style_;
    std::string indent_;
    const HeaderCodes *present_ = nullptr; // while the headers of the message are printed
};

Shower::PrintField Shower::printer_of(ValueKind kind) {
    struct Row {
        ValueKind kind;
        PrintField print;
    };
    static constexpr Row table[] = {
        {ValueKind::version, &Shower::version_field},
        {ValueKind::text, &Shower::text_field},
        {ValueKind::encoded_string, &Shower::encoded_string_field},
        {ValueKind::date, &Shower::date_field},
        {ValueKind::time, &Shower::time_field},
        {ValueKind::size, &Shower::size_field},
        {ValueKind::duration, &Shower::duration_field},
        {ValueKind::group, &Shower::group_field},
        {ValueKind::content_type, &Shower::content_type_field},
        {ValueKind::disposition, &Shower::disposition_field},
        {ValueKind::generic, &Shower::generic_field},
        {ValueKind::container, &Shower::container_field},
    };
    for (const Row &row : table) {
        if (row.kind == kind) {
            return row.print;
        }
    }
    return &Shower::octet_field;
}

} // namespace

void show_message(std::ostream &out, const TextPrinter &printer, const MMSLib_Message &message,
                  const HeaderCodes *present, const ShowStyle &style) {
    Shower(out, printer, style).message(message, present);
}

} // namespace mmspdu
