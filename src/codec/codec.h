/* The wire forms of single values. */
#ifndef MMSLIB_CODEC_CODEC_H
#define MMSLIB_CODEC_CODEC_H

#include "../model/model.h"

MMSLIB_BEGIN_DECLS

/*
 * Every codec works on one value at the start of a buffer and returns a status of `MMS_Status`.
 *
 * Decoders take the octets and how many there are, and never read past them. Their count output is
 * the number of octets consumed: 0 on entry, and 0 again after a failure. A text or record result
 * is null after a failure; on success it is a new heap block that the caller releases (texts with
 * `free`).
 *
 * Encoders take the place to write to, the octets that remain there, and `sizeOnly`. Their count
 * output is the number of octets written: 0 on entry, and 0 again after a failure. With sizeOnly
 * non-zero nothing is written, the place may be null, the remaining octets do not matter, and the
 * count is that of the octets the value takes.
 *
 * Every codec can return
 *   MMS_STATUS_OK           success;
 *   MMS_STATUS_NO_ROOM      the input ends before the value does, the output space is too small, or
 *                           memory ran out;
 *   MMS_STATUS_WRONG_FORM   the octets are not of the value's form, or the value cannot take it;
 *   MMS_STATUS_OUT_OF_RANGE the form is right and the value is not; in size-only runs also a size
 *                           above 32 bits.
 * Other statuses are named where they occur.
 */

/* ------------------------------------------------------------------------------------------- */
/* WSP primitives (WAP-230-WSP, section 8.4.2)                                                 */
/* ------------------------------------------------------------------------------------------- */

/** One octet as it is. */
MMSLIB_API uint32_t EncodeOctet(uint8_t *pBuffer, uint32_t length, uint8_t value, uint32_t *pCount,
                                uint8_t sizeOnly);
/** Short-integer: 0 to 127 in one octet with bit 7 set. A greater value is WRONG_FORM, which is
 *  checked before the space. */
MMSLIB_API uint32_t EncodeShortInteger(uint8_t *pBuffer, uint32_t length, uint8_t value,
                                       uint32_t *pCount, uint8_t sizeOnly);
/** Short-length: 0 to 30 in one octet. A greater value is WRONG_FORM. */
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
/** Token-text: as a Text-string; a control character or separator anywhere is WRONG_FORM. */
MMSLIB_API uint32_t EncodeTokenText(uint8_t *pBuffer, uint32_t length, const char *pText,
                                    uint32_t *pCount, uint8_t sizeOnly);
/** Quoted-string: the octet 0x22, then a Text-string. */
MMSLIB_API uint32_t EncodeQuotedString(uint8_t *pBuffer, uint32_t length, const char *pText,
                                       uint32_t *pCount, uint8_t sizeOnly);

/** One octet from lowest to highest, both included; any other is OUT_OF_RANGE. */
MMSLIB_API uint32_t DecodeOctet(const uint8_t *pBuffer, uint32_t length, uint8_t *pValue,
                                uint32_t *pCount, uint8_t lowest, uint8_t highest);
MMSLIB_API uint32_t DecodeShortInteger(const uint8_t *pBuffer, uint32_t length, uint8_t *pValue,
                                       uint32_t *pCount);
MMSLIB_API uint32_t DecodeShortLength(const uint8_t *pBuffer, uint32_t length, uint8_t *pValue,
                                      uint32_t *pCount);
/** A Long-integer of 0 to 4 octets; a longer one is OUT_OF_RANGE. */
MMSLIB_API uint32_t DecodeLongInteger(const uint8_t *pBuffer, uint32_t length, uint32_t *pValue,
                                      uint32_t *pCount);
MMSLIB_API uint32_t DecodeIntegerValue(const uint8_t *pBuffer, uint32_t length, uint32_t *pValue,
                                       uint32_t *pCount);
/** A Uintvar of 1 to 5 octets. One that needs more than 32 bits is WRONG_FORM. One that goes on
 *  after five octets is NO_ROOM when the input ends there and WRONG_FORM otherwise. */
MMSLIB_API uint32_t DecodeUintvarInteger(const uint8_t *pBuffer, uint32_t length, uint32_t *pValue,
                                         uint32_t *pCount);
MMSLIB_API uint32_t DecodeValueLength(const uint8_t *pBuffer, uint32_t length, uint32_t *pValue,
                                      uint32_t *pCount);
/** A Text-string, without its quote octet. Its first octet after leading HT, CR and LF (which stay
 *  in the text) is zero or 0x20 to 0x7F; otherwise WRONG_FORM. */
MMSLIB_API uint32_t DecodeTextString(const uint8_t *pBuffer, uint32_t length, char **ppText,
                                     uint32_t *pCount);
/** The same operation: token characters are not checked. */
MMSLIB_API uint32_t DecodeTokenText(const uint8_t *pBuffer, uint32_t length, char **ppText,
                                    uint32_t *pCount);
/** A Text-string after the octet 0x22, which may be missing. */
MMSLIB_API uint32_t DecodeQuotedString(const uint8_t *pBuffer, uint32_t length, char **ppText,
                                       uint32_t *pCount);

