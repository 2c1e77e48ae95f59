// A message as text, for comparisons: every field and part of it on a line of its own.
#pragma once

#include <string>
#include <vector>

#include "mmslib.h"

namespace test {

// The lines in field order, nested parts behind the part that holds them.
std::vector<std::string> describe(const MMS_Container *container);

} // namespace test
