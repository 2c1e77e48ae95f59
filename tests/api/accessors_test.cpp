#include <algorithm>
#include <functional>

#include <gtest/gtest.h>

#include "support/support.hpp"

namespace {

using test::add_entity;
using test::ContainerPtr;
using test::field_ids;
using test::MessagePtr;
using test::shown;
using test::slot;

// The accessors of one header, with two good values to tell apart, 0 and 1.
struct Trio {
    int field_id;
    std::function<uint32_t(MMS_Container *, int)> set; // a refused record is released
    std::function<int(const MMS_Container *)> get;     // the good value held, or `absent`
    uint32_t (*del)(MMS_Container *);
    std::function<void(MMS_Container *)> set_refused; // tries every value that is refused
};

constexpr int absent = -1;

#define TRIO(suffix) MMSLib_Get##suffix, MMSLib_Set##suffix, MMSLib_Del##suffix

using Getter = uint8_t (*)(const MMS_Container *);
using Setter = uint32_t (*)(MMS_Container *, uint8_t);
using Deleter = uint32_t (*)(MMS_Container *);

struct Range {
    int lowest, highest;
};

// The good values are the lowest and the highest of all.
Trio octet(int id, Getter get, Setter set, Deleter del, const std::vector<Range> &ranges) {
    const auto accepted = [ranges](int value) {
        bool in = false;
        for (const Range &range : ranges) {
            in = in || (value >= range.lowest && value <= range.highest);
        }
        return in;
    };
    const int low = ranges.front().lowest;
    const int high = ranges.back().highest;
    return {id,
            [=](MMS_Container *container, int value) {
                return set(container, static_cast<uint8_t>(value == 0 ? low : high));
            },
            [=](const MMS_Container *container) {
                const int value = get(container);
                return value == low ? 0 : value == high ? 1 : value == 0 ? absent : value;
            },
            del,
            [=](MMS_Container *container) {
                const int before = get(container);
                for (int value = 0; value < 256; ++value) {
                    SCOPED_TRACE(value);
                    if (!accepted(value)) {
                        EXPECT_EQ(set(container, static_cast<uint8_t>(value)), 0U);
                        EXPECT_EQ(get(container), before);
                    } else if (before != 0) {
                        EXPECT_EQ(set(container, static_cast<uint8_t>(value)), 1U);
                        EXPECT_EQ(get(container), value);
                        EXPECT_EQ(set(container, static_cast<uint8_t>(before)), 1U);
                    }
                }
            }};
}

Trio text(int id, const char *(*get)(const MMS_Container *),
          uint32_t (*set)(MMS_Container *, const char *), Deleter del) {
    return {id,
            [=](MMS_Container *container, int value) {
                return set(container, std::to_string(value).c_str());
            },
            [=](const MMS_Container *container) {
                const char *const value = get(container);
                return value != nullptr ? std::stoi(value) : absent;
            },
            del,
            [=](MMS_Container *container) {
                EXPECT_EQ(set(container, nullptr), 0U);
                if (get(container) != nullptr) { // the stored text may be handed back
                    EXPECT_EQ(set(container, get(container)), 1U);
                }
            }};
}

void make(int value, MMS_Group *&group) {
    group = MMS_Group_Create();
    MMS_SetDisplayName(group, std::to_string(value).c_str());
}
void make(int value, MMS_EncodedString *&string) {
    string = MMS_CreateEncodedString(std::to_string(value).c_str(), MMS_CHARSET_UTF_8);
}
void make(int value, MMS_ContentType *&type) {
    type = MMS_CreateContentType(std::to_string(value).c_str());
}
void make(int value, MMS_SpecialTime *&time) {
    time = MMS_CreateSpecialTime(1, static_cast<uint32_t>(value));
}
int value_of(const MMS_Group *group) { return std::stoi(group->pDisplayName); }
int value_of(const MMS_EncodedString *string) { return std::stoi(string->pText); }
int value_of(const MMS_ContentType *type) { return std::stoi(type->pMediaType); }
int value_of(const MMS_SpecialTime *time) { return static_cast<int>(time->value); }
void destroy(MMS_Group *group) { MMS_Group_Destroy(group); }
void destroy(MMS_EncodedString *string) { MMS_DestroyEncodedString(string); }
void destroy(MMS_ContentType *type) { MMS_DestroyContentType(type); }
void destroy(MMS_SpecialTime *time) { MMS_DestroySpecialTime(time); }

template <class Record>
Trio record(int id, Record *(*get)(const MMS_Container *),
            uint32_t (*set)(MMS_Container *, Record *), Deleter del) {
    return {id,
            [=](MMS_Container *container, int value) {
                Record *made = nullptr;
                make(value, made);
                const uint32_t status = set(container, made);
                if (status == 0) {
                    destroy(made);
                } else {
                    EXPECT_EQ(get(container), made) << "adopted";
                }
                return status;
            },
            [=](const MMS_Container *container) {
                const Record *const held = get(container);
                return held != nullptr ? value_of(held) : absent;
            },
            del, [=](MMS_Container *container) { EXPECT_EQ(set(container, nullptr), 0U); }};
}

Trio number(int id, uint32_t (*get)(const MMS_Container *, uint32_t *),
            uint32_t (*set)(MMS_Container *, uint32_t), Deleter del) {
    return {id,
            [=](MMS_Container *container, int value) {
                return set(container, value == 0 ? 0 : UINT32_MAX);
            },
            [=](const MMS_Container *container) {
                uint32_t value = 4711;
                if (get(container, &value) == 0) {
                    EXPECT_EQ(value, 4711U) << "left as it was";
                    return absent;
                }
                return value == 0 ? 0 : value == UINT32_MAX ? 1 : 2;
            },
            del, [](MMS_Container *) {}};
}

Trio version(int id) {
    return {id,
            [](MMS_Container *container, int value) {
                return value == 0 ? MMSLib_SetXMmsVersion(container, 1, 2)
                                  : MMSLib_SetXMmsVersion(container, 7, 14);
            },
            [](const MMS_Container *container) {
                uint8_t major = 77;
                uint8_t minor = 77;
                const int octet = MMSLib_GetXMmsVersion(container, &major, &minor);
                const int all = octet << 16 | major << 8 | minor;
                return all == 0x120102 ? 0 : all == 0x7E070E ? 1 : all == 0x4D4D ? absent : all;
            },
            MMSLib_DelXMmsVersion,
            [](MMS_Container *container) {
                const int refused[][2] = {{0, 2}, {8, 2}, {1, 15}, {1, 16}, {129, 2}, {255, 255}};
                for (const auto &[major, minor] : refused) {
                    EXPECT_EQ(MMSLib_SetXMmsVersion(container, static_cast<uint8_t>(major),
                                                    static_cast<uint8_t>(minor)),
                              0U)
                        << major << "." << minor;
                }
            }};
}

const std::vector<Trio> &trios() {
    static const std::vector<Trio> all = {
        octet(19, TRIO(XMmsMessageType), {{128, 147}}),
        text(28, TRIO(XMmsTransactionId)),
        version(20),
        record(7, TRIO(ContentType)),
        record(12, TRIO(To)),
        record(2, TRIO(Cc)),
        record(1, TRIO(Bcc)),
        record(9, TRIO(From)),
        record(11, TRIO(Subject)),
        octet(27, TRIO(XMmsStatus), {{128, 135}}),
        text(17, TRIO(XMmsMessageClass)),
        octet(21, TRIO(XMmsPriority), {{128, 130}}),
        text(13, TRIO(XMmsContentLocation)),
        number(8, TRIO(Date)),
        octet(14, TRIO(XMmsDeliveryReport), {{128, 129}}),
        record(15, TRIO(XMmsDeliveryTime)),
        record(16, TRIO(XMmsExpiry)),
        text(10, TRIO(MessageId)),
        number(18, TRIO(XMmsMessageSize)),
        octet(22, TRIO(XMmsReadReport), {{128, 129}}),
        octet(24, TRIO(XMmsResponseStatus), {{128, 136}, {192, 196}, {224, 234}}),
        record(25, TRIO(XMmsResponseText)),
        octet(26, TRIO(XMmsSenderVisibility), {{128, 129}}),
        octet(29, TRIO(XMmsRetrieveStatus), {{128, 128}, {192, 194}, {224, 227}}),
        octet(31, TRIO(XMmsReadStatus), {{128, 129}}),
        octet(61, TRIO(XMmsDrmContent), {{128, 129}}),
    };
    EXPECT_EQ(all.size(), 26U);
    return all;
}

constexpr int before_id = 51;
constexpr int after_id = 55;
constexpr int content_type_id = 7;
constexpr int transaction_id = 28;

// A container with two entities, whose first has a field to stand before the tested one.
ContainerPtr two_entities() {
    ContainerPtr container(MMS_Container_Create());
    MMS_SetField(add_entity(container.get()), "X-Mms-Start", slot(1));
    add_entity(container.get());
    return container;
}

std::string trace(const Trio &trio) {
    return shown(MMS_SearchFieldMapForName(static_cast<uint8_t>(trio.field_id)));
}

TEST(Accessors, SetReplaceRefuseAndDelete) {
    for (const Trio &trio : trios()) {
        SCOPED_TRACE(trace(trio));
        const ContainerPtr owner = two_entities();
        MMS_Container *const container = owner.get();
        MMS_Entity *const first = MMS_GetEntity(container, 0);
        EXPECT_EQ(trio.get(container), absent);
        EXPECT_EQ(trio.del(container), 0U);
        trio.set_refused(container);
        EXPECT_EQ(trio.get(container), absent);
        EXPECT_EQ(field_ids(first), std::vector{before_id});

        EXPECT_EQ(trio.set(container, 0), 1U);
        EXPECT_EQ(trio.get(container), 0);
        MMS_SetField(first, "X-Mms-Limit", slot(2));
        trio.set_refused(container);
        EXPECT_EQ(trio.get(container), 0);
        EXPECT_EQ(trio.set(container, 1), 1U);
        EXPECT_EQ(trio.get(container), 1);
        EXPECT_EQ(field_ids(first), trio.field_id == transaction_id
                                        ? (std::vector{before_id, after_id, trio.field_id})
                                        : (std::vector{before_id, trio.field_id, after_id}));

        EXPECT_EQ(trio.del(container), 1U);
        EXPECT_EQ(trio.get(container), absent);
        EXPECT_EQ(trio.del(container), 0U);
        EXPECT_EQ(field_ids(first), (std::vector{before_id, after_id}));
    }
}

// The header's entity is the first that has it; Content-Type alone is always set in the first.
TEST(Accessors, EntityOfTheHeader) {
    for (const Trio &trio : trios()) {
        SCOPED_TRACE(trace(trio));
        const ContainerPtr owner = two_entities();
        MMS_Container *const container = owner.get();
        MMS_Entity *const first = MMS_GetEntity(container, 0);
        MMS_Entity *const second = MMS_GetEntity(container, 1);
        trio.set(container, 0);
        slIterator field;
        slIterator_Init(&field, first->pFieldList);
        slIterator_Next(&field);
        slList_InsertLast(second->pFieldList, slIterator_RemoveCurrent(&field));
        EXPECT_EQ(trio.get(container), 0) << "found in the second entity";

        EXPECT_EQ(trio.set(container, 1), 1U);
        const bool in_first = trio.field_id == content_type_id;
        EXPECT_EQ(trio.get(container), 1);
        EXPECT_EQ(field_ids(first).size(), in_first ? 2U : 1U);
        EXPECT_EQ(field_ids(second), std::vector{trio.field_id});
        EXPECT_EQ(trio.del(container), 1U);
        EXPECT_EQ(trio.get(container), in_first ? 0 : absent);
        EXPECT_EQ(trio.del(container), in_first ? 1U : 0U);
    }
}

TEST(Accessors, SettersNeedAnEntity) {
    const ContainerPtr container(MMS_Container_Create());
    for (const Trio &trio : trios()) {
        SCOPED_TRACE(trace(trio));
        EXPECT_EQ(trio.set(container.get(), 0), 0U);
        EXPECT_EQ(trio.get(container.get()), absent);
        EXPECT_EQ(trio.del(container.get()), 0U);
    }
    EXPECT_EQ(MMSLib_SetXMmsGenericTextField(container.get(), "X-Mms-Applic-ID", "a"), 0U);
    EXPECT_EQ(MMSLib_GetXMmsGenericTextField(container.get(), "X-Mms-Applic-ID"), nullptr);
    EXPECT_EQ(MMSLib_DelXMmsGenericTextField(container.get(), "X-Mms-Applic-ID"), 0U);
}

TEST(Accessors, AnyTextHeaderByName) {
    const ContainerPtr owner = two_entities();
    MMS_Container *const container = owner.get();
    MMS_Entity *const first = MMS_GetEntity(container, 0);
    const auto set = [&](const char *name, const char *value) {
        return MMSLib_SetXMmsGenericTextField(container, name, value);
    };
    const auto get = [&](const char *name) {
        return shown(MMSLib_GetXMmsGenericTextField(container, name));
    };
    const auto del = [&](const char *name) {
        return MMSLib_DelXMmsGenericTextField(container, name);
    };
    MMS_SetField(first, "X-Unknown", slot(3)); // a field of id 0
    std::vector<int> expected = {before_id, 0};
    // Every header whose value is a text, and no other.
    for (int id = 1; id <= 61; ++id) {
        const char *const name = MMS_SearchFieldMapForName(static_cast<uint8_t>(id));
        SCOPED_TRACE(name);
        const std::vector texts = {5, 6, 10, 13, 17, 28, 56, 57};
        const bool is_text = std::find(texts.begin(), texts.end(), id) != texts.end();
        EXPECT_EQ(set(name, "first"), is_text ? 1U : 0U);
        EXPECT_EQ(set(name, nullptr), 0U);
        if (is_text) {
            EXPECT_EQ(get(name), "first");
            EXPECT_EQ(set(name, MMSLib_GetXMmsGenericTextField(container, name) + 2), 1U);
            EXPECT_EQ(get(name), "rst");
            expected.push_back(id);
        }
    }
    EXPECT_EQ(field_ids(first), expected);
    EXPECT_EQ(set("x-mms-transaction-id", "in place"), 1U);
    EXPECT_STREQ(MMSLib_GetXMmsTransactionId(container), "in place");
    EXPECT_EQ(field_ids(first), expected);

    for (const char *name : {"X-Unknown", "", static_cast<const char *>(nullptr)}) {
        EXPECT_EQ(set(name, "text"), 0U);
        EXPECT_EQ(get(name), "(null)");
        EXPECT_EQ(del(name), 0U);
    }
    EXPECT_EQ(field_ids(first), expected);
    EXPECT_EQ(MMSLib_GetXMmsGenericTextField(container, "X-Mms-Start"),
              static_cast<const void *>(slot(1)))
        << "whatever the field holds";
    EXPECT_EQ(del("X-Mms-Start"), 1U);
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
        const test::EntityPtr other(MMS_Entity_Create());
        MMSLib_SetGenericTextField(other.get(), name, value);
        slList_InsertLast(entity->pFieldList, slList_RemoveFirst(other->pFieldList));
    }

