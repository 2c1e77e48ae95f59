#include <algorithm>
#include <thread>

#include <gtest/gtest.h>

#include "decoder/render.hpp"
#include "encoder/messages.hpp"
#include "support/passes.hpp"

namespace {

using namespace test;

// Size pass, write pass and buffers that are too small agree.
void check_passes(const MMSLib_Message *message, const Octets &pdu) {
    uint32_t size = 0;
    ASSERT_EQ(1U, MMS_Encoder_GetEncodedMessageSize(message, &size, 0));
    ASSERT_EQ(pdu.size(), size);
    for (uint32_t left_out = 1; left_out <= size; left_out += 1 + size / 500) {
        const auto buffer = std::make_unique<uint8_t[]>(size - left_out);
        uint32_t written = 77;
        ASSERT_EQ(2U, MMS_Encoder_Encode(message, buffer.get(), size - left_out, &written, 0));
        ASSERT_EQ(0U, written);
    }
}

// The message of the PDU, encoded: those octets, which read and written again stay as they are.
void expect_encoded(const Octets &pdu, const Octets &expected) {
    const Decoded decoded = decode(pdu);
    ASSERT_EQ(1U, decoded.status);
    EXPECT_EQ(expected, encode(decoded.message.get()));
    check_passes(decoded.message.get(), expected);
    const Decoded again = decode(expected);
    EXPECT_EQ(expected, encode(again.message.get()));
    EXPECT_TRUE(pdu != expected || shown(decoded) == shown(again));
}

TEST(Encode, OneMessageOfEveryType) {
    const std::pair<Octets, Octets> rows[] = {
        {"8C80 98'T1' 8D92 97'a' 9604EA'Hi' 8A80 8F81 88068104FFFFFFFF 8703810100 8680 84 038381EA"
         "|hi|"_wire,
         "8C80 98'T1' 8D92 890181 97'a' 9604EA'Hi' 8680 9480 84 038381EA |hi|"_wire},
        {"8C80 98'T1' 8D92 890181 8703810105 880481020E10 8A83 9480"_wire, {}},
        {"92E2 93'no' 8B'id1' 98'T1' 8D92 8C81"_wire, "8C81 98'T1' 8D92 92E2 93'no' 8B'id1'"_wire},
        {"8C82 98'T1' 8D92 890A80'Anna <1>' 8A80 8F81 8E02012C 880481020E10 83'http://m/1'"_wire,
         {}},
        {"8C83 8D92 98'T1' 9581"_wire, "8C83 98'T1' 8D92 9581"_wire},
        {"8C84 98'T1' 8D92 850100 8A'x-class' 8F81 84 A3 02 0802 83 8E'a.txt' |hi|"
         "0114 A6 01 1100 'text/x-own' C022'<b>'"_wire,
         "8C84 98'T1' 8D92 850100 8A'x-class' 8F81 8681 9081 84 A3 02 0802 83 8E'a.txt' |hi|"
         "0114 A6 01 1100 'text/x-own' C022'<b>'"_wire},
        {"8C85 98'T1' 8D92"_wire, {}},
        {"8C86 98'T1' 8D92 9586 8B'id1' 9703EA'a' 85043B9ACA00"_wire,
         "8C86 8D92 8B'id1' 9586 9703EA'a' 85043B9ACA00"_wire},
        {"8C87 8D92 97'a' 8B'id1' 9B81"_wire, "8C87 8D92 8B'id1' 890181 97'a' 9B81"_wire},
        {"8C88 8D92 8B'id1' 97'a' 890780 050203E8'b' 8501FF 9B80"_wire, {}},
        {"8C89 98'T1' 8D92 82'a' 97'c' 82'B <b>' 8703800100 9081"_wire,
         "8C89 98'T1' 8D92 890181 82'a' 82'B <b>' 97'c' 8703800100 9081"_wire},
        {"8C8D 98'T1' 8D9F B7'a.b'"_wire, {}},
        {"8C8E 98'T1' 8D92 84 B3 00"_wire, {}},
        {"8C90 98'T1' 8D92 8B7FE900 99C2"_wire, {}},
        {"8C93 98'T1' 8D92 9481 BB80 81'a' 84 9E"_wire, {}},
    };
    for (const auto &[pdu, expected] : rows) {
        SCOPED_TRACE(testing::PrintToString(pdu));
        expect_encoded(pdu, expected.empty() ? pdu : expected);
    }
    expect_encoded(everything(), everything());
}

// The exported steps, called on their own, size what they write.
TEST(Encode, StepsAgreeWithThemselves) {
    const MessagePtr message = decode(everything()).message;
    const MMS_Container *container = message->pContainer;
    const MMS_Entity *part = MMS_GetEntity(container, 1);
    const MMS_Group *to = MMSLib_GetTo(container);
    using Step = std::function<uint32_t(uint8_t *, uint32_t, uint8_t, uint32_t *)>;
    std::vector<Step> steps = {
        [&](auto... a) { return EncodeMmsHeaders(message.get(), a..., 1); },
        [&](auto... a) { return EncodeMultipart(container, 1, a...); },
        [&](auto... a) { return EncodeMultipartContents(MMS_GetContainer(container), a..., 0); },
        [&](auto... a) { return EncodeEntity(part, a..., 0); },
        [&](auto... a) { return EncodeEntity(part, a..., 1); },
        [&](auto... a) { return EncodeEntityBody(part, a...); },
        [&](uint8_t *p, uint32_t n, uint8_t s, uint32_t *w) {
            return EncodeEntityHeaders(part, p, n, s, 128, w, 0);
        },
        [&](uint8_t *p, uint32_t n, uint8_t s, uint32_t *w) {
            return MMSEncodeGroup(p, s, n, w, 23, to);
        },
    };
    for (const uint8_t in_part : {uint8_t{0}, uint8_t{1}}) {
        const MMS_FieldList *fields = MMS_GetEntity(container, in_part)->pFieldList;
        for (uint32_t i = 0; i < MMS_LinkedList_GetFieldCount(fields); ++i) {
            const MMS_Field *field = MMS_LinkedList_FindFieldByPos(fields, i);
            steps.emplace_back([=](uint8_t *p, uint32_t n, uint8_t s, uint32_t *w) {
                return EncodeHeader(field, p, n, s, in_part, w);
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
    check_passes(message.get(), encode(message.get(), 1));
    add_part(container, "text/plain", std::string(70000, 'x')); // lengths of three octets
    const Decoded decoded = decode(encode(message.get()));
    EXPECT_EQ(1U, decoded.status);
    EXPECT_NE(std::string::npos, shown(decoded).find("#70000#"));
    const Octets read = encode(decoded.message.get(), 1);
    EXPECT_EQ(read, encode(decode(read).message.get(), 1));
}

TEST(Encode, FourThreads) {
    const MessagePtr shared = decode(everything()).message;
    std::vector<std::thread> threads;
    std::vector<Octets> results(4);
    threads.reserve(results.size());
    for (Octets &result : results) {
        threads.emplace_back([&] {
            result = encode(shared.get());
            result = encode(decode(result).message.get());
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    for (const Octets &result : results) {
        EXPECT_EQ(everything(), result);
    }
}

} // namespace
