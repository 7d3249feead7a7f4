#pragma once

#include "toolkit/core/Context.h"

namespace qgtk {

/** decryptKey within the context's limits. */
SecretBytes openKey(Context& context, ByteView encrypted, std::string_view password);

/** Encrypts a plain key by the number of an algorithm, see protectionOfCode. */
Bytes sealKey(Context& context, int symAlg, ByteView plain, std::string_view password);

/**
 * Encrypts an encrypted key anew: PBES2 with the cipher that it had, so that whoever could read it still can.
 * Throws as decryptKey and encryptKey.
 */
Bytes changeKeyPassword(Context& context, ByteView encrypted, std::string_view oldPassword,
                        std::string_view newPassword);

/** Reads a certificate file. Throws as readFile, and CertDamaged. */
SecretBytes readCertificateFile(const std::string& path);

/** Reads a key file and opens it. Throws as readFile and decryptKey. */
SecretBytes readKeyFile(Context& context, const std::string& path, std::string_view password);

/** Writes a certificate. Throws as writeFile, and CertDamaged. */
void writeCertificateFile(const std::string& path, ByteView der);

/** Encrypts a plain key and writes it. Throws as sealKey and writeFile. */
void writeKeyFile(Context& context, int symAlg, const std::string& path, std::string_view password,
                  ByteView plain);

/** Deletes a key file that the password opens. Throws as readKeyFile and deleteFile. */
void deleteKeyFile(Context& context, const std::string& path, std::string_view password);

} // namespace qgtk
