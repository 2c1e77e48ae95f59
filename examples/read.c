/* Reads a PDU from a file and prints what its parts are. */
#include "mmslib.h"
#include <stdio.h>

int main(int argc, char **argv) {
    static uint8_t pdu[1 << 20];
    FILE *file = argc > 1 ? fopen(argv[1], "rb") : NULL;
    size_t length = file ? fread(pdu, 1, sizeof pdu, file) : 0;
    MMSLib_Message *message;
    uint32_t status = MMSLib_DecodeMessage(pdu, (uint32_t)length, &message);
    for (uint32_t i = 1; message && i < MMS_GetEntityCount(message->pContainer); ++i) {
        MMS_Entity *part = MMS_GetEntity(message->pContainer, i);
        printf("%s, %u octets\n", MMS_GetContentType(part)->pMediaType, MMS_GetContentLength(part));
    }
    MMSLib_Message_Destroy(message);
    return status == MMS_STATUS_OK ? 0 : 1;
}
