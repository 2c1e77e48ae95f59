#include <algorithm>
#include <functional>

#include <gtest/gtest.h>

#include "encoder/messages.hpp"

namespace {

using namespace test;

// The accessors of one header, with two good values to tell apart, 0 and 1.
struct Accessors {
    int id;
    std::function<uint32_t(MMS_Container *, int)> set;
    std::function<int(const MMS_Container *)> get; // the value held, or `absent`
    uint32_t (*del)(MMS_Container *);
    std::function<uint32_t(MMS_Container *)> refuse; // sets a value that is no good
};

constexpr int absent = -1;

using Deleter = uint32_t (*)(MMS_Container *);

Accessors trio(int id, uint8_t (*get)(const MMS_Container *),
               uint32_t (*set)(MMS_Container *, uint8_t), Deleter del) {
    return {id,
            [=](MMS_Container *c, int value) { return set(c, static_cast<uint8_t>(128 + value)); },
            [=](const MMS_Container *c) { return get(c) != 0 ? get(c) - 128 : absent; }, del,
            [=](MMS_Container *c) { return set(c, 127) + set(c, 255); }};
}

Accessors trio(int id, const char *(*get)(const MMS_Container *),
               uint32_t (*set)(MMS_Container *, const char *), Deleter del) {
    return {id, [=](MMS_Container *c, int value) { return set(c, std::to_string(value).c_str()); },
            [=](const MMS_Container *c) { return get(c) != nullptr ? std::stoi(get(c)) : absent; },
            del, [=](MMS_Container *c) { return set(c, nullptr); }};
}

Accessors trio(int id, uint32_t (*get)(const MMS_Container *, uint32_t *),
               uint32_t (*set)(MMS_Container *, uint32_t), Deleter del) {
    return {id, [=](MMS_Container *c, int value) { return set(c, value == 0 ? 0 : UINT32_MAX); },
            [=](const MMS_Container *c) {
                uint32_t value = 7;
                const uint32_t found = get(c, &value);
                return found == 0 && value == 7 ? absent : value == UINT32_MAX ? 1 : int(value);
            },
            del, [](MMS_Container *) { return 0U; }};
}

// Records, of which the second argument makes two; they are told apart by their addresses.
template <class Record>
Accessors trio(int id, Record *(*get)(const MMS_Container *),
               uint32_t (*set)(MMS_Container *, Record *), Deleter del) {
    static const void *held[2];
    return {
        id,
        [=](MMS_Container *c, int value) {
            void *record = nullptr;
            if constexpr (std::is_same_v<Record, MMS_Group>) {
                record = new_group("a");
            } else if constexpr (std::is_same_v<Record, MMS_ContentType>) {
                record = new_type("a/b");
            } else if constexpr (std::is_same_v<Record, MMS_SpecialTime>) {
                record = MMS_CreateSpecialTime(1, 1);
            } else {
                record = MMS_CreateEncodedString("a", nullptr);
            }
            held[value] = record;
            const uint32_t status = set(c, static_cast<Record *>(record));
            if (status == 0) { // it is still the caller's
                const EntityPtr owner(MMS_Entity_Create());
                MMS_SetField(owner.get(), MMS_SearchFieldMapForName(static_cast<uint8_t>(id)),
                             record);
            }
            return status;
        },
        [=](const MMS_Container *c) {
            return get(c) == nullptr ? absent : get(c) == held[1] ? 1 : get(c) == held[0] ? 0 : 2;
        },
        del, [=](MMS_Container *c) { return set(c, nullptr); }};
}

Accessors version() {
    return {20,
            [](MMS_Container *c, int value) {
                return MMSLib_SetXMmsVersion(c, value == 0 ? 1 : 7, value == 0 ? 2 : 14);
            },
            [](const MMS_Container *c) {
                uint8_t major = 77;
                uint8_t minor = 77;
                const int octet = MMSLib_GetXMmsVersion(c, &major, &minor);
                const int all = octet << 16 | major << 8 | minor;
                return all == 0x120102 ? 0 : all == 0x7E070E ? 1 : all == 0x4D4D ? absent : 2;
            },
            MMSLib_DelXMmsVersion,
            [](MMS_Container *c) {
                return MMSLib_SetXMmsVersion(c, 0, 2) + MMSLib_SetXMmsVersion(c, 8, 2) +
                       MMSLib_SetXMmsVersion(c, 1, 15);
            }};
}

#define ACCESSORS(id, suffix) trio(id, MMSLib_Get##suffix, MMSLib_Set##suffix, MMSLib_Del##suffix)

const Accessors all[] = {version(),
                         ACCESSORS(19, XMmsMessageType),
                         ACCESSORS(28, XMmsTransactionId),
                         ACCESSORS(7, ContentType),
                         ACCESSORS(12, To),
                         ACCESSORS(2, Cc),
                         ACCESSORS(1, Bcc),
                         ACCESSORS(9, From),
                         ACCESSORS(11, Subject),
                         ACCESSORS(27, XMmsStatus),
                         ACCESSORS(17, XMmsMessageClass),
                         ACCESSORS(21, XMmsPriority),
                         ACCESSORS(13, XMmsContentLocation),
                         ACCESSORS(8, Date),
                         ACCESSORS(14, XMmsDeliveryReport),
                         ACCESSORS(15, XMmsDeliveryTime),
                         ACCESSORS(16, XMmsExpiry),
                         ACCESSORS(10, MessageId),
                         ACCESSORS(18, XMmsMessageSize),
                         ACCESSORS(22, XMmsReadReport),
                         ACCESSORS(24, XMmsResponseStatus),
                         ACCESSORS(25, XMmsResponseText),
                         ACCESSORS(26, XMmsSenderVisibility),
                         ACCESSORS(31, XMmsReadStatus),
                         ACCESSORS(61, XMmsDrmContent)};

constexpr int start = 51;
constexpr int limit = 55;
constexpr int transaction_id = 28;
constexpr int content_type = 7;

TEST(Accessors, SetReplaceRefuseAndDelete) {
    for (const Accessors &header : all) {
        SCOPED_TRACE(header.id);
        const ContainerPtr owner(MMS_Container_Create());
        MMS_Container *const container = owner.get();
        EXPECT_EQ(header.set(container, 0), 0U) << "there is no entity";
        MMS_Entity *const first = add_entity(container);
        MMS_Entity *const second = add_entity(container);
        MMS_SetField(first, "X-Mms-Start", slot(1));
        EXPECT_EQ(header.get(container), absent);
        EXPECT_EQ(header.del(container) + header.refuse(container), 0U);
        EXPECT_EQ(header.set(container, 0), 1U);
        EXPECT_EQ(header.get(container), 0);
        MMS_SetField(first, "X-Mms-Limit", slot(2));
        EXPECT_EQ(header.refuse(container), 0U);
        EXPECT_EQ(header.get(container), 0);
        EXPECT_EQ(header.set(container, 1), 1U);
        EXPECT_EQ(header.get(container), 1);
        EXPECT_EQ(field_ids(first), header.id == transaction_id
                                        ? (std::vector{start, limit, header.id})
                                        : (std::vector{start, header.id, limit}));

        // The header's entity is the first that has it; Content-Type alone is always set in the
        // first.
        slIterator field;
        slIterator_Init(&field, first->pFieldList);
        slIterator_Go(&field, header.id == transaction_id ? 2 : 1);
        slList_InsertLast(second->pFieldList, slIterator_RemoveCurrent(&field));
        EXPECT_EQ(header.get(container), 1);
        EXPECT_EQ(header.set(container, 0), 1U);
        EXPECT_EQ(header.get(container), 0);
        EXPECT_EQ(field_ids(first).size(), header.id == content_type ? 3U : 2U);
        EXPECT_EQ(header.del(container), 1U);
        EXPECT_EQ(header.get(container), header.id == content_type ? 1 : absent);
        EXPECT_EQ(header.del(container), header.id == content_type ? 1U : 0U);
    }
    const MessagePtr message = new_message(0x84);
    EXPECT_EQ(MMSLib_SetXMmsRetrieveStatus(message->pContainer, 0x81), 0U);
    EXPECT_EQ(MMSLib_SetXMmsRetrieveStatus(message->pContainer, 0xE3), 1U);
    EXPECT_EQ(MMSLib_GetXMmsRetrieveStatus(message->pContainer), 0xE3);
    EXPECT_EQ(MMSLib_DelXMmsRetrieveStatus(message->pContainer), 1U);
    EXPECT_EQ(MMS_GetContentLength(MMS_GetEntity(message->pContainer, 0)), 0U);
}

TEST(Accessors, AnyTextHeaderByName) {
    const ContainerPtr owner(MMS_Container_Create());
    MMS_Container *const container = owner.get();
    const auto set = [&](const char *name, const char *value) {
        return MMSLib_SetXMmsGenericTextField(container, name, value);
    };
    const auto get = [&](const char *name) {
        return MMSLib_GetXMmsGenericTextField(container, name);
    };
    const auto del = [&](const char *name) {
        return MMSLib_DelXMmsGenericTextField(container, name);
    };
    EXPECT_EQ(set("X-Mms-Applic-ID", "a"), 0U) << "there is no entity";
    MMS_Entity *const first = add_entity(container);
    MMS_SetField(first, "X-Unknown", slot(3)); // a field of id 0
    for (int id = 0; id <= 61; ++id) {
        const char *const name = MMS_SearchFieldMapForName(static_cast<uint8_t>(id));
        if (set(name, "first") == 1) {
            EXPECT_EQ(set(name, get(name) + 2), 1U);
            EXPECT_EQ(set(name, nullptr), 0U);
            EXPECT_STREQ(get(name), "rst");
        }
    }
    EXPECT_EQ(field_ids(first), (std::vector{0, 5, 6, 10, 13, 17, 28, 56, 57}));
    EXPECT_EQ(set("x-mms-transaction-id", "in place"), 1U);
    EXPECT_EQ(field_ids(first), (std::vector{0, 5, 6, 10, 13, 17, 28, 56, 57}));
    for (const char *name : {"X-Unknown", "", static_cast<const char *>(nullptr)}) {
        EXPECT_EQ(set(name, "text") + del(name), 0U);
        EXPECT_EQ(get(name), nullptr);
    }
    EXPECT_EQ(del("MESSAGE-ID"), 1U);
    EXPECT_EQ(del("Message-Id"), 0U);
}

class GenericEntityHeaders : public testing::Test {
protected:
    // The entity's generic headers as "name=value" and its other fields by id.
    std::string fields() const {
        std::string result;
        for (uint32_t i = 0; i < MMS_LinkedList_GetFieldCount(entity->pFieldList); ++i) {
            const MMS_Field *const field = MMS_LinkedList_FindFieldByPos(entity->pFieldList, i);
            const auto *const data = static_cast<const MMS_GenericData *>(field->pValue);
            result += field->fieldId == 60
                          ? shown(data->pHeaderName) + "=" + shown(data->pHeaderValue) + " "
                          : std::to_string(field->fieldId) + " ";
        }
        return result;
    }

