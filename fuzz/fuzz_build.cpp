// A message built by the input: every setter and constructor, replacements, deletions and moves,
// with values that have a faithful wire form. A model of plain texts goes along; the message has to
// show what the model says, and after encoding and decoding what the model says comes back.
#include <algorithm>
#include <optional>
#include <vector>

#include "fuzz.hpp"

namespace {

using namespace fuzz;

using fuzz::show;
using std::string;

// --- the input as a source of decisions ----------------------------------------------------------

class Input {
public:
    Input(const uint8_t *data, size_t size) : at_(data), left_(size) {}

    [[nodiscard]] bool done() const { return left_ == 0; }
    // 0 once the input is used up.
    uint8_t octet() {
        if (left_ == 0) {
            return 0;
        }
        --left_;
        return *at_++;
    }
    uint32_t below(uint32_t limit) { return octet() % limit; }
    uint32_t number() {
        uint32_t value = 0;
        for (uint32_t octets = below(6); octets != 0; --octets) {
            value = value << 8 | octet();
        }
        return value;
    }
    string octets() {
        const uint8_t choice = octet();
        string all(choice < 240 ? choice % 24 : (choice - 239U) * 40, '\0');
        string recent = "some text, repeated ";
        for (size_t i = 0; i < all.size(); ++i) {
            all[i] = left_ != 0 ? static_cast<char>(octet()) : recent[i % recent.size()];
        }
        return all;
    }
    // A text that is read as it is written: without zeros, a printable character first.
    string text() {
        string all = any_text();
        const auto first = static_cast<unsigned char>(all.empty() ? 'a' : all[0]);
        if (first < 0x20 || first == 0x7F) {
            all[0] = static_cast<char>('a' + first % 16);
        }
        return all;
    }
    string any_text() {
        string all = octets();
        std::replace(all.begin(), all.end(), '\0', '0');
        return all;
    }
    string text_without(const char *characters) {
        string all = text();
        for (char &c : all) {
            c = std::strchr(characters, c) != nullptr ? 'x' : c;
        }
        return all;
    }
    // The text in other letter case.
    string in_some_case(string name) {
        const uint8_t choice = octet();
        for (size_t i = 0; i < name.size(); ++i) {
            if ((choice >> i % 8 & 1) != 0) {
                name[i] = static_cast<char>(std::toupper(static_cast<unsigned char>(name[i])));
            }
        }
        return name;
    }

private:
    const uint8_t *at_;
    size_t left_;
};

bool same_name(const string &left, const string &right) {
    return strcasecmp(left.c_str(), right.c_str()) == 0;
}

bool is_ascii(const string &text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<signed char>(c) >= 0; });
}

// --- the model -----------------------------------------------------------------------------------

// What a field shows, and what it shows when it has been encoded and decoded.
struct Value {
    string shown;
    string back;
    bool shrinks = false; // what comes back takes fewer octets
};

Value same(const string &shown) { return {shown, shown, false}; }

struct Field {
    string name;
    string generic; // the name of a generic header
    Value value;
};

struct Part {
    MMS_Entity *entity = nullptr;       // the library's, owned by its container
    MMS_Container *container = nullptr; // of a nested body, else null
    std::vector<Field> fields;
    std::vector<std::unique_ptr<Part>> parts;
    string body;
    bool multipart_type = false;

    Field *find(const string &name, const string &generic = "") {
        for (Field &field : fields) {
            if (field.name == name && same_name(field.generic, generic)) {
                return &field;
            }
        }
        return nullptr;
    }
    void put(const string &name, const Value &value, const string &generic = "") {
        Field *field = find(name, generic);
        if (field == nullptr) {
            fields.push_back({name, generic, value});
        } else {
            *field = {name, generic, value};
        }
    }
    bool erase(const string &name, const string &generic = "") {
        const Field *field = find(name, generic);
        if (field != nullptr) {
            fields.erase(fields.begin() + (field - fields.data()));
        }
        return field != nullptr;
    }
};

using Parts = std::vector<std::unique_ptr<Part>>;

constexpr const char *content_type = "Content-Type";
constexpr const char *nested_multipart = "INTERNAL_Nested-Multipart";
constexpr const char *generic_header = "INTERNAL_Generic-Entity-Header";

void show(string &all, const std::vector<Field> &fields, const string &nested, const string &body,
          bool back) {
    all += "(";
    for (const Field &field : fields) {
        const string &value = back ? field.value.back : field.value.shown;
        all += field.name + "=" + (field.name == nested_multipart ? nested : value) + ", ";
    }
    all += "#" + body + ")";
}

string show(const Parts &parts) {
    string all;
    for (const auto &part : parts) {
        show(all, part->fields, part->parts.empty() ? "" : show(part->parts), part->body, false);
    }
    return all;
}

bool is_part_header(const string &name) {
    return name == content_type || name == nested_multipart || name == generic_header ||
           name == "Content-Disposition" || name == "Content-Id" || name == "Content-Location" ||
           name == "Content-Duration";
}

// A part as it comes back: content type and nested body first, then the headers that a part has.
void show_back(string &all, const Part &part) {
    std::vector<Field> fields;
    string nested;
    for (const char *first : {content_type, nested_multipart}) {
        for (const Field &field : part.fields) {
            if (field.name == first) {
                fields.push_back(field);
            }
        }
    }
    for (const Field &field : part.fields) {
        if (is_part_header(field.name) && field.name != content_type &&
            field.name != nested_multipart) {
            fields.push_back(field);
        }
    }
    for (const auto &inner : part.parts) {
        show_back(nested, *inner);
    }
    show(all, fields, nested, part.container != nullptr ? "" : part.body, true);
}

