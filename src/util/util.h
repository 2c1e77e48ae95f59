/**
 * @file
 * Foundation utilities: the generic list, string helpers, the calendar, transfer decodings, encoded
 * words.
 */
#ifndef MMSLIB_UTIL_UTIL_H
#define MMSLIB_UTIL_UTIL_H

#include "base.h"

#include <time.h>

MMSLIB_BEGIN_DECLS

/**
 * @defgroup list Generic list
 *
 * An intrusive, circular, singly linked list of elements that the caller allocates. Every element
 * carries one pointer-sized link field, at an offset fixed per list. No operation allocates or
 * frees anything, and an element stays the caller's. A list holds at most 65535 elements: an
 * insertion into a full list leaves the list, the iterator and the element unchanged and answers
 * null.
 *
 * `pList` is a list that `slList_Init` made, `pElement` an element with a link field, `self` an
 * iterator that `slIterator_Init` made; none is null. An element is in one list at most.
 *
 * Misuse of an iterator, and a missing dispose function, abort the process with a message that
 * names the failed expression, "sllist" and the operation.
 *
 * A list and its iterators are for one thread at a time.
 * @{
 */

/**
 * Compares an element with a key: 0 when they match. For sorted insertion the key is the new
 * element, and 0 or more means that the existing element sorts at or after it.
 */
typedef int32_t (*slList_CmpFn)(const void *pElement, const void *pKey);

/** Releases one element. */
typedef void (*slList_DispFn)(void *pElement);

/** Visits one element with the caller's `pArgument`; a non-zero answer ends the walk. Callbacks
 *  that visit or compare may throw C++ exceptions, which pass through and change nothing. */
typedef int32_t (*slList_VisitFn)(void *pElement, void *pArgument);

/** A list. It owns neither its elements nor itself. */
typedef struct slList {
    void *pLast;         /**< last element of the ring, null when empty; its link is the first */
    slList_CmpFn pCmpFn; /**< comparison used by the searches, never null */
    uint16_t nElement;   /**< number of elements */
    uint16_t linkOffset; /**< octet offset of the link field inside each element */
} slList;

/**
 * A forward iterator, a plain value. It stays valid only while the list is changed through it;
 * after any other change it has to be initialised again.
 */
typedef struct slIterator {
    slList *pList;    /**< the list walked */
    void *pCurrent;   /**< the current element, null past the end */
    void *pPrevious;  /**< the element before it; before the first: the last element */
    int32_t position; /**< index of the current element; the element count when past the end */
} slIterator;

/** Compares by identity: 0 when `pElement` and `pKey` are one address, otherwise the low 32 bits of
 *  their difference as a signed value, or 1 or -1 by their order where these bits are 0. */
MMSLIB_API int32_t _slList_void_cmp(const void *pElement, const void *pKey);

/** Makes *pList, whatever it held, an empty list. `pCmpFn` compares in the searches and sorted
 *  insertions; null stands for `_slList_void_cmp`. `linkOffset` is where in an element its link
 *  field stands, in octets. */
MMSLIB_API void slList_Init(slList *pList, slList_CmpFn pCmpFn, uint16_t linkOffset);

/** Makes the element the first. Returns the list, or null when the list is full. */
MMSLIB_API slList *slList_InsertFirst(slList *pList, void *pElement);

/** Makes the element the last. Returns the list, or null when the list is full. */
MMSLIB_API slList *slList_InsertLast(slList *pList, void *pElement);

/** Inserts before the first element that sorts at or after it, so that among equals the newest
 *  stands first; at the end when there is none. Returns the list, or null when it is full. */
MMSLIB_API slList *slList_InsertSorted(slList *pList, void *pElement);

/** Unlinks and returns the first element, or null when the list is empty. */
MMSLIB_API void *slList_RemoveFirst(slList *pList);

/** Forgets all elements without touching them. */
MMSLIB_API void slList_RemoveAll(slList *pList);

/** Returns the first element that the list's comparison matches with `pKey`, or null. The key may
 *  be of any kind that the comparison takes. */
MMSLIB_API void *slList_Find(const slList *pList, const void *pKey);

/** Finds by `pKey` as `slList_Find` does, and unlinks the element. */
MMSLIB_API void *slList_FindRemove(slList *pList, const void *pKey);

/** Unlinks that very element, whatever the list's comparison, and returns it, or returns null when
 *  it is not in the list. */
MMSLIB_API void *slList_Remove(slList *pList, const void *pElement);

/** Calls visit(element, pArgument) from the first element on and returns the first element for
 *  which `visit` (not null) answers non-zero, or null. */
