#include "toolkit/core/TokenKeyUse.h"

#include <cstring>

#include "toolkit/core/Errors.h"
#include "toolkit/core/TokenFailure.h"
#include "toolkit/core/TokenObjects.h"

namespace qgtk {

namespace {

CK_BYTE* mutableBytes(ByteView bytes)
{
    return const_cast<CK_BYTE*>(bytes.data());
}

/**
 * A step of one part that gives bytes. Their number is not asked for: it may be another when they come, and a
 * buffer that is too short would leave the session busy. No key gives as many as there is room for.
 */
template <typename Step>
SecretBytes resultOf(const char* name, Step step, const TokenSession& session, ByteView data)
{
    constexpr std::size_t room = 8192;
    SecretBytes result(room);
    CK_ULONG length = room;
    invoke(name, step, session.handle(), mutableBytes(data), CK_ULONG(data.size()), result.data(), &length);
    require(length <= room, Code::ModuleFailed);
    result.resize(length);
    return result;
}

} // namespace

CK_OBJECT_HANDLE keyOnToken(const TokenSession& session, CK_OBJECT_CLASS kind, ByteView id)
{
    TokenAttributes attributes(kind);
    attributes.addBytes(CKA_ID, id);
    const std::vector<CK_OBJECT_HANDLE> found = findObjects(session, attributes);
    require(!found.empty(), Code::TokenObjectMissing);
    return found.front();
}

CK_OBJECT_HANDLE privateKeyOnToken(const TokenSession& session, ByteView id)
{
    session.requireLogin();
    return keyOnToken(session, CKO_PRIVATE_KEY, id);
}

bool isOfCurve(const TokenSession& session, CK_OBJECT_HANDLE key)
{
    const SecretBytes kind = readAttribute(session, key, CKA_KEY_TYPE);
    constexpr CK_KEY_TYPE curve = CKK_EC;
    return kind.size() == sizeof curve && std::memcmp(kind.data(), &curve, sizeof curve) == 0;
}

SecretBytes signOnce(const TokenSession& session, CK_MECHANISM* mechanism, CK_OBJECT_HANDLE key,
                     ByteView data)
{
    const CK_FUNCTION_LIST& functions = session.functions();
    invoke("C_SignInit", functions.C_SignInit, session.handle(), mechanism, key);
    return resultOf("C_Sign", functions.C_Sign, session, data);
}

void verifyOnce(const TokenSession& session, CK_MECHANISM* mechanism, CK_OBJECT_HANDLE key, ByteView data,
                ByteView signature)
{
    const CK_FUNCTION_LIST& functions = session.functions();
    invoke("C_VerifyInit", functions.C_VerifyInit, session.handle(), mechanism, key);
    invoke("C_Verify", functions.C_Verify, session.handle(), mutableBytes(data), CK_ULONG(data.size()),
           mutableBytes(signature), CK_ULONG(signature.size()));
}

SecretBytes encryptOnce(const TokenSession& session, CK_MECHANISM* mechanism, CK_OBJECT_HANDLE key,
                        ByteView data)
{
    const CK_FUNCTION_LIST& functions = session.functions();
    invoke("C_EncryptInit", functions.C_EncryptInit, session.handle(), mechanism, key);
    return resultOf("C_Encrypt", functions.C_Encrypt, session, data);
}

SecretBytes decryptOnce(const TokenSession& session, CK_MECHANISM* mechanism, CK_OBJECT_HANDLE key,
                        ByteView data)
{
    const CK_FUNCTION_LIST& functions = session.functions();
    invoke("C_DecryptInit", functions.C_DecryptInit, session.handle(), mechanism, key);
    try {
        return resultOf("C_Decrypt", functions.C_Decrypt, session, data);
    } catch (const Failure& failure) {
        // Modules tell faults of the data apart, or give their general failure.
        throw failure.code() == Code::ModuleFailed ? Failure(Code::NotDecryptable) : failure;
    }
}

SecretBytes agreeOnce(const TokenSession& session, CK_OBJECT_HANDLE key, ByteView point, std::size_t length)
{
    CK_ECDH1_DERIVE_PARAMS parameters = {CKD_NULL, 0, nullptr, point.size(), mutableBytes(point)};
    CK_MECHANISM mechanism = {CKM_ECDH1_DERIVE, &parameters, sizeof parameters};
    TokenAttributes wanted(CKO_SECRET_KEY);
    wanted.addNumber(CKA_KEY_TYPE, CKK_GENERIC_SECRET);
    wanted.addNumber(CKA_VALUE_LEN, length);
    wanted.addFlag(CKA_TOKEN, false);
    wanted.addFlag(CKA_SENSITIVE, false);
    wanted.addFlag(CKA_EXTRACTABLE, true);
    NewObjects passing(session);
    const CK_OBJECT_HANDLE secret = passing.add([&] {
        CK_OBJECT_HANDLE made = 0;
        invoke("C_DeriveKey", session.functions().C_DeriveKey, session.handle(), &mechanism, key,
               wanted.data(), wanted.count(), &made);
        return made;
    });
    return readAttribute(session, secret, CKA_VALUE);
}

EcdsaHandle ecdsaOf(ByteView numbers)
{
    EcdsaHandle signature = owned<EcdsaHandle>(ECDSA_SIG_new());
    const int half = static_cast<int>(numbers.size() / 2);
    BIGNUM* const r = BN_bin2bn(numbers.data(), half, nullptr);
    BIGNUM* const s = BN_bin2bn(numbers.data() + half, half, nullptr);
    if (ECDSA_SIG_set0(signature.get(), r, s) != 1) {
        BN_free(r);
        BN_free(s);
        throw std::bad_alloc();
    }
    return signature;
}

} // namespace qgtk
