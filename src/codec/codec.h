/**
 * @file
 * The wire forms of single values.
 */
#ifndef MMSLIB_CODEC_CODEC_H
#define MMSLIB_CODEC_CODEC_H

#include "../model/model.h"

MMSLIB_BEGIN_DECLS

/**
 * @defgroup codecs Value codecs
 *
 * Every codec works on one value at the start of a buffer and returns a status of `MMS_Status`.
 *
 * Decoders take the octets (`pBuffer` or `pInput`) and how many there are (`length`), and never
 * read past them. Their count output (`pCount` or `pConsumed`) is the number of octets consumed, 0
 * after a failure. A text or record result is null after a failure; on success it is a new heap
 * block that the caller releases (texts with `free`). A number result is as it was after a failure.
 *
 * Encoders take the place to write to (`pBuffer`, `pCursor` or `pOutput`), the octets of space
 * there (`length` or `remaining`), and `sizeOnly`. Their count output (`pCount` or `pWritten`) is
 * the number of octets written, 0 after a failure; what was written before a failure stays and
 * means nothing. With sizeOnly non-zero nothing is written, the place may be null, the space does
 * not matter, and the count is that of the octets the value takes. What is encoded stays the
 * caller's.
 *
 * No pointer is null but those of which that is said. A buffer of no octets may be null.
 *
 * Every codec can return
 *
 * | status                    | when                                                              |
 * |---------------------------|-------------------------------------------------------------------|
 * | `MMS_STATUS_OK`           | success                                                           |
 * | `MMS_STATUS_NO_ROOM`      | the input ends before the value does, the output space is too     |
 * |                           | small, or memory ran out                                          |
 * | `MMS_STATUS_WRONG_FORM`   | the octets are not of the value's form, or the value cannot take  |
 * |                           | it                                                                |
 * | `MMS_STATUS_OUT_OF_RANGE` | the form is right and the value is not; of an encoder also a size |
 * |                           | above 32 bits                                                     |
 *
 * as far as its form allows. Other statuses are named where they occur. The short names used below
 * leave out MMS_STATUS_.
 * @{
 */
/** @} */

/**
 * @defgroup wsp WSP primitives
 * @ingroup codecs
 *
 * The forms of WAP-230-WSP, section 8.4.2. `value` and *pValue are the number that is encoded or
 * decoded, `pText` and *ppText the text.
 * @{
 */

/** One octet as it is, 0 to 255. */
MMSLIB_API uint32_t EncodeOctet(uint8_t *pBuffer, uint32_t length, uint8_t value, uint32_t *pCount,
                                uint8_t sizeOnly);
/** Short-integer: 0 to 127 in one octet with bit 7 set. A greater value is WRONG_FORM, also where
 *  there is no space. */
MMSLIB_API uint32_t EncodeShortInteger(uint8_t *pBuffer, uint32_t length, uint8_t value,
                                       uint32_t *pCount, uint8_t sizeOnly);
/** Short-length: 0 to 30 in one octet. A greater value is WRONG_FORM, also where there is no space.
 */
MMSLIB_API uint32_t EncodeShortLength(uint8_t *pBuffer, uint32_t length, uint8_t value,
                                      uint32_t *pCount, uint8_t sizeOnly);
/** Long-integer: a Short-length, then the fewest octets that hold the value, at least one, most
 *  significant first. */
MMSLIB_API uint32_t EncodeLongInteger(uint8_t *pBuffer, uint32_t length, uint32_t value,
                                      uint32_t *pCount, uint8_t sizeOnly);
/** Integer-value: a Short-integer up to 127, else a Long-integer. */
MMSLIB_API uint32_t EncodeIntegerValue(uint8_t *pBuffer, uint32_t length, uint32_t value,
                                       uint32_t *pCount, uint8_t sizeOnly);
/** Uintvar: 7 bits an octet, most significant first, bit 7 set on all but the last. */
MMSLIB_API uint32_t EncodeUintvarInteger(uint8_t *pBuffer, uint32_t length, uint32_t value,
                                         uint32_t *pCount, uint8_t sizeOnly);
/** Value-length: a Short-length up to 30, else the octet 31 and a Uintvar. */
MMSLIB_API uint32_t EncodeValueLength(uint8_t *pBuffer, uint32_t length, uint32_t value,
                                      uint32_t *pCount, uint8_t sizeOnly);
