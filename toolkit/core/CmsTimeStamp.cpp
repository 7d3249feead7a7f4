#include "toolkit/core/CmsTimeStamp.h"

#include <openssl/ts.h>

#include "toolkit/core/CmsAttributes.h"
#include "toolkit/core/CmsSigners.h"
#include "toolkit/core/Oid.h"

namespace qgtk {

namespace {

using InfoHandle = Handle<TS_TST_INFO, TS_TST_INFO_free>;

/** What a token says, its signature unseen. */
InfoHandle tokenInfo(const Crypto& crypto, ByteView token)
{
    const auto message =
        decodeWhole<Handle<PKCS7, PKCS7_free>>(crypto, token, PKCS7_new_ex, d2i_PKCS7, Code::TokenDamaged);
    InfoHandle info(PKCS7_to_TS_TST_INFO(message.get()));
    require(info != nullptr, Code::TokenDamaged);
    return info;
}

void requireTokenOver(const Crypto& crypto, ByteView token, ByteView signature)
{
    const InfoHandle info = tokenInfo(crypto, token);
    TS_MSG_IMPRINT* imprint = TS_TST_INFO_get_msg_imprint(info.get());
    const std::string hash = dottedOid(TS_MSG_IMPRINT_get_algo(imprint)->algorithm);
    const Bytes digest = crypto.hash(hash.c_str(), signature);
    const ByteView told = contentOf(TS_MSG_IMPRINT_get_msg(imprint));
    require(told.size() == digest.size() && CRYPTO_memcmp(told.data(), digest.data(), digest.size()) == 0,
            Code::TokenForeign);
}

} // namespace

Bytes withTimeStamp(const Crypto& crypto, ByteView message, int index, ByteView token)
{
    const CmsHandle decoded = decodeMessage(crypto, message);
    requireKind(decoded.get(), NID_pkcs7_signed);
    CMS_SignerInfo* signer = signerAt(decoded.get(), index);
    requireTokenOver(crypto, token, contentOf(CMS_SignerInfo_get0_signature(signer)));
    setTimeStamp(signer, token);
    return encodeMessage(decoded.get());
}

} // namespace qgtk
