#include "workloads.hpp"

#include <random>

namespace bench {
namespace {

constexpr uint32_t send_req = 128;
constexpr uint32_t notification_ind = 130;
constexpr uint32_t retrieve_conf = 132;
constexpr uint32_t version_1_2 = 0x12;
constexpr uint32_t relative = 129;
constexpr uint32_t normal = 129; // priority
constexpr uint32_t yes = 128;
constexpr uint32_t no = 129;
constexpr uint32_t show = 129; // sender visibility
constexpr uint32_t some_day = 1'792'584'000;

std::string number(size_t value, size_t digits) {
    std::string text = std::to_string(value);
    return std::string(digits - text.size(), '0') + text;
}

std::string phone(size_t subscriber) { return "+1555" + number(subscriber, 7) + "/TYPE=PLMN"; }

// Octets as good as random, between the markers of a JPEG file.
std::string jpeg(size_t size) {
    std::mt19937 random(static_cast<uint32_t>(size));
    std::string octets = "\xFF\xD8\xFF\xE0";
    while (octets.size() < size - 2) {
        octets.push_back(static_cast<char>(random() & 0xFF));
    }
    return octets + "\xFF\xD9";
}

Part text(const std::string &name, const std::string &words) {
    return {
        "text/plain", {{"Charset", "UTF-8"}, {"Name", name}}, "<" + name + ">", name, words, {}};
}

Part picture(const std::string &name, size_t size) {
    return {"image/jpeg", {{"Name", name}}, "<" + name + ">", name, jpeg(size), {}};
}

// A presentation with one slide.
Part smil(const std::string &image, const std::string &words) {
    return {"application/smil",
            {{"Charset", "UTF-8"}, {"Name", "smil.xml"}},
            "<smil>",
            "smil.xml",
            R"(<smil><head><layout><root-layout width="320" height="480"/>)"
            R"(<region id="Image" width="320" height="320" left="0" top="0" fit="meet"/>)"
            R"(<region id="Text" width="320" height="160" left="0" top="320"/>)"
            R"(</layout></head><body><par dur="5000ms"><img src=")" +
                image + R"(" region="Image"/><text src=")" + words +
                R"(" region="Text"/></par></body></smil>)",
            {}};
}

Part mixed(std::vector<Part> parts) {
    return {"multipart/mixed", {}, "", "", "", std::move(parts)};
}

Part related(std::vector<Part> parts) {
    return {"multipart/related", {{"Start", "<smil>"}, {"Type", "application/smil"}}, "", "", "",
            std::move(parts)};
}

// What the headers of both message types with a body have in common. All are given a value, so that
// reading supplies no defaults.
Content message(uint32_t type, Part body) {
    Content content;
    content.message_type = type;
    content.version = version_1_2;
    content.transaction_id = "T20261122-0001";
    content.date = some_day;
    content.priority = normal;
    content.delivery_report = yes;
    content.read_report = no;
    content.message_class = "Personal";
    content.subject = "Gr\xC3\xBC\xC3\x9F"
                      "e vom See";
    content.from = {"", phone(100)};
    content.to = {{"", phone(1)}};
    content.body = std::move(body);
    return content;
}

Content sent(Part body) {
    Content content = message(send_req, std::move(body));
    content.sender_visibility = show;
    content.expiry_token = relative;
    content.expiry = 7 * 86400;
    return content;
}

Content notification() {
    Content content;
    content.message_type = notification_ind;
    content.version = version_1_2;
    content.transaction_id = "T20261122-0001";
    content.from = {"", phone(100)};
    content.message_class = "Personal";
    content.message_size = 30000;
    content.expiry_token = relative;
    content.expiry = 3 * 86400;
    content.content_location = "http://mmsc.example/m/3fA9x2Qb71";
    return content;
}

Content four_small_parts() {
    Content content = message(
        retrieve_conf, related({smil("a.jpg", "a.txt"), text("a.txt", "Die Aussicht vom Steg."),
                                picture("a.jpg", 700), picture("b.jpg", 500)}));
    content.message_id = "20261122.0001@mmsc.example";
    return content;
}

Content photo() {
    return sent(related({smil("photo.jpg", "text.txt"), text("text.txt", "Bis Sonntag!"),
                         picture("photo.jpg", size_t{300} * 1024)}));
}

Content album() {
    std::vector<Part> pictures;
    for (size_t i = 0; i < 100; ++i) {
        pictures.push_back(picture("picture" + number(i, 3) + ".jpg", 1024));
    }
    return sent(mixed(std::move(pictures)));
}

Content many_recipients() {
    Content content = sent(mixed({text("text.txt", "Morgen um zehn.")}));
    content.to.clear();
    for (size_t i = 0; i < 100; ++i) {
        content.to.push_back({"Guest " + number(i, 3), phone(i)});
        content.to.push_back({"", "guest" + number(i, 3) + "@example.org"});
    }
    return content;
}

Content nested() {
    Part part = text("text.txt", "Ganz innen.");
    for (size_t level = 0; level < 250; ++level) {
        part = mixed({std::move(part)});
    }
    return sent(mixed({std::move(part)}));
}

} // namespace

std::vector<Workload> workloads() {
    return {{"notification", notification()},
            {"four-parts", four_small_parts()},
            {"photo", photo()},
            {"album", album()},
            {"recipients", many_recipients()},
            {"nested", nested()}};
}

} // namespace bench
