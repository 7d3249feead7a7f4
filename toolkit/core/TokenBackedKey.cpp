// Keys with methods of their own are the one way into OpenSSL's message functions that leaves those as they
// are; OpenSSL 3 calls them deprecated and keeps them.
#define OPENSSL_SUPPRESS_DEPRECATED

#include "toolkit/core/TokenBackedKey.h"

#include <algorithm>
#include <openssl/rsa.h>

#include "toolkit/core/Errors.h"
#include "toolkit/core/TokenKeyUse.h"
#include "toolkit/core/TokenObjects.h"
#include "toolkit/core/TokenPairs.h"

namespace qgtk {

namespace {

using CurveKeyHandle = Handle<EC_KEY, EC_KEY_free>;
using RsaHandle = Handle<RSA, RSA_free>;

/** The place for data of the application's own in every object of OpenSSL's, see RSA_set_app_data. */
constexpr int ownData = 0;

/** The context that a module finds on this thread, for a while. */
class ModulesContext
{
public:
    explicit ModulesContext(OSSL_LIB_CTX* context) : m_before(OSSL_LIB_CTX_set0_default(context)) {}
    ~ModulesContext() { OSSL_LIB_CTX_set0_default(m_before); }
    ModulesContext(const ModulesContext&) = delete;
    ModulesContext& operator=(const ModulesContext&) = delete;

private:
    OSSL_LIB_CTX* m_before;
};

/** The public half on the token; CK_INVALID_HANDLE when there is none. */
CK_OBJECT_HANDLE findPublicKey(const TokenSession& session, ByteView id)
{
    TokenAttributes attributes(CKO_PUBLIC_KEY);
    attributes.addBytes(CKA_ID, id);
    const std::vector<CK_OBJECT_HANDLE> found = findObjects(session, attributes);
    return found.empty() ? CK_INVALID_HANDLE : found.front();
}

RsaHandle readRsa(const TokenSession& session, CK_OBJECT_HANDLE key)
{
    const SecretBytes modulus = readAttribute(session, key, CKA_MODULUS);
    const SecretBytes exponent = readAttribute(session, key, CKA_PUBLIC_EXPONENT);
    require(!modulus.empty() && !exponent.empty(), Code::PublicKeyDamaged);
    RsaHandle rsa = owned<RsaHandle>(RSA_new());
    BIGNUM* n = BN_bin2bn(modulus.data(), static_cast<int>(modulus.size()), nullptr);
    BIGNUM* e = BN_bin2bn(exponent.data(), static_cast<int>(exponent.size()), nullptr);
    if (RSA_set0_key(rsa.get(), n, e, nullptr) != 1) {
        BN_free(n);
        BN_free(e);
        throw std::bad_alloc();
    }
    return rsa;
}

CurveKeyHandle readCurveKey(const TokenSession& session, CK_OBJECT_HANDLE key)
{
    const SecretBytes parameters = readAttribute(session, key, CKA_EC_PARAMS);
    const SecretBytes encoded = readAttribute(session, key, CKA_EC_POINT);
    CurveKeyHandle curve = decodeDer<CurveKeyHandle>(
        [](EC_KEY**, const unsigned char** in, long length) { return d2i_ECParameters(nullptr, in, length); },
        parameters);
    const StringHandle point = decodeDer<StringHandle>(d2i_ASN1_OCTET_STRING, encoded);
    require(curve && point, Code::PublicKeyDamaged);
    const ByteView bytes = contentOf(point.get());
    require(EC_KEY_oct2key(curve.get(), bytes.data(), bytes.size(), nullptr) == 1, Code::PublicKeyDamaged);
    return curve;
}

/** Of the certificate; a copy, for it gets other methods. */
template <typename H, typename Get, typename Copy>
H fromCertificate(const Crypto& crypto, const TokenSession& session, ByteView id, Get get, Copy copy)
{
    const Certificate certificate(readCertificate(session, id));
    const KeyHandle key = keyOfCertificate(crypto, certificate);
    auto* numbers = get(key.get());
    require(numbers != nullptr, Code::KeyMismatch);
    return owned<H>(copy(numbers));
}

} // namespace

/** What the methods of a key need. */
struct TokenBackedKey::State
{
    const TokenSession& session;
    CK_OBJECT_HANDLE key;
    OSSL_LIB_CTX* modulesContext;
    std::exception_ptr failure; /**< the first */
};

/** The methods. They are called by C: no exception leaves them. */
struct TokenBackedKey::Calls
{
    /** Runs a call of the token's and keeps its failure; the result is the call's, else what OpenSSL knows as
     * one. */
    template <typename Result, typename Call>
    static Result keeping(State& state, Result failed, Call call) noexcept
    {
        try {
            const ModulesContext context(state.modulesContext);
            return call();
        } catch (const Failure& failure) {
            if (failure.code() != Code::NotDecryptable && !state.failure)
                state.failure = std::current_exception();
        } catch (...) {
            if (!state.failure)
                state.failure = std::current_exception();
        }
        return failed;
    }

