#pragma once

#include <map>
#include <string>
#include <vector>

#include "quillgate/certlist.h"

/** Bytes that the service would hand out through char**. */
struct FakeKeys
{
    std::string signKey = "signing key";
    std::string kmKey;
    std::string random;
};

/**
 * Stands in the place of the list service: the CLP_ functions that the dialogs call are defined beside this
 * class, answer what a test put here, and write down how they were called.
 */
struct FakeService
{
    static FakeService& instance();

    /** Everything as at the start of a test; ends the sessions that dialogs left open. */
    void reset();

    /** Makes a function answer a code instead of its success. */
    void fail(const std::string& function, int code) { results[function] = code; }

    /** How often a function was called. */
    int count(const std::string& function) const;

    std::vector<CERTINFO> certs;         ///< the list of every medium
    std::vector<DRIVEINFO> drives;       ///< removable drives
    std::map<std::string, int> results;  ///< codes by function
    int unreadable = -1;                 ///< index at which CLP_GetCertInfo answers 30015
    FakeKeys keys;                       ///< what opens with the password
    std::string password = "password1!"; ///< any other answers 30011
    FakeKeys imported;                   ///< keys of CLP_ImportPFX
    std::string importedCert;            ///< its certificate
    std::vector<std::string> calls;      ///< "CLP_SetMediaType(1,0)", in order
    LOADOPT loadOption = {};             ///< argument of the last CLP_Initalize
    LOADCERTOPT filter = {};             ///< argument of the last CLP_SetType
    std::string verifyText;              ///< what CLP_VerifyCert says when it fails
    std::string memoryCert;              ///< signing certificate of the last CLP_SetMemoryCert
    bool searched = false;               ///< a "root" search has been made, without which nothing is verified
    bool throwing = false;               ///< CLP_SetType runs out of memory
    int sessions = 0;                    ///< sessions begun and not ended
    int buffers = 0;                     ///< buffers handed out and not given back
};

/** A record as the service lists it: valid until the end of 2030, one text of its own in every field. */
CERTINFO sampleCert(const char* commonName);

/** The same, expired at the end of 2020. */
CERTINFO expiredCert(const char* commonName);
