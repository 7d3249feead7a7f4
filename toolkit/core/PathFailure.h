#pragma once

#include "toolkit/core/Errors.h"
#include "toolkit/core/X509Objects.h"

namespace qgtk {

/** Why OpenSSL refused a path: one of its X509_V_ERR numbers, and the certificate that it stands for. */
struct PathFailure
{
    int error = X509_V_ERR_UNSPECIFIED;
    X509Handle certificate;

    /** Whether a certificate of an issuer is all that lacks. */
    bool lacksIssuer() const;

    /** The toolkit's code and the certificate's name; OpenSSL's own text when the code says too little. */
    Failure failure(Charset& charset) const;
};

/** A failure that a certificate met, with its name. */
Failure failureOf(Code code, const X509* certificate, Charset& charset, const std::string& more = {});

} // namespace qgtk
