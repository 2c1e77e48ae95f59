// What the tests and the fuzz targets share: checks, octet sequences, owning pointers, a decode
// that exposes overreads.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "mmslib.h"

namespace test {

using Octets = std::vector<uint8_t>;

// Ends the process, naming the place of the call, when the condition does not hold; for the code
// that the tests and the fuzz targets share.
void require(bool holds, const char *file = __builtin_FILE(), int line = __builtin_LINE());

// The same for two texts, which are then shown.
void require_same(const std::string &left, const std::string &right,
                  const char *file = __builtin_FILE(), int line = __builtin_LINE());

// The contents of a file of the samples directory; which has to be there.
Octets read_sample(const std::string &name);

Octets octets(std::initializer_list<int> values);

// The characters alone, and the characters with a terminating zero.
Octets raw(std::string_view characters);
Octets text(std::string_view characters);

// A file that uses the operator names it: `using test::operator+;`.
Octets operator+(Octets left, const Octets &right);
Octets concat(std::initializer_list<Octets> pieces);

// A heap copy of a text, for the operations that adopt one.
char *heap_text(std::string_view characters);

// The octets in a heap block of exactly their number, so that an access beyond them is seen. Of no
// octets it is the end of a block of one, since a block of none has room for one.
class Block {
public:
    explicit Block(const Octets &octets);

    [[nodiscard]] uint8_t *get() const { return storage_.get() + (size_ != 0 ? 0 : 1); }
    [[nodiscard]] uint32_t size() const { return size_; }
    [[nodiscard]] Octets octets() const { return {get(), get() + size_}; }

private:
    std::unique_ptr<uint8_t[]> storage_;
    uint32_t size_;
};

inline Block exact(const Octets &octets) { return Block(octets); }

template <auto destroy>
struct Destroyer {
    template <class Record>
    void operator()(Record *record) const {
        destroy(record);
    }
};

struct Freer {
    void operator()(const void *block) const { std::free(const_cast<void *>(block)); }
};

template <class Record, auto destroy>
using Owner = std::unique_ptr<Record, Destroyer<destroy>>;

using MessagePtr = Owner<MMSLib_Message, MMSLib_Message_Destroy>;
using ContainerPtr = Owner<MMS_Container, MMS_Container_Destroy>;
using EntityPtr = Owner<MMS_Entity, MMS_Entity_Destroy>;
using EncodedStringPtr = Owner<MMS_EncodedString, MMS_DestroyEncodedString>;
using MailboxPtr = Owner<MMS_Mailbox, MMS_DestroyMailbox>;
using GroupPtr = Owner<MMS_Group, MMS_Group_Destroy>;
using ParameterPtr = Owner<MMS_Parameter, MMS_DestroyParameter>;
using ContentTypePtr = Owner<MMS_ContentType, MMS_DestroyContentType>;
using ContentDispositionPtr = Owner<MMS_ContentDisposition, MMS_DestroyContentDisposition>;
using SpecialTimePtr = Owner<MMS_SpecialTime, MMS_DestroySpecialTime>;
using GenericDataPtr = Owner<MMS_GenericData, MMS_DestroyGenericData>;
using FieldListPtr = Owner<MMS_FieldList, MMS_LinkedList_DestroyFieldList>;
using EntityListPtr = Owner<MMS_EntityList, MMS_LinkedList_DestroyEntityList>;
using MailboxListPtr = Owner<MMS_MailboxList, MMS_LinkedList_DestroyMailboxList>;
using ParameterListPtr = Owner<MMS_ParameterList, MMS_LinkedList_DestroyParameterList>;
using DecoderPtr = Owner<MMS_Decoder, MMS_Decoder_Destroy>;
using TextPtr = std::unique_ptr<char, Freer>;

struct Decoded {
    uint32_t status;
    MessagePtr message;
};

// Decodes an exact heap copy of the octets, which is gone afterwards: the message may not point
// into it.
Decoded decode(const Octets &pdu);

// A session at the start of the PDU, with a message of its own.
struct Session {
    explicit Session(const Octets &pdu);

    Block octets;
    MessagePtr message;
    DecoderPtr decoder;
};

// An integer as a field's value, and the integer that a field's value is.
void *slot(uint32_t value);
uint32_t slot_value(const MMS_Field *field);

// The ids of an entity's fields, in order.
std::vector<int> field_ids(const MMS_Entity *entity);

// An entity of the container, appended; the container owns it.
MMS_Entity *add_entity(MMS_Container *container);

// A text that may be null, for comparisons and messages.
std::string shown(const char *text);

} // namespace test
