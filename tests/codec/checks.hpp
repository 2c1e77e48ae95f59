// What every codec has to keep to.
#pragma once

#include "support/render.hpp"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace test {

// --- octets --------------------------------------------------------------------------------------

inline Octets uintvar(size_t number) {
    Octets octets = {static_cast<uint8_t>(number & 0x7F)};
    while ((number >>= 7) != 0) {
        octets.insert(octets.begin(), static_cast<uint8_t>(0x80 | (number & 0x7F)));
    }
    return octets;
}

// The value with its length in front.
inline Octets sized(const Octets &value) {
    const auto size = static_cast<uint8_t>(value.size());
    return (value.size() <= 30 ? Octets{size} : Octets{0x1F} + uintvar(value.size())) + value;
}

// --- decoders ------------------------------------------------------------------------------------

struct Answer {
    uint32_t status;
    uint32_t count;
    std::string value; // empty when there is none
};

using DecodeCall = std::function<Answer(const uint8_t *, uint32_t)>;

constexpr uint32_t all_of_it = UINT32_MAX;

struct DecodeRow {
    Octets input;
    uint32_t status;
    std::string value;
    uint32_t count;
};

// The octets, or as many of them as given, are that value.
inline DecodeRow ok(std::string value, Octets input, uint32_t count = all_of_it) {
    return {std::move(input), MMS_STATUS_OK, std::move(value), count};
}

inline DecodeRow bad(uint32_t status, Octets input) { return {std::move(input), status, "", 0}; }

inline Answer run_on(const DecodeCall &run, const Octets &input) {
    return run(exact(input).get(), static_cast<uint32_t>(input.size()));
}

// Runs the decoder over every row. A value must also decode with octets behind it, and must fail
// with one of the given statuses when it ends too early, wherever that is.
inline void check_decoder(const DecodeCall &run, const std::vector<DecodeRow> &rows,
                          const std::vector<uint32_t> &when_cut = {MMS_STATUS_NO_ROOM}) {
    for (const DecodeRow &row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.input));
        const bool ok = row.status == MMS_STATUS_OK;
        const auto size = static_cast<uint32_t>(row.input.size());
        const uint32_t count = ok ? std::min(row.count, size) : 0;
        const auto expect = [&](const Octets &input) {
            const Answer answer = run_on(run, input);
            EXPECT_EQ(answer.status, row.status);
            EXPECT_EQ(answer.count, count);
            EXPECT_EQ(answer.value, row.value);
        };
        expect(row.input);
        if (!ok) {
            continue;
        }
        expect(row.input + Octets{0xFF, 0x81, 0x00});
        for (uint32_t cut = 0; cut < count; ++cut) {
            SCOPED_TRACE(cut);
            const Answer answer = run_on(run, Octets(row.input.begin(), row.input.begin() + cut));
            EXPECT_NE(std::find(when_cut.begin(), when_cut.end(), answer.status), when_cut.end())
                << "status " << answer.status;
            EXPECT_EQ(answer.count, 0U);
            EXPECT_EQ(answer.value, "");
        }
    }
}

// Record decoders of the MMS family: null and 0 after a failure.
template <typename Ptr>
DecodeCall record(uint8_t (*decode)(const uint8_t *, uint32_t, uint32_t *,
                                    typename Ptr::pointer *)) {
    return [decode](const uint8_t *input, uint32_t length) {
        typename Ptr::element_type stale{};
        typename Ptr::pointer result = &stale;
        uint32_t count = 77;
        const uint32_t status = decode(input, length, &count, &result);
        const Ptr owned(result);
        EXPECT_EQ(owned != nullptr, status == MMS_STATUS_OK);
        return Answer{status, count, owned != nullptr ? shown(owned.get()) : ""};
    };
}

// --- encoders ------------------------------------------------------------------------------------

using EncodeCall =
    std::function<uint32_t(uint8_t *output, uint32_t room, uint32_t *count, uint8_t size_only)>;

// The encoder writes exactly these octets, says so beforehand, and fails in any smaller space.
inline void expect_written(const Octets &expected, const EncodeCall &encode) {
    const auto size = static_cast<uint32_t>(expected.size());
    uint32_t count = 77;
    EXPECT_EQ(encode(nullptr, 0, &count, 1), MMS_STATUS_OK);
    EXPECT_EQ(count, size) << "size only";
    for (uint32_t room = 0; room <= size; ++room) {
        SCOPED_TRACE(room);
        const auto output = exact(Octets(room));
        count = 77;
        const uint32_t status = encode(output.get(), room, &count, 0);
        EXPECT_EQ(status, room < size ? MMS_STATUS_NO_ROOM : MMS_STATUS_OK);
        EXPECT_EQ(count, room < size ? 0 : size);
        if (room == size) {
            EXPECT_EQ(Octets(output.get(), output.get() + size), expected);
        }
    }
}

inline void expect_refused(uint32_t status, const EncodeCall &encode) {
    Octets output(4096);
    uint32_t count = 77;
    EXPECT_EQ(encode(output.data(), 4096, &count, 0), status);
    EXPECT_EQ(count, 0U);
    count = 77;
    EXPECT_EQ(encode(nullptr, 0, &count, 1), status) << "size only";
    EXPECT_EQ(count, 0U);
}

struct EncodeRow {
    uint32_t status;
    Octets expected;
    EncodeCall encode;
};

inline EncodeRow writes(Octets expected, EncodeCall encode) {
    return {MMS_STATUS_OK, std::move(expected), std::move(encode)};
}

inline EncodeRow refuses(uint32_t status, EncodeCall encode) {
    return {status, {}, std::move(encode)};
}

inline void check_encoder(const std::vector<EncodeRow> &rows) {
    for (size_t i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE("row " + std::to_string(i));
        if (rows[i].status == MMS_STATUS_OK) {
            expect_written(rows[i].expected, rows[i].encode);
        } else {
            expect_refused(rows[i].status, rows[i].encode);
        }
    }
}

} // namespace test
