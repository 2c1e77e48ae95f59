/**
 * @file
 * The whole interface, for C11 and for C++17 and later. It is enough to include this header alone.
 */

/**
 * @mainpage mmslib
 *
 * mmslib encodes and decodes Multimedia Messaging Service (MMS) protocol data units.
 *
 * Applications start in @ref messages with `MMSLib_DecodeMessage` or `MMS_CreateMMS`, use the
 * accessors of @ref headers and the @ref model, and end with `MMSLib_EncodeMessage`. What functions
 * of a kind share, such as who owns what, stands at the top of their module. C++20 programs may use
 * the namespace @ref mms, beginning with `mms::decode` or `mms::message::create`.
 *
 * The other modules are the building blocks: @ref decoder and @ref encoder work by steps, and the
 * @ref codecs on single values; the @ref vocabulary holds names and numbers; @ref list,
 * @ref strings, @ref calendar, @ref transfer and @ref words are what the rest stands on. The
 * statuses that most functions return are `MMS_Status`.
 */
#ifndef MMSLIB_MMSLIB_H
#define MMSLIB_MMSLIB_H

#include "../codec/codec.h"
#include "../decoder/decoder.h"
#include "../encoder/encoder.h"
#include "../model/model.h"
#include "../util/util.h"
#include "../vocab/vocab.h"
#include "api.h"

#endif
