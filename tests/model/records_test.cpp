#include <gtest/gtest.h>

#include "support/support.hpp"

namespace {

TEST(Records, DestroyAcceptsNull) {
    MMS_DestroyEncodedString(nullptr);
    MMS_DestroyMailbox(nullptr);
    MMS_DestroyParameter(nullptr);
    MMS_DestroyContentType(nullptr);
    MMS_DestroyContentDisposition(nullptr);
    MMS_DestroySpecialTime(nullptr);
    MMS_Group_Destroy(nullptr);
    MMS_DestroyGenericData(nullptr);
    MMS_Entity_Destroy(nullptr);
    MMS_Container_Destroy(nullptr);
    MMSLib_Message_Destroy(nullptr);
    MMS_Decoder_Destroy(nullptr);
    MMS_LinkedList_DestroyFieldList(nullptr);
    MMS_LinkedList_DestroyEntityList(nullptr);
    MMS_LinkedList_DestroyMailboxList(nullptr);
    MMS_LinkedList_DestroyParameterList(nullptr);
}

TEST(Records, TextsAreCopiedAndCharacterSetsBorrowed) {
    char text[] = "text";
    const test::EncodedStringPtr string(MMS_CreateEncodedString(text, nullptr));
    const test::EncodedStringPtr empty(MMS_CreateEncodedString(nullptr, MMS_CHARSET_UTF_8));
    const test::ContentTypePtr type(MMS_CreateContentType(text));
    const test::ContentDispositionPtr disposition(MMS_CreateContentDisposition(text, text));
    text[0] = '#';
    EXPECT_STREQ(string->pText, "text");
    EXPECT_EQ(string->pCharset, nullptr);
    EXPECT_EQ(empty->pText, nullptr);
    EXPECT_EQ(empty->pCharset, MMS_CHARSET_UTF_8);
    EXPECT_STREQ(type->pMediaType, "text");
    EXPECT_EQ(MMS_LinkedList_GetParameterCount(type->pParameters), 0);
    EXPECT_STREQ(disposition->pDisposition, "text");
    EXPECT_STREQ(disposition->pFilename, "text");
    EXPECT_NE(disposition->pFilename, disposition->pDisposition);
    EXPECT_EQ(disposition->pCharset, nullptr);

    const test::ContentTypePtr no_type(MMS_CreateContentType(nullptr));
    EXPECT_EQ(no_type->pMediaType, nullptr);
    ASSERT_NE(no_type->pParameters, nullptr);
    const test::ContentDispositionPtr nothing(MMS_CreateContentDisposition(nullptr, nullptr));
    EXPECT_EQ(nothing->pDisposition, nullptr);
    EXPECT_EQ(nothing->pFilename, nullptr);
}

TEST(Records, ParameterNamesOfTheMapAreItsConstants) {
    const struct {
        const char *name;
        const char *constant; // null: an own copy
    } rows[] = {
        {"charset", MMS_CHARSET_STRING},
        {"FILENAME", MMS_FILENAME_STRING},
        {"Q", MMS_Q_STRING},
        {"tYPE", MMS_TYPE_STRING},
        {"X-Foo", nullptr},
        {"", nullptr},
        {"Charset ", nullptr},
    };
    for (const auto &row : rows) {
        const test::ParameterPtr parameter(MMS_CreateParameter(row.name, "value"));
        if (row.constant != nullptr) {
            EXPECT_EQ(parameter->pName, row.constant);
        } else {
            EXPECT_NE(parameter->pName, row.name);
            EXPECT_STREQ(parameter->pName, row.name);
        }
        EXPECT_STREQ(parameter->pValue, "value");
        EXPECT_EQ(parameter->pCharset, nullptr);
    }
    const test::ParameterPtr empty(MMS_CreateParameter(nullptr, nullptr));
    EXPECT_EQ(empty->pName, nullptr);
    EXPECT_EQ(empty->pValue, nullptr);
}

TEST(Records, SpecialTimeTokens) {
    const uint32_t rows[][3] = {{0, 5, 129}, {1, 0, 128}, {7, UINT32_MAX, 128}};
    for (const auto &row : rows) {
        const test::SpecialTimePtr time(MMS_CreateSpecialTime(row[0], row[1]));
        EXPECT_EQ(time->value, row[1]);
        EXPECT_EQ(time->token, row[2]);
    }
}

TEST(Records, MailboxAdoptsBothPointers) {
    char *const name = test::heap_text("Name");
    MMS_EncodedString *const address = MMS_CreateEncodedString("a@b", nullptr);
    const test::MailboxPtr mailbox(MMS_CreateMailbox(131, name, address));
    EXPECT_EQ(mailbox->pDisplayName, name);
    EXPECT_EQ(mailbox->pAddress, address);
    EXPECT_EQ(mailbox->type, 131);
    const test::MailboxPtr empty(MMS_CreateMailbox(0, nullptr, nullptr));
    EXPECT_EQ(empty->pAddress, nullptr);
}

TEST(Records, GroupNamesAndMailboxes) {
    const test::GroupPtr owner(MMS_Group_Create());
    MMS_Group *const group = owner.get();
    EXPECT_EQ(MMS_GetDisplayName(group), nullptr);
    EXPECT_EQ(MMS_GetMailboxCount(group), 0);
    EXPECT_EQ(MMS_GetMailbox(group, 0), nullptr);
    EXPECT_EQ(MMS_DelMailbox(group, 0), 0U);

    EXPECT_STREQ(MMS_SetDisplayName(group, std::string("first name").c_str()), "first name");
    const char *const piece = MMS_GetDisplayName(group) + 6;
    EXPECT_EQ(MMS_SetDisplayName(group, piece), group->pDisplayName);
    EXPECT_STREQ(MMS_GetDisplayName(group), "name");

    std::vector<MMS_Mailbox *> boxes;
    for (int i = 0; i < 3; ++i) {
        boxes.push_back(MMS_CreateMailbox(128, nullptr, MMS_CreateEncodedString("a", nullptr)));
        EXPECT_EQ(MMS_AddMailbox(group, boxes.back()), 1U);
    }
    EXPECT_EQ(MMS_GetMailboxCount(group), 3);
    EXPECT_EQ(MMS_DelMailbox(group, 3), 0U);
    EXPECT_EQ(MMS_DelMailbox(group, 1), 1U);
    EXPECT_EQ(MMS_GetMailbox(group, 0), boxes[0]);
    EXPECT_EQ(MMS_GetMailbox(group, 1), boxes[2]);
    EXPECT_EQ(MMS_GetMailbox(group, 2), nullptr);
    EXPECT_EQ(MMS_DelMailbox(group, 1), 1U);
    EXPECT_EQ(MMS_GetMailboxCount(group), 1);
}

TEST(Records, FullGroupLeavesTheMailboxWithTheCaller) {
    const test::GroupPtr group(MMS_Group_Create());
    for (uint32_t i = 0; i < 65535; ++i) {
        ASSERT_EQ(MMS_AddMailbox(group.get(), MMS_CreateMailbox(128, nullptr, nullptr)), 1U);
    }
    const test::MailboxPtr mailbox(MMS_CreateMailbox(128, nullptr, nullptr));
    EXPECT_EQ(MMS_AddMailbox(group.get(), mailbox.get()), 0U);
    EXPECT_EQ(MMS_GetMailboxCount(group.get()), 65535);
}

} // namespace
