#include <algorithm>

#include <gtest/gtest.h>

#include "encoder/messages.hpp"

namespace {

using namespace test;

constexpr uint32_t limit = 65535;

// The address sanitizer sees a number that is released, or another value that is not.
TEST(FieldList, HeaderDecidesHowTheValueIsReleased) {
    const std::vector not_numbers = {1,  2,  3,  5,  6,  7,  9,  10, 11, 12,
                                     13, 15, 16, 17, 25, 28, 56, 57, 59, 60};
    const Decoded of_each_kind = decode(everything()); // Content-Disposition and parts included
    MMS_Entity *const entity = MMS_GetEntity(of_each_kind.message->pContainer, 0);
    for (int id = 0; id <= 61; ++id) {
        if (std::find(not_numbers.begin(), not_numbers.end(), id) == not_numbers.end()) {
            const char *const name = MMS_SearchFieldMapForName(static_cast<uint8_t>(id));
            EXPECT_EQ(MMS_SetField(entity, name, slot(0xFFFFFFF1)), 1U);
        }
    }
}

TEST(FieldList, PositionsAndNames) {
    const EntityPtr entity(MMS_Entity_Create());
    MMS_FieldList *const list = entity->pFieldList;
    const auto add = [list](const char *name, uint32_t value, uint32_t position) {
        return MMS_LinkedList_AddFieldToPos(list, name, slot(value), position);
    };
    EXPECT_EQ(add("Date", 1, 1), 0U);
    EXPECT_EQ(add("date", 1, 0), 1U);
    MMS_LinkedList_AddField(list, "X-Mms-Priority", slot(2));
    MMS_LinkedList_AddField(list, "Date", slot(3));
    EXPECT_EQ(add("X-Mms-Limit", 4, 0), 1U);
    EXPECT_EQ(add("X-Mms-Start", 5, 4), 1U);
    EXPECT_EQ(add("Content", 6, 2), 1U);
    EXPECT_EQ(add("Content", 7, UINT32_MAX), 0U);
    EXPECT_EQ(field_ids(entity.get()), (std::vector{55, 8, 50, 21, 8, 51}));

    const auto find = [list](const char *name) {
        uint16_t position = 99;
        const uint8_t id = MMS_LinkedList_FindFieldByName(list, name, &position);
        return std::pair<int, int>(id, position);
    };
    EXPECT_EQ(find("DATE"), std::pair(8, 1)) << "the first of two";
    EXPECT_EQ(find("X-Mms-Start"), std::pair(51, 5));
    EXPECT_EQ(find("Subject"), std::pair(0, 6));
    EXPECT_EQ(slot_value(MMS_LinkedList_FindFieldByPos(list, 4)), 3U);
    EXPECT_EQ(MMS_LinkedList_FindFieldByPos(list, 6), nullptr);
    EXPECT_EQ(MMS_LinkedList_DelFieldByPos(list, 6), 0U);
    EXPECT_EQ(MMS_LinkedList_DelFieldByPos(list, 0), 1U);
    EXPECT_EQ(MMS_LinkedList_DelFieldByPos(list, 4), 1U);
    EXPECT_EQ(field_ids(entity.get()), (std::vector{8, 50, 21, 8}));
    EXPECT_EQ(list->pCmpFn(MMS_LinkedList_FindFieldByPos(list, 2),
                           MMS_LinkedList_FindFieldByPos(list, 1)),
              21 - 50);
    MMS_LinkedList_AddField(list, "X-Unknown", slot(9));
    EXPECT_EQ(find("X-Unknown"), std::pair(0, 4)) << "an unknown name is never found";
}

// Entity, mailbox and parameter lists differ in what they carry alone.
template <class Record, auto create, auto destroy, auto count, auto add, auto find, auto del>
void check_list(const std::function<Record *()> &make) {
    const std::unique_ptr<std::remove_pointer_t<decltype(create())>, Destroyer<destroy>> list(
        create());
    std::vector<Record *> records;
    for (uint32_t i = 0; i < limit; ++i) {
        records.push_back(make());
        ASSERT_EQ(add(list.get(), records.back()), 1U);
    }
    Record *const extra = make();
    EXPECT_EQ(add(list.get(), extra), 0U) << "the caller keeps the record";
    EXPECT_EQ(count(list.get()), limit);
    EXPECT_EQ(find(list.get(), 0), records[0]);
    EXPECT_EQ(find(list.get(), limit - 1), records[limit - 1]);
    EXPECT_EQ(find(list.get(), limit), nullptr);
    EXPECT_EQ(del(list.get(), limit), 0U);
    EXPECT_EQ(del(list.get(), 1), 1U);
    EXPECT_EQ(del(list.get(), 0), 1U);
    EXPECT_EQ(find(list.get(), 0), records[2]);
    EXPECT_EQ(add(list.get(), extra), 1U);
    EXPECT_EQ(find(list.get(), limit - 2), extra);
    EXPECT_EQ(count(list.get()), limit - 1);
}

TEST(NodeLists, CountFindAndDelete) {
    constexpr auto add_entity = [](MMS_EntityList *list, MMS_Entity *entity) {
        uint16_t position = 0;
        const int count = MMS_LinkedList_GetEntityCount(list);
        const uint32_t status = MMS_LinkedList_AddEntity(list, entity, &position);
        EXPECT_TRUE(status == 0 || position == count);
        return status;
    };
    check_list<MMS_Entity, MMS_LinkedList_CreateEntityList, MMS_LinkedList_DestroyEntityList,
               MMS_LinkedList_GetEntityCount, add_entity, MMS_LinkedList_FindEntityByPos,
               MMS_LinkedList_DelEntityByPos>(MMS_Entity_Create);
    check_list<MMS_Parameter, MMS_LinkedList_CreateParameterList,
               MMS_LinkedList_DestroyParameterList, MMS_LinkedList_GetParameterCount,
               MMS_LinkedList_AddParameter, MMS_LinkedList_FindParameterByPos,
               MMS_LinkedList_DelParameterByPos>([] { return MMS_CreateParameter("X-Foo", "1"); });
    check_list<MMS_Mailbox, MMS_Group_Create, MMS_Group_Destroy, MMS_GetMailboxCount,
               MMS_AddMailbox, MMS_GetMailbox, MMS_DelMailbox>(
        [] { return MMS_CreateMailbox(128, nullptr, nullptr); });
}

TEST(NodeLists, ParameterByName) {
    const ContentTypePtr type(
        new_type("a/b", {{nullptr, "1"}, {"X-Foo", "2"}, {"x-foo", "3"}, {"Charset", "4"}}));
    const auto find = [&](const char *name) {
        return MMS_LinkedList_FindParameterByAttribute(type->pParameters, name);
    };
    EXPECT_STREQ(find("charset")->pValue, "4");
    EXPECT_STREQ(find("X-FOO")->pValue, "2");
    EXPECT_EQ(find("Name"), nullptr);
}

// Replacing a field that is there needs no room.
TEST(FieldList, FullListRefusesNewFields) {
    const ContainerPtr container(MMS_Container_Create());
    MMS_Entity *const entity = add_entity(container.get());
    MMSLib_SetXMmsTransactionId(container.get(), "old");
    MMSLib_SetGenericTextField(entity, "X-Old", "old");
    for (uint32_t i = 2; i < limit; ++i) {
        ASSERT_EQ(MMS_LinkedList_AddField(entity->pFieldList, "Date", slot(i)), 1U);
    }
    const EncodedStringPtr subject(MMS_CreateEncodedString("kept", nullptr));
    EXPECT_EQ(MMS_LinkedList_AddFieldToPos(entity->pFieldList, "Subject", subject.get(), 0) +
                  MMSLib_SetSubject(container.get(), subject.get()) +
                  MMS_SetContentId(entity, "id") +
                  MMSLib_SetGenericTextField(entity, "X-New", "new"),
              0U);
    EXPECT_STREQ(subject->pText, "kept");
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, "x-old", "new"), 1U);
    EXPECT_EQ(MMSLib_SetXMmsTransactionId(container.get(), "new"), 1U);
    EXPECT_EQ(MMS_LinkedList_FindFieldByPos(entity->pFieldList, limit - 1)->fieldId, 28);
    EXPECT_EQ(MMS_LinkedList_GetFieldCount(entity->pFieldList), limit);
}

} // namespace
