// The libraries that are measured side by side, each with one message in its own form.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "content.hpp"

namespace bench {

class Side {
public:
    Side() = default;
    Side(const Side &) = delete;
    Side &operator=(const Side &) = delete;
    virtual ~Side() = default;

    // What decoding its octets gives.
    [[nodiscard]] virtual Content content() const = 0;
    // Decodes and releases.
    virtual void decode() const = 0;
    // Encodes into a fresh block and releases that.
    virtual void encode() const = 0;
};

using MakeSide = std::unique_ptr<Side> (*)(const Content &content);

struct SideEntry {
    std::string name;
    MakeSide make;
};

// The other libraries that this build has.
std::vector<SideEntry> &other_sides();

// Defined at namespace scope, adds a library.
struct AddSide {
    AddSide(const char *name, MakeSide make) { other_sides().push_back({name, make}); }
};

} // namespace bench
