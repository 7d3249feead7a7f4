#pragma once

#include <functional>
#include <openssl/cms.h>

#include "toolkit/core/Context.h"

namespace qgtk {

/** Releases a chain of filters with the source or sink at its end. */
inline void freeChain(BIO* chain)
{
    BIO_free_all(chain);
}

using BioHandle = Handle<BIO, BIO_free>;
using BioChain = Handle<BIO, freeChain>;
using CmsHandle = Handle<CMS_ContentInfo, CMS_ContentInfo_free>;

/** Bytes that are handed through a chain of filters at once. */
inline constexpr std::size_t messageBlock = 64U << 10;

/** Decodes bytes, all of them, into an object of the toolkit's own library context. Throws the code. */
template <typename H, typename New, typename D2i>
H decodeWhole(const Crypto& crypto, ByteView der, New create, D2i decode, Code failure)
{
    typename H::pointer object = owned<H>(create(crypto.context(), nullptr)).release();
    const unsigned char* position = der.data();
    const bool done = !der.empty() && der.size() <= LONG_MAX &&
                      decode(&object, &position, static_cast<long>(der.size())) != nullptr;
    H decoded(object);
    require(done && position == der.data() + der.size(), failure);
    return decoded;
}

/**
 * Decodes a message (BER, RFC 5652) into the toolkit's own library context. Throws MessageDamaged, also for
 * bytes behind it.
 */
CmsHandle decodeMessage(const Crypto& crypto, ByteView message);

/** DER of a message. */
Bytes encodeMessage(CMS_ContentInfo* message);

/** Throws MessageKind unless the message is of this type, as NID_pkcs7_signed. */
void requireKind(const CMS_ContentInfo* message, int type);

/** A source over bytes that outlive it. */
BioHandle sourceOver(ByteView bytes);

/** The content of a message that carries it; null when it carries none. */
const ASN1_OCTET_STRING* carriedContent(CMS_ContentInfo* message);

/** Takes data block by block. */
using BlockSink = std::function<void(ByteView)>;

/** A chain of OpenSSL's filters over a source or sink that somebody else owns, or over one of its own. */
class FilterChain
{
public:
    /** Takes the chain; last is the end of it that stays, null when there is none. */
    FilterChain(BIO* chain, BIO* last, Code failure);
    ~FilterChain();
    FilterChain(const FilterChain&) = delete;
    FilterChain& operator=(const FilterChain&) = delete;

    BIO* get() const { return m_chain; }

    /** Reads to the end. Throws the code given when a filter fails. */
    void drain(const BlockSink& take) const;

    /** Writes. Throws likewise. */
    void feed(ByteView bytes) const;

    /** Ends the writing. Throws likewise. */
    void finish() const;

private:
    BIO* m_chain;
    BIO* m_last;
    Code m_failure;
};

/** Throws NotDecryptable unless the cipher of a chain that was read to its end came out right. */
void requireDecrypted(const FilterChain& chain);

/** Throws Failure(code) when an OpenSSL function reports none of its successes. */
inline void check(int result, Code code)
{
    require(result > 0, code);
}

/** Certificates for a message out of a list, see splitCertificateList. Throws CertListDamaged, CertDamaged.
 */
X509Stack messageCertificates(const Crypto& crypto, ByteView list);

/** The kind of a certificate's key, as EVP_PKEY_RSA. Throws CertPublicKeyUnknown. */
int keyKindOf(const X509* certificate);

/** The content cipher, in CBC mode, behind a number, see QG_CIPHER_SEED. Throws AlgorithmCodeUnknown. */
CipherHandle contentCipher(const Crypto& crypto, int symAlg);

/** Throws NotSupported for options that there are none of, see QG_CMS_DETACHED. */
int checkedOptions(int options);

} // namespace qgtk
