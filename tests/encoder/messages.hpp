// Messages to encode, built through the interface or read.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "support/wire.hpp"

namespace test {

// A message with one entity and that type, transaction id "T1" and version 1.2.
MessagePtr new_message(uint8_t type);

MMS_Group *new_group(const char *address, const char *charset = nullptr,
                     const char *display_name = nullptr);
MMS_ContentType *
new_type(const char *media,
         const std::vector<std::pair<const char *, const char *>> &parameters = {});
// A part appended to the container.
MMS_Entity *add_part(MMS_Container *container, const char *media, std::string_view content);
// A multipart part appended to the container; its nested container.
MMS_Container *add_multipart(MMS_Container *container, const char *media);

// A PDU with every header, value kind, kind of parameter and kind of part, as it is encoded.
Octets everything();

// Encodes; an empty result after a failure, which fails the test unless it is `expected_status`.
Octets encode(const MMSLib_Message *message, uint8_t validate = 0,
              uint32_t expected_status = MMS_STATUS_OK);

} // namespace test
