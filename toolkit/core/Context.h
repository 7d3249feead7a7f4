#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "toolkit/core/Certificate.h"
#include "toolkit/core/CertificateStatus.h"
#include "toolkit/core/Charset.h"
#include "toolkit/core/CmpSettings.h"
#include "toolkit/core/Configuration.h"
#include "toolkit/core/Crypto.h"
#include "toolkit/core/CryptoSettings.h"
#include "toolkit/core/MessageState.h"
#include "toolkit/core/Network.h"
#include "toolkit/core/Token.h"
#include "toolkit/core/VerifySettings.h"
#include "toolkit/core/X509Objects.h"

namespace qgtk {

/**
 * What lies behind the pointer that a caller gets: settings, the loaded certificate, the last failure. It
 * belongs to one thread at a time. OpenSSL's part and the configuration are made when the first operation
 * needs them.
 */
class Context
{
public:
    /** configurationFile is the file in the work directory that holds the settings. */
    explicit Context(const std::string& configurationFile) : m_configurationFile(configurationFile) {}

    const Crypto& crypto();
    const Configuration& configuration();

    /** Names another configuration file; an empty path names the first again. Throws FileMissing and its
     * like. */
    void useConfigurationFile(const std::string& path);

    /** The certificate between load and unload. Throws CertNotLoaded. */
    const Certificate& certificate() const;
    bool hasCertificate() const { return m_certificate.has_value(); }
    void load(ByteView der) { m_certificate.emplace(der); }
    void unload() { m_certificate.reset(); }

    Charset& charset() { return m_charset; }

    /** Keeps a certificate list for operations that need issuers; empty: none. Throws CertListDamaged. */
    void setCaCertificates(ByteView list);

    ByteView caCertificates() const { return m_caCertificates; }

    /** Puts a list in the place of the certificate list, which it returns. Nothing is checked. */
    Bytes exchangeCaCertificates(Bytes list) noexcept
    {
        return std::exchange(m_caCertificates, std::move(list));
    }

    /** The certificates that paths may end at; empty at first. */
    X509_STORE* trusted();

    /** Trusts an authority's certificate. Throws CertDamaged, IssuerNotCa. */
    void trust(ByteView der);

    /** Keeps a failure for errorText. Never throws: without memory the detail is lost. */
    void note(Code code, const std::string& detail) noexcept;

    /**
     * "<text> (<code>): <detail>" of the last failure, EUC-KR unless English is set; empty before the first.
     * "<wrenlib>" stands in front of it when it is a verdict: viewers show what is behind that marker.
     */
    std::string errorText();

    Token token;           /**< the loaded medium and the session on it */
    int hashAlgorithm = 4; /**< see digestOfCode */
    int option = 0;        /**< the caller's; nothing acts on it yet */
    VerifySettings verifySettings;
    CryptoSettings cryptoSettings;
    CmpSettings cmp;
    MessageState messages;
    Bytes stampRequest;                   /**< the last time stamp request, DER */
    std::vector<Bytes> ocspIssuers;       /**< of the last status request, DER */
    std::vector<OcspStatus> ocspStatuses; /**< what the last verified status response says */
    ReplyStore replies;                   /**< what servers gave, when the settings keep it */

private:
    std::string m_configurationFile;
    std::string m_otherConfigurationFile;
    std::optional<Configuration> m_configuration;
    std::unique_ptr<Crypto> m_crypto;
    std::optional<Certificate> m_certificate;
    Bytes m_caCertificates;
    StoreHandle m_trusted; // behind m_crypto, in which it lives
    Charset m_charset;
    Code m_code = Code::Ok;
    std::string m_detail;
};

} // namespace qgtk
