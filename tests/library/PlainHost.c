/*
 * A host in C, on the plain names: lists the certificates below the home directory, opens the first key, and
 * encodes a text. PlainHost WORK_DIR PASSWORD prints a serial number a line.
 */

#include <quillgate/quillgate.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

/* Ends the program when a call did not answer what it should. */
static void expect(int wanted, int got, const char* what)
{
    if (got == wanted)
        return;
    fprintf(stderr, "%s answered %d, not %d\n", what, got, wanted);
    exit(1);
}

static void printSerials(void* session)
{
    CERTINFO* record = calloc(1, sizeof *record);
    for (int i = 0; i < CLP_GetCertCount(session); ++i) {
        expect(0, CLP_GetCertInfo(session, i, record), "CLP_GetCertInfo");
        printf("%s\n", record->szSerialNumber);
    }
    expect(10004, CLP_GetCertInfo(session, CLP_GetCertCount(session), record),
           "CLP_GetCertInfo past the list");
    free(record);
}

static void openFirstKey(void* session, char* password)
{
    char* keys[2] = {NULL, NULL};
    int lengths[2] = {0, 0};
    expect(0, CLP_DecryptPriKeyData(session, 0, password, &keys[0], &lengths[0], &keys[1], &lengths[1]),
           "CLP_DecryptPriKeyData");
    expect(0x30, keys[0][0], "the first byte of the key");
    for (int i = 0; i < 2; ++i)
        if (keys[i] != NULL)
            expect(0, CLP_MemFree(session, (void**)&keys[i]), "CLP_MemFree");
    expect(1, keys[0] == NULL, "the freed key");
}

static void list(char* workDirectory, char* password)
{
    void* session = NULL;
    LOADOPT* options = calloc(1, sizeof *options);
    LOADCERTOPT* filter = calloc(1, sizeof *filter);
    options->nLibAPIType = TOOLKIT_ZRTK;
    snprintf(options->szWorkDir, sizeof options->szWorkDir, "%s", workDirectory);
    filter->nCertCAType = CERTTYPE_GPKI | CERTTYPE_NPKI | CERTTYPE_MPKI;
    expect(0, CLP_Initalize(&session, options, NULL), "CLP_Initalize");
    expect(0, CLP_SetType(session, filter), "CLP_SetType");
    expect(0, CLP_SetMediaType(session, MEDIA_HARDDISK, 0), "CLP_SetMediaType");
    expect(0, CLP_LoadCertList(session), "CLP_LoadCertList");
    printSerials(session);
    openFirstKey(session, password);
    expect(0, CP_ClearCertData(session), "CP_ClearCertData");
    CLP_UnInitalize(session);
    free(filter);
    free(options);
}

static void encode(int side, char* workDirectory, char* library)
{
    void* context = NULL;
    BINSTR plain = {NULL, 0};
    BINSTR text = {NULL, 0};
    unsigned char word[] = "quillgate";
    expect(0, ZR_Initalize(&context, side, workDirectory, library), "ZR_Initalize");
    expect(0, ZR_BINSTR_Create(context, &plain), "ZR_BINSTR_Create");
    expect(0, ZR_BINSTR_Create(context, &text), "ZR_BINSTR_Create");
    expect(0, ZR_BINSTR_SetData(context, word, 9, &plain), "ZR_BINSTR_SetData");
    expect(0, Base64Encode(context, &plain, &text), "Base64Encode");
    expect(12, text.nLen, "the length of the text");
    expect(0, memcmp(text.pData, "cXVpbGxnYXRl", 12), "the text");
    expect(0, ZR_BINSTR_Delete(context, &text), "ZR_BINSTR_Delete");
    expect(0, ZR_BINSTR_Delete(context, &plain), "ZR_BINSTR_Delete");
    ZR_Finish(context);
}

int main(int argc, char** argv)
{
    char library[] = "libZRToolkitV30-v3.4.2.20.so";
    expect(3, argc, "the number of arguments");
    list(argv[1], argv[2]);
    encode(TOOLKIT_ZRTK, argv[1], library);
    encode(TOOLKIT_GPKI, argv[1], NULL);
    return 0;
}