    test::EntityPtr owner{MMS_Entity_Create()};
    MMS_Entity *entity = owner.get();
};

TEST_F(GenericEntityHeaders, AreKeptByName) {
    EXPECT_EQ(MMSLib_GetGenericTextField(entity, "X-A"), nullptr);
    EXPECT_EQ(MMSLib_DelGenericTextField(entity, "X-A"), 0U);
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, nullptr, "1"), 0U);
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, "X-A", nullptr), 0U);
    EXPECT_EQ(fields(), "");
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, std::string("X-A").c_str(), "1"), 1U);
    MMS_SetField(entity, "Date", slot(1));
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, "X-B", "2"), 1U);
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, "Date", "3"), 1U);
    EXPECT_EQ(fields(), "X-A=1 8 X-B=2 Date=3 ");
    EXPECT_STREQ(MMSLib_GetGenericTextField(entity, "x-b"), "2");
    EXPECT_STREQ(MMSLib_GetGenericTextField(entity, "date"), "3");
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, "x-a", "4"), 1U);
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, "x-a", nullptr), 0U);
    EXPECT_EQ(fields(), "x-a=4 8 X-B=2 Date=3 ");
    EXPECT_EQ(MMSLib_DelGenericTextField(entity, "X-C"), 0U);
    EXPECT_EQ(MMSLib_DelGenericTextField(entity, "X-b"), 1U);
    EXPECT_EQ(MMSLib_DelGenericTextField(entity, "Date"), 1U);
    EXPECT_EQ(MMSLib_DelGenericTextField(entity, "Date"), 0U) << "the header proper stays";
    EXPECT_EQ(fields(), "x-a=4 8 ");
}

