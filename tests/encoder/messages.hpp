// Messages built through the accessors, and octets written by hand.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "support/support.hpp"

namespace test {

// Octets in a notation close to the wire: hexadecimal digits are octets, 'text' is the characters
// with a terminating zero, "text" the characters alone; spaces are ignored.
Octets wire(std::string_view notation);

// A message with one entity and that type, transaction id "T1" and version 1.2.
MessagePtr new_message(uint8_t type);

MMS_Group *new_group(std::string_view address, const char *charset = nullptr,
                     const char *display_name = nullptr);
MMS_ContentType *new_type(const char *media,
                          std::vector<std::pair<const char *, const char *>> parameters = {});
// A part appended to the container.
MMS_Entity *add_part(MMS_Container *container, const char *media, std::string_view content);
// A multipart part appended to the container; its nested container.
MMS_Container *add_multipart(MMS_Container *container, const char *media);

struct Example {
    std::string name;
    std::function<MessagePtr()> build;
    Octets expected;
    // What encoding the decoded message gives: the same, but for defaults that reading adds and
    // headers that reading passes over.
    Octets again;
};

// One message of every type, and what it is on the wire.
const std::vector<Example> &examples();

// Every setter, value kind, kind of parameter and kind of part in one message.
MessagePtr everything();

// Encodes; an empty result after a failure, which fails the test unless it is `expected_status`.
Octets encode(const MMSLib_Message *message, uint8_t validate = 0,
              uint32_t expected_status = MMS_STATUS_OK);

} // namespace test
