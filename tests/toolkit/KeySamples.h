#pragma once

#include <string>

#include "toolkit/core/PrivateKey.h"

/** Bytes from hexadecimal text; blanks are passed over. */
qgtk::Bytes fromHex(const std::string& text);

/** Lower-case hexadecimal text. */
std::string toHex(qgtk::ByteView bytes);

/** A plain RSA-2048 key in PKCS#8, made once a process. */
const qgtk::SecretBytes& rsaKey();

/** The same with the random value 01 02 .. 13 00, whose last byte is zero on purpose. */
const qgtk::SecretBytes& rsaKeyWithRandom();

/** One OpenSSL context for all tests of the process. */
const qgtk::Crypto& testCrypto();
