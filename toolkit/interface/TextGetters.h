#pragma once

/**
 * Operations (context, size, buffer) that both interfaces have: X(operation, the field's text).
 *
 * All write a text that is cut between two characters when it is longer than the buffer.
 */
#define QGTK_TEXT_GETTERS(X)                                                                                 \
    X(CERT_GetUID, commonNameOf)                                                                             \
    X(CERT_GetSerialNum, serialOf)                                                                           \
    X(CERT_GetSignatureAlgorithm, signatureAlgorithmOf)                                                      \
    X(CERT_GetIssuerName, issuerOf)                                                                          \
    X(CERT_GetSubjectName, subjectOf)                                                                        \
    X(CERT_GetSignature, signatureOf)                                                                        \
    X(CERT_GetKeyUsage, keyUsageOf)                                                                          \
    X(CERT_GetBasicConstraints, basicConstraintsOf)                                                          \
    X(CERT_GetCertPolicy, policyOf)                                                                          \
    X(CERT_GetExtKeyUsage, extendedKeyUsageOf)                                                               \
    X(CERT_GetSubjectAltName, subjectAltNameOf)                                                              \
    X(CERT_GetAuthKeyID, authorityKeyIdOf)                                                                   \
    X(CERT_GetSubKeyID, subjectKeyIdOf)                                                                      \
    X(CERT_GetCRLDP, crlPointsOf)                                                                            \
    X(CERT_GetAIA, authorityAccessOf)
