#include <cstring>

#include <gtest/gtest.h>

#include "support/support.hpp"

namespace {

using test::field_ids;
using test::Octets;
using test::octets;
using test::shown;
using test::slot;
using test::slot_value;

class Entity : public testing::Test {
protected:
    test::EntityPtr owner{MMS_Entity_Create()};
    MMS_Entity *entity = owner.get();
};

TEST_F(Entity, NewEntityIsEmpty) {
    EXPECT_EQ(field_ids(entity), std::vector<int>());
    EXPECT_EQ(entity->pContent, nullptr);
    EXPECT_EQ(entity->contentLength, 0U);
    EXPECT_EQ(entity->isMultipart, 0);
}

TEST_F(Entity, SetFieldReplacesInPlaceAndAppendsNewHeaders) {
    EXPECT_EQ(MMS_SetField(entity, "Date", slot(1)), 1U);
    EXPECT_EQ(MMS_SetContentType(entity, MMS_CreateContentType("a/b")), 1U);
    EXPECT_EQ(MMS_SetField(entity, "X-Mms-Priority", slot(129)), 1U);
    MMS_ContentType *const second = MMS_CreateContentType("c/d");
    EXPECT_EQ(MMS_SetField(entity, "CONTENT-TYPE", second), 1U);
    EXPECT_EQ(MMS_SetField(entity, "date", slot(2)), 1U);
    EXPECT_EQ(field_ids(entity), (std::vector{8, 7, 21}));
    EXPECT_EQ(MMS_GetContentType(entity), second);
    EXPECT_EQ(slot_value(MMS_FindField(entity, "Date")), 2U);

    EXPECT_EQ(MMS_SetField(entity, "Content-Type", second), 1U);
    EXPECT_STREQ(MMS_GetContentType(entity)->pMediaType, "c/d") << "the value that is there stays";

    EXPECT_EQ(MMS_DelField(entity, "Subject"), 0U);
    EXPECT_EQ(MMS_DelField(entity, "content-type"), 1U);
    EXPECT_EQ(MMS_FindField(entity, "Content-Type"), nullptr);
    EXPECT_EQ(MMS_DelField(entity, "Content-Type"), 0U);
    EXPECT_EQ(field_ids(entity), (std::vector{8, 21}));
}

TEST_F(Entity, UnknownHeadersAreAppendedAndNeverFound) {
    EXPECT_EQ(MMS_SetField(entity, "X-Unknown", slot(1)), 1U);
    EXPECT_EQ(MMS_SetField(entity, "X-Unknown", slot(2)), 1U);
    EXPECT_EQ(field_ids(entity), (std::vector{0, 0}));
    EXPECT_EQ(MMS_FindField(entity, "X-Unknown"), nullptr);
    EXPECT_EQ(MMS_DelField(entity, "X-Unknown"), 0U);
    EXPECT_EQ(field_ids(entity), (std::vector{0, 0}));
}

TEST_F(Entity, TextShorthandsCopy) {
    const struct {
        int id;
        uint32_t (*set)(MMS_Entity *, const char *);
        const char *(*get)(const MMS_Entity *);
        uint32_t (*del)(MMS_Entity *);
    } rows[] = {
        {5, MMS_SetContentId, MMS_GetContentId, MMS_DelContentId},
        {6, MMS_SetContentLocation, MMS_GetContentLocation, MMS_DelContentLocation},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(row.get(entity), nullptr);
        EXPECT_EQ(row.del(entity), 0U);
        EXPECT_EQ(row.set(entity, nullptr), 0U);
        EXPECT_EQ(field_ids(entity), std::vector<int>());
        EXPECT_EQ(row.set(entity, std::string("<some text>").c_str()), 1U);
        EXPECT_EQ(row.set(entity, nullptr), 0U);
        EXPECT_EQ(shown(row.get(entity)), "<some text>");
        EXPECT_EQ(row.set(entity, row.get(entity) + 6), 1U);
        EXPECT_EQ(shown(row.get(entity)), "text>");
        EXPECT_EQ(field_ids(entity), std::vector{row.id});
        EXPECT_EQ(row.del(entity), 1U);
        EXPECT_EQ(row.get(entity), nullptr);
    }
}

TEST_F(Entity, OtherShorthands) {
    uint32_t seconds = 99;
    EXPECT_EQ(MMS_GetContentDuration(entity, &seconds), 0U);
    EXPECT_EQ(seconds, 0U);
    for (const uint32_t value : {0xFFFFFFFFU, 0U}) {
        EXPECT_EQ(MMS_SetContentDuration(entity, value), 1U);
        EXPECT_EQ(MMS_GetContentDuration(entity, &seconds), 1U);
        EXPECT_EQ(seconds, value);
    }
    EXPECT_EQ(MMS_DelContentDuration(entity), 1U);
    EXPECT_EQ(MMS_DelContentDuration(entity), 0U);

    MMS_ContentDisposition *const disposition = MMS_CreateContentDisposition("Attachment", "a");
    EXPECT_EQ(MMS_GetContentDisposition(entity), nullptr);
    EXPECT_EQ(MMS_SetContentDisposition(entity, MMS_CreateContentDisposition(nullptr, "b")), 1U);
    EXPECT_EQ(MMS_SetContentDisposition(entity, disposition), 1U);
    EXPECT_EQ(MMS_GetContentDisposition(entity), disposition);
    EXPECT_EQ(field_ids(entity), std::vector{3});
    EXPECT_EQ(MMS_DelContentDisposition(entity), 1U);
    EXPECT_EQ(MMS_DelContentDisposition(entity), 0U);

    MMS_ContentType *const type = MMS_CreateContentType("text/plain");
    MMS_LinkedList_AddParameter(type->pParameters, MMS_CreateParameter("X-Foo", "1"));
    MMS_SetContentType(entity, type);
    EXPECT_EQ(MMS_FindContentTypeParameter(type, "x-FOO"),
              MMS_LinkedList_FindParameterByPos(type->pParameters, 0));
    EXPECT_EQ(MMS_FindContentTypeParameter(type, "Charset"), nullptr);
    EXPECT_EQ(MMS_DelContentType(entity), 1U);
    EXPECT_EQ(MMS_DelContentType(entity), 0U);
}

Octets content(const MMS_Entity *entity) {
    const uint8_t *const body = MMS_GetContent(entity);
    EXPECT_EQ(MMS_GetCMSourceContent(entity), body);
    return body != nullptr ? Octets(body, body + MMS_GetContentLength(entity)) : Octets();
}

uint8_t *heap_block(const Octets &data) {
    auto *const block = static_cast<uint8_t *>(std::malloc(data.size()));
    std::memcpy(block, data.data(), data.size());
    return block;
}

TEST_F(Entity, ContentIsCopiedOrAdopted) {
    EXPECT_EQ(MMS_DelContent(entity), 0U);
    EXPECT_EQ(MMS_GetContent(entity), nullptr);
    const Octets body = octets({0, 1, 2, 0});
    EXPECT_EQ(MMS_SetContent(entity, body.data(), 4, 0), 1U);
    EXPECT_NE(MMS_GetContent(entity), body.data());
    EXPECT_EQ(content(entity), body);
    EXPECT_EQ(MMS_SetContent(entity, MMS_GetContent(entity) + 1, 2, 0), 1U);
    EXPECT_EQ(content(entity), octets({1, 2})) << "a piece of the old content";

    EXPECT_EQ(MMS_SetContent(entity, nullptr, 5, 0), 0U);
    EXPECT_EQ(MMS_SetContent(entity, nullptr, 5, 1), 0U);
    EXPECT_EQ(content(entity), octets({1, 2}));

    uint8_t *const block = heap_block(body);
    EXPECT_EQ(MMS_SetContent(entity, block, 4, 1), 1U);
    EXPECT_EQ(MMS_GetContent(entity), block);
    EXPECT_EQ(content(entity), body);
    EXPECT_EQ(MMS_SetContent(entity, heap_block(octets({9})), 1, 1), 1U);
    EXPECT_EQ(content(entity), octets({9}));

    const std::unique_ptr<uint8_t, test::Freer> kept(heap_block(body));
    EXPECT_EQ(MMS_SetContent(entity, kept.get(), 0, 1), 1U) << "nothing is adopted";
    EXPECT_EQ(MMS_GetContent(entity), nullptr);
    EXPECT_EQ(MMS_GetContentLength(entity), 0U);

    MMS_SetContent(entity, body.data(), 4, 0);
    EXPECT_EQ(MMS_SetContent(entity, body.data(), 0, 0), 1U);
    EXPECT_EQ(MMS_DelContent(entity), 0U);
    MMS_SetContent(entity, body.data(), 4, 0);
    EXPECT_EQ(MMS_DelContent(entity), 1U);
    EXPECT_EQ(entity->pContent, nullptr);
    EXPECT_EQ(entity->contentLength, 0U);
    entity->contentLength = 77;
    EXPECT_EQ(MMS_GetContentLength(entity), 0U) << "no content, whatever is recorded";
    entity->contentLength = 0;
    MMS_SetContent(entity, body.data(), 4, 0); // released with the entity
}

} // namespace
