#include "samplepki/KeyFile.h"

#include <stdexcept>

#include "toolkit/core/PrivateKey.h"

namespace samplepki {

namespace {

struct Form
{
    qgtk::KeyScheme scheme;
    qgtk::KeyCipher cipher;
};

/** What the toolkit calls each KeyCipher, in the order of that enumeration. */
constexpr Form forms[] = {
    {qgtk::KeyScheme::Pbes2, qgtk::KeyCipher::Seed},
    {qgtk::KeyScheme::Pbes2, qgtk::KeyCipher::Aria128},
    {qgtk::KeyScheme::Pbes2, qgtk::KeyCipher::Aria192},
    {qgtk::KeyScheme::Pbes2, qgtk::KeyCipher::Aria256},
    {qgtk::KeyScheme::Pbes2, qgtk::KeyCipher::Aes128},
    {qgtk::KeyScheme::Pbes2, qgtk::KeyCipher::Aes192},
    {qgtk::KeyScheme::Pbes2, qgtk::KeyCipher::Aes256},
    {qgtk::KeyScheme::Pbes2, qgtk::KeyCipher::TripleDes},
    {qgtk::KeyScheme::Pbkdf1Seed, qgtk::KeyCipher::Seed},
    {qgtk::KeyScheme::Pbkdf1SeedOld, qgtk::KeyCipher::Seed},
};

qgtk::KeyPrf pseudoRandomFunction(const std::string& hash)
{
    if (hash == "SHA1")
        return qgtk::KeyPrf::Sha1;
    if (hash == "SHA256")
        return qgtk::KeyPrf::Sha256;
    throw std::invalid_argument("no such hash for a key file: " + hash);
}

} // namespace

Bytes encryptKeyFile(const Bytes& privateKeyInfo, const std::string& password, const KeyFileForm& form)
{
    static const qgtk::Crypto crypto;
    const Form& entry = forms[static_cast<std::size_t>(form.cipher)];
    const qgtk::KeyProtection protection{.scheme = entry.scheme,
                                         .cipher = entry.cipher,
                                         .prf = pseudoRandomFunction(form.hash),
                                         .iterations = static_cast<int>(form.iterations),
                                         .saltLength = saltSize};
    return Bytes(qgtk::textOf(qgtk::encryptKey(crypto, qgtk::bytesOf(privateKeyInfo), password, protection)));
}

} // namespace samplepki
