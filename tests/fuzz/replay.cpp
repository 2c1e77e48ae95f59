// Runs a fuzz target over files, without a fuzzer: every file of the directories given, and every
// truncation of the small ones. A check that fails, or a sanitizer, ends the process; the file that
// was at work is then the last one named.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace {

constexpr size_t small = 256;

void run(const std::vector<char> &octets, size_t size) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(octets.data()), size);
}

bool replay(const std::filesystem::path &path) {
    std::printf("%s\n", path.filename().c_str());
    std::fflush(stdout);
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> octets{std::istreambuf_iterator<char>(file), {}};
    if (!file) {
        std::fprintf(stderr, "cannot read %s\n", path.c_str());
        return false;
    }
    run(octets, octets.size());
    for (size_t size = 0; octets.size() <= small && size < octets.size(); ++size) {
        run(octets, size);
    }
    return true;
}

std::vector<std::filesystem::path> files_of(const char *directory) {
    std::vector<std::filesystem::path> files;
    if (!std::filesystem::exists(directory)) {
        return files; // of regressions, while there are none
    }
    for (const auto &entry : std::filesystem::directory_iterator(directory)) {
        if (entry.is_regular_file() && entry.path().filename().c_str()[0] != '.') {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

int main(int argc, char **argv) {
    size_t count = 0;
    for (int i = 1; i < argc; ++i) {
        for (const std::filesystem::path &path : files_of(argv[i])) {
            if (!replay(path)) {
                return 1;
            }
            ++count;
        }
    }
    std::printf("%zu files\n", count);
    return count != 0 ? 0 : 1;
}
