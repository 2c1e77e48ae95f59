// Texts that are not NUL-terminated, and names compared ignoring case.
#pragma once

#include "util/heap.hpp"

#include <ctype.h>

namespace mms {

// A borrowed run of octets, none of which is zero.
struct TextView {
    const char *data = "";
    size_t size = 0;

    [[nodiscard]] bool empty() const { return size == 0; }
    [[nodiscard]] char front() const { return *data; }
    [[nodiscard]] TextView first(size_t count) const { return {data, count}; }
    [[nodiscard]] TextView after(size_t count) const { return {data + count, size - count}; }

    // The index of the first octet equal to one of the given characters; the size when none is.
    [[nodiscard]] size_t find(char wanted) const {
        const void *found = size != 0 ? std::memchr(data, wanted, size) : nullptr;
        return found != nullptr ? static_cast<size_t>(static_cast<const char *>(found) - data)
                                : size;
    }
    template <typename... Characters>
    [[nodiscard]] size_t find(Characters... wanted) const {
        size_t at = 0;
        while (at < size && !((data[at] == wanted) || ...)) {
            ++at;
        }
        return at;
    }
};

// A NUL-terminated text; null counts as empty.
inline TextView view_of(const char *text) {
    return text != nullptr ? TextView{text, std::strlen(text)} : TextView{};
}

inline OwnedText copy_text(TextView text) { return copy_text(text.data, text.size); }

// Folds octets as the current locale does.
class CaseFold {
public:
    int operator()(char octet) const { return table_[static_cast<unsigned char>(octet)]; }

private:
    const int32_t *table_ = *__ctype_tolower_loc();
};

inline bool equal_ignoring_case(const char *a, const char *b) {
    const CaseFold fold;
    while (fold(*a) == fold(*b)) {
        if (*a == '\0') {
            return true;
        }
        ++a;
        ++b;
    }
    return false;
}

// Whether a text equals a NUL-terminated name ignoring case.
inline bool equal_ignoring_case(TextView text, const char *name) {
    const CaseFold fold;
    for (size_t i = 0; i < text.size; ++i) {
        if (fold(text.data[i]) != fold(name[i])) {
            return false;
        }
    }
    return name[text.size] == '\0';
}

constexpr bool is_blank(char octet) { return octet == ' ' || octet == '\t'; }

} // namespace mms
