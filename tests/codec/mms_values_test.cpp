#include "codec/checks.hpp"
#include "support/wire.hpp"

namespace {

using namespace test;

TEST(Version, Parts) {
    EXPECT_EQ(MMSGetMajorVersion(0xF2), 7);
    EXPECT_EQ(MMSGetMinorVersion(0x92), 2);
    for (uint32_t number = 0; number < 20; ++number) {
        SCOPED_TRACE(number);
        uint8_t version = 0x34;
        EXPECT_EQ(MMSSetMajorVersion(number, &version), number >= 1 && number <= 7 ? 1 : 0);
        EXPECT_EQ(version, number >= 1 && number <= 7 ? number << 4 | 4 : 0x34);
        version = 0xB4;
        EXPECT_EQ(MMSSetMinorVersion(number, &version), number <= 14 ? 1 : 0);
        EXPECT_EQ(version, number <= 14 ? 0x30 | number : 0xB4);
    }
    uint8_t version = 0;
    EXPECT_EQ(MMSSetMajorVersion(2, &version), 1);
    EXPECT_EQ(version, 0x2F) << "a minor version of 0 is none yet";
}

// Runs a decoder of numbers, which leaves the number alone when it fails.
template <typename Value, typename Decode>
Answer number_answer(Decode decode) {
    constexpr Value untouched = 0xA5;
    Value value = untouched;
    uint32_t count = 77;
    const uint32_t status = decode(&count, &value);
    return {status, count,
            status != MMS_STATUS_OK && value == untouched ? "" : std::to_string(value)};
}

template <typename Value>
DecodeCall number(uint8_t (*decode)(const uint8_t *, uint32_t, uint32_t *, Value *)) {
    return [decode](const uint8_t *input, uint32_t length) {
        return number_answer<Value>(
            [&](uint32_t *count, Value *value) { return decode(input, length, count, value); });
    };
}

template <typename Value>
EncodeCall with(uint8_t (*encode)(uint8_t *, uint8_t, uint32_t, uint32_t *, Value), Value value) {
    return [=](uint8_t *output, uint32_t room, uint32_t *count, uint8_t size_only) {
        return encode(output, size_only, room, count, value);
    };
}

TEST(MmsValues, Numbers) {
    const DecodeCall version = number(MMSDecodeVersion);
    check_decoder(version, {ok("18", {0x92}), ok("127", {0xFF}), ok("16", {0x90}), bad(6, {0x12})});
    const Answer out_of_range = run_on(version, {0x8F});
    EXPECT_EQ(out_of_range.status, MMS_STATUS_OUT_OF_RANGE);
    EXPECT_EQ(out_of_range.count, 1U) << "the octet counts as read";
    EXPECT_EQ(out_of_range.value, "");

    for (const auto decode : {MMSDecodeDate, MMSDecodeLongInteger}) {
        check_decoder(number(decode), {ok("0", {0}), ok("1000000000", {4, 0x3B, 0x9A, 0xCA, 0x00}),
                                       bad(7, {5, 0, 0, 0, 0, 1}), bad(7, {5}), bad(6, {0x80})});
    }
    check_decoder(number(MMSDecodeDate), {bad(6, text("12"))});
    check_decoder(number(MMSDecodeLongInteger),
                  {ok("12345", text("12345")), ok("12", text(" +12x3")),
                   ok("4294967295", text("-1")), ok("4294967295", text("4294967295")),
                   ok("0", text("none")), ok("7", {0x7F, '7', 0}), bad(2, {'1', '2'})});
    check_encoder(
        {writes({4, 0x3B, 0x9A, 0xCA, 0}, with<uint32_t>(MMSEncodeDate, 1000000000)),
         writes({1, 128}, with<uint32_t>(MMSEncodeLongInteger, 128)),
         writes(text("0"), with<uint32_t>(MMSEncodeContentDuration, 0)),
         writes(text("4294967295"), with<uint32_t>(MMSEncodeContentDuration, UINT32_MAX))});
}

TEST(MmsValues, Texts) {
    const auto decode = [](uint8_t code) -> DecodeCall {
        return [code](const uint8_t *input, uint32_t length) {
            char stale = 0;
            char *result = &stale;
            uint32_t count = 77;
            const uint32_t status = MMSDecodeTextString(input, length, &count, &result, code);
            const TextPtr owned(result);
            EXPECT_EQ(owned != nullptr, status == MMS_STATUS_OK);
            return Answer{status, count, owned != nullptr ? owned.get() : ""};
        };
    };
    const auto encode = [](uint8_t code, const char *value) -> EncodeCall {
        return [=](uint8_t *output, uint32_t room, uint32_t *count, uint8_t size_only) {
            return MMSEncodeTextString(output, room, count, size_only, code, value);
        };
    };
    check_decoder(decode(11), {ok("id", text("id")), bad(6, {0x80}), bad(2, {'a'})});
    check_decoder(decode(0), {bad(5, text("id")), bad(5, {})});
    check_decoder(decode(10), {ok("Personal", {0x80}), ok("Auto", {0x83}), bad(7, {0x84}),
                               bad(7, {0x1F}), bad(2, {'a'}), ok("other", text("other"))});
    check_encoder({writes(text("id"), encode(11, "id")), writes({0}, encode(11, nullptr)),
                   refuses(6, encode(11, "\x01")), refuses(5, encode(0, "id")),
                   writes({0x80}, encode(10, "pErSoNaL")), writes({0x83}, encode(10, "Auto")),
                   writes(text("Automatic"), encode(10, "Automatic")),
                   writes({0}, encode(10, nullptr)), writes(text("Auto"), encode(11, "Auto"))});
}

TEST(MmsValues, SpecialTime) {
    check_decoder(record<SpecialTimePtr>(MMSDecodeSpecialTime),
                  {ok("129:3600", {4, 0x81, 2, 0x0E, 0x10}), ok("128:0", {2, 0x80, 0}),
                   ok("129:5", {0x1F, 3, 0x81, 1, 5}),
                   ok("129:5", {4, 0x81, 1, 5, 0}, 4), // an octet too many stays unread
                   bad(7, {4, 0x82, 2, 0x0E, 0x10}), bad(7, {4, 0x7F, 2, 0x0E, 0x10}),
                   bad(6, {2, 0x81, 0x85}), // a Short-integer is no time
                   bad(2, {2, 0x81, 1, 5}), // the time ends behind the length
                   bad(7, {7, 0x81, 5, 0, 0, 0, 0, 1}), bad(2, {5, 0x81, 2, 0x0E, 0x10}),
                   bad(2, {1, 0x81}), bad(2, {0}), bad(6, {0x81})});
    const MMS_SpecialTime absolute{1000000000, 128};
    const MMS_SpecialTime no_token{0, 0};
    check_encoder(
        {writes({6, 0x80, 4, 0x3B, 0x9A, 0xCA, 0},
                with<const MMS_SpecialTime *>(MMSEncodeSpecialTime, &absolute)),
         writes({3, 0x81, 1, 0}, with<const MMS_SpecialTime *>(MMSEncodeSpecialTime, &no_token))});
}

TEST(MmsValues, Addresses) {
    const std::string longest(320, '1');
    const std::string too_long(321, '1');
    // The encoded string of an address, and the mailbox.
    const std::vector<DecodeRow> rows = {ok("Bob|+491", text("Bob <+491>")),
                                         ok("", text("")),
                                         ok("Bob|b@c{UTF-8}", sized("EA'Bob <b@c>'"_wire)),
                                         ok("b{UNKNOWN}", sized("8F'b'"_wire)),
                                         bad(6, text("<abc")),
                                         bad(6, text("Bob <abc")),
                                         bad(6, text("\"Bob <abc>")),
                                         ok(longest, text(longest)),
                                         bad(6, text(too_long)),
                                         bad(6, text("<" + too_long + ">")),
                                         ok("Bob|(null)", text("Bob <" + too_long + ">")),
                                         bad(2, {4, 0xEA, 'b', 0, 'c'}),
                                         bad(6, {0x80}),
                                         bad(6, {2, 0xEA, 0x80})};
    check_decoder(record<MailboxPtr>(MMSDecodeToCc), rows);
    std::vector<DecodeRow> senders = rows;
    for (DecodeRow &row : senders) {
        row.input = sized(Octets{0x80} + row.input);
    }
    senders.insert(senders.end(), {bad(7, {1, 0x81}), bad(7, {2, 0x7F, 0}), bad(6, {0}),
                                   bad(6, {5}), bad(2, {1, 0x80}), bad(6, {0x80}),
                                   ok("a", "0480'a'62"_wire, 4), // left over inside
                                   bad(2, "0280'a'"_wire)});
    const DecodeCall run = record<MailboxPtr>(MMSDecodeFrom);
    check_decoder(run, senders, {MMS_STATUS_NO_ROOM, MMS_STATUS_WRONG_FORM});
    // A length that promises more than there is, is cut down.
    for (const Octets &input : {"0980'a'"_wire, "1F8FFFFFFF7F80'a'"_wire}) {
        const Answer answer = run_on(run, input);
        EXPECT_EQ(answer.status, MMS_STATUS_OK);
        EXPECT_EQ(answer.count, input.size());
        EXPECT_EQ(answer.value, "a");
    }
}

// Every octet of every enumerated header.
TEST(MmsValues, Enumerated) {
    using Runs = std::vector<std::pair<int, int>>;
    const std::vector<std::pair<const char *, Runs>> headers = {
        {"x-mms-READ-report", {{0x80, 0x81}}},
        {"X-Mms-Message-Type", {{0x80, 0x93}}},
        {"X-Mms-Status", {{0x80, 0x87}}},
        {"X-Mms-Reply-Charging", {{0x80, 0x83}}},
        {"X-Mms-MM-State", {{0x80, 0x84}}},
        {"X-Mms-Response-Status", {{0x80, 0x88}, {0xC0, 0xC4}, {0xE0, 0xEA}}},
        {"X-Mms-Retrieve-Status", {{0x80, 0x80}, {0xC0, 0xC2}, {0xE0, 0xE3}}},
        {"X-Mms-Store-Status", {{0x80, 0x80}, {0xC0, 0xC1}, {0xE0, 0xE4}}},
        {"Message-Id", {}},
        {"X-Unknown", {}},
    };
    for (const auto &row : headers) {
        const char *name = row.first;
        const Runs &runs = row.second;
        SCOPED_TRACE(name);
        const DecodeCall run = [name](const uint8_t *input, uint32_t length) {
            return number_answer<uint8_t>([&](uint32_t *count, uint8_t *value) {
                return MMSDecodeEnumerated(input, length, count, name, value);
            });
        };
        for (int octet = 0; octet < 256; ++octet) {
            const bool accepted = std::any_of(runs.begin(), runs.end(), [&](const auto &range) {
                return octet >= range.first && octet <= range.second;
            });
            const Octets input = {static_cast<uint8_t>(octet)};
            check_decoder(run, {accepted ? ok(std::to_string(octet), input)
                                         : bad(octet < 0x80 ? 6 : 7, input)});
        }
        EXPECT_EQ(run_on(run, {}).status, runs.empty() ? 7U : 2U);
        // Only a single run can be told.
        const MMS_EnumeratedRange range = MMSGetEnumeratedRangeByFieldName(name);
        EXPECT_EQ(range.lowest, runs.size() == 1 ? 0x80 : 0);
        EXPECT_EQ(range.highest, runs.size() == 1 ? runs[0].second : 0);
    }
    EXPECT_EQ(MMSGetEnumeratedRange(15).highest, 0x82);
    EXPECT_EQ(MMSGetEnumeratedRangeByFieldName(nullptr).highest, 0);
}

} // namespace
