#pragma once

#include <span>

#include "samplepki/Media.h"

/** The certificate authorities below the two roots. */
enum class Issuer
{
    Yessign,
    Kica,
    SignKorea,
    Government,
    Defence,
};

/** The two roots. */
enum class Root
{
    Accredited,
    Government,
};

/** What all certificates of an authority have in common. */
struct IssuerPlan
{
    Root root;
    const char* subject;  /**< leaf-first name */
    const char* crlPoint; /**< address of the revocation list */
    const char* ocsp;     /**< address of the status service; empty for none */
    const char* cps;      /**< address of the practice statement */
};

/** Where a holder's files lie. */
enum class Place
{
    Npki,       /**< a directory of its own below the authority's folder */
    Gpki,       /**< flat pairs in class1 or class2 */
    MpkiPairs,  /**< flat pairs */
    MpkiHolder, /**< a directory of its own */
};

/** The state in which a certificate is to be today. */
enum class State
{
    Valid,
    Renewal, /**< about to expire */
    Expired,
};

/** The key-management pair of a holder. */
enum class KeyManagement
{
    None,
    SamePassword,
    OwnPassword,
};

/** One holder of the sample data. */
struct HolderPlan
{
    Place place;
    const char* folder = ""; /**< authority's folder (NPKI) or class (GPKI) */
    samplepki::Spelling spelling = samplepki::Spelling::Usual;
    Issuer issuer;
    const char* subject; /**< leaf-first name, UTF-8 */
    samplepki::StringType stringType = samplepki::StringType::Utf8;
    State state = State::Valid;
    samplepki::KeyKind key = samplepki::KeyKind::Rsa2048;
    bool keyRandom = true; /**< the key carries its random value, so that the identity can be verified */
    KeyManagement keyManagement = KeyManagement::None;
    samplepki::KeyFileForm form; /**< of both key files */
    const char* policy;
    const char* identity; /**< invented identity number */
};

/** Leaf-first name of each root, in the order of Root. */
std::span<const char* const> rootPlans();

/** The authorities, in the order of Issuer. */
std::span<const IssuerPlan> issuerPlans();

/** All holders. */
std::span<const HolderPlan> holderPlans();
