#include "toolkit/core/AlgorithmCodes.h"

#include <algorithm>
#include <array>

#include "quillgate/algorithms.h"

namespace qgtk {

namespace {

struct SymmetricRow
{
    int code;
    KeyCipher cipher;
};

constexpr std::array symmetricRows{SymmetricRow{QG_CIPHER_SEED, KeyCipher::Seed},
                                   SymmetricRow{QG_CIPHER_AES256, KeyCipher::Aes256},
                                   SymmetricRow{QG_CIPHER_ARIA256, KeyCipher::Aria256}};

/** A number and what OpenSSL calls it. */
struct NameRow
{
    int code;
    const char* name;
};

constexpr std::array hashRows{
    NameRow{QG_HASH_SHA1, "SHA1"},         NameRow{QG_HASH_SHA256, "SHA256"},
    NameRow{QG_HASH_SHA512, "SHA512"},     NameRow{QG_HASH_SHA384, "SHA384"},
    NameRow{QG_HASH_SHA224, "SHA224"},     NameRow{QG_HASH_SHA3_256, "SHA3-256"},
    NameRow{QG_HASH_SHA3_384, "SHA3-384"}, NameRow{QG_HASH_SHA3_512, "SHA3-512"},
};

constexpr std::array cipherRows{
    NameRow{QG_CIPHER_3DES, "DES-EDE3"},    NameRow{QG_CIPHER_SEED, "SEED"},
    NameRow{QG_CIPHER_AES256, "AES-256"},   NameRow{QG_CIPHER_AES128, "AES-128"},
    NameRow{QG_CIPHER_AES192, "AES-192"},   NameRow{QG_CIPHER_ARIA128, "ARIA-128"},
    NameRow{QG_CIPHER_ARIA192, "ARIA-192"}, NameRow{QG_CIPHER_ARIA256, "ARIA-256"},
};

constexpr std::array modeRows{
    NameRow{QG_MODE_CBC, "-CBC"},
    NameRow{QG_MODE_CFB, "-CFB"},
    NameRow{QG_MODE_OFB, "-OFB"},
    NameRow{QG_MODE_CTR, "-CTR"},
};

/** Bits of an algorithm's number that hold the mode. */
constexpr int modeBits = 15;

template <std::size_t count>
const char* nameOf(const std::array<NameRow, count>& rows, int code)
{
    const auto row = std::ranges::find(rows, code, &NameRow::code);
    require(row != rows.end(), Code::AlgorithmCodeUnknown);
    return row->name;
}

} // namespace

KeyProtection protectionOfCode(int symAlg, int iterations)
{
    const auto row = std::ranges::find(symmetricRows, symAlg, &SymmetricRow::code);
    require(row != symmetricRows.end(), Code::AlgorithmCodeUnknown);
    KeyProtection protection;
    protection.cipher = row->cipher;
    protection.iterations = iterations;
    return protection;
}

const char* digestOfCode(int hashAlg)
{
    return nameOf(hashRows, hashAlg);
}

std::string cipherOfCode(int symAlg)
{
    const bool counterless = symAlg == QG_CIPHER_3DES + QG_MODE_CTR || symAlg == QG_CIPHER_SEED + QG_MODE_CTR;
    require(symAlg > 0 && !counterless, Code::AlgorithmCodeUnknown);
    return std::string(nameOf(cipherRows, symAlg & ~modeBits)) + nameOf(modeRows, symAlg & modeBits);
}

} // namespace qgtk
