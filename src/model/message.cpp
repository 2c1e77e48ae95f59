#include "model/model.hpp"

namespace mms {

MMSLib_Message *create_message() {
    auto *message = allocate<MMSLib_Message>();
    if (message != nullptr) {
        message->pContainer = MMS_Container_Create();
        if (message->pContainer == nullptr) {
            std::free(message);
            return nullptr;
        }
    }
    return message;
}

void destroy_message(MMSLib_Message *message) {
    if (message != nullptr) {
        MMS_Container_Destroy(message->pContainer);
        std::free(message);
    }
}

} // namespace mms
