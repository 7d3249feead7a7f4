/* The main toolkit's interface: time stamps. */

#define QGTK_PREFIX ZRTK_

#include "toolkit/interface/TimeStamps.h"

using namespace qgtk;

namespace {

/** The whole exchange about data; gives the verified token. */
Bytes stampData(Context& context, const char* host, int port, const DataInput& data, int hashAlg,
                const char* policy, bool sign)
{
    const Bytes request = stampRequest(context, data, hashAlg, policy, sign);
    return verifyStampResponse(context, exchangeTimeStamp(context, pathArgument(host), port, request)).token;
}

} // namespace

#include "toolkit/interface/TimeStampOperations.inc"

QGTK_OPERATION(TSP_TimeStampData)
(void* handle, char* host, int port, int hashAlg, char* policy, BINSTR* data, bool sign, BINSTR*, BINSTR*,
 BINSTR* token)
{
    return callOn(handle, [&](Context& context) {
        requireOutput(token);
        assign(token, stampData(context, host, port, viewOf(data), hashAlg, policy, sign));
    });
}

QGTK_OPERATION(TSP_TimeStampFile)
(void* handle, char* host, int port, int hashAlg, char* policy, char* path, bool sign, BINSTR*, BINSTR*,
 BINSTR* token)
{
    return callOn(handle, [&](Context& context) {
        requireOutput(token);
        assign(token, stampData(context, host, port, pathArgument(path), hashAlg, policy, sign));
    });
}

QGTK_OPERATION(TSP_VerifyToken2)(void* handle, char* path, BINSTR* token)
{
    return callOn(handle, [&](Context& context) { verifyToken(context, pathArgument(path), viewOf(token)); });
}

QGTK_OPERATION(TSP_GetTokenInfo)
(void* handle, BINSTR* token, int size, char* policy, char* hashName, char* hashValue, char* serialNumber,
 char* time, char* nonce, BINSTR* signer)
{
    return callOn(handle, [&](Context& context) {
        storeTokenFields(fieldsOfToken(context, viewOf(token)), size,
                         {nullptr, nullptr, policy, hashName, hashValue, serialNumber, time, nonce}, signer);
    });
}
