#include "difference.hpp"

#include "fields.hpp"
#include "show.hpp"
#include "text_output.hpp"
#include "wording.hpp"

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <sstream>
#include <vector>

namespace mmspdu {
namespace {

// Codes of the MMS headers that encoding treats in a way of their own.
enum Code : uint8_t {
    bcc = 1,
    cc = 2,
    delivery_time = 7,
    expiry = 8,
    from = 9,
    message_class = 10,
    message_id = 11,
    message_type = 12,
    version = 13,
    priority = 15,
    to = 23,
    transaction_id = 24,
};

constexpr uint8_t send_req = 0x80;
constexpr uint8_t delivery_ind = 0x86;
constexpr uint8_t read_orig_ind = 0x88;

constexpr uint8_t content_id = 0x40; // of a part

bool is_one_of(uint8_t code, std::initializer_list<Code> codes) {
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

bool is_address(uint8_t code) { return is_one_of(code, {bcc, cc, from, to}); }

bool identifies_by_message_id(uint8_t type) {
    return type >= delivery_ind && type <= read_orig_ind;
}

// --- items -----------------------------------------------------------------------------------

std::span<const uint8_t> octets_of(const PduView &pdu, const Item &item) {
    return pdu.octets.subspan(item.begin, item.end - item.begin);
}

const Item *item_at(const PduView &pdu, size_t offset) {
    const std::vector<Item> &items = pdu.decoded.layout.items;
    const auto behind =
        std::upper_bound(items.begin(), items.end(), offset,
                         [](size_t place, const Item &item) { return place < item.begin; });
    const bool inside = behind != items.begin() && offset < (behind - 1)->end;
    return inside ? &*(behind - 1) : nullptr;
}

bool is_header(const Item &item) {
    return item.kind == ItemKind::header || item.kind == ItemKind::named_header;
}

// The name of a header that is given as text.
std::string_view given_name(const PduView &pdu, const Item &item) {
    constexpr char text_quote = 0x7F;
    const auto *text = reinterpret_cast<const char *>(octets_of(pdu, item).data());
    return text + (*text == text_quote ? 1 : 0);
}

// A header's code and, without one, its name.
std::string header_title(const PduView &pdu, const Item &item) {
    if (item.kind == ItemKind::named_header) {
        return printable_name(given_name(pdu, item));
    }
    return header_name(item.part == 0 ? MMS_HEADER_MAP : WSP_HEADER_MAP, item.code);
}

std::string item_title(const PduView &pdu, const Item &item) {
    const bool in_part = item.part != 0;
    const std::string &number = pdu.decoded.layout.parts[item.part];
    const std::string of_part = in_part ? " of part " + number : "";
    switch (item.kind) {
    case ItemKind::part_count:
        return "the number of parts" + of_part;
    case ItemKind::headers_length:
        return "the headers length" + of_part;
    case ItemKind::data_length:
        return "the data length" + of_part;
    case ItemKind::content_type:
        return CONTENT_TYPE_FIELD_NAME + of_part;
    case ItemKind::data:
        return in_part ? "the data" + of_part : "the body";
    default:
        return header_title(pdu, item) + of_part;
    }
}

std::string place_title(const PduView &pdu, size_t offset) {
    if (offset == pdu.octets.size()) {
        return "the end of the PDU";
    }
    const Item *item = item_at(pdu, offset);
    if (item != nullptr) {
        return item_title(pdu, *item);
    }
    return pdu.decoded.layout.items.size() == most_items
               ? "what stands behind the first " + std::to_string(most_items) +
                     " headers and lengths"
               : "what is not understood";
}

size_t equal_octets(const PduView &pdu, const PduView &encoded) {
    const auto [a, b] = std::mismatch(pdu.octets.begin(), pdu.octets.end(), encoded.octets.begin(),
                                      encoded.octets.end());
    return static_cast<size_t>(a - pdu.octets.begin());
}

// --- what a header says ----------------------------------------------------------------------

using Octets = std::vector<uint8_t>;

// A PDU that has nothing but that header or content type, and what they need around them.
Octets wrapped(const PduView &pdu, const Item &item) {
    const std::span<const uint8_t> octets = octets_of(pdu, item);
    Octets whole;
    if (item.kind == ItemKind::content_type) {
        whole = {0x84};
    } else if (item.part != 0) {
        // A multipart with one part, whose headers are a media type and this one.
        uint8_t length[5];
        uint32_t length_octets = 0;
        static_cast<void>(EncodeUintvarInteger(
            length, sizeof length, static_cast<uint32_t>(octets.size() + 1), &length_octets, 0));
        whole = {0x84, 0xA3, 0x01};
        whole.insert(whole.end(), length, length + length_octets);
        whole.insert(whole.end(), {0x00, 0x83});
    }
    whole.insert(whole.end(), octets.begin(), octets.end());
    return whole;
}

std::string shown(const DecodedPdu &decoded) {
    std::ostringstream out;
    if (decoded.message) {
        // Without the marks of defaults, which only say how a value got here; the contents of parts
        // are compared as octets.
        show_message(out, TextPrinter(false), *decoded.message, nullptr, {0, 1});
    }
    return out.str();
}

bool say_the_same(const PduView &pdu, const Item &was, const PduView &encoded, const Item &is) {
    const Octets before = wrapped(pdu, was);
    const Octets after = wrapped(encoded, is);
    const std::string said = shown(decode_pdu(before));
    return !said.empty() && said == shown(decode_pdu(after));
}

// --- the forms of values ---------------------------------------------------------------------

std::span<const uint8_t> value_of(const PduView &pdu, const Item &item) {
    const std::span<const uint8_t> octets = octets_of(pdu, item);
    switch (item.kind) {
    case ItemKind::header:
        return octets.subspan(1);
    case ItemKind::named_header:
        return octets.subspan(std::strlen(reinterpret_cast<const char *>(octets.data())) + 1);
    default:
        return octets;
    }
}

bool is_number(std::span<const uint8_t> value) { return !value.empty() && value[0] >= 0x80; }

bool is_text(std::span<const uint8_t> value) {
    return !value.empty() && value[0] < 0x80 && value[0] > 31;
}

// What follows a Value-length; all for a value that has none.
std::span<const uint8_t> behind_length(std::span<const uint8_t> value) {
    uint32_t length = 0;
    uint32_t used = 0;
    const auto size = static_cast<uint32_t>(value.size());
    const bool found = DecodeValueLength(value.data(), size, &length, &used) == MMS_STATUS_OK;
    return found ? value.subspan(used) : value;
}

bool equal(std::span<const uint8_t> a, std::span<const uint8_t> b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
}

// How a value that says the same has changed its form.
const char *form_change(std::span<const uint8_t> was, std::span<const uint8_t> is) {
    constexpr uint8_t text_quote = 0x7F;
    constexpr uint8_t quotation_mark = 0x22;
    if (is_text(was) && is_number(is)) {
        return "is written as a well-known number instead of a text";
    }
    if (equal(behind_length(was), behind_length(is))) {
        return "has its length written in as few octets as possible";
    }
    if (!was.empty() && was[0] == text_quote && equal(was.subspan(1), is)) {
        return "is written without an octet 0x7F that its text does not need";
    }
    if (!is.empty() && is[0] == quotation_mark && equal(was, is.subspan(1))) {
        return "is written with a quotation mark in front";
    }
    return "is written in another form, which decodes to the same";
}

uint32_t number_of(const PduView &pdu, const Item &item) {
    const std::span<const uint8_t> octets = octets_of(pdu, item);
    uint32_t number = 0;
    uint32_t used = 0;
    static_cast<void>(
        DecodeUintvarInteger(octets.data(), static_cast<uint32_t>(octets.size()), &number, &used));
    return number;
}

// --- the reason ------------------------------------------------------------------------------

// Goes through the items of both PDUs side by side, up to the first pair that differs of itself. In
// front of that pair all headers are the same in both.
class Explainer {
public:
    Explainer(const PduView &pdu, const PduView &encoded)
        : pdu_(pdu), encoded_(encoded),
          type_(MMSLib_GetXMmsMessageType(pdu.decoded.message->pContainer)) {}

    [[nodiscard]] std::string reason() const {
        for (size_t i = 0; i < most_items; ++i) {
            const Item *was = item(pdu_, i);
            const Item *is = item(encoded_, i);
            if (was == nullptr && is == nullptr) {
                return why_gone(i, nullptr);
            }
            if (was == nullptr || is == nullptr ||
                !equal(octets_of(pdu_, *was), octets_of(encoded_, *is))) {
                if (!follows_from_others(was, is)) {
                    return pair_reason(i, was, is);
                }
            }
        }
        return "";
    }

private:
    static const Item *item(const PduView &pdu, size_t index) {
        const std::vector<Item> &items = pdu.decoded.layout.items;
        return index < items.size() ? &items[index] : nullptr;
    }

    static bool is_length(const Item &item) {
        return item.kind == ItemKind::headers_length || item.kind == ItemKind::data_length;
    }

    // Lengths differ where what they measure does.
    [[nodiscard]] bool follows_from_others(const Item *was, const Item *is) const {
        return was != nullptr && is != nullptr && is_length(*was) && was->kind == is->kind &&
               was->kept && number_of(pdu_, *was) != number_of(encoded_, *is);
    }

    [[nodiscard]] std::string pair_reason(size_t index, const Item *was, const Item *is) const {
        const bool counts = was != nullptr && !is_header(*was);
        if (counts && is != nullptr && was->kind == is->kind &&
            was->kind != ItemKind::content_type) {
            return number_reason(*was, *is);
        }
        std::string reason = why_gone(index, was);
        append_phrase(reason, why_new(was, is));
        if (reason.empty() && was != nullptr && is != nullptr) {
            reason =
                same_header(*was, *is) ? value_reason(index, *was, *is) : order_reason(index, *is);
        }
        return reason;
    }

    [[nodiscard]] std::string number_reason(const Item &was, const Item &is) const {
        const uint32_t before = number_of(pdu_, was);
        const uint32_t after = number_of(encoded_, is);
        if (was.kind == ItemKind::data) {
            return "";
        }
        if (before == after) {
            return item_title(pdu_, was) + " is written in as few octets as possible";
        }
        if (!was.kept) {
            return item_title(pdu_, was) + " is not that of the parts in it";
        }
        const bool cut = was.kind == ItemKind::part_count && !pdu_.decoded.fault.empty();
        return cut ? "only " + std::to_string(after) + " of its parts could be decoded" : "";
    }

    // Why the encoded PDU does not have that header.
    [[nodiscard]] std::string why_gone(size_t index, const Item *was) const {
        if (was == nullptr) {
            return pdu_.decoded.fault.empty() ? ""
                                              : "decoding ended where the PDU is not understood";
        }
        if (!is_header(*was)) {
            return "";
        }
        const std::string title = item_title(pdu_, *was);
        if (!was->kept) {
            return title + " is passed over in decoding";
        }
        if (!may_repeat(*was) && stands_before(index, *was)) {
            return repeated(title);
        }
        return was->part == 0 && !encoded_.decoded.present.test(was->code) ? why_left_out(*was)
                                                                           : "";
    }

    [[nodiscard]] std::string why_left_out(const Item &was) const {
        const std::string title = item_title(pdu_, was);
        if (type_ == send_req &&
            is_one_of(was.code, {message_class, expiry, delivery_time, priority})) {
            return "an m-send-req leaves out " + title + " where it has its default value";
        }
        if (identifies_by_message_id(type_) && was.code == transaction_id) {
            return "PDUs of this type are written without " + title;
        }
        return "";
    }

    // Why the encoded PDU has a header that the other does not.
    [[nodiscard]] std::string why_new(const Item *was, const Item *is) const {
        if (is == nullptr || is->kind != ItemKind::header || is->part != 0) {
            return "";
        }
        const bool given = pdu_.decoded.present.test(is->code);
        if (is->code == from && !is->kept) {
            const bool here = was != nullptr && was->part == 0 && was->code == from;
            return std::string("a From that asks the network for the address is ") +
                   (!given ? "added"
                    : here ? "written anew"
                           : "written anew behind the leading headers");
        }
        return given ? "" : item_title(encoded_, *is) + " is a default that decoding fills in";
    }

    [[nodiscard]] std::string order_reason(size_t index, const Item &is) const {
        if (is.kind != ItemKind::header || is.part != 0) {
            return "";
        }
        const std::string title = item_title(encoded_, is);
        const Item *previous = index != 0 ? item(encoded_, index - 1) : nullptr;
        if (is_address(is.code) && previous != nullptr && previous->code == is.code) {
            return "the " + title + " headers are gathered where the first of them stands";
        }
        const bool leads = identifies_by_message_id(type_)
                               ? is_one_of(is.code, {message_type, version, message_id})
                               : is_one_of(is.code, {message_type, transaction_id, version});
        return leads ? title + " is one of the leading headers, which have a fixed order" : "";
    }

    [[nodiscard]] std::string value_reason(size_t index, const Item &was, const Item &is) const {
        const std::string title = item_title(pdu_, was);
        const Item *last = may_repeat(was) ? nullptr : last_like(index, was);
        if (last != nullptr && say_the_same(pdu_, *last, encoded_, is)) {
            return repeated(title);
        }
        if (!say_the_same(pdu_, was, encoded_, is)) {
            return "";
        }
        if (was.kind == ItemKind::named_header && is.kind == ItemKind::header) {
            return title + " is written with a well-known number instead of a name";
        }
        return title + " " + form_change(value_of(pdu_, was), value_of(encoded_, is));
    }

    static std::string repeated(const std::string &title) {
        return title + " is repeated, and only its last value is kept";
    }

    static bool may_repeat(const Item &item) {
        return !is_header(item) || (item.part == 0 && is_address(item.code));
    }

    // --- headers of one block ---

    [[nodiscard]] bool same_header(const Item &was, const Item &is) const {
        return was.part == is.part && same_name(pdu_, was, encoded_, is);
    }

    static bool same_name(const PduView &a, const Item &x, const PduView &b, const Item &y) {
        if (!is_header(x) || !is_header(y)) {
            return x.kind == ItemKind::content_type && y.kind == ItemKind::content_type;
        }
        if (x.kind == y.kind) {
            return x.kind == ItemKind::header
                       ? x.code == y.code
                       : StrCaseCmp(given_name(a, x).data(), given_name(b, y).data()) == 0;
        }
        const bool named = x.kind == ItemKind::named_header;
        const std::string_view name = named ? given_name(a, x) : given_name(b, y);
        return (named ? y : x).code == content_id &&
               StrCaseCmp(name.data(), CONTENT_ID_FIELD_NAME) == 0;
    }

    // Another header of that name that decoding keeps.
    [[nodiscard]] bool is_like(const Item &other, const Item &item) const {
        return other.part == item.part && other.kept && is_header(other) &&
               same_name(pdu_, other, pdu_, item);
    }

    [[nodiscard]] bool stands_before(size_t index, const Item &item) const {
        const auto begin = pdu_.decoded.layout.items.begin();
        return std::any_of(begin, begin + static_cast<std::ptrdiff_t>(index),
                           [&](const Item &other) { return is_like(other, item); });
    }

    // The last such header behind that one, or null.
    [[nodiscard]] const Item *last_like(size_t index, const Item &item) const {
        const std::vector<Item> &items = pdu_.decoded.layout.items;
        for (size_t i = items.size(); i-- > index + 1;) {
            if (is_like(items[i], item)) {
                return &items[i];
            }
        }
        return nullptr;
    }

    const PduView &pdu_;
    const PduView &encoded_;
    uint8_t type_;
};

// --- the message -----------------------------------------------------------------------------

using Lines = std::vector<std::string>;

// A message as lines: the headers of the message, each line complete in itself, and the parts.
struct ShownMessage {
    Lines headers;
    Lines parts;
};

ShownMessage shown_lines(const PduView &pdu) {
    ShownMessage message;
    std::istringstream text(shown(pdu.decoded));
    std::string line;
    std::string header;
    while (std::getline(text, line) && !line.empty()) {
        const bool detail = line.starts_with(' ');
        if (!detail) {
            header = line.substr(0, line.find(':') + 1);
        }
        message.headers.push_back(detail ? header : "");
        message.headers.back() += line;
    }
    while (std::getline(text, line)) {
        message.parts.push_back(line);
    }
    return message;
}

std::string quoted(const std::string &line) {
    const size_t begin = line.find_first_not_of(' ');
    return "\"" + (begin != std::string::npos ? line.substr(begin) : line) + "\"";
}

// How a line changes, of which either may be missing.
std::string line_change(const std::string *was, const std::string *is) {
    if (was == nullptr) {
        return "it gains " + quoted(*is);
    }
    return is == nullptr ? "it loses " + quoted(*was) : quoted(*was) + " becomes " + quoted(*is);
}

const std::string *line_of(const Lines &lines, size_t index) {
    return index < lines.size() ? &lines[index] : nullptr;
}

Lines lines_not_in(const Lines &lines, const Lines &others) {
    Lines rest;
    std::set_difference(lines.begin(), lines.end(), others.begin(), others.end(),
                        std::back_inserter(rest));
    return rest;
}

std::string header_change(Lines was, Lines is) {
    if (was == is) {
        return "";
    }
    std::sort(was.begin(), was.end());
    std::sort(is.begin(), is.end());
    const Lines gone = lines_not_in(was, is);
    const Lines added = lines_not_in(is, was);
    const bool only_order = gone.empty() && added.empty();
    return only_order ? "stays the same but for the order of its headers"
                      : "changes: " + line_change(line_of(gone, 0), line_of(added, 0));
}

bool stands_from(const Lines &lines, size_t index, const std::string &line) {
    const auto begin = lines.begin() + static_cast<std::ptrdiff_t>(std::min(index, lines.size()));
    return std::find(begin, lines.end(), line) != lines.end();
}

// With the part in which the first difference is.
std::string part_change(const Lines &was, const Lines &is) {
    std::string part;
    for (size_t i = 0; i < was.size() || i < is.size(); ++i) {
        const std::string *before = line_of(was, i);
        const std::string *after = line_of(is, i);
        if (before == nullptr || after == nullptr) {
            return "changes: " + part + line_change(before, after);
        }
        if (*before != *after) {
            const bool lost = stands_from(was, i + 1, *after) && !stands_from(is, i + 1, *before);
            const bool gained = stands_from(is, i + 1, *before) && !stands_from(was, i + 1, *after);
            return "changes: " + part +
                   line_change(gained ? nullptr : before, lost ? nullptr : after);
        }
        const size_t begin = before->find_first_not_of(' ');
        if (begin != std::string::npos && before->compare(begin, 5, "Part ") == 0) {
            part = "in part" + before->substr(begin + 4, before->find(':') - begin - 4) + " ";
        }
    }
    return "";
}

bool same_content(const MMS_Entity &was, const MMS_Entity &is) {
    const uint32_t length = MMS_GetContentLength(&was);
    return length == MMS_GetContentLength(&is) &&
           (length == 0 || std::memcmp(MMS_GetContent(&was), MMS_GetContent(&is), length) == 0);
}

// For messages that are shown alike, so that they have the same parts.
std::string content_change(const MMSLib_Message &was, const MMSLib_Message &is) {
    const std::vector<NumberedPart> before = parts_of(was);
    const std::vector<NumberedPart> after = parts_of(is);
    for (size_t i = 0; i < before.size() && i < after.size(); ++i) {
        if (!same_content(*before[i].entity, *after[i].entity)) {
            return before[i].number.empty() ? "changes: the body"
                                            : "changes: the data of part " + before[i].number;
        }
    }
    return "";
}

} // namespace

std::string first_difference(const PduView &pdu, const PduView &encoded) {
    const size_t offset = equal_octets(pdu, encoded);
    if (offset == pdu.octets.size() && offset == encoded.octets.size()) {
        return "";
    }
    const std::string here = place_title(pdu, offset);
    const std::string there = place_title(encoded, offset);
    return at_offset(offset) + ", " +
           (here == there ? "in " + here : here + " in the PDU, " + there + " in the encoding");
}

std::string difference_reason(const PduView &pdu, const PduView &encoded) {
    return Explainer(pdu, encoded).reason();
}

std::string message_change(const PduView &pdu, const PduView &encoded) {
    if (!encoded.decoded.message || !encoded.decoded.fault.empty()) {
        return "changes: the encoding is not wholly understood: " + encoded.decoded.fault;
    }
    const ShownMessage was = shown_lines(pdu);
    const ShownMessage is = shown_lines(encoded);
    const std::string headers = header_change(was.headers, is.headers);
    std::string parts = part_change(was.parts, is.parts);
    if (parts.empty()) {
        parts = content_change(*pdu.decoded.message, *encoded.decoded.message);
    }
    const bool headers_change = headers.starts_with("changes");
    const std::string &change = headers_change || parts.empty() ? headers : parts;
    return change.empty() ? "stays the same" : change;
}

} // namespace mmspdu
