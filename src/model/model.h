/**
 * @file
 * The message model: lists, header fields and their values, entities, containers, messages.
 */
#ifndef MMSLIB_MODEL_MODEL_H
#define MMSLIB_MODEL_MODEL_H

#include "../util/util.h"

MMSLIB_BEGIN_DECLS

/**
 * @defgroup model Message model
 *
 * Every record has a create operation, which gives a heap record or, without memory, null, and a
 * destroy operation, which accepts null and releases the record with everything it owns. Records
 * are not null elsewhere, unless that is said.
 *
 * Ownership runs downwards: message, container, entity, field, value. A setter that adopts a record
 * owns it from its success on; when it answers 0, the caller keeps the record. Setters of texts
 * copy, and take the copy before they release the old text. What a getter or search returns stays
 * with its owner, and is good until it is deleted or replaced there.
 *
 * `pList`, `pContainer`, `pEntity` and `pGroup` are the record that an operation works on. `pName`
 * is the name of a header, normally a constant of the vocabulary (`SUBJECT_FIELD_NAME` and so on),
 * compared ignoring case; null counts as unknown. `pValue` is a value of the kind that the header
 * decides (see `MMS_Field`). `position` is an index from 0.
 *
 * A message is for one thread at a time while it is changed. Distinct messages may be used by
 * distinct threads.
 * @{
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
    void *pValue;               /**< the carried record, owned by the list */
    struct MMS_ListNode *pNext; /**< the link of the list */
} MMS_ListNode;

/**
 * One header of an entity. The header decides what `pValue` is:
 *
 * | header                                              | value                                   |
 * |-----------------------------------------------------|-----------------------------------------|
 * | To, Cc, Bcc, From                                   | `MMS_Group`                             |
 * | Subject, X-Mms-Response-Text                        | `MMS_EncodedString`                     |
 * | X-Mms-Delivery-Time, X-Mms-Expiry                   | `MMS_SpecialTime`                       |
 * | Content-Type                                        | `MMS_ContentType`                       |
 * | Content-Disposition                                 | `MMS_ContentDisposition`                |
 * | Content-Id, Content-Location, Message-Id,           | heap text                               |
 * | X-Mms-Applic-ID, X-Mms-Content-Location,            |                                         |
 * | X-Mms-Message-Class, X-Mms-Reply-Applic-ID,         |                                         |
 * | X-Mms-Transaction-Id                                |                                         |
 * | INTERNAL_Nested-Multipart                           | `MMS_Container`                         |
 * | INTERNAL_Generic-Entity-Header                      | `MMS_GenericData`                       |
 * | any other, and a name that `FieldNameMap` lacks     | unsigned integer in the slot itself,    |
 * |                                                     | `(uint32_t)(uintptr_t)pValue`           |
 */
typedef struct MMS_Field {
    void *pValue;            /**< the value; a text or record is owned */
    struct MMS_Field *pNext; /**< the link of the list */
    uint8_t fieldId; /**< the header's number in `FieldNameMap`; 0 for a name it does not hold */
} MMS_Field;

