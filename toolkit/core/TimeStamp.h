#pragma once

#include <string>

#include "toolkit/core/Context.h"
#include "toolkit/core/DataInput.h"

namespace qgtk {

/**
 * A time stamp request, DER (RFC 3161, section 2.4.1), with a nonce, that asks for the server's certificate.
 * digest is OpenSSL's name of the hash; policy is dotted, empty: the server's own. The context keeps the
 * request for verifying the response. Throws BadArgument for a policy that is none, CryptoUnavailable, and as
 * DataInput does.
 */
Bytes makeStampRequest(Context& context, const DataInput& data, const char* digest, std::string_view policy);

/** Throws StampRequestDamaged for anything but a request. */
void requireStampRequest(ByteView der);

/** Whether bytes are a response, whatever it says. */
bool isStampResponse(ByteView der);

/** A token, and the certificate that signed it, both DER. */
struct TimeStamp
{
    Bytes token;
    Bytes signer;
};

/**
 * Verifies a response to the request that the context keeps and gives its token: the signature, the signer's
 * path up to a trusted root and its purpose, and that data, policy and nonce are the request's. Throws
 * StampNotRequested, ReplyDamaged, StampRefused, StampOfOther, StampUntrusted and the codes of a path.
 */
TimeStamp verifyStampResponse(Context& context, ByteView response);

/**
 * Verifies a token and that it is of the data; gives who signed it, DER. Throws StampDamaged, StampOfOther,
 * StampUntrusted, the codes of a path, and as DataInput does.
 */
Bytes verifyToken(Context& context, const DataInput& data, ByteView token);

/** The fields of a token, EUC-KR. */
struct TokenFields
{
    std::string commonName;   /**< of the server; empty when the token holds no certificate */
    std::string name;         /**< its whole name, leaf first; likewise */
    std::string policy;       /**< dotted */
    std::string hashName;     /**< as "sha256" */
    std::string hashValue;    /**< lower-case hexadecimal */
    std::string serialNumber; /**< lower-case hexadecimal, an even number of digits */
    std::string time;         /**< local, "YYYY-MM-DD hh:mm:ss" */
    std::string nonce;        /**< as the serial number; empty when there is none */
    Bytes signer;             /**< DER of the server's certificate; empty likewise */
};

/** Reads a token without verifying it. Throws StampDamaged. */
TokenFields fieldsOfToken(Context& context, ByteView token);

} // namespace qgtk
