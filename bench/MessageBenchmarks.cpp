// CMS messages through the flat functions and the open toolkit, against OpenSSL alone: in memory, and over
// files.

#include <benchmark/benchmark.h>
#include <openssl/cms.h>
#include <quillgate/toolkit.h>
#include <samplepki/Authority.h>
#include <string>
#include <vector>

#include "Cryptography.h"

namespace {

using samplepki::Bytes;

constexpr std::size_t shortLength = 1U << 10;
constexpr unsigned anyUse = samplepki::SigningUse | samplepki::EnvelopeUse;

/** Who signs and reads: a certificate and its plain key. */
struct Holder
{
    Holder()
    {
        using namespace samplepki;
        const KeyPair& pair = KeyPool::key();
        Authority root =
            Authority::root(nameFromText("cn=Root,o=Sample,c=kr"), KeyPool::key(KeyKind::Rsa2048, 1));
        certificate =
            root.issue({.subject = nameFromText("cn=holder,o=Sample,c=kr"), .key = pair, .keyUsage = anyUse});
        key = pair.privateKeyInfo();
    }
    Bytes certificate;
    Bytes key;
};

const Holder& holder()
{
    static const Holder made;
    return made;
}

/** What OpenSSL alone does with messages; the holder is decoded anew for each. */
class BareMessages : public BareOpenSsl
{
public:
    /** Reads a message from a source and frees the source. */
    CMS_ContentInfo* message(BIO* source) const
    {
        CMS_ContentInfo* decoded = CMS_ContentInfo_new_ex(context, nullptr);
        d2i_CMS_bio(source, &decoded);
        BIO_free(source);
        return decoded;
    }
    void sign(BIO* content, BIO* target, unsigned flags) const
    {
        X509* own = certificate(holder().certificate);
        EVP_PKEY* ownKey = key(holder().key);
        CMS_ContentInfo* message =
            CMS_sign_ex(own, ownKey, nullptr, content, CMS_BINARY | CMS_NOSMIMECAP | flags, context, nullptr);
        i2d_CMS_bio_stream(target, message, content, static_cast<int>(CMS_BINARY | flags));
        CMS_ContentInfo_free(message);
        EVP_PKEY_free(ownKey);
        X509_free(own);
    }
    bool verify(BIO* source, BIO* target) const
    {
        CMS_ContentInfo* decoded = message(source);
        const bool right = CMS_verify(decoded, nullptr, nullptr, nullptr, target,
                                      CMS_BINARY | CMS_NO_SIGNER_CERT_VERIFY) == 1;
        CMS_ContentInfo_free(decoded);
        return right;
    }
    void encrypt(BIO* content, BIO* target, unsigned flags) const
    {
        STACK_OF(X509)* recipients = sk_X509_new_null();
        sk_X509_push(recipients, certificate(holder().certificate));
        EVP_CIPHER* cipher = EVP_CIPHER_fetch(context, "AES-256-CBC", nullptr);
        CMS_ContentInfo* message =
            CMS_encrypt_ex(recipients, content, cipher, CMS_BINARY | flags, context, nullptr);
        i2d_CMS_bio_stream(target, message, content, static_cast<int>(CMS_BINARY | flags));
        CMS_ContentInfo_free(message);
        EVP_CIPHER_free(cipher);
        sk_X509_pop_free(recipients, X509_free);
    }
    bool decrypt(BIO* source, BIO* target) const
    {
        X509* own = certificate(holder().certificate);
        EVP_PKEY* ownKey = key(holder().key);
        CMS_ContentInfo* decoded = message(source);
        const bool right = CMS_decrypt(decoded, ownKey, own, nullptr, target, CMS_BINARY) == 1;
        CMS_ContentInfo_free(decoded);
        EVP_PKEY_free(ownKey);
        X509_free(own);
        return right;
    }
};

const std::string& shortContent()
{
    static const std::string content(shortLength, 'x');
    return content;
}

/** The bytes that a function writes to a sink in memory. */
template <typename Write>
Bytes written(Write&& write)
{
    BIO* sink = BIO_new(BIO_s_mem());
    write(sink);
    char* bytes = nullptr;
    const long length = BIO_get_mem_data(sink, &bytes);
    Bytes copy(bytes, static_cast<std::size_t>(length));
    BIO_free(sink);
    return copy;
}

BIO* sourceOf(const Bytes& bytes)
{
    return BIO_new_mem_buf(bytes.data(), static_cast<int>(bytes.size()));
}

Bytes bareSigned(const BareMessages& bare)
{
    return written([&](BIO* sink) {
        BIO* content = sourceOf(shortContent());
        bare.sign(content, sink, 0);
        BIO_free(content);
    });
}

Bytes bareEnvelope(const BareMessages& bare)
{
    return written([&](BIO* sink) {
        BIO* content = sourceOf(shortContent());
        bare.encrypt(content, sink, 0);
        BIO_free(content);
    });
}

/** Runs something that answers true for each round. */
template <typename Round>
void measure(benchmark::State& state, Round&& round)
{
    for (auto _ : state)
        if (!round())
            state.SkipWithError("an operation failed");
}

/** Runs a flat function that gives one byte string. */
template <typename Call>
void measureFlat(benchmark::State& state, const Toolkit& toolkit, Call&& call)
{
    measure(state, [&] {
        BINSTR output = {};
        const bool right = call(&output) == 0;
        ZR_BINSTR_Delete(toolkit.context, &output);
        return right;
    });
}

void FloorSign(benchmark::State& state)
{
    const BareMessages bare;
    measure(state, [&] { return !bareSigned(bare).empty(); });
}

void Sign(benchmark::State& state)
{
    const Toolkit toolkit;
    BINSTR certificate = record(holder().certificate);
    BINSTR key = record(holder().key);
    BINSTR content = record(shortContent());
    char now[] = "";
    measureFlat(state, toolkit, [&](BINSTR* message) {
        return CMSMakeSignedData(toolkit.context, 0, &certificate, &key, &content, now, message);
    });
}

void FloorVerifyMessage(benchmark::State& state)
{
    const BareMessages bare;
    const Bytes message = bareSigned(bare);
    measure(state, [&] {
        return written([&](BIO* sink) { bare.verify(sourceOf(message), sink); }).size() == shortLength;
    });
}

void VerifyMessage(benchmark::State& state)
{
    const Toolkit toolkit;
    const BareMessages bare;
    const Bytes bytes = bareSigned(bare);
    BINSTR message = record(bytes);
    int signers = 0;
    measureFlat(state, toolkit, [&](BINSTR* content) {
        return CMSProcessSignedData(toolkit.context, 0, &message, content, &signers);
    });
}

void FloorEnvelope(benchmark::State& state)
{
    const BareMessages bare;
    measure(state, [&] { return !bareEnvelope(bare).empty(); });
}

void Envelope(benchmark::State& state)
{
    const Toolkit toolkit;
    BINSTR certificate = record(holder().certificate);
    BINSTR content = record(shortContent());
    measureFlat(state, toolkit, [&](BINSTR* message) {
        return CMSMakeEnvelopedData(toolkit.context, 0, &certificate, &content, QG_CIPHER_AES256, message);
    });
}

void FloorOpen(benchmark::State& state)
{
    const BareMessages bare;
    const Bytes message = bareEnvelope(bare);
    measure(state, [&] {
        return written([&](BIO* sink) { bare.decrypt(sourceOf(message), sink); }).size() == shortLength;
    });
}

void Open(benchmark::State& state)
{
    const Toolkit toolkit;
    const BareMessages bare;
    const Bytes bytes = bareEnvelope(bare);
    BINSTR certificate = record(holder().certificate);
    BINSTR key = record(holder().key);
    BINSTR message = record(bytes);
    measureFlat(state, toolkit, [&](BINSTR* content) {
        return CMSProcessEnvelopedData(toolkit.context, &certificate, &key, &message, content);
    });
}

/** Runs OpenSSL from a file to a file. */
template <typename Run>
bool fromTo(const std::string& source, const std::string& target, Run&& run)
{
    BIO* content = BIO_new_file(source.c_str(), "rb");
    BIO* sink = BIO_new_file(target.c_str(), "wb");
    const bool right = run(content, sink);
    BIO_free(sink);
    return right;
}

bool bareSignFile(const BareMessages& bare, const LargeFiles& files)
{
    return fromTo(files.source, files.message, [&](BIO* content, BIO* sink) {
        bare.sign(content, sink, CMS_STREAM);
        return BIO_free(content) == 1;
    });
}

bool bareEnvelopeFile(const BareMessages& bare, const LargeFiles& files)
{
    return fromTo(files.source, files.message, [&](BIO* content, BIO* sink) {
        bare.encrypt(content, sink, CMS_STREAM);
        return BIO_free(content) == 1;
    });
}

void FloorSignFile(benchmark::State& state)
{
    const LargeFiles files;
    const BareMessages bare;
    measure(state, [&] { return bareSignFile(bare, files); });
}

void SignFile(benchmark::State& state)
{
    LargeFiles files;
    const Toolkit toolkit;
    BINSTR certificate = record(holder().certificate);
    BINSTR key = record(holder().key);
    char now[] = "";
    measure(state, [&] {
        return CMSMakeSignedDataFileWithContent(toolkit.context, &certificate, &key, files.source.data(), now,
                                                files.message.data()) == 0;
    });
}

void FloorVerifyFile(benchmark::State& state)
{
    const LargeFiles files;
    const BareMessages bare;
    bareSignFile(bare, files);
    measure(state, [&] {
        return fromTo(files.message, files.target,
                      [&](BIO* message, BIO* sink) { return bare.verify(message, sink); });
    });
}

void VerifyFile(benchmark::State& state)
{
    LargeFiles files;
    const Toolkit toolkit;
    const BareMessages bare;
    bareSignFile(bare, files);
    BINSTR signer = {};
    char time[50] = "";
    measure(state, [&] {
        const int code = CMSProcessSignedDataFileWithContent(toolkit.context, files.message.data(),
                                                             files.target.data(), &signer, time);
        ZR_BINSTR_Delete(toolkit.context, &signer);
        return code == 0;
    });
}

void FloorEnvelopeFile(benchmark::State& state)
{
    const LargeFiles files;
    const BareMessages bare;
    measure(state, [&] { return bareEnvelopeFile(bare, files); });
}

void EnvelopeFile(benchmark::State& state)
{
    LargeFiles files;
    const Toolkit toolkit;
    BINSTR certificate = record(holder().certificate);
    measure(state, [&] {
        return CMSMakeEnveDataFileWithContent(toolkit.context, &certificate, files.source.data(),
                                              QG_CIPHER_AES256, files.message.data()) == 0;
    });
}

void FloorOpenFile(benchmark::State& state)
{
    const LargeFiles files;
    const BareMessages bare;
    bareEnvelopeFile(bare, files);
    measure(state, [&] {
        return fromTo(files.message, files.target,
                      [&](BIO* message, BIO* sink) { return bare.decrypt(message, sink); });
    });
}

void OpenFile(benchmark::State& state)
{
    LargeFiles files;
    const Toolkit toolkit;
    const BareMessages bare;
    bareEnvelopeFile(bare, files);
    BINSTR certificate = record(holder().certificate);
    BINSTR key = record(holder().key);
    measure(state, [&] {
        return CMSProcessEnvDataFileWithContent(toolkit.context, &certificate, &key, files.message.data(),
                                                files.target.data()) == 0;
    });
}

BENCHMARK(FloorSign)->Unit(benchmark::kMicrosecond);
BENCHMARK(Sign)->Unit(benchmark::kMicrosecond);
BENCHMARK(FloorVerifyMessage)->Unit(benchmark::kMicrosecond);
BENCHMARK(VerifyMessage)->Unit(benchmark::kMicrosecond);
BENCHMARK(FloorEnvelope)->Unit(benchmark::kMicrosecond);
BENCHMARK(Envelope)->Unit(benchmark::kMicrosecond);
BENCHMARK(FloorOpen)->Unit(benchmark::kMicrosecond);
BENCHMARK(Open)->Unit(benchmark::kMicrosecond);
BENCHMARK(FloorSignFile)->Unit(benchmark::kMillisecond);
BENCHMARK(SignFile)->Unit(benchmark::kMillisecond);
BENCHMARK(FloorVerifyFile)->Unit(benchmark::kMillisecond);
BENCHMARK(VerifyFile)->Unit(benchmark::kMillisecond);
BENCHMARK(FloorEnvelopeFile)->Unit(benchmark::kMillisecond);
BENCHMARK(EnvelopeFile)->Unit(benchmark::kMillisecond);
BENCHMARK(FloorOpenFile)->Unit(benchmark::kMillisecond);
BENCHMARK(OpenFile)->Unit(benchmark::kMillisecond);

} // namespace
