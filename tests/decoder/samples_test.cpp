#include "decoder/render.hpp"

namespace {

using namespace test;

using Names = std::vector<const char *>;
const Names smallest = {"delivery-ind.mms", "read-rec-ind.mms"};
const Names small = {"notification-ind.mms", "hostile-terminal.mms", "send-req-related-ucs2.mms",
                     "retrieve-conf-nested.mms"};
const Names large = {"send-req-mixed-jpeg.mms"};

// The whole sample decodes, to that header entity and those parts.
void expect_sample(const char *name, size_t size, const std::string &headers,
                   const std::vector<std::string> &parts = {}) {
    SCOPED_TRACE(name);
    const Octets pdu = read_sample(name);
    EXPECT_EQ(pdu.size(), size);
    const Decoded decoded = decode(pdu);
    EXPECT_EQ(decoded.status, MMS_STATUS_OK);
    ASSERT_NE(decoded.message, nullptr);
    const MMS_Container *container = decoded.message->pContainer;
    EXPECT_EQ(shown(MMS_GetEntity(container, 0)), headers);
    ASSERT_EQ(MMS_GetEntityCount(container), parts.size() + 1);
    for (uint32_t i = 0; i < parts.size(); ++i) {
        EXPECT_EQ(shown(MMS_GetEntity(container, i + 1)), parts[i]);
    }
}

TEST(Samples, FromTheField) {
    expect_sample("read-rec-ind.mms", 77,
                  "X-Mms-Message-Type=135, X-Mms-Mms-Version=18, Message-Id=3013166, "
                  "To=+821000000000/TYPE=PLMN{UTF-8}, From=+821000000001/TYPE=PLMN{UTF-8}, "
                  "Date=1277723220, X-Mms-Read-Status=128");
    expect_sample(
        "send-req-mixed-jpeg.mms", 22489,
        "X-Mms-Message-Type=128, X-Mms-Transaction-Id=000005, X-Mms-Mms-Version=16, "
        "Date=1012398869, From=+358990000066/TYPE=PLMN, To=+358990000033/TYPE=PLMN, "
        "Subject=This is a test MMS message !, X-Mms-Delivery-Report=129, "
        "X-Mms-Read-Report=129, X-Mms-Message-Class=Advertisement, X-Mms-Priority=128, "
        "Content-Type=multipart/mixed, X-Mms-Sender-Visibility=128",
        {"Content-Type=text/plain;Charset=US-ASCII #231#", "Content-Type=image/jpeg #22135#"});
    const std::string text = "This is a multimedia test";
    std::string ucs_2 = "\xFF\xFE";
    for (const char character : text) {
        ucs_2 += {character, '\0'};
    }
    expect_sample("send-req-related-ucs2.mms", 441,
                  "X-Mms-Message-Type=128, X-Mms-Transaction-Id=1845159599, X-Mms-Mms-Version=16, "
                  "To=0960000000/TYPE=PLMN, X-Mms-Message-Class=Personal, X-Mms-Expiry=129:86400, "
                  "X-Mms-Priority=129, X-Mms-Delivery-Report=129, X-Mms-Read-Report=129, "
                  "Content-Type=multipart/related;Start=<1638599438>;Type=application/smil, "
                  "X-Mms-Sender-Visibility=128",
                  {"Content-Type=text/plain;Charset=ISO-10646-UCS-2;Name=This_is.txt, "
                   "Content-Location=This_is.txt #" +
                       ucs_2 + "#",
                   "Content-Type=application/smil, Content-Id=<1638599438>, "
                   "Content-Location=mms.smil #217#"});
    const Octets pdu = read_sample("send-req-mixed-jpeg.mms");
    const Decoded decoded = decode(pdu);
    const uint8_t *image = MMS_GetContent(MMS_GetEntity(decoded.message->pContainer, 2));
    EXPECT_TRUE(std::equal(pdu.end() - 22135, pdu.end(), image));
}

TEST(Samples, OfOurOwn) {
    expect_sample("delivery-ind.mms", 61,
                  "X-Mms-Message-Type=134, X-Mms-Mms-Version=18, "
                  "Message-Id=2026-0042@mmsc.example.net, To=+15550101/TYPE=PLMN, "
                  "Date=1768467725, X-Mms-Status=129");
    expect_sample("notification-ind.mms", 119,
                  "X-Mms-Message-Type=130, X-Mms-Transaction-Id=N-2026-0042, "
                  "X-Mms-Mms-Version=18, From=Zoë|+15550100/TYPE=PLMN{UTF-8}, "
                  "Subject=Harbour at dawn, X-Mms-Message-Class=Personal, "
                  "X-Mms-Message-Size=48213, X-Mms-Expiry=129:259200, "
                  "X-Mms-Content-Location=http://mmsc.example.net/m/2026-0042");
    const std::string gif("GIF89a\1\0\1\0\x80\0\0\xFF\xFF\xFF\0\0\0,\0\0\0\0\1\0\1\0\0\2\2D\1\0;",
                          35);
    expect_sample("retrieve-conf-nested.mms", 774,
                  "X-Mms-Message-Type=132, X-Mms-Transaction-Id=R-2026-0042, "
                  "X-Mms-Mms-Version=18, Message-Id=2026-0042@mmsc.example.net, Date=1768464000, "
                  "From=+15550100/TYPE=PLMN, To=+15550101/TYPE=PLMN & bob@example.net, "
                  "Subject=Grüße vom Hafen{UTF-8}, X-Mms-Message-Class=Personal, "
                  "X-Mms-Priority=129, "
                  "Content-Type=multipart/related;Start=<smil>;Type=application/smil, "
                  "X-Mms-Delivery-Report=129, X-Mms-Read-Report=129",
                  {"Content-Type=application/smil, Content-Id=<smil> #319#",
                   "Content-Type=text/plain;Charset=UTF-8;Name=greeting.txt, "
                   "Content-Location=greeting.txt, Content-Duration=5, 'X-Foo'=bar "
                   "#Schöne Grüße – привет, 世界 🙂\n#",
                   "Content-Type=image/gif, Content-Location=dot.gif, "
                   "Content-Disposition=Attachment dot.gif #" +
                       gif + "#",
                   "Content-Type=multipart/alternative, INTERNAL_Nested-Multipart="
                   "(Content-Type=text/plain;Charset=US-ASCII #See you tomorrow.\n#)"
                   "(Content-Type=text/html;Charset=UTF-8 "
                   "#<p>See you <b>tomorrow</b> – at 8.</p>\n#), Content-Id=<alternative>"});
    const std::string hostile = shown(decode(read_sample("hostile-terminal.mms")));
    for (const char *octets : {"1 (X-Mms-Message-Type=128, X-Mms-Transaction-Id=H-2026-0042",
                               "|+15550166/TYPE=PLMN{UTF-8}, To=+15550101/TYPE=PLMN, Subject=",
                               "\x1B[2J", "\x1B]0;owned\x07", "\xFF\xC3(\xE2\x82\xED\xA0\x80"}) {
        EXPECT_NE(hostile.find(octets), std::string::npos) << octets;
    }
}

// Whatever comes in, decoding ends with one of two statuses and a message that can be read.
MessagePtr expect_sound(const Octets &pdu) {
    Decoded decoded = decode(pdu);
    EXPECT_TRUE(decoded.status == MMS_STATUS_OK || decoded.status == MMS_STATUS_MALFORMED);
    if (decoded.message) {
        EXPECT_NE(shown(decoded.message->pContainer), "()"); // reads all of it
    }
    return std::move(decoded.message);
}

// A prefix has no header and no part that the whole does not have.
void cut_anywhere(const char *name) {
    SCOPED_TRACE(name);
    const Octets pdu = read_sample(name);
    const MessagePtr whole = decode(pdu).message;
    const std::vector<int> ids = field_ids(MMS_GetEntity(whole->pContainer, 0));
    for (size_t size = 0; size < pdu.size(); ++size) {
        const MessagePtr cut =
            expect_sound({pdu.begin(), pdu.begin() + static_cast<std::ptrdiff_t>(size)});
        EXPECT_EQ(cut != nullptr, size >= 2) << size;
        if (!cut) {
            continue;
        }
        EXPECT_LE(MMS_GetEntityCount(cut->pContainer), MMS_GetEntityCount(whole->pContainer));
        for (const int id : field_ids(MMS_GetEntity(cut->pContainer, 0))) {
            EXPECT_NE(std::find(ids.begin(), ids.end(), id), ids.end()) << size << ": " << id;
        }
    }
}

TEST(Samples, CutAnywhere) {
    for (const Names &names : {smallest, small, large}) {
        std::for_each(names.begin(), names.end(), cut_anywhere);
    }
}

// Every octet exclusive-or each number below 256 that the step reaches.
template <typename Step>
void change_each_octet(const char *name, Step step) {
    SCOPED_TRACE(name);
    Octets pdu = read_sample(name);
    for (size_t at = 0; at < pdu.size(); ++at) {
        const uint8_t octet = pdu[at];
        for (int change = 1; change < 256; change = step(change)) {
            SCOPED_TRACE(std::to_string(at) + " exclusive-or " + std::to_string(change));
            pdu[at] = static_cast<uint8_t>(octet ^ change);
            expect_sound(pdu);
        }
        pdu[at] = octet;
    }
}

TEST(Samples, AnyOctetChanged) {
    for (const char *name : smallest) {
        change_each_octet(name, [](int change) { return change + 1; });
    }
    for (const char *name : small) {
        change_each_octet(name, [](int change) { return change * 2; });
    }
}

} // namespace
