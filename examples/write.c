/* Builds a message with a text and a picture and writes its PDU to a file. */
#include "mmslib.h"
#include <stdio.h>
#include <stdlib.h>

static const char text[] = "Sch\303\266ne Gr\303\274\303\237e";
static const char gif[] = "GIF89a\1\0\1\0\200\0\0\0\0\0\377\377\377,\0\0\0\0\1\0\1\0\0\2\2D\1\0;";

/* Setters answer 0 and constructors null when memory runs out; this program then gives up. */
static void must(int ok) {
    if (!ok) {
        fputs("cannot build the message\n", stderr);
        exit(1);
    }
}

static MMS_ContentType *add_part(MMS_Container *container, const char *type, const char *data,
                                 uint32_t length) {
    MMS_Entity *part = MMS_Entity_Create();
    MMS_ContentType *content_type = MMS_CreateContentType(type);
    uint16_t position;
    must(part && content_type && MMS_SetContentType(part, content_type));
    must(MMS_SetContent(part, (const uint8_t *)data, length, 0) != 0); /* a copy */
    must(MMS_AddEntity(container, part, &position) != 0);
    return content_type;
}

int main(int argc, char **argv) {
    MMSLib_Message *message = MMS_CreateMMS(); /* an m-send-req of version 1.2 */
    must(argc > 1 && message);
    MMS_Container *headers = message->pContainer;
    MMS_EncodedString *number = MMS_CreateEncodedString("+15550100/TYPE=PLMN", NULL);
    MMS_Mailbox *mailbox = MMS_CreateMailbox(128, NULL, number);
    MMS_Group *to = MMS_Group_Create();
    must(number && mailbox && to && MMS_AddMailbox(to, mailbox) && MMSLib_SetTo(headers, to));
    must(MMSLib_SetXMmsTransactionId(headers, "T-0001") != 0);
    must(MMSLib_SetSubject(headers, MMS_CreateEncodedString("Hello", MMS_CHARSET_UTF_8)) != 0);
    must(MMSLib_SetContentType(headers, MMS_CreateContentType("multipart/mixed")) != 0);
    MMS_Parameter *charset = MMS_CreateParameter(MMS_CHARSET_STRING, MMS_CHARSET_UTF_8);
    MMS_ContentType *plain = add_part(headers, "text/plain", text, sizeof text - 1);
    must(charset && MMS_LinkedList_AddParameter(plain->pParameters, charset));
    add_part(headers, "image/gif", gif, sizeof gif - 1);

    uint8_t *pdu;
    uint32_t length;
    must(MMSLib_EncodeMessage(message, &pdu, &length, 1) == MMS_STATUS_OK);
    FILE *file = fopen(argv[1], "wb");
    must(file && fwrite(pdu, 1, length, file) == length && fclose(file) == 0);
    free(pdu);
    MMSLib_Message_Destroy(message);
    return 0;
}
