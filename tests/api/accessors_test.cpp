#include <functional>

#include "decoder/render.hpp"
#include "encoder/messages.hpp"

namespace {

using namespace test;

constexpr int start = 51;
constexpr int limit = 55;
constexpr int transaction_id = 28;

using Del = uint32_t (*)(MMS_Container *);

// A header set, replaced and deleted between two others. `holds` is whether it has the value set.
void check(int id, const std::function<uint32_t(MMS_Container *)> &set,
           const std::function<bool(const MMS_Container *)> &holds, Del del) {
    SCOPED_TRACE(id);
    const ContainerPtr container(MMS_Container_Create());
    MMS_Entity *const entity = add_entity(container.get());
    MMS_SetField(entity, "X-Mms-Start", slot(1));
    EXPECT_FALSE(holds(container.get()));
    EXPECT_EQ(del(container.get()), 0U);
    EXPECT_EQ(set(container.get()), 1U);
    EXPECT_TRUE(holds(container.get()));
    MMS_SetField(entity, "X-Mms-Limit", slot(2));
    EXPECT_EQ(set(container.get()), 1U);
    EXPECT_TRUE(holds(container.get()));
    EXPECT_EQ(field_ids(entity), id == transaction_id ? (std::vector{start, limit, id})
                                                      : (std::vector{start, id, limit}));
    EXPECT_EQ(del(container.get()), 1U);
    EXPECT_FALSE(holds(container.get()));
}

void check(int id, uint8_t (*get)(const MMS_Container *), uint32_t (*set)(MMS_Container *, uint8_t),
           Del del) {
    check(
        id, [=](MMS_Container *c) { return set(c, 127) + set(c, 255) + set(c, 128); },
        [=](const MMS_Container *c) { return get(c) == 128; }, del);
}

void check(int id, const char *(*get)(const MMS_Container *),
           uint32_t (*set)(MMS_Container *, const char *), Del del) {
    check(
        id, [=](MMS_Container *c) { return set(c, "text") + set(c, nullptr); },
        [=](const MMS_Container *c) { return shown(get(c)) == "text"; }, del);
}

void check(int id, uint32_t (*get)(const MMS_Container *, uint32_t *),
           uint32_t (*set)(MMS_Container *, uint32_t), Del del) {
    check(
        id, [=](MMS_Container *c) { return set(c, 0); },
        [=](const MMS_Container *c) {
            uint32_t value = 7; // left as it is when there is none
            return get(c, &value) == 1 ? value == 0 : value != 7;
        },
        del);
}

template <class Record>
Record *make();
template <>
MMS_Group *make() {
    return new_group("a");
}
template <>
MMS_ContentType *make() {
    return new_type("a/b");
}
template <>
MMS_SpecialTime *make() {
    return MMS_CreateSpecialTime(1, 1);
}
template <>
MMS_EncodedString *make() {
    return MMS_CreateEncodedString("a", nullptr);
}

template <class Record>
void check(int id, Record *(*get)(const MMS_Container *),
           uint32_t (*set)(MMS_Container *, Record *), Del del) {
    const Record *made = nullptr;
    check(
        id,
        [&](MMS_Container *c) {
            Record *const record = make<Record>();
            made = record;
            return set(c, record) + set(c, nullptr);
        },
        [&](const MMS_Container *c) { return made != nullptr && get(c) == made; }, del);
}

#define ACCESSORS(suffix) MMSLib_Get##suffix, MMSLib_Set##suffix, MMSLib_Del##suffix

TEST(Accessors, SetReplaceRefuseAndDelete) {
    check(19, ACCESSORS(XMmsMessageType));
    check(transaction_id, ACCESSORS(XMmsTransactionId));
    check(7, ACCESSORS(ContentType));
    check(12, ACCESSORS(To));
    check(2, ACCESSORS(Cc));
    check(1, ACCESSORS(Bcc));
    check(9, ACCESSORS(From));
    check(11, ACCESSORS(Subject));
    check(27, ACCESSORS(XMmsStatus));
    check(17, ACCESSORS(XMmsMessageClass));
    check(21, ACCESSORS(XMmsPriority));
    check(13, ACCESSORS(XMmsContentLocation));
    check(8, ACCESSORS(Date));
    check(14, ACCESSORS(XMmsDeliveryReport));
    check(15, ACCESSORS(XMmsDeliveryTime));
    check(16, ACCESSORS(XMmsExpiry));
    check(10, ACCESSORS(MessageId));
    check(18, ACCESSORS(XMmsMessageSize));
    check(22, ACCESSORS(XMmsReadReport));
    check(24, ACCESSORS(XMmsResponseStatus));
    check(25, ACCESSORS(XMmsResponseText));
    check(26, ACCESSORS(XMmsSenderVisibility));
    check(29, ACCESSORS(XMmsRetrieveStatus));
    check(31, ACCESSORS(XMmsReadStatus));
    check(61, ACCESSORS(XMmsDrmContent));
    check(
        20,
        [](MMS_Container *c) {
            return MMSLib_SetXMmsVersion(c, 7, 14) + MMSLib_SetXMmsVersion(c, 0, 2) +
                   MMSLib_SetXMmsVersion(c, 8, 2) + MMSLib_SetXMmsVersion(c, 1, 15);
        },
        [](const MMS_Container *c) {
            uint8_t parts[2] = {1, 2};
            const int version = MMSLib_GetXMmsVersion(c, &parts[0], &parts[1]);
            return version == 0x7E ? parts[0] == 7 && parts[1] == 14 : parts[0] != 1;
        },
        MMSLib_DelXMmsVersion);
}

// The header's entity is the first that has it; Content-Type alone is always set in the first.
TEST(Accessors, EntityOfTheHeader) {
    const ContainerPtr owner(MMS_Container_Create());
    MMS_Container *const container = owner.get();
    EXPECT_EQ(MMSLib_SetDate(container, 1) + MMSLib_SetMessageId(container, "m") +
                  MMSLib_SetXMmsTransactionId(container, "t") +
                  MMSLib_SetXMmsGenericTextField(container, "Message-Id", "m") +
                  MMSLib_SetContentType(container, ContentTypePtr(new_type("a/b")).get()),
              0U)
        << "there is no entity";
    MMS_Entity *const first = add_entity(container);
    MMS_Entity *const second = add_entity(container);
    MMS_SetField(second, "Date", slot(1));
    MMS_SetField(second, "Message-Id", heap_text("m"));
    MMS_SetField(second, "X-Mms-Transaction-Id", heap_text("t"));
    MMS_SetContentType(second, new_type("a/b"));
    EXPECT_STREQ(MMSLib_GetContentType(container)->pMediaType, "a/b");
    EXPECT_EQ(MMSLib_SetDate(container, 2) + MMSLib_SetMessageId(container, "n") +
                  MMSLib_SetXMmsTransactionId(container, "u") +
                  MMSLib_SetContentType(container, new_type("c/d")),
              4U);
    EXPECT_EQ(shown(container), "(Content-Type=c/d)(Date=2, Message-Id=n, Content-Type=a/b, "
                                "X-Mms-Transaction-Id=u)");
    EXPECT_EQ(MMSLib_DelDate(container) + MMSLib_DelContentType(container), 2U);
    EXPECT_EQ(field_ids(first).size(), 0U);
    EXPECT_EQ(field_ids(second), (std::vector{10, 7, transaction_id}));
}

TEST(Accessors, AnyTextHeaderByName) {
    const MessagePtr message = new_message(0x84);
    MMS_Container *const container = message->pContainer;
    MMS_Entity *const first = MMS_GetEntity(container, 0);
    const auto set = [&](const char *name, const char *value) {
        return MMSLib_SetXMmsGenericTextField(container, name, value);
    };
    const auto get = [&](const char *name) {
        return MMSLib_GetXMmsGenericTextField(container, name);
    };
    MMS_SetField(first, "X-Unknown", slot(3)); // a field of id 0
    for (int id = 0; id <= 61; ++id) {
        const char *const name = MMS_SearchFieldMapForName(static_cast<uint8_t>(id));
        if (set(name, "first") == 1) {
            EXPECT_EQ(set(name, get(name) + 2), 1U);
            EXPECT_EQ(set(name, nullptr), 0U);
            EXPECT_STREQ(get(name), "rst");
        }
    }
    EXPECT_EQ(field_ids(first), (std::vector{19, transaction_id, 20, 0, 5, 6, 10, 13, 17, 56, 57}));
    for (const char *name : {"X-Unknown", "", static_cast<const char *>(nullptr)}) {
        EXPECT_EQ(set(name, "text") + MMSLib_DelXMmsGenericTextField(container, name), 0U);
        EXPECT_EQ(get(name), nullptr);
    }
    EXPECT_EQ(MMSLib_DelXMmsGenericTextField(container, "MESSAGE-ID"), 1U);
    EXPECT_EQ(MMSLib_DelXMmsGenericTextField(container, "Message-Id"), 0U);
}

TEST(Accessors, GenericEntityHeaders) {
    const EntityPtr owner(MMS_Entity_Create());
    MMS_Entity *const entity = owner.get();
    EXPECT_EQ(MMSLib_GetGenericTextField(entity, nullptr), nullptr);
    EXPECT_EQ(MMSLib_DelGenericTextField(entity, nullptr), 0U);
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, nullptr, "1"), 0U);
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, "X-A", nullptr), 0U);
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, std::string("X-A").c_str(), "1"), 1U);
    MMS_SetField(entity, "Date", slot(1));
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, "Date", "3"), 1U);
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, "x-a", "4"), 1U);
    EXPECT_EQ(shown(entity), "'x-a'=4, Date=1, 'Date'=3");
    EXPECT_STREQ(MMSLib_GetGenericTextField(entity, "date"), "3");
    EXPECT_EQ(MMSLib_GetGenericTextField(entity, "X-C"), nullptr);
    EXPECT_EQ(MMSLib_DelGenericTextField(entity, "Date"), 1U);
    EXPECT_EQ(MMSLib_DelGenericTextField(entity, "Date"), 0U) << "the header proper stays";

    // Headers of equal name are one to set and delete.
    const auto append = [entity](const char *name, const char *value) {
        const EntityPtr other(MMS_Entity_Create());
        MMSLib_SetGenericTextField(other.get(), name, value);
        slList_InsertLast(entity->pFieldList, slList_RemoveFirst(other->pFieldList));
    };
    append("X-B", "2");
    append("X-A", "3");
    append("X-A", "5");
    EXPECT_STREQ(MMSLib_GetGenericTextField(entity, "X-A"), "4");
    const auto *const last = static_cast<const MMS_Field *>(entity->pFieldList->pLast);
    const auto *const data = static_cast<const MMS_GenericData *>(last->pValue);
    // Name and value may be those of a header that goes.
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, data->pHeaderName, data->pHeaderValue), 1U);
    EXPECT_EQ(shown(entity), "'X-A'=5, Date=1, 'X-B'=2");
    append("x-a", "6");
    EXPECT_EQ(MMSLib_DelGenericTextField(entity, "X-A"), 1U);
    EXPECT_EQ(shown(entity), "Date=1, 'X-B'=2");
}

TEST(Message, ReadyMadeSendRequest) {
    const MessagePtr message(MMS_CreateMMS());
    EXPECT_EQ(encode(message.get()), "8C80 98'blaah' 8D92 890181"_wire);
    EXPECT_TRUE(message->pPdu == nullptr && message->pduLength == 0 && message->isDecoded == 0);
}

} // namespace
