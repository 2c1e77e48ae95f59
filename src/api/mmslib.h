/**
 * @file
 * mmslib: encodes and decodes Multimedia Messaging Service (MMS) protocol data units.
 *
 * This header, included alone, declares the whole interface, for C11 and for C++17 and later.
 * Applications start in api.h with `MMSLib_DecodeMessage` or `MMS_CreateMMS`, use the header
 * accessors there and the model in model.h, and end with `MMSLib_EncodeMessage`; the other headers
 * are its building blocks.
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
