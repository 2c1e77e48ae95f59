#include "util/text.hpp"

#include "util/util.h"

constexpr char mmsutil_SP[2] = " ";
constexpr char mmsutil_CRLF[3] = "\r\n";
constexpr char mmsutil_HT = '\t';
constexpr char mmsutil_CR = '\r';
constexpr char mmsutil_LF = '\n';

namespace {

int8_t folded_difference(int a, int b) { return static_cast<int8_t>(static_cast<uint8_t>(a - b)); }

int8_t null_order(const char *a, const char *b) {
    return static_cast<int8_t>((a != nullptr ? 1 : 0) - (b != nullptr ? 1 : 0));
}

} // namespace

void SkipWhiteSpace(const char **ppText) {
    while (mms::is_blank(**ppText)) {
        ++*ppText;
    }
}

void Skip_CRLF_SPACE_HT(const char **ppText) {
    while (mms::is_blank(**ppText) || **ppText == '\r' || **ppText == '\n') {
        ++*ppText;
    }
}

uint32_t isASCII(const char *pText) {
    if (pText == nullptr || *pText == '\0') {
        return 0;
    }
    for (; *pText != '\0'; ++pText) {
        if (static_cast<unsigned char>(*pText) >= 0x80) {
            return 0;
        }
    }
    return 1;
}

void removeWSFromStringEnd(char *pText) {
    size_t length = std::strlen(pText);
    while (length != 0 && mms::is_blank(pText[length - 1])) {
        --length;
    }
    pText[length] = '\0';
}

char *StringCopy(const char *pSource, char *pDestination, uint32_t n) {
    std::strncpy(pDestination, pSource, n);
    pDestination[n] = '\0';
    return pDestination;
}

char *StringToken(const char *pText, const char *pDelimiters, const char **ppNext) {
    const bool end_delimits = std::strchr(pDelimiters, '\n') != nullptr;
    const size_t length = std::strcspn(pText, pDelimiters);
    const bool at_end = pText[length] == '\0';
    if (at_end && !end_delimits) {
        return nullptr;
    }
    char *token = mms::copy_text(pText, length).release();
    if (token != nullptr) {
        *ppNext = pText + length + (at_end ? 0 : 1);
    }
    return token;
}

int8_t StrCaseCmp(const char *pA, const char *pB) { return StrnCaseCmp(pA, pB, UINT32_MAX); }

int8_t StrnCaseCmp(const char *pA, const char *pB, uint32_t n) {
    if (pA == nullptr || pB == nullptr) {
        return null_order(pA, pB);
    }
    const mms::CaseFold fold;
    for (uint32_t i = 0; i < n; ++i) {
        if (fold(pA[i]) != fold(pB[i])) {
            return folded_difference(fold(pA[i]), fold(pB[i]));
        }
        if (pA[i] == '\0') {
            break;
        }
    }
    return 0;
}

void SetString(char **ppText, const char *pNew, uint8_t copy) {
    char *text = const_cast<char *>(pNew);
    if (pNew != nullptr && copy != 0) {
        text = mms::copy_text(pNew).release();
    }
    if (*ppText != text) {
        std::free(*ppText);
    }
    *ppText = text;
}
