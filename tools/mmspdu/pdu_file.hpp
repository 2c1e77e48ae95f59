// PDUs in files.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace mmspdu {

// The octets of the file, or of standard input for "-". Throws std::system_error, or
// std::length_error for 4 GiB or more, which no PDU of the library can have; what() of both is
// the reason without the file's name.
std::vector<uint8_t> read_pdu_file(const std::string &path);

// Makes the octets the content of the file, which keeps its owner and mode when it is there. A
// regular file is replaced as a whole or, when that fails, not at all. Throws std::system_error.
void write_pdu_file(const std::string &path, std::span<const uint8_t> octets);

} // namespace mmspdu