struct OctetHeader {
    const char *name;
    uint32_t (*set)(MMS_Container *, uint8_t);
    uint32_t (*del)(MMS_Container *);
    std::vector<std::pair<int, int>> accepted;
};

const std::vector<OctetHeader> octet_headers = {
    {"X-Mms-Message-Type", MMSLib_SetXMmsMessageType, MMSLib_DelXMmsMessageType, {{128, 147}}},
    {"X-Mms-Status", MMSLib_SetXMmsStatus, MMSLib_DelXMmsStatus, {{128, 135}}},
    {"X-Mms-Priority", MMSLib_SetXMmsPriority, MMSLib_DelXMmsPriority, {{128, 130}}},
    {"X-Mms-Delivery-Report",
     MMSLib_SetXMmsDeliveryReport,
     MMSLib_DelXMmsDeliveryReport,
     {{128, 129}}},
    {"X-Mms-Read-Report", MMSLib_SetXMmsReadReport, MMSLib_DelXMmsReadReport, {{128, 129}}},
    {"X-Mms-Sender-Visibility",
     MMSLib_SetXMmsSenderVisibility,
     MMSLib_DelXMmsSenderVisibility,
     {{128, 129}}},
    {"X-Mms-Read-Status", MMSLib_SetXMmsReadStatus, MMSLib_DelXMmsReadStatus, {{128, 129}}},
    {"X-Mms-Drm-Content", MMSLib_SetXMmsDrmContent, MMSLib_DelXMmsDrmContent, {{128, 129}}},
    {"X-Mms-Response-Status",
     MMSLib_SetXMmsResponseStatus,
     MMSLib_DelXMmsResponseStatus,
     {{128, 136}, {192, 196}, {224, 234}}},
    {"X-Mms-Retrieve-Status",
     MMSLib_SetXMmsRetrieveStatus,
     MMSLib_DelXMmsRetrieveStatus,
     {{128, 128}, {192, 194}, {224, 227}}},
};

// Headers that are written as an octet and read over.
struct SilentHeader {
    const char *name;
    uint8_t lowest;
    uint8_t count;
};

constexpr SilentHeader silent_headers[] = {
    {"X-Mms-Report-Allowed", 128, 2},
    {"X-Mms-Reply-Charging", 128, 4},
    {"X-Mms-MM-State", 128, 5},
    {"X-Mms-Store-Status", 224, 5},
};

template <typename Record>
struct RecordHeader {
    const char *name;
    uint32_t (*set)(MMS_Container *, Record *);
    uint32_t (*del)(MMS_Container *);
};

const RecordHeader<MMS_Group> group_headers[] = {
    {"To", MMSLib_SetTo, MMSLib_DelTo},
    {"Cc", MMSLib_SetCc, MMSLib_DelCc},
    {"Bcc", MMSLib_SetBcc, MMSLib_DelBcc},
    {"From", MMSLib_SetFrom, MMSLib_DelFrom},
};

const RecordHeader<MMS_EncodedString> string_headers[] = {
    {"Subject", MMSLib_SetSubject, MMSLib_DelSubject},
    {"X-Mms-Response-Text", MMSLib_SetXMmsResponseText, MMSLib_DelXMmsResponseText},
};

const RecordHeader<MMS_SpecialTime> time_headers[] = {
    {"X-Mms-Delivery-Time", MMSLib_SetXMmsDeliveryTime, MMSLib_DelXMmsDeliveryTime},
    {"X-Mms-Expiry", MMSLib_SetXMmsExpiry, MMSLib_DelXMmsExpiry},
};

struct TextHeader {
    const char *name;
    uint32_t (*set)(MMS_Container *, const char *);
    uint32_t (*del)(MMS_Container *);
};

template <const char *const *name>
uint32_t set_generic_text(MMS_Container *container, const char *text) {
    return MMSLib_SetXMmsGenericTextField(container, *name, text);
}
template <const char *const *name>
uint32_t del_generic_text(MMS_Container *container) {
    return MMSLib_DelXMmsGenericTextField(container, *name);
}
constexpr const char *applic_id = "X-Mms-Applic-ID";
constexpr const char *reply_applic_id = "X-Mms-Reply-Applic-ID";

const TextHeader text_headers[] = {
    {"X-Mms-Transaction-Id", MMSLib_SetXMmsTransactionId, MMSLib_DelXMmsTransactionId},
    {"X-Mms-Message-Class", MMSLib_SetXMmsMessageClass, MMSLib_DelXMmsMessageClass},
    {"X-Mms-Content-Location", MMSLib_SetXMmsContentLocation, MMSLib_DelXMmsContentLocation},
    {"Message-Id", MMSLib_SetMessageId, MMSLib_DelMessageId},
    {applic_id, set_generic_text<&applic_id>, del_generic_text<&applic_id>},
    {reply_applic_id, set_generic_text<&reply_applic_id>, del_generic_text<&reply_applic_id>},
};

struct NumberHeader {
    const char *name;
    uint32_t (*set)(MMS_Container *, uint32_t);
    uint32_t (*del)(MMS_Container *);
};

