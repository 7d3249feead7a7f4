#include "toolkit/core/PathFailure.h"

#include <algorithm>
#include <array>

namespace qgtk {

namespace {

struct Row
{
    int error;
    Code code;
};

constexpr std::array rows{
    Row{X509_V_ERR_CERT_HAS_EXPIRED, Code::CertExpired},
    Row{X509_V_ERR_CERT_NOT_YET_VALID, Code::CertNotYetValid},
    Row{X509_V_ERR_CERT_SIGNATURE_FAILURE, Code::CertSignature},
    Row{X509_V_ERR_UNABLE_TO_DECODE_ISSUER_PUBLIC_KEY, Code::CertSignature},
    Row{X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT, Code::IssuerMissing},
    Row{X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT_LOCALLY, Code::IssuerMissing},
    Row{X509_V_ERR_UNABLE_TO_VERIFY_LEAF_SIGNATURE, Code::IssuerMissing},
    Row{X509_V_ERR_DEPTH_ZERO_SELF_SIGNED_CERT, Code::RootNotTrusted},
    Row{X509_V_ERR_SELF_SIGNED_CERT_IN_CHAIN, Code::RootNotTrusted},
    Row{X509_V_ERR_CERT_UNTRUSTED, Code::RootNotTrusted},
    Row{X509_V_ERR_INVALID_CA, Code::IssuerNotCa},
    Row{X509_V_ERR_KEYUSAGE_NO_CERTSIGN, Code::IssuerNotCa},
    Row{X509_V_ERR_INVALID_NON_CA, Code::IssuerNotCa},
    Row{X509_V_ERR_PATH_LENGTH_EXCEEDED, Code::PathTooLong},
    Row{X509_V_ERR_CERT_CHAIN_TOO_LONG, Code::PathTooLong},
    Row{X509_V_ERR_NO_EXPLICIT_POLICY, Code::PolicyRefused},
    Row{X509_V_ERR_INVALID_POLICY_EXTENSION, Code::PolicyRefused},
    Row{X509_V_ERR_PERMITTED_VIOLATION, Code::NameRefused},
    Row{X509_V_ERR_EXCLUDED_VIOLATION, Code::NameRefused},
    Row{X509_V_ERR_UNHANDLED_CRITICAL_EXTENSION, Code::CriticalExtension},
    Row{X509_V_ERR_INVALID_PURPOSE, Code::UsageRefused},
    Row{X509_V_ERR_CERT_REVOKED, Code::CertRevoked},
    Row{X509_V_ERR_UNABLE_TO_GET_CRL, Code::CrlMissing},
    Row{X509_V_ERR_UNABLE_TO_GET_CRL_ISSUER, Code::CrlSignature},
    Row{X509_V_ERR_CRL_HAS_EXPIRED, Code::CrlExpired},
    Row{X509_V_ERR_CRL_NOT_YET_VALID, Code::CrlNotYetValid},
    Row{X509_V_ERR_CRL_SIGNATURE_FAILURE, Code::CrlSignature},
    Row{X509_V_ERR_KEYUSAGE_NO_CRL_SIGN, Code::CrlSignature},
    Row{X509_V_ERR_DIFFERENT_CRL_SCOPE, Code::CrlRefused},
    Row{X509_V_ERR_UNHANDLED_CRITICAL_CRL_EXTENSION, Code::CrlRefused},
    Row{X509_V_ERR_CRL_PATH_VALIDATION_ERROR, Code::CrlRefused},
    Row{X509_V_ERR_OUT_OF_MEM, Code::OutOfMemory},
};

Code codeOf(int error)
{
    const auto* row = std::ranges::find(rows, error, &Row::error);
    return row == rows.end() ? Code::PathRefused : row->code;
}

} // namespace

bool PathFailure::lacksIssuer() const
{
    return codeOf(error) == Code::IssuerMissing;
}

Failure PathFailure::failure(Charset& charset) const
{
    const Code code = codeOf(error);
    return failureOf(code, certificate.get(), charset,
                     code == Code::PathRefused ? X509_verify_cert_error_string(error) : std::string());
}

Failure failureOf(Code code, const X509* certificate, Charset& charset, const std::string& more)
{
    std::string detail = certificate ? subjectText(certificate, charset) : std::string();
    if (!more.empty())
        detail += (detail.empty() ? "" : ": ") + more;
    return Failure(code, detail);
}

} // namespace qgtk