/** Text-string: the octet 127 when the text starts with 0x80 or above, the text, a zero. Null
 *  counts as empty. A text that starts with 0x7F or with a control character other than HT, LF and
 *  CR is WRONG_FORM. */
MMSLIB_API uint32_t EncodeTextString(uint8_t *pBuffer, uint32_t length, const char *pText,
                                     uint32_t *pCount, uint8_t sizeOnly);
/** Token-text: as a Text-string; a control character (0x00 to 0x1F, 0x7F) or one of the separators
 *  `()<>@,;:\"/[]?={}` and space anywhere is WRONG_FORM. */
MMSLIB_API uint32_t EncodeTokenText(uint8_t *pBuffer, uint32_t length, const char *pText,
                                    uint32_t *pCount, uint8_t sizeOnly);
/** Quoted-string: the octet 0x22, then a Text-string, WRONG_FORM as there. */
MMSLIB_API uint32_t EncodeQuotedString(uint8_t *pBuffer, uint32_t length, const char *pText,
                                       uint32_t *pCount, uint8_t sizeOnly);

/** One octet from `lowest` to `highest`, both included; any other is OUT_OF_RANGE. */
MMSLIB_API uint32_t DecodeOctet(const uint8_t *pBuffer, uint32_t length, uint8_t *pValue,
                                uint32_t *pCount, uint8_t lowest, uint8_t highest);
/** A Short-integer, 0 to 127. WRONG_FORM for an octet below 0x80. */
MMSLIB_API uint32_t DecodeShortInteger(const uint8_t *pBuffer, uint32_t length, uint8_t *pValue,
                                       uint32_t *pCount);
/** A Short-length, 0 to 30. WRONG_FORM for an octet above 30. */
MMSLIB_API uint32_t DecodeShortLength(const uint8_t *pBuffer, uint32_t length, uint8_t *pValue,
                                      uint32_t *pCount);
/** A Long-integer of 0 to 4 octets, of which 0 octets are the number 0; a longer one is
 *  OUT_OF_RANGE. WRONG_FORM for a first octet above 30. */
MMSLIB_API uint32_t DecodeLongInteger(const uint8_t *pBuffer, uint32_t length, uint32_t *pValue,
                                      uint32_t *pCount);
/** A Short-integer, or a Long-integer with what it returns. */
MMSLIB_API uint32_t DecodeIntegerValue(const uint8_t *pBuffer, uint32_t length, uint32_t *pValue,
                                       uint32_t *pCount);
/** A Uintvar of 1 to 5 octets. One that needs more than 32 bits is WRONG_FORM. One that goes on
 *  after five octets is NO_ROOM when the input ends there and WRONG_FORM otherwise. */
MMSLIB_API uint32_t DecodeUintvarInteger(const uint8_t *pBuffer, uint32_t length, uint32_t *pValue,
                                         uint32_t *pCount);
/** A Value-length, which is not compared with the octets there are. WRONG_FORM for a first octet
 *  above 31 and for a Uintvar that is. */
MMSLIB_API uint32_t DecodeValueLength(const uint8_t *pBuffer, uint32_t length, uint32_t *pValue,
                                      uint32_t *pCount);
/** A Text-string, without the octet 127 that it may begin with. Its first octet after leading HT,
 *  CR and LF (which stay in the text) is zero or 0x20 to 0x7F; otherwise WRONG_FORM. NO_ROOM
 *  without a zero that ends it. */
MMSLIB_API uint32_t DecodeTextString(const uint8_t *pBuffer, uint32_t length, char **ppText,
                                     uint32_t *pCount);
/** The same operation as `DecodeTextString`: token characters are not checked. */
MMSLIB_API uint32_t DecodeTokenText(const uint8_t *pBuffer, uint32_t length, char **ppText,
                                    uint32_t *pCount);
/** A Text-string after the octet 0x22, which may be missing and is no part of the result. */
MMSLIB_API uint32_t DecodeQuotedString(const uint8_t *pBuffer, uint32_t length, char **ppText,
                                       uint32_t *pCount);

