#include "pdu_file.hpp"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace mmspdu {
namespace {

constexpr size_t block_size = size_t{64} * 1024;

[[noreturn]] void fail() { throw std::system_error(errno, std::generic_category()); }

// Closes what it opened; standard input stays open.
class InputFile {
public:
    explicit InputFile(const std::string &path)
        : owned_(path != "-"),
          // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg)
          descriptor_(owned_ ? open(path.c_str(), O_RDONLY | O_CLOEXEC) : STDIN_FILENO) {
        if (descriptor_ < 0) {
            fail();
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
                fail();
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

class OutputFile {
public:
    OutputFile(const std::string &path, int flags)
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg)
        : descriptor_(open(path.c_str(), O_WRONLY | O_CLOEXEC | flags, 0666)) {
        if (descriptor_ < 0) {
            fail();
        }
    }
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;
    ~OutputFile() {
        if (descriptor_ >= 0) {
            close(descriptor_);
        }
    }

    // Takes on the mode of another file, and its owner where this process may give files away.
    void resemble(const struct stat &other) const {
        const bool given = fchown(descriptor_, other.st_uid, other.st_gid) == 0;
        if (fchmod(descriptor_, other.st_mode & (given ? 0777U : 0755U)) != 0) {
            fail();
        }
    }

    void write_all(std::span<const uint8_t> octets) const {
        while (!octets.empty()) {
            const ssize_t written = write(descriptor_, octets.data(), octets.size());
            if (written < 0 && errno != EINTR) {
                fail();
            }
            octets = octets.subspan(static_cast<size_t>(written < 0 ? 0 : written));
        }
    }

    // Some file systems tell only now that there was no room.
    void finish() {
        const int descriptor = descriptor_;
        descriptor_ = -1;
        if (close(descriptor) != 0) {
            fail();
        }
    }

private:
    int descriptor_;
};

void write_directly(const std::string &path, std::span<const uint8_t> octets) {
    OutputFile file(path, O_CREAT | O_TRUNC);
    file.write_all(octets);
    file.finish();
}

// A file in the directory of another, which disappears unless it takes the other's place.
class NewFile {
public:
    explicit NewFile(std::string place)
        : place_(std::move(place)),
          path_(place_.substr(0, place_.rfind('/') + 1) + ".mmspdu-" + std::to_string(getpid())),
          file_(path_, O_CREAT | O_EXCL) {}
    NewFile(const NewFile &) = delete;
    NewFile &operator=(const NewFile &) = delete;
    ~NewFile() {
        if (!path_.empty()) {
            unlink(path_.c_str());
        }
    }

    OutputFile &file() { return file_; }

    void take_place() {
        file_.finish();
        if (rename(path_.c_str(), place_.c_str()) != 0) {
            fail();
        }
        path_.clear();
    }

private:
    std::string place_;
    std::string path_;
    OutputFile file_;
};

struct FreeText {
    void operator()(char *text) const { std::free(text); }
};

// The file that a path with symbolic links leads to.
std::string resolved(const std::string &path) {
    const std::unique_ptr<char, FreeText> real(realpath(path.c_str(), nullptr));
    if (real == nullptr) {
        fail();
    }
    return real.get();
}

void replace_file(const std::string &path, const struct stat &old,
                  std::span<const uint8_t> octets) {
    // Whoever may not write to the file shall not replace it either.
    OutputFile(path, 0).finish();
    NewFile replacement(resolved(path));
    replacement.file().write_all(octets);
    replacement.file().resemble(old);
    replacement.take_place();
}

void create_file(const std::string &path, std::span<const uint8_t> octets) {
    NewFile created(path);
    created.file().write_all(octets);
    created.take_place();
}

} // namespace

void write_pdu_file(const std::string &path, std::span<const uint8_t> octets) {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0) {
        if (S_ISREG(status.st_mode)) {
            replace_file(path, status, octets);
        } else {
            write_directly(path, octets);
        }
    } else if (lstat(path.c_str(), &status) == 0) {
        // A symbolic link that leads to no file yet.
        write_directly(path, octets);
    } else {
        create_file(path, octets);
    }
}

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
