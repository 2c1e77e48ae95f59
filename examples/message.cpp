// Writes a message with a text to a file, then reads the file and prints what is in it.
#include "mmslib.hpp"
#include <fstream>
#include <iostream>

namespace {

// Every setter answers whether it stored its value.
bool fill(mms::message &message) {
    return message.set(mms::header::transaction_id, "T-0001") &&
           message.set(mms::header::to, {{"+15550100/TYPE=PLMN"}, {"bob@example.net"}}) &&
           message.set(mms::header::subject, {"Hello", MMS_CHARSET_UTF_8}) &&
           message.set(mms::header::expiry, std::chrono::days(3)) &&
           message.root().set_content_type("multipart/mixed") &&
           message.add_part("text/plain", {{"Charset", "utf-8"}}).set_content("Good morning");
}

bool write(const char *file, const mms::message &message) {
    const auto [pdu, status] = message.encode();
    std::ofstream out(file, std::ios::binary);
    out.write(reinterpret_cast<const char *>(pdu.data()), static_cast<std::streamsize>(pdu.size()));
    return status == mms::status::ok && out.flush();
}

bool print(const char *file) {
    std::ifstream in(file, std::ios::binary);
    const std::vector<char> pdu{std::istreambuf_iterator<char>(in), {}};
    const auto [message, status] =
        mms::decode({reinterpret_cast<const std::uint8_t *>(pdu.data()), pdu.size()});
    if (const auto subject = message.get(mms::header::subject)) {
        std::cout << subject->text << '\n';
    }
    for (const mms::address &address : message.get(mms::header::to)) {
        std::cout << "to " << address.text << '\n';
    }
    for (const mms::part_view &part : message.parts()) {
        std::cout << part.media_type().value_or("?") << ", " << part.content().size()
                  << " octets\n";
    }
    return status == mms::status::ok;
}

} // namespace

int main(int argc, char **argv) {
    auto message = mms::message::create(mms::message_type::send_req);
    return argc == 2 && fill(message) && write(argv[1], message) && print(argv[1]) ? 0 : 1;
}
