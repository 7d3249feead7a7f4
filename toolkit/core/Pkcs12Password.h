#pragma once

#include <optional>
#include <vector>

#include "toolkit/core/Bytes.h"

namespace qgtk {

/** A password as the key derivations in PFX files take it. */
struct PasswordReading
{
    SecretBytes
        wide; /**< UTF-16, big-endian, terminated (RFC 7292, B.1); may be empty: PKCS#12's own derivation */
    SecretBytes narrow; /**< PBKDF1 and PBKDF2 */
};

/**
 * How a password can have been meant by the program that wrote a file, likeliest first, each once. The bytes
 * may be UTF-8 or EUC-KR (CP949), here and there; programs also widen the bytes of either one by one. An
 * empty password is written as two zero bytes by some and as none by others. Mozilla's library hands PBKDF1
 * the wide form, so each comes once more as that. An ASCII password has one wide form.
 */
std::vector<PasswordReading> passwordReadings(std::string_view password);

/**
 * The reading to write with: UTF-16 and UTF-8 of the text, as other programs take what is typed. Bytes that
 * are UTF-8 and EUC-KR at once are taken as what has Hangul in it.
 */
PasswordReading writtenReading(std::string_view password);

/**
 * The number of the first reading whose part, wide or narrow, passes a test; nothing when none does. Readings
 * that have the part in common are tried once.
 */
template <typename Test>
std::optional<std::size_t> firstReading(const std::vector<PasswordReading>& readings,
                                        SecretBytes PasswordReading::*part, Test&& passes)
{
    for (std::size_t i = 0; i < readings.size(); ++i) {
        bool isNew = true;
        for (std::size_t j = 0; j < i; ++j)
            isNew = isNew && readings[j].*part != readings[i].*part;
        if (isNew && passes(readings[i]))
            return i;
    }
    return std::nullopt;
}

} // namespace qgtk
