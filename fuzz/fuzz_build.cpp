// A message built by the input through every setter and constructor, with values that have a
// faithful wire form. After each step the entity has to show what was put in and all that was there
// before; at the end the message has to come back from its octets.
#include "accessors.hpp"

namespace {

using namespace fuzz;

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
    template <typename Table>
    const auto &pick(const Table &table) {
        return table[below(static_cast<uint32_t>(std::size(table)))];
    }
    uint32_t number() {
        uint32_t value = 0;
        for (uint32_t octets = below(6); octets != 0; --octets) {
            value = value << 8 | octet();
        }
        return value;
    }
    // At most 240, which a text in an encoded word may have.
    string octets() {
        const uint8_t choice = octet();
        string all(choice < 240 ? choice % 24 : (choice - 239U) * 15, 'o');
        for (size_t i = 0; i < all.size() && left_ != 0; ++i) {
            all[i] = static_cast<char>(octet());
        }
        return all;
    }
    // A text that is read as it is written: without zeros, and beginning with nothing that starts a
    // length, a quote or an encoded word.
    string text(const char *excluded = "") {
        string all = octets();
        for (char &c : all) {
            c = c == '\0' || std::strchr(excluded, c) != nullptr ? 'x' : c;
        }
        const auto first = static_cast<unsigned char>(all.empty() ? 'a' : all[0]);
        if (first <= ' ' || std::strchr("\"=\x7F", first) != nullptr) {
            all[0] = static_cast<char>('a' + first % 16);
        }
        return all;
    }
    // One that is not empty and does not end with white space.
    string name(const char *excluded = "") { return text(excluded) + "n"; }

private:
    const uint8_t *at_;
    size_t left_;
};

// --- values --------------------------------------------------------------------------------------

// A text that the map holds as the map spells it, which is how it comes back.
string spelled(const MMS_MapEntry *map, const string &text) {
    uint8_t token = 0;
    return MMS_SearchMapForToken(map, text.c_str(), &token) != 0
               ? MMS_SearchMapForString(map, token)
               : text;
}

// One that stands in a message; some are classes.
string make_text(Input &in) {
    const char *known = in.below(4) == 0 ? in.pick(MMS_MESSAGE_CLASS_MAP_ARRAY).name : nullptr;
    return spelled(MMS_MESSAGE_CLASS_MAP, known != nullptr ? known : in.text());
}

MMS_EncodedString *make_string(Input &in, const string &text) {
    const char *charset = in.pick(CHAR_SET_MAP_ARRAY).name;
    MMS_EncodedString *made = MMS_CreateEncodedString(text.c_str(), charset);
    require_same(shown(made), text + in_braces(charset));
    return made;
}

MMS_Mailbox *make_mailbox(Input &in) {
    const bool named = in.below(2) != 0;
    const string name = named ? in.name("<\n") : "";
    MMS_EncodedString *address = make_string(in, in.text("<> \t\n"));
    MMS_Mailbox *mailbox = MMS_CreateMailbox(128, named ? heap_text(name) : nullptr, address);
    require_same(shown(mailbox), (named ? name + "|" : "") + shown(address));
    return mailbox;
}

MMS_Group *make_group(Input &in) {
    MMS_Group *group = MMS_Group_Create();
    for (uint32_t count = 1 + in.below(3); count != 0; --count) {
        require(MMS_AddMailbox(group, make_mailbox(in)) == 1);
    }
    MMS_SetDisplayName(group, "never sent");
    return group;
}

MMS_SpecialTime *make_time(Input &in) {
    const bool absolute = in.below(2) != 0;
    const uint32_t seconds = in.below(8) == 0 ? UINT32_MAX : in.number();
    MMS_SpecialTime *time = MMS_CreateSpecialTime(absolute ? 1 : 0, seconds);
    require_same(shown(time), (absolute ? "128:" : "129:") + std::to_string(seconds));
    return time;
}

// Of a file name: that of its encoded word.
const char *file_charset(Input &in, const char *name) {
    return name != nullptr && isASCII(name) == 0 && in.below(2) != 0 ? MMS_CHARSET_UTF_8 : nullptr;
}

MMS_ContentDisposition *make_disposition(Input &in) {
    const char *kind = in.below(2) != 0 ? "Form-data" : "Attachment";
    const string name = in.name();
    MMS_ContentDisposition *made =
        MMS_CreateContentDisposition(kind, in.below(4) != 0 ? name.c_str() : nullptr);
    require_same(shown(made), kind + (made->pFilename != nullptr ? " " + name : ""));
    made->pCharset = file_charset(in, made->pFilename);
    return made;
}

