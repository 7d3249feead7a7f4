#include "toolkit/core/KeyOperations.h"

#include "toolkit/core/AlgorithmCodes.h"
#include "toolkit/core/Media.h"

namespace qgtk {

SecretBytes openKey(Context& context, ByteView encrypted, std::string_view password)
{
    return decryptKey(context.crypto(), encrypted, password, context.configuration().maxIterations);
}

Bytes sealKey(Context& context, int symAlg, ByteView plain, std::string_view password)
{
    const KeyProtection protection = protectionOfCode(symAlg, context.configuration().keyIterations);
    return encryptKey(context.crypto(), plain, password, protection);
}

Bytes changeKeyPassword(Context& context, ByteView encrypted, std::string_view oldPassword,
                        std::string_view newPassword)
{
    const SecretBytes plain = openKey(context, encrypted, oldPassword);
    KeyProtection protection;
    protection.cipher = cipherOfKey(encrypted);
    protection.iterations = context.configuration().keyIterations;
    return encryptKey(context.crypto(), plain, newPassword, protection);
}

SecretBytes readCertificateFile(const std::string& path)
{
    SecretBytes der = readFile(path, maxObjectLength);
    certificateLength(der);
    return der;
}

SecretBytes readKeyFile(Context& context, const std::string& path, std::string_view password)
{
    return openKey(context, readFile(path, maxObjectLength), password);
}

void writeCertificateFile(const std::string& path, ByteView der)
{
    certificateLength(der);
    writeFile(path, der);
}

void writeKeyFile(Context& context, int symAlg, const std::string& path, std::string_view password,
                  ByteView plain)
{
    writeFile(path, sealKey(context, symAlg, plain, password));
}

void deleteKeyFile(Context& context, const std::string& path, std::string_view password)
{
    readKeyFile(context, path, password);
    deleteFile(path);
}

} // namespace qgtk
