#pragma once

#include <array>

#include "BoundedText.h"
#include "quillgate/records.h"

/** The four files of one holder; an empty path is a file that is not there. */
struct HolderPaths
{
    enum File
    {
        SIGN_CERT,
        SIGN_KEY,
        KM_CERT,
        KM_KEY,
        FILES
    };

    char path[FILES][1024];
    std::array<bool, FILES> regular; /**< known to be a regular file: the walk has seen its type */

    /** Empties all paths. */
    void clear()
    {
        for (auto& text : path)
            text[0] = '\0';
        regular.fill(false);
    }

    /** Puts the paths that are there into a record. */
    void copyTo(CERTINFO& record) const
    {
        copyText(record.szSignCertPath, path[SIGN_CERT]);
        copyText(record.szSignKeyPath, path[SIGN_KEY]);
        copyText(record.szKmCertPath, path[KM_CERT]);
        copyText(record.szKmKeyPath, path[KM_KEY]);
    }

    /**
     * Keeps the key-management paths only when the certificate's file can be opened. The key's own file is
     * not looked at: a key without a certificate never attaches, a certificate without a key does.
     */
    void keepReadableKm();
};
