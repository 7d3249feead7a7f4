#include "toolkit/core/SymmetricCipher.h"

#include "toolkit/core/AlgorithmCodes.h"
#include "toolkit/core/Errors.h"

namespace qgtk {

namespace {

CipherHandle cipherOf(const Crypto& crypto, int algorithm)
{
    return crypto.cipher(cipherOfCode(algorithm).c_str());
}

std::size_t keyLength(const CipherHandle& cipher)
{
    return static_cast<std::size_t>(EVP_CIPHER_get_key_length(cipher.get()));
}

std::size_t ivLength(const CipherHandle& cipher)
{
    return static_cast<std::size_t>(EVP_CIPHER_get_iv_length(cipher.get()));
}

SecretBytes copyOf(ByteView bytes)
{
    return {bytes.begin(), bytes.end()};
}

CipherRun startPass(const CipherHandle& cipher, const CipherPass& pass)
{
    CipherRun run = owned<CipherRun>(EVP_CIPHER_CTX_new());
    require(EVP_CipherInit_ex2(run.get(), cipher.get(), pass.key.key.data(), pass.key.iv.data(),
                               pass.encrypts ? 1 : 0, nullptr) == 1,
            Code::CryptoUnavailable);
    EVP_CIPHER_CTX_set_padding(run.get(), pass.pads ? 1 : 0);
    return run;
}

} // namespace

CipherKey makeCipherKey(const Crypto& crypto, int algorithm)
{
    const CipherHandle cipher = cipherOf(crypto, algorithm);
    const CipherRun run = owned<CipherRun>(EVP_CIPHER_CTX_new());
    CipherKey made{algorithm, SecretBytes(keyLength(cipher)), SecretBytes(ivLength(cipher))};
    // The cipher makes its own key: those of 3DES have parity bits.
    const bool keyMade = EVP_EncryptInit_ex2(run.get(), cipher.get(), nullptr, nullptr, nullptr) == 1 &&
                         EVP_CIPHER_CTX_rand_key(run.get(), made.key.data()) == 1;
    require(keyMade, Code::CryptoUnavailable);
    crypto.random(made.iv);
    return made;
}

CipherKey checkedCipherKey(const Crypto& crypto, int algorithm, ByteView key, ByteView iv)
{
    const CipherHandle cipher = cipherOf(crypto, algorithm);
    require(key.size() == keyLength(cipher) && iv.size() == ivLength(cipher), Code::CipherKeyLength);
    return {algorithm, copyOf(key), copyOf(iv)};
}

void runPass(const Crypto& crypto, const CipherPass& pass, const DataInput& data, const ByteSink& sink)
{
    const CipherHandle cipher = cipherOf(crypto, pass.key.algorithm);
    const CipherRun run = startPass(cipher, pass);
    SecretBytes result(EVP_MAX_BLOCK_LENGTH);
    int length = 0;
    data.forEachPiece([&](ByteView piece) {
        if (result.size() < piece.size() + EVP_MAX_BLOCK_LENGTH)
            result.resize(piece.size() + EVP_MAX_BLOCK_LENGTH);
        require(EVP_CipherUpdate(run.get(), result.data(), &length, piece.data(),
                                 static_cast<int>(piece.size())) == 1,
                Code::CryptoUnavailable);
        sink(ByteView(result).first(static_cast<std::size_t>(length)));
    });
    require(EVP_CipherFinal_ex(run.get(), result.data(), &length) == 1,
            pass.encrypts ? Code::DataLength : Code::NotDecryptable);
    sink(ByteView(result).first(static_cast<std::size_t>(length)));
}

SecretBytes cipherBytes(const Crypto& crypto, const CipherPass& pass, ByteView data)
{
    SecretBytes result;
    result.reserve(data.size() + EVP_MAX_BLOCK_LENGTH);
    runPass(crypto, pass, data,
            [&](ByteView piece) { result.insert(result.end(), piece.begin(), piece.end()); });
    return result;
}

void cipherFile(const Crypto& crypto, const CipherPass& pass, const std::string& source,
                const std::string& target)
{
    FileTarget file(target);
    runPass(crypto, pass, source, [&](ByteView piece) { file.write(piece); });
    file.commit();
}

} // namespace qgtk
