// mmslib, through its C interface, and the floor below it.
#pragma once

#include <memory>
#include <string>

#include "heap_record.hpp"
#include "mmslib.h"
#include "sides.hpp"

namespace bench {

struct DestroyMessage {
    void operator()(MMSLib_Message *message) const { MMSLib_Message_Destroy(message); }
};
using OwnedMessage = std::unique_ptr<MMSLib_Message, DestroyMessage>;

class MmsSide : public Side {
public:
    explicit MmsSide(const Content &content);

    [[nodiscard]] Content content() const override;
    void decode() const override;
    void encode() const override;

    [[nodiscard]] OwnedMessage decode_alone() const;
    [[nodiscard]] uint32_t size() const { return MMSLib_GetSize(message_.get()); }
    void recode() const;

    [[nodiscard]] const std::string &pdu() const { return pdu_; }

private:
    std::string pdu_;
    OwnedMessage message_; // decoded from the PDU
};

// What no decoder and no encoder with these results can do without: the heap blocks of the message
// that mmslib decodes, allocated, filled with one copy each and freed in mmslib's order; and one
// block with one copy of the PDU.
class Floor : public Side {
public:
    explicit Floor(const MmsSide &library);

    [[nodiscard]] Content content() const override { return {}; }
    void decode() const override;
    void encode() const override;

    [[nodiscard]] const HeapRecord &record() const { return record_; }

private:
    HeapRecord record_;
    std::string pdu_;
    mutable std::vector<void *> addresses_;
};

} // namespace bench
