#include "decoder/render.hpp"
#include "support/wire.hpp"

namespace {

using namespace test;

// Decodes a header block; whatever happens, its entity is the container's only one.
void expect_block(const Octets &pdu, uint32_t status, const std::string &fields,
                  size_t remaining = 0) {
    SCOPED_TRACE(testing::PrintToString(pdu));
    const Session session(pdu);
    EXPECT_EQ(DecodeMmsHeaders(session.decoder.get()), status);
    EXPECT_EQ(shown(session.message->pContainer), "(" + fields + ")");
    EXPECT_EQ(session.decoder->keep, fields.empty() ? 0 : 1);
    EXPECT_TRUE(status != MMS_STATUS_OK || session.decoder->remaining == remaining);
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
        {{9}, {dropped, dropped, ""}}, // an empty address
    };
    const Octets values[3] = {{0x81}, text("12"), {2, 0x80, 0}};
    for (uint8_t code = 0; code < 128; ++code) {
        const auto *row = std::find_if(std::begin(rows), std::end(rows), [&](const Row &r) {
            return std::find(r.codes.begin(), r.codes.end(), code) != r.codes.end();
        });
        for (size_t form = 0; form < 3; ++form) {
            // Codes without a codec are passed over.
            const char *stored = row != std::end(rows) ? row->stored[form] : dropped;
            const Octets block =
                Octets{static_cast<uint8_t>(0x80 | code)} + values[form] + Octets{0x8D, 0x92};
            std::string fields = "X-Mms-Mms-Version=18";
            if (stored != nullptr && (*stored != 0 || (code == 9 && form == 2))) {
                const char *name = MMS_SearchMapForString(MMS_HEADER_MAP, code);
                // Content-Type ends the block.
                const std::string field = shown(name) + "=" + stored;
                fields = code == 4 ? field : field + ", " + fields;
            }
            expect_block(block, stored == fatal ? 3 : 1, stored == fatal ? "" : fields,
                         code == 4 ? 2 : 0);
        }
    }
    expect_block({0x99, 0xE3}, 1, "X-Mms-Retrieve-Status=227");
}

TEST(MmsHeaders, DropsAndFailures) {
    expect_block({}, 2, "");
    // Passed over: codes without a codec, headers that are given by name; senders to be inserted,
    // of no address, of an unclosed address, of no form.
    for (const Octets &header :
         {"B003010203"_wire, "FF1F28"_wire + Octets(40), "9A'text'"_wire, "'X-Foo''bar'"_wire,
          "'X-Foo'85"_wire, "'X-Foo'038C8000"_wire, "'X-Mms-Priority'80"_wire, "7FE900'x'"_wire,
          "890181"_wire, "8900"_wire, "890680'<abc'"_wire, "890381'a'"_wire,
          Octets{0x89} + sized(Octets{0x80} + text(std::string(321, '1')))}) {
        expect_block(header + Octets{0x8C, 0x82}, 1, "X-Mms-Message-Type=130");
    }
    // What comes before a failure stays. Values that end too early, or with the next header; names
    // of no form, values that cannot be measured; values that do not fill their field.
    for (const DecodeRow &row : {bad(2, {0x98, 'a'}),
                                 bad(2, "B0050102"_wire),
                                 bad(2, {'X', 'a'}),
                                 bad(2, "'X'050102"_wire),
                                 bad(2, "890180"_wire),
                                 bad(2, {0x89, 3, 0x80, 'a', 'b'}),
                                 bad(2, "84098381"_wire),
                                 bad(2, "891F8FFFFFFF7F80'a'"_wire),
                                 bad(6, {0x01, 'a', 0}),
                                 bad(6, {0x1F, 'a', 0}),
                                 bad(6, "B01F9080808000"_wire),
                                 bad(6, "981F9080808000"_wire),
                                 bad(6, "891F9080808000"_wire),
                                 bad(6, "'X'1F9080808000"_wire),
                                 bad(3, "890480'a'00"_wire),
                                 bad(3, "9705EA'a'0000"_wire),
                                 bad(3, "97'<abc'"_wire),
                                 bad(3, Octets{0x97} + text(std::string(321, '1'))),
                                 bad(3, {0x8F, 0x85}),
                                 bad(3, "880481010500"_wire),
                                 bad(3, "85050000000001"_wire),
                                 bad(3, {0x8A, 0x84}),
                                 bad(3, "9604EA|Hix|"_wire),
                                 bad(3, "84028381"_wire),
                                 bad(3, "84011F"_wire)}) {
        expect_block(Octets{0x8C, 0x82} + row.input + Octets{0x8D, 0x92}, row.status,
                     "X-Mms-Message-Type=130");
    }
}

