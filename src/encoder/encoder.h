/**
 * @file
 * The encoder and its steps, for callers that encode into their own buffers or by pieces.
 */
#ifndef MMSLIB_ENCODER_ENCODER_H
#define MMSLIB_ENCODER_ENCODER_H

#include "../codec/codec.h"

MMSLIB_BEGIN_DECLS

/**
 * @defgroup encoder Encoder
 *
 * Every step takes where to write (`pBuffer` or `pCursor`), the octets of space there (`bufferSize`
 * or `remaining`), `sizeOnly` and a written count (`pWritten` or `pSize`), as the codecs do: with
 * sizeOnly non-zero nothing is written, the place may be null, and the count is that of the octets
 * the step would write. The count is 0 after any failure. What was written before a failure stays
 * in the buffer and means nothing.
 *
 * What is encoded (`pMessage`, `pContainer`, `pEntity`, `pField`, `pGroup`, none of them null) is
 * only read: several threads may encode one message at once while none changes it. For an unchanged
 * message, size-only and writing runs give the same count, and encoding takes time linear in octets
 * and entities, for any nesting. The stack grows with the nesting, by a few hundred octets a level.
 *
 * `validate` non-zero makes a missing mandatory header a failure (see `EncodeMmsHeaders`).
 *
 * Statuses of all steps:
 *
 * | status                    | when                                                              |
 * |---------------------------|-------------------------------------------------------------------|
 * | `MMS_STATUS_OK`           | success                                                           |
 * | `MMS_STATUS_NO_ROOM`      | the space is too small, or memory ran out                         |
 * | `MMS_STATUS_MISSING`      | a message without entities, a mandatory header (with validate),   |
 * |                           | the content type of a part, a media type without "/", the nested  |
 * |                           | container of a multipart entity, a group without mailboxes, a     |
 * |                           | mailbox without address, a disposition without its name, a record |
 * |                           | that is null, an unknown character-set name                       |
 * | `MMS_STATUS_WRONG_FORM`   | a value cannot take its wire form                                 |
 * | `MMS_STATUS_OUT_OF_RANGE` | a content type with more than 255 parameters, or a size above 32  |
 * |                           | bits                                                              |
 * @{
 */

/** Runs `Encode` for the size alone: *pSize is the length of the PDU in octets. */
MMSLIB_API uint32_t MMS_Encoder_GetEncodedMessageSize(const MMSLib_Message *pMessage,
                                                      uint32_t *pSize, uint8_t validate);

/** Runs `Encode` into a buffer of bufferSize octets. */
MMSLIB_API uint32_t MMS_Encoder_Encode(const MMSLib_Message *pMessage, uint8_t *pBuffer,
                                       uint32_t bufferSize, uint32_t *pWritten, uint8_t validate);

/** Encodes a message: the header block and, when any of its entities has a content type, the value
 *  of the first content type and the body. validate as in `EncodeMmsHeaders`. */
MMSLIB_API uint32_t Encode(const MMSLib_Message *pMessage, uint8_t *pBuffer, uint32_t bufferSize,
                           uint8_t sizeOnly, uint32_t *pWritten, uint8_t validate);

/**
 * Encodes the MMS headers of the first entity: X-Mms-Message-Type, two headers that the type puts
 * next, a From that asks the network to insert the address where the type needs one and there is
 * none, the other headers in their order, and, when there is a Content-Type, its code alone.
 *
 * An m-send-req leaves out headers that hold their defaults. Headers without a wire form in this
 * block are left out too, among them fields of id 0.
 *
 * With validate non-zero a mandatory header of the message type that no entity has is
 * MMS_STATUS_MISSING, and nothing is written:
 *
 * | message type     | mandatory headers                                                      |
 * |------------------|------------------------------------------------------------------------|
 * | none             | always missing                                                         |
 * | m-send-req       | X-Mms-Mms-Version, X-Mms-Transaction-Id, Content-Type, To or Cc or Bcc |
 * | m-notifyresp-ind | X-Mms-Mms-Version, X-Mms-Transaction-Id, X-Mms-Status                  |
 * | m-delivery-ind   | X-Mms-Mms-Version, Message-Id, To, Date, X-Mms-Status                  |
 * | m-read-rec-ind   | X-Mms-Mms-Version, Message-Id, To, X-Mms-Read-Status                   |
 * | m-read-orig-ind  | the same with Date and From                                            |
 * | any other        | X-Mms-Mms-Version, X-Mms-Transaction-Id                                |
 */
