#pragma once

#include <openssl/objects.h>
#include <string>

namespace qgtk {

/** Object identifiers of the Korean PKIs, which OpenSSL has no or only wrong names for. */
namespace oids {
inline constexpr const char* pbes2 = "1.2.840.113549.1.5.13";
inline constexpr const char* pbkdf1Seed = "1.2.410.200004.1.15";
inline constexpr const char* seedCbc = "1.2.410.200004.1.4";
inline constexpr const char* identifyData = "1.2.410.200004.10.1.1";
inline constexpr const char* virtualId = "1.2.410.200004.10.1.1.1";
inline constexpr const char* encryptedVirtualId = "1.2.410.200004.10.1.1.2";
inline constexpr const char* randomNumber = "1.2.410.200004.10.1.1.3";
} // namespace oids

/**
 * The dotted form of an object identifier. Objects are compared by it: registering them with OBJ_create would
 * change the whole process.
 */
inline std::string dottedOid(const ASN1_OBJECT* object)
{
    char text[256] = {};
    OBJ_obj2txt(text, sizeof(text), object, 1);
    return text;
}

} // namespace qgtk
