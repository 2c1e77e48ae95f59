// The decoder's limits, and PDUs that a careless decoder takes forever over: the time limit of the
// test run is what guards against that.
#include "decoder/render.hpp"
#include "support/wire.hpp"

namespace {

using namespace test;

int mailboxes(const MMS_Group *group) { return group != nullptr ? MMS_GetMailboxCount(group) : 0; }

TEST(Limits, Addresses) {
    struct Row {
        size_t to, cc, bcc, from;
        int kept[4];
    };
    const Row rows[] = {
        {1000, 499, 2, 0, {1000, 499, 1, 0}},
        {1400, 0, 0, 1501, {1400, 0, 0, 1500}},
        {70000, 70000, 0, 70000, {1500, 0, 0, 1500}},
    };
    for (const Row &row : rows) {
        const Decoded decoded =
            decode(repeated(row.to, {0x97, 'a', 0}) + repeated(row.cc, {0x82, 'b', 0}) +
                   repeated(row.bcc, {0x81, 'c', 0}) + repeated(row.from, {0x89, 3, 0x80, 'd', 0}) +
                   Octets{0x8D, 0x92});
        ASSERT_EQ(decoded.status, MMS_STATUS_OK);
        const MMS_Container *container = decoded.message->pContainer;
        EXPECT_EQ(mailboxes(MMSLib_GetTo(container)), row.kept[0]);
        EXPECT_EQ(mailboxes(MMSLib_GetCc(container)), row.kept[1]);
        EXPECT_EQ(mailboxes(MMSLib_GetBcc(container)), row.kept[2]);
        EXPECT_EQ(mailboxes(MMSLib_GetFrom(container)), row.kept[3]);
        EXPECT_NE(MMS_FindField(MMS_GetEntity(container, 0), "X-Mms-Mms-Version"), nullptr);
    }
    // Headers that are dropped count as well; beyond the limit nothing is looked at.
    EXPECT_EQ(shown(decode(repeated(1500, {0x89, 1, 0x81}) + "890380'd' 8C82"_wire)),
              "1 (X-Mms-Message-Type=130)");
    EXPECT_EQ(decode(repeated(1500, {0x97, 'a', 0}) + "97'<a'"_wire).status, MMS_STATUS_OK);
}

TEST(Limits, Parts) {
    const Octets plain = part({0x83}, {'a'});
    for (const size_t count : {999U, 1000U, 5000U}) {
        const Octets parts = body(count, repeated(count, plain));
        EXPECT_EQ(decode(Octets{0x84, 0xA3} + parts).status, count == 999 ? 1U : 3U);
        const Session session(parts);
        const ContainerPtr container(MMS_Container_Create());
        EXPECT_EQ(DecodeMultipart(session.decoder.get(), container.get()), count == 999 ? 1U : 9U);
        EXPECT_EQ(MMS_GetEntityCount(container.get()), 999);
    }
    // A count that cannot be true costs nothing.
    EXPECT_EQ(shown(decode(Octets{0x84, 0xA3} + body(UINT32_MAX, plain))),
              "3 (Content-Type=multipart/mixed)(Content-Type=text/plain #a#)");
}

TEST(Limits, Depth) {
    for (const int levels : {249, 250, 251, 400}) {
        // Multipart parts, each but the last with a text part behind the next level.
        Octets octets = {0};
        for (int level = 0; level < levels; ++level) {
            octets = body(2, part({0xA3}, octets) + part({0x83}, {'a'}));
        }
        const Decoded decoded = decode(Octets{0x84, 0xA3} + octets);
        EXPECT_EQ(decoded.status, MMS_STATUS_OK);
        ASSERT_NE(decoded.message, nullptr);
        int depth = 0;
        const MMS_Container *container = decoded.message->pContainer;
        // The header entity and two parts; then two parts each; then the text part alone.
        EXPECT_EQ(MMS_GetEntityCount(container), 3);
        while ((container = MMS_GetContainer(container)) != nullptr) {
            ++depth;
            EXPECT_EQ(MMS_GetEntityCount(container), depth == levels ? 0 : depth < 250 ? 2 : 1);
        }
        EXPECT_EQ(depth, std::min(levels, 250));
    }
    // Beyond the limit the data length is believed, also where it is more than there is.
    Octets octets = {1, 1, 5, 0xA3};
    for (int level = 0; level < 250; ++level) {
        octets = body(1, part({0xA3}, octets));
    }
    EXPECT_EQ(decode(Octets{0x84, 0xA3} + octets).status, MMS_STATUS_OK);
}

Octets header(const std::string &name, const std::string &value) {
    return text(name) + text(value);
}

Octets distinct_headers(size_t count) {
    Octets all;
    for (size_t i = 0; i < count; ++i) {
        const Octets one = header("X-Number-" + std::to_string(i), std::to_string(i));
        all.insert(all.end(), one.begin(), one.end());
    }
    return all;
}

uint32_t decode_headers(const Octets &block, const EntityPtr &entity) {
    const Session session(block);
    return DecodeWspHeaders(session.decoder.get(), static_cast<uint32_t>(block.size()),
                            entity.get());
}

TEST(Limits, EntityHeaders) {
    const EntityPtr entity(MMS_Entity_Create());
    EXPECT_EQ(decode_headers(distinct_headers(65535), entity), MMS_STATUS_OK);
    // One more does not fit; a value for one that is there does.
    for (const Octets &one :
         {header("Y", "y"), header("Content-Duration", "1"), "8E'a'"_wire, "AE0181"_wire}) {
        EXPECT_EQ(decode_headers(one, entity), MMS_STATUS_REFUSED);
    }
    EXPECT_EQ(decode_headers(header("x-number-7", "new"), entity), MMS_STATUS_OK);
    EXPECT_EQ(shown(MMSLib_GetGenericTextField(entity.get(), "X-Number-7")), "new");
    EXPECT_EQ(MMS_LinkedList_GetFieldCount(entity->pFieldList), 65535);
    // In a part, where the content type takes a field, 65534 fit.
    const Octets one = part(Octets{0x83} + distinct_headers(65535), {'a'});
    EXPECT_EQ(shown(decode(Octets{0x84, 0xA3} + body(1, one))), "3 (Content-Type=multipart/mixed)");
}

TEST(HostileSizes, EntityHeaders) {
    const Octets pairs = repeated(30000, header("A", "1") + header("b", "2"));
    const Octets distinct = distinct_headers(60000);
    // Where a header was put stays its place, whatever number of them there are.
    for (const auto &[block, fields] : std::vector<std::pair<Octets, int>>{
             {distinct + distinct, 60000},
             {distinct + pairs, 60002},
             {distinct + repeated(20000, {0x8E, 'a', 0}), 60001},
             {distinct_headers(500) + header("x-number-250", "new"), 500}}) {
        const EntityPtr entity(MMS_Entity_Create());
        EXPECT_EQ(decode_headers(block, entity), MMS_STATUS_OK);
        EXPECT_EQ(MMS_LinkedList_GetFieldCount(entity->pFieldList), fields);
        EXPECT_EQ(shown(MMSLib_GetGenericTextField(entity.get(), "X-Number-250")),
                  fields == 500 ? "new" : "250");
    }
}

TEST(HostileSizes, ManyAndLong) {
    const Decoded decoded =
        decode(Octets{0x84} + sized(Octets{0x83} + repeated(60000, {0x85, 'a', 0})));
    ASSERT_EQ(decoded.status, MMS_STATUS_OK);
    const MMS_ContentType *type = MMSLib_GetContentType(decoded.message->pContainer);
    EXPECT_EQ(MMS_LinkedList_GetParameterCount(type->pParameters), 60000);
    const EntityPtr entity(MMS_Entity_Create());
    const Octets filenames = repeated(60000, {0x86, 'a', 0}) + "86'b'"_wire;
    const Octets words = repeated(60000, raw("=?UTF-8?Q?a?= "));
    EXPECT_EQ(decode_headers(Octets{0xAE} + sized(Octets{0x81} + filenames) + Octets{0x8E} + words +
                                 Octets{0},
                             entity),
              1U);
    EXPECT_EQ(shown(entity.get()),
              "Content-Disposition=Attachment b, Content-Location=" + std::string(60000, 'a'));
    const std::string type_alone = "(X-Mms-Message-Type=130)";
    EXPECT_EQ(shown(decode(repeated(60000, {0x96, 'a', 0}) + "96'b'"_wire)), "1 (Subject=b)");
    EXPECT_EQ(shown(decode(repeated(60000, header("A", "b")) + "8C82"_wire)), "1 " + type_alone);
    // Every header asks for the whole rest and does not end; an address that is too long.
    EXPECT_EQ(shown(decode("8C82"_wire + Octets(1000000, 'a'))), "3 " + type_alone);
    EXPECT_EQ(shown(decode("8C8297"_wire + Octets(1000000, '"') + Octets{0})), "3 " + type_alone);
}

// Whatever comes in, decoding ends with one of two statuses and a message that can be read.
TEST(HostileContents, CutOrChangedSamples) {
    for (const char *name : {"delivery-ind.mms", "notification-ind.mms", "hostile-terminal.mms",
                             "send-req-related-ucs2.mms", "retrieve-conf-nested.mms"}) {
        SCOPED_TRACE(name);
        const Octets pdu = read_sample(name);
        for (size_t at = 0; at < pdu.size(); ++at) {
            const auto end = pdu.begin() + static_cast<std::ptrdiff_t>(at);
            EXPECT_EQ(shown(decode({pdu.begin(), end})) != "3 no message", at >= 2) << at;
            for (int change = 1; change < 256; change *= 2) {
                Octets changed = pdu;
                changed[at] = static_cast<uint8_t>(changed[at] ^ change);
                const Decoded decoded = decode(changed);
                EXPECT_TRUE(decoded.status == 1 || decoded.status == 3) << at << " " << change;
                EXPECT_NE(shown(decoded), "1 ()"); // reads all of it
            }
        }
    }
}

} // namespace
