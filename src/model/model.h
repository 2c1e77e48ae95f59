/* The message model: lists, header fields and their values, entities, containers, messages. */
#ifndef MMSLIB_MODEL_MODEL_H
#define MMSLIB_MODEL_MODEL_H

#include "../util/util.h"

MMSLIB_BEGIN_DECLS

/*
 * Every record has a create operation, which gives a heap record or, without memory, null, and a
 * destroy operation, which accepts null and releases the record with everything it owns.
 *
 * Ownership runs downwards: message, container, entity, field, value. A setter that adopts a
 * record owns it from its success on; when it answers 0, the caller keeps the record. Setters of
 * texts copy, and take the copy before they release the old text.
 *
 * Names of headers are normally the constants of the vocabulary ("Subject" and so on), compared
 * ignoring case. Positions are indices from 0.
 *
 * A message is for one thread at a time while it is changed. Distinct messages may be used by
 * distinct threads.
 */

/** A list of `MMS_Field`. */
typedef slList MMS_FieldList;
/** A list of `MMS_ListNode` that carry `MMS_Entity`. */
typedef slList MMS_EntityList;
/** A list of `MMS_ListNode` that carry `MMS_Mailbox`. */
typedef slList MMS_MailboxList;
/** A list of `MMS_ListNode` that carry `MMS_Parameter`. */
typedef slList MMS_ParameterList;

/** An element of the entity, mailbox and parameter lists. */
typedef struct MMS_ListNode {
    void *pValue; /**< the carried record, owned */
    struct MMS_ListNode *pNext;
} MMS_ListNode;

/**
 * One header of an entity. The header decides what `pValue` is: an owned text or record, or an
 * unsigned integer in the slot itself (`(uint32_t)(uintptr_t)pValue`).
 */
typedef struct MMS_Field {
    void *pValue;
    struct MMS_Field *pNext;
    uint8_t fieldId; /**< the header's number in `FieldNameMap`; 0 for a name it does not hold */
} MMS_Field;

/** A text with its character set: Subject, X-Mms-Response-Text, and inside an address. */
typedef struct MMS_EncodedString {
    const char *pCharset; /**< name of the character set, or null; borrowed: one of the
                               `MMS_CHARSET_` constants or the constant "UNKNOWN" */
    char *pText;          /**< the text as received, owned, or null */
} MMS_EncodedString;

/** One address of To, Cc, Bcc or From. */
typedef struct MMS_Mailbox {
    MMS_EncodedString *pAddress; /**< the address proper, owned; null when a received value had a
                                      display name and no usable address */
    char *pDisplayName;          /**< the display name, owned, or null */
    uint8_t type;                /**< 128 (address present) in a decoded mailbox */
} MMS_Mailbox;

/** One parameter of a content type. */
typedef struct MMS_Parameter {
    char *pName;          /**< the constant of `WSP_PARAMETER_MAP` when the name is in it, and then
                               not owned; else an owned text. Whoever assigns it keeps to that. */
    char *pValue;         /**< owned, or null for a parameter without a value */
    const char *pCharset; /**< character set of the value, borrowed, or null; "UTF-8" for a Name or
                               Filename that arrived, or is to be sent, as an encoded word */
} MMS_Parameter;

/** The value of Content-Type. */
typedef struct MMS_ContentType {
    char *pMediaType;               /**< type/subtype, owned */
    MMS_ParameterList *pParameters; /**< in wire order, owned, never null */
} MMS_ContentType;

/** The value of Content-Disposition. */
typedef struct MMS_ContentDisposition {
    char *pDisposition;   /**< "Form-data" or "Attachment" when decoded, owned */
    char *pFilename;      /**< owned, or null */
    const char *pCharset; /**< character set of the file name, borrowed, or null */
} MMS_ContentDisposition;

/** The value of X-Mms-Delivery-Time and X-Mms-Expiry. */
typedef struct MMS_SpecialTime {
    uint32_t value; /**< seconds: since 1970-01-01 00:00:00 UTC (token 128), or from now (129) */
    uint8_t token;  /**< 128 absolute, 129 relative */
} MMS_SpecialTime;

/** The value of To, Cc, Bcc and From. */
typedef struct MMS_Group {
    char *pDisplayName;            /**< a name for the group, owned, or null; never sent */
    MMS_MailboxList *pMailboxList; /**< the addresses, owned, never null */
} MMS_Group;