TEST_F(GenericEntityHeaders, OfEqualNameAreOneToSetAndDelete) {
    const auto fill = [&] {
        append("X-B", "1");
        append("X-A", "2");
        MMS_SetField(entity, "Date", slot(1));
        append("X-C", "3");
        append("x-a", "4");
        append("X-A", "5");
    };
    fill();
    EXPECT_STREQ(MMSLib_GetGenericTextField(entity, "X-a"), "2");
    const MMS_Field *const last = static_cast<const MMS_Field *>(entity->pFieldList->pLast);
    const auto *const data = static_cast<const MMS_GenericData *>(last->pValue);
    // Name and value may be those of a header that goes.
    EXPECT_EQ(MMSLib_SetGenericTextField(entity, data->pHeaderName, data->pHeaderValue), 1U);
    EXPECT_EQ(fields(), "X-B=1 X-A=5 8 X-C=3 ");
    EXPECT_EQ(MMSLib_DelGenericTextField(entity, "X-B"), 1U);
    EXPECT_EQ(MMSLib_DelGenericTextField(entity, "X-A"), 1U);
    EXPECT_EQ(MMSLib_DelGenericTextField(entity, "X-C"), 1U);
    MMS_DelField(entity, "Date");
    EXPECT_EQ(fields(), "");

    fill();
    EXPECT_EQ(MMSLib_DelGenericTextField(entity, "X-A"), 1U);
    EXPECT_EQ(fields(), "X-B=1 8 X-C=3 ");
}

