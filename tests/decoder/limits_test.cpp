// The decoder's limits, and PDUs that a careless decoder takes forever over: the time limit of the
// test run is what guards against that.
#include "decoder/render.hpp"

namespace {

using namespace test;

Octets repeated(size_t count, const Octets &piece) {
    Octets all;
    for (size_t i = 0; i < count; ++i) {
        all.insert(all.end(), piece.begin(), piece.end());
    }
    return all;
}

int mailboxes(const MMS_Group *group) { return group != nullptr ? MMS_GetMailboxCount(group) : 0; }

TEST(Limits, Addresses) {
    struct Row {
        size_t to, cc, bcc, from;
        int kept[4];
    };
    const Row rows[] = {
        {1500, 0, 0, 0, {1500, 0, 0, 0}},       {1501, 0, 0, 0, {1500, 0, 0, 0}},
        {1000, 499, 2, 0, {1000, 499, 1, 0}},   {1500, 1, 1, 0, {1500, 0, 0, 0}},
        {1400, 0, 0, 1501, {1400, 0, 0, 1500}}, {70000, 70000, 0, 70000, {1500, 0, 0, 1500}},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.to);
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
    const Decoded dropped =
        decode(repeated(1500, {0x89, 1, 0x81}) + Octets{0x89, 3, 0x80, 'd', 0, 0x8C, 0x82});
    EXPECT_EQ(shown(dropped), "1 (X-Mms-Message-Type=130)");
    const Decoded beyond = decode(repeated(1500, {0x97, 'a', 0}) + Octets{0x97, '<', 'a', 0});
    EXPECT_EQ(beyond.status, MMS_STATUS_OK);
}

TEST(Limits, Parts) {
    const Octets plain = part({0x83}, {'a'});
    for (const size_t count : {999U, 1000U, 5000U}) {
        SCOPED_TRACE(count);
        const Octets parts = body(count, repeated(count, plain));
        const Decoded decoded = decode(Octets{0x84, 0xA3} + parts);
        EXPECT_EQ(decoded.status, count == 999 ? 1U : 3U);
        ASSERT_NE(decoded.message, nullptr);
        EXPECT_EQ(MMS_GetEntityCount(decoded.message->pContainer), 1000);
        const Session session(parts);
        const ContainerPtr container(MMS_Container_Create());
        EXPECT_EQ(DecodeMultipart(session.decoder.get(), container.get()), count == 999 ? 1U : 9U);
        EXPECT_EQ(MMS_GetEntityCount(container.get()), 999);
        EXPECT_EQ(session.decoder->entityCount, 999);
    }
    // The limit within nested bodies: 1 + 1 + 996 + 1 parts fit.
    const Octets inner = part({0xA6}, body(1000, repeated(1000, plain)));
    const Session session(body(3, plain + part({0xA3}, body(1, inner)) + plain));
    const ContainerPtr container(MMS_Container_Create());
    EXPECT_EQ(DecodeMultipart(session.decoder.get(), container.get()), MMS_STATUS_TOO_MANY_PARTS);
    EXPECT_EQ(MMS_GetEntityCount(container.get()), 2);
    const MMS_Container *middle = MMS_GetContainer(container.get());
    ASSERT_NE(middle, nullptr);
    EXPECT_EQ(MMS_GetEntityCount(middle), 1);
    ASSERT_NE(MMS_GetContainer(middle), nullptr);
    EXPECT_EQ(MMS_GetEntityCount(MMS_GetContainer(middle)), 996);
    // A count that cannot be true costs nothing.
    const Decoded promised = decode(Octets{0x84, 0xA3} + body(UINT32_MAX, plain));
    EXPECT_EQ(shown(promised), "3 (Content-Type=multipart/mixed)(Content-Type=text/plain #a#)");
}

// `levels` multipart parts, each but the last with a text part behind the next level.
Octets nested(int levels) {
    Octets octets = {0};
    for (int level = 0; level < levels; ++level) {
        octets = body(2, part({0xA3}, octets) + part({0x83}, {'a'}));
    }
    return octets;
}

TEST(Limits, Depth) {
    for (const int levels : {249, 250, 251, 252, 400}) {
        SCOPED_TRACE(levels);
        const Decoded decoded = decode(Octets{0x84, 0xA3} + nested(levels));
        EXPECT_EQ(decoded.status, MMS_STATUS_OK);
        ASSERT_NE(decoded.message, nullptr);
        int depth = 0;
        const MMS_Container *container = decoded.message->pContainer;
        // The header entity and two parts; then two parts each; then the text part alone.
        EXPECT_EQ(MMS_GetEntityCount(container), 3);
        for (container = MMS_GetContainer(container); container != nullptr;
             container = MMS_GetContainer(container)) {
            ++depth;
            const int parts = depth < levels ? depth < 250 ? 2 : 1 : 0;
            EXPECT_EQ(MMS_GetEntityCount(container), parts) << depth;
        }
        EXPECT_EQ(depth, std::min(levels, 250));
        EXPECT_EQ(shown(decoded).find("image"), std::string::npos); // reads all of it
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
        const Octets one = header("X-" + std::to_string(i), std::to_string(i));
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
    const Octets full = distinct_headers(65535);
    const EntityPtr entity(MMS_Entity_Create());
    EXPECT_EQ(decode_headers(full, entity), MMS_STATUS_OK);
    EXPECT_EQ(MMS_LinkedList_GetFieldCount(entity->pFieldList), 65535);
    EXPECT_EQ(shown(MMSLib_GetGenericTextField(entity.get(), "x-65534")), "65534");
    // One more does not fit; a value for one that is there does.
    for (const Octets &one :
         {header("Y", "y"), header("Content-Id", "i"), header("Content-Duration", "1"),
          Octets{0x8E, 'a', 0}, Octets{0xAE, 1, 0x81}}) {
        EXPECT_EQ(decode_headers(one, entity), MMS_STATUS_REFUSED);
    }
    EXPECT_EQ(decode_headers(header("x-7", "new"), entity), MMS_STATUS_OK);
    EXPECT_EQ(shown(MMSLib_GetGenericTextField(entity.get(), "X-7")), "new");
    EXPECT_EQ(MMS_LinkedList_GetFieldCount(entity->pFieldList), 65535);

    const EntityPtr at_once(MMS_Entity_Create());
    EXPECT_EQ(decode_headers(full + header("Y", "y"), at_once), MMS_STATUS_REFUSED);
    // In a part, where the content type takes a field, 65534 fit.
    for (const size_t count : {65534U, 65535U}) {
        const Octets one = part(Octets{0x83} + distinct_headers(count), {'a'});
        const Decoded decoded = decode(Octets{0x84, 0xA3} + body(1, one));
        EXPECT_EQ(decoded.status, count == 65534 ? 1U : 3U);
        EXPECT_EQ(MMS_GetEntityCount(decoded.message->pContainer), count == 65534 ? 2 : 1);
    }
}

TEST(HostileSizes, EntityHeaders) {
    const Octets pair = header("A", "1") + header("b", "2");
    const Octets distinct = distinct_headers(60000);
    const Octets longer = header(std::string(50000, 'x'), "1");
    struct Row {
        Octets block;
        int fields;
        const char *name, *value;
    };
    const Row rows[] = {
        {distinct, 60000, "X-59999", "59999"},
        {distinct + distinct, 60000, "X-0", "0"},
        {repeated(60000, header("A", "1")), 1, "a", "1"},
        {repeated(30000, pair), 2, "B", "2"},
        {distinct + repeated(30000, pair), 60002, "B", "2"},
        {distinct + repeated(20000, {0x8E, 'a', 0}), 60001, "X-1", "1"},
        {distinct + repeated(20000, header("Content-Id", "i")), 60001, "X-1", "1"},
        {repeated(20, longer) + header("y", "2"), 2, "Y", "2"},
    };
    for (const Row &row : rows) {
        const EntityPtr entity(MMS_Entity_Create());
        EXPECT_EQ(decode_headers(row.block, entity), MMS_STATUS_OK);
        EXPECT_EQ(MMS_LinkedList_GetFieldCount(entity->pFieldList), row.fields);
        EXPECT_EQ(shown(MMSLib_GetGenericTextField(entity.get(), row.name)), row.value);
    }
    // Where a header was put stays its place, whatever number of them there are.
    const EntityPtr entity(MMS_Entity_Create());
    ASSERT_EQ(decode_headers(distinct_headers(500) + header("x-250", "new"), entity), 1U);
    const MMS_Field *field = MMS_LinkedList_FindFieldByPos(entity->pFieldList, 250);
    EXPECT_EQ(shown(static_cast<const MMS_GenericData *>(field->pValue)->pHeaderValue), "new");
    EXPECT_EQ(MMS_LinkedList_GetFieldCount(entity->pFieldList), 500);
}

TEST(HostileSizes, Parameters) {
    const Octets parameters = repeated(60000, {0x85, 'a', 0});
    const Decoded decoded = decode(Octets{0x84} + sized(Octets{0x83} + parameters));
    ASSERT_EQ(decoded.status, MMS_STATUS_OK);
    const MMS_ContentType *type = MMSLib_GetContentType(decoded.message->pContainer);
    EXPECT_EQ(MMS_LinkedList_GetParameterCount(type->pParameters), 60000);

    const Octets filenames = repeated(60000, {0x86, 'a', 0}) + Octets{0x86, 'b', 0};
    const EntityPtr entity(MMS_Entity_Create());
    ASSERT_EQ(decode_headers(Octets{0xAE} + sized(Octets{0x81} + filenames), entity), 1U);
    EXPECT_EQ(shown(entity.get()), "Content-Disposition=Attachment b");

    // Texts of very many encoded words.
    Octets words = repeated(60000, raw("=?UTF-8?Q?a?= "));
    ASSERT_EQ(decode_headers(Octets{0x8E} + words + Octets{0}, entity), 1U);
    EXPECT_EQ(std::string(MMS_GetContentLocation(entity.get())), std::string(60000, 'a'));
}

TEST(HostileSizes, Headers) {
    const Decoded subjects = decode(repeated(60000, {0x96, 'a', 0}) + Octets{0x96, 'b', 0});
    EXPECT_EQ(shown(subjects), "1 (Subject=b)");
    const Decoded named = decode(repeated(60000, header("A", "b")) + Octets{0x8C, 0x82});
    EXPECT_EQ(shown(named), "1 (X-Mms-Message-Type=130)");
    // Every header asks for the whole rest and does not end.
    const Decoded open = decode(Octets{0x8C, 0x82} + Octets(1000000, 'a'));
    EXPECT_EQ(shown(open), "3 (X-Mms-Message-Type=130)");
    const Decoded quotes = decode(Octets{0x8C, 0x82, 0x97} + Octets(1000000, '"') + Octets{0});
    EXPECT_EQ(shown(quotes), "3 (X-Mms-Message-Type=130)"); // an address that is too long
    // Values that promise more than there is: to a field, to its content type, to its data.
    for (const Octets &length : {Octets{30}, uintvar(UINT32_MAX), uintvar(UINT32_MAX - 5)}) {
        const Octets value = (length.size() > 1 ? Octets{0x1F} : Octets{}) + length;
        for (int code = 0; code < 128; ++code) {
            const Octets one = Octets{static_cast<uint8_t>(0x80 | code)} + value + Octets{0x80, 1};
            EXPECT_EQ(shown(decode(Octets{0x8C, 0x82} + one)), "3 (X-Mms-Message-Type=130)");
            const Octets in_part = uintvar(1 + one.size()) + Octets{0, 0x83} + one;
            EXPECT_EQ(shown(decode(Octets{0x84, 0xA3, 1} + in_part)),
                      "3 (Content-Type=multipart/mixed)");
        }
        EXPECT_EQ(shown(decode(Octets{0x84, 0xA3, 1, 9, 0} + value + Octets{0x83})),
                  "3 (Content-Type=multipart/mixed)");
        EXPECT_EQ(shown(decode(Octets{0x84, 0xA3, 1} + length + length + Octets{0x83})),
                  "3 (Content-Type=multipart/mixed)");
        EXPECT_EQ(shown(decode(Octets{0x84, 0xA3, 1, 1} + length + Octets{0x83, 'a'})),
                  "1 (Content-Type=multipart/mixed)(Content-Type=text/plain #a#)");
    }
}

} // namespace
