/**
 * @file
 * The interface for applications: messages, their headers, decoding and encoding.
 */
#ifndef MMSLIB_API_API_H
#define MMSLIB_API_API_H

#include "../decoder/decoder.h"
#include "../encoder/encoder.h"

MMSLIB_BEGIN_DECLS

/**
 * @defgroup messages Messages
 *
 * `pMessage` is a message, `pPdu` the octets of a PDU.
 * @{
 */

/** A new message with an empty container, which the caller destroys, or null without memory. It
 *  needs an entity (`MMS_AddEntity`) before headers can be set. */
MMSLIB_API MMSLib_Message *MMSLib_Message_Create(void);

/** Releases the message with everything it owns; null is accepted. The PDU that it was decoded from
 *  stays with its owner. */
MMSLIB_API void MMSLib_Message_Destroy(MMSLib_Message *pMessage);

/** A new m-send-req of version 1.2 with one entity and the transaction id "blaah", to be filled in
 *  and its transaction id replaced; the caller destroys it. Null without memory. */
MMSLIB_API MMSLib_Message *MMS_CreateMMS(void);

/**
 * Decodes a PDU of `length` octets (OMA MMS encapsulation) into a new message.
 *
 * Any octets at all may be passed; time and memory grow linearly with their number. *ppMessage is
 * the caller's, to be released with `MMSLib_Message_Destroy`, whatever the status; it is null when
 * no header was stored, also with MMS_STATUS_OK. The PDU stays the caller's; nothing in the message
 * points into it but `pPdu`, which is not read again.
 *
 * Returns MMS_STATUS_OK when the PDU was decoded to its end; MMS_STATUS_MALFORMED for a null
 * buffer, a length of 0, and any PDU that was not, of which *ppMessage then holds what was decoded;
 * MMS_STATUS_NO_ROOM when decoding could not begin for lack of memory.
 *
 * Decoding to the end may pass over headers without a codec, values that may be dropped, addresses
 * and nested parts beyond the limits, and takes of the last part's data what there is.
 */
MMSLIB_API uint32_t MMSLib_DecodeMessage(const uint8_t *pPdu, uint32_t length,
                                         MMSLib_Message **ppMessage);

/**
 * Encodes a message (not null) into a new block of the PDU's length, or up to a quarter more where
 * cutting a large block would cost time. `validate` non-zero checks the mandatory headers of the
 * message type first (see `EncodeMmsHeaders`).
 *
 * On success *ppPdu is the block, which the caller releases with `free`, and *pLength its octets;
 * otherwise both are left as they were.
 *
 * Returns MMS_STATUS_OK; MMS_STATUS_NO_ROOM without memory; MMS_STATUS_MISSING,
 * MMS_STATUS_WRONG_FORM and MMS_STATUS_OUT_OF_RANGE as the encoder's steps give them.
 */
MMSLIB_API uint32_t MMSLib_EncodeMessage(const MMSLib_Message *pMessage, uint8_t **ppPdu,
                                         uint32_t *pLength, uint8_t validate);

/** The octets of the PDU that encoding with the check of mandatory headers gives; 0 for a null
 *  message and for one that cannot be encoded. */
MMSLIB_API uint32_t MMSLib_GetSize(const MMSLib_Message *pMessage);

/** @} */

/**
 * @defgroup headers Headers of a message
 *
 * Each header has a getter, a setter and a deleter, which take the message's `pContainer`, not
 * null. The header's entity is the first that has it; a setter uses the first entity of all when
 * none has it, and answers 0 when there is no entity.
 *
 * Getters give the stored value, which stays owned by the message, or null or 0 when absent.
 * Setters take a `value`, an octet as it stands on the wire or a number, a `pText`, which is
 * copied, or a record `pValue`, which is adopted and stays the caller's when the answer is 0. They
 * answer 1, or 0 with nothing changed: for null, for a value out of range, without memory, and when
 * the entity has 65535 fields. They replace a value in its place, and release it unless it is the
 * very record that is passed. Deleters answer 1, or 0 when the header is absent; they delete it
 * from its entity alone.
 * @{
 */

