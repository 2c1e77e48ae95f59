#include "decoder/render.hpp"

namespace {

using namespace test;

TEST(Session, StartsEmptyAndAdvances) {
    const DecoderPtr fresh(MMS_Decoder_Create());
    const MMS_Decoder &d = *fresh;
    EXPECT_TRUE(d.pCursor == nullptr && d.pMessage == nullptr && d.remaining == 0);
    EXPECT_EQ(d.fromCount + d.recipientCount + d.entityCount + d.keep + d.skipped + d.depth, 0);
    MMS_Decoder_Destroy(nullptr);

    const Session session(Octets(3));
    MMS_Decoder *decoder = session.decoder.get();
    AdvanceCursor(decoder, 1);
    EXPECT_EQ(decoder->pCursor, session.octets.get() + 1);
    EXPECT_EQ(decoder->remaining, 2U);
    AdvanceCursor(decoder, 3);
    EXPECT_EQ(decoder->pCursor, session.octets.get() + 1);
    EXPECT_EQ(decoder->remaining, 0U);
    decoder->remaining = 2;
    AdvanceCursor(decoder, 2);
    EXPECT_EQ(decoder->pCursor, session.octets.get() + 3);
    EXPECT_EQ(decoder->remaining, 0U);
}

// Decodes a header block; whatever happens, its entity is the container's only one.
void expect_block(const Octets &pdu, uint32_t status, const std::string &fields,
                  size_t remaining = 0) {
    SCOPED_TRACE(testing::PrintToString(pdu));
    const Session session(pdu);
    EXPECT_EQ(DecodeMmsHeaders(session.decoder.get()), status);
    EXPECT_EQ(shown(session.message->pContainer), "(" + fields + ")");
    EXPECT_EQ(session.decoder->keep, fields.empty() ? 0 : 1);
    if (status == MMS_STATUS_OK) {
        EXPECT_EQ(session.decoder->remaining, remaining);
    }
}

// Every header code with a Short-integer, a text, and a value with a length.
TEST(MmsHeaders, EveryCode) {
    constexpr const char *fatal = nullptr; // the value does not fill its field: status 3
    constexpr const char *dropped = "";
    struct Row {
        std::vector<int> codes;
        const char *stored[3]; // of 0x81, of "12", of {2, 0x80, 0}
    };
    const Row rows[] = {
        {{3, 11, 24, 55, 56}, {fatal, "12", fatal}},                  // texts
        {{6, 12, 15, 16, 18, 20, 21, 27, 59}, {"129", fatal, fatal}}, // octets
        {{25}, {fatal, fatal, fatal}},                                // of other octets
        {{1, 2, 19, 22, 23}, {fatal, "12", "{UNKNOWN}"}},             // encoded strings
        {{7, 8}, {fatal, fatal, "128:0"}},
        {{5}, {fatal, fatal, "32768"}},
        {{14}, {fatal, "12", "32768"}},
        {{10}, {"Advertisement", "12", fatal}},
        {{13}, {dropped, fatal, fatal}},
        {{4}, {"text/*", fatal, fatal}},
    };
    const Octets values[3] = {{0x81}, text("12"), {2, 0x80, 0}};
    for (uint8_t code = 0; code < 128; ++code) {
        const auto *row = std::find_if(std::begin(rows), std::end(rows), [&](const Row &r) {
            return std::find(r.codes.begin(), r.codes.end(), code) != r.codes.end();
        });
        for (size_t form = 0; form < 3; ++form) {
            // Codes without a codec, and From (below), are passed over.
            const char *stored = row != std::end(rows) ? row->stored[form] : dropped;
            const Octets one = Octets{static_cast<uint8_t>(0x80 | code)} + values[form];
            const std::string next = code == 4 ? "" : "X-Mms-Mms-Version=18"; // 4 ends the block
            if (code == 9 && form == 2) {
                expect_block(one, 1, "From="); // an empty address
            } else if (stored == fatal) {
                expect_block(one + Octets{0x8D, 0x92}, 3, "");
            } else {
                const std::string name = shown(MMS_SearchMapForString(MMS_HEADER_MAP, code));
                const std::string field = *stored != 0 ? name + "=" + stored : "";
                expect_block(one + Octets{0x8D, 0x92}, 1,
                             field + (field.empty() || next.empty() ? "" : ", ") + next,
                             code == 4 ? 2 : 0);
            }
        }
    }
    expect_block({0x99, 0xE3}, 1, "X-Mms-Retrieve-Status=227");
}

TEST(MmsHeaders, DropsAndFailures) {
    const Octets type = {0x8C, 0x82};
    const std::string stored = "X-Mms-Message-Type=130";
    const auto dropped = [&](const std::vector<Octets> &headers) {
        for (const Octets &header : headers) {
            expect_block(header + type, 1, stored);
        }
    };
    const auto fail = [&](const std::vector<DecodeRow> &rows) {
        for (const DecodeRow &row : rows) {
            expect_block(type + row.input + Octets{0x8D, 0x92}, row.status, stored);
        }
    };
    expect_block({}, 2, "");
    // Passed over: codes without a codec, headers that are given by name.
    dropped({Octets{0xB0, 3, 1, 2, 3}, Octets{0xFF, 0x1F, 40} + Octets(40),
             Octets{0x9A} + text("retrieve text"), text("X-Foo") + text("bar"),
             text("X-Foo") + Octets{0x85}, text("X-Foo") + Octets{3, 0x8C, 0x80, 0},
             text("X-Mms-Priority") + Octets{0x80}, text("\x7F\xE9") + text("x"),
             text("") + text("")});
    // Dropped: senders to be inserted, of no address, of an unclosed address, of no form.
    dropped({Octets{0x89, 1, 0x81}, Octets{0x89, 0}, Octets{0x89, 6, 0x80, '<', 'a', 'b', 'c', 0},
             Octets{0x89, 3, 0x81, 'a', 0},
             Octets{0x89} + sized(Octets{0x80} + text(std::string(321, '1')))});
    // What comes before a failure stays. Values that end too early, or with the next header:
    fail({bad(2, {0x98, 'a'}), bad(2, {0xB0, 5, 1, 2}), bad(2, {'X', 'a'}),
          bad(2, text("X-Foo") + Octets{5, 1, 2}), bad(2, {0x89, 1, 0x80}),
          bad(2, {0x89, 3, 0x80, 'a', 'b'}), bad(2, {0x84, 9, 0x83, 0x81}),
          bad(2, {0x89, 0x1F, 0x8F, 0xFF, 0xFF, 0xFF, 0x7F, 0x80, 'a', 0})});
    // Names of no form, values that cannot be measured.
    const Octets malformed = {0x1F, 0x90, 0x80, 0x80, 0x80, 0};
    fail({bad(6, {0x01, 'a', 0}), bad(6, {0x1F, 'a', 0}), bad(6, Octets{0xB0} + malformed),
          bad(6, Octets{0x98} + malformed), bad(6, Octets{0x89} + malformed),
          bad(6, text("X-Foo") + malformed)});
    // Values that do not fill their field: an octet too many, or nothing that can be read.
    fail({bad(3, {0x89, 4, 0x80, 'a', 0, 0}), bad(3, {0x97, 5, 0xEA, 'a', 0, 0, 0}),
          bad(3, Octets{0x97} + text("<abc")), bad(3, Octets{0x97} + text(std::string(321, '1'))),
          bad(3, {0x8F, 0x85}), bad(3, {0x88, 4, 0x81, 1, 5, 0}), bad(3, {0x87, 2, 0x81, 0x85}),
          bad(3, {0x85, 5, 0, 0, 0, 0, 1}), bad(3, {0x8A, 0x84}),
          bad(3, {0x96, 4, 0xEA, 'H', 'i', 'x'}), bad(3, {0x84, 2, 0x83, 0x81}),
          bad(3, {0x84, 1, 0x1F})});
}

TEST(MmsHeaders, Repeated) {
    expect_block(Octets{0x96} + text("one") + Octets{0x8C, 0x82, 0x96} +
                     sized(Octets{0xEA} + text("two")),
                 1, "Subject=two{UTF-8}, X-Mms-Message-Type=130");
    expect_block(Octets{0x8F, 0x80, 0x8F, 0x82, 0x98} + text("a") + Octets{0x98} + text("b"), 1,
                 "X-Mms-Priority=130, X-Mms-Transaction-Id=b");
    expect_block(Octets{0x97} + text("a") + Octets{0x82} + text("b") + Octets{0x97} +
                     text("Cy <c>") + Octets{0x89, 3, 0x80, 'd', 0, 0x81} + text("e") +
                     Octets{0x89, 3, 0x80, 'f', 0},
                 1, "To=a & Cy|c, Cc=b, From=d & f, Bcc=e");
    // A display name alone, when the address is too long.
    expect_block(Octets{0x97} + text("Bob <" + std::string(321, '1') + ">"), 1, "To=Bob|(null)");
    expect_block({0x84, 0x83, 0x84, 0x9E}, 1, "Content-Type=text/plain", 2);
}

TEST(MmsHeaders, Defaults) {
    const std::string type = "X-Mms-Message-Type=";
    for (uint8_t number = 0x80; number <= 0x93; ++number) {
        std::string all = type + std::to_string(number);
        all += number == 0x80 ? ", X-Mms-Message-Class=Personal, X-Mms-Sender-Visibility=128, "
                                "X-Mms-Priority=129"
                              : "";
        all += number == 0x84 ? ", X-Mms-Message-Class=Personal, X-Mms-Delivery-Report=129, "
                                "X-Mms-Priority=129, X-Mms-Read-Report=129"
                              : "";
        expect_block({0x8C, number}, 1, all);
    }
    expect_block({0x8F, 0x82, 0x8A, 0x83, 0x8C, 0x80, 0x94, 0x81}, 1,
                 "X-Mms-Priority=130, X-Mms-Message-Class=Auto, X-Mms-Message-Type=128, "
                 "X-Mms-Sender-Visibility=129");
    expect_block({0x8C, 0x84, 0x90, 0x80, 0x84, 0x83}, 1,
                 "X-Mms-Message-Type=132, X-Mms-Read-Report=128, Content-Type=text/plain, "
                 "X-Mms-Message-Class=Personal, X-Mms-Delivery-Report=129, X-Mms-Priority=129");
    expect_block({0x8C, 0x80, 0x98, 'a'}, 2, type + "128"); // not after a failure
    expect_block({0x8D, 0x92}, 1, "X-Mms-Mms-Version=18");
}

TEST(Driver, WholePdus) {
    const std::string type = "(X-Mms-Message-Type=130";
    const std::pair<Octets, std::string> rows[] = {
        {{0x8C}, "3 no message"},
        {{0x8D, 0x80}, "1 no message"}, // understood, with nothing to keep
        {{0x8F, 0x85}, "3 no message"},
        {{0x8C, 0x82}, "1 " + type + ")"},
        {{0x8C, 0x82, 0x8D}, "3 " + type + ")"},
        {{0x8C, 0x82, 0x41}, "3 " + type + ")"},
        {{0x8C, 0x82, 0x89, 0x40}, "3 " + type + ")"},
        {{0x8C, 0x82, 0x89, 0x02, 0x80, 0x00}, "1 " + type + ", From=)"},
        {{0x8C, 0x82, 0x84, 0x83}, "1 " + type + ", Content-Type=text/plain)"},
        {{0x8C, 0x82, 0x84, 0x83, 0x8C, 0x80},
         "1 " + type + ", Content-Type=text/plain #\x8C\x80#)"},
        {{0x8C, 0x82, 0x84, 'a', 0, 'x'}, "3 " + type + ")"},
        // "multipart" without "/" is no content type, and one that only starts so is no multipart.
        {Octets{0x84} + text("multi/x") + Octets{0x01}, "1 (Content-Type=multi/x #\x01#)"},
        {{0x84, 0xA3, 0x00}, "1 (Content-Type=multipart/mixed)"},
        {{0x84, 0xA3}, "3 (Content-Type=multipart/mixed)"},
        {{0x84, 0xA3, 0x00, 0x00}, "3 (Content-Type=multipart/mixed)"},
        {Octets{0x84, 0xA3} + body(1, part({0x83}, {'a'})) + Octets{0},
         "3 (Content-Type=multipart/mixed)(Content-Type=text/plain #a#)"},
        {Octets{0x84} + text("MultiPart/x") + body(2, part({0x83}, {'a'}) + part({0x9E}, {'b'})),
         "1 (Content-Type=MultiPart/x)(Content-Type=text/plain #a#)(Content-Type=image/jpeg #b#)"},
    };
    for (const auto &[pdu, expected] : rows) {
        EXPECT_EQ(shown(decode(pdu)), expected) << testing::PrintToString(pdu);
    }
}

TEST(Driver, Message) {
    const Octets pdu = {0x8C, 0x82, 0x89, 0x40};
    MMSLib_Message stale{};
    MMSLib_Message *message = &stale;
    EXPECT_EQ(MMSLib_DecodeMessage(nullptr, 4, &message), MMS_STATUS_MALFORMED);
    EXPECT_EQ(message, nullptr);
    message = &stale;
    EXPECT_EQ(MMSLib_DecodeMessage(pdu.data(), 0, &message), MMS_STATUS_MALFORMED);
    EXPECT_EQ(message, nullptr);
    EXPECT_EQ(MMSLib_DecodeMessage(pdu.data(), 4, &message), MMS_STATUS_MALFORMED);
    const MessagePtr owned(message);
    ASSERT_NE(message, nullptr);
    EXPECT_EQ(message->pPdu, pdu.data());
    EXPECT_EQ(message->pduLength, 4U);
    EXPECT_EQ(message->isDecoded, 1);

    const DecoderPtr decoder(MMS_Decoder_Create());
    decoder->keep = 1; // of an earlier use
    message = &stale;
    EXPECT_EQ(MMS_Decoder_Decode(decoder.get(), pdu.data(), 1, &message), MMS_STATUS_MALFORMED);
    EXPECT_EQ(message, nullptr);
    EXPECT_EQ(MMS_Decoder_Decode(decoder.get(), pdu.data(), 2, &message), MMS_STATUS_OK);
    const MessagePtr direct(message);
    ASSERT_NE(message, nullptr);
    EXPECT_EQ(message->isDecoded, 0);
    EXPECT_EQ(message->pduLength, 2U);
    EXPECT_EQ(decoder->pCursor, pdu.data() + 2);
}

} // namespace
