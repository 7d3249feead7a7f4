#include "Rows.h"
#include "quillgate/algorithms.h"

using namespace argument;

namespace {

void addCiphers(std::vector<Row>& rows)
{
    rows.push_back(
        {"CRYPTSetKeyAndIV", [](auto&, auto& s) -> RightCall {
             return {number(QG_CIPHER_AES256), any(s.symmetricKey.bytes), any(s.initialValue.bytes)};
         }});
    rows.push_back({"CRYPTEncrypt", [](auto& b, auto& s) -> RightCall {
                        setSymmetricKey(b, s);
                        return {any(s.content), out()};
                    }});
    // One of some hundred random texts ends as a padded one does: nothing can tell.
    rows.push_back({"CRYPTDecrypt", [](auto& b, auto& s) -> RightCall {
                        setSymmetricKey(b, s);
                        return {any(s.cipherText.bytes), out()};
                    }});
    rows.push_back({"CRYPTEncryptFile", [](auto& b, auto& s) -> RightCall {
                        setSymmetricKey(b, s);
                        return {anyFile(s.content), outFile()};
                    }});
    rows.push_back({"CRYPTDecryptFile", [](auto& b, auto& s) -> RightCall {
                        setSymmetricKey(b, s);
                        return {anyFile(s.cipherText.bytes), outFile()};
                    }});
    rows.push_back({"CRYPTAsymEncrypt", [](auto&, auto& s) -> RightCall {
                        return {number(QG_KEY_PUBLIC), in(s.publicKey), any(s.content), out()};
                    }});
    rows.push_back({"CRYPTAsymDecrypt", [](auto&, auto& s) -> RightCall {
                        return {number(QG_KEY_PRIVATE), own(s.key), in(s.encryptedBytes), out()};
                    }});
    rows.push_back({"CRYPTGenSharedKey", [](auto&, auto& s) -> RightCall {
                        return {number(QG_AGREEMENT_ECDH), in(s.curveKey), in(s.otherCurvePublic), out()};
                    }});
}

void addSignatures(std::vector<Row>& rows)
{
    rows.push_back({"CRYPTSign", [](auto&, auto& s) -> RightCall {
                        return {own(s.publicKey), own(s.key), theHash, any(s.content), out()};
                    }});
    for (const char* operation : {"ZRTK_CRYPT_SignFile", "GPKI_CRYPT_Sign_File"})
        rows.push_back({operation, [](auto&, auto& s) -> RightCall {
                            return {own(s.publicKey), own(s.key), theHash, anyFile(s.content), outFile()};
                        }});
    rows.push_back({"CRYPTVerify", [](auto&, auto& s) -> RightCall {
                        return {own(s.publicKey), theHash, in(s.text), in(s.signature)};
                    }});
    rows.push_back({"CRYPTVerifyFile", [](auto&, auto& s) -> RightCall {
                        return {own(s.publicKey), theHash, file(s.text), file(s.signature)};
                    }});
    rows.push_back({"CRYPTHash", [](auto&, auto& s) -> RightCall {
                        return {theHash, any(s.content), out()};
                    }});
    rows.push_back({"CRYPTHashFile", [](auto&, auto& s) -> RightCall {
                        return {theHash, anyFile(s.content), out()};
                    }});
    rows.push_back({"CRYPTGenMAC", [](auto&, auto& s) -> RightCall {
                        return {theHash, anyText(), any(s.content), out()};
                    }});
    rows.push_back({"CRYPTGenMAC2", [](auto&, auto& s) -> RightCall {
                        return {theHash, any("key"), any(s.content), out()};
                    }});
    rows.push_back({"CRYPTVerifyMAC", [](auto&, auto& s) -> RightCall {
                        return {theHash, textIn(s.password), in(s.text), in(s.mac)};
                    }});
}

} // namespace

void addCryptoRows(std::vector<Row>& rows)
{
    addCiphers(rows);
    addSignatures(rows);
    rows.push_back({"Base64Encode", [](auto&, auto& s) -> RightCall {
                        return {any(s.content), out()};
                    }});
    rows.push_back({"Base64Decode", [](auto&, auto& s) -> RightCall {
                        return {in(s.base64), out()};
                    }});
    rows.push_back(
        {"PEMEncode", [](auto&, auto& s) -> RightCall {
             return {number(QG_PEM_CERTIFICATE), in(Sample{Kind::DerObject, s.certificate.bytes}), out()};
         }});
    rows.push_back({"PEMDecode", [](auto&, auto& s) -> RightCall {
                        return {in(s.pem), out()};
                    }});
}
