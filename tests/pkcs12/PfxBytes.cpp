#include "PfxBytes.h"

#include "samplepki/Der.h"

namespace der = samplepki::der;

namespace pfx {

namespace {

std::string joined(const std::vector<std::string>& parts)
{
    std::string bytes;
    for (const std::string& part : parts)
        bytes += part;
    return bytes;
}

std::string data(const std::string& bytes)
{
    return der::sequence(
        {der::oid("1.2.840.113549.1.7.1"), der::context(0, der::element(der::OctetString, bytes))});
}

} // namespace

std::string checkedBytes(const std::vector<std::string>& contents)
{
    return der::sequence({joined(contents)});
}

std::string file(const std::vector<std::string>& contents, const std::string& mac)
{
    return der::sequence({der::integer(3), data(checkedBytes(contents)), mac});
}

std::string plain(const std::vector<std::string>& bags)
{
    return data(safe(bags));
}

std::string encrypted(const std::string& algorithm, const std::string& cipherText)
{
    const std::string inner =
        der::sequence({der::oid("1.2.840.113549.1.7.1"), algorithm, der::context(0, cipherText, false)});
    return der::sequence(
        {der::oid("1.2.840.113549.1.7.6"), der::context(0, der::sequence({der::integer(0), inner}))});
}

std::string bag(const std::string& oid, const std::string& value, const std::string& attributes)
{
    return der::sequence({der::oid(oid), der::context(0, value),
                          attributes.empty() ? std::string() : der::element(der::Set, attributes)});
}

std::string certificate(const std::string& der)
{
    return bag("1.2.840.113549.1.12.10.1.3",
               der::sequence({der::oid("1.2.840.113549.1.9.22.1"),
                              der::context(0, der::element(der::OctetString, der))}));
}

std::string key(const std::string& privateKeyInfo, const std::string& attributes)
{
    return bag("1.2.840.113549.1.12.10.1.1", privateKeyInfo, attributes);
}

std::string sealedKey(const std::string& encryptedPrivateKeyInfo)
{
    return bag("1.2.840.113549.1.12.10.1.2", encryptedPrivateKeyInfo);
}

std::string nested(const std::vector<std::string>& bags)
{
    return bag("1.2.840.113549.1.12.10.1.6", safe(bags));
}

std::string safe(const std::vector<std::string>& bags)
{
    return der::sequence({joined(bags)});
}

std::string mac(const std::string& algorithm, const std::string& value, const std::string& salt,
                const std::string& iterations)
{
    return der::sequence({der::sequence({algorithm, der::element(der::OctetString, value)}),
                          der::element(der::OctetString, salt), der::element(der::Integer, iterations)});
}

std::string algorithm(const std::string& oid, const std::string& count, const std::string& salt)
{
    return der::sequence({der::oid(oid), der::sequence({der::element(der::OctetString, salt),
                                                        der::element(der::Integer, count)})});
}

} // namespace pfx
