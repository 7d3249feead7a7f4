#pragma once

#include <string>
#include <vector>

/**
 * PFX files put together by hand, in forms that no program writes. All values are DER.
 */
namespace pfx {

/** A file of contents, see below; with an integrity check as it stands unless that is empty. */
std::string file(const std::vector<std::string>& contents, const std::string& mac = {});

/** A content that is not encrypted. */
std::string plain(const std::vector<std::string>& bags);

/** An encrypted content. */
std::string encrypted(const std::string& algorithm, const std::string& cipherText);

/** Bags, with the content of their attributes' set. */
std::string certificate(const std::string& der);
std::string key(const std::string& privateKeyInfo, const std::string& attributes = {});
std::string sealedKey(const std::string& encryptedPrivateKeyInfo);
std::string nested(const std::vector<std::string>& bags);
std::string bag(const std::string& oid, const std::string& value, const std::string& attributes = {});

/** Safe contents as they stand inside an encrypted content. */
std::string safe(const std::vector<std::string>& bags);

/** An integrity check. */
std::string mac(const std::string& algorithm, const std::string& value, const std::string& salt,
                const std::string& iterations);

/** An algorithm of PKCS#12's own, with an INTEGER of any content as its count. */
std::string algorithm(const std::string& oid, const std::string& count, const std::string& salt = "12345678");

/** The bytes that the check of a file of these contents is made over. */
std::string checkedBytes(const std::vector<std::string>& contents);

} // namespace pfx
