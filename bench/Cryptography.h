#pragma once

#include <openssl/provider.h>
#include <openssl/types.h>
#include <string>

#include "quillgate/binstr.h"
#include "samplepki/KeyPair.h"

/** A context of the open toolkit, through the library. Throws when it can't be loaded. */
class Toolkit
{
public:
    Toolkit();
    ~Toolkit();
    Toolkit(const Toolkit&) = delete;
    Toolkit& operator=(const Toolkit&) = delete;

    void* context = nullptr;
};

/** OpenSSL alone, in a library context of its own, as the toolkit has one. */
class BareOpenSsl
{
public:
    BareOpenSsl();
    ~BareOpenSsl();
    BareOpenSsl(const BareOpenSsl&) = delete;
    BareOpenSsl& operator=(const BareOpenSsl&) = delete;

    /** A certificate and a plain private key, decoded anew; the caller frees them. */
    X509* certificate(const samplepki::Bytes& der) const;
    EVP_PKEY* key(const samplepki::Bytes& plain) const;

    OSSL_LIB_CTX* context;

private:
    OSSL_PROVIDER* m_standard;
};

/** Three certificates of a path in DER, each with what those of the field carry. */
struct Path
{
    Path();

    samplepki::Bytes root;
    samplepki::Bytes ca;
    samplepki::Bytes leaf;
    samplepki::Bytes key; /**< the leaf's, a plain PKCS#8 PrivateKeyInfo */
    const samplepki::KeyPair& caKey;
};

/** The path of all benchmarks, made at the first call. The keys belong to the default context of that moment,
 * which must be the process's own. */
const Path& path();

/** A file in memory of 100 MiB and names beside it: what is measured is the work, not a disk. All are removed
 * at the end. */
class LargeFiles
{
public:
    /** Throws when there is no room. */
    LargeFiles();
    ~LargeFiles();
    LargeFiles(const LargeFiles&) = delete;
    LargeFiles& operator=(const LargeFiles&) = delete;

    std::string source = "/dev/shm/quillgate-bench-source";
    std::string message = "/dev/shm/quillgate-bench-message";
    std::string target = "/dev/shm/quillgate-bench-target";
};

/** Bytes as an argument, which stay whose they are. */
BINSTR record(const samplepki::Bytes& bytes);
