/**
 * @file
 * The decoder's session and steps, for callers that decode pieces of a PDU on their own.
 */
#ifndef MMSLIB_DECODER_DECODER_H
#define MMSLIB_DECODER_DECODER_H

#include "../codec/codec.h"

MMSLIB_BEGIN_DECLS

/**
 * @defgroup decoder Decoder
 *
 * `pDecoder` is a session, not null, a new one for each PDU. `MMS_Decoder_Decode` sets it to the
 * PDU; a caller of a single step sets `pCursor` and `remaining`, and for `DecodeMmsHeaders`
 * `pMessage`. What a step decodes it takes from the cursor, which then stands behind it, or after a
 * failure somewhere in it.
 * @{
 */

/** A decoding session: the cursor into one PDU, which the caller keeps alive, and what the limits
 *  need. It serves one decode. */
typedef struct MMS_Decoder {
    const uint8_t *pCursor;   /**< next octet to read */
    MMSLib_Message *pMessage; /**< the message being built, borrowed */
    uint32_t remaining;       /**< octets from the cursor to the end of the PDU */
    uint16_t fromCount;       /**< From headers seen in this header block, at most 1501 */
    uint16_t recipientCount;  /**< To, Cc and Bcc headers seen in this block, at most 1501 */
    uint16_t entityCount;     /**< body parts started, at all nesting levels, at most 999 */
    uint8_t keep;             /**< 1 once an MMS header has been stored */
    uint8_t skipped;          /**< 1 after a nested multipart was dropped for its depth */
    uint8_t depth;            /**< current nesting depth of multipart bodies, 0 to 251 */
} MMS_Decoder;

/** A new session, all zero, which the caller destroys, or null without memory. */
MMSLIB_API MMS_Decoder *MMS_Decoder_Create(void);

/** Releases the session alone, not its message; null is accepted. */
MMSLIB_API void MMS_Decoder_Destroy(MMS_Decoder *pDecoder);

/** Moves the cursor by `count` octets; when fewer remain, the cursor stays and none remain. */
MMSLIB_API void AdvanceCursor(MMS_Decoder *pDecoder, uint32_t count);

/**
 * Decodes the MMS header block at the cursor into a new entity, which becomes the last of the
 * message's container, also on failure. The block ends with Content-Type or with the PDU. When it
 * was decoded without a failure, headers that m-send-req and m-retrieve-conf leave out get their
 * defaults.
 *
 * Headers without a value codec, application headers, From headers beyond 1500 and recipients
 * beyond 1500 are passed over.
 *
 * Returns MMS_STATUS_OK; MMS_STATUS_NO_ROOM when a value runs past the PDU or the address of a From
 * past its value, and when nothing remains; MMS_STATUS_MALFORMED when a value does not fill its
 * field; MMS_STATUS_WRONG_FORM for octets that begin no header or value; one of the first two
 * without memory.
 */
MMSLIB_API uint32_t DecodeMmsHeaders(MMS_Decoder *pDecoder);

/**
 * Decodes the WSP multipart body at the cursor (WAP-230-WSP, section 8.5) into `pContainer`, whose
 * entities it adds to.
 *
 * Returns MMS_STATUS_OK; MMS_STATUS_TOO_MANY_PARTS at the 1000th part of the session, with the
 * parts so far in place; otherwise the status of the part or number that failed.
 */
MMSLIB_API uint32_t DecodeMultipart(MMS_Decoder *pDecoder, MMS_Container *pContainer);

/**
 * Decodes one part at the cursor. *ppEntity is a new entity, which the caller takes over, or null:
 * after a failure, at the 1000th part, and, with MMS_STATUS_OK and `skipped` 1, for a multipart
 * nested deeper than 250. With MMS_STATUS_TOO_MANY_PARTS from a nested body it is the part that
 * holds that body.
 */
MMSLIB_API uint32_t DecodeMultipartEntity(MMS_Decoder *pDecoder, MMS_Entity **ppEntity);

/**
 * Decodes the entity headers that fill the next `length` octets into `pEntity`, replacing those
 * that it has: Content-Disposition, Content-Id, Content-Location, Content-Duration and generic
 * ones.
 *
 * Returns MMS_STATUS_OK; MMS_STATUS_MALFORMED for a length of 0, for the value of a stored header
 * that cannot be measured, and for a text-named header whose value is not of its form or does not
 * fill its field; MMS_STATUS_NO_ROOM when a value runs past the block, or without memory;
 * MMS_STATUS_REFUSED when the entity's field list is full; MMS_STATUS_WRONG_FORM for octets that
 * begin no header, and when the value of a header that is passed over cannot be measured.
 */
MMSLIB_API uint32_t DecodeWspHeaders(MMS_Decoder *pDecoder, uint32_t length, MMS_Entity *pEntity);

/**
 * Decodes a whole PDU, the `length` octets at `pPdu`, with a new session. The PDU is the caller's,
 * has to outlive the call, and the message keeps its address.
 *
 * Returns MMS_STATUS_OK when decoding came to its end; MMS_STATUS_MALFORMED after any failure and
 * when octets are left over; MMS_STATUS_NO_ROOM when no message could be allocated. *ppMessage is
 * the caller's message whenever at least one header was stored, also after a failure, and null
 * otherwise. The session's cursor then tells where decoding stopped.
 */
MMSLIB_API uint32_t MMS_Decoder_Decode(MMS_Decoder *pDecoder, const uint8_t *pPdu, uint32_t length,
                                       MMSLib_Message **ppMessage);

/** @} */

MMSLIB_END_DECLS

#endif