TEST(MmsHeaders, RepeatedAndDefaults) {
    expect_block("96'one' 8C82 9605EA'two'"_wire, 1, "Subject=two{UTF-8}, X-Mms-Message-Type=130");
    expect_block("8F80 8F82 98'a' 98'b'"_wire, 1, "X-Mms-Priority=130, X-Mms-Transaction-Id=b");
    expect_block("97'a' 82'b' 97'Cy <c>' 890380'd' 81'e' 890380'f'"_wire, 1,
                 "To=a & Cy|c, Cc=b, From=d & f, Bcc=e");
    expect_block({0x84, 0x83, 0x84, 0x9E}, 1, "Content-Type=text/plain", 2);
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
    expect_block("8F82 8A83 8C80 9481"_wire, 1,
                 "X-Mms-Priority=130, X-Mms-Message-Class=Auto, X-Mms-Message-Type=128, "
                 "X-Mms-Sender-Visibility=129");
    expect_block({0x8C, 0x80, 0x98, 'a'}, 2, type + "128"); // not after a failure
}

TEST(Driver, WholePdus) {
    const std::string type = "(X-Mms-Message-Type=130";
    const std::pair<Octets, std::string> rows[] = {
        {{}, "3 no message"},
        {"8C"_wire, "3 no message"},
        {"8D80"_wire, "1 no message"}, // understood, with nothing to keep
        {"8C828D"_wire, "3 " + type + ")"},
        {"8C8284838C80"_wire, "1 " + type + ", Content-Type=text/plain #\x8C\x80#)"},
        {"84'multi/x'01"_wire, "1 (Content-Type=multi/x #\x01#)"},
        {"84A301 010183|a| 00"_wire,
         "3 (Content-Type=multipart/mixed)(Content-Type=text/plain #a#)"},
        {"84'MultiPart/x'02 010183|a| 01019E|b|"_wire,
         "1 (Content-Type=MultiPart/x)(Content-Type=text/plain #a#)(Content-Type=image/jpeg #b#)"},
    };
    for (const auto &[pdu, expected] : rows) {
        EXPECT_EQ(shown(decode(pdu)), expected) << testing::PrintToString(pdu);
    }
}

TEST(Driver, SessionAndMessage) {
    const Octets pdu = {0x8C, 0x82, 0x89, 0x40};
    MMSLib_Message stale{};
    MMSLib_Message *message = &stale;
    EXPECT_EQ(MMSLib_DecodeMessage(nullptr, 4, &message), MMS_STATUS_MALFORMED);
    EXPECT_EQ(message, nullptr);
    EXPECT_EQ(MMSLib_DecodeMessage(pdu.data(), 4, &message), MMS_STATUS_MALFORMED);
    const MessagePtr owned(message);
    ASSERT_NE(message, nullptr);
    EXPECT_TRUE(message->pPdu == pdu.data() && message->pduLength == 4 && message->isDecoded == 1);

    MMS_Decoder session{};
    session.keep = 1; // of an earlier use
    EXPECT_EQ(MMS_Decoder_Decode(&session, pdu.data(), 1, &message), MMS_STATUS_MALFORMED);
    EXPECT_EQ(message, nullptr);
    EXPECT_EQ(MMS_Decoder_Decode(&session, pdu.data(), 2, &message), MMS_STATUS_OK);
    EXPECT_EQ(MessagePtr(message)->isDecoded, 0);
    session.remaining = 2;
    AdvanceCursor(&session, 3);
    EXPECT_EQ(session.pCursor, pdu.data() + 2) << "it stays where what is asked for is not there";
    EXPECT_EQ(session.remaining, 0U);
}

} // namespace