    static CK_MECHANISM rsaMechanism(int padding)
    {
        return {padding == RSA_NO_PADDING ? CKM_RSA_X_509 : CKM_RSA_PKCS, nullptr, 0};
    }

    /** Gives a number to OpenSSL with a length; tokens may leave zeros at its beginning away. */
    static int store(ByteView number, std::size_t length, unsigned char* to)
    {
        require(number.size() <= length, Code::ModuleFailed);
        const std::size_t lead = length - number.size();
        std::fill_n(to, lead, 0);
        std::copy(number.begin(), number.end(), to + lead);
        return static_cast<int>(length);
    }

    static int signRsa(int length, const unsigned char* from, unsigned char* to, RSA* rsa, int padding)
    {
        State& state = *static_cast<State*>(RSA_get_ex_data(rsa, ownData));
        return keeping(state, -1, [&] {
            CK_MECHANISM mechanism = rsaMechanism(padding);
            const ByteView data(from, static_cast<std::size_t>(length));
            const int size = store(signOnce(state.session, &mechanism, state.key, data),
                                   static_cast<std::size_t>(RSA_size(rsa)), to);
            // An identifier is all that the halves of a pair have in common on a token.
            Bytes opened(static_cast<std::size_t>(size));
            const int opens = RSA_public_decrypt(size, to, opened.data(), rsa, padding);
            require(opens == length && std::equal(data.begin(), data.end(), opened.begin()),
                    Code::KeyMismatch);
            return size;
        });
    }

    static int decryptRsa(int length, const unsigned char* from, unsigned char* to, RSA* rsa, int padding)
    {
        State& state = *static_cast<State*>(RSA_get_ex_data(rsa, ownData));
        return keeping(state, -1, [&] {
            CK_MECHANISM mechanism = rsaMechanism(padding);
            const SecretBytes plain =
                decryptOnce(state.session, &mechanism, state.key, {from, static_cast<std::size_t>(length)});
            const auto size = static_cast<std::size_t>(RSA_size(rsa));
            require(plain.size() <= size, Code::ModuleFailed);
            return store(plain, padding == RSA_NO_PADDING ? size : plain.size(), to);
        });
    }

    static ECDSA_SIG* signCurve(const unsigned char* digest, int length, const BIGNUM* /*inverse*/,
                                const BIGNUM* /*r*/, EC_KEY* key)
    {
        State& state = *static_cast<State*>(EC_KEY_get_ex_data(key, ownData));
        return keeping(state, static_cast<ECDSA_SIG*>(nullptr), [&] {
            CK_MECHANISM mechanism = {CKM_ECDSA, nullptr, 0};
            EcdsaHandle signature = ecdsaOf(
                signOnce(state.session, &mechanism, state.key, {digest, static_cast<std::size_t>(length)}));
            // OpenSSL's buffer has room for numbers that are right: others must not get there.
            require(ECDSA_do_verify(digest, length, signature.get(), key) == 1, Code::KeyMismatch);
            return signature.release();
        });
    }

