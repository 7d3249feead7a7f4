#pragma once

#include <string>
#include <vector>

#include "ToolkitLibrary.h"
#include "samplepki/Authority.h"

/** A certificate with its plain private key. */
struct SamplePair
{
    std::string certificate;
    std::string key;
};

/** A holder of two pairs below two authorities. Made once a process. */
struct SampleHolder
{
    std::string root;
    std::string issuer;
    SamplePair signing;    /**< "홍길동()0010"; its key's random value ends in a zero byte */
    SamplePair management; /**< the same holder's, for keyEncipherment */
};

const SampleHolder& sampleHolder();

/** Both interfaces' operations on PFX files and lists of objects, by bytes. */
class PfxTest : public ToolkitTest
{
protected:
    /** A PFX file of one pair; a text "code ..." when that fails. ZR side. */
    std::string exportOne(const std::string& password, const SamplePair& pair, int option = 0);

    /** Of several pairs, with CA certificates when there are any. ZR side. */
    std::string exportPairs(const std::string& password, const std::vector<SamplePair>& pairs,
                            int option = 0);

    /** What a file holds. */
    struct Contents
    {
        int code = -1;
        std::vector<std::string> certificates;
        std::vector<std::string> keys;
        std::vector<std::string> authorities;
    };

    /** Reads a file with PFX_ImportMultiPair2. */
    Contents import(const std::string& pfx, const std::string& password, int mode = 0);

    std::string listOf(const std::vector<std::string>& objects);
    std::vector<std::string> split(const std::string& list);
};

#define INSTANTIATE_ZR_SIDE(suite)                                                                           \
    INSTANTIATE_TEST_SUITE_P(MainToolkit, suite, testing::Values(zrtkSide),                                  \
                             [](const auto& side) { return side.param.name; })