const NumberHeader number_headers[] = {
    {"Date", MMSLib_SetDate, MMSLib_DelDate},
    {"X-Mms-Message-Size", MMSLib_SetXMmsMessageSize, MMSLib_DelXMmsMessageSize},
};

template <typename Table>
const auto &pick(Input &in, const Table &table) {
    return table[in.below(static_cast<uint32_t>(std::size(table)))];
}

// --- values --------------------------------------------------------------------------------------

template <typename Owner>
struct Made {
    Owner record;
    Value value;
};

struct Charset {
    const char *name;
    const char *back;
};

constexpr Charset charsets[] = {
    {nullptr, nullptr},
    {"", nullptr},
    {"utf-8", "UTF-8"},
    {"UTF-8", "UTF-8"},
    {"US-ASCII", "US-ASCII"},
    {"ISO-8859-1", "ISO-8859-1"},
    {"iso-8859-7", "ISO-8859-7"},
    {"ISO-8859-9", "ISO-8859-9"},
    {"ISO-10646-UCS-2", "ISO-10646-UCS-2"},
    {"UTF-7", "UTF-7"},
    {"UTF-16BE", "UTF-16BE"},
    {"UTF-16LE", "UTF-16LE"},
    {"utf-16", "UTF-16"},
};

Made<test::EncodedStringPtr> make_string(Input &in, const string &text) {
    const Charset &charset = pick(in, charsets);
    return {test::EncodedStringPtr(MMS_CreateEncodedString(text.c_str(), charset.name)),
            {show(text) + show_charset(charset.name), show(text) + show_charset(charset.back)}};
}

void add_mailbox(Input &in, MMS_Group *group, Value &value) {
    const bool named = in.below(2) != 0;
    string name = named ? in.text_without("<\n") : "";
    if (!name.empty()) {
        name[0] = name[0] == '"' || name[0] == ' ' ? 'n' : name[0];
        char &last = name.back();
        last = last == ' ' || last == '\t' ? 'n' : last;
    }
    Made<test::EncodedStringPtr> address =
        make_string(in, in.text_without("<> \t\n").substr(0, 320));
    const test::TextPtr name_copy(named ? heap_text(name) : nullptr);
    MMS_Mailbox *mailbox =
        MMS_CreateMailbox(128, const_cast<char *>(name_copy.get()), address.record.get());
    REQUIRE(MMS_AddMailbox(group, mailbox) == 1);
    static_cast<void>(const_cast<test::TextPtr &>(name_copy).release());
    static_cast<void>(address.record.release());
    value.shown += "128|" + (named ? show(name) : "~") + "|" + address.value.shown + ";";
    value.back += "128|" + (name.empty() ? "~" : show(name)) + "|" + address.value.back + ";";
}

Made<test::GroupPtr> make_group(Input &in) {
    Made<test::GroupPtr> made{test::GroupPtr(MMS_Group_Create()), {}};
    for (uint32_t mailboxes = 1 + in.below(3); mailboxes != 0; --mailboxes) {
        add_mailbox(in, made.record.get(), made.value);
    }
    if (in.below(4) == 0) {
        MMS_SetDisplayName(made.record.get(), "never sent");
    }
    return made;
}

Made<test::SpecialTimePtr> make_time(Input &in) {
    const bool absolute = in.below(2) != 0;
    const uint32_t seconds = in.below(8) == 0 ? UINT32_MAX : in.number();
    return {test::SpecialTimePtr(MMS_CreateSpecialTime(absolute ? 1 : 0, seconds)),
            same((absolute ? "128|" : "129|") + std::to_string(seconds))};
}

// A media type: one of the well-known ones or a text; the text that comes back.
std::pair<string, string> media_type(Input &in, bool multipart) {
    constexpr const char *known[] = {"text/plain",       "image/jpeg", "*/*",
                                     "application/*",    "text/html",  "application/vnd.wap.wmlc",
                                     "text/x-vCalendar", "image/gif"};
    constexpr const char *known_multipart[] = {"multipart/mixed", "multipart/related",
                                               "multipart/alternative", "multipart/*"};
    if (in.below(2) == 0) {
        const string name = multipart ? pick(in, known_multipart) : pick(in, known);
        return {in.in_some_case(name), name};
    }
    const string type = multipart ? "multipart" : "x" + in.text_without("/").substr(0, 18);
    const string text = type + "/x-" + in.any_text();
    return {text, text};
}

string free_of_quote(string text) {
    if (!text.empty() && (text[0] == '"' || begins_as_word(text.c_str()))) {
        text[0] = 'v';
    }
    return text;
}

// The value of a Name or Filename parameter and what comes back.
struct FileName {
    std::optional<string> text;
    const char *charset;
    string shown;
    string back;
};

FileName file_name(Input &in) {
    const uint32_t choice = in.below(4);
    FileName made{std::nullopt, nullptr, "~", "~"};
    if (choice == 0) {
        return made;
    }
    if (choice == 1) {
        made.text = free_of_quote(in.text());
        made.shown = show(*made.text);
        made.back = made.text->empty() ? "~" : made.shown;
        return made;
    }
    made.text = choice == 2 ? free_of_quote(in.text()) : in.any_text() + "\xC3\xA9";
    made.charset = "UTF-8";
    made.shown = show(*made.text) + "{UTF-8}";
    if (made.text->empty() || MMSUtilQEncode(made.text->c_str(), nullptr) > 753) {
        // No encoded word holds it, but a text that is all ASCII needs none.
        made.back = made.text->empty() || !is_ascii(*made.text) ? "~" : show(*made.text);
    } else {
        made.back = is_ascii(*made.text) ? show(*made.text) : made.shown;
    }
    return made;
}

