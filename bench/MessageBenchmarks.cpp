// CMS messages through the flat functions and the open toolkit, against OpenSSL alone: in memory, and over
// files.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <openssl/cms.h>
#include <openssl/provider.h>
#include <quillgate/toolkit.h>
#include <samplepki/Authority.h>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using samplepki::Bytes;

constexpr std::size_t fileLength = 100U << 20;
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

BINSTR record(const Bytes& bytes)
{
    return {reinterpret_cast<unsigned char*>(const_cast<char*>(bytes.data())),
            static_cast<int>(bytes.size())};
}

/** A context of the open toolkit. */
class Toolkit
{
public:
    Toolkit()
    {
        std::string library = ZRTK_FILE;
        std::string name = library.substr(library.rfind('/') + 1);
        std::string directory = library.substr(0, library.rfind('/'));
        if (ZR_Initalize(&context, 0, directory.data(), name.data()) != 0)
            throw std::runtime_error("the toolkit is not loaded");
    }
    ~Toolkit() { ZR_Finish(context); }
    Toolkit(const Toolkit&) = delete;
    Toolkit& operator=(const Toolkit&) = delete;

    void* context = nullptr;
};

/** A library context of its own, as the toolkit has one, and the holder in it, decoded anew for each message.
 */
class BareOpenSsl
{
public:
    BareOpenSsl() : context(OSSL_LIB_CTX_new()), standard(OSSL_PROVIDER_load(context, "default")) {}
    ~BareOpenSsl()
    {
        OSSL_PROVIDER_unload(standard);
        OSSL_LIB_CTX_free(context);
    }
    BareOpenSsl(const BareOpenSsl&) = delete;
    BareOpenSsl& operator=(const BareOpenSsl&) = delete;

    X509* certificate() const
    {
        X509* decoded = X509_new_ex(context, nullptr);
        const auto* position = reinterpret_cast<const unsigned char*>(holder().certificate.data());
        d2i_X509(&decoded, &position, static_cast<long>(holder().certificate.size()));
        return decoded;
    }
    EVP_PKEY* key() const
    {
        const auto* position = reinterpret_cast<const unsigned char*>(holder().key.data());
        PKCS8_PRIV_KEY_INFO* plain =
            d2i_PKCS8_PRIV_KEY_INFO(nullptr, &position, static_cast<long>(holder().key.size()));
        EVP_PKEY* decoded = EVP_PKCS82PKEY_ex(plain, context, nullptr);
        PKCS8_PRIV_KEY_INFO_free(plain);
        return decoded;
    }
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
        X509* own = certificate();
        EVP_PKEY* ownKey = key();
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
        sk_X509_push(recipients, certificate());
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
        X509* own = certificate();
        EVP_PKEY* ownKey = key();
        CMS_ContentInfo* decoded = message(source);
        const bool right = CMS_decrypt(decoded, ownKey, own, nullptr, target, CMS_BINARY) == 1;
        CMS_ContentInfo_free(decoded);
        EVP_PKEY_free(ownKey);
        X509_free(own);
        return right;
    }

    OSSL_LIB_CTX* context;
    OSSL_PROVIDER* standard;
};

/** Files in memory: what is measured is the work, not a disk. Gone at the end. */
class Files
{
public:
    Files()
    {
        const int file = open(source.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        const std::vector<char> piece(1U << 20, 'x');
        for (std::size_t written = 0; written < fileLength; written += piece.size())
            if (write(file, piece.data(), piece.size()) != static_cast<ssize_t>(piece.size()))
                throw std::runtime_error("/dev/shm is full");
        close(file);
    }
    ~Files()
    {
        for (const std::string& path : {source, message, target})
            unlink(path.c_str());
    }
    Files(const Files&) = delete;
    Files& operator=(const Files&) = delete;

    std::string source = "/dev/shm/quillgate-bench-content";
    std::string message = "/dev/shm/quillgate-bench-message";
    std::string target = "/dev/shm/quillgate-bench-opened";
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

Bytes bareSigned(const BareOpenSsl& bare)
{
    return written([&](BIO* sink) {
        BIO* content = sourceOf(shortContent());
        bare.sign(content, sink, 0);
        BIO_free(content);
    });
}

Bytes bareEnvelope(const BareOpenSsl& bare)
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
    const BareOpenSsl bare;
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
    const BareOpenSsl bare;
    const Bytes message = bareSigned(bare);
    measure(state, [&] {
        return written([&](BIO* sink) { bare.verify(sourceOf(message), sink); }).size() == shortLength;
    });
}

void VerifyMessage(benchmark::State& state)
{
    const Toolkit toolkit;
    const BareOpenSsl bare;
    const Bytes bytes = bareSigned(bare);
    BINSTR message = record(bytes);
    int signers = 0;
    measureFlat(state, toolkit, [&](BINSTR* content) {
        return CMSProcessSignedData(toolkit.context, 0, &message, content, &signers);
    });
}

void FloorEnvelope(benchmark::State& state)
{
    const BareOpenSsl bare;
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
    const BareOpenSsl bare;
    const Bytes message = bareEnvelope(bare);
    measure(state, [&] {
        return written([&](BIO* sink) { bare.decrypt(sourceOf(message), sink); }).size() == shortLength;
    });
}

void Open(benchmark::State& state)
{
    const Toolkit toolkit;
    const BareOpenSsl bare;
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

bool bareSignFile(const BareOpenSsl& bare, const Files& files)
{
    return fromTo(files.source, files.message, [&](BIO* content, BIO* sink) {
        bare.sign(content, sink, CMS_STREAM);
        return BIO_free(content) == 1;
    });
}

bool bareEnvelopeFile(const BareOpenSsl& bare, const Files& files)
{
    return fromTo(files.source, files.message, [&](BIO* content, BIO* sink) {
        bare.encrypt(content, sink, CMS_STREAM);
        return BIO_free(content) == 1;
    });
}

void FloorSignFile(benchmark::State& state)
{
    const Files files;
    const BareOpenSsl bare;
    measure(state, [&] { return bareSignFile(bare, files); });
}

void SignFile(benchmark::State& state)
{
    Files files;
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
    const Files files;
    const BareOpenSsl bare;
    bareSignFile(bare, files);
    measure(state, [&] {
        return fromTo(files.message, files.target,
                      [&](BIO* message, BIO* sink) { return bare.verify(message, sink); });
    });
}

void VerifyFile(benchmark::State& state)
{
    Files files;
    const Toolkit toolkit;
    const BareOpenSsl bare;
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
    const Files files;
    const BareOpenSsl bare;
    measure(state, [&] { return bareEnvelopeFile(bare, files); });
}

void EnvelopeFile(benchmark::State& state)
{
    Files files;
    const Toolkit toolkit;
    BINSTR certificate = record(holder().certificate);
    measure(state, [&] {
        return CMSMakeEnveDataFileWithContent(toolkit.context, &certificate, files.source.data(),
                                              QG_CIPHER_AES256, files.message.data()) == 0;
    });
}

void FloorOpenFile(benchmark::State& state)
{
    const Files files;
    const BareOpenSsl bare;
    bareEnvelopeFile(bare, files);
    measure(state, [&] {
        return fromTo(files.message, files.target,
                      [&](BIO* message, BIO* sink) { return bare.decrypt(message, sink); });
    });
}

void OpenFile(benchmark::State& state)
{
    Files files;
    const Toolkit toolkit;
    const BareOpenSsl bare;
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
