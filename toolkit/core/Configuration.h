#pragma once

#include <string>

#include "toolkit/core/PrivateKey.h"

namespace qgtk {

/**
 * Settings of the section "OPEN_TOOLKIT" of a toolkit configuration file. A value that is missing or of no
 * use leaves the default; so does a file that can't be read.
 */
struct Configuration
{
    int maxIterations = defaultMaxIterations; /**< "MAX_ITERATIONS": keys that ask for more are refused */
    int keyIterations = defaultIterations;    /**< "KEY_ITERATIONS": what new keys are written with */
    Language language = Language::Korean;     /**< "LANGUAGE": KOR or ENG, of the texts of failures */

    static Configuration read(const std::string& path);
};

} // namespace qgtk
