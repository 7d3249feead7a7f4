// Raw cryptography through the flat functions and the open toolkit, against OpenSSL alone.

#include <array>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <fcntl.h>
#include <openssl/evp.h>
#include <quillgate/toolkit.h>
#include <string>
#include <unistd.h>
#include <vector>

#include "Cryptography.h"

namespace {

constexpr int aes256 = QG_CIPHER_AES256;
constexpr int sha256 = QG_HASH_SHA256;

std::array<unsigned char, 32> key{1, 2, 3};
std::array<unsigned char, 16> iv{4, 5, 6};

/** What OpenSSL alone works with, fetched once. */
class Fetched : public BareOpenSsl
{
public:
    Fetched()
        : cipher(EVP_CIPHER_fetch(context, "AES-256-CBC", nullptr)),
          hash(EVP_MD_fetch(context, "SHA256", nullptr))
    {}
    ~Fetched()
    {
        EVP_MD_free(hash);
        EVP_CIPHER_free(cipher);
    }
    Fetched(const Fetched&) = delete;
    Fetched& operator=(const Fetched&) = delete;

    EVP_CIPHER* cipher;
    EVP_MD* hash;
};

/** Reads a file through a buffer, as any program does, and gives the pieces. */
template <typename Take>
void readPieces(const std::string& path, Take&& take)
{
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    std::vector<unsigned char> piece(128U << 10);
    for (ssize_t count = 0; (count = read(file, piece.data(), piece.size())) > 0;)
        take(piece.data(), static_cast<int>(count));
    close(file);
}

void FloorHashFile(benchmark::State& state)
{
    const LargeFiles files;
    const Fetched bare;
    for (auto _ : state) {
        unsigned char digest[EVP_MAX_MD_SIZE];
        EVP_MD_CTX* run = EVP_MD_CTX_new();
        EVP_DigestInit_ex2(run, bare.hash, nullptr);
        readPieces(files.source, [&](const unsigned char* piece, int length) {
            EVP_DigestUpdate(run, piece, static_cast<std::size_t>(length));
        });
        EVP_DigestFinal_ex(run, digest, nullptr);
        EVP_MD_CTX_free(run);
        benchmark::DoNotOptimize(digest);
    }
}

void HashFile(benchmark::State& state)
{
    LargeFiles files;
    const Toolkit toolkit;
    for (auto _ : state) {
        BINSTR digest = {};
        if (CRYPTHashFile(toolkit.context, sha256, files.source.data(), &digest) != 0)
            state.SkipWithError("the file is not hashed");
        ZR_BINSTR_Delete(toolkit.context, &digest);
    }
}

/** Writes as the toolkit does: a temporary file, flushed, that takes the target's place. */
void FloorEncryptFile(benchmark::State& state)
{
    const LargeFiles files;
    const Fetched bare;
    const std::string temporary = files.target + "-temporary";
    std::vector<unsigned char> encrypted((128U << 10) + EVP_MAX_BLOCK_LENGTH);
    for (auto _ : state) {
        const int target = open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        int length = 0;
        const auto give = [&] {
            if (write(target, encrypted.data(), static_cast<std::size_t>(length)) != length)
                state.SkipWithError("/dev/shm is full");
        };
        EVP_CIPHER_CTX* run = EVP_CIPHER_CTX_new();
        EVP_EncryptInit_ex2(run, bare.cipher, key.data(), iv.data(), nullptr);
        readPieces(files.source, [&](const unsigned char* piece, int count) {
            EVP_EncryptUpdate(run, encrypted.data(), &length, piece, count);
            give();
        });
        EVP_EncryptFinal_ex(run, encrypted.data(), &length);
        give();
        EVP_CIPHER_CTX_free(run);
        fsync(target);
        close(target);
        std::rename(temporary.c_str(), files.target.c_str());
    }
}

void EncryptFile(benchmark::State& state)
{
    LargeFiles files;
    const Toolkit toolkit;
    BINSTR keyRecord{key.data(), static_cast<int>(key.size())};
    BINSTR ivRecord{iv.data(), static_cast<int>(iv.size())};
    if (CRYPTSetKeyAndIV(toolkit.context, aes256, &keyRecord, &ivRecord) != 0)
        state.SkipWithError("the key is not set");
    for (auto _ : state)
        if (CRYPTEncryptFile(toolkit.context, files.source.data(), files.target.data()) != 0)
            state.SkipWithError("the file is not encrypted");
}

void FloorHash(benchmark::State& state)
{
    const Fetched bare;
    const std::vector<unsigned char> data(1024, 'x');
    for (auto _ : state) {
        unsigned char digest[EVP_MAX_MD_SIZE];
        EVP_Digest(data.data(), data.size(), digest, nullptr, bare.hash, nullptr);
        benchmark::DoNotOptimize(digest);
    }
}

void Hash(benchmark::State& state)
{
    const Toolkit toolkit;
    std::vector<unsigned char> data(1024, 'x');
    BINSTR input{data.data(), static_cast<int>(data.size())};
    for (auto _ : state) {
        BINSTR digest = {};
        if (CRYPTHash(toolkit.context, sha256, &input, &digest) != 0)
            state.SkipWithError("the data are not hashed");
        ZR_BINSTR_Delete(toolkit.context, &digest);
    }
}

BENCHMARK(FloorHashFile)->Unit(benchmark::kMillisecond);
BENCHMARK(HashFile)->Unit(benchmark::kMillisecond);
BENCHMARK(FloorEncryptFile)->Unit(benchmark::kMillisecond);
BENCHMARK(EncryptFile)->Unit(benchmark::kMillisecond);
BENCHMARK(FloorHash);
BENCHMARK(Hash);

} // namespace
