/* Raw cryptography of the government PKI library's interface. */

#define QGTK_PREFIX GPKI_
#define QGTK_FILE_SUFFIX _File

#include "toolkit/interface/CryptoInterface.h"

using namespace qgtk;

#include "toolkit/interface/CryptoOperations.inc"

/* Callers rely on the order: what is written comes first here. */
QGTK_OPERATION(CRYPT_Decrypt_File)(void* handle, char* plain, char* encrypted)
{
    return runOnFile(handle, false, encrypted, plain);
}