// The value of a parameter that is sent as text.
Value text_value(const std::optional<string> &text) {
    return {text ? show(*text) : "~", text && !text->empty() ? show(*text) : "~"};
}

void add_parameter(Input &in, MMS_ContentType *type, Value &all) {
    constexpr const char *texts[] = {"Q",       "Level",  "Differences", "Start", "Start-info",
                                     "Comment", "Domain", "Max-age",     "Path",  "Secure"};
    string name;
    std::optional<string> text;
    const char *charset = nullptr;
    Value value;
    switch (in.below(8)) {
    case 0: {
        const Charset &known = pick(in, charsets);
        name = "Charset";
        text = known.name != nullptr ? std::optional<string>(known.name) : std::nullopt;
        value = {show(known.name), text ? show(known.back != nullptr ? known.back : "UTF-8") : "~"};
        break;
    }
    case 1:
        name = "Padding";
        text = std::to_string(in.number());
        value = same(show(*text));
        break;
    case 2: {
        const auto [media, back] = media_type(in, in.below(2) != 0);
        name = "Type";
        text = free_of_quote(media);
        // Of the well-known types the one with the number 0 is sent as text.
        value = {show(*text), show(same_name(media, "*/*") || *text != media ? *text : back)};
        break;
    }
    case 3:
    case 4: {
        const FileName file = file_name(in);
        name = in.below(2) != 0 ? "Name" : "Filename";
        text = file.text;
        charset = file.charset;
        value = {file.shown, file.back};
        break;
    }
    case 5:
        name = "X-" + in.any_text();
        text = in.below(4) != 0 ? std::optional<string>(free_of_quote(in.text())) : std::nullopt;
        value = text_value(text);
        break;
    case 6:
        name = in.below(2) != 0 ? "Application-ID" : "Reply-To-Application-ID";
        text = free_of_quote(in.text()).substr(0, 32);
        value = text_value(text);
        break;
    default:
        name = pick(in, texts);
        text = in.below(4) != 0 ? std::optional<string>(free_of_quote(in.text())) : std::nullopt;
        value = text_value(text);
        break;
    }
    const string given =
        in.below(4) == 0 && name[0] != 'X' && name.size() < 12 ? in.in_some_case(name) : name;
    MMS_Parameter *parameter = MMS_CreateParameter(given.c_str(), text ? text->c_str() : nullptr);
    parameter->pCharset = charset;
    REQUIRE(MMS_LinkedList_AddParameter(type->pParameters, parameter) == 1);
    all.shown += show(name) + "=" + value.shown + ";";
    all.back += show(name) + "=" + value.back + ";";
}

Made<test::ContentTypePtr> make_content_type(Input &in, bool multipart) {
    const auto [media, back] = media_type(in, multipart);
    Made<test::ContentTypePtr> made{test::ContentTypePtr(MMS_CreateContentType(media.c_str())),
                                    {show(media) + ";", show(back) + ";"}};
    const uint32_t choice = in.below(16);
    if (choice == 15 && in.octet() >= 250) {
        for (uint32_t i = 0; i < 255; ++i) {
            MMS_LinkedList_AddParameter(made.record->pParameters, MMS_CreateParameter("q", "1"));
            made.value.shown += "1:Q=1:1;";
            made.value.back += "1:Q=1:1;";
        }
        return made;
    }
    for (uint32_t parameters = choice % 5; parameters != 0; --parameters) {
        add_parameter(in, made.record.get(), made.value);
    }
    return made;
}

Made<test::ContentDispositionPtr> make_disposition(Input &in) {
    constexpr Charset names[] = {{"Form-data", "Form-data"},
                                 {"attachment", "Attachment"},
                                 {"inline", "Attachment"},
                                 {"FORM-DATA", "Form-data"}};
    const Charset &name = pick(in, names);
    const FileName file = file_name(in);
    test::ContentDispositionPtr record(
        MMS_CreateContentDisposition(name.name, file.text ? file.text->c_str() : nullptr));
    record->pCharset = file.charset;
    // A file name that no text stands for is sent without a value, and comes back as none at all.
    return {std::move(record),
            {show(name.name) + "|" + file.shown, show(name.back) + "|" + file.back,
             file.text && file.back == "~"}};
}

Value location(const string &text) {
    const bool lost = !is_ascii(text) && MMSUtilQEncode(text.c_str(), nullptr) > 753;
    return {show(text), show(lost ? "" : text)};
}

// --- building ------------------------------------------------------------------------------------

constexpr uint32_t most_parts = 999;
constexpr size_t deepest = 250;

class Builder {
public:
    explicit Builder(Input input) : in_(input), message_(MMSLib_Message_Create()) {
        root_.container = message_->pContainer;
        path_.push_back(&root_);
        add_part_to(root_);
    }

    void run() {
        // Most messages have a type, and the types that leave out headers are not rare.
        const uint8_t choice = in_.octet() % 32;
        const auto type = static_cast<uint8_t>(choice < 20 ? 0x80 + choice : choice % 2 * 4 + 0x80);
        if (choice != 31) {
            set(octet_headers[0], type, same(std::to_string(type)));
        }
        for (uint32_t steps = 0; !in_.done() && steps < 200; ++steps) {
            step();
            if (parts_ < 20) {
                check_shown();
            }
        }
        complete();
        check_shown();
        check_wire();
    }

private:
    Part &first() { return *root_.parts[0]; }
    MMS_Container *container() { return root_.container; }

