/* The government PKI library's interface: time stamps. */

#define QGTK_PREFIX GPKI_

#include "toolkit/interface/TimeStamps.h"

using namespace qgtk;

#include "toolkit/interface/TimeStampOperations.inc"

QGTK_OPERATION(TSP_VerifyToken2)(void* handle, BINSTR* data, BINSTR* token, BINSTR* signer)
{
    return callOn(handle, [&](Context& context) {
        const Bytes certificate = verifyToken(context, viewOf(data), viewOf(token));
        if (signer)
            assign(signer, certificate);
    });
}

QGTK_OPERATION(TSP_GetTokenInfo)
(void* handle, BINSTR* token, int size, char* commonName, char* name, char* policy, char* hashName,
 char* hashValue, char* serialNumber, char* time, char* nonce)
{
    return callOn(handle, [&](Context& context) {
        storeTokenFields(fieldsOfToken(context, viewOf(token)), size,
                         {commonName, name, policy, hashName, hashValue, serialNumber, time, nonce}, nullptr);
    });
}
