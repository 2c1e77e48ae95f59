#include "support/support.hpp"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>

namespace test {

void require(bool holds, const char *file, int line) {
    if (!holds) {
        std::fprintf(stderr, "%s:%d: does not hold\n", file, line);
        std::abort();
    }
}

void require_same(const std::string &left, const std::string &right, const char *file, int line) {
    if (left != right) {
        std::fprintf(stderr, "%s\n%s\n", left.c_str(), right.c_str());
        require(false, file, line);
    }
}

Octets read_sample(const std::string &name) {
    std::ifstream file(std::string(MMSLIB_SAMPLES_DIR) + "/" + name, std::ios::binary);
    require(file.is_open());
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

Octets octets(std::initializer_list<int> values) {
    Octets result;
    for (const int value : values) {
        result.push_back(static_cast<uint8_t>(value));
    }
    return result;
}

Octets raw(std::string_view characters) { return {characters.begin(), characters.end()}; }

Octets text(std::string_view characters) { return raw(characters) + octets({0}); }

Octets operator+(Octets left, const Octets &right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

Octets concat(std::initializer_list<Octets> pieces) {
    Octets result;
    for (const Octets &piece : pieces) {
        result.insert(result.end(), piece.begin(), piece.end());
    }
    return result;
}

char *heap_text(std::string_view characters) {
    char *const copy = static_cast<char *>(std::malloc(characters.size() + 1));
    *std::copy(characters.begin(), characters.end(), copy) = '\0';
    return copy;
}

Block::Block(const Octets &octets)
    : storage_(std::make_unique<uint8_t[]>(std::max<size_t>(octets.size(), 1))),
      size_(static_cast<uint32_t>(octets.size())) {
    std::copy(octets.begin(), octets.end(), get());
}

Decoded decode(const Octets &pdu) {
    const Block block(pdu);
    MMSLib_Message *message = nullptr;
    const uint32_t status = MMSLib_DecodeMessage(block.get(), block.size(), &message);
    return {status, MessagePtr(message)};
}

Session::Session(const Octets &pdu)
    : octets(pdu), message(MMSLib_Message_Create()), decoder(MMS_Decoder_Create()) {
    decoder->pCursor = octets.get();
    decoder->remaining = octets.size();
    decoder->pMessage = message.get();
}

void *slot(uint32_t value) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    return reinterpret_cast<void *>(static_cast<uintptr_t>(value));
}

uint32_t slot_value(const MMS_Field *field) {
    return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(field->pValue));
}

std::vector<int> field_ids(const MMS_Entity *entity) {
    std::vector<int> ids;
    for (uint32_t i = 0; i < MMS_LinkedList_GetFieldCount(entity->pFieldList); ++i) {
        ids.push_back(MMS_LinkedList_FindFieldByPos(entity->pFieldList, i)->fieldId);
    }
    return ids;
}

MMS_Entity *add_entity(MMS_Container *container) {
    EntityPtr entity(MMS_Entity_Create());
    uint16_t position = 0;
    require(MMS_AddEntity(container, entity.get(), &position) == MMS_STATUS_OK);
    return entity.release();
}

std::string shown(const char *text) { return text == nullptr ? "(null)" : text; }

} // namespace test