    // --- headers of the message

    // The entity of a header: the first that has it, else the first of all.
    Part &holder(const string &name) {
        for (const auto &part : root_.parts) {
            if (part->find(name) != nullptr) {
                return *part;
            }
        }
        return first();
    }

    template <typename Header, typename Argument>
    void set(const Header &header, Argument argument, const Value &value) {
        REQUIRE(header.set(container(), argument) == 1);
        holder(header.name).put(header.name, value);
    }

    template <typename Record, typename Owner>
    void set_record(const RecordHeader<Record> &header, Made<Owner> made) {
        set(header, made.record.get(), made.value);
        static_cast<void>(made.record.release());
    }

    template <typename Header>
    void maybe_delete(const Header &header) {
        if (in_.below(4) == 0) {
            REQUIRE(header.del(container()) == (holder(header.name).erase(header.name) ? 1 : 0));
        }
    }

    void octet_header() {
        const OctetHeader &header = pick(in_, octet_headers);
        // Half of the octets lie where the accepted ones do.
        const uint8_t octet = in_.octet();
        const auto value = static_cast<uint8_t>((octet & 1) != 0 ? 128 + (octet >> 1) % 20 : octet);
        bool accepted = false;
        for (const auto &[low, high] : header.accepted) {
            accepted = accepted || (value >= low && value <= high);
        }
        if (accepted) {
            set(header, value, same(std::to_string(value)));
        } else {
            REQUIRE(header.set(container(), value) == 0);
        }
        maybe_delete(header);
    }

    void text_header() {
        const TextHeader &header = pick(in_, text_headers);
        constexpr const char *classes[] = {"Personal", "Advertisement", "Informational", "Auto"};
        const bool is_class = strcmp(header.name, "X-Mms-Message-Class") == 0;
        const Field *old = holder(header.name).find(header.name);
        Value value;
        if (old != nullptr && in_.below(4) == 0) {
            // The text that is there is copied before it is released.
            value = old->value;
            REQUIRE(header.set(container(),
                               MMSLib_GetXMmsGenericTextField(container(), header.name)) == 1);
        } else if (is_class && in_.below(2) == 0) {
            const string name = pick(in_, classes);
            const string given = in_.in_some_case(name);
            value = {show(given), show(name)};
            REQUIRE(header.set(container(), given.c_str()) == 1);
        } else {
            const string text = in_.text();
            value = same(show(text));
            for (const char *name : classes) {
                value.back = is_class && same_name(name, text) ? show(name) : value.back;
            }
            REQUIRE(header.set(container(), text.c_str()) == 1);
        }
        Part &part = holder(header.name);
        if (strcmp(header.name, "X-Mms-Transaction-Id") == 0) {
            part.erase(header.name);
        }
        part.put(header.name, value);
        maybe_delete(header);
    }

    void version_header() {
        const uint8_t major = in_.octet() % 10;
        const uint8_t minor = in_.octet() % 18;
        const bool accepted = major >= 1 && major <= 7 && minor <= 14;
        REQUIRE(MMSLib_SetXMmsVersion(container(), major, minor) == (accepted ? 1 : 0));
        if (accepted) {
            holder("X-Mms-Mms-Version")
                .put("X-Mms-Mms-Version", same(std::to_string(major * 16 + minor)));
        }
    }

    void message_header() {
        switch (in_.below(8)) {
        case 0:
            octet_header();
            break;
        case 1:
            text_header();
            break;
        case 2: {
            const auto &header = pick(in_, number_headers);
            const uint32_t number = in_.number();
            set(header, number, same(std::to_string(number)));
            maybe_delete(header);
            break;
        }
        case 3: {
            const auto &header = pick(in_, string_headers);
            set_record(header, make_string(in_, in_.text()));
            maybe_delete(header);
            break;
        }
        case 4: {
            const auto &header = pick(in_, time_headers);
            set_record(header, make_time(in_));
            maybe_delete(header);
            break;
        }
        case 5: {
            const auto &header = pick(in_, group_headers);
            set_record(header, make_group(in_));
            maybe_delete(header);
            break;
        }
        case 6:
            version_header();
            break;
        default: {
            const SilentHeader &header = pick(in_, silent_headers);
            const uint32_t octet = header.lowest + in_.below(header.count);
            REQUIRE(MMS_SetField(first().entity, header.name, test_slot(octet)) == 1);
            first().put(header.name, same(std::to_string(octet)));
            break;
        }
        }
    }

    static void *test_slot(uint32_t value) {
        return reinterpret_cast<void *>(static_cast<uintptr_t>(value));
    }

    // --- parts

    Part &add_part_to(Part &parent) {
        auto part = std::make_unique<Part>();
        part->entity = MMS_Entity_Create();
        uint16_t position = 0;
        REQUIRE(MMS_AddEntity(parent.container, part->entity, &position) == 1);
        REQUIRE(position == parent.parts.size());
        parent.parts.push_back(std::move(part));
        ++parts_;
        return *parent.parts.back();
    }

