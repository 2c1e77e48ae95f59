// PDUs in files.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace mmspdu {

// The octets of the file, or of standard input for "-". Throws std::system_error, or
// std::length_error for 4 GiB or more, which no PDU of the library can have; what() of both is
// the reason without the file's name.
std::vector<uint8_t> read_pdu_file(const std::string &path);

} // namespace mmspdu