TEST(Message, NewMessageIsEmpty) {
    const MessagePtr message(MMSLib_Message_Create());
    ASSERT_NE(message->pContainer, nullptr);
    EXPECT_EQ(MMS_GetEntityCount(message->pContainer), 0);
    EXPECT_EQ(message->pPdu, nullptr);
    EXPECT_EQ(message->pduLength, 0U);
    EXPECT_EQ(message->isDecoded, 0);
}

TEST(Message, ReadyMadeSendRequest) {
    const MessagePtr message(MMS_CreateMMS());
    ASSERT_EQ(MMS_GetEntityCount(message->pContainer), 1);
    EXPECT_EQ(field_ids(MMS_GetEntity(message->pContainer, 0)), (std::vector{19, 28, 20}));
    EXPECT_EQ(MMSLib_GetXMmsMessageType(message->pContainer), 128);
    EXPECT_STREQ(MMSLib_GetXMmsTransactionId(message->pContainer), "blaah");
    uint8_t major = 0;
    uint8_t minor = 0;
    EXPECT_EQ(MMSLib_GetXMmsVersion(message->pContainer, &major, &minor), 0x12);
    EXPECT_EQ(major, 1);
    EXPECT_EQ(minor, 2);
    EXPECT_EQ(message->isDecoded, 0);
}

} // namespace
