/* Raw cryptography of the government PKI library's interface. */

#define QGTK_PREFIX GPKI_

#include "toolkit/interface/CryptoInterface.h"

using namespace qgtk;

#include "toolkit/interface/CryptoOperations.inc"

QGTK_OPERATION(CRYPT_Encrypt_File)(void* handle, char* plain, char* encrypted)
{
    return runOnFile(handle, true, plain, encrypted);
}

/* Callers rely on the order: what is written comes first here. */
QGTK_OPERATION(CRYPT_Decrypt_File)(void* handle, char* plain, char* encrypted)
{
    return runOnFile(handle, false, encrypted, plain);
}

QGTK_OPERATION(CRYPT_Sign_File)
(void* handle, BINSTR* certificate, BINSTR* privateKey, int hashAlg, char* data, char* signature)
{
    return signFile(handle, certificate, privateKey, hashAlg, data, signature);
}

QGTK_OPERATION(CRYPT_Verify_File)(void* handle, BINSTR* certificate, int hashAlg, char* data, char* signature)
{
    return verifyFile(handle, certificate, hashAlg, data, signature);
}