/** Measures the field value at the start of the buffer, its length prefix included, by its first
 *  octet: a Value-length (0 to 31), a Text-string (32 to 127) or a Short-integer (128 to 255).
 *  After a failure *pFieldLength is 0; NO_ROOM when the value runs past the buffer, WRONG_FORM for
 *  a Value-length whose Uintvar is. */
MMSLIB_API uint32_t GetFieldLength(const uint8_t *pBuffer, uint32_t length, uint32_t *pFieldLength);

/** @} */

/**
 * @defgroup strings_and_addresses Encoded strings, parameters, addresses
 * @ingroup codecs
 *
 * `pCharset` and *ppCharset are the name of a character set, a borrowed constant, or null. `pText`
 * is NUL-terminated.
 * @{
 */

/** Encoded-string-value (OMA MMS encapsulation): a Text-string, or Value-length, character set as
 *  an Integer-value, Text-string. *ppText is the text; *ppCharset is null for the first form, else
 *  the name of the character set whose number has these low 16 bits, or the constant "UNKNOWN".
 *  NO_ROOM also when the length and the octets used disagree. */
MMSLIB_API uint32_t DecodeEncodedStringValue(const uint8_t *pInput, uint32_t length,
                                             const char **ppCharset, char **ppText,
                                             uint32_t *pConsumed);

/** Encoded-string-value: with a null or empty character set a Text-string, else Value-length,
 *  character set and Text-string. MMS_STATUS_MISSING for a character set that `CHAR_SET_MAP` does
 *  not hold, so for "UNKNOWN" too. A null text counts as empty; texts are WRONG_FORM as in
 *  `EncodeTextString`. */
MMSLIB_API uint32_t EncodeEncodedStringValue(uint8_t *pCursor, uint32_t remaining,
                                             const char *pCharset, const char *pText,
                                             uint32_t *pWritten, uint8_t sizeOnly);

/**
 * Decodes one parameter of a content type or disposition (WAP-230-WSP, section 8.4.2.4).
 *
 * *ppName and *ppValue are constants or, with *pNameOwned and *pValueOwned set to 1, heap texts of
 * the caller. Both are null after a failure. The value is null for a parameter without one, and for
 * one with an empty text that is not quoted. A text value loses a quote (0x22) that it begins with.
 * A value given as a number is the name of the character set (Charset; "UNKNOWN" for an unlisted
 * one), of the media type (the Type of number 9), or the number in decimal. A Name or Filename that
 * begins with an encoded word is decoded as `MMSUtilDecodeEncodedWord` does.
 *
 * Of a name given as a number the low 8 bits count. An unknown well-known parameter, and one whose
 * name or value is neither text nor number, is skipped: the status is OK and the name null.
 *
 * *ppCharset is written for text values alone: `MMS_CHARSET_UTF_8` for an encoded word, else null.
 */
MMSLIB_API uint32_t DecodeParameter(const uint8_t *pInput, uint32_t length, char **ppName,
                                    char **ppValue, const char **ppCharset, uint8_t *pValueOwned,
                                    uint8_t *pNameOwned, uint32_t *pConsumed);

/**
 * Encodes one parameter: a `pName` of `WSP_PARAMETER_MAP` as its number, any other as text (null as
 * an empty one); a null `pValue` as No-value; Padding as the number that its decimal text is (0 for
 * any other text); Type as the number of a well-known media type, else as text; Charset as its
 * number (that of UTF-8 for an unlisted name); all others as text. A Name or Filename that is not
 * ASCII, with `pCharset` "UTF-8", becomes an encoded word, or an empty text when it is too long for
 * one; elsewhere pCharset does not matter.
 *
 * WRONG_FORM also for an Application-ID or Reply-To-Application-ID above 32 octets.
 */
MMSLIB_API uint32_t EncodeParameter(uint8_t *pCursor, uint32_t remaining, const char *pName,
                                    const char *pValue, const char *pCharset, uint32_t *pWritten,
                                    uint8_t sizeOnly);

