#include "util/encoded_word.hpp"

#include <strings.h>

constexpr char MMS_CHARSET_UTF_8[6] = "UTF-8";

namespace mms {
namespace {

constexpr uint32_t charset_at = 2;
constexpr uint32_t encoding_at = 8;
constexpr uint32_t text_at = 10; // behind "=?UTF-8?Q?"
constexpr uint32_t longest_encoded_text = 753;
constexpr uint32_t word_overhead = 7; // "=?", "?Q?" and "?="
// The room that a word's name and encoded text share.
constexpr uint32_t longest_word_content = longest_encoded_text + 5;

struct Word {
    TextView encoded; // without what stands around it
    bool base64 = false;
    size_t run = 0; // octets up to the white space or the end that follows the word
};

bool matches(TextView text, size_t at, const char *wanted) {
    const size_t length = std::strlen(wanted);
    return text.size >= at + length && strncasecmp(text.data + at, wanted, length) == 0;
}

// The index of the last "?=" in the text, or 0 (where no encoded text can end).
size_t find_close(TextView text) {
    for (size_t at = text.size; at >= 2; --at) {
        if (text.data[at - 2] == '?' && text.data[at - 1] == '=') {
            return at - 2;
        }
    }
    return 0;
}

bool parse_word(TextView text, Word &word) {
    if (text.size < charset_at || text.data[0] != '=' || text.data[1] != '?') {
        return false;
    }
    const TextView run = text.first(text.find('\r', '\n', ' ', '\0'));
    const size_t close = find_close(run);
    if (close <= text_at || close - text_at > longest_encoded_text) {
        return false;
    }
    const char encoding = run.data[encoding_at];
    word.base64 = encoding == 'B' || encoding == 'b';
    word.run = run.size;
    word.encoded = {run.data + text_at, close - text_at};
    return matches(run, charset_at, MMS_CHARSET_UTF_8) && matches(run, encoding_at - 1, "?") &&
           matches(run, encoding_at + 1, "?") &&
           (word.base64 || encoding == 'Q' || encoding == 'q');
}

uint32_t decode_q(TextView encoded, uint8_t *output) {
    uint8_t spaced[longest_encoded_text];
    for (size_t i = 0; i < encoded.size; ++i) {
        spaced[i] = static_cast<uint8_t>(encoded.data[i] == '_' ? ' ' : encoded.data[i]);
    }
    return coreQPDecode(spaced, static_cast<uint32_t>(encoded.size), output);
}

uint32_t decode_b(TextView encoded, uint8_t *output) {
    return coreBase64Decode(reinterpret_cast<const uint8_t *>(encoded.data),
                            static_cast<uint32_t>(encoded.size), output);
}

// Decodes one word into `output`, which holds as many octets as its encoded text and one more;
// `length` is that of the decoded text up to its first zero octet, where a terminator stands.
bool decode_word(const Word &word, char *output, size_t &length) {
    auto *octets = reinterpret_cast<uint8_t *>(output);
    const uint32_t count =
        word.base64 ? decode_b(word.encoded, octets) : decode_q(word.encoded, octets);
    output[count] = '\0';
    length = std::strlen(output);
    return count != 0;
}

size_t skip_white_space(TextView text, size_t at) {
    while (at < text.size &&
           (is_blank(text.data[at]) || text.data[at] == '\r' || text.data[at] == '\n')) {
        ++at;
    }
    return at;
}

} // namespace

MMS_Status decode_encoded_words(TextView text, OwnedText &result) {
    Word word;
    if (!parse_word(text, word)) {
        return MMS_STATUS_MALFORMED;
    }
    // No word decodes to more octets than it has itself, so the text's own length is room enough.
    OwnedText decoded(static_cast<char *>(std::malloc(text.size + 1)));
    if (!decoded) {
        return MMS_STATUS_NO_ROOM;
    }
    size_t total = 0;
    size_t at = 0;
    bool only_words = true;
    while (at < text.size) {
        size_t length = 0;
        only_words =
            parse_word(text.after(at), word) && decode_word(word, decoded.get() + total, length);
        if (!only_words) {
            break;
        }
        total += length;
        at = skip_white_space(text, at + word.run);
    }
    if (total == 0 && !only_words) {
        return MMS_STATUS_MALFORMED;
    }
    decoded.get()[total] = '\0';
    result = std::move(decoded);
    return MMS_STATUS_OK;
}

uint32_t encoded_word_size(const char *text, const char *charset) {
    if (text == nullptr || *text == '\0') {
        return 0;
    }
    const size_t name = std::strlen(charset);
    // Every octet takes at least one, so a text that is too long need not be counted.
    if (name + strnlen(text, longest_word_content + 1) > longest_word_content) {
        return 0;
    }
    const size_t content = name + MMSUtilQEncode(text, nullptr);
    return content > longest_word_content ? 0 : static_cast<uint32_t>(content + word_overhead);
}

void encode_word(const char *text, const char *charset, char *output) {
    const size_t name = std::strlen(charset);
    std::memcpy(output, "=?", 2);
    std::memcpy(output + 2, charset, name);
    char *at = output + 2 + name;
    std::memcpy(at, "?Q?", 3);
    at += 3 + MMSUtilQEncode(text, at + 3);
    std::memcpy(at, "?=", 2);
}

} // namespace mms

