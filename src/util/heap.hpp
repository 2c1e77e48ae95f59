// The heap as the library uses it: records, texts, and owners that release them.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

namespace mms {

// A new record with every field zero or null, or null. Not by calloc, which glibc does not serve
// from the blocks that the thread freed last.
template <typename Record>
Record *allocate() {
    void *block = std::malloc(sizeof(Record));
    return block != nullptr ? new (block) Record{} : nullptr;
}

struct Free {
    void operator()(void *block) const { std::free(block); }
};

// A heap text, or null, on its way to its owner.
using OwnedText = std::unique_ptr<char, Free>;
using OwnedOctets = std::unique_ptr<uint8_t, Free>;

// A heap record on its way to its owner, released by its own destroy operation.
template <auto release>
struct Release {
    template <typename Record>
    void operator()(Record *record) const {
        release(record);
    }
};
template <typename Record, auto release>
using Owned = std::unique_ptr<Record, Release<release>>;

// A heap copy of `length` octets with a zero after them, or null.
inline OwnedText copy_text(const char *text, size_t length) {
    OwnedText copy(static_cast<char *>(std::malloc(length + 1)));
    if (copy) {
        std::memcpy(copy.get(), text, length);
        copy.get()[length] = '\0';
    }
    return copy;
}

inline OwnedText copy_text(const char *text) {
    const size_t size = std::strlen(text) + 1;
    OwnedText copy(static_cast<char *>(std::malloc(size)));
    if (copy) {
        std::memcpy(copy.get(), text, size);
    }
    return copy;
}

} // namespace mms
