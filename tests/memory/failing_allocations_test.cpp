// Lets the n-th allocation fail, for every n until all succeed. The linker sends the library's
// allocations through failing_memory.cpp.
#include <algorithm>
#include <cstdlib>
#include <functional>

#include <pthread.h>

#include <gtest/gtest.h>

#include "decoder/render.hpp"
#include "encoder/messages.hpp"
#include "support/failing_memory.hpp"

namespace {

using namespace test;

// Calls run() with the n-th allocation failing, for every n until all succeed, and check() after
// it.
void fail_each_allocation(const std::function<void(bool failed)> &check,
                          const std::function<void()> &run) {
    bool failed = true;
    for (long n = 0; failed; ++n) {
        SCOPED_TRACE(n);
        {
            const FailingAllocation nth(n);
            run();
            failed = FailingAllocation::happened();
        }
        check(failed);
        ASSERT_LT(n, 100000);
    }
}

TEST(FailingAllocations, Decode) {
    Octets headers = {0x83};
    for (int i = 0; i < 300; ++i) {
        headers = headers + text("X-" + std::to_string(i)) + text("v");
    }
    std::vector<Octets> pdus = {everything(), "8C84 84A3"_wire + body(1, part(headers)),
                                "8C82 8483 |hi|"_wire};
    for (const char *name : {"send-req-related-ucs2.mms", "notification-ind.mms",
                             "retrieve-conf-nested.mms", "hostile-terminal.mms"}) {
        pdus.push_back(read_sample(name));
    }
    for (const Octets &pdu : pdus) {
        const std::string expected = shown(decode(pdu));
        const std::multiset<std::string> expected_pieces = pieces(expected);
        Decoded decoded;
        fail_each_allocation(
            [&](bool failed) {
                EXPECT_EQ(failed, decoded.status != 1);
                EXPECT_EQ(failed, expected != shown(decoded));
                // What is there is whole: at most addresses are missing from a group's end.
                for (const std::string &piece :
                     decoded.message ? pieces(shown(decoded.message->pContainer)) : pieces("")) {
                    const auto at = expected_pieces.lower_bound(piece);
                    EXPECT_TRUE(at != expected_pieces.end() && at->starts_with(piece)) << piece;
                }
            },
            [&] { decoded = decode(pdu); });
    }
}

TEST(FailingAllocations, Encode) {
    const MessagePtr message = decode(everything()).message;
    uint8_t *pdu = nullptr;
    uint32_t length = 77;
    uint32_t status = 0;
    fail_each_allocation(
        [&](bool failed) {
            EXPECT_EQ(failed ? 2U : 1U, status);
            EXPECT_EQ(failed, pdu == nullptr && length == 77);
            EXPECT_TRUE(failed || Octets(pdu, pdu + length) == everything());
            std::free(pdu);
            pdu = nullptr;
        },
        [&] { status = MMSLib_EncodeMessage(message.get(), &pdu, &length, 1); });
}

template <typename Ptr>
bool made(typename Ptr::pointer record) {
    return Ptr(record) != nullptr;
}

// Setters, constructors, list operations and codecs of texts: null or 0, and the message as it was.
TEST(FailingAllocations, Operations) {
    const MessagePtr message = decode(everything()).message;
    MMS_Container *c = message->pContainer;
    MMS_Entity *part = MMS_GetEntity(c, 1);
    MMS_Group *group = MMSLib_GetTo(c);
    const std::function<bool()> operations[] = {
        [=] { return MMSLib_SetXMmsTransactionId(c, "new") != 0; },
        [=] { return MMSLib_SetXMmsGenericTextField(c, "X-Mms-Applic-ID", "new") != 0; },
        [=] { return MMSLib_SetGenericTextField(part, "x-foo", "1") != 0; },
        [=] { return MMSLib_SetGenericTextField(part, "x-new", "1") != 0; },
        [=] { return MMS_SetContentId(part, "new") != 0; },
        [=] { return MMS_SetContent(part, MMS_GetContent(part), 3, 0) != 0; },
        [=] { return MMS_SetDisplayName(group, "new") != nullptr; },
        [=] { return MMS_SetField(part, "Date", slot(1)) != 0; },
        [=] { return MMS_LinkedList_AddFieldToPos(part->pFieldList, "Date", slot(2), 0) != 0; },
        [=] {
            EncodedStringPtr address(MMS_CreateEncodedString("a", nullptr));
            MailboxPtr mailbox(address ? MMS_CreateMailbox(128, nullptr, address.get()) : nullptr);
            static_cast<void>(mailbox ? address.release() : nullptr);
            const bool added = mailbox && MMS_AddMailbox(group, mailbox.get()) != 0;
            static_cast<void>(added ? mailbox.release() : nullptr);
            return added;
        },
        [] { return made<SpecialTimePtr>(MMS_CreateSpecialTime(1, 1)); },
        [] { return made<ContentTypePtr>(MMS_CreateContentType("a/b")); },
        [] { return made<ContentDispositionPtr>(MMS_CreateContentDisposition("Attachment", "f")); },
        [] { return made<ParameterPtr>(MMS_CreateParameter("x", "y")); },
        [] { return made<ParameterPtr>(MMS_CreateParameter(nullptr, "v")); },
        [] { return made<GroupPtr>(MMS_Group_Create()); },
        [] { return made<MessagePtr>(MMS_CreateMMS()); },
        [] { return made<DecoderPtr>(MMS_Decoder_Create()); },
        [=] { return made<TextPtr>(CreateUniqueContentId(c)); },
        [] { return made<TextPtr>(MMSUtilEncodeEncodedWord("a", "UTF-8")); },
        [] {
            const char *next = nullptr;
            const bool done = made<TextPtr>(StringToken("a/b", "/", &next));
            EXPECT_EQ(done, next != nullptr);
            return done;
        },
        [] {
            char *name = nullptr;
            char *address = nullptr;
            const uint32_t status = ParseNameAndAddress("N <a>", &name, &address);
            const TextPtr owned_name(name);
            return made<TextPtr>(address) && status == 1;
        },
        [] {
            const uint8_t input[] = {'X', 0, 'v', 0};
            char *texts[2] = {nullptr, nullptr};
            const char *charset = nullptr;
            uint8_t owned[2];
            uint32_t consumed = 77;
            const uint32_t status = DecodeParameter(input, 4, &texts[0], &texts[1], &charset,
                                                    &owned[1], &owned[0], &consumed);
            EXPECT_EQ(status == 1 ? 4U : 0U, consumed);
            const TextPtr name(texts[0]);
            return made<TextPtr>(texts[1]) && status == 1;
        },
    };
    for (size_t i = 0; i < std::size(operations); ++i) {
        SCOPED_TRACE(i);
        const std::string before = shown(c);
        bool done = false;
        fail_each_allocation(
            [&](bool failed) {
                EXPECT_EQ(failed, !done);
                EXPECT_TRUE(!failed || before == shown(c));
            },
            [&] { done = operations[i](); });
    }
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
// The deepest message that can be received needs no more than a small thread's stack.
TEST(Stack, DeepestNestingIn128KiB) {
    Octets pdu = part({0x83}, raw("innermost"));
    for (int level = 0; level < 250; ++level) {
        pdu = part({0xA3}, body(1, pdu));
    }
    pdu = "8C84 84A3"_wire + body(1, pdu);
    pthread_attr_t attributes;
    ASSERT_EQ(0, pthread_attr_init(&attributes));
    ASSERT_EQ(0, pthread_attr_setstacksize(&attributes, size_t{128} * 1024));
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
