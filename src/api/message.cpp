#include "api/api.h"
#include "model/model.hpp"

namespace {

bool fill_send_request(MMS_Container *container) {
    constexpr uint8_t send_request = 128;
    uint16_t position = 0;
    mms::OwnedEntity entity(MMS_Entity_Create());
    if (!entity || MMS_AddEntity(container, entity.get(), &position) == 0) {
        return false;
    }
    static_cast<void>(entity.release());
    return MMSLib_SetXMmsMessageType(container, send_request) != 0 &&
           MMSLib_SetXMmsTransactionId(container, "blaah") != 0 &&
           MMSLib_SetXMmsVersion(container, 1, 2) != 0;
}

} // namespace

MMSLib_Message *MMSLib_Message_Create(void) { return mms::create_message(); }

void MMSLib_Message_Destroy(MMSLib_Message *pMessage) { mms::destroy_message(pMessage); }

MMSLib_Message *MMS_CreateMMS(void) {
    mms::OwnedMessage message(mms::create_message());
    return message && fill_send_request(message->pContainer) ? message.release() : nullptr;
}
