#include "toolkit/core/CmsObjects.h"

#include <algorithm>

#include "quillgate/algorithms.h"
#include "quillgate/message_options.h"
#include "toolkit/core/AlgorithmCodes.h"
#include "toolkit/core/CertificateList.h"

namespace qgtk {

CmsHandle decodeMessage(const Crypto& crypto, ByteView message)
{
    return decodeWhole<CmsHandle>(crypto, message, CMS_ContentInfo_new_ex, d2i_CMS_ContentInfo,
                                  Code::MessageDamaged);
}

Bytes encodeMessage(CMS_ContentInfo* message)
{
    return encodeDer<Bytes>(i2d_CMS_ContentInfo, message);
}

void requireKind(const CMS_ContentInfo* message, int type)
{
    require(OBJ_obj2nid(CMS_get0_type(message)) == type, Code::MessageKind);
}

BioHandle sourceOver(ByteView bytes)
{
    return owned<BioHandle>(BIO_new_mem_buf(bytes.data(), static_cast<int>(bytes.size())));
}

const ASN1_OCTET_STRING* carriedContent(CMS_ContentInfo* message)
{
    ASN1_OCTET_STRING** content = CMS_get0_content(message);
    return content ? *content : nullptr;
}

FilterChain::FilterChain(BIO* chain, BIO* last, Code failure)
    : m_chain(chain), m_last(last), m_failure(failure)
{
    require(chain != nullptr, failure);
}

FilterChain::~FilterChain()
{
    while (m_chain && m_chain != m_last) {
        BIO* next = BIO_pop(m_chain);
        BIO_free(m_chain);
        m_chain = next;
    }
}

void FilterChain::drain(const BlockSink& take) const
{
    SecretBytes block(messageBlock);
    for (;;) {
        const int count = BIO_read(m_chain, block.data(), static_cast<int>(block.size()));
        require(count >= 0, m_failure);
        if (count == 0)
            return;
        take({block.data(), static_cast<std::size_t>(count)});
    }
}

void FilterChain::feed(ByteView bytes) const
{
    while (!bytes.empty()) {
        const ByteView block = bytes.first(std::min(bytes.size(), messageBlock));
        const int length = static_cast<int>(block.size());
        require(BIO_write(m_chain, block.data(), length) == length, m_failure);
        bytes = bytes.subspan(block.size());
    }
}

void FilterChain::finish() const
{
    require(BIO_flush(m_chain) == 1, m_failure);
}

void requireDecrypted(const FilterChain& chain)
{
    BIO* cipher = BIO_find_type(chain.get(), BIO_TYPE_CIPHER);
    require(cipher && BIO_get_cipher_status(cipher) == 1, Code::NotDecryptable);
}

X509Stack messageCertificates(const Crypto& crypto, ByteView list)
{
    X509Stack certificates = owned<X509Stack>(sk_X509_new_null());
    for (const ByteView der : splitCertificateList(list))
        push(certificates, decodeX509(crypto, der).get());
    return certificates;
}

int keyKindOf(const X509* certificate)
{
    const EVP_PKEY* key = X509_get0_pubkey(certificate);
    require(key != nullptr, Code::CertPublicKeyUnknown);
    return EVP_PKEY_get_base_id(key);
}

CipherHandle contentCipher(const Crypto& crypto, int symAlg)
{
    constexpr int modes = QG_MODE_CFB | QG_MODE_OFB | QG_MODE_CTR;
    require((symAlg & modes) == 0, Code::AlgorithmCodeUnknown);
    return crypto.cipher(cipherOfCode(symAlg).c_str());
}

int checkedOptions(int options)
{
    constexpr int known = QG_CMS_DETACHED | QG_CMS_NO_ATTRIBUTES | QG_CMS_NO_CERTIFICATES |
                          QG_CMS_AUTHORITIES | QG_CMS_VERIFY_SIGNER;
    require((options & ~known) == 0, Code::NotSupported);
    return options;
}

} // namespace qgtk
