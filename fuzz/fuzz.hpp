// What the fuzz targets share: checks, exact blocks, messages as texts, encoding with all its
// passes compared.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "mmslib.h"
#include "support/support.hpp"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

// Ends the process when the condition does not hold, in every kind of build.
#define REQUIRE(condition) \
    ((condition) ? static_cast<void>(0) : fuzz::fail(#condition, "", __FILE__, __LINE__))
// The same for two texts or octet sequences, which are then shown.
#define REQUIRE_SAME(left, right) \
    fuzz::require_same((left), (right), #left " is " #right, __FILE__, __LINE__)

namespace fuzz {

using test::MessagePtr;
using test::Octets;

[[noreturn]] inline void fail(const char *what, const std::string &detail, const char *file,
                              int line) {
    std::fprintf(stderr, "%s:%d: does not hold: %s\n%s", file, line, what, detail.c_str());
    std::abort();
}

// Printable characters as they are, other octets as \xNN.
template <typename Sequence>
std::string printable(const Sequence &octets) {
    std::string all;
    for (const auto element : octets) {
        const unsigned octet = static_cast<unsigned>(element) & 0xFFU;
        char form[5] = {static_cast<char>(octet)};
        if (octet < 0x20 || octet > 0x7E || octet == '\\') {
            std::snprintf(form, sizeof form, "\\x%02X", octet);
        }
        all += form;
    }
    return all + "\n";
}

template <typename Sequence>
void require_same(const Sequence &left, const Sequence &right, const char *what, const char *file,
                  int line) {
    if (left != right) {
        fail(what, printable(left) + printable(right), file, line);
    }
}

// The octets in a heap block of exactly their number, so that the sanitizers see every access
// beside them. Of no octets it is the end of a block of one.
class Block {
public:
    Block(const uint8_t *octets, size_t size)
        : storage_(new uint8_t[size != 0 ? size : 1]), size_(static_cast<uint32_t>(size)) {
        if (size != 0) {
            std::memcpy(storage_.get(), octets, size);
        }
    }
    explicit Block(const Octets &octets) : Block(octets.data(), octets.size()) {}
    explicit Block(uint32_t size) : Block(Octets(size, 0xAA)) {}

    [[nodiscard]] uint8_t *data() const { return storage_.get() + (size_ != 0 ? 0 : 1); }
    [[nodiscard]] uint32_t size() const { return size_; }
    [[nodiscard]] Octets octets() const { return {data(), data() + size_}; }

private:
    std::unique_ptr<uint8_t[]> storage_;
    uint32_t size_;
};

// A heap copy of a text, for the operations that adopt one.
inline char *heap_text(const std::string &text) { return strdup(text.c_str()); }

// --- messages as texts, which reads all of what they hold ----------------------------------------

template <typename Element, typename Visit>
void each(slList *list, Visit visit) {
    slIterator at;
    uint32_t count = 0;
    for (slIterator_Init(&at, list); slIterator_Current(&at) != nullptr; slIterator_Next(&at)) {
        visit(static_cast<Element *>(slIterator_Current(&at)));
        ++count;
    }
    REQUIRE(count == list->nElement);
}

template <typename Record, typename Visit>
void each_carried(slList *list, Visit visit) {
    each<MMS_ListNode>(list,
                       [&](MMS_ListNode *node) { visit(static_cast<Record *>(node->pValue)); });
}

// Texts carry their length, so that distinct values never look alike.
inline std::string show(const std::string &text) {
    return std::to_string(text.size()) + ":" + text;
}

inline std::string show(const char *text) {
    return text == nullptr ? "~" : show(std::string(text));
}

inline std::string show_charset(const char *charset) {
    return charset == nullptr ? "" : "{" + std::string(charset) + "}";
}

inline std::string show(const MMS_EncodedString *string) {
    return string == nullptr ? "~" : show(string->pText) + show_charset(string->pCharset);
}

inline std::string show(const MMS_Mailbox *mailbox) {
    return std::to_string(mailbox->type) + "|" + show(mailbox->pDisplayName) + "|" +
           show(mailbox->pAddress) + ";";
}

inline std::string show(const MMS_Group *group) {
    std::string all;
    each_carried<MMS_Mailbox>(group->pMailboxList,
                              [&](const MMS_Mailbox *mailbox) { all += show(mailbox); });
    return all;
}

inline std::string show(const MMS_SpecialTime *time) {
    return std::to_string(time->token) + "|" + std::to_string(time->value);
}

inline std::string show(const MMS_Parameter *parameter) {
    return show(parameter->pName) + "=" + show(parameter->pValue) +
           show_charset(parameter->pCharset) + ";";
}

inline std::string show(const MMS_ContentType *type) {
    std::string all = show(type->pMediaType) + ";";
    each_carried<MMS_Parameter>(type->pParameters,
                                [&](const MMS_Parameter *parameter) { all += show(parameter); });
    return all;
}

inline std::string show(const MMS_ContentDisposition *disposition) {
    return show(disposition->pDisposition) + "|" + show(disposition->pFilename) +
           show_charset(disposition->pCharset);
}

inline std::string show(const MMS_GenericData *data) {
    return show(data->pHeaderName) + "=" + show(data->pHeaderValue);
}

void show(std::string &all, const MMS_Entity *entity);

inline std::string show(const MMS_Container *container) {
    std::string all;
    each_carried<MMS_Entity>(container->pEntityList,
                             [&](const MMS_Entity *entity) { show(all, entity); });
    return all;
}

inline uint32_t integer_of(const MMS_Field *field) {
    return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(field->pValue));
}

// The header's number in FieldNameMap says what the value is.
inline void show(std::string &all, const MMS_Field *field) {
    const void *value = field->pValue;
    switch (field->fieldId) {
    case 1: // Bcc, Cc, From, To
    case 2:
    case 9:
    case 12:
        all += show(static_cast<const MMS_Group *>(value));
        break;
    case 3: // Content-Disposition
        all += show(static_cast<const MMS_ContentDisposition *>(value));
        break;
    case 5: // Content-Id, Content-Location, Message-Id, X-Mms-Content-Location and so on
    case 6:
    case 10:
    case 13:
    case 17:
    case 28:
    case 56:
    case 57:
        all += show(static_cast<const char *>(value));
        break;
    case 7: // Content-Type
        all += show(static_cast<const MMS_ContentType *>(value));
        break;
    case 11: // Subject, X-Mms-Response-Text
    case 25:
        all += show(static_cast<const MMS_EncodedString *>(value));
        break;
    case 15: // X-Mms-Delivery-Time, X-Mms-Expiry
    case 16:
        all += show(static_cast<const MMS_SpecialTime *>(value));
        break;
    case 59: // INTERNAL_Nested-Multipart
        each_carried<MMS_Entity>(static_cast<const MMS_Container *>(value)->pEntityList,
                                 [&](const MMS_Entity *part) { show(all, part); });
        break;
    case 60: // INTERNAL_Generic-Entity-Header
        all += show(static_cast<const MMS_GenericData *>(value));
        break;
    default:
        all += std::to_string(integer_of(field));
        break;
    }
}

// "(Name=value, Name=value, #body)"
inline void show(std::string &all, const MMS_Entity *entity) {
    bool nested = false;
    all += "(";
    each<MMS_Field>(entity->pFieldList, [&](const MMS_Field *field) {
        const char *name = MMS_SearchFieldMapForName(field->fieldId);
        REQUIRE(name != nullptr);
        nested = nested || field->fieldId == 59;
        all += std::string(name) + "=";
        show(all, field);
        all += ", ";
    });
    const uint8_t *content = MMS_GetContent(entity);
    const uint32_t length = MMS_GetContentLength(entity);
    REQUIRE((content != nullptr) == (length != 0));
    REQUIRE(entity->isMultipart == (nested ? 1 : 0));
    all += "#";
    if (length != 0) {
        all.append(content, content + length);
    }
    all += ")";
}

// --- encoding and decoding -----------------------------------------------------------------------

struct Encoded {
    uint32_t status;
    Octets octets;
};

// Encodes without the check of mandatory headers. The runs for the size, into buffers of the size
// and below it, and into a new block have to agree.
inline Encoded encode(const MMSLib_Message *message) {
    uint32_t size = 77;
    uint8_t untouched = 0;
    uint8_t *pdu = &untouched;
    uint32_t length = 78;
    const uint32_t status = MMS_Encoder_GetEncodedMessageSize(message, &size, 0);
    REQUIRE(MMSLib_EncodeMessage(message, &pdu, &length, 0) == status);
    if (status != MMS_STATUS_OK) {
        REQUIRE(size == 0 && pdu == &untouched && length == 78);
        REQUIRE(MMSLib_GetSize(message) == 0);
        return {status, {}};
    }
    REQUIRE(length == size);
    const Octets octets(pdu, pdu + length);
    std::free(pdu);

    uint32_t written = 77;
    const Block exact(size);
    REQUIRE(MMS_Encoder_Encode(message, exact.data(), size, &written, 0) == MMS_STATUS_OK);
    REQUIRE(written == size);
    REQUIRE_SAME(exact.octets(), octets);
    for (const uint32_t room : {size - 1, size / 2}) {
        if (size == 0) {
            break; // no header has a wire form
        }
        const Block small(room);
        written = 77;
        REQUIRE(MMS_Encoder_Encode(message, small.data(), room, &written, 0) == MMS_STATUS_NO_ROOM);
        REQUIRE(written == 0);
    }
    const uint32_t checked = MMSLib_GetSize(message);
    REQUIRE(checked == 0 || checked == size);
    return {status, octets};
}

// Decodes an exact block, which is gone afterwards.
inline test::Decoded decode(const uint8_t *octets, size_t size) {
    const Block block(octets, size);
    MMSLib_Message *message = nullptr;
    const uint32_t status = MMSLib_DecodeMessage(block.data(), block.size(), &message);
    REQUIRE(status == MMS_STATUS_OK || status == MMS_STATUS_MALFORMED);
    REQUIRE(message != nullptr || status == MMS_STATUS_MALFORMED || size != 0);
    if (message != nullptr) {
        REQUIRE(message->pPdu == block.data() && message->pduLength == size);
        REQUIRE(message->isDecoded == 1);
    }
    return {status, MessagePtr(message)};
}

inline test::Decoded decode(const Octets &octets) { return decode(octets.data(), octets.size()); }

// Whether the text begins with a character of those given.
inline bool begins_with(const char *text, const char *characters) {
    return text != nullptr && *text != '\0' && std::strchr(characters, *text) != nullptr;
}

inline bool begins_as_word(const char *text) {
    return text != nullptr && std::strncmp(text, "=?", 2) == 0;
}

} // namespace fuzz
