#pragma once

#include <string>

/** Lower-case hexadecimal SHA-256 of length bytes at data; empty text for an empty input. */
std::string sha256(const char* data, int length);

/**
 * Proves that a plain PKCS#8 key belongs to a certificate: signs a random text with the one and verifies the
 * signature with the other. Answers an empty text for success, else what went wrong.
 */
std::string proveKey(const char* certificate, int certificateLength, const char* key, int keyLength);
