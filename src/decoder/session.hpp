// The decoder's session as its steps use it.
#pragma once

#include "codec/values.hpp"
#include "decoder/decoder.h"

namespace mms {

// What is left of the PDU.
inline Reader rest_of(const MMS_Decoder &session) { return {session.pCursor, session.remaining}; }

// Passes over octets; of more than are left nothing remains, with the cursor where it was.
inline void advance(MMS_Decoder &session, uint32_t count) {
    if (count > session.remaining) {
        session.remaining = 0;
        return;
    }
    session.pCursor += count;
    session.remaining -= count;
}

// Moves the session to where a Reader of its rest has come.
inline void advance_to(MMS_Decoder &session, const Reader &in) {
    advance(session, in.consumed_since(rest_of(session)));
}

// Statuses that say the value is bad and the framing around it is not.
inline bool concerns_value_alone(MMS_Status status) {
    return status == MMS_STATUS_WRONG_FORM || status == MMS_STATUS_OUT_OF_RANGE;
}

} // namespace mms
