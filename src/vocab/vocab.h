/**
 * @file
 * Assigned numbers, names and the lookups that translate between them. All of it is constant.
 */
#ifndef MMSLIB_VOCAB_VOCAB_H
#define MMSLIB_VOCAB_VOCAB_H

#include "../util/util.h"

MMSLIB_BEGIN_DECLS

/**
 * @defgroup vocabulary Vocabulary
 *
 * Names, numbers and accepted octets of headers and of what stands in them: those of the OMA MMS
 * encapsulation, of WSP (WAP-230-WSP, appendix A) and of the IANA character sets. Nothing here is
 * ever freed or changed.
 * @{
 */

/** A row of a map. A map ends with a row of number 0 and a null name. */
typedef struct MMS_MapEntry {
    uint32_t number;  /**< the assigned number */
    const char *name; /**< the name as written in headers, a constant */
} MMS_MapEntry;

/** The accepted octets of an enumerated header, both ends included, as they stand on the wire. Both
 *  are 0 when the header has no single range. */
typedef struct MMS_EnumeratedRange {
    uint8_t lowest;  /**< 0 or 128 to 255 */
    uint8_t highest; /**< 0 or lowest to 255 */
} MMS_EnumeratedRange;

/** @} */

/**
 * @defgroup fieldnames Names of headers
 * @ingroup vocabulary
 * @{
 */
MMSLIB_API extern const char BCC_FIELD_NAME[4];                     /**< "Bcc" */
MMSLIB_API extern const char CC_FIELD_NAME[3];                      /**< "Cc" */
MMSLIB_API extern const char CONTENT_DISPOSITION_FIELD_NAME[20];    /**< "Content-Disposition" */
MMSLIB_API extern const char CONTENT_DURATION_FIELD_NAME[17];       /**< "Content-Duration" */
MMSLIB_API extern const char CONTENT_ID_FIELD_NAME[11];             /**< "Content-Id" */
MMSLIB_API extern const char CONTENT_LOCATION_FIELD_NAME[17];       /**< "Content-Location" */
MMSLIB_API extern const char CONTENT_TYPE_FIELD_NAME[13];           /**< "Content-Type" */
MMSLIB_API extern const char DATE_FIELD_NAME[5];                    /**< "Date" */
MMSLIB_API extern const char FROM_FIELD_NAME[5];                    /**< "From" */
MMSLIB_API extern const char MESSAGE_ID_FIELD_NAME[11];             /**< "Message-Id" */
MMSLIB_API extern const char SUBJECT_FIELD_NAME[8];                 /**< "Subject" */
MMSLIB_API extern const char TO_FIELD_NAME[3];                      /**< "To" */
MMSLIB_API extern const char X_MMS_CONTENT_LOCATION_FIELD_NAME[23]; /**< "X-Mms-Content-Location" */
MMSLIB_API extern const char X_MMS_DELIVERY_REPORT_FIELD_NAME[22];  /**< "X-Mms-Delivery-Report" */
MMSLIB_API extern const char X_MMS_DELIVERY_TIME_FIELD_NAME[20];    /**< "X-Mms-Delivery-Time" */
MMSLIB_API extern const char X_MMS_EXPIRY_FIELD_NAME[13];           /**< "X-Mms-Expiry" */
MMSLIB_API extern const char X_MMS_MESSAGE_CLASS_FIELD_NAME[20];    /**< "X-Mms-Message-Class" */
MMSLIB_API extern const char X_MMS_MESSAGE_SIZE_FIELD_NAME[19];     /**< "X-Mms-Message-Size" */
MMSLIB_API extern const char X_MMS_MESSAGE_TYPE_FIELD_NAME[19];     /**< "X-Mms-Message-Type" */
MMSLIB_API extern const char X_MMS_MMS_VERSION_FIELD_NAME[18];      /**< "X-Mms-Mms-Version" */
MMSLIB_API extern const char X_MMS_PRIORITY_FIELD_NAME[15];         /**< "X-Mms-Priority" */
MMSLIB_API extern const char X_MMS_READ_REPORT_FIELD_NAME[18];      /**< "X-Mms-Read-Report" */
MMSLIB_API extern const char X_MMS_REPORT_ALLOWED_FIELD_NAME[21];   /**< "X-Mms-Report-Allowed" */
MMSLIB_API extern const char X_MMS_RESPONSE_STATUS_FIELD_NAME[22];  /**< "X-Mms-Response-Status" */
MMSLIB_API extern const char X_MMS_RESPONSE_TEXT_FIELD_NAME[20];    /**< "X-Mms-Response-Text" */
MMSLIB_API extern const char
    X_MMS_SENDER_VISIBILITY_FIELD_NAME[24];                        /**< "X-Mms-Sender-Visibility" */
