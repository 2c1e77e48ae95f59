#include <gtest/gtest.h>

#include "support/support.hpp"

namespace {

using test::FieldListPtr;
using test::slot;
using test::slot_value;

constexpr uint32_t limit = 65535;

std::vector<int> ids(const MMS_FieldList *list) {
    std::vector<int> result;
    for (uint32_t i = 0; i < MMS_LinkedList_GetFieldCount(list); ++i) {
        result.push_back(MMS_LinkedList_FindFieldByPos(list, i)->fieldId);
    }
    return result;
}

// A container with one entity that owns one value of each kind of memory.
MMS_Container *nested_container() {
    MMS_Container *const container = MMS_Container_Create();
    MMS_Entity *const entity = test::add_entity(container);
    MMS_SetContentId(entity, "inner");
    MMS_SetContentType(entity, MMS_CreateContentType("text/plain"));
    const uint8_t body[] = {1, 2, 3};
    MMS_SetContent(entity, body, sizeof body, 0);
    return container;
}

// A value of a kind, which a letter stands for.
void *make_value(char kind) {
    switch (kind) {
    case 't':
        return test::heap_text("text");
    case 'g': {
        MMS_Group *const group = MMS_Group_Create();
        MMS_SetDisplayName(group, "group");
        MMS_AddMailbox(group, MMS_CreateMailbox(128, test::heap_text("name"),
                                                MMS_CreateEncodedString("a@b", nullptr)));
        return group;
    }
    case 'e':
        return MMS_CreateEncodedString("text", MMS_CHARSET_UTF_8);
    case 's':
        return MMS_CreateSpecialTime(1, 5);
    case 'c': {
        MMS_ContentType *const type = MMS_CreateContentType("image/jpeg");
        MMS_LinkedList_AddParameter(type->pParameters, MMS_CreateParameter("X-Foo", "bar"));
        return type;
    }
    case 'd':
        return MMS_CreateContentDisposition("Attachment", "file");
    case 'x':
        return nested_container();
    default:
        return slot(0xFFFFFFF1); // a number, never an address to release
    }
}

// Value kinds of the ids 0 to 61, ten to a line; 60 is made apart.
constexpr char kinds[] = "nggdnttcng"
                         "tegtnsstnn"
                         "nnnnnenntn"
                         "nnnnnnnnnn"
                         "nnnnnnnnnn"
                         "nnnnnnttnx"
                         "-n";

// The address sanitizer sees a value that is not released, or released in the wrong way.
TEST(FieldList, HeaderDecidesHowTheValueIsReleased) {
    for (int id = 0; id <= 61; ++id) {
        SCOPED_TRACE(id);
        const char *const name =
            id != 0 ? MMS_SearchFieldMapForName(static_cast<uint8_t>(id)) : "X-Unknown";
        const FieldListPtr list(MMS_LinkedList_CreateFieldList());
        const auto add = [&] {
            if (id != 60) {
                EXPECT_EQ(MMS_LinkedList_AddField(list.get(), name, make_value(kinds[id])), 1U);
                return;
            }
            const test::EntityPtr entity(MMS_Entity_Create());
            MMSLib_SetGenericTextField(entity.get(), "X-Name", "value");
            MMS_Field *const field = MMS_FindField(entity.get(), name);
            EXPECT_EQ(MMS_LinkedList_AddField(list.get(), name, field->pValue), 1U);
            slList_Remove(entity->pFieldList, field);
            std::free(field);
        };
        add();
        add();
        EXPECT_EQ(ids(list.get()), (std::vector{id, id}));
        EXPECT_EQ(MMS_LinkedList_DelFieldByPos(list.get(), 1), 1U);
        EXPECT_EQ(MMS_LinkedList_GetFieldCount(list.get()), 1);
    }
    Dispose_FieldList(nullptr);
    Dispose_EntityList(nullptr);
    Dispose_MailboxList(nullptr);
    Dispose_ParameterList(nullptr);
}

TEST(FieldList, PositionsAndNames) {
    const FieldListPtr owner(MMS_LinkedList_CreateFieldList());
    MMS_FieldList *const list = owner.get();
    EXPECT_EQ(list->pCmpFn, Compare_FieldList);
    EXPECT_EQ(MMS_LinkedList_AddFieldToPos(list, "Date", slot(1), 1), 0U);
    EXPECT_EQ(MMS_LinkedList_AddFieldToPos(list, "date", slot(1), 0), 1U);
    MMS_LinkedList_AddField(list, "X-Mms-Priority", slot(2));
    MMS_LinkedList_AddField(list, "Date", slot(3));
    EXPECT_EQ(MMS_LinkedList_AddFieldToPos(list, "X-Mms-Limit", slot(4), 0), 1U);
    EXPECT_EQ(MMS_LinkedList_AddFieldToPos(list, "X-Mms-Start", slot(5), 4), 1U);
    EXPECT_EQ(MMS_LinkedList_AddFieldToPos(list, "Content", slot(6), 2), 1U);
    EXPECT_EQ(MMS_LinkedList_AddFieldToPos(list, "Content", slot(7), 7), 0U);
    EXPECT_EQ(MMS_LinkedList_AddFieldToPos(list, "Content", slot(7), UINT32_MAX), 0U);
    EXPECT_EQ(ids(list), (std::vector{55, 8, 50, 21, 8, 51}));

    uint16_t position = 99;
    EXPECT_EQ(MMS_LinkedList_FindFieldByName(list, "DATE", &position), 8);
    EXPECT_EQ(position, 1) << "the first of two";
    EXPECT_EQ(MMS_LinkedList_FindFieldByName(list, "X-Mms-Start", &position), 51);
    EXPECT_EQ(position, 5);
    for (const char *absent : {"Subject", "X-Unknown"}) {
        position = 99;
        EXPECT_EQ(MMS_LinkedList_FindFieldByName(list, absent, &position), 0);
        EXPECT_EQ(position, 6);
    }
    EXPECT_EQ(slot_value(MMS_LinkedList_FindFieldByPos(list, 4)), 3U);
    EXPECT_EQ(MMS_LinkedList_FindFieldByPos(list, 6), nullptr);
    EXPECT_EQ(MMS_LinkedList_DelFieldByPos(list, 6), 0U);
    EXPECT_EQ(MMS_LinkedList_DelFieldByPos(list, 0), 1U);
    EXPECT_EQ(MMS_LinkedList_DelFieldByPos(list, 4), 1U);
    EXPECT_EQ(ids(list), (std::vector{8, 50, 21, 8}));
    EXPECT_EQ(Compare_FieldList(MMS_LinkedList_FindFieldByPos(list, 2),
                                MMS_LinkedList_FindFieldByPos(list, 1)),
              21 - 50);

    MMS_LinkedList_AddField(list, "X-Unknown", slot(9));
    EXPECT_EQ(MMS_LinkedList_FindFieldByName(list, "X-Unknown", &position), 0)
        << "an unknown name is never found";
}

// Entity, mailbox and parameter lists differ in what they carry alone.
template <class Record, auto create_list, auto destroy_list, auto count, auto add, auto find,
          auto del, auto make>
void check_node_list() {
    const std::unique_ptr<slList, test::Destroyer<destroy_list>> list(create_list());
    EXPECT_EQ(list->pCmpFn, _slList_void_cmp);
    EXPECT_EQ(count(list.get()), 0);
    EXPECT_EQ(find(list.get(), 0), nullptr);
    std::vector<Record *> records;
    for (uint32_t i = 0; i < limit; ++i) {
        records.push_back(make());
        ASSERT_EQ(add(list.get(), records.back(), static_cast<uint16_t>(i)), 1U);
    }
    EXPECT_EQ(count(list.get()), limit);
    Record *const extra = make();
    EXPECT_EQ(add(list.get(), extra, 0), 0U) << "the caller keeps the record";
    EXPECT_EQ(count(list.get()), limit);
    EXPECT_EQ(find(list.get(), 0), records[0]);
    EXPECT_EQ(find(list.get(), limit - 1), records[limit - 1]);
    EXPECT_EQ(find(list.get(), limit), nullptr);
    EXPECT_EQ(del(list.get(), limit), 0U);
    EXPECT_EQ(del(list.get(), UINT32_MAX), 0U);
    EXPECT_EQ(del(list.get(), 1), 1U);
    EXPECT_EQ(del(list.get(), 0), 1U);
    EXPECT_EQ(find(list.get(), 0), records[2]);
    EXPECT_EQ(add(list.get(), extra, limit - 2), 1U);
    EXPECT_EQ(find(list.get(), limit - 2), extra);
    EXPECT_EQ(count(list.get()), limit - 1);
}

TEST(NodeLists, EntityList) {
    constexpr auto add = [](MMS_EntityList *list, MMS_Entity *entity, uint16_t expected) {
        uint16_t position = 99;
        const uint32_t status = MMS_LinkedList_AddEntity(list, entity, &position);
        EXPECT_TRUE(status == 0 || position == expected);
        return status;
    };
    check_node_list<MMS_Entity, MMS_LinkedList_CreateEntityList, MMS_LinkedList_DestroyEntityList,
                    MMS_LinkedList_GetEntityCount, add, MMS_LinkedList_FindEntityByPos,
                    MMS_LinkedList_DelEntityByPos, [] { return MMS_Entity_Create(); }>();
}

TEST(NodeLists, MailboxList) {
    constexpr auto add = [](MMS_MailboxList *list, MMS_Mailbox *mailbox, uint16_t) {
        return MMS_LinkedList_AddMailbox(list, mailbox);
    };
    check_node_list<MMS_Mailbox, MMS_LinkedList_CreateMailboxList,
                    MMS_LinkedList_DestroyMailboxList, MMS_LinkedList_GetMailboxCount, add,
                    MMS_LinkedList_FindMailboxByPos, MMS_LinkedList_DelMailboxByPos,
                    [] { return MMS_CreateMailbox(128, test::heap_text("n"), nullptr); }>();
}

TEST(NodeLists, ParameterList) {
    constexpr auto add = [](MMS_ParameterList *list, MMS_Parameter *parameter, uint16_t) {
        return MMS_LinkedList_AddParameter(list, parameter);
    };
    check_node_list<MMS_Parameter, MMS_LinkedList_CreateParameterList,
                    MMS_LinkedList_DestroyParameterList, MMS_LinkedList_GetParameterCount, add,
                    MMS_LinkedList_FindParameterByPos, MMS_LinkedList_DelParameterByPos,
                    [] { return MMS_CreateParameter("X-Foo", "1"); }>();
}

TEST(NodeLists, ParameterByName) {
    const test::ParameterListPtr list(MMS_LinkedList_CreateParameterList());
    for (const char *value : {"first", "second"}) {
        MMS_LinkedList_AddParameter(list.get(), MMS_CreateParameter(nullptr, "nameless"));
        MMS_LinkedList_AddParameter(list.get(), MMS_CreateParameter("X-Foo", value));
        MMS_LinkedList_AddParameter(list.get(), MMS_CreateParameter("Charset", value));
    }
    const auto find = [&](const char *name) {
        return MMS_LinkedList_FindParameterByAttribute(list.get(), name);
    };
    EXPECT_EQ(find("charset"), MMS_LinkedList_FindParameterByPos(list.get(), 2));
    EXPECT_EQ(find("x-foo"), MMS_LinkedList_FindParameterByPos(list.get(), 1));
    EXPECT_EQ(find("Name"), nullptr);
}

// Every way to put a field into a full list; replacing a field that is there needs no room.
TEST(FieldList, FullListRefusesNewFields) {
    const test::ContainerPtr container(MMS_Container_Create());
    MMS_Entity *const entity = test::add_entity(container.get());
    MMS_FieldList *const list = entity->pFieldList;
    MMSLib_SetXMmsTransactionId(container.get(), "old");
    MMSLib_SetGenericTextField(entity, "X-Old", "old");
    for (uint32_t i = 2; i < limit; ++i) {
        ASSERT_EQ(MMS_LinkedList_AddField(list, "Date", slot(i)), 1U);
    }
    const test::EncodedStringPtr subject(MMS_CreateEncodedString("kept", nullptr));
    EXPECT_EQ(MMS_LinkedList_AddField(list, "Subject", subject.get()), 0U);
    EXPECT_EQ(MMS_LinkedList_AddFieldToPos(list, "Subject", subject.get(), 0), 0U);
    EXPECT_EQ(MMS_SetField(entity, "Subject", subject.get()), 0U);
    EXPECT_EQ(MMSLib_SetSubject(container.get(), subject.get()), 0U);
    EXPECT_EQ(MMS_SetContentId(entity, "id"), 0U);
    EXPECT_EQ(MMSLib_SetXMmsGenericTextField(container.get(), "X-Mms-Applic-ID", "id"), 0U);
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, "X-New", "new"), 0U);
    EXPECT_EQ(MMS_LinkedList_GetFieldCount(list), limit);
    EXPECT_STREQ(subject->pText, "kept");

    EXPECT_EQ(MMS_SetField(entity, "Date", slot(7)), 1U);
    EXPECT_EQ(slot_value(MMS_LinkedList_FindFieldByPos(list, 2)), 7U);
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, "x-old", "new"), 1U);
    EXPECT_STREQ(MMSLib_GetGenericTextField(entity, "X-Old"), "new");
    EXPECT_EQ(MMSLib_SetXMmsTransactionId(container.get(), "new"), 1U);
    EXPECT_STREQ(MMSLib_GetXMmsTransactionId(container.get()), "new");
    EXPECT_EQ(MMS_LinkedList_FindFieldByPos(list, limit - 1)->fieldId, 28);
    EXPECT_EQ(MMS_LinkedList_GetFieldCount(list), limit);
}

} // namespace
