#pragma once

#include "toolkit/core/Errors.h"
#include "toolkit/core/KeyProtection.h"

namespace qgtk {

/** Begins to encrypt or decrypt. Throws CryptoUnavailable. */
inline CipherRun startCipher(const CipherSetup& setup, bool encrypt)
{
    CipherRun run = owned<CipherRun>(EVP_CIPHER_CTX_new());
    require(EVP_CipherInit_ex2(run.get(), setup.cipher.get(), setup.key.data(), setup.iv.data(), encrypt,
                               nullptr) == 1,
            Code::CryptoUnavailable);
    return run;
}

/** Runs all the data, less than INT_MAX bytes, through a cipher. False when the padding does not come out
 * right. */
template <typename Buffer>
bool runCipher(EVP_CIPHER_CTX* run, ByteView data, Buffer& result)
{
    result.resize(data.size() + EVP_MAX_BLOCK_LENGTH);
    int body = 0;
    int tail = 0;
    const bool done =
        EVP_CipherUpdate(run, result.data(), &body, data.data(), static_cast<int>(data.size())) == 1 &&
        EVP_CipherFinal_ex(run, result.data() + body, &tail) == 1;
    result.resize(done ? static_cast<std::size_t>(body + tail) : 0);
    return done;
}

} // namespace qgtk
