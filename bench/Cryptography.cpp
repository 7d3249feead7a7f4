#include "Cryptography.h"

#include <fcntl.h>
#include <openssl/evp.h>
#include <openssl/x509.h>
#include <quillgate/toolkit.h>
#include <samplepki/Authority.h>
#include <stdexcept>
#include <unistd.h>
#include <vector>

Toolkit::Toolkit()
{
    const std::string path = ZRTK_FILE;
    std::string name = path.substr(path.rfind('/') + 1);
    std::string directory = path.substr(0, path.rfind('/'));
    if (ZR_Initalize(&context, 0, directory.data(), name.data()) != 0)
        throw std::runtime_error("the toolkit does not load");
}

Toolkit::~Toolkit()
{
    ZR_Finish(context);
}

BareOpenSsl::BareOpenSsl() : context(OSSL_LIB_CTX_new()), m_standard(OSSL_PROVIDER_load(context, "default"))
{}

BareOpenSsl::~BareOpenSsl()
{
    OSSL_PROVIDER_unload(m_standard);
    OSSL_LIB_CTX_free(context);
}

X509* BareOpenSsl::certificate(const samplepki::Bytes& der) const
{
    X509* decoded = X509_new_ex(context, nullptr);
    const auto* position = reinterpret_cast<const unsigned char*>(der.data());
    return d2i_X509(&decoded, &position, static_cast<long>(der.size()));
}

EVP_PKEY* BareOpenSsl::key(const samplepki::Bytes& plain) const
{
    const auto* position = reinterpret_cast<const unsigned char*>(plain.data());
    PKCS8_PRIV_KEY_INFO* info = d2i_PKCS8_PRIV_KEY_INFO(nullptr, &position, static_cast<long>(plain.size()));
    EVP_PKEY* decoded = EVP_PKCS82PKEY_ex(info, context, nullptr);
    PKCS8_PRIV_KEY_INFO_free(info);
    return decoded;
}

Path::Path() : caKey(samplepki::KeyPool::key(samplepki::KeyKind::Rsa2048, 1))
{
    using namespace samplepki;
    const KeyPair& leafKey = KeyPool::key(KeyKind::Rsa2048, 2);
    Authority top = Authority::root(nameFromText("cn=Root,o=yessign,c=kr"), KeyPool::key());
    Authority authority = top.intermediate(nameFromText("cn=CA,o=yessign,c=kr"), caKey);
    root = top.certificate();
    ca = authority.certificate();
    leaf = authority.issue({.subject = nameFromText("cn=holder,o=yessign,c=kr"),
                            .key = leafKey,
                            .policies = {{"1.2.410.200005.1.1.1"}},
                            .crlPoints = {"ldap://ds.example/ou=dp1,o=yessign,c=kr"},
                            .ocspUrl = "http://ocsp.example"});
    key = leafKey.privateKeyInfo();
}

const Path& path()
{
    static const Path made;
    return made;
}

LargeFiles::LargeFiles()
{
    constexpr std::size_t length = 100U << 20;
    const int file = open(source.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    const std::vector<char> piece(1U << 20, 'x');
    for (std::size_t written = 0; written < length; written += piece.size())
        if (write(file, piece.data(), piece.size()) != static_cast<ssize_t>(piece.size()))
            throw std::runtime_error("/dev/shm is full");
    close(file);
}

LargeFiles::~LargeFiles()
{
    for (const std::string& path : {source, message, target})
        unlink(path.c_str());
}

BINSTR record(const samplepki::Bytes& bytes)
{
    return {reinterpret_cast<unsigned char*>(const_cast<char*>(bytes.data())),
            static_cast<int>(bytes.size())};
}
