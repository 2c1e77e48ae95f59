#include <algorithm>
#include <thread>

#include <gtest/gtest.h>

#include "decoder/render.hpp"
#include "encoder/messages.hpp"
#include "support/passes.hpp"

namespace {

using namespace test;

std::multiset<std::string> as_set(const MMSLib_Message *message) {
    return pieces(shown(message->pContainer));
}

// Size pass, write pass and every buffer that is too small agree.
void check_passes(const MMSLib_Message *message, const Octets &pdu) {
    uint32_t size = 0;
    ASSERT_EQ(1U, MMS_Encoder_GetEncodedMessageSize(message, &size, 0));
    ASSERT_EQ(pdu.size(), size);
    const uint32_t step = std::max<uint32_t>(1, size / 500);
    for (uint32_t room = 0; room < size; room += step) {
        const uint32_t space = room + step < size ? room : size - 1;
        const auto buffer = std::make_unique<uint8_t[]>(space);
        uint32_t written = 77;
        ASSERT_EQ(2U, MMS_Encoder_Encode(message, buffer.get(), space, &written, 0)) << space;
        ASSERT_EQ(0U, written);
    }
}

TEST(Encode, OneMessageOfEveryType) {
    for (const Example &example : examples()) {
        SCOPED_TRACE(example.name);
        const MessagePtr built = example.build();
        const Octets pdu = encode(built.get());
        EXPECT_EQ(example.expected, pdu);
        check_passes(built.get(), pdu);

        const Decoded decoded = decode(pdu);
        ASSERT_EQ(1U, decoded.status);
        const Octets again = encode(decoded.message.get());
        EXPECT_EQ(example.again, again);
        EXPECT_EQ(again, encode(decode(again).message.get()));
    }
}

TEST(Encode, EverythingComesBack) {
    const MessagePtr built = everything();
    const Octets pdu = encode(built.get(), 1);
    EXPECT_EQ(pdu.size(), MMSLib_GetSize(built.get()));
    check_passes(built.get(), pdu);
    const Decoded decoded = decode(pdu);
    ASSERT_EQ(1U, decoded.status);
    EXPECT_EQ(as_set(built.get()), as_set(decoded.message.get()));
    EXPECT_EQ(pdu, encode(decoded.message.get(), 1));
}

TEST(Encode, SamplesAreStable) {
    struct {
        const char *name;
        bool same; // encoding gives the very octets of the sample
    } const samples[] = {
        {"send-req-mixed-jpeg.mms", false}, // its sender visibility is a default that is written
        {"send-req-related-ucs2.mms", false}, {"read-rec-ind.mms", true},
        {"delivery-ind.mms", true},           {"notification-ind.mms", false},
        {"retrieve-conf-nested.mms", false},
    };
    for (const auto &sample : samples) {
        SCOPED_TRACE(sample.name);
        const Octets original = read_sample(sample.name);
        const Decoded first = decode(original);
        ASSERT_EQ(1U, first.status);
        const Octets pdu = encode(first.message.get(), 1);
        EXPECT_EQ(sample.same, pdu == original);
        check_passes(first.message.get(), pdu);
        const Decoded second = decode(pdu);
        ASSERT_EQ(1U, second.status);
        EXPECT_EQ(as_set(first.message.get()), as_set(second.message.get()));
        EXPECT_EQ(pdu, encode(second.message.get(), 1));
    }
}

// The exported steps, called on their own, size what they write.
TEST(Encode, StepsAgreeWithThemselves) {
    const MessagePtr message = everything();
    const MMS_Container *container = message->pContainer;
    const MMS_Entity *header_entity = MMS_GetEntity(container, 0);
    const MMS_Entity *part = MMS_GetEntity(container, 1);
    const auto *to = static_cast<const MMS_Group *>(MMS_FindField(header_entity, "To")->pValue);
    using Step = std::function<uint32_t(uint8_t *, uint32_t, uint8_t, uint32_t *)>;
    std::vector<Step> steps = {
        [&](uint8_t *p, uint32_t n, uint8_t s, uint32_t *w) {
            return EncodeMmsHeaders(message.get(), p, n, s, w, 1);
        },
        [&](uint8_t *p, uint32_t n, uint8_t s, uint32_t *w) {
            return MMSEncodeGroup(p, s, n, w, 23, to);
        },
        [&](uint8_t *p, uint32_t n, uint8_t s, uint32_t *w) {
            return EncodeMultipart(container, 1, p, n, s, w);
        },
        [&](uint8_t *p, uint32_t n, uint8_t s, uint32_t *w) {
            return EncodeMultipartContents(MMS_GetContainer(container), p, n, s, w, 0);
        },
        [&](uint8_t *p, uint32_t n, uint8_t s, uint32_t *w) {
            return EncodeEntity(part, p, n, s, w, 0);
        },
        [&](uint8_t *p, uint32_t n, uint8_t s, uint32_t *w) {
            return EncodeEntity(part, p, n, s, w, 1);
        },
        [&](uint8_t *p, uint32_t n, uint8_t s, uint32_t *w) {
            return EncodeEntityHeaders(part, p, n, s, 128, w, 0);
        },
        [&](uint8_t *p, uint32_t n, uint8_t s, uint32_t *w) {
            return EncodeEntityBody(part, p, n, s, w);
        },
    };
    for (const MMS_Entity *entity : {header_entity, part}) {
        for (uint32_t i = 0; i < MMS_LinkedList_GetFieldCount(entity->pFieldList); ++i) {
            const MMS_Field *field = MMS_LinkedList_FindFieldByPos(entity->pFieldList, i);
            steps.push_back([=](uint8_t *p, uint32_t n, uint8_t s, uint32_t *w) {
                return EncodeHeader(field, p, n, s, entity == part ? 1 : 0, w);
            });
        }
    }
    for (size_t i = 0; i < steps.size(); ++i) {
        SCOPED_TRACE(i);
        const auto step = [&](uint8_t *place, uint32_t room, uint32_t *count, uint8_t size_only) {
            return steps[i](place, room, size_only, count);
        };
        EXPECT_EQ(1U, written(step).status);
    }
}

// Working out a nested length once per level above it would never end here.
TEST(Encode, DeepNestingIsLinear) {
    MessagePtr message = new_message(0x84);
    MMSLib_SetContentType(message->pContainer, new_type("multipart/mixed"));
    MMS_Container *container = message->pContainer;
    for (int level = 0; level < 250; ++level) {
        add_part(container, "text/plain", "leaf");
        container = add_multipart(container, "multipart/mixed");
    }
    const Octets pdu = encode(message.get(), 1);
    check_passes(message.get(), pdu);
    const Decoded decoded = decode(pdu);
    // The innermost container is empty, which on the wire is no body at all, so nothing says how
    // many parts it has.
    EXPECT_EQ(3U, decoded.status);
    add_part(container, "text/plain", std::string(70000, 'x')); // lengths of three octets
    const Octets whole = encode(message.get(), 1);
    const Decoded again = decode(whole);
    EXPECT_EQ(1U, again.status);
    EXPECT_NE(std::string::npos, shown(again.message->pContainer).find("#70000#"));
    const Octets read = encode(again.message.get(), 1);
    EXPECT_EQ(read, encode(decode(read).message.get(), 1));
}

TEST(Encode, FourThreads) {
    const MessagePtr shared = everything();
    const Octets expected = encode(shared.get());
    std::vector<std::thread> threads;
    std::vector<Octets> results(8);
    for (size_t i = 0; i < 4; ++i) {
        threads.emplace_back([&, i] { results[i] = encode(shared.get()); });
        threads.emplace_back([&, i] { results[4 + i] = encode(decode(expected).message.get()); });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    for (const Octets &result : results) {
        EXPECT_EQ(expected, result);
    }
}

} // namespace