/** Measures the field value at the start of the buffer, its length prefix included, by its first
 *  octet: a Value-length (0 to 31), a Text-string or a Short-integer. After a failure *pFieldLength
 *  is 0; NO_ROOM when the value runs past the buffer. */
MMSLIB_API uint32_t GetFieldLength(const uint8_t *pBuffer, uint32_t length, uint32_t *pFieldLength);

/* ------------------------------------------------------------------------------------------- */
/* Encoded strings, parameters, addresses                                                      */
/* ------------------------------------------------------------------------------------------- */

/** Encoded-string-value (OMA MMS encapsulation): a Text-string, or Value-length, character set as
 *  an Integer-value, Text-string. *ppCharset is null, the name of the character set, or the
 *  constant "UNKNOWN". NO_ROOM also when the length and the octets used disagree. */
MMSLIB_API uint32_t DecodeEncodedStringValue(const uint8_t *pInput, uint32_t length,
                                             const char **ppCharset, char **ppText,
                                             uint32_t *pConsumed);

/** With a null or empty character set a Text-string, else all three. MISSING for a character set
 *  that `CHAR_SET_MAP` does not hold. A null text counts as empty. */
MMSLIB_API uint32_t EncodeEncodedStringValue(uint8_t *pCursor, uint32_t remaining,
                                             const char *pCharset, const char *pText,
                                             uint32_t *pWritten, uint8_t sizeOnly);

/**
 * Decodes one parameter of a content type or disposition (WAP-230-WSP, section 8.4.2.4).
 *
 * *ppName and *ppValue are constants or, with *pNameOwned and *pValueOwned set to 1, heap texts of
 * the caller. The value is null for a parameter without one. A value given as a number is the name
 * of the character set (Charset; "UNKNOWN" for an unlisted one), of the media type (Type), or the
 * number in decimal. A Name or Filename that is an encoded word is decoded.
 *
 * An unknown well-known parameter, and one whose name or value is neither text nor number, is
 * skipped: the status is OK and the name null.
 *
 * *ppCharset is written for text values alone (the character set of an encoded word, or null).
 */
MMSLIB_API uint32_t DecodeParameter(const uint8_t *pInput, uint32_t length, char **ppName,
                                    char **ppValue, const char **ppCharset, uint8_t *pValueOwned,
                                    uint8_t *pNameOwned, uint32_t *pConsumed);

/**
 * Encodes one parameter: a name of `WSP_PARAMETER_MAP` as its number, any other as text; a null
 * value as No-value; Padding as the number that its decimal text is; Type as the number of a
 * well-known media type, else as text; Charset as its number (that of UTF-8 for an unlisted name);
 * all others as text. A Name or Filename that is not ASCII, of the character set "UTF-8", becomes
 * an encoded word, or an empty text when it is too long for one.
 *
 * WRONG_FORM also for an Application-ID or Reply-To-Application-ID above 32 characters.
 */
MMSLIB_API uint32_t EncodeParameter(uint8_t *pCursor, uint32_t remaining, const char *pName,
                                    const char *pValue, const char *pCharset, uint32_t *pWritten,
                                    uint8_t sizeOnly);

/**
 * Splits an address text: a bare address, <address>, name <address> or "name" <address>.
 *
 * *ppDisplayName (left alone when there is no name) and *ppAddress are owned texts or null; each
 * result replaces, and releases, the text that was there. The caller frees both.
 *
 * Returns 1; 0 when a quote or an angle bracket is not closed, or without memory. A display name
 * found before the failure stays.
 */
MMSLIB_API uint32_t ParseNameAndAddress(const char *pText, char **ppDisplayName, char **ppAddress);

/* ------------------------------------------------------------------------------------------- */
/* MMS header values (OMA MMS encapsulation)                                                   */
/* ------------------------------------------------------------------------------------------- */

/* The version octet: major version in bits 4 to 6, minor version in bits 0 to 3, 15 for none. */

MMSLIB_API uint8_t MMSGetMajorVersion(uint8_t version);
MMSLIB_API uint8_t MMSGetMinorVersion(uint8_t version);
/** major 1 to 7; the minor version stays, 0 counting as unset. Returns 1; 0 with nothing changed
 *  for any other major version. */
MMSLIB_API uint8_t MMSSetMajorVersion(uint32_t major, uint8_t *pVersion);
/** minor 0 to 14. Returns 1; 0 with nothing changed for any other. */
MMSLIB_API uint8_t MMSSetMinorVersion(uint32_t minor, uint8_t *pVersion);

/** A Short-integer; a major version of 0 is OUT_OF_RANGE, with *pConsumed 1. */
MMSLIB_API uint8_t MMSDecodeVersion(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                                    uint8_t *pVersion);

/** A Text-string, or for X-Mms-Message-Class (header code 10) also the octet of a class, which
 *  gives a copy of the class's name. MISSING for header code 0. */
