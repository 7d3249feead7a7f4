#include "toolkit/core/CertificatePath.h"

#include <algorithm>

#include "toolkit/core/PathFailure.h"

namespace qgtk {

namespace {

constexpr int longestPath = 20;

bool isIssuer(X509* issuer, X509* certificate)
{
    if (X509_NAME_cmp(X509_get_subject_name(issuer), X509_get_issuer_name(certificate)) != 0)
        return false;
    EVP_PKEY* key = X509_get0_pubkey(issuer);
    return key && X509_verify(certificate, key) == 1;
}

bool contains(const X509Stack& path, X509* certificate)
{
    for (int i = 0; i < sk_X509_num(path.get()); ++i)
        if (X509_cmp(sk_X509_value(path.get(), i), certificate) == 0)
            return true;
    return false;
}

/** The issuer of a certificate among others that do not stand on a path yet; null when there is none. */
X509Handle issuerAmong(const STACK_OF(X509) * others, const X509Stack& path, X509* certificate)
{
    for (int i = 0; i < sk_X509_num(others); ++i) {
        X509* other = sk_X509_value(others, i);
        if (!contains(path, other) && isIssuer(other, certificate))
            return share(other);
    }
    return nullptr;
}

X509Handle issuerOf(Context& context, IssuerSearch& issuers, const X509Stack& path, X509* certificate)
{
    const X509Stack trusted(X509_STORE_get1_all_certs(context.trusted()));
    X509Handle issuer = issuerAmong(trusted.get(), path, certificate);
    if (!issuer)
        issuer = issuerAmong(issuers.pool(), path, certificate);
    if (!issuer && issuers.find(certificate))
        issuer = issuerAmong(issuers.pool(), path, certificate);
    if (!issuer)
        throw failureOf(Code::IssuerMissing, certificate, context.charset());
    return issuer;
}

bool isSeparator(char c)
{
    return c == ',' || c == '=' || c == '+';
}

/** A name without what does not count. */
std::string comparable(std::string_view name)
{
    std::string form;
    bool blank = false;
    for (const char c : name) {
        if (c == ' ' || c == '\t') {
            blank = true;
            continue;
        }
        const bool inside = !form.empty() && !isSeparator(form.back());
        if (blank && inside && !isSeparator(c))
            form += ' ';
        blank = false;
        form += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return form;
}

} // namespace

X509Stack certificatePath(Context& context, ByteView certificate, const std::string& configurationFile)
{
    ServerAccess servers(context, configurationFile);
    IssuerSearch issuers(context, servers);
    auto path = owned<X509Stack>(sk_X509_new_null());
    X509Handle current = decodeX509(context.crypto(), certificate);
    while (sk_X509_num(path.get()) < longestPath) {
        push(path, current.get());
        if (X509_self_signed(current.get(), 1) == 1)
            return path;
        current = issuerOf(context, issuers, path, current.get());
    }
    throw failureOf(Code::PathTooLong, sk_X509_value(path.get(), 0), context.charset());
}

X509Handle findIssuer(Context& context, IssuerSearch& issuers, X509* certificate)
{
    return issuerOf(context, issuers, owned<X509Stack>(sk_X509_new_null()), certificate);
}

Bytes pathBytes(const X509Stack& path)
{
    Bytes list;
    for (int i = 0; i < sk_X509_num(path.get()); ++i) {
        const Bytes der = derOf(sk_X509_value(path.get(), i));
        list.insert(list.end(), der.begin(), der.end());
    }
    return list;
}

bool isOnPath(Context& context, ByteView certificate, ByteView root)
{
    const X509Handle end = decodeX509(context.crypto(), root);
    const X509Stack path = certificatePath(context, certificate);
    return contains(path, end.get());
}

void compareNames(std::string_view first, std::string_view second)
{
    require(comparable(first) == comparable(second), Code::NamesDiffer);
}

} // namespace qgtk
