#include "pdu_file.hpp"

#include <cerrno>
#include <fcntl.h>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace mmspdu {
namespace {

constexpr size_t block_size = size_t{64} * 1024;

// Closes what it opened; standard input stays open.
class InputFile {
public:
    explicit InputFile(const std::string &path)
        : owned_(path != "-"),
          // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg)
          descriptor_(owned_ ? open(path.c_str(), O_RDONLY | O_CLOEXEC) : STDIN_FILENO) {
        if (descriptor_ < 0) {
            throw std::system_error(errno, std::generic_category());
        }
    }
    InputFile(const InputFile &) = delete;
    InputFile &operator=(const InputFile &) = delete;
    ~InputFile() {
        if (owned_) {
            close(descriptor_);
        }
    }

    // The size that the system tells, 0 for what is no regular file.
    [[nodiscard]] uint64_t size() const {
        struct stat status {};
        const bool known = fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode);
        return known ? static_cast<uint64_t>(status.st_size) : 0;
    }

    size_t read_some(uint8_t *octets, size_t count) const {
        for (;;) {
            const ssize_t got = read(descriptor_, octets, count);
            if (got >= 0) {
                return static_cast<size_t>(got);
            }
            if (errno != EINTR) {
                throw std::system_error(errno, std::generic_category());
            }
        }
    }

private:
    bool owned_;
    int descriptor_;
};

void check_size(uint64_t size) {
    if (size > UINT32_MAX) {
        throw std::length_error("too large: a PDU has less than 4 GiB");
    }
}

} // namespace

std::vector<uint8_t> read_pdu_file(const std::string &path) {
    const InputFile file(path);
    check_size(file.size());
    std::vector<uint8_t> octets(static_cast<size_t>(file.size()) + block_size);
    size_t used = 0;
    for (;;) {
        const size_t got = file.read_some(octets.data() + used, octets.size() - used);
        if (got == 0) {
            octets.resize(used);
            return octets;
        }
        used += got;
        check_size(used);
        if (octets.size() - used < block_size) {
            octets.resize(octets.size() * 2);
        }
    }
}

} // namespace mmspdu
