#pragma once

#include <string>

namespace qgtk {

/** When and why a certificate was revoked. */
struct RevocationEntry
{
    std::string date; /**< local time "YYYY-MM-DD hh:mm:ss"; empty when it is not revoked */
    int reason = -1;  /**< CRLReason; -1 when none is given */
};

/** What a status response says of one certificate; the numbers are callers'. */
enum class CertificateState : int
{
    Good = 0,
    Revoked = 1,
    Unknown = 2 /**< also for a certificate that the response does not have */
};

/** The state, and since when and why when it is revoked. */
struct OcspStatus
{
    CertificateState state = CertificateState::Unknown;
    RevocationEntry entry;
};

} // namespace qgtk