/** A text with its character set: Subject, X-Mms-Response-Text, and inside an address. */
typedef struct MMS_EncodedString {
    const char *pCharset; /**< name of the character set, or null; borrowed: one of the
                               MMS_CHARSET_ constants or the constant "UNKNOWN" */
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

/** @} */

/**
 * @defgroup lists Typed lists
 * @ingroup model
 *
 * Lists of the generic list that own their elements; they hold at most 65535.
 * @{
 */

/** A new empty list, which the caller destroys, or null without memory. @{ */
MMSLIB_API MMS_FieldList *MMS_LinkedList_CreateFieldList(void);
MMSLIB_API MMS_EntityList *MMS_LinkedList_CreateEntityList(void);
MMSLIB_API MMS_MailboxList *MMS_LinkedList_CreateMailboxList(void);
MMSLIB_API MMS_ParameterList *MMS_LinkedList_CreateParameterList(void);
/** @} */

/** Destroys the list with its elements and what they carry; null is accepted. @{ */
MMSLIB_API void MMS_LinkedList_DestroyFieldList(MMS_FieldList *pList);
MMSLIB_API void MMS_LinkedList_DestroyEntityList(MMS_EntityList *pList);
MMSLIB_API void MMS_LinkedList_DestroyMailboxList(MMS_MailboxList *pList);
MMSLIB_API void MMS_LinkedList_DestroyParameterList(MMS_ParameterList *pList);
/** @} */

/** The number of elements, 0 to 65535. @{ */
MMSLIB_API uint16_t MMS_LinkedList_GetFieldCount(const MMS_FieldList *pList);
MMSLIB_API uint16_t MMS_LinkedList_GetEntityCount(const MMS_EntityList *pList);
MMSLIB_API uint16_t MMS_LinkedList_GetMailboxCount(const MMS_MailboxList *pList);
MMSLIB_API uint16_t MMS_LinkedList_GetParameterCount(const MMS_ParameterList *pList);
/** @} */

/** Appends a field of that header and value, which the list then owns, also when it has one of that
 *  header. A name that is unknown gives a field of id 0, which holds its value and does not own it.
 *  Returns 1; 0, with the value still the caller's, when the list is full or without memory. */
MMSLIB_API uint32_t MMS_LinkedList_AddField(MMS_FieldList *pList, const char *pName, void *pValue);

/** As `MMS_LinkedList_AddField`, inserting the field so that it has that position, 0 to the count.
 *  Returns 1; 0, with the value still the caller's, when the position exceeds the count, the list
 *  is full, or without memory. */
MMSLIB_API uint32_t MMS_LinkedList_AddFieldToPos(MMS_FieldList *pList, const char *pName,
                                                 void *pValue, uint32_t position);

/** Appends `pEntity`, `pMailbox` or `pParameter`, which the list then owns. Returns 1; 0, with the
 *  record still the caller's, when the list is full or without memory. *pPosition is the position
 *  of the new entity, or, when it is refused, the one it would have had. @{ */
MMSLIB_API uint32_t MMS_LinkedList_AddEntity(MMS_EntityList *pList, MMS_Entity *pEntity,
                                             uint16_t *pPosition);
MMSLIB_API uint32_t MMS_LinkedList_AddMailbox(MMS_MailboxList *pList, MMS_Mailbox *pMailbox);
MMSLIB_API uint32_t MMS_LinkedList_AddParameter(MMS_ParameterList *pList,
                                                MMS_Parameter *pParameter);
/** @} */

/** The field or carried record at that position, still owned by the list, or null when there is
 *  none. @{ */
MMSLIB_API MMS_Field *MMS_LinkedList_FindFieldByPos(const MMS_FieldList *pList, uint32_t position);
MMSLIB_API MMS_Entity *MMS_LinkedList_FindEntityByPos(const MMS_EntityList *pList,
                                                      uint32_t position);
MMSLIB_API MMS_Mailbox *MMS_LinkedList_FindMailboxByPos(const MMS_MailboxList *pList,
                                                        uint32_t position);
MMSLIB_API MMS_Parameter *MMS_LinkedList_FindParameterByPos(const MMS_ParameterList *pList,
                                                            uint32_t position);
/** @} */

/** Destroys the element at that position with what it carries. Returns 1; 0 when there is none. @{
 */
MMSLIB_API uint32_t MMS_LinkedList_DelFieldByPos(MMS_FieldList *pList, uint32_t position);
MMSLIB_API uint32_t MMS_LinkedList_DelEntityByPos(MMS_EntityList *pList, uint32_t position);
MMSLIB_API uint32_t MMS_LinkedList_DelMailboxByPos(MMS_MailboxList *pList, uint32_t position);
MMSLIB_API uint32_t MMS_LinkedList_DelParameterByPos(MMS_ParameterList *pList, uint32_t position);
/** @} */

/** Finds the first field of that header: returns its id and its position in *pPosition. Returns 0
 *  when there is none (*pPosition is then the count), and for an unknown name (*pPosition is then
 *  that of the first field of id 0, or the count). */
MMSLIB_API uint8_t MMS_LinkedList_FindFieldByName(const MMS_FieldList *pList, const char *pName,
                                                  uint16_t *pPosition);

/** The first parameter of the name `pName`, ignoring case, or null; a null name is that of a
 *  parameter without one. */
MMSLIB_API MMS_Parameter *MMS_LinkedList_FindParameterByAttribute(const MMS_ParameterList *pList,
                                                                  const char *pName);

/** The id of the field `pField` minus that of `pOther`. */
MMSLIB_API int32_t Compare_FieldList(const void *pField, const void *pOther);

/** Releases one element of a list, the field `pField` or the node `pNode`, with what it carries;
 *  null is accepted. @{ */
MMSLIB_API void Dispose_FieldList(void *pField);
MMSLIB_API void Dispose_EntityList(void *pNode);
MMSLIB_API void Dispose_MailboxList(void *pNode);
MMSLIB_API void Dispose_ParameterList(void *pNode);
/** @} */

/** @} */

/**
 * @defgroup values Value records
 * @ingroup model
 *
 * Constructors give a new record, which is the caller's until a setter or list adopts it, or null
 * without memory; texts are NUL-terminated, and a null text gives a record without it. Destroy
 * operations accept null.
 * @{
 */

/** Copies `pText`, and borrows `pCharset`, a constant name or null: it has to last as long as the
 *  string. */
MMSLIB_API MMS_EncodedString *MMS_CreateEncodedString(const char *pText, const char *pCharset);
/** Releases `pString` and what it owns; null is accepted. */
MMSLIB_API void MMS_DestroyEncodedString(MMS_EncodedString *pString);

/** Adopts `pDisplayName`, a heap text or null, and `pAddress`, or null; without memory the caller
 *  keeps both. `type` is kept as it is and never sent; 128 stands for an address that is present.
 */
MMSLIB_API MMS_Mailbox *MMS_CreateMailbox(uint8_t type, char *pDisplayName,
                                          MMS_EncodedString *pAddress);
/** Releases `pMailbox` and what it owns; null is accepted. */
MMSLIB_API void MMS_DestroyMailbox(MMS_Mailbox *pMailbox);

/** Copies `pValue` (null: a parameter without a value). A `pName` that `WSP_PARAMETER_MAP` holds,
 *  in any letter case, becomes the map's constant, any other is copied, and null stays null. The
 *  character set is null. */
MMSLIB_API MMS_Parameter *MMS_CreateParameter(const char *pName, const char *pValue);
/** Releases `pParameter` and what it owns; null is accepted. */
MMSLIB_API void MMS_DestroyParameter(MMS_Parameter *pParameter);

/** Copies `pMediaType`, type/subtype; there are no parameters yet. */
MMSLIB_API MMS_ContentType *MMS_CreateContentType(const char *pMediaType);
/** Releases `pContentType` and what it owns; null is accepted. */
MMSLIB_API void MMS_DestroyContentType(MMS_ContentType *pContentType);

/** Copies `pDisposition` ("Attachment" or "Form-data"; the encoder sends any other as the first)
 *  and `pFilename`. The character set is null. */
MMSLIB_API MMS_ContentDisposition *MMS_CreateContentDisposition(const char *pDisposition,
                                                                const char *pFilename);
/** Releases `pDisposition` and what it owns; null is accepted. */
MMSLIB_API void MMS_DestroyContentDisposition(MMS_ContentDisposition *pDisposition);

/** `isAbsolute` non-zero: `value` is seconds since 1970-01-01 00:00:00 UTC; zero: seconds from now.
 */
MMSLIB_API MMS_SpecialTime *MMS_CreateSpecialTime(uint32_t isAbsolute, uint32_t value);
/** Releases `pTime` and what it owns; null is accepted. */
MMSLIB_API void MMS_DestroySpecialTime(MMS_SpecialTime *pTime);

/** A group without addresses or display name. */
MMSLIB_API MMS_Group *MMS_Group_Create(void);
/** Releases `pGroup` and what it owns; null is accepted. */
MMSLIB_API void MMS_Group_Destroy(MMS_Group *pGroup);

/** Releases `pData` and what it owns; null is accepted. */
MMSLIB_API void MMS_DestroyGenericData(MMS_GenericData *pData);

/** The group's own display name, still owned by the group, or null. */
MMSLIB_API const char *MMS_GetDisplayName(const MMS_Group *pGroup);

/** Stores a copy of the name (not null) and returns the copy; null, with the old name still there,
 *  without memory. */
MMSLIB_API const char *MMS_SetDisplayName(MMS_Group *pGroup, const char *pName);

/** Appends `pMailbox`, which the group then owns. Returns 1; 0, with the mailbox still the
 *  caller's, when the group is full or without memory. */
MMSLIB_API uint32_t MMS_AddMailbox(MMS_Group *pGroup, MMS_Mailbox *pMailbox);

/** Destroys the mailbox at that position. Returns 1; 0 when there is none. */
MMSLIB_API uint32_t MMS_DelMailbox(MMS_Group *pGroup, uint32_t position);

/** The mailbox at that position, still owned by the group, or null. */
MMSLIB_API MMS_Mailbox *MMS_GetMailbox(const MMS_Group *pGroup, uint32_t position);

/** The number of mailboxes, 0 to 65535. */
MMSLIB_API uint16_t MMS_GetMailboxCount(const MMS_Group *pGroup);

/** @} */

/**
 * @defgroup entities Entities
 * @ingroup model
 *
 * The operations for single headers are shorthands: setters and deleters answer as `MMS_SetField`
 * and `MMS_DelField` do; texts are copied, and null texts refused with 0; records are adopted
 * unchecked, null too; what getters return stays owned by the field, null standing for an absent
 * header.
 * @{
 */

/** A new entity without fields or body, or null without memory. */
MMSLIB_API MMS_Entity *MMS_Entity_Create(void);
/** Releases the entity with its fields and body; null is accepted. */
MMSLIB_API void MMS_Entity_Destroy(MMS_Entity *pEntity);

/**
 * Stores the value under the header, in place of the value that a field of that header holds, which
 * is released, or in a new last field. The value is of the kind that the header decides and is
 * adopted; storing the very value that is there changes nothing. A name that the vocabulary does
 * not know is never found, so each such call appends a field of id 0, which does not own its value.
 *
 * Returns 1; 0, with the value still the caller's, when the list is full or without memory.
 */
MMSLIB_API uint32_t MMS_SetField(MMS_Entity *pEntity, const char *pName, void *pValue);

/** The first field of that header, or null; null for an unknown name. */
MMSLIB_API MMS_Field *MMS_FindField(const MMS_Entity *pEntity, const char *pName);

/** Deletes the first field of that header with its value. Returns 1; 0 when there is none, and for
 *  an unknown name. */
MMSLIB_API uint32_t MMS_DelField(MMS_Entity *pEntity, const char *pName);

/** Content-Type: `pContentType` is adopted. @{ */
MMSLIB_API uint32_t MMS_SetContentType(MMS_Entity *pEntity, MMS_ContentType *pContentType);
MMSLIB_API MMS_ContentType *MMS_GetContentType(const MMS_Entity *pEntity);
MMSLIB_API uint32_t MMS_DelContentType(MMS_Entity *pEntity);
/** @} */

/** Content-Disposition: `pDisposition` is adopted. @{ */
MMSLIB_API uint32_t MMS_SetContentDisposition(MMS_Entity *pEntity,
                                              MMS_ContentDisposition *pDisposition);
MMSLIB_API MMS_ContentDisposition *MMS_GetContentDisposition(const MMS_Entity *pEntity);
MMSLIB_API uint32_t MMS_DelContentDisposition(MMS_Entity *pEntity);
/** @} */

/** Content-Id: the text `pContentId`, angle brackets included, is copied. @{ */
MMSLIB_API uint32_t MMS_SetContentId(MMS_Entity *pEntity, const char *pContentId);
MMSLIB_API const char *MMS_GetContentId(const MMS_Entity *pEntity);
MMSLIB_API uint32_t MMS_DelContentId(MMS_Entity *pEntity);
/** @} */

/** Content-Location: the text `pContentLocation` is copied. @{ */
MMSLIB_API uint32_t MMS_SetContentLocation(MMS_Entity *pEntity, const char *pContentLocation);
MMSLIB_API const char *MMS_GetContentLocation(const MMS_Entity *pEntity);
MMSLIB_API uint32_t MMS_DelContentLocation(MMS_Entity *pEntity);
/** @} */

/** Content-Duration in `seconds`, any number. The getter answers 1 with the seconds in *pSeconds,
 *  or 0 with *pSeconds 0 when the header is absent. @{ */
MMSLIB_API uint32_t MMS_SetContentDuration(MMS_Entity *pEntity, uint32_t seconds);
MMSLIB_API uint32_t MMS_GetContentDuration(const MMS_Entity *pEntity, uint32_t *pSeconds);
MMSLIB_API uint32_t MMS_DelContentDuration(MMS_Entity *pEntity);
/** @} */

/** The first parameter of `pContentType` (not null) that has the name `pName`, ignoring case, still
 *  owned by it, or null. */
MMSLIB_API MMS_Parameter *MMS_FindContentTypeParameter(const MMS_ContentType *pContentType,
                                                       const char *pName);

/**
 * Replaces the body. A `length` of 0 leaves the entity without one, and pData may then be null.
 *
 * `adopt` zero: the body becomes a heap copy of `length` octets at `pData`, taken before the old
 * body is released. `adopt` non-zero: pData itself, a heap block of that length, becomes the body
 * and is freed with it; with a length of 0 nothing is adopted and the caller keeps the block.
 *
 * Returns 1; 0, with the old body still there, when pData is null with a length above 0 or without
 * memory.
 */
MMSLIB_API uint32_t MMS_SetContent(MMS_Entity *pEntity, const uint8_t *pData, uint32_t length,
                                   uint8_t adopt);

/** The body, still owned by the entity, or null when there is none. Both names give the same. @{ */
MMSLIB_API uint8_t *MMS_GetContent(const MMS_Entity *pEntity);
MMSLIB_API uint8_t *MMS_GetCMSourceContent(const MMS_Entity *pEntity);
/** @} */

/** Octets of the body; 0 when there is none. */
MMSLIB_API uint32_t MMS_GetContentLength(const MMS_Entity *pEntity);

/** Releases the body. Returns 1; 0 when there was none. */
MMSLIB_API uint32_t MMS_DelContent(MMS_Entity *pEntity);

/** @} */

/**
 * @defgroup containers Containers
 * @ingroup model
 * @{
 */

/** A new container without entities, or null without memory. */
MMSLIB_API MMS_Container *MMS_Container_Create(void);
/** Releases the container with its entities; null is accepted. */
MMSLIB_API void MMS_Container_Destroy(MMS_Container *pContainer);

/** Appends the entity, which the container then owns. *pPosition is its position, or, when it is
 *  refused, the one it would have had. Returns 1; 0, with the entity still the caller's, when the
 *  container is full or without memory. */
MMSLIB_API uint32_t MMS_AddEntity(MMS_Container *pContainer, MMS_Entity *pEntity,
                                  uint16_t *pPosition);

/** The entity at that position, still owned by the container, or null. */
MMSLIB_API MMS_Entity *MMS_GetEntity(const MMS_Container *pContainer, uint32_t position);

/** The first entity of the list, still owned by it, or null. */
MMSLIB_API MMS_Entity *MMS_GetFirstEntity(const MMS_EntityList *pList);

/** Destroys the entity at that position. Returns 1; 0 when there is none. */
MMSLIB_API uint32_t MMS_DelEntity(MMS_Container *pContainer, uint32_t position);

/** The number of entities, 0 to 65535; those of nested containers do not count. */
MMSLIB_API uint16_t MMS_GetEntityCount(const MMS_Container *pContainer);

/** The first entity of the list, nested containers left aside, that has a field of that header, or
 *  null. A name that the vocabulary does not know matches a field of id 0. */
MMSLIB_API MMS_Entity *MMS_FindEntityByFieldName(const MMS_EntityList *pList, const char *pName);

/** The nested container of the first entity that has one, still owned by that entity, or null. */
MMSLIB_API MMS_Container *MMS_GetContainer(const MMS_Container *pContainer);

/**
 * The first entity, depth first, whose Content-Id equals `pContentId`, or whose Content-Location
 * equals `pContentLocation`, ignoring case, still owned by its container, or null; a null text
 * equals an absent header. In place of a multipart entity its nested entities are looked at. The
 * texts are compared whole, angle brackets included.
 *
 * `erase` 1: the match is removed from the container that holds it and destroyed, the search of
 * that container ends, and the answer is null; the enclosing search goes on with the next entity.
 * With any other number nothing changes.
 * @{
 */
MMSLIB_API MMS_Entity *MMS_FindEntityByContentId(MMS_Container *pContainer, const char *pContentId,
                                                 uint32_t erase);
MMSLIB_API MMS_Entity *MMS_FindEntityByContentLocation(MMS_Container *pContainer,
                                                       const char *pContentLocation,
                                                       uint32_t erase);
/** @} */

/** A new heap text of `size` - 1 random letters and digits, drawn from `rand`, which the library
 *  never seeds; the caller frees it. Null for size 0 or without memory. */
MMSLIB_API char *GenerateUniqueId(uint32_t size);

/** A new heap text of 5 random letters and digits that no entity of the container, nested ones and
 *  multipart entities included, has as its Content-Id; the caller frees it. Null without memory. */
MMSLIB_API char *CreateUniqueContentId(const MMS_Container *pContainer);

/** @} */

MMSLIB_END_DECLS

#endif