    void set_content_type(Part &part, bool multipart) {
        Made<test::ContentTypePtr> made = make_content_type(in_, multipart);
        if (&part == &first()) {
            REQUIRE(MMSLib_SetContentType(container(), made.record.get()) == 1);
        } else {
            REQUIRE(MMS_SetContentType(part.entity, made.record.get()) == 1);
        }
        static_cast<void>(made.record.release());
        part.multipart_type = multipart;
        part.put(content_type, made.value);
    }

    void nest(Part &part) {
        if (part.container == nullptr) {
            part.container = MMS_Container_Create();
            REQUIRE(MMS_SetField(part.entity, nested_multipart, part.container) == 1);
            part.entity->isMultipart = 1;
            part.put(nested_multipart, {});
            set_content_type(part, true);
        }
    }

    void add_part() {
        if (parts_ <= most_parts) {
            set_content_type(add_part_to(*path_.back()), false);
        }
    }

    void add_nested() {
        if (parts_ <= most_parts && path_.size() <= deepest) {
            Part &part = add_part_to(*path_.back());
            nest(part);
            path_.push_back(&part);
        }
    }

    // A few levels, or now and then as many as there may be.
    void add_levels() {
        const uint32_t choice = in_.octet();
        for (uint32_t levels = choice < 254 ? choice % 4 : deepest; levels != 0; --levels) {
            add_nested();
        }
    }

    void delete_part() {
        Part &parent = *path_.back();
        const uint32_t position = in_.below(8);
        if (position >= parent.parts.size()) {
            REQUIRE(MMS_DelEntity(parent.container, position) == 0);
        } else if (&parent != &root_ || position != 0) {
            REQUIRE(MMS_DelEntity(parent.container, position) == 1);
            parent.parts.erase(parent.parts.begin() + position);
            parts_ = count(root_);
        }
    }

    static uint32_t count(const Part &part) {
        uint32_t all = static_cast<uint32_t>(part.parts.size());
        for (const auto &inner : part.parts) {
            all += count(*inner);
        }
        return all;
    }

    Part &some_part() {
        Part &parent = *path_.back();
        return parent.parts.empty() ? first() : *parent.parts[in_.octet() % parent.parts.size()];
    }

