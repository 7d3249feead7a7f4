// The verdict on a certificate, below an authority, below a trusted root, without a network.

#include <benchmark/benchmark.h>
#include <openssl/provider.h>
#include <openssl/x509.h>
#include <quillgate/toolkit.h>
#include <samplepki/Authority.h>

#include "Cryptography.h"

namespace {

using samplepki::Bytes;

/** Three certificates of a path, each with what those of the field carry. */
struct Path
{
    Path()
    {
        using namespace samplepki;
        Authority top = Authority::root(nameFromText("cn=Root,o=yessign,c=kr"), KeyPool::key());
        Authority authority =
            top.intermediate(nameFromText("cn=CA,o=yessign,c=kr"), KeyPool::key(KeyKind::Rsa2048, 1));
        root = top.certificate();
        ca = authority.certificate();
        leaf = authority.issue({.subject = nameFromText("cn=holder,o=yessign,c=kr"),
                                .key = KeyPool::key(KeyKind::Rsa2048, 2),
                                .policies = {{"1.2.410.200005.1.1.1"}},
                                .crlPoints = {"ldap://ds.example/ou=dp1,o=yessign,c=kr"},
                                .ocspUrl = "http://ocsp.example"});
    }

    Bytes root;
    Bytes ca;
    Bytes leaf;
};

const Path& path()
{
    static const Path made;
    return made;
}

X509* parse(OSSL_LIB_CTX* context, const Bytes& der)
{
    const auto* cursor = reinterpret_cast<const unsigned char*>(der.data());
    X509* certificate = X509_new_ex(context, nullptr);
    return d2i_X509(&certificate, &cursor, static_cast<long>(der.size()));
}

/** Parses leaf and authority and validates the path; the root is there already. */
void FloorVerify(benchmark::State& state)
{
    OSSL_LIB_CTX* context = OSSL_LIB_CTX_new();
    X509_STORE* store = X509_STORE_new();
    X509* root = parse(context, path().root);
    X509_STORE_add_cert(store, root);
    for (auto _ : state) {
        X509* ca = parse(context, path().ca);
        X509* leaf = parse(context, path().leaf);
        STACK_OF(X509)* pool = sk_X509_new_null();
        sk_X509_push(pool, ca);
        X509_STORE_CTX* run = X509_STORE_CTX_new_ex(context, nullptr);
        X509_STORE_CTX_init(run, store, leaf, pool);
        if (X509_verify_cert(run) != 1)
            state.SkipWithError("the path is not valid");
        X509_STORE_CTX_free(run);
        sk_X509_free(pool);
        X509_free(leaf);
        X509_free(ca);
    }
    X509_free(root);
    X509_STORE_free(store);
    OSSL_LIB_CTX_free(context);
}

void Verify(benchmark::State& state)
{
    void* context = nullptr;
    char directory[] = WORK_DIR;
    char library[] = "libZRToolkitV30-v3.4.2.20.so";
    BINSTR root = record(path().root);
    BINSTR ca = record(path().ca);
    BINSTR leaf = record(path().leaf);
    if (ZR_Initalize(&context, 0, directory, library) != 0 || ZR_SetCaPubs(context, &ca) != 0 ||
        CertAddTrustedCert(context, &root) != 0 ||
        CertSetVerifyEnv(context, 0, 0, false, nullptr, nullptr) != 0)
        state.SkipWithError("no toolkit");
    for (auto _ : state)
        if (CertVerify(context, &leaf, 1, nullptr, nullptr, false, nullptr, nullptr) != 0)
            state.SkipWithError("the path is not valid");
    ZR_Finish(context);
}

BENCHMARK(FloorVerify)->Unit(benchmark::kMicrosecond);
BENCHMARK(Verify)->Unit(benchmark::kMicrosecond);

} // namespace