    // A generic header next to others of its name.
    void append(const char *name, const char *value) {
        const EntityPtr other(MMS_Entity_Create());
        MMSLib_SetGenericTextField(other.get(), name, value);
        slList_InsertLast(entity->pFieldList, slList_RemoveFirst(other->pFieldList));
    }

    EntityPtr owner{MMS_Entity_Create()};
    MMS_Entity *entity = owner.get();
};

TEST_F(GenericEntityHeaders, AreKeptByName) {
    EXPECT_EQ(MMSLib_GetGenericTextField(entity, nullptr), nullptr);
    EXPECT_EQ(MMSLib_DelGenericTextField(entity, nullptr), 0U);
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, nullptr, "1"), 0U);
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, "X-A", nullptr), 0U);
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, std::string("X-A").c_str(), "1"), 1U);
    MMS_SetField(entity, "Date", slot(1));
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, "X-B", "2"), 1U);
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, "Date", "3"), 1U);
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, "x-a", "4"), 1U);
    EXPECT_EQ(fields(), "x-a=4 8 X-B=2 Date=3 ");
    EXPECT_STREQ(MMSLib_GetGenericTextField(entity, "date"), "3");
    EXPECT_EQ(MMSLib_GetGenericTextField(entity, "X-C"), nullptr);
    EXPECT_EQ(MMSLib_DelGenericTextField(entity, "X-C"), 0U);
    EXPECT_EQ(MMSLib_DelGenericTextField(entity, "Date"), 1U);
    EXPECT_EQ(MMSLib_DelGenericTextField(entity, "Date"), 0U) << "the header proper stays";
    EXPECT_EQ(fields(), "x-a=4 8 X-B=2 ");
}

