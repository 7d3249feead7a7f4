#pragma once

#include <string>

#include "toolkit/core/Context.h"

namespace qgtk {

/**
 * Verifies a certificate by the validation service that a configuration file names, "IVS_URL" in the section
 * "OPEN_TOOLKIT": the path up to a root that the context trusts, then its status at the service, which is a
 * status responder (RFC 6960). The asker's certificate must be one; without its key no request is signed.
 * Throws FileMissing and its like, ServiceMissing, and as checkStatusByOcsp.
 */
void verifyByService(Context& context, const std::string& configurationFile, ByteView certificate,
                     ByteView asker);

} // namespace qgtk