MMSLIB_API void *slList_Traverse(const slList *pList, slList_VisitFn visit, void *pArgument);

/** Hands every element, from the first to the last, to `pDispFn` (not null), which may free it, and
 *  empties the list. The list record itself stays. */
MMSLIB_API void slList_Dispose(slList *pList, slList_DispFn pDispFn);

/** Places the iterator on the first element, or past the end of an empty list. */
MMSLIB_API void slIterator_Init(slIterator *self, slList *pList);

/** Returns the current element, or null past the end. */
MMSLIB_API void *slIterator_Current(const slIterator *self);

/** Steps to the next element. The iterator must not be past the end. */
MMSLIB_API void slIterator_Next(slIterator *self);

/** Moves to index `pos`, 0 to the element count, and returns the element there (null at the count).
 *  Moving backwards walks from the first element. */
MMSLIB_API void *slIterator_Go(slIterator *self, uint32_t pos);

/** Walks from the current element on to the first that matches `pKey`, by `pCmpFn` or, when that is
 *  null, by the list's comparison. Returns it, or null with the iterator past the end. */
MMSLIB_API void *slIterator_Find(slIterator *self, slList_CmpFn pCmpFn, const void *pKey);

/** Inserts before the current element, or appends when past the end; the iterator keeps its
 *  element, whose index grows by one. Returns the list, or null when the list is full. */
MMSLIB_API slList *slIterator_InsertBefore(slIterator *self, void *pElement);

/** Inserts after the current element, which must exist; the next step reaches the new element.
 *  Returns the list, or null when the list is full. */
MMSLIB_API slList *slIterator_InsertAfter(slIterator *self, void *pElement);

/** Unlinks and returns the current element, or returns null when past the end. The iterator then
 *  stands on the element that followed. */
MMSLIB_API void *slIterator_RemoveCurrent(slIterator *self);

/** @} */

/**
 * @defgroup strings Strings
 *
 * Texts are NUL-terminated octet strings, and not null unless that is said. Names are compared
 * octet by octet after folding each octet with the lower-case table of the current locale.
 * @{
 */

MMSLIB_API extern const char mmsutil_SP[2];   /**< one space, as a string */
MMSLIB_API extern const char mmsutil_CRLF[3]; /**< CR LF, as a string */
MMSLIB_API extern const char mmsutil_HT;      /**< the tab character */
MMSLIB_API extern const char mmsutil_CR;      /**< the carriage return character */
MMSLIB_API extern const char mmsutil_LF;      /**< the line feed character */

/** Advances *ppText past leading spaces and tabs. Nothing is copied or freed. */
MMSLIB_API void SkipWhiteSpace(const char **ppText);

/** Advances *ppText past leading CR, LF, spaces and tabs. Nothing is copied or freed. */
MMSLIB_API void Skip_CRLF_SPACE_HT(const char **ppText);

/** 1 when `pText` is neither null nor empty and every octet is below 0x80, else 0. */
MMSLIB_API uint32_t isASCII(const char *pText);

/** Cuts trailing spaces and tabs off `pText`, in place. */
MMSLIB_API void removeWSFromStringEnd(char *pText);

/** Copies at most `n` octets of `pSource` (note: the source comes first), fills up to n with zeros,
 *  writes a zero at pDestination[n] and returns `pDestination`, the caller's, which must hold n + 1
 *  octets and must not overlap the source. */
MMSLIB_API char *StringCopy(const char *pSource, char *pDestination, uint32_t n);

/**
 * Takes the part of `pText` up to the first octet that is one of `pDelimiters`.
 *
 * Returns a heap copy of that text, which the caller frees, and sets *ppNext to the octet after the
 * delimiter. When pDelimiters holds a line feed, the end of the text counts as a delimiter too and
 * *ppNext is then the terminating zero. Otherwise a text without a delimiter answers null and
 * leaves *ppNext alone, as does a failing allocation.
 */
MMSLIB_API char *StringToken(const char *pText, const char *pDelimiters, const char **ppNext);

/** 0 when `pA` and `pB` are equal ignoring case, else the difference of the first differing folded
 *  octets as a signed 8-bit value, whose sign is no order to sort by (it wraps). Null is accepted:
 *  it equals null alone; against a text the answer is -1 for a null pA and 1 for a null pB. */
MMSLIB_API int8_t StrCaseCmp(const char *pA, const char *pB);

/** Compares `pA` with `pB` as `StrCaseCmp` does, looking at no more than `n` octets; with n of 0
 *  any two texts are equal, but null still equals null alone. */
