#include <gtest/gtest.h>

#include "support/support.hpp"

namespace {

using test::field_ids;
using test::Octets;
using test::shown;
using test::slot;

class Entity : public testing::Test {
protected:
    test::EntityPtr owner{MMS_Entity_Create()};
    MMS_Entity *entity = owner.get();
};

TEST_F(Entity, SetFieldReplacesInPlaceAndAppendsNewHeaders) {
    MMS_ContentType *const type = MMS_CreateContentType("c/d");
    EXPECT_EQ(MMS_SetField(entity, "Content-Type", MMS_CreateContentType("a/b")) +
                  MMS_SetField(entity, "X-Unknown", slot(1)) +
                  MMS_SetField(entity, "X-Unknown", slot(2)) +
                  MMS_SetField(entity, "CONTENT-TYPE", type) +
                  MMS_SetField(entity, "Content-Type", type),
              5U);
    EXPECT_EQ(field_ids(entity), (std::vector{7, 0, 0}));
    EXPECT_STREQ(MMS_GetContentType(entity)->pMediaType, "c/d") << "the value that is there stays";
    for (const char *absent : {"Subject", "X-Unknown"}) {
        EXPECT_EQ(MMS_DelField(entity, absent), 0U);
        EXPECT_EQ(MMS_FindField(entity, absent), nullptr);
    }
    EXPECT_EQ(MMS_DelField(entity, "content-type"), 1U);
    EXPECT_EQ(field_ids(entity), (std::vector{0, 0}));
}

TEST_F(Entity, Shorthands) {
    uint32_t seconds = 99;
    EXPECT_EQ(MMS_GetContentDuration(entity, &seconds) + seconds, 0U);
    EXPECT_EQ(MMS_SetContentDuration(entity, UINT32_MAX), 1U);
    EXPECT_EQ(MMS_GetContentDuration(entity, &seconds), 1U);
    EXPECT_EQ(seconds, UINT32_MAX);
    MMS_ContentDisposition *const disposition = MMS_CreateContentDisposition("Attachment", "a");
    MMS_ContentType *const type = MMS_CreateContentType("text/plain");
    MMS_LinkedList_AddParameter(type->pParameters, MMS_CreateParameter("X-Foo", "1"));
    EXPECT_EQ(MMS_SetContentDisposition(entity, disposition), 1U);
    EXPECT_EQ(MMS_SetContentType(entity, type), 1U);
    EXPECT_EQ(MMS_SetContentId(entity, std::string("<some id>").c_str()), 1U);
    EXPECT_EQ(MMS_SetContentId(entity, MMS_GetContentId(entity) + 6), 1U);
    EXPECT_EQ(MMS_SetContentId(entity, nullptr), 0U);
    EXPECT_EQ(MMS_SetContentLocation(entity, "a.txt"), 1U);
    EXPECT_EQ(field_ids(entity), (std::vector{4, 3, 7, 5, 6}));
    EXPECT_EQ(MMS_GetContentDisposition(entity), disposition);
    EXPECT_EQ(MMS_FindContentTypeParameter(MMS_GetContentType(entity), "x-FOO"),
              MMS_LinkedList_FindParameterByPos(type->pParameters, 0));
    EXPECT_EQ(MMS_FindContentTypeParameter(type, "Charset"), nullptr);
    EXPECT_EQ(shown(MMS_GetContentId(entity)), "id>");
    EXPECT_EQ(shown(MMS_GetContentLocation(entity)), "a.txt");
    for (const auto del : {MMS_DelContentDuration, MMS_DelContentDisposition, MMS_DelContentType,
                           MMS_DelContentId, MMS_DelContentLocation}) {
        const size_t fields = field_ids(entity).size();
        EXPECT_EQ(del(entity), 1U);
        EXPECT_EQ(del(entity), 0U);
        EXPECT_EQ(field_ids(entity).size(), fields - 1);
    }
    EXPECT_EQ(MMS_GetContentId(entity), nullptr);
}

TEST_F(Entity, ContentIsCopiedOrAdopted) {
    const auto content = [this] {
        const uint8_t *const octets = MMS_GetContent(entity);
        EXPECT_EQ(MMS_GetCMSourceContent(entity), octets);
        return Octets(octets, octets + MMS_GetContentLength(entity));
    };
    const Octets body = {'a', 'b', 'c', 0};
    EXPECT_EQ(MMS_DelContent(entity), 0U);
    EXPECT_EQ(MMS_SetContent(entity, body.data(), 4, 0), 1U);
    EXPECT_NE(MMS_GetContent(entity), body.data());
    EXPECT_EQ(content(), body);
    EXPECT_EQ(MMS_SetContent(entity, MMS_GetContent(entity) + 1, 2, 0), 1U);
    EXPECT_EQ(MMS_SetContent(entity, nullptr, 5, 0), 0U);
    EXPECT_EQ(MMS_SetContent(entity, nullptr, 5, 1), 0U);
    EXPECT_EQ(content(), test::raw("bc")) << "a piece of the old content";

    auto *const block = reinterpret_cast<uint8_t *>(test::heap_text("adopted"));
    EXPECT_EQ(MMS_SetContent(entity, block, 7, 1), 1U);
    EXPECT_EQ(MMS_SetContent(entity, block, 5, 1), 1U) << "a block that is there already";
    EXPECT_EQ(MMS_GetContent(entity), block);
    EXPECT_EQ(content(), test::raw("adopt"));
    EXPECT_EQ(MMS_SetContent(entity, body.data(), 0, 1), 1U) << "nothing is adopted";
    EXPECT_EQ(MMS_GetContent(entity), nullptr);

    entity->contentLength = 77;
    EXPECT_EQ(MMS_GetContentLength(entity), 0U) << "no content, whatever is recorded";
    MMS_SetContent(entity, body.data(), 4, 0);
    EXPECT_EQ(MMS_DelContent(entity), 1U);
    EXPECT_EQ(entity->contentLength, 0U);
    MMS_SetContent(entity, body.data(), 4, 0); // released with the entity
}

} // namespace