/** X-Mms-Message-Type, 128 (m-send-req) to 147: which PDU it is. @{ */
MMSLIB_API uint8_t MMSLib_GetXMmsMessageType(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetXMmsMessageType(MMS_Container *pContainer, uint8_t value);
MMSLIB_API uint32_t MMSLib_DelXMmsMessageType(MMS_Container *pContainer);
/** @} */

/** X-Mms-Transaction-Id, a text. The header goes to the end of the entity's fields, not to the
 *  place of the old one. @{ */
MMSLIB_API const char *MMSLib_GetXMmsTransactionId(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetXMmsTransactionId(MMS_Container *pContainer, const char *pText);
MMSLIB_API uint32_t MMSLib_DelXMmsTransactionId(MMS_Container *pContainer);
/** @} */

/** X-Mms-Mms-Version, `major` 1 to 7 and `minor` 0 to 14. The getter answers the version octet (as
 *  `MMSGetMajorVersion` reads it) with both numbers in *pMajor and *pMinor, a minor of 15 standing
 *  for none, or 0 with both outputs as they were. @{ */
MMSLIB_API uint8_t MMSLib_GetXMmsVersion(const MMS_Container *pContainer, uint8_t *pMajor,
                                         uint8_t *pMinor);
MMSLIB_API uint32_t MMSLib_SetXMmsVersion(MMS_Container *pContainer, uint8_t major, uint8_t minor);
MMSLIB_API uint32_t MMSLib_DelXMmsVersion(MMS_Container *pContainer);
/** @} */

/** Content-Type, an `MMS_ContentType`. The setter always stores in the first entity; the getter may
 *  find that of a part when the first entity has none. @{ */
MMSLIB_API MMS_ContentType *MMSLib_GetContentType(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetContentType(MMS_Container *pContainer, MMS_ContentType *pValue);
MMSLIB_API uint32_t MMSLib_DelContentType(MMS_Container *pContainer);
/** @} */

/** To, an `MMS_Group`. @{ */
MMSLIB_API MMS_Group *MMSLib_GetTo(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetTo(MMS_Container *pContainer, MMS_Group *pValue);
MMSLIB_API uint32_t MMSLib_DelTo(MMS_Container *pContainer);
/** @} */

/** Cc, an `MMS_Group`. @{ */
MMSLIB_API MMS_Group *MMSLib_GetCc(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetCc(MMS_Container *pContainer, MMS_Group *pValue);
MMSLIB_API uint32_t MMSLib_DelCc(MMS_Container *pContainer);
/** @} */

/** Bcc, an `MMS_Group`. @{ */
MMSLIB_API MMS_Group *MMSLib_GetBcc(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetBcc(MMS_Container *pContainer, MMS_Group *pValue);
MMSLIB_API uint32_t MMSLib_DelBcc(MMS_Container *pContainer);
/** @} */

/** From, an `MMS_Group`. @{ */
MMSLIB_API MMS_Group *MMSLib_GetFrom(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetFrom(MMS_Container *pContainer, MMS_Group *pValue);
MMSLIB_API uint32_t MMSLib_DelFrom(MMS_Container *pContainer);
/** @} */

/** Subject, an `MMS_EncodedString`. @{ */
MMSLIB_API MMS_EncodedString *MMSLib_GetSubject(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetSubject(MMS_Container *pContainer, MMS_EncodedString *pValue);
MMSLIB_API uint32_t MMSLib_DelSubject(MMS_Container *pContainer);
/** @} */

/** X-Mms-Status, 128 to 135: 128 expired, 129 retrieved, 130 rejected, 131 deferred, 132
 *  unrecognised, 133 indeterminate, 134 forwarded, 135 unreachable. @{ */
MMSLIB_API uint8_t MMSLib_GetXMmsStatus(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetXMmsStatus(MMS_Container *pContainer, uint8_t value);
MMSLIB_API uint32_t MMSLib_DelXMmsStatus(MMS_Container *pContainer);
/** @} */

/** X-Mms-Message-Class, a text; `MMS_MESSAGE_CLASS_MAP` has those with a number. @{ */
MMSLIB_API const char *MMSLib_GetXMmsMessageClass(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetXMmsMessageClass(MMS_Container *pContainer, const char *pText);
MMSLIB_API uint32_t MMSLib_DelXMmsMessageClass(MMS_Container *pContainer);
/** @} */

/** X-Mms-Priority, 128 low, 129 normal, 130 high. @{ */
MMSLIB_API uint8_t MMSLib_GetXMmsPriority(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetXMmsPriority(MMS_Container *pContainer, uint8_t value);
MMSLIB_API uint32_t MMSLib_DelXMmsPriority(MMS_Container *pContainer);
/** @} */

/** X-Mms-Content-Location, a text. @{ */
MMSLIB_API const char *MMSLib_GetXMmsContentLocation(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetXMmsContentLocation(MMS_Container *pContainer, const char *pText);
MMSLIB_API uint32_t MMSLib_DelXMmsContentLocation(MMS_Container *pContainer);
/** @} */

/** Date, seconds since 1970-01-01 00:00:00 UTC. The getter answers 1 with the value in *pValue, or
 *  0 with *pValue as it was. @{ */
MMSLIB_API uint32_t MMSLib_GetDate(const MMS_Container *pContainer, uint32_t *pValue);
MMSLIB_API uint32_t MMSLib_SetDate(MMS_Container *pContainer, uint32_t value);
MMSLIB_API uint32_t MMSLib_DelDate(MMS_Container *pContainer);
/** @} */

/** X-Mms-Delivery-Report, 128 yes, 129 no. @{ */
MMSLIB_API uint8_t MMSLib_GetXMmsDeliveryReport(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetXMmsDeliveryReport(MMS_Container *pContainer, uint8_t value);
MMSLIB_API uint32_t MMSLib_DelXMmsDeliveryReport(MMS_Container *pContainer);
/** @} */

/** X-Mms-Delivery-Time, an `MMS_SpecialTime`. @{ */
MMSLIB_API MMS_SpecialTime *MMSLib_GetXMmsDeliveryTime(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetXMmsDeliveryTime(MMS_Container *pContainer, MMS_SpecialTime *pValue);
MMSLIB_API uint32_t MMSLib_DelXMmsDeliveryTime(MMS_Container *pContainer);
/** @} */

/** X-Mms-Expiry, an `MMS_SpecialTime`. @{ */
MMSLIB_API MMS_SpecialTime *MMSLib_GetXMmsExpiry(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetXMmsExpiry(MMS_Container *pContainer, MMS_SpecialTime *pValue);
MMSLIB_API uint32_t MMSLib_DelXMmsExpiry(MMS_Container *pContainer);
/** @} */

/** Message-Id, a text. @{ */
MMSLIB_API const char *MMSLib_GetMessageId(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetMessageId(MMS_Container *pContainer, const char *pText);
MMSLIB_API uint32_t MMSLib_DelMessageId(MMS_Container *pContainer);
/** @} */

/** X-Mms-Message-Size, octets. The getter answers 1 with the value in *pValue, or 0 with *pValue as
 *  it was. @{ */
MMSLIB_API uint32_t MMSLib_GetXMmsMessageSize(const MMS_Container *pContainer, uint32_t *pValue);
MMSLIB_API uint32_t MMSLib_SetXMmsMessageSize(MMS_Container *pContainer, uint32_t value);
MMSLIB_API uint32_t MMSLib_DelXMmsMessageSize(MMS_Container *pContainer);
/** @} */

/** X-Mms-Read-Report, 128 yes, 129 no. @{ */
MMSLIB_API uint8_t MMSLib_GetXMmsReadReport(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetXMmsReadReport(MMS_Container *pContainer, uint8_t value);
MMSLIB_API uint32_t MMSLib_DelXMmsReadReport(MMS_Container *pContainer);
/** @} */

/** X-Mms-Response-Status, 128 (ok) to 136, 192 to 196 (transient failures), 224 to 234 (permanent
 *  failures). @{ */
MMSLIB_API uint8_t MMSLib_GetXMmsResponseStatus(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetXMmsResponseStatus(MMS_Container *pContainer, uint8_t value);
MMSLIB_API uint32_t MMSLib_DelXMmsResponseStatus(MMS_Container *pContainer);
/** @} */

/** X-Mms-Response-Text, an `MMS_EncodedString`. @{ */
MMSLIB_API MMS_EncodedString *MMSLib_GetXMmsResponseText(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetXMmsResponseText(MMS_Container *pContainer,
                                               MMS_EncodedString *pValue);
MMSLIB_API uint32_t MMSLib_DelXMmsResponseText(MMS_Container *pContainer);
/** @} */

/** X-Mms-Sender-Visibility, 128 hide, 129 show. @{ */
MMSLIB_API uint8_t MMSLib_GetXMmsSenderVisibility(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetXMmsSenderVisibility(MMS_Container *pContainer, uint8_t value);
MMSLIB_API uint32_t MMSLib_DelXMmsSenderVisibility(MMS_Container *pContainer);
/** @} */

/** X-Mms-Retrieve-Status, 128 (ok), 192 to 194 (transient failures), 224 to 227 (permanent
 *  failures). @{ */
MMSLIB_API uint8_t MMSLib_GetXMmsRetrieveStatus(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetXMmsRetrieveStatus(MMS_Container *pContainer, uint8_t value);
MMSLIB_API uint32_t MMSLib_DelXMmsRetrieveStatus(MMS_Container *pContainer);
/** @} */

/** X-Mms-Read-Status, 128 read, 129 deleted without being read. @{ */
MMSLIB_API uint8_t MMSLib_GetXMmsReadStatus(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetXMmsReadStatus(MMS_Container *pContainer, uint8_t value);
MMSLIB_API uint32_t MMSLib_DelXMmsReadStatus(MMS_Container *pContainer);
/** @} */

/** X-Mms-Drm-Content, 128 yes, 129 no. @{ */
MMSLIB_API uint8_t MMSLib_GetXMmsDrmContent(const MMS_Container *pContainer);
MMSLIB_API uint32_t MMSLib_SetXMmsDrmContent(MMS_Container *pContainer, uint8_t value);
MMSLIB_API uint32_t MMSLib_DelXMmsDrmContent(MMS_Container *pContainer);
/** @} */

/**
 * Any header whose value is a text, by its name `pName`, such as "X-Mms-Applic-ID", ignoring case;
 * a header that is there is replaced in its place.
 *
 * The setter answers 0 also for a name that the vocabulary does not know, for null, and for a
 * header whose value is no text. The getter returns whatever the field holds, which is no text for
 * other headers, and null for an unknown name.
 * @{
 */
MMSLIB_API const char *MMSLib_GetXMmsGenericTextField(const MMS_Container *pContainer,
                                                      const char *pName);
MMSLIB_API uint32_t MMSLib_SetXMmsGenericTextField(MMS_Container *pContainer, const char *pName,
                                                   const char *pText);
MMSLIB_API uint32_t MMSLib_DelXMmsGenericTextField(MMS_Container *pContainer, const char *pName);
/** @} */

/** @} */

/**
 * @defgroup generic Generic headers
 *
 * Headers of one entity (`pEntity`, not null) without a field of their own, kept by name. `pName`
 * is compared ignoring case with the names that "INTERNAL_Generic-Entity-Header" fields hold, and a
 * null one is found nowhere. Headers with a field of their own, such as Content-Id, are not found.
 * @{
 */

/** Stores copies of name and `pValue`, in the place of the first header of that name, of which one
 *  is left, or at the end. Returns 1; 0 with nothing changed for a null name or value, when the
 *  field list is full, or without memory. */
MMSLIB_API uint32_t MMSLib_SetGenericTextField(MMS_Entity *pEntity, const char *pName,
                                               const char *pValue);

/** The value of the first generic header of that name, still owned by the entity, or null. */
MMSLIB_API const char *MMSLib_GetGenericTextField(const MMS_Entity *pEntity, const char *pName);

/** Deletes every generic header of that name. Returns 1; 0 when there was none. */
MMSLIB_API uint32_t MMSLib_DelGenericTextField(MMS_Entity *pEntity, const char *pName);

/** @} */

MMSLIB_END_DECLS

#endif