MMSLIB_API uint8_t MMSDecodeTextString(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                                       char **ppText, uint8_t headerCode);
/** A Text-string, or for header code 10 the octet of a class that the text names in any letter
 *  case. MISSING for header code 0. */
MMSLIB_API uint8_t MMSEncodeTextString(uint8_t *pOutput, uint32_t remaining, uint32_t *pWritten,
                                       uint8_t sizeOnly, uint8_t headerCode, const char *pText);

/** Seconds since 1970-01-01 00:00:00 UTC as a Long-integer. */
MMSLIB_API uint8_t MMSDecodeDate(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                                 uint32_t *pDate);
MMSLIB_API uint8_t MMSEncodeDate(uint8_t *pOutput, uint8_t sizeOnly, uint32_t remaining,
                                 uint32_t *pWritten, uint32_t date);

/** Value-length, token (128 absolute, 129 relative), Long-integer. The decoder does not consume
 *  octets left over inside the length; the encoder sends any token but 128 as 129. */
MMSLIB_API uint8_t MMSDecodeSpecialTime(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                                        MMS_SpecialTime **ppTime);
MMSLIB_API uint8_t MMSEncodeSpecialTime(uint8_t *pOutput, uint8_t sizeOnly, uint32_t remaining,
                                        uint32_t *pWritten, const MMS_SpecialTime *pTime);

/** The address of To, Cc or Bcc: an Encoded-string-value that `ParseNameAndAddress` splits. An
 *  address above 320 characters is dropped. WRONG_FORM when it cannot be split, or when neither
 *  address nor display name is left. */
MMSLIB_API uint8_t MMSDecodeToCc(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                                 MMS_Mailbox **ppMailbox);
/** The address of From: Value-length, the octet 128, then as To. A length of 0 is WRONG_FORM, any
 *  other token (129 asks the network to insert the address) OUT_OF_RANGE. */
MMSLIB_API uint8_t MMSDecodeFrom(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                                 MMS_Mailbox **ppMailbox);

/** A Long-integer, or a Text-string read as a decimal number. */
MMSLIB_API uint8_t MMSDecodeLongInteger(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                                        uint32_t *pValue);
MMSLIB_API uint8_t MMSEncodeLongInteger(uint8_t *pOutput, uint8_t sizeOnly, uint32_t remaining,
                                        uint32_t *pWritten, uint32_t value);

/** Seconds as the Text-string of their decimal digits. */
MMSLIB_API uint8_t MMSEncodeContentDuration(uint8_t *pOutput, uint8_t sizeOnly, uint32_t remaining,
                                            uint32_t *pWritten, uint32_t seconds);

/** One octet that the header of that name accepts. WRONG_FORM below 0x80; OUT_OF_RANGE for an octet
 *  that it does not accept, for an unknown name and for a header that is not enumerated. */
MMSLIB_API uint8_t MMSDecodeEnumerated(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                                       const char *pName, uint8_t *pValue);

/* ------------------------------------------------------------------------------------------- */
/* Content-Type and Content-Disposition (WAP-230-WSP, sections 8.4.2.24 and 8.4.2.21)          */
/* ------------------------------------------------------------------------------------------- */

/** 1 when the text before the media type's first "/" is "multipart", in any letter case, else 0. */
MMSLIB_API uint32_t MMS_IsMultipart(const MMS_ContentType *pContentType);

/**
 * Writes the media type as its number when it is well known, else as text; with parameters, a
 * Value-length first. MISSING for a media type that is null or holds no "/"; OUT_OF_RANGE for more
 * than 255 parameters.
 */
MMSLIB_API uint8_t MMSEncodeContentType(const MMS_ContentType *pContentType, uint8_t *pOutput,
                                        uint8_t sizeOnly, uint32_t remaining, uint32_t *pWritten);

/**
 * Reads a content type. An unlisted media number gives "application/octet-stream"; of a media type
 * with more than 19 characters before its "/" these are replaced by "TRUNCATED". WRONG_FORM for a
 * media type without "/"; OUT_OF_RANGE for more than 65535 parameters. Parameters that
 * `DecodeParameter` skips are dropped.
 */
MMSLIB_API uint8_t MMSDecodeContentType(const uint8_t *pInput, uint32_t length, uint32_t *pConsumed,
                                        MMS_ContentType **ppContentType);

/** Writes the disposition (129, attachment, for an unlisted name) and the file name if there is
 *  one. MISSING for a null disposition. */
MMSLIB_API uint8_t MMSEncodeContentDisposition(uint8_t *pOutput, uint8_t sizeOnly,
                                               uint32_t remaining, uint32_t *pWritten,
                                               const MMS_ContentDisposition *pDisposition);

/** Reads a disposition. Of its parameters the last Filename is kept, all others are dropped. A
 * token other than 128 and 129 is OUT_OF_RANGE. */
MMSLIB_API uint8_t MMSDecodeContentDisposition(const uint8_t *pInput, uint32_t length,
                                               uint32_t *pConsumed,
                                               MMS_ContentDisposition **ppDisposition);

MMSLIB_END_DECLS

#endif
