#include "toolkit/core/CmpRecoveryMessage.h"

#include <algorithm>
#include <openssl/asn1t.h>
#include <openssl/cmp.h>
#include <openssl/crmf.h>

#include "toolkit/core/AsymmetricCipher.h"
#include "toolkit/core/Oid.h"

namespace qgtk {

struct CmpMessage
{
    STACK_OF(ASN1_TYPE) * header;
    ASN1_TYPE* body;
    ASN1_BIT_STRING* protection;
    STACK_OF(ASN1_TYPE) * extraCertificates;
};

struct CmpProtectedPart
{
    STACK_OF(ASN1_TYPE) * header;
    ASN1_TYPE* body;
};

struct CmpEncryptedValue
{
    X509_ALGOR* intendedAlgorithm;
    X509_ALGOR* cipher;
    ASN1_BIT_STRING* cipherKey;
    X509_ALGOR* keyAlgorithm;
    ASN1_OCTET_STRING* hint;
    ASN1_BIT_STRING* value;
};

struct CmpCertifiedPair
{
    X509* certificate;
    CmpEncryptedValue* key;
    ASN1_TYPE* publication;
};

DEFINE_STACK_OF(CmpCertifiedPair)

struct CmpRecoveryContent
{
    OSSL_CMP_PKISI* status;
    X509* signingCertificate;
    STACK_OF(X509) * authorities;
    STACK_OF(CmpCertifiedPair) * pairs;
};

namespace {

// clang-format off
ASN1_SEQUENCE(CmpMessage) = {
    ASN1_SEQUENCE_OF(CmpMessage, header, ASN1_ANY),
    ASN1_SIMPLE(CmpMessage, body, ASN1_ANY),
    ASN1_EXP_OPT(CmpMessage, protection, ASN1_BIT_STRING, 0),
    ASN1_EXP_SEQUENCE_OF_OPT(CmpMessage, extraCertificates, ASN1_ANY, 1)
} static_ASN1_SEQUENCE_END(CmpMessage)

ASN1_SEQUENCE(CmpProtectedPart) = {
    ASN1_SEQUENCE_OF(CmpProtectedPart, header, ASN1_ANY),
    ASN1_SIMPLE(CmpProtectedPart, body, ASN1_ANY)
} static_ASN1_SEQUENCE_END(CmpProtectedPart)

ASN1_SEQUENCE(CmpEncryptedValue) = {
    ASN1_IMP_OPT(CmpEncryptedValue, intendedAlgorithm, X509_ALGOR, 0),
    ASN1_IMP_OPT(CmpEncryptedValue, cipher, X509_ALGOR, 1),
    ASN1_IMP_OPT(CmpEncryptedValue, cipherKey, ASN1_BIT_STRING, 2),
    ASN1_IMP_OPT(CmpEncryptedValue, keyAlgorithm, X509_ALGOR, 3),
    ASN1_IMP_OPT(CmpEncryptedValue, hint, ASN1_OCTET_STRING, 4),
    ASN1_SIMPLE(CmpEncryptedValue, value, ASN1_BIT_STRING)
} static_ASN1_SEQUENCE_END(CmpEncryptedValue)

// A certificate that is itself encrypted has another number, and is no certificate for us.
ASN1_SEQUENCE(CmpCertifiedPair) = {
    ASN1_EXP(CmpCertifiedPair, certificate, X509, 0),
    ASN1_EXP_OPT(CmpCertifiedPair, key, CmpEncryptedValue, 0),
    ASN1_EXP_OPT(CmpCertifiedPair, publication, ASN1_ANY, 1)
} static_ASN1_SEQUENCE_END(CmpCertifiedPair)

ASN1_SEQUENCE(CmpRecoveryContent) = {
    ASN1_SIMPLE(CmpRecoveryContent, status, OSSL_CMP_PKISI),
    ASN1_EXP_OPT(CmpRecoveryContent, signingCertificate, X509, 0),
    ASN1_EXP_SEQUENCE_OF_OPT(CmpRecoveryContent, authorities, X509, 1),
    ASN1_EXP_SEQUENCE_OF_OPT(CmpRecoveryContent, pairs, CmpCertifiedPair, 2)
} static_ASN1_SEQUENCE_END(CmpRecoveryContent)
    // clang-format on

