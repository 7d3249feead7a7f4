#pragma once

#include "Argument.h"

/** Well-formed outputs of operations, made once a process by the open toolkit and openssl. */
struct Samples
{
    static const Samples& get();

    /** All of them. */
    static std::vector<const Sample*> all();

    /** What messages are about. */
    static constexpr const char* content = "A letter\r\nof two lines\n";
    static constexpr const char* password = "correct horse";
    static constexpr const char* idNumber = "1234561234567";

    Sample certificate; /**< of the holder whom messages are for, and who signs them; an RSA key */
    Sample key;
    Sample publicKey;
    Sample otherCertificate; /**< of another holder of the same authority */
    Sample otherKey;
    Sample authority;
    Sample root;
    Sample damagedExtension;      /**< a certificate of the first key with an extension that is none */
    Sample otherDamagedExtension; /**< and one of the other holder's key */
    Sample withResponder;         /**< a certificate that names a responder, where nobody is */
    Sample certificates;          /**< the first two in a list */
    Sample authorities;           /**< authority and root in a list */
    Sample curveKey;              /**< of an elliptic curve */
    Sample otherCurvePublic;      /**< the other half of an agreement with it */
    Sample identified;            /**< certificate with an identity value */
    Sample identifiedRoot;        /**< its authorities */
    Sample identifiedAuthority;
    Sample identifiedKey;      /**< its key */
    Sample identityRandom;     /**< and the random value in it */
    Sample encryptedKey;       /**< of the first certificate */
    Sample signature;          /**< over the content, by the first certificate's key */
    Sample signedData;         /**< by the same holder, as all that follow */
    Sample detachedData;       /**< without the content */
    Sample envelopedData;      /**< for the same holder */
    Sample signedAndEnveloped; /**< both */
    Sample envelopeBeside;     /**< for the same holder, whose content is beside it */
    Sample encryptedBeside;    /**< that content, encrypted */
    Sample letter;             /**< a signed message in an envelope */
    Sample symmetricKey;       /**< of AES-256 */
    Sample initialValue;
    Sample encryptedData;  /**< under that key */
    Sample encryptedBytes; /**< for the first public key, without a form */
    Sample cipherText;     /**< under the key and initial value, without a form */
    Sample mac;            /**< over the content, with the password and SHA-256 */
    Sample pfx;            /**< one pair */
    Sample rootList;       /**< revocation list of the root */
    Sample authorityList;  /**< of the authority */
    Sample statusRequest;  /**< about the first certificate */
    Sample statusResponse; /**< which says that it is good */
    Sample stampRequest;   /**< about the content */
    Sample stampResponse;  /**< to it */
    Sample stampToken;     /**< in it */
    Sample signatureStamp; /**< token over the signature of the signed message */
    Sample challenge;
    Sample challengeAnswer; /**< by the first holder */
    Sample objects;         /**< list of two */
    Sample keys;            /**< list of the first two keys */
    Sample pairTypes;       /**< list of a signing and a key-management type */
    Sample base64;
    Sample pem;
    Sample text; /**< the content */
};

/** The time stamp server's response to a request. */
std::string stampResponseTo(const std::string& request);
