#include "toolkit/core/CmpRequest.h"

#include "toolkit/core/Identity.h"

namespace qgtk {

namespace {

inline void freeNames(GENERAL_NAMES* names)
{
    sk_GENERAL_NAME_pop_free(names, GENERAL_NAME_free);
}

using NamesHandle = Handle<GENERAL_NAMES, freeNames>;

/** Bits of KeyUsage (RFC 5280, section 4.2.1.3). */
constexpr int digitalSignature = 0;
constexpr int nonRepudiation = 1;
constexpr int keyEncipherment = 2;
constexpr int dataEncipherment = 3;
constexpr int keyAgreement = 4;

std::vector<int> usageOf(PairPurpose purpose, const KeyHandle& key)
{
    if (purpose == PairPurpose::Signing)
        return {digitalSignature, nonRepudiation};
    if (EVP_PKEY_is_a(key.get(), "EC") == 1)
        return {keyAgreement};
    return {keyEncipherment, dataEncipherment};
}

void add(X509_EXTENSIONS*& extensions, int nid, void* value, bool critical)
{
    if (X509V3_add1_i2d(&extensions, nid, value, critical ? 1 : 0, X509V3_ADD_APPEND) != 1)
        throw std::bad_alloc();
}

/** The identity value of a certificate; nothing when it has none or a damaged one. */
std::optional<Identity> identityIn(X509* certificate)
{
    try {
        return identityOf(Certificate(derOf(certificate)));
    } catch (const Failure&) {
        return std::nullopt;
    }
}

/** The holder's name in the certificate to be replaced, UTF-8. */
std::string oldRealName(X509* old)
{
    const std::optional<Identity> identity = old ? identityIn(old) : std::nullopt;
    if (!identity)
        return {};
    unsigned char* utf8 = nullptr;
    const int length = ASN1_STRING_to_UTF8(&utf8, identity->realName.get());
    std::string name(reinterpret_cast<const char*>(utf8), length > 0 ? static_cast<std::size_t>(length) : 0);
    OPENSSL_free(utf8);
    return name;
}

/** The names of the certificate to be replaced, without its identity value. */
NamesHandle oldNames(X509* old)
{
    NamesHandle names(
        old ? static_cast<GENERAL_NAMES*>(X509_get_ext_d2i(old, NID_subject_alt_name, nullptr, nullptr))
            : nullptr);
    if (!names)
        return owned<NamesHandle>(sk_GENERAL_NAME_new_null());
    for (int i = sk_GENERAL_NAME_num(names.get()) - 1; i >= 0; --i) {
        const GENERAL_NAME* name = sk_GENERAL_NAME_value(names.get(), i);
        if (name->type == GEN_OTHERNAME && decodeIdentity(name->d.otherName))
            GENERAL_NAME_free(sk_GENERAL_NAME_delete(names.get(), i));
    }
    return names;
}

NamesHandle wishedNames(const Crypto& crypto, const CmpSubject& subject)
{
    NamesHandle names = oldNames(subject.old);
    NameHandle identity = makeIdentity(crypto, oldRealName(subject.old), subject.random, subject.idNumber);
    if (sk_GENERAL_NAME_push(names.get(), identity.get()) == 0)
        throw std::bad_alloc();
    static_cast<void>(identity.release());
    return names;
}

bool hasIdentity(const CmpSubject& subject)
{
    return !subject.idNumber.empty() && !subject.random.empty();
}

} // namespace

ExtensionsHandle wishedExtensions(const Crypto& crypto, const CmpSubject& subject, const KeyHandle& key)
{
    ExtensionsHandle extensions = owned<ExtensionsHandle>(sk_X509_EXTENSION_new_null());
    X509_EXTENSIONS* list = extensions.get();
    const StringHandle usage = owned<StringHandle>(ASN1_BIT_STRING_new());
    for (const int bit : usageOf(subject.purpose, key))
        ASN1_BIT_STRING_set_bit(usage.get(), bit, 1);
    add(list, NID_key_usage, usage.get(), true);
    if (hasIdentity(subject))
        add(list, NID_subject_alt_name, wishedNames(crypto, subject).get(), false);
    return extensions;
}

void requireIdentity(const Crypto& crypto, const CmpSubject& subject, X509* certificate)
{
    if (hasIdentity(subject) && identityIn(certificate))
        verifyIdentity(crypto, Certificate(derOf(certificate)), subject.random, subject.idNumber);
}

} // namespace qgtk
