#include "toolkit/core/TokenPairs.h"

#include <array>
#include <optional>

#include "toolkit/core/Errors.h"
#include "toolkit/core/KeyPair.h"
#include "toolkit/core/KeyRandom.h"
#include "toolkit/core/Oid.h"
#include "toolkit/core/TokenKey.h"

namespace qgtk {

namespace {

constexpr std::string_view application = "Quillgate";

/** What an identifier's random value is called: objects of data have no identifier. */
std::string randomLabel(ByteView id)
{
    constexpr std::string_view digits = "0123456789abcdef";
    constexpr unsigned shift = 4;
    constexpr unsigned mask = 15;
    std::string label = "random ";
    for (const std::uint8_t byte : id) {
        label += digits[byte >> shift];
        label += digits[byte & mask];
    }
    return label;
}

TokenAttributes withId(CK_OBJECT_CLASS kind, ByteView id)
{
    TokenAttributes attributes(kind);
    attributes.addBytes(CKA_ID, id);
    return attributes;
}

TokenAttributes certificatesOf(std::optional<ByteView> id)
{
    TokenAttributes attributes(CKO_CERTIFICATE);
    attributes.addNumber(CKA_CERTIFICATE_TYPE, CKC_X_509);
    if (id)
        attributes.addBytes(CKA_ID, *id);
    return attributes;
}

std::vector<CK_OBJECT_HANDLE> findRandom(const TokenSession& session, ByteView id)
{
    const std::string label = randomLabel(id);
    TokenAttributes attributes(CKO_DATA);
    attributes.addBytes(CKA_APPLICATION, bytesOf(application));
    attributes.addBytes(CKA_LABEL, bytesOf(label));
    return findObjects(session, attributes);
}

/** All of a pair, the certificate last, so that a deletion that stops half-way can be repeated. */
std::vector<CK_OBJECT_HANDLE> objectsOf(const TokenSession& session, ByteView id)
{
    std::vector<CK_OBJECT_HANDLE> objects = findRandom(session, id);
    for (const CK_OBJECT_CLASS kind : {CKO_PRIVATE_KEY, CKO_PUBLIC_KEY, CKO_CERTIFICATE}) {
        const std::vector<CK_OBJECT_HANDLE> some = findObjects(session, withId(kind, id));
        objects.insert(objects.end(), some.begin(), some.end());
    }
    return objects;
}

/** Attributes that all objects of a pair have. */
TokenAttributes newObject(CK_OBJECT_CLASS kind, bool isPrivate)
{
    TokenAttributes attributes(kind);
    attributes.addFlag(CKA_TOKEN, true);
    attributes.addFlag(CKA_PRIVATE, isPrivate);
    return attributes;
}

void createKeys(NewObjects& objects, const TokenKey& key, PairUse use, ByteView id)
{
    TokenAttributes secret = newObject(CKO_PRIVATE_KEY, true);
    secret.addBytes(CKA_ID, id);
    secret.addFlag(CKA_SENSITIVE, true);
    secret.addFlag(CKA_EXTRACTABLE, false);
    secret.addFlag(CKA_SIGN, use.signs);
    secret.addFlag(CKA_DECRYPT, use.decrypts && !key.isOfCurve());
    secret.addFlag(CKA_DERIVE, use.agrees && key.isOfCurve());
    key.addPrivate(secret);
    objects.create(secret);

    TokenAttributes open = newObject(CKO_PUBLIC_KEY, false);
    open.addBytes(CKA_ID, id);
    open.addFlag(CKA_VERIFY, use.signs);
    open.addFlag(CKA_ENCRYPT, use.decrypts && !key.isOfCurve());
    key.addPublic(open);
    objects.create(open);
}

void createRandom(NewObjects& objects, ByteView random, ByteView id)
{
    const std::string label = randomLabel(id);
    const ObjectHandle kind = owned<ObjectHandle>(OBJ_txt2obj(oids::randomNumber, 1));
    const Bytes kindDer = encodeDer<Bytes>(i2d_ASN1_OBJECT, kind.get());
    TokenAttributes attributes = newObject(CKO_DATA, true);
    attributes.addBytes(CKA_APPLICATION, bytesOf(application));
    attributes.addBytes(CKA_LABEL, bytesOf(label));
    attributes.addBytes(CKA_OBJECT_ID, kindDer);
    attributes.addBytes(CKA_VALUE, random);
    objects.create(attributes);
}

void createCertificate(NewObjects& objects, const Certificate& certificate, ByteView id)
{
    const Bytes serial = encodeDer<Bytes>(i2d_ASN1_INTEGER, certificate.serial());
    TokenAttributes attributes = newObject(CKO_CERTIFICATE, false);
    attributes.addNumber(CKA_CERTIFICATE_TYPE, CKC_X_509);
    attributes.addBytes(CKA_ID, id);
    attributes.addBytes(CKA_SUBJECT, certificate.subjectDer());
    attributes.addBytes(CKA_ISSUER, certificate.issuerDer());
    attributes.addBytes(CKA_SERIAL_NUMBER, serial);
    attributes.addBytes(CKA_VALUE, certificate.der());
    objects.create(attributes);
}

/** A key's random value; empty when it has none. */
SecretBytes randomOf(ByteView plainKey)
{
    try {
        return keyRandom(plainKey);
    } catch (const Failure& failure) {
        if (failure.code() != Code::NoKeyRandom)
            throw;
        return {};
    }
}

} // namespace

PairUse useOf(const Certificate& certificate)
{
    const StringHandle usage = extensionOf<StringHandle>(certificate, NID_key_usage);
    if (!usage)
        return {true, true, true};
    const auto has = [&](int bit) {
        return ASN1_BIT_STRING_get_bit(usage.get(), bit) == 1;
    };
    // digitalSignature, nonRepudiation; keyEncipherment, dataEncipherment; keyAgreement (RFC 5280, section
    // 4.2.1.3)
    return {has(0) || has(1), has(2) || has(3), has(4)};
}

std::vector<TokenCertificate> listCertificates(const TokenSession& session)
{
    std::vector<TokenCertificate> list;
    for (const CK_OBJECT_HANDLE object : findObjects(session, certificatesOf({}))) {
        SecretBytes id = readAttribute(session, object, CKA_ID);
        if (!id.empty())
            list.push_back({std::move(id), readAttribute(session, object, CKA_VALUE)});
    }
    return list;
}

SecretBytes readCertificate(const TokenSession& session, ByteView id)
{
    const std::vector<CK_OBJECT_HANDLE> found = findObjects(session, certificatesOf(id));
    require(!found.empty(), Code::TokenObjectMissing);
    SecretBytes der = readAttribute(session, found.front(), CKA_VALUE);
    const Certificate checked(der);
    return der;
}

bool holdsPair(const TokenSession& session, ByteView id)
{
    return !objectsOf(session, id).empty();
}

SecretBytes readRandom(const TokenSession& session, ByteView id)
{
    session.requireLogin();
    const std::vector<CK_OBJECT_HANDLE> found = findRandom(session, id);
    if (!found.empty())
        return readAttribute(session, found.front(), CKA_VALUE);
    throw Failure(holdsPair(session, id) ? Code::NoKeyRandom : Code::TokenObjectMissing);
}

void writePair(const Crypto& crypto, const TokenSession& session, ByteView certificate, ByteView plainKey)
{
    const Certificate decoded(certificate.first(certificateLength(certificate)));
    writePair(crypto, session, certificate, plainKey, crypto.hash("SHA1", decoded.publicKey().bits));
}

void writePair(const Crypto& crypto, const TokenSession& session, ByteView certificate, ByteView plainKey,
               ByteView id)
{
    const Certificate decoded(certificate.first(certificateLength(certificate)));
    checkKeyPair(crypto, decoded, plainKey);
    const TokenKey key(privateKeyFrom(crypto, plainKey));
    const SecretBytes random = randomOf(plainKey);
    session.requireLogin();
    require(!holdsPair(session, id), Code::TokenObjectExists);

    NewObjects objects(session);
    createKeys(objects, key, useOf(decoded), id);
    if (!random.empty())
        createRandom(objects, random, id);
    createCertificate(objects, decoded, id);
    objects.keep();
}

void writeCertificates(const TokenSession& session, const std::vector<TokenCertificateData>& certificates)
{
    session.requireLogin();
    std::vector<CK_OBJECT_HANDLE> replaced;
    NewObjects objects(session);
    for (const TokenCertificateData& data : certificates) {
        const std::vector<CK_OBJECT_HANDLE> old = findObjects(session, certificatesOf(data.id));
        replaced.insert(replaced.end(), old.begin(), old.end());
        createCertificate(objects, Certificate(data.certificate), data.id);
        if (data.random.empty())
            continue;
        const std::vector<CK_OBJECT_HANDLE> randoms = findRandom(session, data.id);
        replaced.insert(replaced.end(), randoms.begin(), randoms.end());
        createRandom(objects, data.random, data.id);
    }
    objects.keep();
    for (const CK_OBJECT_HANDLE object : replaced)
        session.functions().C_DestroyObject(session.handle(), object); // what is new is there all the same
}

void deletePair(const TokenSession& session, ByteView id)
{
    session.requireLogin();
    const std::vector<CK_OBJECT_HANDLE> objects = objectsOf(session, id);
    require(!objects.empty(), Code::TokenObjectMissing);
    for (const CK_OBJECT_HANDLE object : objects)
        destroyObject(session, object);
}

} // namespace qgtk