using mms::TextView;

uint32_t MMSUtilQEncode(const char *pText, char *pOutput) {
    constexpr const char *digits = "0123456789ABCDEF";
    uint32_t count = 0;
    for (; *pText != '\0'; ++pText) {
        const auto octet = static_cast<unsigned char>(*pText);
        const bool plain = (octet >= '0' && octet <= '9') || (octet >= 'A' && octet <= 'Z') ||
                           (octet >= 'a' && octet <= 'z');
        const uint32_t size = plain || octet == ' ' ? 1 : 3;
        if (pOutput != nullptr) {
            if (size == 1) {
                pOutput[count] = plain ? *pText : '_';
            } else {
                pOutput[count] = '=';
                pOutput[count + 1] = digits[octet >> 4];
                pOutput[count + 2] = digits[octet & 15];
            }
        }
        count += size;
    }
    return count;
}

char *MMSUtilEncodeEncodedWord(const char *pText, const char *pCharset) {
    const uint32_t size = mms::encoded_word_size(pText, pCharset);
    char *word = size != 0 ? static_cast<char *>(std::malloc(size_t{size} + 1)) : nullptr;
    if (word != nullptr) {
        mms::encode_word(pText, pCharset, word);
        word[size] = '\0';
    }
    return word;
}

uint32_t MMSUtilParseSingleEncodedWord(const char *pText, const char **ppCharset,
                                       uint32_t *pConsumed, char *pOutput) {
    *pConsumed = 0;
    const TextView text = mms::view_of(pText);
    mms::Word word;
    char decoded[mms::longest_encoded_text + 1];
    size_t length = 0;
    if (!mms::parse_word(text, word) || !mms::decode_word(word, decoded, length)) {
        return MMS_STATUS_MALFORMED;
    }
    std::memcpy(pOutput, decoded, length + 1);
    *ppCharset = MMS_CHARSET_UTF_8;
    *pConsumed = static_cast<uint32_t>(word.run);
    return MMS_STATUS_OK;
}

uint32_t MMSUtilDecodeEncodedWord(const char *pText, const char **ppCharset, char **ppText) {
    *ppText = nullptr;
    mms::OwnedText decoded;
    const TextView text = mms::view_of(pText);
    const MMS_Status status = mms::decode_encoded_words(text, decoded);
    if (status == MMS_STATUS_OK) {
        *ppCharset = MMS_CHARSET_UTF_8;
        *ppText = decoded.release();
    }
    return status;
}
