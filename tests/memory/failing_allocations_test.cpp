// Lets the n-th allocation fail, for every n until all succeed. The linker sends the library's
// allocations through the functions below.
#include <algorithm>
#include <cstdlib>
#include <functional>

#include <pthread.h>

#include <gtest/gtest.h>

#include "decoder/render.hpp"
#include "encoder/messages.hpp"

namespace {

// How many more allocations succeed; negative: all.
long left = -1;

bool fails() { return left >= 0 && left-- == 0; }

} // namespace

extern "C" {
void *__real_malloc(size_t size);
void *__real_calloc(size_t count, size_t size);
void *__real_realloc(void *block, size_t size);
void *__wrap_malloc(size_t size) { return fails() ? nullptr : __real_malloc(size); }
void *__wrap_calloc(size_t count, size_t size) {
    return fails() ? nullptr : __real_calloc(count, size);
}
void *__wrap_realloc(void *block, size_t size) {
    return fails() ? nullptr : __real_realloc(block, size);
}
}

namespace {

using namespace test;

// Calls run(n) with the n-th allocation failing until none is left to fail.
void fail_each_allocation(const std::function<void(bool failed)> &check,
                          const std::function<void()> &run) {
    bool failed = true;
    for (long n = 0; failed; ++n) {
        SCOPED_TRACE(n);
        left = n;
        run();
        failed = left < 0;
        left = -1;
        check(failed);
        ASSERT_LT(n, 100000);
    }
}

TEST(FailingAllocations, Decode) {
    std::vector<Octets> pdus;
    for (const char *name : {"send-req-mixed-jpeg.mms", "send-req-related-ucs2.mms",
                             "read-rec-ind.mms", "notification-ind.mms", "delivery-ind.mms",
                             "retrieve-conf-nested.mms", "hostile-terminal.mms"}) {
        pdus.push_back(read_sample(name));
    }
    pdus.push_back(encode(everything().get()));
    Octets headers;
    for (int i = 0; i < 300; ++i) {
        headers = headers + text("X-" + std::to_string(i)) + text("v");
    }
    pdus.push_back(wire("8C84 84 A3 01 9D0D 00 83") + headers); // 300 generic headers
    pdus.back()[5] = static_cast<uint8_t>(0x80 | (headers.size() + 1) >> 7);
    pdus.back()[6] = static_cast<uint8_t>((headers.size() + 1) & 0x7F);
    for (const Octets &pdu : pdus) {
        const Decoded whole = decode(pdu);
        ASSERT_EQ(1U, whole.status);
        const std::string expected = shown(whole.message->pContainer);
        const std::multiset<std::string> expected_pieces = pieces(expected);
        Decoded decoded;
        fail_each_allocation(
            [&](bool failed) {
                EXPECT_EQ(failed, decoded.status != 1);
                if (decoded.message == nullptr) {
                    return;
                }
                const std::string partly = shown(decoded.message->pContainer);
                EXPECT_EQ(failed, expected != partly);
                // What is there is whole: at most addresses are missing from a group's end.
                for (const std::string &piece : pieces(partly)) {
                    const auto at = expected_pieces.lower_bound(piece);
                    EXPECT_TRUE(at != expected_pieces.end() && at->starts_with(piece)) << piece;
                }
            },
            [&] { decoded = decode(pdu); });
    }
}

TEST(FailingAllocations, Encode) {
    const MessagePtr message = everything();
    const Octets expected = encode(message.get());
    uint8_t *pdu = nullptr;
    uint32_t length = 77;
    uint32_t status = 0;
    fail_each_allocation(
        [&](bool failed) {
            EXPECT_EQ(failed ? 2U : 1U, status);
            EXPECT_EQ(failed, pdu == nullptr);
            EXPECT_EQ(failed, length == 77);
            EXPECT_TRUE(failed || Octets(pdu, pdu + length) == expected);
            std::free(pdu);
            pdu = nullptr;
        },
        [&] { status = MMSLib_EncodeMessage(message.get(), &pdu, &length, 1); });
}

// Every value decoder: a failing status, nothing to release, nothing consumed.
TEST(FailingAllocations, ValueDecoders) {
    using Decoder = std::function<uint32_t(const Octets &, uint32_t *, TextPtr &)>;
    const auto text_of = [](auto decode_value) -> Decoder {
        return [=](const Octets &in, uint32_t *consumed, TextPtr &result) {
            char *value = nullptr;
            const uint32_t status =
                decode_value(in.data(), static_cast<uint32_t>(in.size()), &value, consumed);
            result.reset(value);
            return status;
        };
    };
    const std::pair<Decoder, Octets> cases[] = {
        {text_of(DecodeTextString), wire("'abc'")},
        {text_of(DecodeQuotedString), wire("22'abc'")},
        {text_of([](const uint8_t *in, uint32_t n, char **value, uint32_t *consumed) {
             return MMSDecodeTextString(in, n, consumed, value, 10);
         }),
         wire("82")},
        {text_of([](const uint8_t *in, uint32_t n, char **value, uint32_t *consumed) {
             const char *charset = nullptr;
             return DecodeEncodedStringValue(in, n, &charset, value, consumed);
         }),
         wire("05EA'abc'")},
        {text_of([](const uint8_t *in, uint32_t n, char **value, uint32_t *consumed) {
             MMS_Mailbox *mailbox = nullptr;
             const uint32_t status = MMSDecodeToCc(in, n, consumed, &mailbox);
             EXPECT_EQ(status == 1, mailbox != nullptr);
             MMS_DestroyMailbox(mailbox);
             *value = nullptr;
             return status;
         }),
         wire("'A <b>'")},
        {text_of([](const uint8_t *in, uint32_t n, char **value, uint32_t *consumed) {
             char *name = nullptr;
             char *parameter = nullptr;
             const char *charset = nullptr;
             uint8_t owns_value = 0;
             uint8_t owns_name = 0;
             const uint32_t status = DecodeParameter(in, n, &name, &parameter, &charset,
                                                     &owns_value, &owns_name, consumed);
             EXPECT_EQ(status == 1, name != nullptr);
             EXPECT_EQ(status == 1, owns_value == 1 && owns_name == 1);
             std::free(owns_name != 0 ? name : nullptr);
             *value = owns_value != 0 ? parameter : nullptr;
             return status;
         }),
         wire("'X-Name' 'value'")},
    };
    for (const auto &row : cases) {
        const Decoder &decode_value = row.first;
        const Octets &input = row.second;
        uint32_t consumed = 77;
        uint32_t status = 0;
        TextPtr result;
        fail_each_allocation(
            [&](bool failed) {
                EXPECT_EQ(failed ? 2U : 1U, status);
                EXPECT_EQ(failed ? 0U : input.size(), consumed);
                EXPECT_FALSE(failed && result != nullptr);
            },
            [&] { status = decode_value(input, &consumed, result); });
    }
}

// Every setter, constructor and list operation: null or 0, and the message as it was.
TEST(FailingAllocations, Setters) {
    const MessagePtr message = everything();
    MMS_Container *c = message->pContainer;
    MMS_Entity *part = MMS_GetEntity(c, 1);
    MMS_Group *group = MMSLib_GetTo(c);
    MMS_MailboxList *mailboxes = group->pMailboxList;
    const auto adopt = [](auto record, auto destroy, auto set) {
        return [=] {
            auto *value = record();
            const bool stored = value != nullptr && set(value);
            if (!stored) {
                destroy(value);
            }
            return stored;
        };
    };
    const auto named_mailbox = [] {
        TextPtr name(MMSUtilEncodeEncodedWord("n", "UTF-8"));
        MMS_Mailbox *mailbox = name ? MMS_CreateMailbox(128, name.get(), nullptr) : nullptr;
        static_cast<void>(mailbox != nullptr ? name.release() : nullptr);
        return mailbox;
    };
    const auto named_group = [=] {
        GroupPtr created(MMS_Group_Create());
        MailboxPtr mailbox(named_mailbox());
        const bool added = created && mailbox && MMS_AddMailbox(created.get(), mailbox.get()) != 0;
        static_cast<void>(added ? mailbox.release() : nullptr);
        return added ? created.release() : nullptr;
    };
    const std::vector<std::pair<const char *, std::function<bool()>>> operations = {
        {"transaction id", [=] { return MMSLib_SetXMmsTransactionId(c, "new") != 0; }},
        {"message class", [=] { return MMSLib_SetXMmsMessageClass(c, "new") != 0; }},
        {"generic text",
         [=] { return MMSLib_SetXMmsGenericTextField(c, "X-Mms-Applic-ID", "new") != 0; }},
        {"generic header, old",
         [=] { return MMSLib_SetGenericTextField(part, "x-foo", "1") != 0; }},
        {"generic header, new",
         [=] { return MMSLib_SetGenericTextField(part, "x-new", "1") != 0; }},
        {"content id", [=] { return MMS_SetContentId(part, "new") != 0; }},
        {"content", [=] { return MMS_SetContent(part, MMS_GetContent(part), 3, 0) != 0; }},
        {"display name", [=] { return MMS_SetDisplayName(group, "new") != nullptr; }},
        {"new field", [=] { return MMS_SetField(part, "Date", slot(1)) != 0; }},
        {"field at a position",
         [=] { return MMS_LinkedList_AddFieldToPos(part->pFieldList, "Date", slot(2), 0) != 0; }},
        {"subject",
         adopt([] { return MMS_CreateEncodedString("s", nullptr); }, MMS_DestroyEncodedString,
               [=](MMS_EncodedString *s) { return MMSLib_SetSubject(c, s) != 0; })},
        {"expiry", adopt([] { return MMS_CreateSpecialTime(1, 1); }, MMS_DestroySpecialTime,
                         [=](MMS_SpecialTime *t) { return MMSLib_SetXMmsExpiry(c, t) != 0; })},
        {"disposition",
         adopt([] { return MMS_CreateContentDisposition("Attachment", "f"); },
               MMS_DestroyContentDisposition,
               [=](MMS_ContentDisposition *d) { return MMS_SetContentDisposition(part, d) != 0; })},
        {"content type",
         adopt([] { return MMS_CreateContentType("a/b"); }, MMS_DestroyContentType,
               [=](MMS_ContentType *t) { return MMS_SetContentType(part, t) != 0; })},
        {"parameter", adopt([] { return MMS_CreateParameter("x", "y"); }, MMS_DestroyParameter,
                            [=](MMS_Parameter *p) {
                                return MMS_LinkedList_AddParameter(
                                           MMS_GetContentType(part)->pParameters, p) != 0;
                            })},
        {"mailbox",
         adopt(named_mailbox, MMS_DestroyMailbox,
               [=](MMS_Mailbox *m) { return MMS_LinkedList_AddMailbox(mailboxes, m) != 0; })},
        {"group", adopt(named_group, MMS_Group_Destroy,
                        [=](MMS_Group *g) { return MMSLib_SetCc(c, g) != 0; })},
        {"entity", adopt([] { return MMS_Entity_Create(); }, MMS_Entity_Destroy,
                         [=](MMS_Entity *e) {
                             uint16_t position = 0;
                             return MMS_AddEntity(c, e, &position) != 0;
                         })},
        {"message",
         [] {
             const MessagePtr made(MMS_CreateMMS());
             return made != nullptr;
         }},
        {"session",
         [] {
             const DecoderPtr decoder(MMS_Decoder_Create());
             return decoder != nullptr;
         }},
        {"identifiers",
         [=] {
             const TextPtr id(CreateUniqueContentId(c));
             return id != nullptr;
         }},
        {"token",
         [] {
             const char *next = nullptr;
             const TextPtr token(StringToken("a/b", "/", &next));
             EXPECT_EQ(token != nullptr, next != nullptr);
             return token != nullptr;
         }},
        {"encoded word",
         [] {
             const TextPtr word(MMSUtilEncodeEncodedWord("a", "UTF-8"));
             return word != nullptr;
         }},
        {"address text",
         [] {
             char *name = nullptr;
             char *address = nullptr;
             const uint32_t status = ParseNameAndAddress("N <a>", &name, &address);
             const TextPtr owned_name(name);
             const TextPtr owned_address(address);
             return status == 1;
         }},
    };
    for (const auto &row : operations) {
        SCOPED_TRACE(row.first);
        const std::function<bool()> &operation = row.second;
        const std::string before = shown(c);
        bool done = false;
        fail_each_allocation(
            [&](bool failed) {
                EXPECT_EQ(failed, !done);
                if (failed) {
                    EXPECT_EQ(before, shown(c));
                }
            },
            [&] { done = operation(); });
    }
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
// The deepest message that can be received needs no more than a small thread's stack.
TEST(Stack, DeepestNestingIn128KiB) {
    MessagePtr message = new_message(0x84);
    MMSLib_SetContentType(message->pContainer, new_type("multipart/mixed"));
    MMS_Container *container = message->pContainer;
    for (int level = 0; level < 250; ++level) {
        container = add_multipart(container, "multipart/mixed");
    }
    add_part(container, "text/plain", "innermost");
    Octets pdu = encode(message.get());
    pthread_attr_t attributes;
    ASSERT_EQ(0, pthread_attr_init(&attributes));
    ASSERT_EQ(0, pthread_attr_setstacksize(&attributes, 128 * 1024));
    pthread_t thread;
    const auto run = [](void *argument) -> void * {
        auto &octets = *static_cast<Octets *>(argument);
        MMSLib_Message *decoded = nullptr;
        uint8_t *encoded = nullptr;
        uint32_t length = 0;
        const bool done = MMSLib_DecodeMessage(octets.data(), static_cast<uint32_t>(octets.size()),
                                               &decoded) == 1 &&
                          MMSLib_EncodeMessage(decoded, &encoded, &length, 0) == 1;
        MMSLib_Message_Destroy(decoded);
        std::free(encoded);
        return done ? argument : nullptr;
    };
    ASSERT_EQ(0, pthread_create(&thread, &attributes, run, &pdu));
    void *result = nullptr;
    ASSERT_EQ(0, pthread_join(thread, &result));
    EXPECT_EQ(&pdu, result);
    pthread_attr_destroy(&attributes);
}
#endif

} // namespace