string make_media(Input &in, bool multipart) {
    const char *name = in.pick(CONTENT_TYPE_MAP_ARRAY).name;
    const bool fits = name != nullptr && (std::strncmp(name, "multipart/", 10) == 0) == multipart;
    return spelled(CONTENT_TYPE_MAP, fits ? name : (multipart ? "multipart/" : "x/") + in.text());
}

string parameter_value(Input &in, const string &name) {
    if (name == "Charset") {
        return CHAR_SET_MAP_ARRAY[in.below(std::size(CHAR_SET_MAP_ARRAY) - 1)].name;
    }
    if (name == "Padding") {
        return std::to_string(in.number());
    }
    return name == "Type" ? make_media(in, in.below(2) != 0) : in.name().substr(0, 32);
}

MMS_Parameter *make_parameter(Input &in) {
    const char *known = in.pick(WSP_PARAMETER_MAP_ARRAY).name;
    const string name = known != nullptr ? known : in.below(2) != 0 ? "Application-ID" : in.name();
    const string value = parameter_value(in, name);
    MMS_Parameter *made =
        MMS_CreateParameter(name.c_str(), in.below(4) != 0 ? value.c_str() : nullptr);
    require_same(shown(made), ";" + name + (made->pValue != nullptr ? "=" + value : ""));
    if (name == "Name" || name == "Filename") {
        made->pCharset = file_charset(in, made->pValue);
    }
    return made;
}

MMS_ContentType *make_content_type(Input &in, bool multipart) {
    const string media = make_media(in, multipart);
    MMS_ContentType *type = MMS_CreateContentType(media.c_str());
    require_same(shown(type), media);
    require(MMS_IsMultipart(type) == (multipart ? 1 : 0));
    const uint8_t choice = in.octet();
    for (uint32_t count = choice == 255 ? 255 : choice % 4; count != 0; --count) {
        require(MMS_LinkedList_AddParameter(type->pParameters, make_parameter(in)) == 1);
    }
    return type;
}

// Half of the octets lie where most of the accepted ones do.
uint32_t make_octet(Input &in) {
    constexpr uint32_t lowest[] = {0x80, 0x80, 0xC0, 0xE0};
    return in.below(2) != 0 ? in.octet() : in.pick(lowest) + in.below(20);
}

void *make_value(Input &in, Kind kind, uint32_t highest, bool multipart) {
    switch (kind) {
    case Kind::encoded_string:
        return make_string(in, in.text());
    case Kind::group:
        return make_group(in);
    case Kind::special_time:
        return make_time(in);
    case Kind::disposition:
        return make_disposition(in);
    case Kind::content_type:
        return make_content_type(in, multipart);
    case Kind::integer:
        return slot(highest == UINT8_MAX ? make_octet(in) : in.number());
    default:
        return heap_text(make_text(in));
    }
}

// --- building ------------------------------------------------------------------------------------

constexpr uint32_t most_parts = 490;
constexpr size_t deepest = 250;

class Builder {
public:
    explicit Builder(Input input) : in_(input), message_(MMSLib_Message_Create()) {
        path_.push_back(message_->pContainer);
        add_entity(root());
        MMSLib_SetXMmsMessageType(root(), static_cast<uint8_t>(0x80 + in_.below(20)));
    }

    void run() {
        for (uint32_t steps = 0; !in_.done() && steps < 200; ++steps) {
            step();
        }
        complete(root());
        read_through_getters(root(), message_headers);
        const auto [sent, received] = there_and_back(message_.get());
        require_same(sent, received);
    }

private:
    MMS_Container *root() { return path_[0]; }
    MMS_Entity *first() { return MMS_GetEntity(root(), 0); }

    void step() {
        const uint32_t choice = in_.below(8);
        if (choice < 3) {
            message_header();
        } else if (choice < 5) {
            part_header(some_part());
        } else if (choice == 5) {
            set_content(some_part());
        } else if (choice == 6) {
            change_parts();
        } else { // one that is written as an octet and read over
            const std::pair<const char *, uint32_t> headers[] = {{"X-Mms-Report-Allowed", 0x81},
                                                                 {"X-Mms-Reply-Charging", 0x83},
                                                                 {"X-Mms-Store-Status", 0xE4}};
            const auto &[name, octet] = in_.pick(headers);
            require(MMS_SetField(first(), name, slot(octet)) == 1);
        }
    }

    void message_header() {
        const auto &header = in_.pick(message_headers);
        const MMS_Entity *holder = MMS_FindEntityByFieldName(root()->pEntityList, header.name);
        if (holder == nullptr || holder == first()) {
            change(root(), first(), header);
        }
    }

    void part_header(MMS_Entity *part) {
        const auto &header = in_.pick(part_headers);
        if (part != first() || MMS_SearchFieldMapForId(header.name) != 0) {
            change(part, part, header);
        }
    }

