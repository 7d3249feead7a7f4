#pragma once

#include <climits>
#include <memory>
#include <new>
#include <openssl/evp.h>
#include <openssl/kdf.h>
#include <openssl/x509.h>
#include <openssl/x509v3.h>

#include "toolkit/core/Bytes.h"

namespace qgtk {

/** Deleter that calls an OpenSSL release function. */
template <auto Release>
struct Releaser
{
    template <typename T>
    void operator()(T* object) const
    {
        Release(object);
    }
};

/** Owner of an OpenSSL object. */
template <typename T, auto Release>
using Handle = std::unique_ptr<T, Releaser<Release>>;

using AlgorithmHandle = Handle<X509_ALGOR, X509_ALGOR_free>;
using CipherHandle = Handle<EVP_CIPHER, EVP_CIPHER_free>;
using CipherRun = Handle<EVP_CIPHER_CTX, EVP_CIPHER_CTX_free>;
using DigestHandle = Handle<EVP_MD, EVP_MD_free>;
using DigestRun = Handle<EVP_MD_CTX, EVP_MD_CTX_free>;
using EncryptedKeyHandle = Handle<X509_SIG, X509_SIG_free>;
using KdfHandle = Handle<EVP_KDF, EVP_KDF_free>;
using KdfRun = Handle<EVP_KDF_CTX, EVP_KDF_CTX_free>;
using KeyHandle = Handle<EVP_PKEY, EVP_PKEY_free>;
using ObjectHandle = Handle<ASN1_OBJECT, ASN1_OBJECT_free>;
using CrlHandle = Handle<X509_CRL, X509_CRL_free>;
using StoreHandle = Handle<X509_STORE, X509_STORE_free>;
using X509Handle = Handle<X509, X509_free>;
using StringHandle = Handle<ASN1_STRING, ASN1_STRING_free>;

/** Takes an object that an OpenSSL allocation gave, or throws std::bad_alloc when it gave none. */
template <typename H>
H owned(typename H::pointer object)
{
    if (!object)
        throw std::bad_alloc();
    return H(object);
}

/**
 * Runs a d2i function over bytes. Null when they are not that structure; bytes behind it are ignored, as
 * every reader of such files does.
 */
template <typename H, typename D2i>
H decodeDer(D2i d2i, ByteView der)
{
    const unsigned char* position = der.data();
    if (der.empty() || der.size() > static_cast<std::size_t>(LONG_MAX))
        return nullptr;
    return H(d2i(nullptr, &position, static_cast<long>(der.size())));
}

/** Runs an i2d function into a buffer of the given kind. Throws std::bad_alloc. */
template <typename Buffer, typename I2d, typename T>
Buffer encodeDer(I2d i2d, T* object)
{
    const int length = i2d(object, nullptr);
    if (length < 0)
        throw std::bad_alloc();
    Buffer der(static_cast<std::size_t>(length));
    unsigned char* position = der.data();
    i2d(object, &position);
    return der;
}

/** The content bytes of an ASN.1 string. */
inline ByteView contentOf(const ASN1_STRING* string)
{
    return {ASN1_STRING_get0_data(string), static_cast<std::size_t>(ASN1_STRING_length(string))};
}

} // namespace qgtk
