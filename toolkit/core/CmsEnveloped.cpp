#include "toolkit/core/CmsEnveloped.h"

#include <openssl/rsa.h>

#include "toolkit/core/CertificateText.h"
#include "toolkit/core/ErrorQueueKeeper.h"
#include "toolkit/core/Names.h"

namespace qgtk {

namespace {

/** Sets how the content key is encrypted for a recipient: what OpenSSL takes of itself is SHA-1. */
void chooseScheme(const Crypto& crypto, CMS_RecipientInfo* info, RsaScheme rsa)
{
    EVP_PKEY_CTX* run = CMS_RecipientInfo_get0_pkey_ctx(info);
    const DigestHandle sha256 = crypto.digest("SHA256");
    if (CMS_RecipientInfo_type(info) == CMS_RECIPINFO_AGREE) {
        check(EVP_PKEY_CTX_set_ecdh_kdf_md(run, sha256.get()), Code::KeyUnsuitable);
        return;
    }
    if (rsa == RsaScheme::V15)
        return;
    check(EVP_PKEY_CTX_set_rsa_padding(run, RSA_PKCS1_OAEP_PADDING), Code::KeyUnsuitable);
    check(EVP_PKEY_CTX_set_rsa_oaep_md(run, sha256.get()), Code::KeyUnsuitable);
    check(EVP_PKEY_CTX_set_rsa_mgf1_md(run, sha256.get()), Code::KeyUnsuitable);
}

void addRecipient(Context& context, CMS_ContentInfo* message, X509* certificate)
{
    const int kind = keyKindOf(certificate);
    require(kind == EVP_PKEY_RSA || kind == EVP_PKEY_EC, Code::KeyUnsuitable);
    CMS_RecipientInfo* info = CMS_add1_recipient_cert(message, certificate, CMS_KEY_PARAM);
    require(info != nullptr, Code::KeyUnsuitable);
    chooseScheme(context.crypto(), info, context.cryptoSettings.rsa);
}

/** Lets content through the cipher of a message that is complete but for it, and gives the message's DER. */
Bytes encryptContent(CMS_ContentInfo* message, ByteView content)
{
    const FilterChain chain(CMS_dataInit(message, nullptr), nullptr, Code::KeyUnsuitable);
    chain.feed(content);
    chain.finish();
    check(CMS_dataFinal(message, chain.get()), Code::KeyUnsuitable);
    return encodeMessage(message);
}

/** Reads a chain that decrypts to its end. */
SecretBytes decrypted(const FilterChain& chain)
{
    SecretBytes content;
    chain.drain([&](ByteView block) { content.insert(content.end(), block.begin(), block.end()); });
    requireDecrypted(chain);
    return content;
}

/** What decrypts the content of a message: what it carries, else what the source gives. */
FilterChain decryption(CMS_ContentInfo* message, BIO* source)
{
    require(source || carriedContent(message), Code::ContentMissing);
    return FilterChain(CMS_dataInit(message, source), source, Code::MessageAlgorithm);
}

/** OpenSSL takes a random key in the place of one that does not fit the cipher, and by chance gives noise. */
void requireKeyLength(const FilterChain& chain, std::size_t length)
{
    EVP_CIPHER_CTX* run = nullptr;
    BIO_get_cipher_ctx(BIO_find_type(chain.get(), BIO_TYPE_CIPHER), &run);
    require(run && static_cast<std::size_t>(EVP_CIPHER_CTX_get_key_length(run)) == length,
            Code::CipherKeyLength);
}

/** A recipient as a message names it. */
MessageRecipient recipient(Context& context, const ASN1_OCTET_STRING* keyId, const X509_NAME* issuer,
                           const ASN1_INTEGER* serial)
{
    MessageRecipient named;
    if (keyId)
        named.keyId = hexText(contentOf(keyId));
    if (issuer)
        named.issuer = nameText(issuer, context.charset());
    if (serial)
        named.serial = hexText(contentOf(serial));
    return named;
}

MessageRecipient transported(Context& context, CMS_RecipientInfo* info)
{
    ASN1_OCTET_STRING* keyId = nullptr;
    X509_NAME* issuer = nullptr;
    ASN1_INTEGER* serial = nullptr;
    CMS_RecipientInfo_ktri_get0_signer_id(info, &keyId, &issuer, &serial);
    return recipient(context, keyId, issuer, serial);
}

void appendAgreed(Context& context, CMS_RecipientInfo* info, std::vector<MessageRecipient>& recipients)
{
    STACK_OF(CMS_RecipientEncryptedKey)* keys = CMS_RecipientInfo_kari_get0_reks(info);
    for (int i = 0; i < sk_CMS_RecipientEncryptedKey_num(keys); ++i) {
        ASN1_OCTET_STRING* keyId = nullptr;
        X509_NAME* issuer = nullptr;
        ASN1_INTEGER* serial = nullptr;
        CMS_RecipientEncryptedKey_get0_id(sk_CMS_RecipientEncryptedKey_value(keys, i), &keyId, nullptr,
                                          nullptr, &issuer, &serial);
        recipients.push_back(recipient(context, keyId, issuer, serial));
    }
}

} // namespace

CmsHandle startEnvelope(Context& context, ByteView recipients, int cipher, bool detached)
{
    const Crypto& crypto = context.crypto();
    const CipherHandle content = contentCipher(crypto, cipher);
    const X509Stack certificates = messageCertificates(crypto, recipients);
    require(sk_X509_num(certificates.get()) > 0, Code::BadArgument);
    CmsHandle message =
        owned<CmsHandle>(CMS_EnvelopedData_create_ex(content.get(), crypto.context(), nullptr));
    for (int i = 0; i < sk_X509_num(certificates.get()); ++i)
        addRecipient(context, message.get(), sk_X509_value(certificates.get(), i));
    CMS_set_detached(message.get(), detached ? 1 : 0);
    return message;
}

Bytes envelope(Context& context, ByteView recipients, int cipher, ByteView content)
{
    return encryptContent(startEnvelope(context, recipients, cipher, false).get(), content);
}

void unlock(CMS_ContentInfo* message, const RequestSigner& recipient)
{
    const int kind = OBJ_obj2nid(CMS_get0_type(message));
    require(kind == NID_pkcs7_enveloped || kind == NID_id_smime_ct_authEnvelopedData, Code::MessageKind);
    const ErrorQueueKeeper errors;
    check(CMS_decrypt_set1_pkey(message, recipient.key.get(), recipient.certificate.get()),
          Code::NotRecipient);
}

void decryptContent(CMS_ContentInfo* message, BIO* source, const BlockSink& take)
{
    const FilterChain chain = decryption(message, source);
    chain.drain(take);
    requireDecrypted(chain);
}

SecretBytes openEnvelope(Context& context, ByteView message, const RequestSigner& recipient)
{
    const CmsHandle decoded = decodeMessage(context.crypto(), message);
    unlock(decoded.get(), recipient);
    return decrypted(decryption(decoded.get(), nullptr));
}

Bytes encryptData(Context& context, ByteView content)
{
    const Crypto& crypto = context.crypto();
    const std::optional<CipherKey>& key = context.cryptoSettings.cipherKey;
    require(key.has_value(), Code::NoCipherKey);
    const CipherHandle cipher = contentCipher(crypto, key->algorithm);
    const CmsHandle message = owned<CmsHandle>(CMS_ContentInfo_new_ex(crypto.context(), nullptr));
    check(CMS_EncryptedData_set1_key(message.get(), cipher.get(), key->key.data(), key->key.size()),
          Code::CryptoUnavailable);
    CMS_set_detached(message.get(), 0);
    return encryptContent(message.get(), content);
}

SecretBytes decryptData(Context& context, ByteView message, ByteView key)
{
    const CmsHandle decoded = decodeMessage(context.crypto(), message);
    requireKind(decoded.get(), NID_pkcs7_encrypted);
    check(CMS_EncryptedData_set1_key(decoded.get(), nullptr, key.data(), key.size()), Code::CipherKeyLength);
    const FilterChain chain = decryption(decoded.get(), nullptr);
    requireKeyLength(chain, key.size());
    return decrypted(chain);
}

std::vector<MessageRecipient> recipientsOf(Context& context, ByteView message)
{
    const CmsHandle decoded = decodeMessage(context.crypto(), message);
    STACK_OF(CMS_RecipientInfo)* infos = CMS_get0_RecipientInfos(decoded.get());
    require(infos != nullptr, Code::MessageKind);
    std::vector<MessageRecipient> recipients;
    for (int i = 0; i < sk_CMS_RecipientInfo_num(infos); ++i) {
        CMS_RecipientInfo* info = sk_CMS_RecipientInfo_value(infos, i);
        const int type = CMS_RecipientInfo_type(info);
        if (type == CMS_RECIPINFO_AGREE)
            appendAgreed(context, info, recipients);
        else
            recipients.push_back(type == CMS_RECIPINFO_TRANS ? transported(context, info)
                                                             : MessageRecipient());
    }
    return recipients;
}

} // namespace qgtk
