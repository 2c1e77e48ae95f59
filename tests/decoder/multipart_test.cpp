#include "decoder/render.hpp"

namespace {

using namespace test;

const Octets malformed_length = {0x1F, 0x90, 0x80, 0x80, 0x80, 0x00};

void expect_body(const Octets &pdu, uint32_t status, const std::string &parts,
                 size_t remaining = 0) {
    SCOPED_TRACE(testing::PrintToString(pdu));
    const Session session(pdu);
    const ContainerPtr container(MMS_Container_Create());
    EXPECT_EQ(DecodeMultipart(session.decoder.get(), container.get()), status);
    EXPECT_EQ(shown(container.get()), parts);
    if (status == MMS_STATUS_OK) {
        EXPECT_EQ(session.decoder->remaining, remaining);
    }
    EXPECT_EQ(session.decoder->depth, 0);
    EXPECT_EQ(session.decoder->skipped, 0);
}

TEST(Multipart, Parts) {
    const Octets plain = part({0x83}, {'a', 'b'});
    const std::string decoded = "(Content-Type=text/plain #ab#)";
    expect_body({}, 2, "");
    expect_body({0}, 1, "");
    expect_body({0, 7, 7}, 1, "", 2);
    expect_body({0x81}, 2, "");
    expect_body({0x90, 0x80, 0x80, 0x80, 0x00}, 6, "");
    expect_body({1, 1, 3, 0x83, 'a', 'b', 'c'}, 1, "(Content-Type=text/plain #abc#)");
    expect_body(body(1, plain + Octets{9}), 1, decoded, 1);
    expect_body(body(2, plain + part({0x9E})), 1, decoded + "(Content-Type=image/jpeg)");
    expect_body(body(1, part(sized(Octets{0x83, 0x81, 0xEA}) + Octets{0x8E} + text("x"), {'a'})), 1,
                "(Content-Type=text/plain;Charset=UTF-8, Content-Location=x #a#)");
    expect_body(body(1, part(text("a/b"))), 1, "(Content-Type=a/b)");
    // Data that the PDU does not hold: the part stays, with what is there.
    expect_body({1, 1, 9, 0x83, 'a'}, 1, "(Content-Type=text/plain #a#)");
    expect_body({1, 1, 9, 0x83}, 1, "(Content-Type=text/plain)");
    expect_body({1, 1, 0x8F, 0xFF, 0xFF, 0xFF, 0x7F, 0x83, 'a'}, 1,
                "(Content-Type=text/plain #a#)");
    expect_body({2, 1, 9, 0x83, 'a'}, 2, "(Content-Type=text/plain #a#)");
    // So it does with fewer headers than it announced, if the PDU ends between two of them.
    expect_body({1, 9, 0, 0x83, 0x8E, 'a', 0}, 1, "(Content-Type=text/plain, Content-Location=a)");
    // The failing part is gone, those before it stay.
    const auto fail = [&](const std::vector<DecodeRow> &rows) {
        for (const DecodeRow &row : rows) {
            expect_body(body(3, plain + row.input), row.status, decoded);
        }
    };
    fail({bad(2, {}), bad(2, {1}), bad(2, {0x81}), bad(2, {1, 0x81}),
          // Lengths of no form; content types that are not there, end too early, have no "/".
          bad(6, {0x90, 0x80, 0x80, 0x80, 0x00, 1}), bad(6, {1, 0x90, 0x80, 0x80, 0x80, 0x00}),
          bad(2, {1, 1}), bad(2, {0, 1, 0x83}), bad(2, {2, 1, 'a', '/', 'b', 0}),
          bad(2, {3, 1, 4, 0x83, 0x81, 0xEA, 0}), bad(6, {4, 1, 'a', 'b', 'c', 0}),
          bad(7, {7, 1, 6, 5, 0, 0, 0, 0, 1}),
          // Other headers that are not there, end too early, have no form.
          bad(3, {2, 0, 0x83}), bad(2, {3, 0, 0x83, 0x8E}), bad(2, {9, 0, 0x83, 0x8E, 'a'}),
          bad(6, {2, 0, 0x83, 0x01}), bad(6, Octets{2 + 6, 0, 0x83, 0x8C} + malformed_length)});
    expect_body(body(UINT32_MAX, plain), 2, decoded);
}

TEST(Multipart, Nested) {
    const Octets inner = body(2, part({0x83}, {'a'}) + part({0x82}, {'b'}));
    const std::string decoded = "INTERNAL_Nested-Multipart=(Content-Type=text/plain #a#)"
                                "(Content-Type=text/html #b#)";
    const std::string mixed = "(Content-Type=multipart/mixed, ";
    expect_body(body(2, part({0xA3}, inner) + part({0x9E}, {'c'})), 1,
                mixed + decoded + ")(Content-Type=image/jpeg #c#)");
    expect_body(body(1, part({0xA3, 0xC0, 0x22, 'i', 0}, inner)), 1,
                mixed + decoded + ", Content-Id=i)");
    expect_body(body(1, part({0xA3}, body(1, part({0xA6}, inner)))), 1,
                mixed + "INTERNAL_Nested-Multipart=(Content-Type=multipart/alternative, " +
                    decoded + "))");
    expect_body(body(1, part({0xA3}, {0})), 1, mixed + "INTERNAL_Nested-Multipart=)");
    // The data length of a multipart part says nothing.
    expect_body(body(2, Octets{1, 0, 0xA3} + inner + part({0x9E}, {'c'})), 1,
                mixed + decoded + ")(Content-Type=image/jpeg #c#)");
    // A nested body that fails takes its part with it.
    expect_body(body(2, part({0x9E}, {'c'}) + part({0xA3}, body(3, part({0x83}, {'a'})))), 2,
                "(Content-Type=image/jpeg #c#)");
    expect_body(body(1, part({0xA3}, body(1, part(text("x"))))), 6, "");
    expect_body(body(1, part({0xA3})), 2, "");
}

TEST(Multipart, Entity) {
    const auto decode_entity = [](const Session &session, uint32_t status) {
        MMS_Entity stale{};
        MMS_Entity *entity = &stale;
        EXPECT_EQ(DecodeMultipartEntity(session.decoder.get(), &entity), status);
        return EntityPtr(entity);
    };
    const Session session(part({0x83}, {'a'}) + part({0xA3}, {0}) + Octets{1, 0, 0x01});
    EXPECT_EQ(shown(decode_entity(session, 1).get()), "Content-Type=text/plain #a#");
    EXPECT_EQ(shown(decode_entity(session, 1).get()),
              "Content-Type=multipart/mixed, INTERNAL_Nested-Multipart=");
    EXPECT_EQ(decode_entity(session, 2), nullptr);
    EXPECT_EQ(session.decoder->entityCount, 3) << "parts are counted when they start";

    // Too deep: passed over by the data length.
    const Session deep(part({0xA3}, {0, 7}) + Octets{8});
    deep.decoder->depth = 250;
    EXPECT_EQ(decode_entity(deep, 1), nullptr);
    EXPECT_EQ(deep.decoder->skipped, 1);
    EXPECT_EQ(deep.decoder->depth, 250);
    EXPECT_EQ(deep.decoder->remaining, 1U);
    const Session deepest(part({0xA3}, {0}));
    deepest.decoder->depth = 249;
    EXPECT_NE(decode_entity(deepest, 1), nullptr);
    EXPECT_EQ(deepest.decoder->depth, 249);

    // Too many: not even looked at; in a nested body, the part that holds it stays.
    const Session full(part({0x83}));
    full.decoder->entityCount = 999;
    EXPECT_EQ(decode_entity(full, 9), nullptr);
    EXPECT_EQ(full.decoder->entityCount, 999);
    EXPECT_EQ(full.decoder->remaining, 3U);
    const Session nested(part({0xA3}, body(2, part({0x83}) + part({0x83}))));
    nested.decoder->entityCount = 997;
    EXPECT_EQ(shown(decode_entity(nested, 9).get()),
              "Content-Type=multipart/mixed, INTERNAL_Nested-Multipart=(Content-Type=text/plain)");
}

void expect_headers(const Octets &block, uint32_t status, const std::string &fields) {
    SCOPED_TRACE(testing::PrintToString(block));
    const Session session(block + Octets{0x8E, 'n', 0}); // behind the block stands another header
    const EntityPtr entity(MMS_Entity_Create());
    const auto length = static_cast<uint32_t>(block.size());
    EXPECT_EQ(DecodeWspHeaders(session.decoder.get(), length, entity.get()), status);
    EXPECT_EQ(shown(entity.get()), fields);
    if (status == MMS_STATUS_OK) {
        EXPECT_EQ(session.decoder->remaining, 3U);
    }
}

TEST(EntityHeaders, WellKnown) {
    const Octets word = text("=?UTF-8?Q?caf=C3=A9?=");
    const Octets id = {0xC0, 0x22, 'i', 0};
    expect_headers(Octets{0x8E} + text("a.b"), 1, "Content-Location=a.b");
    expect_headers(Octets{0x8E} + word, 1, "Content-Location=caf\xC3\xA9");
    expect_headers(Octets{0x8E} + text("=?KOI8-R?Q?a?="), 1, "Content-Location==?KOI8-R?Q?a?=");
    expect_headers(Octets{0x8E} + text(""), 1, "Content-Location=");
    expect_headers(Octets{0xC0, 0x22} + text("<i>"), 1, "Content-Id=<i>");
    expect_headers(Octets{0xC0} + text("<i>"), 1, "Content-Id=<i>");
    expect_headers(Octets{0xC0} + word, 1, "Content-Id==?UTF-8?Q?caf=C3=A9?=");
    expect_headers(Octets{0xAE} + sized(Octets{0x80, 0x86} + word), 1,
                   "Content-Disposition=Form-data caf\xC3\xA9{UTF-8}");
    expect_headers(Octets{0x8E} + text("1") + id + Octets{0x8E} + text("2") + Octets{0xC0} +
                       text("j"),
                   1, "Content-Location=2, Content-Id=j");
    // Passed over: other codes, Content-Language and Content-Type among them; values of no form.
    for (const Octets &header :
         {Octets{0x8C, 0x81}, Octets{0x91, 0x83}, Octets{0x80, 'x', 0}, Octets{0xFF, 2, 0, 0},
          Octets{0x8E, 0x85}, Octets{0xC0, 0x85}, Octets{0x8E, 2, 'a', 0}, Octets{0xC0, 1, 'a'},
          Octets{0xAE, 0x81}, Octets{0xAE, 1, 0x82}, Octets{0xAE, 'a', 0}}) {
        expect_headers(header + id, 1, "Content-Id=i");
        expect_headers(id + header, 1, "Content-Id=i");
    }
    // Failures leave what came before them.
    const auto fail = [&](const std::vector<DecodeRow> &rows) {
        for (const DecodeRow &row : rows) {
            expect_headers(id + row.input, row.status, "Content-Id=i");
        }
    };
    fail({bad(2, {0x8E}), bad(2, {0x8C}), bad(2, {0x8E, 'a'}), bad(2, {0xC0, 0x22}),
          bad(2, {0xAE, 0}), bad(2, {0xAE, 2, 0x81}), bad(2, {0xAE, 2, 0x81, 0x86}),
          bad(2, {0x8C, 5, 1, 2}), bad(3, Octets{0x8E} + malformed_length),
          bad(3, Octets{0xC0} + malformed_length), bad(3, Octets{0xAE} + malformed_length),
          bad(6, Octets{0x8C} + malformed_length)});
}

TEST(EntityHeaders, Named) {
    expect_headers({}, 3, "");
    expect_headers(text("content-duration") + Octets{1, 0x3C}, 1, "Content-Duration=60");
    expect_headers(text("Content-Duration") + text("90"), 1, "Content-Duration=90");
    expect_headers(text("CONTENT-ID") + text("=?UTF-8?Q?a?="), 1, "Content-Id==?UTF-8?Q?a?=");
    expect_headers(text("Content-Id") + text("\"i"), 1, "Content-Id=\"i");
    expect_headers(text("Content-Location") + text("=?UTF-8?Q?a?="), 1,
                   "'Content-Location'==?UTF-8?Q?a?=");
    expect_headers(text("") + text(""), 1, "''=");
    expect_headers(text("\x7F\xE9") + text("\x7F\xE8"), 1, "'\xE9'=\xE8");
    expect_headers(text("X-A") + text("1") + text("X-B") + text("2") + text("x-a") + text("3"), 1,
                   "'x-a'=3, 'X-B'=2");
    expect_headers(text("content-duration") + Octets{1, 1, 0xC0} + text("i") +
                       text("Content-Duration") + text("2") + text("Content-Id") + text("j"),
                   1, "Content-Duration=2, Content-Id=j");
    const auto fail = [&](const std::vector<DecodeRow> &rows) {
        for (const DecodeRow &row : rows) {
            expect_headers(text("X-A") + text("1") + row.input, row.status, "'X-A'=1");
        }
    };
    fail({bad(2, {'X', 0}), bad(2, {'X'}), bad(2, {'X', 0, 'y'}), bad(2, {'X', 0, 3, 1, 2}),
          bad(6, {0x01, 0}), bad(6, {'\r', 0x01, 0}), bad(3, text("X") + Octets{0x85}),
          bad(3, text("X") + Octets{2, 'a', 0}), bad(3, text("X") + malformed_length),
          // CR is a length of 13 here: the text behind it does not fill that field.
          bad(3, text("X") + Octets{'\r', '\n', 'x', 0} + Octets(10)),
          bad(3, text("Content-Id") + Octets{0x85}), bad(3, text("Content-Id") + Octets{1, 'a'}),
          bad(3, text("Content-Id") + malformed_length),
          bad(3, text("Content-Duration") + Octets{0x85}),
          bad(3, text("Content-Duration") + Octets{5, 0, 0, 0, 0, 1}),
          bad(3, text("Content-Duration") + Octets{0x1F, 1, 7}),
          bad(3, text("Content-Duration") + malformed_length),
          bad(2, text("Content-Duration") + Octets{2, 1})});
    // Headers that the entity has already are replaced.
    const Session again(Octets{0xC0} + text("j") + text("x-a") + text("2"));
    const EntityPtr before(MMS_Entity_Create());
    ASSERT_EQ(MMS_SetContentId(before.get(), "i"), 1U);
    ASSERT_EQ(MMSLib_SetGenericTextField(before.get(), "X-A", "1"), 1U);
    EXPECT_EQ(DecodeWspHeaders(again.decoder.get(), again.decoder->remaining, before.get()), 1U);
    EXPECT_EQ(shown(before.get()), "Content-Id=j, 'x-a'=2");
    // A block that is longer than what is left.
    const Session session(text("X") + text("y"));
    const EntityPtr entity(MMS_Entity_Create());
    EXPECT_EQ(DecodeWspHeaders(session.decoder.get(), 99, entity.get()), MMS_STATUS_NO_ROOM);
    EXPECT_EQ(shown(entity.get()), "'X'=y");
}

} // namespace
