#pragma once

#include <functional>

#include "toolkit/core/Crypto.h"
#include "toolkit/core/DataInput.h"

namespace qgtk {

/** A cipher's number, see cipherOfCode, with a key and initial value of its lengths. */
struct CipherKey
{
    int algorithm;
    SecretBytes key;
    SecretBytes iv;
};

/** A fresh random key and initial value. Throws AlgorithmCodeUnknown, CryptoUnavailable. */
CipherKey makeCipherKey(const Crypto& crypto, int algorithm);

/** A given key and initial value. Throws AlgorithmCodeUnknown, CipherKeyLength, CryptoUnavailable. */
CipherKey checkedCipherKey(const Crypto& crypto, int algorithm, ByteView key, ByteView iv);

/** One pass of a cipher over data. */
struct CipherPass
{
    const CipherKey& key;
    bool encrypts;
    bool pads; /**< PKCS#7 padding in CBC; else the data must be whole blocks. The other modes never pad. */
};

/** Takes results piece by piece. */
using ByteSink = std::function<void(ByteView)>;

/**
 * Runs data through a cipher. Throws DataLength (encrypting: not whole blocks), NotDecryptable (decrypting:
 * not whole blocks, or the padding does not come out right) after some pieces were given; CryptoUnavailable,
 * and as DataInput and the sink do.
 */
void runPass(const Crypto& crypto, const CipherPass& pass, const DataInput& data, const ByteSink& sink);

/** runPass in memory. */
SecretBytes cipherBytes(const Crypto& crypto, const CipherPass& pass, ByteView data);

/** runPass from file to file, which may be the same; the target is written whole or not at all. */
void cipherFile(const Crypto& crypto, const CipherPass& pass, const std::string& source,
                const std::string& target);

} // namespace qgtk
