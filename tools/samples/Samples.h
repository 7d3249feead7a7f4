#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "Plan.h"

/** What the user may choose. */
struct SampleOptions
{
    std::string
        password; /**< of every key file; a key-management key of its own password takes "-km" behind it */
    int days;     /**< days for which the valid certificates last from now */
};

/** One holder as it was made, ready to be written. */
struct Sample
{
    const HolderPlan* plan;
    samplepki::Holder files;
};

/** The whole public key infrastructure, in memory. */
struct SampleSet
{
    std::vector<samplepki::Bytes> roots;   /**< certificates in DER, in the order of Root */
    std::vector<samplepki::Bytes> issuers; /**< certificates in DER, in the order of Issuer */
    std::vector<Sample> holders;
};

/** Makes all keys and certificates; takes some seconds, most of them for the RSA keys. */
SampleSet makeSamples(const SampleOptions& options);

/** Password of a holder's key-management key; empty when it has none. */
std::string keyManagementPassword(const HolderPlan& plan, const SampleOptions& options);

/** Writes the media trees below 'home' and returns the directory of each holder's files, in their order. */
std::vector<std::filesystem::path> writeHome(const std::filesystem::path& home, const SampleSet& samples);

/** Writes the certificates of the roots and the authorities, in DER, into a directory. */
void writeAuthorities(const std::filesystem::path& directory, const SampleSet& samples);
