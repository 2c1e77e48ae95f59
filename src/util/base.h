/**
 * @file
 * What every public header of the library needs: linkage, visibility and the statuses.
 */
#ifndef MMSLIB_UTIL_BASE_H
#define MMSLIB_UTIL_BASE_H

#include <stdint.h>

#if defined(__GNUC__)
/** Marks what the shared library exports. */
#define MMSLIB_API __attribute__((visibility("default")))
#else
#define MMSLIB_API
#endif

#ifdef __cplusplus
/** Begins declarations of C linkage, in C and C++ alike. */
#define MMSLIB_BEGIN_DECLS extern "C" {
/** Ends declarations of C linkage. */
#define MMSLIB_END_DECLS }
#else
#define MMSLIB_BEGIN_DECLS
#define MMSLIB_END_DECLS
#endif

MMSLIB_BEGIN_DECLS

/**
 * @defgroup status Statuses
 * @{
 */

/**
 * The statuses that codecs, lookups and model operations return (as `uint8_t` or `uint32_t`). The
 * values 4 and 8 are not used.
 */
enum MMS_Status {
    /** Refused, absent or not found; a false answer. */
    MMS_STATUS_REFUSED = 0,
    /** Success. Of a whole PDU: it was decoded to its end. */
    MMS_STATUS_OK = 1,
    /** The input ends before the value does, the output space is too small, or memory ran out. */
    MMS_STATUS_NO_ROOM = 2,
    /** A decode failure: a value that does not fill its field, no accepted encoded word, or the
     *  decode driver's summary of any failure. */
    MMS_STATUS_MALFORMED = 3,
    /** Something required is missing: a mandatory header, a part's content type, an address, a
     *  known character-set name. */
    MMS_STATUS_MISSING = 5,
    /** The value is not of the expected form, or cannot take its wire form. A caller may try the
     *  next form of the value. */
    MMS_STATUS_WRONG_FORM = 6,
    /** The value has the right form but is out of range, or the field is unknown. */
    MMS_STATUS_OUT_OF_RANGE = 7,
    /** The limit of 999 body parts in one PDU was reached. */
    MMS_STATUS_TOO_MANY_PARTS = 9
};

#ifndef __cplusplus
typedef enum MMS_Status MMS_Status;
#endif

/** @} */

MMSLIB_END_DECLS

#endif