/** The value of an "INTERNAL_Generic-Entity-Header" field: an entity header without a field of its
 *  own. */
typedef struct MMS_GenericData {
    char *pHeaderValue; /**< owned */
    char *pHeaderName;  /**< as it was given, owned */
} MMS_GenericData;

/** A header block with its body. */
typedef struct MMS_Entity {
    MMS_FieldList *pFieldList; /**< owned, never null */
    uint8_t *pContent;         /**< the body, owned, or null */
    uint32_t contentLength;    /**< octets of the body */
    uint8_t isMultipart;       /**< 1 when the body is a nested multipart: the parts are then in the
                                    container of the "INTERNAL_Nested-Multipart" field */
} MMS_Entity;

/** The entities of a message or of a nested multipart. */
typedef struct MMS_Container {
    MMS_EntityList *pEntityList; /**< owned, never null */
} MMS_Container;

/** A message. The first entity of its container holds the MMS headers and, in a single-part
 *  message, the body; the parts of a multipart message follow it. */
typedef struct MMSLib_Message {
    const uint8_t *pPdu;       /**< the PDU it was decoded from, borrowed and not read again; null
                                    for a message that was built */
    MMS_Container *pContainer; /**< owned, never null */
    uint32_t pduLength;        /**< octets of pPdu */
    uint8_t isDecoded;         /**< 1 when handed out by `MMSLib_DecodeMessage` */
} MMSLib_Message;

/* ------------------------------------------------------------------------------------------- */
/* Typed lists                                                                                 */
/* ------------------------------------------------------------------------------------------- */

/** New empty lists, or null without memory. */
MMSLIB_API MMS_FieldList *MMS_LinkedList_CreateFieldList(void);
MMSLIB_API MMS_EntityList *MMS_LinkedList_CreateEntityList(void);
MMSLIB_API MMS_MailboxList *MMS_LinkedList_CreateMailboxList(void);
MMSLIB_API MMS_ParameterList *MMS_LinkedList_CreateParameterList(void);

/** Destroy the list with its elements and what they carry; null is accepted. */
MMSLIB_API void MMS_LinkedList_DestroyFieldList(MMS_FieldList *pList);
MMSLIB_API void MMS_LinkedList_DestroyEntityList(MMS_EntityList *pList);
MMSLIB_API void MMS_LinkedList_DestroyMailboxList(MMS_MailboxList *pList);
MMSLIB_API void MMS_LinkedList_DestroyParameterList(MMS_ParameterList *pList);

/** The number of elements, at most 65535. */
MMSLIB_API uint16_t MMS_LinkedList_GetFieldCount(const MMS_FieldList *pList);
MMSLIB_API uint16_t MMS_LinkedList_GetEntityCount(const MMS_EntityList *pList);
MMSLIB_API uint16_t MMS_LinkedList_GetMailboxCount(const MMS_MailboxList *pList);
MMSLIB_API uint16_t MMS_LinkedList_GetParameterCount(const MMS_ParameterList *pList);

/** Appends a field of that header and value, whose kind the header decides and which the list then
 *  owns. Returns 1; 0 when the list is full or without memory. */
MMSLIB_API uint32_t MMS_LinkedList_AddField(MMS_FieldList *pList, const char *pName, void *pValue);

/** Inserts the field so that it has that position. Returns 1; 0 when the position exceeds the
 *  count, the list is full, or without memory. */
MMSLIB_API uint32_t MMS_LinkedList_AddFieldToPos(MMS_FieldList *pList, const char *pName,
                                                 void *pValue, uint32_t position);

/** Append the record, which the list then owns. Return 1; 0, with the record still the caller's,
 *  when the list is full or without memory. *pPosition is the position of the new entity, or, when
 *  it is refused, the one it would have had. */
MMSLIB_API uint32_t MMS_LinkedList_AddEntity(MMS_EntityList *pList, MMS_Entity *pEntity,
                                             uint16_t *pPosition);
MMSLIB_API uint32_t MMS_LinkedList_AddMailbox(MMS_MailboxList *pList, MMS_Mailbox *pMailbox);
MMSLIB_API uint32_t MMS_LinkedList_AddParameter(MMS_ParameterList *pList,
                                                MMS_Parameter *pParameter);

/** The field or carried record at that position, still owned by the list, or null when there is
 *  none. */
