#include "decoder/render.hpp"
#include "support/wire.hpp"

namespace {

using namespace test;

void expect_body(const Octets &pdu, uint32_t status, const std::string &parts,
                 size_t remaining = 0) {
    SCOPED_TRACE(testing::PrintToString(pdu));
    const Session session(pdu);
    const ContainerPtr container(MMS_Container_Create());
    EXPECT_EQ(DecodeMultipart(session.decoder.get(), container.get()), status);
    EXPECT_EQ(shown(container.get()), parts);
    EXPECT_TRUE(status != MMS_STATUS_OK || session.decoder->remaining == remaining);
    EXPECT_EQ(session.decoder->depth + session.decoder->skipped, 0);
}

TEST(Multipart, Parts) {
    const Octets plain = part({0x83}, {'a', 'b'});
    const std::string decoded = "(Content-Type=text/plain #ab#)";
    expect_body({}, 2, "");
    expect_body({0, 7, 7}, 1, "", 2);
    expect_body("9080808000"_wire, 6, "");
    expect_body(body(2, plain + part({0x9E})) + Octets{9}, 1, decoded + "(Content-Type=image/jpeg)",
                1);
    expect_body(body(1, part("038381EA 8E'x'"_wire, {'a'})), 1,
                "(Content-Type=text/plain;Charset=UTF-8, Content-Location=x #a#)");
    // Data that the PDU does not hold: the part stays, with what is there.
    expect_body("01 0109 83|a|"_wire, 1, "(Content-Type=text/plain #a#)");
    expect_body("01 0109 83"_wire, 1, "(Content-Type=text/plain)");
    expect_body("01 018FFFFFFF7F 83|a|"_wire, 1, "(Content-Type=text/plain #a#)");
    expect_body("02 0109 83|a|"_wire, 2, "(Content-Type=text/plain #a#)");
    // So it does with fewer headers than it announced, if the PDU ends between two of them.
    expect_body("01 0900 83 8E'a'"_wire, 1, "(Content-Type=text/plain, Content-Location=a)");
    // The failing part is gone, those before it stay: lengths of no form; content types that are
    // not there, end too early, have no "/"; other headers likewise.
    for (const DecodeRow &row :
         {bad(2, {}), bad(2, {1}), bad(2, {0x81}), bad(2, {1, 0x81}), bad(6, "908080800001"_wire),
          bad(6, "019080808000"_wire), bad(2, {1, 1}), bad(2, {0, 1, 0x83}),
          bad(2, "0201'a/b'"_wire), bad(2, "030104 8381EA00"_wire), bad(6, "0401'abc'"_wire),
          bad(7, "0701 06050000000001"_wire), bad(3, {2, 0, 0x83}), bad(2, {3, 0, 0x83, 0x8E}),
          bad(2, {9, 0, 0x83, 0x8E, 'a'}), bad(6, {2, 0, 0x83, 0x01}),
          bad(6, "0800 838C1F9080808000"_wire)}) {
        expect_body(body(3, plain + row.input), row.status, decoded);
    }
}

TEST(Multipart, Nested) {
    const Octets inner = body(2, part({0x83}, {'a'}) + part({0x82}, {'b'}));
    const std::string decoded = "INTERNAL_Nested-Multipart=(Content-Type=text/plain #a#)"
                                "(Content-Type=text/html #b#)";
    const std::string mixed = "(Content-Type=multipart/mixed, ";
    expect_body(body(1, part("A3C022'i'"_wire, inner)), 1, mixed + decoded + ", Content-Id=i)");
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
}

TEST(Multipart, Entity) {
    const auto decode_entity = [](const Session &session, uint32_t status) {
        MMS_Entity stale{};
        MMS_Entity *entity = &stale;
        EXPECT_EQ(DecodeMultipartEntity(session.decoder.get(), &entity), status);
        return EntityPtr(entity);
    };
    const Session session("0100 01"_wire);
    EXPECT_EQ(decode_entity(session, 2), nullptr);
    EXPECT_EQ(session.decoder->entityCount, 1) << "parts are counted when they start";

    // Too deep: passed over by the data length.
    const Session deep(part({0xA3}, {0, 7}) + Octets{8});
    deep.decoder->depth = 250;
    EXPECT_EQ(decode_entity(deep, 1), nullptr);
    EXPECT_EQ(deep.decoder->skipped, 1);
    EXPECT_EQ(deep.decoder->depth, 250);
    EXPECT_EQ(deep.decoder->remaining, 1U);

    // Too many: not even looked at; in a nested body, the part that holds it stays.
    const Session full(part({0x83}));
    full.decoder->entityCount = 999;
    EXPECT_EQ(decode_entity(full, 9), nullptr);
    EXPECT_EQ(full.decoder->remaining, 3U);
    const Session nested(part({0xA3}, body(2, part({0x83}) + part({0x83}))));
    nested.decoder->entityCount = 997;
    EXPECT_EQ(shown(decode_entity(nested, 9).get()),
              "Content-Type=multipart/mixed, INTERNAL_Nested-Multipart=(Content-Type=text/plain)");
}

// Decodes the headers of a part, which its data would follow.
void expect_headers(const Octets &block, uint32_t status, const std::string &fields) {
    SCOPED_TRACE(testing::PrintToString(block));
    const Session session(block + Octets{0x8E, 'n', 0}); // behind the block stands another header
    const EntityPtr entity(MMS_Entity_Create());
    const auto length = static_cast<uint32_t>(block.size());
    EXPECT_EQ(DecodeWspHeaders(session.decoder.get(), length, entity.get()), status);
    EXPECT_EQ(shown(entity.get()), fields);
    EXPECT_TRUE(status != MMS_STATUS_OK || session.decoder->remaining == 3);
}

TEST(EntityHeaders, Decode) {
    const std::pair<Octets, const char *> rows[] = {
        {"8E'a.b'"_wire, "Content-Location=a.b"},
        {"8E'=?UTF-8?Q?=C3=A9?='"_wire, "Content-Location=\xC3\xA9"},
        {"8E'=?KOI8-R?Q?a?='"_wire, "Content-Location==?KOI8-R?Q?a?="},
        {"C022'<i>'"_wire, "Content-Id=<i>"},
        {"C0'=?UTF-8?Q?a?='"_wire, "Content-Id==?UTF-8?Q?a?="},
        {"AE048086'f'"_wire, "Content-Disposition=Form-data f"},
        {"8E'1' C0'i' 8E'2' C0'j'"_wire, "Content-Location=2, Content-Id=j"},
        {"'content-duration'013C"_wire, "Content-Duration=60"},
        {"'Content-Duration''90' C0'i' 'Content-Duration'0102"_wire,
         "Content-Duration=2, Content-Id=i"},
        {"'CONTENT-ID''=?UTF-8?Q?a?='"_wire, "Content-Id==?UTF-8?Q?a?="},
        {"'Content-Location''=?UTF-8?Q?a?='"_wire, "'Content-Location'==?UTF-8?Q?a?="},
        {"7FE900 7FE800"_wire, "'\xE9'=\xE8"},
        {"'X-A''1' 'X-B''2' 'x-a''3'"_wire, "'x-a'=3, 'X-B'=2"},
    };
    for (const auto &[block, fields] : rows) {
        expect_headers(block, 1, fields);
    }
    // Passed over: other codes, Content-Language and Content-Type among them; values of no form.
    const Octets id = "C022'i'"_wire;
    for (const Octets &header :
         {"8C81"_wire, "9183"_wire, "80'x'"_wire, "FF020000"_wire, "8E85"_wire, "C085"_wire,
          "8E02'a'"_wire, "C001|a|"_wire, "AE81"_wire, "AE0182"_wire, "AE'a'"_wire}) {
        expect_headers(header + id + header, 1, "Content-Id=i");
    }
    // Failures leave what came before them.
    expect_headers({}, 3, "");
    for (const DecodeRow &row :
         {bad(2, {0x8E}), bad(2, {0x8C}), bad(2, {0x8E, 'a'}), bad(2, {0xC0, 0x22}),
          bad(2, {0xAE, 0}), bad(2, {0xAE, 2, 0x81}), bad(2, "8C050102"_wire),
          bad(3, "8E1F9080808000"_wire), bad(3, "AE1F9080808000"_wire),
          bad(6, "8C1F9080808000"_wire), bad(2, {'X', 0}), bad(2, {'X'}), bad(2, {'X', 0, 'y'}),
          bad(2, {'X', 0, 3, 1, 2}), bad(6, {0x01, 0}), bad(6, {'\r', 0x01, 0}),
          bad(3, "'X'85"_wire), bad(3, "'X'02'a'"_wire), bad(3, "'X'1F9080808000"_wire),
          // CR is a length of 13 here: the text behind it does not fill that field.
          bad(3, "'X'0D0A'x'"_wire + Octets(10)), bad(3, "'Content-Id'85"_wire),
          bad(3, "'Content-Duration'85"_wire), bad(3, "'Content-Duration'050000000001"_wire),
          bad(3, "'Content-Duration'1F0107"_wire), bad(2, "'Content-Duration'0201"_wire)}) {
        expect_headers(id + row.input, row.status, "Content-Id=i");
    }
    // The first of the headers that the entity has already is replaced; a block may be longer than
    // what is left.
    const Session again("C0'j' 'x-a''2'"_wire);
    const EntityPtr before(MMS_Entity_Create());
    MMS_SetContentId(before.get(), "i");
    MMSLib_SetGenericTextField(before.get(), "X-A", "1");
    MMS_LinkedList_AddField(before->pFieldList, "Content-Id", heap_text("k"));
    EXPECT_EQ(DecodeWspHeaders(again.decoder.get(), 99, before.get()), MMS_STATUS_NO_ROOM);
    EXPECT_EQ(shown(before.get()), "Content-Id=j, 'x-a'=2, Content-Id=k");
}

} // namespace
