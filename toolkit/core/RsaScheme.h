#pragma once

namespace qgtk {

/** What RSA keys do: the forms of PKCS#1 version 1.5, or those of version 2 (RFC 8017). */
enum class RsaScheme
{
    V15, /**< RSASSA-PKCS1-v1_5, RSAES-PKCS1-v1_5 */
    V2   /**< RSASSA-PSS, RSAES-OAEP */
};

} // namespace qgtk
