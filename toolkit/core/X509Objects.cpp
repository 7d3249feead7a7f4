#include "toolkit/core/X509Objects.h"

#include "toolkit/core/Errors.h"
#include "toolkit/core/Names.h"

namespace qgtk {

namespace {

using AccessHandle = Handle<AUTHORITY_INFO_ACCESS, AUTHORITY_INFO_ACCESS_free>;
using PointsHandle = Handle<CRL_DIST_POINTS, CRL_DIST_POINTS_free>;
using MemoryHandle = Handle<BIO, BIO_free>;

/** Decodes into an object that belongs to the toolkit's library context, or throws the code. */
template <typename H, typename New, typename D2i>
H decodeIn(const Crypto& crypto, ByteView der, New create, D2i decode, Code failure)
{
    auto* object = owned<H>(create(crypto.context(), nullptr)).release();
    const unsigned char* position = der.data();
    const bool done = !der.empty() && der.size() <= LONG_MAX &&
                      decode(&object, &position, static_cast<long>(der.size())) != nullptr;
    H decoded(object);
    require(done, failure);
    return decoded;
}

/** A name as directories take it. */
std::string directoryForm(const X509_NAME* name)
{
    const auto memory = owned<MemoryHandle>(BIO_new(BIO_s_mem()));
    constexpr unsigned long form = XN_FLAG_RFC2253 & ~ASN1_STRFLGS_ESC_MSB;
    X509_NAME_print_ex(memory.get(), name, 0, form);
    const char* text = nullptr;
    const long length = BIO_get_mem_data(memory.get(), &text);
    return {text, static_cast<std::size_t>(length)};
}

/** Appends the address when the name is one. */
void appendUrl(std::vector<std::string>& urls, const GENERAL_NAME* name)
{
    int type = -1;
    const auto* value = static_cast<const ASN1_STRING*>(GENERAL_NAME_get0_value(name, &type));
    if (type == GEN_URI)
        urls.emplace_back(textOf(contentOf(value)));
}

/** Appends the name of a directory's entry when it is one. */
void appendEntry(std::vector<std::string>& entries, const GENERAL_NAME* name)
{
    int type = -1;
    const void* value = GENERAL_NAME_get0_value(name, &type);
    if (type == GEN_DIRNAME)
        entries.push_back(directoryForm(static_cast<const X509_NAME*>(value)));
}

/** Calls append(places, name) for each full name of the points where revocation lists are. */
template <typename Append>
std::vector<std::string> crlPlaces(X509* certificate, Append append)
{
    std::vector<std::string> places;
    const PointsHandle points(static_cast<CRL_DIST_POINTS*>(
        X509_get_ext_d2i(certificate, NID_crl_distribution_points, nullptr, nullptr)));
    for (int i = 0; i < sk_DIST_POINT_num(points.get()); ++i) {
        const DIST_POINT_NAME* point = sk_DIST_POINT_value(points.get(), i)->distpoint;
        if (!point || point->type != 0)
            continue;
        for (int k = 0; k < sk_GENERAL_NAME_num(point->name.fullname); ++k)
            append(places, sk_GENERAL_NAME_value(point->name.fullname, k));
    }
    return places;
}

} // namespace

X509Handle decodeX509(const Crypto& crypto, ByteView der)
{
    return decodeIn<X509Handle>(crypto, der, X509_new_ex, d2i_X509, Code::CertDamaged);
}

CrlHandle decodeCrl(const Crypto& crypto, ByteView der)
{
    return decodeIn<CrlHandle>(crypto, der, X509_CRL_new_ex, d2i_X509_CRL, Code::CrlDamaged);
}

X509Handle share(X509* certificate)
{
    X509_up_ref(certificate);
    return X509Handle(certificate);
}

void push(const X509Stack& stack, X509* certificate)
{
    if (X509_add_cert(stack.get(), certificate, X509_ADD_FLAG_UP_REF) != 1)
        throw std::bad_alloc();
}

Bytes derOf(X509* certificate)
{
    return encodeDer<Bytes>(i2d_X509, certificate);
}

std::string subjectText(const X509* certificate, Charset& charset)
{
    return nameText(X509_get_subject_name(certificate), charset);
}

std::string issuerDirectoryName(const X509* certificate)
{
    return directoryForm(X509_get_issuer_name(certificate));
}

std::vector<std::string> serviceUrls(X509* certificate, int kind)
{
    std::vector<std::string> urls;
    const AccessHandle services(static_cast<AUTHORITY_INFO_ACCESS*>(
        X509_get_ext_d2i(certificate, NID_info_access, nullptr, nullptr)));
    for (int i = 0; i < sk_ACCESS_DESCRIPTION_num(services.get()); ++i) {
        const ACCESS_DESCRIPTION* service = sk_ACCESS_DESCRIPTION_value(services.get(), i);
        if (OBJ_obj2nid(service->method) == kind)
            appendUrl(urls, service->location);
    }
    return urls;
}

std::vector<std::string> crlUrls(X509* certificate)
{
    return crlPlaces(certificate, appendUrl);
}

std::vector<std::string> crlEntries(X509* certificate)
{
    return crlPlaces(certificate, appendEntry);
}

bool isAuthority(X509* certificate)
{
    return X509_check_ca(certificate) != 0;
}

} // namespace qgtk
