// The messages that are measured.
#pragma once

#include <string>
#include <vector>

#include "content.hpp"

namespace bench {

struct Workload {
    std::string name;
    Content content;
};

std::vector<Workload> workloads();

} // namespace bench