/**
 * Splits the address text `pText` (null counts as empty), after leading spaces and tabs:
 *
 * | text                  | display name                 | address                                |
 * |-----------------------|------------------------------|----------------------------------------|
 * | address               | none                         | up to a space or LF                    |
 * | `<address>`           | none                         | up to ">" or a space                   |
 * | `name <address>`      | up to "<" or LF, the spaces  | behind the first "<", up to ">" or a   |
 * |                       | and tabs at its end cut off  | space                                  |
 * | `"name" <address>`    | up to the second quote       | behind the next "<", up to ">" or a    |
 * |                       |                              | space                                  |
 *
 * What follows is dropped. A text without "<" is all address, whatever quotes it holds.
 *
 * *ppDisplayName (left alone when there is no name) and *ppAddress are heap texts or null; each
 * result replaces, and releases, the text that was there. The caller frees both.
 *
 * Returns 1; 0 when a quote or an angle bracket is not closed, or without memory. A display name
 * found before the failure is stored all the same.
 */
MMSLIB_API uint32_t ParseNameAndAddress(const char *pText, char **ppDisplayName, char **ppAddress);

/** @} */

/**
 * @defgroup mmsvalues MMS header values
 * @ingroup codecs
 *
 * The forms of the OMA MMS encapsulation. A version octet has the major version in bits 4 to 6 and
 * the minor version in bits 0 to 3, 15 for none. `headerCode` is a code of `MMS_HEADER_MAP`,
 * without 0x80.
 * @{
 */

/** The major version, 0 to 7, of the version octet `version`. */
MMSLIB_API uint8_t MMSGetMajorVersion(uint8_t version);
/** The minor version, 0 to 14, or 15 for none, of the version octet `version`. */
MMSLIB_API uint8_t MMSGetMinorVersion(uint8_t version);
/** Sets the major version of *pVersion to the low 8 bits of `major`, 1 to 7; the minor version
 *  stays, but 0 becomes 15. Returns 1; 0 with nothing changed for any other major version. */
MMSLIB_API uint8_t MMSSetMajorVersion(uint32_t major, uint8_t *pVersion);
/** Sets the minor version of *pVersion to `minor`, 0 to 14. Returns 1; 0 with nothing changed for
 *  any other. */
MMSLIB_API uint8_t MMSSetMinorVersion(uint32_t minor, uint8_t *pVersion);

/** A Short-integer, which becomes *pVersion; a major version of 0 is OUT_OF_RANGE, with *pConsumed
 *  1 and *pVersion as it was. */
MMSLIB_API uint8_t MMSDecodeVersion(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                                    uint8_t *pVersion);

/** *ppText is a Text-string, or for X-Mms-Message-Class (header code 10) also the octet of a class,
 *  which gives a copy of the class's name; OUT_OF_RANGE there for any other octet that begins no
 *  text. MMS_STATUS_MISSING for header code 0. */
MMSLIB_API uint8_t MMSDecodeTextString(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                                       char **ppText, uint8_t headerCode);
/** A Text-string of `pText` (null counts as empty), or for header code 10 the octet of a class that
 *  the text names in any letter case. MMS_STATUS_MISSING for header code 0. */
MMSLIB_API uint8_t MMSEncodeTextString(uint8_t *pOutput, uint32_t remaining, uint32_t *pWritten,
                                       uint8_t sizeOnly, uint8_t headerCode, const char *pText);

/** *pDate or `date`, seconds since 1970-01-01 00:00:00 UTC, as a Long-integer
 *  (`DecodeLongInteger`).
 *  @{ */
MMSLIB_API uint8_t MMSDecodeDate(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                                 uint32_t *pDate);
MMSLIB_API uint8_t MMSEncodeDate(uint8_t *pOutput, uint8_t sizeOnly, uint32_t remaining,
                                 uint32_t *pWritten, uint32_t date);
/** @} */

/** *ppTime, a new record, or `pTime`, as Value-length, token (128 absolute, 129 relative) and
 *  Long-integer. The decoder does not consume octets left over inside the length, and finds any
 *  other token OUT_OF_RANGE; the encoder sends any token but 128 as 129. @{ */
MMSLIB_API uint8_t MMSDecodeSpecialTime(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                                        MMS_SpecialTime **ppTime);
MMSLIB_API uint8_t MMSEncodeSpecialTime(uint8_t *pOutput, uint8_t sizeOnly, uint32_t remaining,
                                        uint32_t *pWritten, const MMS_SpecialTime *pTime);
/** @} */

/** The address of To, Cc or Bcc: an Encoded-string-value that is split as `ParseNameAndAddress`
 *  does, into a new record *ppMailbox. An address above 320 octets is dropped. WRONG_FORM when it
 *  cannot be split, or when neither address nor display name is left. */
