// The verdict on a certificate, below an authority, below a trusted root, without a network.

#include <benchmark/benchmark.h>
#include <openssl/x509.h>
#include <quillgate/toolkit.h>

#include "Cryptography.h"

namespace {

/** Parses leaf and authority and validates the path; the root is there already. */
void FloorVerify(benchmark::State& state)
{
    const BareOpenSsl bare;
    X509_STORE* store = X509_STORE_new();
    X509* root = bare.certificate(path().root);
    X509_STORE_add_cert(store, root);
    for (auto _ : state) {
        X509* ca = bare.certificate(path().ca);
        X509* leaf = bare.certificate(path().leaf);
        STACK_OF(X509)* pool = sk_X509_new_null();
        sk_X509_push(pool, ca);
        X509_STORE_CTX* run = X509_STORE_CTX_new_ex(bare.context, nullptr);
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
