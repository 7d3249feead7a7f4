#pragma once

#include <exception>
#include <memory>
#include <utility>

#include "toolkit/core/KeyObjects.h"
#include "toolkit/core/OwnContext.h"
#include "toolkit/core/TokenSession.h"

namespace qgtk {

/**
 * A private key that stays on its token, as a key of OpenSSL's: what needs the private half runs on the
 * token, all else in OpenSSL. RSA keys sign and decrypt in every form, PSS and OAEP by the token's bare RSA
 * (CKM_RSA_X_509); keys of elliptic curves sign and agree.
 *
 * OpenSSL's functions with the key run inside of run(). To be made outside of an OwnContext, for the module
 * is called in the default context that is found here: it is the host's, and modules are users of OpenSSL
 * too.
 */
class TokenBackedKey
{
public:
    /**
     * The key with an identifier. Its public half is the token's, else that of the certificate with the
     * identifier. Throws TokenLoggedOut, TokenObjectMissing, PublicKeyDamaged, CertDamaged, KeyUnsuitable
     * (neither RSA nor of an elliptic curve). The session must outlive this object.
     */
    TokenBackedKey(const Crypto& crypto, const TokenSession& session, ByteView id);
    ~TokenBackedKey();
    TokenBackedKey(const TokenBackedKey&) = delete;
    TokenBackedKey& operator=(const TokenBackedKey&) = delete;

    /** One more reference to the key; no use of it outlives this object. */
    KeyHandle key() const;

    /**
     * Runs what uses the key, with the toolkit's context as the thread's default: OpenSSL's functions for
     * keys with methods of their own know no other. Throws what the token answered, when it failed, and what
     * the operation throws otherwise. Data that can't be decrypted are no failure of the token: the operation
     * tells.
     */
    template <typename Operation>
    auto run(Operation&& operation) const
    {
        const OwnContext own(m_crypto);
        try {
            auto result = operation();
            throwTokensFailure();
            return result;
        } catch (...) {
            throwTokensFailure();
            throw;
        }
    }

private:
    struct State;
    struct Calls;
    void throwTokensFailure() const;

    const Crypto& m_crypto;
    std::unique_ptr<State> m_state;
    KeyHandle m_key;
};

} // namespace qgtk