MMSLIB_API extern const char X_MMS_STATUS_FIELD_NAME[13];          /**< "X-Mms-Status" */
MMSLIB_API extern const char X_MMS_TRANSACTION_ID_FIELD_NAME[21];  /**< "X-Mms-Transaction-Id" */
MMSLIB_API extern const char X_MMS_RETRIEVE_STATUS_FIELD_NAME[22]; /**< "X-Mms-Retrieve-Status" */
MMSLIB_API extern const char X_MMS_RETRIEVE_TEXT_FIELD_NAME[20];   /**< "X-Mms-Retrieve-Text" */
MMSLIB_API extern const char X_MMS_READ_STATUS_FIELD_NAME[18];     /**< "X-Mms-Read-Status" */
MMSLIB_API extern const char X_MMS_REPLY_CHARGING_FIELD_NAME[21];  /**< "X-Mms-Reply-Charging" */
MMSLIB_API extern const char
    X_MMS_REPLY_CHARGING_DEADLINE_FIELD_NAME[30]; /**< "X-Mms-Reply-Charging-Deadline" */
MMSLIB_API extern const char
    X_MMS_REPLY_CHARGING_ID_FIELD_NAME[24]; /**< "X-Mms-Reply-Charging-ID" */
MMSLIB_API extern const char
    X_MMS_REPLY_CHARGING_SIZE_FIELD_NAME[26]; /**< "X-Mms-Reply-Charging-Size" */
MMSLIB_API extern const char
    X_MMS_PREVIOUSLY_SENT_BY_FIELD_NAME[25]; /**< "X-Mms-Previously-Sent-By" */
MMSLIB_API extern const char
    X_MMS_PREVIOUSLY_SENT_DATE_FIELD_NAME[27];                  /**< "X-Mms-Previously-Sent-Date" */
MMSLIB_API extern const char X_MMS_STORE_FIELD_NAME[12];        /**< "X-Mms-Store" */
MMSLIB_API extern const char X_MMS_MM_STATE_FIELD_NAME[15];     /**< "X-Mms-MM-State" */
MMSLIB_API extern const char X_MMS_MM_FLAGS_FIELD_NAME[15];     /**< "X-Mms-MM-Flags" */
MMSLIB_API extern const char X_MMS_STORE_STATUS_FIELD_NAME[19]; /**< "X-Mms-Store-Status" */
MMSLIB_API extern const char
    X_MMS_STORE_STATUS_TEXT_FIELD_NAME[24];                      /**< "X-Mms-Store-Status-Text" */
MMSLIB_API extern const char X_MMS_STORED_FIELD_NAME[13];        /**< "X-Mms-Stored" */
MMSLIB_API extern const char X_MMS_ATTRIBUTES_FIELD_NAME[17];    /**< "X-Mms-Attributes" */
MMSLIB_API extern const char X_MMS_TOTALS_FIELD_NAME[13];        /**< "X-Mms-Totals" */
MMSLIB_API extern const char X_MMS_MBOX_TOTALS_FIELD_NAME[18];   /**< "X-Mms-Mbox-Totals" */
MMSLIB_API extern const char X_MMS_QUOTAS_FIELD_NAME[13];        /**< "X-Mms-Quotas" */
MMSLIB_API extern const char X_MMS_MBOX_QUOTAS_FIELD_NAME[18];   /**< "X-Mms-Mbox-Quotas" */
MMSLIB_API extern const char X_MMS_MESSAGE_COUNT_FIELD_NAME[20]; /**< "X-Mms-Message-Count" */
MMSLIB_API extern const char CONTENT_FIELD_NAME[8];              /**< "Content" */
MMSLIB_API extern const char X_MMS_START_H_FIELD_NAME[12];       /**< "X-Mms-Start" */
MMSLIB_API extern const char ADDITIONAL_HEADERS_FIELD_NAME[19];  /**< "Additional-headers" */
MMSLIB_API extern const char
    X_MMS_DISTRIBUTION_INDICATOR_FIELD_NAME[29]; /**< "X-Mms-Distribution-Indicator" */
MMSLIB_API extern const char
    X_MMS_ELEMENT_DESCRIPTOR_FIELD_NAME[25];                  /**< "X-Mms-Element-Descriptor" */
MMSLIB_API extern const char X_MMS_LIMIT_FIELD_NAME[12];      /**< "X-Mms-Limit" */
MMSLIB_API extern const char CONTENT_LANGUAGE_FIELD_NAME[17]; /**< "Content-Language" */
MMSLIB_API extern const char X_MMS_APPLIC_ID_FIELD_NAME[16];  /**< "X-Mms-Applic-ID" */
MMSLIB_API extern const char X_MMS_REPLY_APPLIC_ID_FIELD_NAME[22]; /**< "X-Mms-Reply-Applic-ID" */
MMSLIB_API extern const char
    INTERNAL_NESTED_MULTIPART_FIELD_NAME[26]; /**< "INTERNAL_Nested-Multipart" */
