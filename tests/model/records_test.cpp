#include <gtest/gtest.h>

#include "support/support.hpp"

namespace {

template <auto... destroy>
void destroy_null() {
    (destroy(nullptr), ...);
}

TEST(Records, DestroyAcceptsNull) {
    destroy_null<
        MMS_DestroyEncodedString, MMS_DestroyMailbox, MMS_DestroyParameter, MMS_DestroyContentType,
        MMS_DestroyContentDisposition, MMS_DestroySpecialTime, MMS_Group_Destroy,
        MMS_DestroyGenericData, MMS_Entity_Destroy, MMS_Container_Destroy, MMSLib_Message_Destroy,
        MMS_Decoder_Destroy, MMS_LinkedList_DestroyFieldList, MMS_LinkedList_DestroyEntityList,
        MMS_LinkedList_DestroyMailboxList, MMS_LinkedList_DestroyParameterList, Dispose_FieldList,
        Dispose_EntityList, Dispose_MailboxList, Dispose_ParameterList>();
}

TEST(Records, TextsAreCopiedAndCharacterSetsBorrowed) {
    char text[] = "text";
    const test::EncodedStringPtr string(MMS_CreateEncodedString(text, MMS_CHARSET_UTF_8));
    const test::ContentTypePtr type(MMS_CreateContentType(text));
    const test::ContentDispositionPtr disposition(MMS_CreateContentDisposition(text, text));
    text[0] = '#';
    for (const char *copy :
         {string->pText, type->pMediaType, disposition->pDisposition, disposition->pFilename}) {
        EXPECT_STREQ(copy, "text");
    }
    EXPECT_EQ(string->pCharset, MMS_CHARSET_UTF_8);
    const test::GroupPtr group(MMS_Group_Create());
    EXPECT_STREQ(MMS_SetDisplayName(group.get(), std::string("first name").c_str()), "first name");
    MMS_SetDisplayName(group.get(), MMS_GetDisplayName(group.get()) + 6);
    EXPECT_STREQ(MMS_GetDisplayName(group.get()), "name");
}

TEST(Records, ParameterNamesOfTheMapAreItsConstants) {
    const std::pair<const char *, const char *> rows[] = {
        {"charset", MMS_CHARSET_STRING},
        {"FILENAME", MMS_FILENAME_STRING},
        {"Q", MMS_Q_STRING},
        {"X-Foo", nullptr},
        {"", nullptr},
        {"Charset ", nullptr},
    };
    for (const auto &[name, constant] : rows) {
        const test::ParameterPtr parameter(MMS_CreateParameter(name, "value"));
        EXPECT_STRCASEEQ(parameter->pName, name);
        EXPECT_TRUE(parameter->pName == constant || constant == nullptr);
        EXPECT_STREQ(parameter->pValue, "value");
    }
    const test::ParameterPtr empty(MMS_CreateParameter(nullptr, nullptr));
    EXPECT_TRUE(empty->pName == nullptr && empty->pValue == nullptr);
}

} // namespace
