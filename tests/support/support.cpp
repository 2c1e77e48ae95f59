#include "support/support.hpp"

#include <algorithm>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

namespace test {

Octets read_sample(const std::string &name) {
    std::ifstream file(std::string(MMSLIB_SAMPLES_DIR) + "/" + name, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << name;
    return Octets(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

Octets octets(std::initializer_list<int> values) {
    Octets result;
    for (const int value : values) {
        result.push_back(static_cast<uint8_t>(value));
    }
    return result;
}

Octets raw(std::string_view characters) { return Octets(characters.begin(), characters.end()); }

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

std::unique_ptr<uint8_t[]> exact(const Octets &octets) {
    auto block = std::make_unique<uint8_t[]>(octets.size());
    std::copy(octets.begin(), octets.end(), block.get());
    return block;
}

Decoded decode(const Octets &pdu) {
    const auto block = exact(pdu);
    MMSLib_Message *message = nullptr;
    const uint32_t status =
        MMSLib_DecodeMessage(block.get(), static_cast<uint32_t>(pdu.size()), &message);
    return {status, MessagePtr(message)};
}

void *slot(uint32_t value) { return reinterpret_cast<void *>(static_cast<uintptr_t>(value)); }

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
    EXPECT_EQ(MMS_AddEntity(container, entity.get(), &position), 1U);
    return entity.release();
}

std::string shown(const char *text) { return text == nullptr ? "(null)" : text; }

} // namespace test