MMSLIB_API extern const char
    INTERNAL_GENERIC_ENTITY_HEADER_FIELD_NAME[31]; /**< "INTERNAL_Generic-Entity-Header" */
MMSLIB_API extern const char X_MMS_DRM_CONTENT_FIELD_NAME[18]; /**< "X-Mms-Drm-Content" */
/** @} */

/**
 * @defgroup charsets Names of character sets
 * @ingroup vocabulary
 *
 * `MMS_CHARSET_UTF_8` stands with the encoded words.
 * @{
 */
MMSLIB_API extern const char MMS_CHARSET_US_ASCII[9];         /**< "US-ASCII" */
MMSLIB_API extern const char MMS_CHARSET_ISO_8859_1[11];      /**< "ISO-8859-1" */
MMSLIB_API extern const char MMS_CHARSET_ISO_8859_9[11];      /**< "ISO-8859-9" */
MMSLIB_API extern const char MMS_CHARSET_ISO_8859_7[11];      /**< "ISO-8859-7" */
MMSLIB_API extern const char MMS_CHARSET_ISO_10646_UCS_2[16]; /**< "ISO-10646-UCS-2" */
MMSLIB_API extern const char MMS_CHARSET_UTF_7[6];            /**< "UTF-7" */
MMSLIB_API extern const char MMS_CHARSET_UTF_16BE[9];         /**< "UTF-16BE" */
MMSLIB_API extern const char MMS_CHARSET_UTF_16LE[9];         /**< "UTF-16LE" */
MMSLIB_API extern const char MMS_CHARSET_UTF_16[7];           /**< "UTF-16" */
/** @} */

/**
 * @defgroup parameters Names of parameters
 * @ingroup vocabulary
 * @{
 */
MMSLIB_API extern const char MMS_Q_STRING[2];               /**< "Q" */
MMSLIB_API extern const char MMS_CHARSET_STRING[8];         /**< "Charset" */
MMSLIB_API extern const char MMS_LEVEL_STRING[6];           /**< "Level" */
MMSLIB_API extern const char MMS_TYPE_STRING[5];            /**< "Type", number 9 */
MMSLIB_API extern const char MMS_HTTP_TYPE_STRING[5];       /**< "Type", number 3 */
MMSLIB_API extern const char MMS_NAME_STRING[5];            /**< "Name" */
MMSLIB_API extern const char MMS_FILENAME_STRING[9];        /**< "Filename" */
MMSLIB_API extern const char MMS_DIFFERENCES_STRING[12];    /**< "Differences" */
MMSLIB_API extern const char MMS_PADDING_STRING[8];         /**< "Padding" */
MMSLIB_API extern const char MMS_START_STRING[6];           /**< "Start" */
MMSLIB_API extern const char MMS_START_INFO_STRING[11];     /**< "Start-info" */
MMSLIB_API extern const char MMS_COMMENT_STRING[8];         /**< "Comment" */
MMSLIB_API extern const char MMS_DOMAIN_STRING[7];          /**< "Domain" */
MMSLIB_API extern const char MMS_MAX_AGE_STRING[8];         /**< "Max-age" */
MMSLIB_API extern const char MMS_PATH_STRING[5];            /**< "Path" */
MMSLIB_API extern const char MMS_SECURE_STRING[7];          /**< "Secure" */
MMSLIB_API extern const char MMS_APPLICATION_ID_STRING[15]; /**< "Application-ID", in no map */
MMSLIB_API extern const char
    MMS_REPLY_TO_APPLICATION_ID_STRING[24]; /**< "Reply-To-Application-ID", in no map */
/** @} */

/**
 * @defgroup classes Message classes
 * @ingroup vocabulary
 * @{
 */
MMSLIB_API extern const char MMS_PERSONAL_STRING[9];       /**< "Personal" */
MMSLIB_API extern const char MMS_ADVERTISEMENT_STRING[14]; /**< "Advertisement" */
MMSLIB_API extern const char MMS_INFORMATIONAL_STRING[14]; /**< "Informational" */
MMSLIB_API extern const char MMS_AUTO_STRING[5];           /**< "Auto" */
/** @} */

/** "X-Oma-Drm-Separate-Delivery", the name of a generic entity header: rights are delivered on
 *  their own. The library itself does nothing with it.
 *  @ingroup fieldnames */
MMSLIB_API extern const char DRM_SEPARATE_DELIVERY_STRING[28];

/**
 * @defgroup maps Maps
 * @ingroup vocabulary
 *
 * Each is an array and a pointer to its first row; the lookups take either. Where a name or a
 * number stands in two rows, a lookup finds the first.
 * @{
 */

