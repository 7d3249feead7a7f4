#include "toolkit/core/AlgorithmCodes.h"

#include <algorithm>
#include <array>

namespace qgtk {

namespace {

struct SymmetricRow
{
    int code;
    KeyCipher cipher;
};

constexpr std::array symmetricRows{SymmetricRow{48, KeyCipher::Seed}, SymmetricRow{64, KeyCipher::Aes256},
                                   SymmetricRow{224, KeyCipher::Aria256}};

constexpr std::array hashCodes{1, 4, 5};

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

void checkHashCode(int hashAlg)
{
    require(std::ranges::find(hashCodes, hashAlg) != hashCodes.end(), Code::AlgorithmCodeUnknown);
}

} // namespace qgtk
