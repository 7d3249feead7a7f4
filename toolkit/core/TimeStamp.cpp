#include "toolkit/core/TimeStamp.h"

#include <algorithm>
#include <array>
#include <openssl/ts.h>

#include "toolkit/core/CertificateText.h"
#include "toolkit/core/Hash.h"
#include "toolkit/core/Names.h"
#include "toolkit/core/Oid.h"
#include "toolkit/core/OwnContext.h"
#include "toolkit/core/PathValidation.h"
#include "toolkit/core/Verification.h"

namespace qgtk {

namespace {

inline void freeBorrowed(STACK_OF(X509) * stack)
{
    sk_X509_free(stack);
}

using BorrowedStack = Handle<STACK_OF(X509), freeBorrowed>;
using ImprintHandle = Handle<TS_MSG_IMPRINT, TS_MSG_IMPRINT_free>;
using InfoHandle = Handle<TS_TST_INFO, TS_TST_INFO_free>;
using NumberHandle = Handle<BIGNUM, BN_free>;
using IntegerHandle = Handle<ASN1_INTEGER, ASN1_INTEGER_free>;
using RequestHandle = Handle<TS_REQ, TS_REQ_free>;
using ResponseHandle = Handle<TS_RESP, TS_RESP_free>;
using TokenHandle = Handle<PKCS7, PKCS7_free>;
using VerifyHandle = Handle<TS_VERIFY_CTX, TS_VERIFY_CTX_free>;

constexpr std::size_t nonceLength = 16;

/** OpenSSL copies what is set into its structures; nothing but memory can lack. */
void requireSet(int done)
{
    if (done != 1)
        throw std::bad_alloc();
}

ImprintHandle imprintOf(const Crypto& crypto, const char* digest, const DataInput& data)
{
    Bytes hash = digestOf(crypto, digest, data);
    auto imprint = owned<ImprintHandle>(TS_MSG_IMPRINT_new());
    const auto algorithm = owned<AlgorithmHandle>(X509_ALGOR_new());
    const DigestHandle method = crypto.digest(digest);
    X509_ALGOR_set_md(algorithm.get(), method.get());
    requireSet(TS_MSG_IMPRINT_set_algo(imprint.get(), algorithm.get()));
    requireSet(TS_MSG_IMPRINT_set_msg(imprint.get(), hash.data(), static_cast<int>(hash.size())));
    return imprint;
}

void setNonce(const Crypto& crypto, TS_REQ* request)
{
    std::array<std::uint8_t, nonceLength> bytes = {};
    crypto.random(bytes);
    const auto number = owned<NumberHandle>(BN_bin2bn(bytes.data(), nonceLength, nullptr));
    const auto nonce = owned<IntegerHandle>(BN_to_ASN1_INTEGER(number.get(), nullptr));
    requireSet(TS_REQ_set_nonce(request, nonce.get()));
}

void setPolicy(TS_REQ* request, std::string_view policy)
{
    if (policy.empty())
        return;
    const ObjectHandle object(OBJ_txt2obj(std::string(policy).c_str(), 1));
    require(object != nullptr, Code::BadArgument);
    requireSet(TS_REQ_set_policy_id(request, object.get()));
}

TokenHandle decodeToken(ByteView der)
{
    auto token = decodeDer<TokenHandle>(d2i_PKCS7, der);
    require(token && PKCS7_type_is_signed(token.get()) && token->d.sign, Code::StampDamaged);
    return token;
}

InfoHandle infoOf(PKCS7* token)
{
    InfoHandle info(PKCS7_to_TS_TST_INFO(token));
    require(info != nullptr, Code::StampDamaged);
    return info;
}

/** The certificate in a token that signed it; null when it is not in it. */
X509Handle signerOf(PKCS7* token)
{
    const BorrowedStack signers(PKCS7_get0_signers(token, nullptr, 0));
    return sk_X509_num(signers.get()) == 1 ? share(sk_X509_value(signers.get(), 0)) : nullptr;
}

/** Signature, purpose and path of who signed; gives the signer's DER. */
Bytes checkSignature(Context& context, PKCS7* token)
{
    const X509Handle signer = signerOf(token);
    require(signer != nullptr, Code::StampUntrusted);
    Bytes der = derOf(signer.get());
    ServerAccess servers(context);
    const X509Stack path = validPath(context, servers, der, {});
    const StoreHandle store = anchoredOn(context, path);
    require(TS_RESP_verify_signature(token, path.get(), store.get(), nullptr) == 1, Code::StampUntrusted);
    return der;
}

/** OpenSSL's name of the hash that an imprint has, as "sha256"; dotted for one without a name. */
std::string hashNameOf(TS_MSG_IMPRINT* imprint)
{
    const ASN1_OBJECT* object = nullptr;
    X509_ALGOR_get0(&object, nullptr, nullptr, TS_MSG_IMPRINT_get_algo(imprint));
    const int known = OBJ_obj2nid(object);
    return known == NID_undef ? dottedOid(object) : OBJ_nid2ln(known);
}

std::string hexOf(const ASN1_INTEGER* number)
{
    return number ? hexText(contentOf(number)) : std::string();
}

} // namespace

Bytes makeStampRequest(Context& context, const DataInput& data, const char* digest, std::string_view policy)
{
    const Crypto& crypto = context.crypto();
    const OwnContext own(crypto);
    const auto request = owned<RequestHandle>(TS_REQ_new());
    requireSet(TS_REQ_set_version(request.get(), 1));
    setPolicy(request.get(), policy);
    const ImprintHandle imprint = imprintOf(crypto, digest, data);
    requireSet(TS_REQ_set_msg_imprint(request.get(), imprint.get()));
    setNonce(crypto, request.get());
    requireSet(TS_REQ_set_cert_req(request.get(), 1));
    context.stampRequest = encodeDer<Bytes>(i2d_TS_REQ, request.get());
    return context.stampRequest;
}

void requireStampRequest(ByteView der)
{
    require(decodeDer<RequestHandle>(d2i_TS_REQ, der) != nullptr, Code::StampRequestDamaged);
}

bool isStampResponse(ByteView der)
{
    return decodeDer<ResponseHandle>(d2i_TS_RESP, der) != nullptr;
}

TimeStamp verifyStampResponse(Context& context, ByteView der)
{
    const OwnContext own(context.crypto());
    const auto response = decodeDer<ResponseHandle>(d2i_TS_RESP, der);
    require(response != nullptr, Code::ReplyDamaged);
    const auto request = decodeDer<RequestHandle>(d2i_TS_REQ, context.stampRequest);
    require(request != nullptr, Code::StampNotRequested);
    PKCS7* token = TS_RESP_get_token(response.get());
    require(token != nullptr, Code::StampRefused);
    const auto wanted = owned<VerifyHandle>(TS_REQ_to_TS_VERIFY_CTX(request.get(), nullptr));
    require(TS_RESP_verify_response(wanted.get(), response.get()) == 1, Code::StampOfOther);
    return {encodeDer<Bytes>(i2d_PKCS7, token), checkSignature(context, token)};
}

Bytes verifyToken(Context& context, const DataInput& data, ByteView der)
{
    const OwnContext own(context.crypto());
    const TokenHandle token = decodeToken(der);
    const InfoHandle info = infoOf(token.get());
    TS_MSG_IMPRINT* imprint = TS_TST_INFO_get_msg_imprint(info.get());
    const Bytes hash = digestOf(context.crypto(), hashNameOf(imprint).c_str(), data);
    const ByteView stamped = contentOf(TS_MSG_IMPRINT_get_msg(imprint));
    require(std::ranges::equal(hash, stamped), Code::StampOfOther);
    return checkSignature(context, token.get());
}

TokenFields fieldsOfToken(Context& context, ByteView der)
{
    const OwnContext own(context.crypto());
    const TokenHandle token = decodeToken(der);
    const InfoHandle info = infoOf(token.get());
    TS_MSG_IMPRINT* imprint = TS_TST_INFO_get_msg_imprint(info.get());
    std::tm time = {};
    require(ASN1_TIME_to_tm(TS_TST_INFO_get_time(info.get()), &time) == 1, Code::StampDamaged);
    TokenFields fields;
    fields.policy = dottedOid(TS_TST_INFO_get_policy_id(info.get()));
    fields.hashName = hashNameOf(imprint);
    fields.hashValue = hexText(contentOf(TS_MSG_IMPRINT_get_msg(imprint)));
    fields.serialNumber = hexOf(TS_TST_INFO_get_serial(info.get()));
    fields.time = timeText(timegm(&time));
    fields.nonce = hexOf(TS_TST_INFO_get_nonce(info.get()));
    const X509Handle signer = signerOf(token.get());
    if (!signer)
        return fields;
    fields.signer = derOf(signer.get());
    fields.name = subjectText(signer.get(), context.charset());
    fields.commonName = commonNameOf(Certificate(fields.signer), context.charset());
    return fields;
}

} // namespace qgtk
