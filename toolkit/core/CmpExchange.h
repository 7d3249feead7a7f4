#pragma once

#include <functional>
#include <optional>
#include <string>

#include "toolkit/core/KeyObjects.h"
#include "toolkit/core/ServerAccess.h"

typedef struct ossl_cmp_ctx_st OSSL_CMP_CTX;

namespace qgtk {

inline void freeExtensions(X509_EXTENSIONS* extensions)
{
    sk_X509_EXTENSION_pop_free(extensions, X509_EXTENSION_free);
}

using ExtensionsHandle = Handle<X509_EXTENSIONS, freeExtensions>;

/** Where an authority's server of CMP is. */
struct CmpServer
{
    std::string host; /**< name or address, or a whole "http:" address with port and path */
    int port;         /**< of a host */
};

/** What an authority hands a future holder out for a first request. */
struct CmpSecret
{
    std::string_view reference; /**< reference number: the sender's key identifier */
    std::string_view code;      /**< authorisation code: the secret of the messages' MAC */
};

/** Throws BadArgument when one of both is empty. */
void requireSecret(const CmpSecret& secret);

/** Who signs messages. */
struct CmpSigner
{
    X509Handle certificate;
    KeyHandle key;
};

/** A request for one certificate. */
struct CmpWish
{
    KeyHandle key;                     /**< pair of the new certificate */
    ExtensionsHandle extensions;       /**< asked for */
    X509Handle old;                    /**< the certificate to be replaced; null: a first one */
    std::function<void(X509*)> accept; /**< throws when the holder does not want what was issued */
};

/** An issued certificate and the authorities' certificates that came with it, DER. */
struct CmpIssued
{
    X509Handle certificate;
    std::vector<Bytes> authorities;
};

/**
 * Exchanges of one operation with an authority (RFC 4210), all within one limit of time, which begins here.
 *
 * Answers have the secret's MAC, or are signed by the authority or by whom it has made its server. Anybody
 * else below the authority is not believed.
 */
class CmpExchange
{
public:
    /** Exactly one of secret and signer is used: the signer when it has a certificate. Throws BadArgument for
     * a secret that is empty, NotSupported when the configuration lacks the context's authority. */
    CmpExchange(Context& context, const CmpServer& server, const CmpSecret& secret, CmpSigner signer);

    /** The authority's certificate: who is asked, and where paths of what it signs and issues end. */
    void setAuthority(X509Handle certificate) { m_authority = std::move(certificate); }

    /**
     * Requests a certificate, checks that it is of the key and of the authority and is accepted, and confirms
     * or refuses it. Throws CmpRefused, CmpSecretWrong, CmpUntrusted, CmpCertificateOther, what accept
     * throws, KeyUnsuitable, BadArgument for the port, and the codes of servers.
     */
    CmpIssued request(const CmpWish& wish);

    /**
     * Requests the recovery of the keys of the holder of a certificate, as the secret's owner; gives the
     * response, DER, which is proved and answers this request. Throws as above.
     */
    Bytes recover(const CmpSigner& holder);

    /** Asks for the revocation of a certificate. Throws as above. */
    void revoke(X509* certificate, int reason);

    /**
     * Asks for the revocation of certificates, each once, of the authority that has issued the last, which is
     * looked for as for a path. Throws IssuerMissing too.
     */
    void revokeAll(const std::vector<X509*>& certificates, int reason);

private:
    struct Run;
    using RunFunction = std::function<bool(OSSL_CMP_CTX*)>;
    void prepare(OSSL_CMP_CTX* handle) const;
    void perform(Run& run, const RunFunction& session);
    Bytes send(ByteView message);

    Context& m_context;
    CmpServer m_server;
    CmpSecret m_secret;
    CmpSigner m_signer;
    X509Handle m_authority;
    CmpAuthority m_settings;
    ServerAccess m_servers;
};

} // namespace qgtk