    /** Tags of a message's body and of fields of its header. */
    constexpr std::uint8_t initialRequestTag = 0xA0;
constexpr std::uint8_t recoveryRequestTag = 0xA9;
constexpr std::uint8_t recoveryResponseTag = 0xAA;
constexpr std::uint8_t protectionAlgorithmTag = 0xA1;
constexpr std::uint8_t transactionTag = 0xA4;
constexpr std::uint8_t senderNonceTag = 0xA5;
constexpr std::uint8_t recipientNonceTag = 0xA6;

/** Owner of a structure of one of the templates. */
template <typename T>
class Structure
{
public:
    Structure(ByteView der, const ASN1_ITEM* item) : m_item(item)
    {
        const unsigned char* position = der.data();
        m_object =
            reinterpret_cast<T*>(ASN1_item_d2i(nullptr, &position, static_cast<long>(der.size()), item));
    }
    ~Structure() { ASN1_item_free(reinterpret_cast<ASN1_VALUE*>(m_object), m_item); }
    Structure(const Structure&) = delete;
    Structure& operator=(const Structure&) = delete;

    explicit operator bool() const { return m_object != nullptr; }
    T* operator->() const { return m_object; }
    T* get() const { return m_object; }

private:
    const ASN1_ITEM* m_item;
    T* m_object;
};

template <typename T>
Bytes encode(const T* object, const ASN1_ITEM* item)
{
    return encodeDer<Bytes>(
        [item](const T* value, unsigned char** target) {
            return ASN1_item_i2d(reinterpret_cast<const ASN1_VALUE*>(value), target, item);
        },
        object);
}

/** The whole of an element with a tag that is not universal. */
ByteView wholeOf(const ASN1_TYPE* element)
{
    return element->type == V_ASN1_OTHER ? contentOf(element->value.asn1_string) : ByteView();
}

/** What stands inside of an explicit tag of definite length; none for another tag. */
ByteView insideOf(const ASN1_TYPE* element, std::uint8_t wantedTag)
{
    const ByteView whole = wholeOf(element);
    if (whole.empty() || whole.front() != wantedTag)
        return {};
    const unsigned char* position = whole.data();
    long length = 0;
    int tag = 0;
    int tagClass = 0;
    constexpr int damagedOrIndefinite = 0x81;
    const int kind = ASN1_get_object(&position, &length, &tag, &tagClass, static_cast<long>(whole.size()));
    if ((kind & damagedOrIndefinite) != 0)
        return {};
    return {position, static_cast<std::size_t>(length)};
}

/** A field of a header by its tag, which the names before these fields may have too; none when it is not
 * there.
 */
ByteView fieldOf(const STACK_OF(ASN1_TYPE) * header, std::uint8_t tag)
{
    constexpr int firstField = 3; // behind version, sender and recipient
    for (int i = firstField; i < sk_ASN1_TYPE_num(header); ++i) {
        const ByteView inside = insideOf(sk_ASN1_TYPE_value(header, i), tag);
        if (!inside.empty())
            return inside;
    }
    return {};
}

Structure<CmpMessage> decodeMessage(ByteView der)
{
    return {der, ASN1_ITEM_rptr(CmpMessage)};
}

using ParametersHandle = Handle<OSSL_CRMF_PBMPARAMETER, OSSL_CRMF_PBMPARAMETER_free>;

/** The parameters of a message's MAC. */
ParametersHandle macParameters(const CmpMessage& message)
{
    const auto algorithm =
        decodeDer<AlgorithmHandle>(d2i_X509_ALGOR, fieldOf(message.header, protectionAlgorithmTag));
    require(algorithm != nullptr, Code::Internal);
    const ASN1_OBJECT* object = nullptr;
    int type = V_ASN1_UNDEF;
    const void* value = nullptr;
    X509_ALGOR_get0(&object, &type, &value, algorithm.get());
    require(OBJ_obj2nid(object) == NID_id_PasswordBasedMAC && type == V_ASN1_SEQUENCE, Code::Internal);
    auto parameters = decodeDer<ParametersHandle>(d2i_OSSL_CRMF_PBMPARAMETER,
                                                  contentOf(static_cast<const ASN1_STRING*>(value)));
    require(parameters != nullptr, Code::Internal);
    return parameters;
}

/** A message's MAC. */
Bytes macOf(const Crypto& crypto, const CmpMessage& message, std::string_view secret)
{
    const CmpProtectedPart part{message.header, message.body};
    const Bytes covered = encode(&part, ASN1_ITEM_rptr(CmpProtectedPart));
    const ByteView key = bytesOf(secret);
    unsigned char* mac = nullptr;
    std::size_t length = 0;
    const int made = OSSL_CRMF_pbm_new(crypto.context(), nullptr, macParameters(message).get(),
                                       covered.data(), covered.size(), key.data(), key.size(), &mac, &length);
    require(made == 1, Code::CryptoUnavailable);
    Bytes bytes(mac, mac + length);
    OPENSSL_free(mac);
    return bytes;
}

std::string textOfStatus(const OSSL_CMP_PKISI* status)
{
    char text[OSSL_CMP_PKISI_BUFLEN] = {};
    return OSSL_CMP_snprint_PKIStatusInfo(status, text, sizeof text) ? text : std::string();
}

/** The number that a status begins with. */
int numberOfStatus(const OSSL_CMP_PKISI* status)
{
    const Bytes der = encode(status, ASN1_ITEM_rptr(OSSL_CMP_PKISI));
    const unsigned char* position = der.data();
    long length = 0;
    int tag = 0;
    int tagClass = 0;
    ASN1_get_object(&position, &length, &tag, &tagClass, static_cast<long>(der.size()));
    const auto number = decodeDer<Handle<ASN1_INTEGER, ASN1_INTEGER_free>>(
        d2i_ASN1_INTEGER, {position, static_cast<std::size_t>(length)});
    require(number != nullptr, Code::ReplyDamaged);
    return static_cast<int>(ASN1_INTEGER_get(number.get()));
}

/** The initial value of a cipher in CBC, which are its parameters. */
ByteView initialValueOf(const X509_ALGOR* cipher)
{
    int type = V_ASN1_UNDEF;
    const void* value = nullptr;
    X509_ALGOR_get0(nullptr, &type, &value, cipher);
    require(type == V_ASN1_OCTET_STRING, Code::ReplyDamaged);
    return contentOf(static_cast<const ASN1_STRING*>(value));
}

SecretBytes decrypt(const Crypto& crypto, const X509_ALGOR* algorithm, ByteView key, ByteView data)
{
    const ASN1_OBJECT* object = nullptr;
    X509_ALGOR_get0(&object, nullptr, nullptr, algorithm);
    const CipherHandle cipher = crypto.cipher(dottedOid(object).c_str());
    const ByteView initial = initialValueOf(algorithm);
    const bool fits = EVP_CIPHER_get_mode(cipher.get()) == EVP_CIPH_CBC_MODE &&
                      static_cast<std::size_t>(EVP_CIPHER_get_key_length(cipher.get())) == key.size() &&
                      static_cast<std::size_t>(EVP_CIPHER_get_iv_length(cipher.get())) == initial.size();
    require(fits, Code::ReplyDamaged);
    const auto run = owned<CipherRun>(EVP_CIPHER_CTX_new());
    SecretBytes plain(data.size() + EVP_MAX_BLOCK_LENGTH);
    int length = 0;
    int rest = 0;
    const bool done =
        EVP_DecryptInit_ex2(run.get(), cipher.get(), key.data(), initial.data(), nullptr) == 1 &&
        EVP_DecryptUpdate(run.get(), plain.data(), &length, data.data(), static_cast<int>(data.size())) ==
            1 &&
        EVP_DecryptFinal_ex(run.get(), plain.data() + length, &rest) == 1;
    require(done, Code::NotDecryptable);
    plain.resize(static_cast<std::size_t>(length) + static_cast<std::size_t>(rest));
    return plain;
}

} // namespace

Bytes asRecoveryRequest(const Crypto& crypto, ByteView initialRequest, std::string_view secret)
{
    const Structure<CmpMessage> message = decodeMessage(initialRequest);
    require(message && message->body->type == V_ASN1_OTHER && message->protection, Code::Internal);
    ASN1_STRING* body = message->body->value.asn1_string;
    require(wholeOf(message->body).front() == initialRequestTag, Code::Internal);
    Bytes changed(contentOf(body).begin(), contentOf(body).end());
    changed.front() = recoveryRequestTag;
    if (ASN1_STRING_set(body, changed.data(), static_cast<int>(changed.size())) != 1)
        throw std::bad_alloc();
    const Bytes mac = macOf(crypto, *message.get(), secret);
    if (ASN1_STRING_set(message->protection, mac.data(), static_cast<int>(mac.size())) != 1)
        throw std::bad_alloc();
    message->protection->flags = (message->protection->flags & ~7L) | ASN1_STRING_FLAG_BITS_LEFT;
    return encode(message.get(), ASN1_ITEM_rptr(CmpMessage));
}

bool isAnswerTo(ByteView request, ByteView response)
{
    const Structure<CmpMessage> asked = decodeMessage(request);
    const Structure<CmpMessage> answer = decodeMessage(response);
    if (!asked || !answer)
        return false;
    const ByteView nonce = fieldOf(asked->header, senderNonceTag);
    return !nonce.empty() && std::ranges::equal(nonce, fieldOf(answer->header, recipientNonceTag)) &&
           std::ranges::equal(fieldOf(asked->header, transactionTag),
                              fieldOf(answer->header, transactionTag));
}

RecoveryContent recoveryContent(ByteView response)
{
    const Structure<CmpMessage> message = decodeMessage(response);
    require(static_cast<bool>(message), Code::ReplyDamaged);
    const Structure<CmpRecoveryContent> content(insideOf(message->body, recoveryResponseTag),
                                                ASN1_ITEM_rptr(CmpRecoveryContent));
    require(static_cast<bool>(content), Code::ReplyDamaged);
    RecoveryContent result{numberOfStatus(content->status), textOfStatus(content->status), {}};
    for (int i = 0; i < sk_CmpCertifiedPair_num(content->pairs); ++i) {
        const CmpCertifiedPair* pair = sk_CmpCertifiedPair_value(content->pairs, i);
        RecoveredPair recovered;
        recovered.certificate = encodeDer<Bytes>(i2d_X509, pair->certificate);
        if (pair->key)
            recovered.encryptedKey = encode(pair->key, ASN1_ITEM_rptr(CmpEncryptedValue));
        result.pairs.push_back(std::move(recovered));
    }
    return result;
}

SecretBytes openEncryptedValue(const Crypto& crypto, ByteView der, EVP_PKEY* key)
{
    const Structure<CmpEncryptedValue> value(der, ASN1_ITEM_rptr(CmpEncryptedValue));
    require(value && value->cipher && value->cipherKey, Code::ReplyDamaged);
    EVP_PKEY_up_ref(key);
    const SecretBytes cipherKey =
        decryptWith(crypto, KeyHandle(key), {RsaScheme::V15, nullptr}, contentOf(value->cipherKey));
    return decrypt(crypto, value->cipher, cipherKey, contentOf(value->value));
}

} // namespace qgtk
