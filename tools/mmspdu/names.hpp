// What the values of enumerated headers are called.
#pragma once

#include <cstdint>
#include <string_view>

namespace mmspdu {

// The name of a value of that header, or null when it has none.
const char *value_name(std::string_view header, uint32_t value);

} // namespace mmspdu
