// Encoded words (RFC 2047) of texts that need not be NUL-terminated.
#pragma once

#include "util/text.hpp"
#include "util/util.h"

namespace mms {

// Decodes the run of encoded words at the start of the text into a new heap text.
// OK; MALFORMED when the text starts with no accepted word; NO_ROOM without memory.
MMS_Status decode_encoded_words(TextView text, OwnedText &result);

// The octets of the one encoded word that holds the text; 0 when none can: for a null or empty text
// and for one that is too long.
uint32_t encoded_word_size(const char *text, const char *charset);

// Writes that word, `encoded_word_size` octets without a terminator.
void encode_word(const char *text, const char *charset, char *output);

} // namespace mms