MMSLIB_API MMS_Field *MMS_LinkedList_FindFieldByPos(const MMS_FieldList *pList, uint32_t position);
MMSLIB_API MMS_Entity *MMS_LinkedList_FindEntityByPos(const MMS_EntityList *pList,
                                                      uint32_t position);
MMSLIB_API MMS_Mailbox *MMS_LinkedList_FindMailboxByPos(const MMS_MailboxList *pList,
                                                        uint32_t position);
MMSLIB_API MMS_Parameter *MMS_LinkedList_FindParameterByPos(const MMS_ParameterList *pList,
                                                            uint32_t position);

/** Destroy the element at that position with what it carries. Return 1; 0 when there is none. */
MMSLIB_API uint32_t MMS_LinkedList_DelFieldByPos(MMS_FieldList *pList, uint32_t position);
MMSLIB_API uint32_t MMS_LinkedList_DelEntityByPos(MMS_EntityList *pList, uint32_t position);
MMSLIB_API uint32_t MMS_LinkedList_DelMailboxByPos(MMS_MailboxList *pList, uint32_t position);
MMSLIB_API uint32_t MMS_LinkedList_DelParameterByPos(MMS_ParameterList *pList, uint32_t position);

/** Finds the first field of that header: returns its id and its position in *pPosition. Returns 0
 *  when there is none (*pPosition is then the count), and for an unknown name (*pPosition is then
 *  that of the first field of id 0, or the count). */
MMSLIB_API uint8_t MMS_LinkedList_FindFieldByName(const MMS_FieldList *pList, const char *pName,
                                                  uint16_t *pPosition);

/** The first parameter of that name, ignoring case, or null. */
MMSLIB_API MMS_Parameter *MMS_LinkedList_FindParameterByAttribute(const MMS_ParameterList *pList,
                                                                  const char *pName);

/** The first field's id minus the second's. */
MMSLIB_API int32_t Compare_FieldList(const void *pField, const void *pOther);

/** Release one element of a list with what it carries; null is accepted. */
MMSLIB_API void Dispose_FieldList(void *pField);
MMSLIB_API void Dispose_EntityList(void *pNode);
MMSLIB_API void Dispose_MailboxList(void *pNode);
MMSLIB_API void Dispose_ParameterList(void *pNode);

/* ------------------------------------------------------------------------------------------- */
/* Value records                                                                               */
/* ------------------------------------------------------------------------------------------- */

/** Copies the text (null stays null) and keeps the character-set name as it is. */
MMSLIB_API MMS_EncodedString *MMS_CreateEncodedString(const char *pText, const char *pCharset);
MMSLIB_API void MMS_DestroyEncodedString(MMS_EncodedString *pString);

/** Adopts the display name (a heap text or null) and the address (or null); without memory the
 *  caller keeps both. `type` is 128 for an address. */
MMSLIB_API MMS_Mailbox *MMS_CreateMailbox(uint8_t type, char *pDisplayName,
                                          MMS_EncodedString *pAddress);
MMSLIB_API void MMS_DestroyMailbox(MMS_Mailbox *pMailbox);

/** Copies the value (null stays null); a name that `WSP_PARAMETER_MAP` holds, in any letter case,
 *  becomes the map's constant, any other is copied. */
MMSLIB_API MMS_Parameter *MMS_CreateParameter(const char *pName, const char *pValue);
MMSLIB_API void MMS_DestroyParameter(MMS_Parameter *pParameter);

/** Copies the media type (null stays null); no parameters. */
MMSLIB_API MMS_ContentType *MMS_CreateContentType(const char *pMediaType);
MMSLIB_API void MMS_DestroyContentType(MMS_ContentType *pContentType);

/** Copies both texts (null stays null). */
MMSLIB_API MMS_ContentDisposition *MMS_CreateContentDisposition(const char *pDisposition,
                                                                const char *pFilename);
MMSLIB_API void MMS_DestroyContentDisposition(MMS_ContentDisposition *pDisposition);

/** isAbsolute non-zero: `value` is seconds since 1970-01-01 00:00:00 UTC; zero: seconds from now.
 */
MMSLIB_API MMS_SpecialTime *MMS_CreateSpecialTime(uint32_t isAbsolute, uint32_t value);
MMSLIB_API void MMS_DestroySpecialTime(MMS_SpecialTime *pTime);