MMSLIB_API int8_t StrnCaseCmp(const char *pA, const char *pB, uint32_t n);

/**
 * Replaces the owned heap text *ppText (or null), which is released.
 *
 * `copy` non-zero: *ppText becomes a heap copy of `pNew`, taken before the old text is released, so
 * that a piece of the old text may be passed; when the copy cannot be allocated, *ppText becomes
 * null. `copy` zero: *ppText adopts `pNew` itself, a heap text, which the caller no longer owns;
 * the text that is there already may be passed and then stays. A null `pNew` stores null.
 */
MMSLIB_API void SetString(char **ppText, const char *pNew, uint8_t copy);

/** @} */

/**
 * @defgroup calendar Calendar
 *
 * Seconds are counted from 1970-01-01 00:00:00 in a Gregorian calendar without time zones and leap
 * seconds; numbers of seconds wrap modulo 2^32. Dates and clocks are expected within the ranges
 * given; a month outside its range counts as having no days and none before it. No pointer is null,
 * and all records stay the caller's.
 * @{
 */

/** A day. */
typedef struct time_date {
    uint16_t year; /**< as it is written, 1970 and so on */
    uint8_t month; /**< 1 to 12 */
    uint8_t day;   /**< 1 to 31 */
} time_date;

/** A time of day. */
typedef struct time_clock {
    uint8_t hour;   /**< 0 to 23 */
    uint8_t minute; /**< 0 to 59 */
    uint8_t second; /**< 0 to 59 */
} time_clock;

/** A time of a day. */
typedef struct time_and_date {
    time_date date;   /**< the day */
    time_clock clock; /**< the time of that day */
} time_and_date;

/** 1970-01-01 00:00:00, from which seconds are counted. */
MMSLIB_API extern const time_and_date time_reference;

/** 1 when `year` is a leap year, else 0. */
MMSLIB_API uint8_t time_is_leap_year(uint16_t year);

/** The day of the year of *pDate, 1 for January 1. */
MMSLIB_API uint16_t time_get_day_of_year(const time_date *pDate);

/** Seconds from *pFirst to *pSecond on one day, negative when that is earlier. */
MMSLIB_API int32_t time_get_clock_diff(const time_clock *pFirst, const time_clock *pSecond);

/** Seconds from *pFirst to *pSecond by whole days. The earlier date comes first: of a second date
 *  in an earlier year only the days of the year count. */
MMSLIB_API uint32_t time_get_date_diff(const time_date *pFirst, const time_date *pSecond);

/** Seconds from *pFirst to *pSecond: the difference of the dates, as `time_get_date_diff` gives it,
 *  and that of the clocks. */
MMSLIB_API uint32_t time_get_time_diff(const time_and_date *pFirst, const time_and_date *pSecond);

/** Seconds from `time_reference` to *pClock on *pDate (1970-01-01 up to 2106-02-07 06:28:15),
 *  stored in *pSeconds and returned. */
MMSLIB_API uint32_t time_and_date_to_sec(const time_clock *pClock, const time_date *pDate,
                                         uint32_t *pSeconds);

/** Adds `seconds` to *pClock, wrapping at midnight. Returns the whole days among them and the one
 *  carried, in seconds. */
MMSLIB_API uint32_t time_add_to_clock(time_clock *pClock, uint32_t seconds);

/** Adds the whole days among the `seconds` to *pDate. Returns the seconds left over, 0 to 86399. */
MMSLIB_API uint32_t time_add_to_date(time_date *pDate, uint32_t seconds);

/** Adds `seconds` to *pTime. */
MMSLIB_API void time_add_to_time(time_and_date *pTime, uint32_t seconds);

/** Stores in *pClock and *pDate what they are `seconds` after `time_reference`. */
MMSLIB_API void time_sec_to_time_and_date(uint32_t seconds, time_clock *pClock, time_date *pDate);

/** The calendar time that `mktime` gives for the date and clock `seconds` after `time_reference`,
 *  taken as local time without daylight saving; -1 when that has none. */
MMSLIB_API time_t ConvertTimeServerToAnsiTime(uint32_t seconds);

/** Seconds from `time_reference` to the local date and clock of the calendar time `time`; 0 for one
 *  that has none. */
MMSLIB_API uint32_t ConvertAnsiToTimeServerTime(time_t time);

/** @} */

/**
 * @defgroup transfer Transfer decodings
 *
 * Quoted-printable and Base64 (RFC 2045), as the Q and B encodings of RFC 2047 use them. `pInput`
 * is what is decoded, `length` its octets; `pOutput` is the caller's, and may not overlap the
 * input. No memory is allocated.
 * @{
 */