MMSLIB_API uint8_t MMSDecodeToCc(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                                 MMS_Mailbox **ppMailbox);
/** The address of From, as a new record *ppMailbox: Value-length, the octet 128, then as To. Octets
 *  left over inside the length are not consumed. A length of 0 is WRONG_FORM, any other token (129
 *  asks the network to insert the address) OUT_OF_RANGE, an address that runs past the length
 *  NO_ROOM. */
MMSLIB_API uint8_t MMSDecodeFrom(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                                 MMS_Mailbox **ppMailbox);

/** *pValue is a Long-integer, or a Text-string whose decimal number, as `strtol` reads it, gives
 *  its low 32 bits (0 for other texts). */
MMSLIB_API uint8_t MMSDecodeLongInteger(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                                        uint32_t *pValue);
/** A Long-integer of `value`. */
MMSLIB_API uint8_t MMSEncodeLongInteger(uint8_t *pOutput, uint8_t sizeOnly, uint32_t remaining,
                                        uint32_t *pWritten, uint32_t value);

/** `seconds` as the Text-string of their decimal digits. */
MMSLIB_API uint8_t MMSEncodeContentDuration(uint8_t *pOutput, uint8_t sizeOnly, uint32_t remaining,
                                            uint32_t *pWritten, uint32_t seconds);

/** *pValue is one octet that the header of the name `pName` accepts, 0x80 to 0xFF, as it stands on
 *  the wire. WRONG_FORM below 0x80; OUT_OF_RANGE for an octet that it does not accept, for an
 *  unknown or null name and for a header that is not enumerated. */
MMSLIB_API uint8_t MMSDecodeEnumerated(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                                       const char *pName, uint8_t *pValue);

/** @} */

/**
 * @defgroup contenttype Content-Type and Content-Disposition
 * @ingroup codecs
 *
 * The forms of WAP-230-WSP, sections 8.4.2.24 and 8.4.2.21. `pContentType` and `pDisposition` are
 * records to encode, *ppContentType and *ppDisposition new ones.
 * @{
 */

/** 1 when the text before the media type's first "/" is "multipart", in any letter case, else 0. */
MMSLIB_API uint32_t MMS_IsMultipart(const MMS_ContentType *pContentType);

/**
 * Writes the media type as its number when it is well known, else as text; with parameters, a
 * Value-length first and behind it each parameter as `EncodeParameter` does. MMS_STATUS_MISSING for
 * a media type that is null or holds no "/"; OUT_OF_RANGE for more than 255 parameters.
 */
MMSLIB_API uint8_t MMSEncodeContentType(const MMS_ContentType *pContentType, uint8_t *pOutput,
                                        uint8_t sizeOnly, uint32_t remaining, uint32_t *pWritten);

/**
 * Reads a content type: a media type alone, as a Short-integer or Text-string, or Value-length,
 * media type as an Integer-value or Text-string, and parameters. An unlisted media number gives
 * "application/octet-stream"; of a media type with more than 19 octets before its "/" these are
 * replaced by "TRUNCATED". WRONG_FORM for a media type without "/"; OUT_OF_RANGE for more than
 * 65535 parameters. Parameters that `DecodeParameter` skips are dropped.
 */
MMSLIB_API uint8_t MMSDecodeContentType(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                                        MMS_ContentType **ppContentType);

/** Writes Value-length, the disposition (129, attachment, for an unlisted name) and the file name,
 *  as the parameter Filename, if there is one. MMS_STATUS_MISSING for a null disposition. */
MMSLIB_API uint8_t MMSEncodeContentDisposition(uint8_t *pOutput, uint8_t sizeOnly,
                                               uint32_t remaining, uint32_t *pWritten,
                                               const MMS_ContentDisposition *pDisposition);

/** Reads a disposition. Of its parameters the last Filename is kept, all others are dropped. Any
 *  octet but 128 and 129 behind the length is OUT_OF_RANGE: dispositions given as text are not
 *  read. */
MMSLIB_API uint8_t MMSDecodeContentDisposition(const uint8_t *pInput, uint32_t length,
                                               uint32_t *pConsumed,
                                               MMS_ContentDisposition **ppDisposition);

/** @} */

MMSLIB_END_DECLS

#endif
