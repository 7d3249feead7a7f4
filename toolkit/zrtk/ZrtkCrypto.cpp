/* Raw cryptography, text encodings and the view of a certificate of the main toolkit's interface. */

#define QGTK_PREFIX ZRTK_
#define QGTK_FILE_SUFFIX File

#include "toolkit/core/CertificateView.h"
#include "toolkit/interface/CryptoInterface.h"

using namespace qgtk;

#include "toolkit/interface/CryptoOperations.inc"

QGTK_OPERATION(CRYPT_SetRSAVersion)(void* handle, int version)
{
    return callOn(handle, [&](Context& context) {
        require(version == QG_RSA_V15 || version == QG_RSA_V2, Code::AlgorithmCodeUnknown);
        context.cryptoSettings.rsa = version == QG_RSA_V2 ? RsaScheme::V2 : RsaScheme::V15;
    });
}

QGTK_OPERATION(CRYPT_SetPaddingType)(void* handle, int padding)
{
    return callOn(handle, [&](Context& context) {
        require(padding == QG_PADDING_NONE || padding == QG_PADDING_PKCS7, Code::AlgorithmCodeUnknown);
        context.cryptoSettings.pads = padding == QG_PADDING_PKCS7;
    });
}

QGTK_OPERATION(CRYPT_SetEnvChangeIV)(void* handle)
{
    // What is asked for always holds: every envelope has a key and initial value of its own.
    return callOn(handle, [](Context&) {});
}

QGTK_OPERATION(CRYPT_GenKeyPair)(void* handle, int algorithm, BINSTR* privateKey, BINSTR* publicKey)
{
    return callOn(handle, [&](Context& context) {
        const GeneratedPair pair = generatePair(context.crypto(), algorithm);
        assignAll({{privateKey, pair.privateKey}, {publicKey, pair.publicKey}});
    });
}

QGTK_OPERATION(CRYPT_DecryptFile)(void* handle, char* encrypted, char* plain)
{
    return runOnFile(handle, false, encrypted, plain);
}

QGTK_OPERATION(CRYPT_HashFile)(void* handle, int hashAlg, char* path, BINSTR* digest)
{
    return callOn(handle, [&](Context& context) {
        assign(digest, digestOf(context.crypto(), digestFor(context, hashAlg), pathArgument(path)));
    });
}

QGTK_OPERATION(CRYPT_GenMAC2)(void* handle, int macAlg, BINSTR* password, BINSTR* data, BINSTR* mac)
{
    return callOn(handle, [&](Context& context) {
        assign(mac, macOf(context.crypto(), digestFor(context, macAlg), viewOf(password), viewOf(data)));
    });
}

QGTK_OPERATION(CRYPT_GenSharedKey)
(void* handle, int agreement, BINSTR* privateKey, BINSTR* publicKey, BINSTR* secret)
{
    return callOn(handle, [&](Context& context) {
        require(agreement == QG_AGREEMENT_ECDH || agreement == QG_AGREEMENT_DH, Code::AlgorithmCodeUnknown);
        const Crypto& crypto = context.crypto();
        const Agreement way =
            agreement == QG_AGREEMENT_ECDH ? Agreement::EllipticCurve : Agreement::FiniteField;
        assign(secret, agreedSecret(crypto, way, privateKeyFrom(crypto, viewOf(privateKey)),
                                    publicKeyFrom(crypto, viewOf(publicKey))));
    });
}

QGTK_OPERATION(PEM_Encode)(void* handle, int type, BINSTR* data, BINSTR* text)
{
    return callOn(handle, [&](Context&) { assign(text, pemEncode(type, viewOf(data))); });
}

QGTK_OPERATION(PEM_Decode)(void* handle, BINSTR* text, BINSTR* data)
{
    return callOn(handle, [&](Context&) { assign(data, pemDecode(viewOf(text))); });
}

QGTK_OPERATION(UNI_ViewCert)(void* handle, BINSTR* certificate, int size, char* text)
{
    return callOn(handle, [&](Context& context) {
        copyCut(certificateView(Certificate(viewOf(certificate)), context.charset()), size, text);
    });
}