    /** OpenSSL wipes and frees the secret. */
    static int agree(unsigned char** secret, std::size_t* length, const EC_POINT* peer, const EC_KEY* key)
    {
        State& state = *static_cast<State*>(EC_KEY_get_ex_data(key, ownData));
        const EC_GROUP* group = EC_KEY_get0_group(key);
        return keeping(state, 0, [&] {
            constexpr int bitsOfByte = 8;
            const auto field =
                static_cast<std::size_t>((EC_GROUP_get_degree(group) + bitsOfByte - 1) / bitsOfByte);
            Bytes point(1 + 2 * field);
            require(EC_POINT_point2oct(group, peer, POINT_CONVERSION_UNCOMPRESSED, point.data(), point.size(),
                                       nullptr) == point.size(),
                    Code::PublicKeyDamaged);
            const SecretBytes agreed = agreeOnce(state.session, state.key, point, field);
            require(agreed.size() == field, Code::ModuleFailed);
            auto* copy = static_cast<unsigned char*>(OPENSSL_malloc(agreed.size()));
            require(copy != nullptr, Code::OutOfMemory);
            std::copy(agreed.begin(), agreed.end(), copy);
            *secret = copy;
            *length = agreed.size();
            return 1;
        });
    }

    static const RSA_METHOD* rsaMethods()
    {
        static const Handle<RSA_METHOD, RSA_meth_free> methods = [] {
            auto made = owned<Handle<RSA_METHOD, RSA_meth_free>>(RSA_meth_dup(RSA_PKCS1_OpenSSL()));
            RSA_meth_set_priv_enc(made.get(), signRsa);
            RSA_meth_set_priv_dec(made.get(), decryptRsa);
            return made;
        }();
        return methods.get();
    }

    static const EC_KEY_METHOD* curveMethods()
    {
        using MethodsHandle = Handle<EC_KEY_METHOD, EC_KEY_METHOD_free>;
        static const MethodsHandle methods = [] {
            auto made = owned<MethodsHandle>(EC_KEY_METHOD_new(EC_KEY_OpenSSL()));
            int (*sign)(int, const unsigned char*, int, unsigned char*, unsigned int*, const BIGNUM*,
                        const BIGNUM*, EC_KEY*) = nullptr;
            EC_KEY_METHOD_get_sign(made.get(), &sign, nullptr, nullptr);
            EC_KEY_METHOD_set_sign(made.get(), sign, nullptr, signCurve);
            EC_KEY_METHOD_set_compute_key(made.get(), agree);
            return made;
        }();
        return methods.get();
    }

    static void setRsaKey(EVP_PKEY* key, State& state, RsaHandle rsa)
    {
        const bool set = RSA_set_method(rsa.get(), rsaMethods()) == 1 &&
                         RSA_set_ex_data(rsa.get(), ownData, &state) == 1 &&
                         EVP_PKEY_assign_RSA(key, rsa.get()) == 1;
        require(set, Code::CryptoUnavailable);
        (void)rsa.release();
    }

    static void setCurveKey(EVP_PKEY* key, State& state, CurveKeyHandle curve)
    {
        const bool set = EC_KEY_set_method(curve.get(), curveMethods()) == 1 &&
                         EC_KEY_set_ex_data(curve.get(), ownData, &state) == 1 &&
                         EVP_PKEY_assign_EC_KEY(key, curve.get()) == 1;
        require(set, Code::CryptoUnavailable);
        (void)curve.release();
    }
};

TokenBackedKey::TokenBackedKey(const Crypto& crypto, const TokenSession& session, ByteView id)
    : m_crypto(crypto),
      m_state(new State{session, privateKeyOnToken(session, id), OSSL_LIB_CTX_set0_default(nullptr), {}}),
      m_key(owned<KeyHandle>(EVP_PKEY_new()))
{
    const CK_OBJECT_HANDLE open = findPublicKey(session, id);
    const bool onToken = open != CK_INVALID_HANDLE;
    if (isOfCurve(session, m_state->key))
        Calls::setCurveKey(
            m_key.get(), *m_state,
            onToken ? readCurveKey(session, open)
                    : fromCertificate<CurveKeyHandle>(crypto, session, id, EVP_PKEY_get0_EC_KEY, EC_KEY_dup));
    else
        Calls::setRsaKey(
            m_key.get(), *m_state,
            onToken ? readRsa(session, open)
                    : fromCertificate<RsaHandle>(crypto, session, id, EVP_PKEY_get0_RSA, RSAPublicKey_dup));
}

TokenBackedKey::~TokenBackedKey() = default;

KeyHandle TokenBackedKey::key() const
{
    EVP_PKEY_up_ref(m_key.get());
    return KeyHandle(m_key.get());
}

void TokenBackedKey::throwTokensFailure() const
{
    if (m_state->failure)
        std::rethrow_exception(std::exchange(m_state->failure, nullptr));
}

} // namespace qgtk
