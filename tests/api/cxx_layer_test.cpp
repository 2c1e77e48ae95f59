// mmslib.hpp: values through setters, PDUs and getters; what is refused; who owns what. The linker
// sends the library's allocations through failing_memory.cpp, to let them fail.
#include "mmslib.hpp"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <limits>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/failing_memory.hpp"

namespace {

using namespace std::chrono_literals;
using namespace std::string_view_literals;
using std::chrono::sys_seconds;
using Octets = std::vector<std::uint8_t>;

static_assert(!std::is_copy_constructible_v<mms::message> &&
              !std::is_copy_assignable_v<mms::message>);
static_assert(std::is_nothrow_move_constructible_v<mms::message>);
static_assert(sizeof(mms::message) == sizeof(void *));
static_assert(std::ranges::forward_range<mms::part_range> && std::ranges::view<mms::part_range>);
static_assert(std::ranges::sized_range<mms::address_range>);
static_assert(std::ranges::common_range<mms::generic_range>);
static_assert(std::ranges::borrowed_range<mms::parameter_range>);

// Views into a message that is about to end, and parts of a constant one that could be changed.
template <class Message>
concept lends = requires(Message message) {
    std::forward<Message>(message).parts();
}
|| requires(Message message) { std::forward<Message>(message).root(); }
|| requires(Message message) { std::forward<Message>(message).get(mms::header::subject); };
static_assert(lends<mms::message &> && lends<const mms::message &> && !lends<mms::message &&>);
template <class Part>
concept changeable = requires(Part part) {
    part.set_content("x");
};
static_assert(changeable<decltype(std::declval<mms::message &>().root())>);
static_assert(!changeable<decltype(std::declval<const mms::message &>().root())>);

Octets pdu_of(const mms::message &message) {
    mms::encoded result = message.encode(mms::validation::none);
    EXPECT_EQ(mms::status::ok, result.status);
    return std::move(result.pdu);
}

// The message must not point into the PDU, which is gone when it is returned.
mms::message transmitted(const mms::message &message) {
    auto [received, status] = mms::decode(pdu_of(message));
    EXPECT_EQ(mms::status::ok, status);
    return std::move(received);
}

mms::message notification() { return mms::message::create(mms::message_type::notification_ind); }

std::string text_of(std::span<const std::uint8_t> octets) { return {octets.begin(), octets.end()}; }

// --- headers -----------------------------------------------------------------------------------

// Two good values and one that is refused; the same as the second where none is.
template <class Header, class Value = typename Header::value_type>
void check_header(Header header, const std::type_identity_t<Value> &first,
                  const std::type_identity_t<Value> &second,
                  const std::type_identity_t<Value> &refused) {
    mms::message message = notification();
    EXPECT_FALSE(message.erase(header));
    EXPECT_FALSE(message.get(header));
    for (const Value &value : {first, second}) {
        EXPECT_TRUE(message.set(header, value));
        EXPECT_EQ(value, message.get(header));
        const mms::message received = transmitted(message);
        EXPECT_EQ(value, received.get(header));
    }
    EXPECT_EQ(refused == second, message.set(header, refused));
    EXPECT_EQ(second, message.get(header));
    EXPECT_TRUE(message.erase(header));
    EXPECT_FALSE(message.get(header));
}

TEST(CxxLayer, HeadersThroughAPdu) {
    namespace h = mms::header;
    const auto check_text = [](auto header) {
        check_header(header, "first"sv, "second"sv, "with a \0 inside"sv);
        check_header(header, "first"sv, "second"sv, std::string_view());
    };
    check_text(h::transaction_id);
    check_text(h::message_id);
    check_text(h::message_class);
    check_text(h::content_location);

    const auto check_octet = [](auto header, auto first, auto second) {
        check_header(header, first, second, decltype(first){127});
    };
    check_octet(h::priority, mms::priority::low, mms::priority::high);
    check_octet(h::delivery_report, mms::yes_no::yes, mms::yes_no::no);
    check_octet(h::read_report, mms::yes_no::no, mms::yes_no::yes);
    check_octet(h::drm_content, mms::yes_no::no, mms::yes_no::yes);
    check_octet(h::sender_visibility, mms::visibility::hide, mms::visibility::show);
    check_octet(h::read_status, mms::read_status::read,
                mms::read_status::deleted_without_being_read);
    check_octet(h::status, mms::delivery_status::expired, mms::delivery_status::unreachable);
    check_octet(h::retrieve_status, mms::retrieve_status::transient_network_problem,
                mms::retrieve_status::permanent_content_unsupported);
    check_octet(h::response_status, mms::response_status::transient_partial_success,
                mms::response_status::permanent_address_hiding_not_supported);

    check_header(h::subject, {"Gr\xC3\xBC\xC3\x9F\x65", MMS_CHARSET_UTF_8}, {"plain"},
                 {"text", "KOI8-R"});
    check_header(h::response_text, {"a"}, {"b", MMS_CHARSET_ISO_8859_9}, {"c", "UTF-8\0"sv});

    constexpr std::uint32_t most = std::numeric_limits<std::uint32_t>::max();
    check_header(h::date, sys_seconds(0s), sys_seconds(1277723220s), sys_seconds(-1s));
    check_header(h::message_size, 0U, most, most);
    const mms::special_time moment = sys_seconds(std::chrono::seconds(most));
    check_header(h::expiry, moment, 24h, sys_seconds(std::chrono::seconds(1LL << 32)));
    check_header(h::delivery_time, {0s}, {sys_seconds(0s)}, {-1s});
}

TEST(CxxLayer, TypeAndVersion) {
    mms::message message = mms::message::create(mms::message_type::mbox_descr, {7, 14});
    const mms::message received = transmitted(message);
    EXPECT_EQ(mms::message_type::mbox_descr, received.get(mms::header::message_type));
    EXPECT_EQ((mms::version{7, 14}), received.get(mms::header::mms_version));
    EXPECT_FALSE(message.set(mms::header::mms_version, {1, 15}));
    EXPECT_EQ((mms::version{7, 14}), message.get(mms::header::mms_version));
    EXPECT_FALSE(mms::message::create(mms::message_type::send_req, {8, 0}));
    EXPECT_FALSE(mms::message::create(mms::message_type{127}));
}

TEST(CxxLayer, Addresses) {
    const std::vector<mms::address> all = {{"+15550100/TYPE=PLMN"},
                                           {"bob@example.net", MMS_CHARSET_UTF_8, "Bob"},
                                           {"ann@example.net", {}, "Ann"}};
    const auto check = [&](auto header) {
        mms::message message = notification();
        EXPECT_TRUE(message.get(header).empty());
        EXPECT_FALSE(message.set(header, {}));
        EXPECT_TRUE(message.set(header, {{"old@example.net"}, {"older@example.net"}}));
        EXPECT_TRUE(message.set(header, {all[0]}));
        EXPECT_FALSE(message.set(header, {all[1], {"a@b", "no such character set"}}));
        EXPECT_FALSE(message.add(header, {"a@b", {}, "zero \0 inside"sv}));
        EXPECT_TRUE(message.add(header, all[1]) && message.add(header, all[2]));
        const mms::message received = transmitted(message);
        EXPECT_EQ(3U, received.get(header).size());
        EXPECT_TRUE(std::ranges::equal(all, received.get(header)));
        mms::message copy = notification();
        for (const mms::address &address : received.get(header)) {
            EXPECT_TRUE(copy.add(header, address));
        }
        EXPECT_EQ(pdu_of(message), pdu_of(copy));
        EXPECT_TRUE(message.erase(header));
        EXPECT_TRUE(message.get(header).empty());
    };
    check(mms::header::to);
    check(mms::header::cc);
    check(mms::header::bcc);
    check(mms::header::from);
}

// --- parts -------------------------------------------------------------------------------------

// An m-retrieve-conf of a text, and an alternative of two parts.
mms::message multipart() {
    mms::message message = mms::message::create(mms::message_type::retrieve_conf);
    EXPECT_TRUE(message.root().set_content_type("multipart/related", {{"Type", "text/plain"}}));
    EXPECT_TRUE(message.root().add({"Start", "<text>"}));
    mms::part text = message.add_part(
        "text/plain", {{"Charset", "utf-8"}, {"Name", "\xC3\xA9", MMS_CHARSET_UTF_8}});
    EXPECT_TRUE(text.set_content("text"));
    EXPECT_TRUE(text.set(mms::header::content_id, "<text>"));
    EXPECT_TRUE(text.set(mms::header::part_location, "text.txt"));
    EXPECT_TRUE(text.set(mms::header::content_disposition, {"Attachment", "file.txt"}));
    EXPECT_TRUE(text.set_generic("X-One", "1") && text.set_generic("X-Two", "2"));
    mms::part alternative = message.add_part("multipart/alternative");
    EXPECT_TRUE(alternative.add_part("text/html").set_content("<p>"));
    EXPECT_TRUE(alternative.add_part("text/plain", {{"X-Flag"}}).set_content("p"));
    return message;
}

TEST(CxxLayer, PartsThroughAPdu) {
    const mms::message message = transmitted(multipart());
    const std::vector<mms::parameter> related = {{"Type", "text/plain"}, {"Start", "<text>"}};
    EXPECT_EQ("multipart/related", message.root().media_type());
    EXPECT_TRUE(std::ranges::equal(related, message.root().parameters()));

    ASSERT_EQ(2U, message.parts().size());
    const mms::part_view text = *message.parts().begin();
    EXPECT_EQ("text/plain", text.media_type());
    EXPECT_EQ((mms::parameter{"Name", "\xC3\xA9", "UTF-8"}), text.parameter("NAME"));
    EXPECT_FALSE(text.parameter("Start"));
    EXPECT_EQ("text", text_of(text.content()));
    EXPECT_TRUE(text.parts().empty());
    EXPECT_EQ("<text>", text.get(mms::header::content_id));
    EXPECT_EQ("text.txt", text.get(mms::header::part_location));
    EXPECT_EQ((mms::disposition{"Attachment", "file.txt"}),
              text.get(mms::header::content_disposition));
    const std::vector<mms::generic_header> generic = {{"X-One", "1"}, {"X-Two", "2"}};
    EXPECT_TRUE(std::ranges::equal(generic, text.generic_headers()));
    EXPECT_EQ("2", text.generic("x-two"));
    EXPECT_FALSE(text.generic("X-Three"));

    const mms::part_view alternative = *std::ranges::next(message.parts().begin());
    EXPECT_TRUE(alternative.content().empty());
    std::string nested;
    for (const mms::part_view &part : alternative.parts()) {
        nested += std::string(*part.media_type()) + ':' + text_of(part.content()) + ' ';
    }
    EXPECT_EQ("text/html:<p> text/plain:p ", nested);
    const mms::part_view flagged = *std::ranges::next(alternative.parts().begin());
    EXPECT_EQ(nullptr, flagged.parameter("X-Flag")->value.data());
}

TEST(CxxLayer, PartsAreChanged) {
    mms::message message = multipart();
    const mms::part text = *message.parts().begin();
    EXPECT_TRUE(text.set(mms::header::content_duration, 90s));
    EXPECT_EQ(90s, text.get(mms::header::content_duration));
    EXPECT_TRUE(text.set(mms::header::content_id, text.generic("X-Two").value()));
    EXPECT_TRUE(text.set_generic("x-one", *text.get(mms::header::content_id)));
    EXPECT_TRUE(text.erase_generic("X-TWO") && !text.erase_generic("X-Two"));
    EXPECT_TRUE(std::ranges::equal(std::vector<mms::generic_header>{{"x-one", "2"}},
                                   text.generic_headers()));
    EXPECT_TRUE(text.set_content_type("image/gif"));
    EXPECT_TRUE(text.parameters().empty());
    EXPECT_TRUE(text.set_content(text.content().subspan(1, 2)));
    EXPECT_EQ("ex", text_of(text.content()));
    EXPECT_TRUE(text.set_content(""));
    EXPECT_TRUE(text.content().empty());
    EXPECT_TRUE(text.erase(mms::header::content_id) && !text.erase(mms::header::content_id));
    EXPECT_TRUE(text.erase_content_type() && !text.erase_content_type());
    EXPECT_FALSE(text.media_type());
    EXPECT_FALSE(text.add({"Name", "n"}));
    EXPECT_EQ(mms::status::missing, message.encode(mms::validation::none).status);
}

// --- ownership and failures --------------------------------------------------------------------

TEST(CxxLayer, EmptyMessages) {
    mms::message full = multipart();
    const Octets pdu = pdu_of(full);
    mms::message moved = std::move(full);
    EXPECT_EQ(pdu, pdu_of(moved));
    // NOLINTBEGIN(bugprone-use-after-move,clang-analyzer-cplusplus.Move): what is looked at here
    mms::message &empty = full;
    EXPECT_FALSE(empty);
    EXPECT_EQ(nullptr, empty.get());
    EXPECT_FALSE(empty.get(mms::header::subject));
    EXPECT_TRUE(empty.get(mms::header::to).empty() && empty.parts().empty());
    EXPECT_FALSE(empty.set(mms::header::subject, {"s"}) || empty.erase(mms::header::subject));
    EXPECT_FALSE(empty.set(mms::header::to, {{"a@b"}}) || empty.add(mms::header::to, {"a@b"}));
    EXPECT_FALSE(empty.add_part("text/plain"));
    EXPECT_EQ(mms::status::refused, empty.encode().status);

    for (const mms::part &part : {empty.root(), mms::part()}) {
        EXPECT_FALSE(part || part.media_type() || part.parameter("Name") || part.generic("X") ||
                     part.get(mms::header::content_id));
        EXPECT_TRUE(part.parameters().empty() && part.parts().empty() && part.content().empty() &&
                    part.generic_headers().empty());
        EXPECT_FALSE(part.set(mms::header::content_id, "i") || part.set_content("c") ||
                     part.set_content_type("a/b") || part.add({"Name", "n"}) ||
                     part.set_generic("X", "y") || part.erase(mms::header::content_id) ||
                     part.erase_content_type() || part.erase_generic("X") || part.add_part("a/b"));
    }
    // NOLINTEND(bugprone-use-after-move,clang-analyzer-cplusplus.Move)

    mms::message adopting(moved.release());
    EXPECT_FALSE(moved);
    full = std::move(adopting);
    EXPECT_EQ(pdu, pdu_of(full));
    full = mms::message();
    EXPECT_FALSE(full);
}

TEST(CxxLayer, DecodeAndEncodeTellTheirStatus) {
    const auto nothing = mms::decode({});
    EXPECT_EQ(mms::status::malformed, nothing.status);
    EXPECT_FALSE(nothing.message);
    Octets pdu = pdu_of(multipart());
    pdu.resize(pdu.size() / 2);
    const auto cut = mms::decode(pdu);
    EXPECT_EQ(mms::status::malformed, cut.status);
    EXPECT_EQ("multipart/related", cut.message.root().media_type());

    mms::message message = mms::message::create(mms::message_type::notification_ind);
    EXPECT_EQ(mms::status::missing, message.encode().status);
    EXPECT_TRUE(message.set(mms::header::transaction_id, "T"));
    const mms::encoded encoded = message.encode();
    EXPECT_EQ(mms::status::ok, encoded.status);
    EXPECT_EQ((Octets{0x8C, 0x82, 0x98, 'T', 0, 0x8D, 0x92}), encoded.pdu);
    EXPECT_TRUE(message.set(mms::header::to, {{{}, {}, "Name alone"}}));
    EXPECT_EQ(mms::status::missing, message.encode().status);
    EXPECT_TRUE(message.encode().pdu.empty());
}

// Every operation, with each allocation of the library failing in turn: false or empty, and the
// message as it was.
TEST(CxxLayer, FailingAllocations) {
    namespace h = mms::header;
    mms::message message = multipart();
    EXPECT_TRUE(message.set(h::to, {{"old@example.net"}}));
    const mms::part text = *message.parts().begin();
    const mms::part alternative = *std::ranges::next(message.parts().begin());
    const std::function<bool()> operations[] = {
        [&] { return message.set(h::transaction_id, "new"); },
        [&] {
            return message.set(h::subject, {"new", "utf-8"});
        },
        [&] { return message.set(h::expiry, 1s); },
        [&] { return message.set(h::date, sys_seconds(1s)); },
        [&] {
            return message.set(h::to, {{"a@b", "utf-8", "A"}, {"c@d", {}, "C"}});
        },
        [&] {
            return message.add(h::to, {"e@f", {}, "E"});
        },
        [&] {
            return message.add(h::cc, {"g@h", {}, "G"});
        },
        [&] {
            return message.root().set_content_type("multipart/mixed", {{"a", "b"}, {"c"}});
        },
        [&] {
            return text.add({"X-Parameter", "value"});
        },
        [&] {
            return text.set(h::content_disposition, {"Form-data", "f", "utf-8"});
        },
        [&] { return text.set_content("new"); },
        [&] { return text.set_generic("X-Three", "3"); },
        [&] {
            return bool(message.add_part("text/plain", {{"Name", "n"}}));
        },
        [&] {
            return bool(alternative.add_part("text/plain", {{"Name", "n"}}));
        },
        [&] {
            return bool(text.add_part("text/plain", {{"Name", "n"}}));
        },
        [&] {
            const auto [pdu, status] = message.encode(mms::validation::none);
            EXPECT_EQ(status != mms::status::ok, pdu.empty());
            return status == mms::status::ok;
        },
        [] { return bool(mms::message::create(mms::message_type::send_req)); },
        [pdu = pdu_of(message)] { return mms::decode(pdu).status == mms::status::ok; },
    };
    for (const std::function<bool()> &operation : operations) {
        SCOPED_TRACE(&operation - operations);
        bool failed = true;
        long n = 0;
        for (; failed; ++n) {
            const Octets before = pdu_of(message);
            {
                const test::FailingAllocation nth(n);
                const bool done = operation();
                failed = test::FailingAllocation::happened();
                EXPECT_EQ(failed, !done) << n;
            }
            if (failed) {
                EXPECT_EQ(before, pdu_of(message)) << n;
            }
        }
        EXPECT_LT(1, n) << "no allocation was seen";
    }
}

} // namespace
