// Decoded messages as texts, and the pieces of a multipart body.
#pragma once

#include <set>

#include "codec/checks.hpp"

namespace test {

// The fields and bodies of what `shown` gives, whatever their order.
inline std::multiset<std::string> pieces(const std::string &shown) {
    std::multiset<std::string> all;
    std::string piece;
    for (const char c : shown + ",") {
        if (c == ',' || c == '(' || c == ')' || c == '#') {
            all.insert(piece);
            piece.clear();
        } else {
            piece += c;
        }
    }
    return all;
}

inline std::string shown(const Decoded &decoded) {
    const std::string status = std::to_string(decoded.status) + " ";
    return status + (decoded.message ? shown(decoded.message->pContainer) : "no message");
}

// A part: its two lengths, its headers (content type first), its data.
inline Octets part(const Octets &headers, const Octets &data = {}) {
    return uintvar(headers.size()) + uintvar(data.size()) + headers + data;
}

// A body of that many parts.
inline Octets body(size_t count, const Octets &parts) { return uintvar(count) + parts; }

} // namespace test
