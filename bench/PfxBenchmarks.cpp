// Writing and reading a PFX file: what stands between a file and a stored certificate.

#include "Session.h"

#include <benchmark/benchmark.h>
#include <dlfcn.h>
#include <fstream>
#include <openssl/pkcs12.h>
#include <quillgate/binstr.h>
#include <samplepki/Authority.h>

namespace {

/** The open toolkit as callers load it, over a work directory with the iterations that bare OpenSSL gets. */
class PfxToolkit
{
public:
    PfxToolkit() : m_handle(dlopen(ZRTK_FILE, RTLD_LAZY))
    {
        const std::string directory = workDirectory("pfx-work").string();
        std::ofstream(directory + "/ZRCToolkitV30.conf")
            << "[OPEN_TOOLKIT]\nKEY_ITERATIONS=" << rounds << "\n";
        call("API_Init", &m_context, const_cast<char*>(directory.c_str()));
    }
    ~PfxToolkit()
    {
        call("API_Finish", m_context);
        dlclose(m_handle);
    }
    PfxToolkit(const PfxToolkit&) = delete;
    PfxToolkit& operator=(const PfxToolkit&) = delete;

    template <typename... Arguments>
    int call(const char* operation, Arguments... arguments) const
    {
        void* symbol = dlsym(m_handle, (std::string("ZRTK_") + operation).c_str());
        return reinterpret_cast<int (*)(Arguments...)>(symbol)(arguments...);
    }
    void* context() const { return m_context; }

private:
    void* m_handle;
    void* m_context = nullptr;
};

struct Pair
{
    samplepki::Bytes certificate;
    samplepki::Bytes key;
};

const Pair& samplePair()
{
    using namespace samplepki;
    static const Pair pair = [] {
        Authority authority =
            Authority::root(nameFromText("cn=Root,o=yessign,c=kr"), KeyPool::key(KeyKind::Rsa2048, 1));
        return Pair{authority.issue({nameFromText("cn=holder,o=yessign,c=kr"), KeyPool::key()}),
                    KeyPool::key().privateKeyInfo()};
    }();
    return pair;
}

BINSTR recordOf(const samplepki::Bytes& bytes)
{
    return {reinterpret_cast<unsigned char*>(const_cast<char*>(bytes.data())),
            static_cast<int>(bytes.size())};
}

samplepki::Bytes exportedBy(const PfxToolkit& toolkit)
{
    BINSTR certificate = recordOf(samplePair().certificate);
    BINSTR key = recordOf(samplePair().key);
    BINSTR pfx = {};
    samplepki::Bytes file;
    if (toolkit.call("PFX_Export", toolkit.context(), 0, const_cast<char*>(password), &certificate, &key,
                     &pfx) == 0)
        file.assign(reinterpret_cast<const char*>(pfx.pData), static_cast<std::size_t>(pfx.nLen));
    toolkit.call("BINSTR_Delete", &pfx);
    return file;
}

void ExportPfx(benchmark::State& state)
{
    const PfxToolkit toolkit;
    for (auto _ : state)
        if (exportedBy(toolkit).empty())
            state.SkipWithError("the pair is not exported");
}

void ImportPfx(benchmark::State& state)
{
    const PfxToolkit toolkit;
    const samplepki::Bytes file = exportedBy(toolkit);
    BINSTR pfx = recordOf(file);
    BINSTR certificate = {};
    BINSTR key = {};
    BINSTR authorities = {};
    for (auto _ : state)
        if (toolkit.call("PFX_Import", toolkit.context(), const_cast<char*>(password), &pfx, &certificate,
                         &key, &authorities) != 0)
            state.SkipWithError("the file is not imported");
    toolkit.call("BINSTR_Delete", &certificate);
    toolkit.call("BINSTR_Delete", &key);
    toolkit.call("BINSTR_Delete", &authorities);
}

/** What PKCS12_create is given. */
struct Decoded
{
    Decoded()
    {
        const auto* bytes = reinterpret_cast<const unsigned char*>(samplePair().certificate.data());
        certificate = d2i_X509(nullptr, &bytes, static_cast<long>(samplePair().certificate.size()));
        bytes = reinterpret_cast<const unsigned char*>(samplePair().key.data());
        key = d2i_AutoPrivateKey(nullptr, &bytes, static_cast<long>(samplePair().key.size()));
    }
    ~Decoded()
    {
        X509_free(certificate);
        EVP_PKEY_free(key);
    }
    Decoded(const Decoded&) = delete;
    Decoded& operator=(const Decoded&) = delete;

    X509* certificate;
    EVP_PKEY* key;
};

/** Decoding the pair is part of both: callers hold bytes. */
void FloorExportPfx(benchmark::State& state)
{
    for (auto _ : state) {
        const Decoded pair;
        PKCS12* pfx = PKCS12_create(password, "holder", pair.key, pair.certificate, nullptr, NID_aes_256_cbc,
                                    NID_aes_256_cbc, rounds, rounds, 0);
        unsigned char* encoded = nullptr;
        benchmark::DoNotOptimize(i2d_PKCS12(pfx, &encoded));
        OPENSSL_free(encoded);
        PKCS12_free(pfx);
    }
}

void FloorImportPfx(benchmark::State& state)
{
    const PfxToolkit toolkit;
    const samplepki::Bytes file = exportedBy(toolkit);
    for (auto _ : state) {
        const auto* bytes = reinterpret_cast<const unsigned char*>(file.data());
        PKCS12* pfx = d2i_PKCS12(nullptr, &bytes, static_cast<long>(file.size()));
        EVP_PKEY* key = nullptr;
        X509* certificate = nullptr;
        if (PKCS12_parse(pfx, password, &key, &certificate, nullptr) != 1)
            state.SkipWithError("the file is not parsed");
        EVP_PKEY_free(key);
        X509_free(certificate);
        PKCS12_free(pfx);
    }
}

BENCHMARK(FloorExportPfx)->Unit(benchmark::kMicrosecond);
BENCHMARK(ExportPfx)->Unit(benchmark::kMicrosecond);
BENCHMARK(FloorImportPfx)->Unit(benchmark::kMicrosecond);
BENCHMARK(ImportPfx)->Unit(benchmark::kMicrosecond);

} // namespace