    static string lower(string text) {
        for (char &c : text) {
            c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
        return text;
    }

    void set_generic(Part &part) {
        const string name = in_.below(2) == 0 ? "X-" + string(1, "ABab"[in_.below(4)]) : in_.text();
        const string value = in_.text();
        // These names have fields of their own where a part is read, and the header entity has no
        // generic headers.
        if (same_name(name, "Content-Id") || same_name(name, "Content-Duration") ||
            &part == &first()) {
            return;
        }
        if (in_.below(4) == 0) {
            REQUIRE(MMSLib_DelGenericTextField(part.entity, name.c_str()) ==
                    (part.erase(generic_header, name) ? 1 : 0));
            return;
        }
        REQUIRE(MMSLib_SetGenericTextField(part.entity, name.c_str(), value.c_str()) == 1);
        const char *stored = MMSLib_GetGenericTextField(part.entity, lower(name).c_str());
        REQUIRE(stored != nullptr && stored == value);
        part.put(generic_header, same(show(name) + "=" + show(value)), name);
    }

    void set_content(Part &part) {
        const string octets = in_.octets();
        const auto *data = reinterpret_cast<const uint8_t *>(octets.data());
        const auto size = static_cast<uint32_t>(octets.size());
        switch (in_.below(4)) {
        case 0:
            REQUIRE(MMS_DelContent(part.entity) == (part.body.empty() ? 0 : 1));
            part.body.clear();
            return;
        case 1: { // the body that is there, adopted again
            REQUIRE(MMS_SetContent(part.entity, MMS_GetContent(part.entity),
                                   MMS_GetContentLength(part.entity), 1) == 1);
            return;
        }
        case 2:
            if (size != 0) {
                auto *block = static_cast<uint8_t *>(std::malloc(size));
                std::memcpy(block, data, size);
                REQUIRE(MMS_SetContent(part.entity, block, size, 1) == 1);
                part.body = octets;
            }
            return;
        default:
            REQUIRE(MMS_SetContent(part.entity, data, size, 0) == 1);
            part.body = octets;
            return;
        }
    }

    void insert_content_id(Part &part) {
        if (part.find("Content-Id") != nullptr) {
            return;
        }
        const string text = in_.text();
        const uint32_t position = in_.below(6);
        test::TextPtr copy(heap_text(text));
        const bool fits = position <= part.fields.size();
        REQUIRE(MMS_LinkedList_AddFieldToPos(part.entity->pFieldList, "content-id",
                                             const_cast<char *>(copy.get()),
                                             position) == (fits ? 1 : 0));
        if (fits) {
            static_cast<void>(copy.release());
            part.fields.insert(part.fields.begin() + position,
                               Field{"Content-Id", "", same(show(text))});
        }
    }

    void delete_field(Part &part) {
        constexpr const char *names[] = {
            "Content-Id",       "Content-Location", "Content-Disposition",
            "Content-Duration", "Subject",          content_type};
        const char *name = pick(in_, names);
        REQUIRE(MMS_DelField(part.entity, name) == (part.erase(name) ? 1 : 0));
    }

    void part_header() {
        Part &part = some_part();
        switch (in_.below(11)) {
        case 0:
            if (&part != &first() || root_.parts.size() == 1) {
                set_content_type(part, part.container != nullptr);
            }
            break;
        case 1: {
            Made<test::ContentDispositionPtr> made = make_disposition(in_);
            REQUIRE(MMS_SetContentDisposition(part.entity, made.record.get()) == 1);
            part.put("Content-Disposition", made.value);
            // The record that is there already may be set again.
            REQUIRE(MMS_SetContentDisposition(part.entity, made.record.release()) == 1);
            break;
        }
        case 2: {
            const string text = in_.text();
            REQUIRE(MMS_SetContentId(part.entity, text.c_str()) == 1);
            part.put("Content-Id", same(show(text)));
            break;
        }
        case 3: {
            string text = in_.below(2) != 0 ? in_.text() : in_.any_text() + "\xC3\xA9";
            text[0] = begins_as_word(text.c_str()) ? 'l' : text[0];
            REQUIRE(MMS_SetContentLocation(part.entity, text.c_str()) == 1);
            part.put("Content-Location", location(text));
            break;
        }
        case 4: {
            const uint32_t seconds = in_.number();
            REQUIRE(MMS_SetContentDuration(part.entity, seconds) == 1);
            part.put("Content-Duration", same(std::to_string(seconds)));
            break;
        }
        case 5:
        case 6:
            set_generic(part);
            break;
        case 7:
            set_content(part);
            break;
        case 8:
            insert_content_id(part);
            break;
        case 9:
            delete_field(part);
            break;
        default: {
            Made<test::EncodedStringPtr> made = make_string(in_, in_.text());
            REQUIRE(MMS_SetField(part.entity, "subject", made.record.release()) == 1);
            part.put("Subject", made.value);
            break;
        }
        }
    }

    // The first part, depth first, with that content id.
    static const MMS_Entity *search(const Parts &parts, const string &shown) {
        for (const auto &part : parts) {
            const Field *field = part->find("Content-Id");
            const MMS_Entity *found = part->container != nullptr ? search(part->parts, shown)
                                      : field != nullptr && same_name(field->value.shown, shown)
                                          ? part->entity
                                          : nullptr;
            if (found != nullptr) {
                return found;
            }
        }
        return nullptr;
    }

    void step() {
        switch (in_.below(8)) {
        case 0:
        case 1:
        case 2:
            message_header();
            break;
        case 3:
        case 4:
            part_header();
            break;
        case 5:
            switch (in_.below(4)) {
            case 0:
                add_nested();
                break;
            case 1:
                if (path_.size() > 1) {
                    path_.pop_back();
                }
                break;
            case 2:
                delete_part();
                break;
            default:
                add_levels();
                break;
            }
            break;
        case 6:
            add_part();
            break;
        default: {
            const string id = in_.text();
            REQUIRE(MMS_FindEntityByContentId(container(), id.c_str(), 0) ==
                    search(root_.parts, show(id)));
            break;
        }
        }
    }

    // --- the end

    // Gives every part what it cannot be written without.
    void complete_part(Part &part) {
        if (part.find(content_type) == nullptr) {
            set_content_type(part, part.container != nullptr);
        }
        if (part.container != nullptr && part.parts.empty()) {
            add_part_to(part);
        }
        for (const auto &inner : part.parts) {
            complete_part(*inner);
        }
    }

    void complete() {
        const bool typed = first().find(content_type) != nullptr;
        if (root_.parts.size() > 1 && (!typed || !first().multipart_type)) {
            set_content_type(first(), true);
        }
        for (size_t i = 1; i < root_.parts.size(); ++i) {
            complete_part(*root_.parts[i]);
        }
        // The parts that completed empty bodies may be more than a PDU holds.
        while (count(root_) - 1 > most_parts) {
            REQUIRE(MMS_DelEntity(container(), 1) == 1);
            root_.parts.erase(root_.parts.begin() + 1);
        }
    }

    void check_shown() {
        REQUIRE_SAME(show(static_cast<const MMS_Container *>(container())), show(root_.parts));
    }

    [[nodiscard]] string message_value(const char *name) {
        const Field *field = holder(name).find(name);
        return field != nullptr ? field->value.shown : "";
    }

    [[nodiscard]] bool has(const char *name) { return holder(name).find(name) != nullptr; }

    static bool shrinks(const Parts &parts) {
        return std::any_of(parts.begin(), parts.end(), [](const auto &part) {
            return shrinks(part->parts) ||
                   std::any_of(part->fields.begin(), part->fields.end(),
                               [](const Field &field) { return field.value.shrinks; });
        });
    }

    // Whether every header is there that the message type needs.
    bool is_complete(int type) {
        const bool common = has("X-Mms-Mms-Version") && has("X-Mms-Transaction-Id");
        const bool by_id = has("X-Mms-Mms-Version") && has("Message-Id") && has("To");
        switch (type) {
        case 0:
            return false;
        case 0x80:
            return common && has(content_type) && (has("To") || has("Cc") || has("Bcc"));
        case 0x83:
            return common && has("X-Mms-Status");
        case 0x86:
            return by_id && has("Date") && has("X-Mms-Status");
        case 0x87:
            return by_id && has("X-Mms-Read-Status");
        case 0x88:
            return by_id && has("X-Mms-Read-Status") && has("Date") && has("From");
        default:
            return common;
        }
    }

    // Whether a field of an m-send-req holds what is also meant without it.
    static bool is_default(const Field &field) {
        const string &value = field.value.shown;
        return (field.name == "X-Mms-Message-Class" && same_name(value, "8:Personal")) ||
               (field.name == "X-Mms-Priority" && value == "129") ||
               (field.name == "X-Mms-Delivery-Time" && value == "129|0") ||
               (field.name == "X-Mms-Expiry" && value.substr(4) == std::to_string(UINT32_MAX));
    }

    static bool is_silent(const string &name) {
        return std::any_of(std::begin(silent_headers), std::end(silent_headers),
                           [&](const SilentHeader &header) { return name == header.name; });
    }

    // The header entity as it comes back. `exact` says whether encoding that gives the same octets.
    std::vector<Field> headers_back(int type, bool &exact) {
        const bool by_id = type >= 0x86 && type <= 0x88;
        const std::vector<string> leading =
            by_id ? std::vector<string>{"X-Mms-Message-Type", "X-Mms-Mms-Version", "Message-Id"}
                  : std::vector<string>{"X-Mms-Message-Type", "X-Mms-Transaction-Id",
                                        "X-Mms-Mms-Version"};
        std::vector<Field> back;
        for (const string &name : leading) {
            if (const Field *field = holder(name).find(name)) {
                back.push_back(*field);
            }
        }
        for (const Field &field : first().fields) {
            const bool read_over = is_silent(field.name) || field.name == "Content-Duration";
            exact = exact && !read_over;
            if (std::find(leading.begin(), leading.end(), field.name) == leading.end() &&
                field.name != "X-Mms-Transaction-Id" && !is_part_header(field.name) && !read_over &&
                !(type == 0x80 && is_default(field))) {
                back.push_back(field);
            }
        }
        if (const Field *field = first().find(content_type)) {
            back.push_back(*field);
        }
        struct Default {
            int type;
            const char *name;
            const char *value;
            bool written;
        };
        for (const Default &row : {Default{0x80, "X-Mms-Message-Class", "8:Personal", false},
                                   Default{0x80, "X-Mms-Sender-Visibility", "128", true},
                                   Default{0x80, "X-Mms-Priority", "129", false},
                                   Default{0x84, "X-Mms-Message-Class", "8:Personal", true},
                                   Default{0x84, "X-Mms-Delivery-Report", "129", true},
                                   Default{0x84, "X-Mms-Priority", "129", true},
                                   Default{0x84, "X-Mms-Read-Report", "129", true}}) {
            const bool there = std::any_of(back.begin(), back.end(), [&](const Field &field) {
                return field.name == row.name;
            });
            if (row.type == type && !there) {
                back.push_back({row.name, "", same(row.value)});
                exact = exact && !row.written;
            }
        }
        return back;
    }

    // The senders in the header block that ask the network to insert their address.
    static uint32_t inserted_senders(const Octets &pdu) {
        uint32_t count = 0;
        const auto measure = [&](size_t at) {
            uint32_t length = 0;
            REQUIRE(GetFieldLength(pdu.data() + at, static_cast<uint32_t>(pdu.size() - at),
                                   &length) == MMS_STATUS_OK);
            return length;
        };
        for (size_t at = 0; at < pdu.size() && pdu[at] != 0x84;) {
            const bool sender = pdu[at] == 0x89;
            at += pdu[at] >= 0x80 ? 1 : measure(at);
            const uint32_t length = measure(at);
            count += sender && length == 2 && pdu[at + 1] == 0x81 ? 1U : 0U;
            at += length;
        }
        return count;
    }

    void check_wire() {
        const string type_text = message_value("X-Mms-Message-Type");
        const int type = type_text.empty() ? 0 : std::stoi(type_text);
        if (first().fields.empty()) {
            return; // nothing to write, or nothing that would be kept
        }
        const Encoded encoded = encode(message_.get());
        REQUIRE(encoded.status == MMS_STATUS_OK);
        const auto size = static_cast<uint32_t>(encoded.octets.size());
        REQUIRE(MMSLib_GetSize(message_.get()) == (is_complete(type) ? size : 0));

        const bool inserts = (type == 0x80 || type == 0x87 || type == 0x89) && !has("From");
        REQUIRE(inserted_senders(encoded.octets) == (inserts ? 1 : 0));

        bool exact = !shrinks(root_.parts);
        string expected;
        const bool typed = first().find(content_type) != nullptr;
        const std::vector<Field> headers = headers_back(type, exact);
        show(expected, headers, "", typed && !first().multipart_type ? first().body : "", true);
        for (size_t i = 1; i < root_.parts.size(); ++i) {
            show_back(expected, *root_.parts[i]);
        }
        const test::Decoded back = decode(encoded.octets);
        if (headers.empty()) {
            REQUIRE(!back.message);
            return;
        }
        REQUIRE(back.status == MMS_STATUS_OK);
        REQUIRE_SAME(fuzz::show(static_cast<const MMS_Container *>(back.message->pContainer)),
                     expected);
        const Encoded second = encode(back.message.get());
        REQUIRE(second.status == MMS_STATUS_OK);
        if (exact) {
            REQUIRE_SAME(second.octets, encoded.octets);
        }
        const test::Decoded again = decode(second.octets);
        REQUIRE(again.status == MMS_STATUS_OK);
        REQUIRE_SAME(encode(again.message.get()).octets, second.octets);
    }

    Input in_;
    MessagePtr message_;
    Part root_; // its parts are the entities of the message
    std::vector<Part *> path_;
    uint32_t parts_ = 0;
};

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    Builder(Input(data, size)).run();
    return 0;
}
