#include "model/model.hpp"

namespace {

using mms::OwnedText;

// Copies a text that may be null; false only when memory ran out.
bool copy_optional(const char *text, OwnedText &copy) {
    if (text != nullptr) {
        copy = mms::copy_text(text);
    }
    return text == nullptr || copy;
}

// Names of the parameter map are not owned; most are its own constants.
bool owns_name(const MMS_Parameter &parameter) {
    const char *name = parameter.pName;
    for (const MMS_MapEntry *row = WSP_PARAMETER_MAP; row->name != nullptr; ++row) {
        if (row->name == name) {
            return false;
        }
    }
    return name != nullptr && mms::known_parameter(mms::view_of(name)) == nullptr;
}

} // namespace

MMS_EncodedString *MMS_CreateEncodedString(const char *pText, const char *pCharset) {
    OwnedText text;
    auto *string = mms::allocate<MMS_EncodedString>();
    if (string == nullptr || !copy_optional(pText, text)) {
        std::free(string);
        return nullptr;
    }
    string->pCharset = pCharset;
    string->pText = text.release();
    return string;
}

void MMS_DestroyEncodedString(MMS_EncodedString *pString) {
    if (pString != nullptr) {
        std::free(pString->pText);
        std::free(pString);
    }
}

MMS_Mailbox *MMS_CreateMailbox(uint8_t type, char *pDisplayName, MMS_EncodedString *pAddress) {
    auto *mailbox = mms::allocate<MMS_Mailbox>();
    if (mailbox != nullptr) {
        *mailbox = {pAddress, pDisplayName, type};
    }
    return mailbox;
}

void MMS_DestroyMailbox(MMS_Mailbox *pMailbox) {
    if (pMailbox != nullptr) {
        MMS_DestroyEncodedString(pMailbox->pAddress);
        std::free(pMailbox->pDisplayName);
        std::free(pMailbox);
    }
}

MMS_Parameter *MMS_CreateParameter(const char *pName, const char *pValue) {
    OwnedText value;
    if (!copy_optional(pValue, value)) {
        return nullptr;
    }
    if (pName == nullptr) {
        auto *nameless = mms::allocate<MMS_Parameter>();
        if (nameless != nullptr) {
            nameless->pValue = value.release();
        }
        return nameless;
    }
    const mms::TextView name = mms::view_of(pName);
    return mms::make_parameter(nullptr, name, std::move(value), nullptr).release();
}

void MMS_DestroyParameter(MMS_Parameter *pParameter) {
    if (pParameter != nullptr) {
        if (owns_name(*pParameter)) {
            std::free(pParameter->pName);
        }
        std::free(pParameter->pValue);
        std::free(pParameter);
    }
}

MMS_ContentType *MMS_CreateContentType(const char *pMediaType) {
    OwnedText media_type;
    if (!copy_optional(pMediaType, media_type)) {
        return nullptr;
    }
    return mms::make_content_type(std::move(media_type)).release();
}

void MMS_DestroyContentType(MMS_ContentType *pContentType) {
    if (pContentType != nullptr) {
        MMS_LinkedList_DestroyParameterList(pContentType->pParameters);
        std::free(pContentType->pMediaType);
        std::free(pContentType);
    }
}

MMS_ContentDisposition *MMS_CreateContentDisposition(const char *pDisposition,
                                                     const char *pFilename) {
    OwnedText filename;
    if (!copy_optional(pFilename, filename)) {
        return nullptr;
    }
    return mms::make_disposition(pDisposition, std::move(filename), nullptr).release();
}

void MMS_DestroyContentDisposition(MMS_ContentDisposition *pDisposition) {
    if (pDisposition != nullptr) {
        std::free(pDisposition->pDisposition);
        std::free(pDisposition->pFilename);
        std::free(pDisposition);
    }
}

MMS_SpecialTime *MMS_CreateSpecialTime(uint32_t isAbsolute, uint32_t value) {
    constexpr uint8_t absolute = 128;
    constexpr uint8_t relative = 129;
    auto *time = mms::allocate<MMS_SpecialTime>();
    if (time != nullptr) {
        *time = {value, isAbsolute != 0 ? absolute : relative};
    }
    return time;
}

void MMS_DestroySpecialTime(MMS_SpecialTime *pTime) { std::free(pTime); }

MMS_Group *MMS_Group_Create(void) {
    mms::OwnedGroup group(mms::allocate<MMS_Group>());
    if (group) {
        group->pMailboxList = MMS_LinkedList_CreateMailboxList();
    }
    return group && group->pMailboxList != nullptr ? group.release() : nullptr;
}