    // Deletes the header, sets what is there once more, or sets a new value; all else stays.
    template <typename Owner>
    void change(Owner *owner, MMS_Entity *entity, const Header<Owner> &header) {
        Contents expected = contents(entity);
        const uint8_t id = MMS_SearchFieldMapForId(header.name);
        const Kind kind = id != 0 ? kind_of(id) : Kind::text;
        const string key = id != 0 ? header.name : generic_key(header.name);
        const uint32_t choice = in_.below(8);
        const void *old = choice == 1 ? header.get(owner) : nullptr;
        const bool multipart = entity == first() ? choice % 2 != 0 : entity->isMultipart != 0;
        if (choice == 0) {
            require(header.del(owner) == expected.erase(key));
        } else {
            const void *value =
                old != nullptr ? old : make_value(in_, kind, header.highest, multipart);
            const MMS_GenericData generic = {static_cast<char *>(const_cast<void *>(value)),
                                             const_cast<char *>(header.name)};
            const string text = id != 0 ? shown(id, value) : shown(&generic);
            if (header.set(owner, value) == 1) {
                expected[key] = text;
            } else {
                require(kind == Kind::integer && header.highest == UINT8_MAX);
            }
            std::free(kind == Kind::text && old == nullptr ? const_cast<void *>(value) : nullptr);
        }
        require_same(lines(contents(entity)), lines(expected));
    }

    MMS_Entity *some_part() {
        MMS_Container *container = path_.back();
        return MMS_GetEntity(container, in_.below(MMS_GetEntityCount(container)));
    }

    void add_part(bool multipart) {
        if (parts_ < most_parts && path_.size() <= deepest) {
            ++parts_;
            MMS_Entity *part = add_entity(path_.back());
            MMS_SetContentType(part, make_content_type(in_, multipart));
            part->isMultipart = multipart ? 1 : 0;
            if (multipart) { // with a part of its own, since an empty body has no octets
                MMS_Container *parts = MMS_Container_Create();
                require(MMS_SetField(part, INTERNAL_NESTED_MULTIPART_FIELD_NAME, parts) == 1);
                MMS_SetContentType(add_entity(parts), make_content_type(in_, false));
                path_.push_back(parts);
            }
        }
    }

    void change_parts() {
        const uint8_t choice = in_.octet();
        if (choice >= 252) {
            for (size_t level = 0; level < deepest; ++level) {
                add_part(true);
            }
        } else if (choice % 4 == 0 && path_.size() > 1) {
            path_.pop_back();
        } else if (choice % 4 == 1) {
            const uint32_t count = MMS_GetEntityCount(path_.back());
            const uint32_t position = 1 + in_.below(8);
            require(MMS_DelEntity(path_.back(), position) == (position < count ? 1 : 0));
        } else {
            add_part(choice % 4 == 2);
        }
    }

    // Deletes the body, adopts the one that is there again, or adopts or copies another one.
    void set_content(MMS_Entity *part) {
        string expected = contents(part)["#"];
        const uint32_t choice = part->isMultipart != 0 ? 0 : in_.below(4);
        if (choice == 0) {
            require(MMS_DelContent(part) == (expected.empty() ? 0 : 1));
            expected.clear();
        } else if (choice == 1) {
            require(MMS_SetContent(part, MMS_GetContent(part), MMS_GetContentLength(part), 1) == 1);
        } else {
            expected = in_.octets() + "!";
            for (uint32_t doublings = in_.below(8); doublings != 0; --doublings) {
                expected += expected;
            }
            const char *data = choice == 2 ? heap_text(expected) : expected.data();
            require(MMS_SetContent(part, reinterpret_cast<const uint8_t *>(data),
                                   static_cast<uint32_t>(expected.size()),
                                   choice == 2 ? 1 : 0) == 1);
        }
        require_same(contents(part)["#"], expected);
    }

    // Gives every part a content type, and the message one that fits its parts.
    void complete(const MMS_Container *container) {
        each_carried<MMS_Entity>(container->pEntityList, [&](MMS_Entity *entity) {
            const bool header = entity == first();
            const bool multipart =
                header ? MMS_GetEntityCount(root()) > 1 : nested(entity) != nullptr;
            const MMS_ContentType *type = MMS_GetContentType(entity);
            if (type == nullptr ? multipart || !header : multipart && MMS_IsMultipart(type) == 0) {
                MMS_SetContentType(entity, make_content_type(in_, multipart));
            }
            if (nested(entity) != nullptr) {
                complete(nested(entity));
            }
        });
    }

    Input in_;
    MessagePtr message_;
    std::vector<MMS_Container *> path_; // down to the container that is worked on
    uint32_t parts_ = 0;                // that were ever added, but for the first of each container
};

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    Builder(Input(data, size)).run();
    return 0;
}
