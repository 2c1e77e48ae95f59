// What stands between the exported functions, with their buffers and counts, and the codecs, which
// are written on Reader and Writer.
#pragma once

#include "codec/reader.hpp"
#include "codec/writer.hpp"

namespace mms {

// Runs `read` on a Reader of the input and reports what it consumed, 0 after a failure.
template <typename Read>
MMS_Status run_decoder(const uint8_t *input, uint32_t length, uint32_t *consumed, Read read) {
    const Reader start(input, length);
    Reader in = start;
    const MMS_Status status = read(in);
    *consumed = status == MMS_STATUS_OK ? in.consumed_since(start) : 0;
    return status;
}

// As `run_decoder` for a record or text result, which passes to the caller.
template <typename Owner, typename Result, typename Read>
MMS_Status run_decoder_of(const uint8_t *input, uint32_t length, uint32_t *consumed,
                          Result **result, Read read) {
    Owner owner;
    const MMS_Status status =
        run_decoder(input, length, consumed, [&](Reader &in) { return read(in, owner); });
    *result = owner.release();
    return status;
}

// Runs `write` on a Writer of the output and reports what it wrote.
template <typename Write>
MMS_Status run_encoder(uint8_t *output, uint32_t remaining, uint8_t size_only, uint32_t *written,
                       Write write) {
    Writer out(output, remaining, size_only != 0);
    write(out);
    *written = out.count();
    return out.status();
}

} // namespace mms
