// The one way octets are read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace mms {

// What is left of a run of octets.
//
// A codec takes a Reader by reference, looks at its front, and skips what it consumed. Every codec
// leaves the Reader where it was when it fails, so that its caller can try another form.
class Reader {
public:
    Reader(const uint8_t *data, uint32_t size) : data_(data), size_(size) {}

    [[nodiscard]] const uint8_t *data() const { return data_; }
    [[nodiscard]] uint32_t left() const { return size_; }
    [[nodiscard]] bool empty() const { return size_ == 0; }

    // The next octet; there must be one.
    [[nodiscard]] uint8_t front() const { return *data_; }

    // Passes over octets; there must be as many.
    void skip(uint32_t count) {
        data_ += count;
        size_ -= count;
    }

    // A Reader of the next octets alone, at most as many as are left.
    [[nodiscard]] Reader first(uint32_t count) const {
        return {data_, count < size_ ? count : size_};
    }

    // Octets up to the first zero; all that are left when there is none.
    [[nodiscard]] uint32_t until_zero() const {
        const void *zero = empty() ? nullptr : std::memchr(data_, 0, size_);
        return zero == nullptr ? size_
                               : static_cast<uint32_t>(static_cast<const uint8_t *>(zero) - data_);
    }

    // Octets consumed since an earlier state of this Reader.
    [[nodiscard]] uint32_t consumed_since(const Reader &start) const { return start.size_ - size_; }

private:
    const uint8_t *data_;
    uint32_t size_;
};

} // namespace mms
