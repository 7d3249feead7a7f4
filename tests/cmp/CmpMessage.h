#pragma once

#include <string>
#include <vector>

#include "samplepki/Der.h"

/** Bodies of messages (RFC 4210, section 5.1.2). */
enum Body
{
    InitialRequest = 0,
    KeyUpdate = 7,
    KeyRecovery = 9,
    KeyRecovered = 10,
    Revocation = 11,
    Confirm = 19,
    Error = 23,
    CertificateConfirm = 24
};

/** An element of DER. */
struct Element
{
    unsigned char tag = 0;
    samplepki::Bytes whole;
    samplepki::Bytes content;
};

/** The elements that stand one behind the other; throws std::invalid_argument for anything else. */
std::vector<Element> elementsOf(const samplepki::Bytes& der);

/** An element within others: by its place on each level. Throws std::out_of_range. */
Element at(const samplepki::Bytes& der, const std::vector<std::size_t>& places);

/** The element of a sequence's content that has a tag; empty when there is none. */
Element tagged(const samplepki::Bytes& content, unsigned char tag);

/** The number of a message's body. */
int bodyOf(const samplepki::Bytes& message);

/** What a request asks for. */
struct Asked
{
    samplepki::Bytes publicKey;  /**< SubjectPublicKeyInfo; empty in a revocation */
    samplepki::Bytes extensions; /**< SEQUENCE OF Extension; empty: none */
    samplepki::Bytes serial;     /**< of the certificate to be replaced or revoked; content of the INTEGER */
};
Asked askedBy(const samplepki::Bytes& message);