MMSLIB_API MMS_Group *MMS_Group_Create(void);
MMSLIB_API void MMS_Group_Destroy(MMS_Group *pGroup);

MMSLIB_API void MMS_DestroyGenericData(MMS_GenericData *pData);

/** The group's display name, still owned by the group, or null. */
MMSLIB_API const char *MMS_GetDisplayName(const MMS_Group *pGroup);

/** Stores a copy of the name (not null) and returns the copy; null, with the old name still there,
 *  without memory. */
MMSLIB_API const char *MMS_SetDisplayName(MMS_Group *pGroup, const char *pName);

/** Appends the mailbox, which the group then owns. Returns 1; 0, with the mailbox still the
 *  caller's, when the group is full or without memory. */
MMSLIB_API uint32_t MMS_AddMailbox(MMS_Group *pGroup, MMS_Mailbox *pMailbox);

/** Destroys the mailbox at that position. Returns 1; 0 when there is none. */
MMSLIB_API uint32_t MMS_DelMailbox(MMS_Group *pGroup, uint32_t position);

/** The mailbox at that position, still owned by the group, or null. */
MMSLIB_API MMS_Mailbox *MMS_GetMailbox(const MMS_Group *pGroup, uint32_t position);

MMSLIB_API uint16_t MMS_GetMailboxCount(const MMS_Group *pGroup);

/* ------------------------------------------------------------------------------------------- */
/* Entities                                                                                    */
/* ------------------------------------------------------------------------------------------- */

/** A new entity without fields or body. */
MMSLIB_API MMS_Entity *MMS_Entity_Create(void);
MMSLIB_API void MMS_Entity_Destroy(MMS_Entity *pEntity);

/**
 * Stores the value under the header, in place of the value that a field of that header holds, which
 * is released, or in a new last field. The value is of the kind that the header decides and is
 * adopted; storing the very value that is there changes nothing. A name that the vocabulary does
 * not know is never found, so each such call appends a field of id 0.
 *
 * Returns 1; 0, with the value still the caller's, when the list is full or without memory.
 */
MMSLIB_API uint32_t MMS_SetField(MMS_Entity *pEntity, const char *pName, void *pValue);

/** The field of that header, or null. */
MMSLIB_API MMS_Field *MMS_FindField(const MMS_Entity *pEntity, const char *pName);

/** Deletes the first field of that header with its value. Returns 1; 0 when there is none. */
MMSLIB_API uint32_t MMS_DelField(MMS_Entity *pEntity, const char *pName);

/* Shorthands. Setters and deleters answer as `MMS_SetField` and `MMS_DelField` do; texts are copied
 * and null texts refused with 0; records are adopted unchecked; what getters return stays owned by
 * the field, null standing for an absent header. */

MMSLIB_API uint32_t MMS_SetContentType(MMS_Entity *pEntity, MMS_ContentType *pContentType);
MMSLIB_API MMS_ContentType *MMS_GetContentType(const MMS_Entity *pEntity);
MMSLIB_API uint32_t MMS_DelContentType(MMS_Entity *pEntity);

MMSLIB_API uint32_t MMS_SetContentDisposition(MMS_Entity *pEntity,
                                              MMS_ContentDisposition *pDisposition);
MMSLIB_API MMS_ContentDisposition *MMS_GetContentDisposition(const MMS_Entity *pEntity);
MMSLIB_API uint32_t MMS_DelContentDisposition(MMS_Entity *pEntity);

MMSLIB_API uint32_t MMS_SetContentId(MMS_Entity *pEntity, const char *pContentId);
MMSLIB_API const char *MMS_GetContentId(const MMS_Entity *pEntity);
MMSLIB_API uint32_t MMS_DelContentId(MMS_Entity *pEntity);

MMSLIB_API uint32_t MMS_SetContentLocation(MMS_Entity *pEntity, const char *pContentLocation);
MMSLIB_API const char *MMS_GetContentLocation(const MMS_Entity *pEntity);
MMSLIB_API uint32_t MMS_DelContentLocation(MMS_Entity *pEntity);

/** Content-Duration in seconds. The getter answers 1 with the seconds in *pSeconds, or 0 with
 *  *pSeconds 0. */
MMSLIB_API uint32_t MMS_SetContentDuration(MMS_Entity *pEntity, uint32_t seconds);
MMSLIB_API uint32_t MMS_GetContentDuration(const MMS_Entity *pEntity, uint32_t *pSeconds);
MMSLIB_API uint32_t MMS_DelContentDuration(MMS_Entity *pEntity);