TEST_F(GenericEntityHeaders, OfEqualNameAreOneToSetAndDelete) {
    append("X-A", "2");
    MMS_SetField(entity, "Date", slot(1));
    append("x-a", "4");
    append("X-C", "3");
    append("X-A", "5");
    EXPECT_STREQ(MMSLib_GetGenericTextField(entity, "X-a"), "2");
    const MMS_Field *const last = static_cast<const MMS_Field *>(entity->pFieldList->pLast);
    const auto *const data = static_cast<const MMS_GenericData *>(last->pValue);
    // Name and value may be those of a header that goes.
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, data->pHeaderName, data->pHeaderValue), 1U);
    EXPECT_EQ(fields(), "X-A=5 8 X-C=3 ");
    append("X-A", "6");
    EXPECT_EQ(MMSLib_DelGenericTextField(entity, "X-A"), 1U);
    EXPECT_EQ(fields(), "8 X-C=3 ");
}

TEST(Message, ReadyMadeSendRequest) {
    const MessagePtr message(MMS_CreateMMS());
    ASSERT_EQ(MMS_GetEntityCount(message->pContainer), 1);
    EXPECT_EQ(encode(message.get()), "8C80 98'blaah' 8D92 890181"_wire);
    EXPECT_TRUE(message->pPdu == nullptr && message->pduLength == 0 && message->isDecoded == 0);
}

} // namespace
