#pragma once

#include <map>
#include <string>
#include <vector>

#include "toolkit/core/PrivateKey.h"

namespace qgtk {

/** An authority's entry in a directory: "CA_DN" and "DIR_URL", or "DN" and "URL", of a configuration file. */
struct DirectoryEntry
{
    std::string name; /**< leaf first */
    std::string url;  /**< "ldap://host:port" */
};

/** How an authority is asked by CMP: "CMP_PATH" and "CMP_KEY". */
struct CmpAuthority
{
    std::string path;   /**< of the server's address, without the slash that it begins with */
    int keyPair = 2048; /**< number of the kind of new pairs, see quillgate/algorithms.h */
};

/**
 * Settings of the section "OPEN_TOOLKIT" of a toolkit configuration file. A value that is missing or of no
 * use leaves the default; so does a file that can't be read.
 */
struct Configuration
{
    int maxIterations = defaultMaxIterations; /**< "MAX_ITERATIONS": keys that ask for more are refused */
    int keyIterations = defaultIterations;    /**< "KEY_ITERATIONS": what new keys are written with */
    Language language = Language::Korean;     /**< "LANGUAGE": KOR or ENG, of the texts of failures */

    std::string tokenModule; /**< "PKCS11_MODULE": path or bare name; empty: none */

    int connectSeconds = 5; /**< "CONNECT_TIMEOUT": to reach a server */
    int totalSeconds = 15;  /**< "TOTAL_TIMEOUT": for all that one operation asks of servers */

    std::string serviceUrl; /**< "IVS_URL": the validation service; empty: none */

    /** Entries of the sections "CA_INFO1" or "LDAP_INFO1" and so on, of which "VALIDATOIN_OPTION" has the
     * count. */
    std::vector<DirectoryEntry> directories;

    /** By the number of the section, "CMP_CA1" and so on; 0 is "OPEN_TOOLKIT", whose values the others have
     * unless they say otherwise. */
    std::map<int, CmpAuthority> cmpAuthorities{{0, {}}};

    /** The settings of an authority by its number. Throws NotSupported when they are not there. */
    const CmpAuthority& cmpAuthority(int number) const
    {
        const auto found = cmpAuthorities.find(number);
        require(found != cmpAuthorities.end(), Code::NotSupported);
        return found->second;
    }

    static Configuration read(const std::string& path);
};

} // namespace qgtk