/** The parameter of that name, ignoring case, or null. */
MMSLIB_API MMS_Parameter *MMS_FindContentTypeParameter(const MMS_ContentType *pContentType,
                                                       const char *pName);

/**
 * Replaces the body. A length of 0 leaves the entity without one.
 *
 * adopt zero: the body becomes a heap copy of `length` octets at pData, taken before the old body
 * is released. adopt non-zero: pData itself, a heap block, becomes the body and is freed with it;
 * with a length of 0 nothing is adopted and the caller keeps the block.
 *
 * Returns 1; 0, with the old body still there, when pData is null with a length above 0 or without
 * memory.
 */
MMSLIB_API uint32_t MMS_SetContent(MMS_Entity *pEntity, const uint8_t *pData, uint32_t length,
                                   uint8_t adopt);

/** The body, still owned by the entity, or null. Both names give the same. */
MMSLIB_API uint8_t *MMS_GetContent(const MMS_Entity *pEntity);
MMSLIB_API uint8_t *MMS_GetCMSourceContent(const MMS_Entity *pEntity);

/** Octets of the body; 0 when there is none. */
MMSLIB_API uint32_t MMS_GetContentLength(const MMS_Entity *pEntity);

/** Releases the body. Returns 1; 0 when there was none. */
MMSLIB_API uint32_t MMS_DelContent(MMS_Entity *pEntity);

/* ------------------------------------------------------------------------------------------- */
/* Containers                                                                                  */
/* ------------------------------------------------------------------------------------------- */

/** A new container without entities. */
MMSLIB_API MMS_Container *MMS_Container_Create(void);
MMSLIB_API void MMS_Container_Destroy(MMS_Container *pContainer);

/** Appends the entity, which the container then owns, and gives its position. Returns 1; 0, with
 *  the entity still the caller's, when the container is full or without memory. */
MMSLIB_API uint32_t MMS_AddEntity(MMS_Container *pContainer, MMS_Entity *pEntity,
                                  uint16_t *pPosition);

/** The entity at that position, or null. */
MMSLIB_API MMS_Entity *MMS_GetEntity(const MMS_Container *pContainer, uint32_t position);

/** The first entity of the list, or null. */
MMSLIB_API MMS_Entity *MMS_GetFirstEntity(const MMS_EntityList *pList);

/** Destroys the entity at that position. Returns 1; 0 when there is none. */
MMSLIB_API uint32_t MMS_DelEntity(MMS_Container *pContainer, uint32_t position);

MMSLIB_API uint16_t MMS_GetEntityCount(const MMS_Container *pContainer);

/** The first entity of the list, nested containers left aside, that has a field of that header, or
 *  null. A name that the vocabulary does not know matches a field of id 0. */
MMSLIB_API MMS_Entity *MMS_FindEntityByFieldName(const MMS_EntityList *pList, const char *pName);

/** The nested container of the first entity that has one, or null. */
MMSLIB_API MMS_Container *MMS_GetContainer(const MMS_Container *pContainer);

/**
 * The first entity, depth first, whose Content-Id (Content-Location) equals the text ignoring case,
 * or null; a null text equals an absent header. In place of a multipart entity its nested entities
 * are looked at. The texts are compared whole, angle brackets included.
 *
 * erase 1: the match is removed from the container that holds it and destroyed, the search of that
 * container ends, and the answer is null; the enclosing search goes on with the next entity.
 */
MMSLIB_API MMS_Entity *MMS_FindEntityByContentId(MMS_Container *pContainer, const char *pContentId,
                                                 uint32_t erase);
MMSLIB_API MMS_Entity *MMS_FindEntityByContentLocation(MMS_Container *pContainer,
                                                       const char *pContentLocation,
                                                       uint32_t erase);

/** A new heap text of size - 1 random letters and digits, drawn from `rand`, which the library
 *  never seeds; the caller frees it. Null for size 0 or without memory. */
MMSLIB_API char *GenerateUniqueId(uint32_t size);

/** A new heap text of 5 random letters and digits that no entity of the container, nested ones and
 *  multipart entities included, has as its Content-Id; the caller frees it. Null without memory. */
MMSLIB_API char *CreateUniqueContentId(const MMS_Container *pContainer);

MMSLIB_END_DECLS

#endif
