#ifndef QUILLGATE_ALGORITHMS_H
#define QUILLGATE_ALGORITHMS_H

/**
 * @file
 * Numbers of algorithms.
 */

/**
 * @defgroup algorithms Algorithms
 * @ingroup toolkit
 *
 * Numbers as the open toolkit understands them on both sides. They mean nothing to this layer, which hands
 * them on: another toolkit has numbers of its own.
 * @{
 */

/**
 * Hashes, for nHashAlg and, as HMAC with that hash, for nMACAlg. 0 stands for the hash of the context, which
 * ZR_SetHashAlg sets and which is SHA-256 at first. Digest lengths are 20, 32, 64, 48, 28, 32, 48 and 64
 * bytes.
 */
enum
{
    QG_HASH_CONTEXT = 0,   /**< the hash of the context */
    QG_HASH_SHA1 = 1,      /**< SHA-1, for what is old; broken for signatures */
    QG_HASH_SHA256 = 4,    /**< SHA-256 */
    QG_HASH_SHA512 = 5,    /**< SHA-512 */
    QG_HASH_SHA384 = 6,    /**< SHA-384 */
    QG_HASH_SHA224 = 7,    /**< SHA-224 */
    QG_HASH_SHA3_256 = 8,  /**< SHA3-256 */
    QG_HASH_SHA3_384 = 9,  /**< SHA3-384 */
    QG_HASH_SHA3_512 = 10, /**< SHA3-512 */
};

/**
 * Ciphers, for nSymAlg. Keys have 24, 16, 32, 16, 24, 16, 24 and 32 bytes. A private key is encrypted with
 * SEED, AES-256 or ARIA-256 alone. For raw encryption a mode is added, as in QG_CIPHER_SEED + QG_MODE_CFB.
 *
 * The IV has one block: 16 bytes, 8 for 3DES. CBC pads; the other modes give as many bytes as they get. SEED
 * and 3DES have no CTR. ECB shows which blocks are equal, and is not offered.
 */
enum
{
    QG_CIPHER_3DES = 32,     /**< Triple DES, for what is old */
    QG_CIPHER_SEED = 48,     /**< SEED */
    QG_CIPHER_AES256 = 64,   /**< AES, key of 256 bits */
    QG_CIPHER_AES128 = 80,   /**< AES, key of 128 bits */
    QG_CIPHER_AES192 = 96,   /**< AES, key of 192 bits */
    QG_CIPHER_ARIA128 = 192, /**< ARIA, key of 128 bits */
    QG_CIPHER_ARIA192 = 208, /**< ARIA, key of 192 bits */
    QG_CIPHER_ARIA256 = 224, /**< ARIA, key of 256 bits */

    QG_MODE_CBC = 0, /**< chained blocks, padded */
    QG_MODE_CFB = 1, /**< full blocks fed back */
    QG_MODE_OFB = 2, /**< output fed back */
    QG_MODE_CTR = 3, /**< counter */
};

/** Padding of CBC, for CRYPTSetPaddingType. */
enum
{
    QG_PADDING_NONE = 0,  /**< data are whole blocks */
    QG_PADDING_PKCS7 = 1, /**< RFC 5652, section 6.3; the setting of a new context */
};

/** What RSA does, for CRYPTSetRSAVersion. */
enum
{
    QG_RSA_V15 = 1, /**< RSASSA-PKCS1-v1_5 and RSAES-PKCS1-v1_5; the setting of a new context */
    QG_RSA_V2 = 2,  /**< RSASSA-PSS and RSAES-OAEP, RFC 8017 */
};

/** Key pairs, for nAlg of CRYPTGenKeyPair: the size in bits. */
enum
{
    QG_KEYPAIR_RSA2048 = 2048, /**< RSA */
    QG_KEYPAIR_RSA3072 = 3072, /**< RSA */
    QG_KEYPAIR_RSA4096 = 4096, /**< RSA */
    QG_KEYPAIR_P256 = 256,     /**< elliptic curves of FIPS 186 */
    QG_KEYPAIR_P384 = 384,     /**< likewise */
    QG_KEYPAIR_P521 = 521,     /**< likewise */
};

/** Which half of a pair is given, for nKeyType of CRYPTAsymEncrypt and CRYPTAsymDecrypt. */
enum
{
    QG_KEY_PUBLIC = 1,  /**< a certificate or a SubjectPublicKeyInfo, DER */
    QG_KEY_PRIVATE = 2, /**< a plain PrivateKeyInfo, DER */
};

/** Key agreements, for nKeyType of CRYPTGenSharedKey. */
enum
{
    QG_AGREEMENT_ECDH = 1, /**< elliptic curves */
    QG_AGREEMENT_DH = 2,   /**< finite fields, the groups of RFC 7919 among them */
};

/** Labels, for nType of PEMEncode (RFC 7468). */
enum
{
    QG_PEM_CERTIFICATE = 1,           /**< CERTIFICATE */
    QG_PEM_PRIVATE_KEY = 2,           /**< PRIVATE KEY */
    QG_PEM_ENCRYPTED_PRIVATE_KEY = 3, /**< ENCRYPTED PRIVATE KEY */
    QG_PEM_PUBLIC_KEY = 4,            /**< PUBLIC KEY */
    QG_PEM_CERTIFICATE_REQUEST = 5,   /**< CERTIFICATE REQUEST */
    QG_PEM_CRL = 6,                   /**< X509 CRL */
    QG_PEM_CMS = 7,                   /**< CMS */
    QG_PEM_PKCS7 = 8,                 /**< PKCS7 */
};

/** @} */

#endif
