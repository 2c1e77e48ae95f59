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

static int failures = 0;

static void check(int holds, const char *what) {
    if (!holds) {
        fprintf(stderr, "not so: %s\n", what);
        ++failures;
    }
}

static void check_text(const char *text, const char *expected) {
    check(text != NULL && strcmp(text, expected) == 0, expected);
}

static MMSLib_Message *decode(const uint8_t *pdu, uint32_t length) {
    MMSLib_Message *message = NULL;
    check(MMSLib_DecodeMessage(pdu, length, &message) == MMS_STATUS_OK, "the PDU decodes");
    return message;
}

/* What the library itself does with texts, sizes and encoded words. */
static void check_send_req(const MMSLib_Message *message) {
    const MMS_Entity *part = MMS_GetEntity(message->pContainer, 1);
    const MMS_Mailbox *mailbox = MMS_GetMailbox(MMSLib_GetTo(message->pContainer), 0);
    check_text(mailbox->pDisplayName, "Bob");
    check_text(mailbox->pAddress->pText, "b@c");
    check(part != NULL, "a part");
    if (part != NULL) {
        const MMS_ContentType *type = MMS_GetContentType(part);
        check_text(MMS_FindContentTypeParameter(type, "name")->pValue, "\xC3\xA9");
        check_text(MMS_GetContentLocation(part), "\xC3\xA8");
        check_text(MMSLib_GetGenericTextField(part, "x"), "y");
    }
}

static void check_own_pdu(void) {
    /* m-send-req, transaction id, version 1.2, To, multipart/mixed with one text/plain part that
     * has a Name, a Content-Location and a header X */
    static const char pdu[] = "\x8C\x80\x98t\0\x8D\x92\x97"
                              "Bob <b@c>\0\x84\xA3\x01\x30\x01"
                              "\x17\x83\x81\xEA\x85=?UTF-8?Q?=C3=A9?=\0"
                              "\x8E=?UTF-8?Q?=C3=A8?=\0x\0y\0a";
    MMSLib_Message *message = decode((const uint8_t *)pdu, sizeof pdu - 1);
    uint8_t *encoded = NULL;
    uint32_t length = 0;
    char *name = NULL;
    char *address = NULL;
    if (message == NULL) {
        return;
    }
    check_send_req(message);
    check(MMSLib_EncodeMessage(message, &encoded, &length, 1) == MMS_STATUS_OK, "it encodes");
    check(MMSLib_GetSize(message) == length, "the size is told beforehand");
    MMSLib_Message_Destroy(message);
    message = decode(encoded, length);
    free(encoded);
    if (message != NULL) {
        check_send_req(message);
    }
    MMSLib_Message_Destroy(message);
    check(ParseNameAndAddress("Bob <b@c>", &name, &address) == 1, "an address splits");
    check_text(name, "Bob");
    check_text(address, "b@c");
    free(name);
    free(address);
}

int main(void) {
    check_own_pdu();
    printf("c_client: %s\n", failures == 0 ? "all as expected" : "failed");
    return failures == 0 ? 0 : 1;
}
