#include "util/util.h"

namespace {

// The value of an upper-case hexadecimal digit, or -1.
int hex_digit(uint8_t octet) {
    if (octet >= '0' && octet <= '9') {
        return octet - '0';
    }
    if (octet >= 'A' && octet <= 'F') {
        return octet - 'A' + 10;
    }
    return -1;
}

// The 6-bit value of a Base64 character, 0 for padding, or -1.
int base64_value(uint8_t octet) {
    if (octet >= 'A' && octet <= 'Z') {
        return octet - 'A';
    }
    if (octet >= 'a' && octet <= 'z') {
        return octet - 'a' + 26;
    }
    if (octet >= '0' && octet <= '9') {
        return octet - '0' + 52;
    }
    switch (octet) {
    case '+':
        return 62;
    case '/':
        return 63;
    case '=':
        return 0;
    default:
        return -1;
    }
}

} // namespace

uint32_t coreQPDecode_data_size(const uint8_t * /*pInput*/, uint32_t length) { return length; }

uint32_t coreQPDecode(const uint8_t *pInput, uint32_t length, uint8_t *pOutput) {
    uint32_t count = 0;
    uint32_t at = 0;
    while (at < length) {
        const uint32_t left = length - at;
        if (pInput[at] != '=') {
            pOutput[count++] = pInput[at++];
            continue;
        }
        if (left == 1) {
            break;
        }
        if (left == 2) {
            pOutput[0] = 0;
            return 0;
        }
        if (pInput[at + 1] != '\r' || pInput[at + 2] != '\n') {
            const int high = hex_digit(pInput[at + 1]);
            const int low = hex_digit(pInput[at + 2]);
            if (high < 0 || low < 0) {
                pOutput[0] = 0;
                return 0;
            }
            pOutput[count++] = static_cast<uint8_t>(high * 16 + low);
        }
        at += 3;
    }
    pOutput[count] = 0;
    return count;
}

uint32_t coreBase64Decode_data_size(const uint8_t * /*pInput*/, uint32_t length) {
    return length % 4 != 0 ? 0 : length / 4 * 3 + 1;
}

uint32_t coreBase64Decode(const uint8_t *pInput, uint32_t length, uint8_t *pOutput) {
    if (length % 4 != 0) {
        return 0;
    }
    uint8_t *out = pOutput;
    for (uint32_t at = 0; at < length; at += 4) {
        uint32_t value[4];
        for (uint32_t i = 0; i < 4; ++i) {
            const int six_bits = base64_value(pInput[at + i]);
            if (six_bits < 0) {
                return 0;
            }
            value[i] = static_cast<uint32_t>(six_bits);
        }
        *out++ = static_cast<uint8_t>(value[0] << 2 | value[1] >> 4);
        *out++ = static_cast<uint8_t>(value[1] << 4 | value[2] >> 2);
        *out++ = static_cast<uint8_t>(value[2] << 6 | value[3]);
    }
    return length / 4 * 3;
}