MMSLIB_API uint32_t EncodeMmsHeaders(const MMSLib_Message *pMessage, uint8_t *pCursor,
                                     uint32_t remaining, uint8_t sizeOnly, uint32_t *pWritten,
                                     uint8_t validate);

/**
 * Encodes one header: among the MMS headers (`entityHeader` 0) or among those of a part. A header
 * that has no wire form there writes nothing. Among the MMS headers Content-Type writes its code
 * alone, and To, Cc, Bcc and From one header for each address.
 *
 * MMS_STATUS_WRONG_FORM for a generic entity header among the MMS headers, and for an MMS header
 * that has a code and no value codec, unless it holds one of the octets that the header accepts.
 */
MMSLIB_API uint32_t EncodeHeader(const MMS_Field *pField, uint8_t *pCursor, uint32_t remaining,
                                 uint8_t sizeOnly, uint8_t entityHeader, uint32_t *pWritten);

/** Encodes one header for each mailbox of a group; `headerCode` 1 Bcc, 2 Cc, 9 From, 23 To. A
 *  display name goes in front of the address, which then stands in angle brackets. */
MMSLIB_API uint32_t MMSEncodeGroup(uint8_t *pCursor, uint8_t sizeOnly, uint32_t remaining,
                                   uint32_t *pWritten, uint8_t headerCode, const MMS_Group *pGroup);

/** Encodes a WSP multipart body (WAP-230-WSP, section 8.5): the number of parts, then each part.
 *  With `skipFirst` non-zero the first entity is no part, and without parts the number 0 is
 *  written; with skipFirst zero a container without entities writes nothing. */
MMSLIB_API uint32_t EncodeMultipart(const MMS_Container *pContainer, uint32_t skipFirst,
                                    uint8_t *pCursor, uint32_t remaining, uint8_t sizeOnly,
                                    uint32_t *pWritten);

/** `EncodeMultipart` with its arguments, skipFirst among them, in another order. */
MMSLIB_API uint32_t EncodeMultipartContents(const MMS_Container *pContainer, uint8_t *pCursor,
                                            uint32_t remaining, uint8_t sizeOnly,
                                            uint32_t *pWritten, uint8_t skipFirst);

/** Encodes the headers and the data of an entity that is not multipart; `topLevel` non-zero for the
 *  one body of a single-part message, as in `EncodeEntityHeaders`. */
MMSLIB_API uint32_t EncodeEntity(const MMS_Entity *pEntity, uint8_t *pCursor, uint32_t remaining,
                                 uint8_t sizeOnly, uint32_t *pWritten, uint8_t topLevel);

/** Encodes the content type of an entity; for a part (`topLevel` zero) before it the length of the
 *  headers and `dataLength`, the octets of the data, and after it the other headers. */
MMSLIB_API uint32_t EncodeEntityHeaders(const MMS_Entity *pEntity, uint8_t *pCursor,
                                        uint32_t remaining, uint8_t sizeOnly, uint32_t dataLength,
                                        uint32_t *pWritten, uint8_t topLevel);

/** Writes the data of an entity, which may be none. */
MMSLIB_API uint32_t EncodeEntityBody(const MMS_Entity *pEntity, uint8_t *pCursor,
                                     uint32_t remaining, uint8_t sizeOnly, uint32_t *pWritten);

/** @} */

MMSLIB_END_DECLS

#endif
