#pragma once

#include "toolkit/core/Charset.h"
#include "toolkit/core/Pkcs12Import.h"

namespace qgtk {

/** A certificate with the key that belongs to it, both in the contents of a file. */
struct PfxPair
{
    ByteView certificate;
    ByteView key;
};

/** What a file holds, sorted. The views are of the contents. */
struct PfxLists
{
    std::vector<ByteView> holders;     /**< certificates that a key is to be expected for */
    std::vector<ByteView> authorities; /**< certificates of issuers, which have no key here */
    std::vector<ByteView> keys;
};

/**
 * Sorts the certificates of a file. One that says it is an authority's, or is signed by itself, and has no
 * key in the file, neither by its identifier nor by its own public key, is an issuer's; all others are
 * holders'.
 */
PfxLists sortPfx(const Crypto& crypto, const PfxContents& contents);

/** A signing and a key-management pair; empty views for one that is not there. */
struct PfxHolder
{
    PfxPair signing;
    PfxPair management;
};

/**
 * The first pair whose certificate may sign (no key usage, or digitalSignature or nonRepudiation in it) and
 * the first of the others. Throws PfxNoPair when no certificate has its key.
 */
PfxHolder holderOf(const Crypto& crypto, const PfxContents& contents, Charset& charset);

} // namespace qgtk