/** Field ids: the library's own numbers of headers, 1 to 61. @{ */
MMSLIB_API extern const MMS_MapEntry FieldNameMap[62];
MMSLIB_API extern const MMS_MapEntry *const MMS_FIELDNAME_MAP;
/** @} */

/** MMS header field codes; the octet on the wire is the code OR 0x80. The codes 254 and 255 are the
 *  library's own and never stand on the wire. @{ */
MMSLIB_API extern const MMS_MapEntry MMS_HEADER_MAP_ARRAY[57];
MMSLIB_API extern const MMS_MapEntry *const MMS_HEADER_MAP;
/** @} */

/** WSP entity header codes; the octet on the wire is the code OR 0x80. @{ */
MMSLIB_API extern const MMS_MapEntry WSP_HEADER_MAP_ARRAY[6];
MMSLIB_API extern const MMS_MapEntry *const WSP_HEADER_MAP;
/** @} */

/** Well-known media types; the octet on the wire is the number OR 0x80. @{ */
MMSLIB_API extern const MMS_MapEntry CONTENT_TYPE_MAP_ARRAY[56];
MMSLIB_API extern const MMS_MapEntry *const CONTENT_TYPE_MAP;
/** @} */

/** Character sets by their IANA MIBenum. @{ */
MMSLIB_API extern const MMS_MapEntry CHAR_SET_MAP_ARRAY[11];
MMSLIB_API extern const MMS_MapEntry *const CHAR_SET_MAP;
/** @} */

/** Well-known parameters; the octet on the wire is the number OR 0x80. @{ */
MMSLIB_API extern const MMS_MapEntry WSP_PARAMETER_MAP_ARRAY[17];
MMSLIB_API extern const MMS_MapEntry *const WSP_PARAMETER_MAP;
/** @} */

/** Content dispositions by the octet on the wire. @{ */
MMSLIB_API extern const MMS_MapEntry WSP_DISPOSITION_MAP_ARRAY[3];
MMSLIB_API extern const MMS_MapEntry *const WSP_DISPOSITION_MAP;
/** @} */

/** Message classes by the octet on the wire. @{ */
MMSLIB_API extern const MMS_MapEntry MMS_MESSAGE_CLASS_MAP_ARRAY[5];
MMSLIB_API extern const MMS_MapEntry *const MMS_MESSAGE_CLASS_MAP;
/** @} */

/** @} */

/**
 * @defgroup lookups Lookups
 * @ingroup vocabulary
 *
 * `pMap` is one of the maps, not null. `pName` is compared ignoring case; null is in no map. A
 * returned name is the constant itself, never to be freed.
 * @{
 */

/** The name of the first row whose number has the low 8 bits `number`, or null. */
MMSLIB_API const char *MMS_SearchMapForString(const MMS_MapEntry *pMap, uint8_t number);

/** The name of the first row whose number has the low 16 bits `number`, or null; rows from one of
 *  number 0 on, the first row excepted, are not reached. */
MMSLIB_API const char *MMS_SearchMapForText(const MMS_MapEntry *pMap, uint16_t number);

/** 1 with the low 8 bits of the number of the first row of that name in *pNumber; 0 with *pNumber 0
 *  when there is none. For `CHAR_SET_MAP`, whose numbers are longer, there is
 *  `MMS_SearchMapForInteger`. */
MMSLIB_API uint32_t MMS_SearchMapForToken(const MMS_MapEntry *pMap, const char *pName,
                                          uint8_t *pNumber);

/** As `MMS_SearchMapForToken`, with the low 16 bits in *pNumber. */
MMSLIB_API uint32_t MMS_SearchMapForInteger(const MMS_MapEntry *pMap, const char *pName,
                                            uint16_t *pNumber);

/** The name of the field id `fieldId`, 1 to 61, or null for any other. */
MMSLIB_API const char *MMS_SearchFieldMapForName(uint8_t fieldId);

/** The field id of a header name, 1 to 61, or 0 for an unknown one. */
MMSLIB_API uint8_t MMS_SearchFieldMapForId(const char *pName);

/** The accepted octets of the header with the MMS header code `headerCode`, as `MMS_HEADER_MAP` has
 *  it (without 0x80); {0, 0} for an unknown code, for a header that is not enumerated or whose
 *  accepted octets are not one range (X-Mms-Response-Status, X-Mms-Retrieve-Status,
 *  X-Mms-Store-Status). */
MMSLIB_API MMS_EnumeratedRange MMSGetEnumeratedRange(uint8_t headerCode);

/** The same for a header name; {0, 0} for an unknown name. */
MMSLIB_API MMS_EnumeratedRange MMSGetEnumeratedRangeByFieldName(const char *pName);

/** @} */

MMSLIB_END_DECLS

#endif
