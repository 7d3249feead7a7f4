#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

/**
 * A toolkit in place of the access layer: it plays a certificate out of texts, counts what is created and
 * deleted, records the calls with their arguments, and fails where a test says so.
 *
 * Files are read as they are. An encrypted key is "password:key"; a plain key "R:value" holds the random
 * "value". A PFX file is pfx(password, certificates, keys), in any number; certificate and key fit when their
 * last words are the same. One instance a test, made before the session.
 */
class FakeToolkit
{
public:
    FakeToolkit();
    ~FakeToolkit();

    /** The instance of the running test; the flat functions reach it. */
    static FakeToolkit& current();

    /** Code that a flat function answers instead of working, by its name or by a call as it is recorded. */
    std::map<std::string, int> failures;

    /** Text that a getter gives, by its name. A getter without one gives nothing. */
    std::map<std::string, std::string> texts;

    /** Texts for one certificate, by the bytes of its file; they come before the others. */
    std::map<std::string, std::map<std::string, std::string>> certificateTexts;

    /** Calls in order, "Name(arguments)", byte strings as their bytes. */
    std::vector<std::string> calls;

    /** Text of ZR_GetErrInfo. */
    std::string errorText = "toolkit says no";

    /** Codes of ZRAPGetDataByURL, by the URL; the data is "data of " and the URL. */
    std::map<std::string, int> unreachable;

    /** Runs before a file is read, with its path. */
    std::function<void(const std::string&)> onRead;

    /** Decrypted key in place of the true one. */
    std::function<std::string(const std::string& password, const std::string& encrypted)> decrypt;

    int liveBytes = 0; /**< byte strings created and not deleted */
    int unwiped = 0;   /**< byte strings that still held bytes when they were deleted */
    int loaded = 0;    /**< 1 while a certificate is loaded: the next load replaces it */
    int contexts = 0;  /**< contexts started and not finished */

    /** Records a call; its failure code, or 0. */
    int call(const std::string& name, const std::string& arguments = {});

    /** Text of a getter for the loaded certificate. */
    std::string text(const std::string& getter);

    /** A PFX file. */
    static std::string pfx(const std::string& password, const std::vector<std::string>& certs,
                           const std::vector<std::string>& keys);

    /** A PFX file under the password "pw" whose certificates have the usages that stand in front of their
     * names. */
    std::string pfxByUsages(const std::vector<std::string>& certs, const std::vector<std::string>& keys);

    /** Codes of PFXImportMultiPair2, by its mode; they come before the file. */
    std::map<int, int> importFailures;

    /** Number of recorded calls that begin so. */
    int count(const std::string& beginning) const;

    std::string certificate; /**< bytes of the loaded certificate */
};
