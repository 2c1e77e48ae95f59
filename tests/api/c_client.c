/*
 * A C program that has functions of its own named as some of the library's are. The library has to
 * keep to its own: these end the program.
 */
#include "mmslib.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static void die(const char *name) {
    fprintf(stderr, "the library called the program's %s\n", name);
    abort();
}

void SetString(char **ppText, const char *pNew, uint8_t copy) {
    (void)ppText;
    (void)pNew;
    (void)copy;
    die("SetString");
}

uint32_t isASCII(const char *pText) {
    (void)pText;
    die("isASCII");
    return 0;
}

uint32_t Encode(const MMSLib_Message *pMessage, uint8_t *pBuffer, uint32_t bufferSize,
                uint8_t sizeOnly, uint32_t *pWritten, uint8_t validate) {
    (void)pMessage;
    (void)pBuffer;
    (void)bufferSize;
    (void)sizeOnly;
    (void)pWritten;
    (void)validate;
    die("Encode");
    return 0;
}

int main(void) {
    /* m-send-req, transaction id, version 1.2, From, To, sender visibility, multipart/mixed with
     * one text/plain part that has a Name, a Content-Location and a header X */
    static const char pdu[] = "\x8C\x80\x98t\0\x8D\x92\x89\x01\x81\x97"
                              "Bob <b@c>\0\x94\x80\x84\xA3\x01\x30\x01"
                              "\x17\x83\x81\xEA\x85=?UTF-8?Q?=C3=A9?=\0"
                              "\x8E=?UTF-8?Q?=C3=A8?=\0x\0y\0a";
    const uint32_t size = sizeof pdu - 1;
    MMSLib_Message *message = NULL;
    uint8_t *encoded = NULL;
    uint32_t length = 0;
    int same =
        MMSLib_DecodeMessage((const uint8_t *)pdu, size, &message) == MMS_STATUS_OK &&
        strcmp(MMS_GetMailbox(MMSLib_GetTo(message->pContainer), 0)->pDisplayName, "Bob") == 0 &&
        MMSLib_EncodeMessage(message, &encoded, &length, 1) == MMS_STATUS_OK && length == size &&
        memcmp(encoded, pdu, size) == 0;
    MMSLib_Message_Destroy(message);
    free(encoded);
    return same ? 0 : 1;
}