/** Returns `length`: the most octets that `coreQPDecode` gives for that many, its terminator not
 *  counted. `pInput` is not read and may be null. */
MMSLIB_API uint32_t coreQPDecode_data_size(const uint8_t *pInput, uint32_t length);

/**
 * Decodes quoted-printable text into pOutput, which holds at least `coreQPDecode_data_size` + 1
 * octets, and writes a zero after it. Escapes take two upper-case hexadecimal digits; "=" CR LF is
 * a soft line break; "=" as the last octet ends the text.
 *
 * Returns the number of decoded octets; malformed input gives 0 and an empty output.
 */
MMSLIB_API uint32_t coreQPDecode(const uint8_t *pInput, uint32_t length, uint8_t *pOutput);

/** Returns length / 4 * 3 + 1: the octets that `coreBase64Decode` gives for that many, and one for
 *  a terminator that a caller may set behind them; 0 when the length is no multiple of 4, and so
 *  not to be decoded. `pInput` is not read and may be null. */
MMSLIB_API uint32_t coreBase64Decode_data_size(const uint8_t *pInput, uint32_t length);

/**
 * Decodes Base64 text into pOutput, which holds length / 4 * 3 octets: three for each group of four
 * characters, padding giving octets of 0. Writes no terminator. Returns 3 times the number of
 * groups, or 0 when the length is no multiple of 4 or a character is outside the alphabet; groups
 * before that character are then written.
 */
MMSLIB_API uint32_t coreBase64Decode(const uint8_t *pInput, uint32_t length, uint8_t *pOutput);

/** @} */

/**
 * @defgroup words Encoded words
 *
 * Encoded words (RFC 2047) in the character set UTF-8. `pText` is NUL-terminated; results are heap
 * texts that the caller frees.
 * @{
 */

/** "UTF-8", the one character set of the encoded words read and written here. */
MMSLIB_API extern const char MMS_CHARSET_UTF_8[6];

/** Q-encodes `pText` (not null): ASCII letters and digits stay, a space becomes "_", any other
 *  octet "=" and two upper-case hexadecimal digits. Writes the result without a terminator to
 *  `pOutput`, which holds as many octets as a call with a null pOutput, which only counts, returns.
 */
MMSLIB_API uint32_t MMSUtilQEncode(const char *pText, char *pOutput);

/**
 * Makes the one encoded word =?pCharset?Q?text?= of the text.
 *
 * `pCharset` is the name to put into it, not null; any is taken, and the text is not converted.
 *
 * Returns a heap text. Null for a null or empty text, when the Q-encoded text takes more than 758
 * octets less the length of the character-set name, or without memory.
 */
MMSLIB_API char *MMSUtilEncodeEncodedWord(const char *pText, const char *pCharset);

/**
 * Decodes the encoded word at the start of `pText`. The word ends at the first CR, LF, space or
 * zero octet, what stands there behind its last "?=" counting as part of it; its character set is
 * UTF-8, its encoding Q or B, its encoded text 1 to 753 octets.
 *
 * On success *ppCharset is `MMS_CHARSET_UTF_8` (not owned), *pConsumed the octets of the word, and
 * pOutput, with room for 754 octets, holds the decoded text up to its first zero octet.
 *
 * Returns MMS_STATUS_OK, or MMS_STATUS_MALFORMED, with *pConsumed 0 and nothing else written, when
 * this is no such word or its encoded text is malformed or gives no octet.
 */
MMSLIB_API uint32_t MMSUtilParseSingleEncodedWord(const char *pText, const char **ppCharset,
                                                  uint32_t *pConsumed, char *pOutput);

/**
 * Decodes the run of encoded words at the start of `pText`, joined without the white space between
 * them; whatever follows the run is dropped.
 *
 * On success *ppText is a heap text (empty when the text consists of words that all decode to a
 * zero octet first) and *ppCharset is `MMS_CHARSET_UTF_8`, not owned; after a failure *ppText is
 * null and *ppCharset as it was.
 *
 * Returns MMS_STATUS_OK; MMS_STATUS_MALFORMED when the text is null or empty or starts with no word
 * that `MMSUtilParseSingleEncodedWord` takes; MMS_STATUS_NO_ROOM without memory.
 */
MMSLIB_API uint32_t MMSUtilDecodeEncodedWord(const char *pText, const char **ppCharset,
                                             char **ppText);

/** @} */

MMSLIB_END_DECLS

#endif