void MMS_Group_Destroy(MMS_Group *pGroup) {
    if (pGroup != nullptr) {
        MMS_LinkedList_DestroyMailboxList(pGroup->pMailboxList);
        std::free(pGroup->pDisplayName);
        std::free(pGroup);
    }
}

void MMS_DestroyGenericData(MMS_GenericData *pData) {
    if (pData != nullptr) {
        std::free(pData->pHeaderValue);
        std::free(pData->pHeaderName);
        std::free(pData);
    }
}

const char *MMS_GetDisplayName(const MMS_Group *pGroup) { return pGroup->pDisplayName; }

const char *MMS_SetDisplayName(MMS_Group *pGroup, const char *pName) {
    OwnedText name = mms::copy_text(pName);
    if (!name) {
        return nullptr;
    }
    std::free(pGroup->pDisplayName);
    pGroup->pDisplayName = name.release();
    return pGroup->pDisplayName;
}

uint32_t MMS_AddMailbox(MMS_Group *pGroup, MMS_Mailbox *pMailbox) {
    return MMS_LinkedList_AddMailbox(pGroup->pMailboxList, pMailbox);
}

uint32_t MMS_DelMailbox(MMS_Group *pGroup, uint32_t position) {
    return MMS_LinkedList_DelMailboxByPos(pGroup->pMailboxList, position);
}

MMS_Mailbox *MMS_GetMailbox(const MMS_Group *pGroup, uint32_t position) {
    return MMS_LinkedList_FindMailboxByPos(pGroup->pMailboxList, position);
}

uint16_t MMS_GetMailboxCount(const MMS_Group *pGroup) {
    return MMS_LinkedList_GetMailboxCount(pGroup->pMailboxList);
}

namespace mms {

OwnedEncodedString make_encoded_string(TextView text, const char *charset) {
    OwnedEncodedString string(allocate<MMS_EncodedString>());
    if (string) {
        string->pCharset = charset;
        string->pText = copy_text(text).release();
    }
    return string && string->pText != nullptr ? std::move(string) : nullptr;
}

OwnedMailbox make_mailbox(OwnedText display_name, OwnedEncodedString address) {
    constexpr uint8_t address_present = 128;
    OwnedMailbox mailbox(MMS_CreateMailbox(address_present, display_name.get(), address.get()));
    if (mailbox) {
        static_cast<void>(display_name.release());
        static_cast<void>(address.release());
    }
    return mailbox;
}

const char *known_parameter(TextView name) {
    const MMS_MapEntry *row = find(parameter_names, name);
    return row != nullptr ? row->name : nullptr;
}

OwnedParameter make_parameter(const char *known_name, TextView name, OwnedText value,
                              const char *charset) {
    const char *constant = known_parameter(known_name != nullptr ? view_of(known_name) : name);
    OwnedParameter parameter(allocate<MMS_Parameter>());
    if (!parameter) {
        return nullptr;
    }
    parameter->pName =
        constant != nullptr ? const_cast<char *>(constant) : copy_text(name).release();
    parameter->pValue = value.release();
    parameter->pCharset = charset;
    return parameter->pName != nullptr ? std::move(parameter) : nullptr;
}

OwnedContentType make_content_type(OwnedText media_type) {
    OwnedContentType content_type(allocate<MMS_ContentType>());
    if (content_type) {
        content_type->pMediaType = media_type.release();
        content_type->pParameters = MMS_LinkedList_CreateParameterList();
    }
    return content_type && content_type->pParameters != nullptr ? std::move(content_type) : nullptr;
}

OwnedDisposition make_disposition(const char *name, OwnedText filename, const char *charset) {
    OwnedText copy;
    OwnedDisposition disposition(allocate<MMS_ContentDisposition>());
    if (!disposition || !copy_optional(name, copy)) {
        return nullptr;
    }
    *disposition = {copy.release(), filename.release(), charset};
    return disposition;
}

OwnedGenericData make_generic_data(TextView name, TextView value) {
    OwnedGenericData data(allocate<MMS_GenericData>());
    if (data) {
        data->pHeaderValue = copy_text(value).release();
        data->pHeaderName = copy_text(name).release();
    }
    return data && data->pHeaderValue != nullptr && data->pHeaderName != nullptr ? std::move(data)
                                                                                 : nullptr;
}

} // namespace mms
