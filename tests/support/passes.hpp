// The runs of an encoder: for the size, into that space, into less.
#pragma once

#include "support/support.hpp"

namespace test {

struct Written {
    uint32_t status;
    Octets octets;
};

// What an encoder writes; `write` takes place, room, count and size only. The runs for the size and
// into spaces of the size and below it have to agree.
template <typename Write>
Written written(Write write) {
    uint32_t size = 77;
    uint32_t count = 78;
    const uint32_t status = write(nullptr, 0, &size, 1);
    if (status != MMS_STATUS_OK) {
        const Block plenty(Octets(1U << 16));
        require(status == MMS_STATUS_MISSING || status == MMS_STATUS_WRONG_FORM ||
                status == MMS_STATUS_OUT_OF_RANGE);
        require(size == 0);
        require(write(plenty.get(), plenty.size(), &count, 0) == status && count == 0);
        return {status, {}};
    }
    const Block exact(Octets(size, 0xAA));
    require(write(exact.get(), size, &count, 0) == MMS_STATUS_OK && count == size);
    for (uint32_t space = size; space != 0; space = space == size ? size / 2 : 0) {
        const Block small(Octets(space - 1));
        count = 78;
        require(write(small.get(), space - 1, &count, 0) == MMS_STATUS_NO_ROOM && count == 0);
    }
    return {status, exact.octets()};
}

} // namespace test
