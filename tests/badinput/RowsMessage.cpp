#include "Rows.h"
#include "quillgate/algorithms.h"

using namespace argument;

namespace {

const Argument option = number(0);
const Argument cipher = number(QG_CIPHER_AES256);
const std::string time = "2026-01-01 00:00:00";

void addSigning(std::vector<Row>& rows)
{
    rows.push_back({"CMSMakeSignedData", [](auto&, auto& s) -> RightCall {
                        return {option, own(s.certificate), own(s.key), any(s.content), textIn(time), out()};
                    }});
    rows.push_back({"CMSMakeSignedDataWithAddSigner", [](auto&, auto& s) -> RightCall {
                        return {option,           in(s.otherCertificate), in(s.otherKey),
                                in(s.signedData), textIn(time),           out()};
                    }});
    rows.push_back({"CMSProcessSignedData", [](auto&, auto& s) -> RightCall {
                        return {option, in(s.signedData), out(), buffer()};
                    }});
    rows.push_back({"CMSProcessSignedData",
                    [](auto&, auto& s) -> RightCall {
                        return {option, in(s.detachedData), exchanged(s.text), buffer()};
                    },
                    "Detached"});
    rows.push_back({"CMSMakekTBSData", [](auto&, auto& s) -> RightCall {
                        return {option, in(s.certificate), any(s.content), textIn(time), out()};
                    }});
    rows.push_back(
        {"CMSComposeSignedData", [](auto& b, auto& s) -> RightCall {
             const std::string bytes =
                 b.give("CMSMakekTBSData", {option, in(s.certificate), any(s.content), fixed(time), out()});
             return {in(b.give("CRYPTSign",
                               {own(s.certificate), own(s.key), number(QG_HASH_SHA256), any(bytes), out()})),
                     out()};
         }});
    for (const char* operation : {"CMSMakeSignedDataFile", "CMSMakeSignedDataFileWithContent"})
        rows.push_back(
            {operation, [](auto&, auto& s) -> RightCall {
                 return {own(s.certificate), own(s.key), anyFile(s.content), textIn(time), outFile()};
             }});
    rows.push_back({"CMSProcessSignedDataFile", [](auto&, auto& s) -> RightCall {
                        return {file(s.detachedData), file(s.content), out(Optional), buffer()};
                    }});
    rows.push_back({"CMSProcessSignedDataFileWithContent", [](auto&, auto& s) -> RightCall {
                        return {file(s.signedData), outFile(), out(Optional), buffer()};
                    }});
    rows.push_back({"CMSGetTimeStampToken2", [](auto&, auto& s) -> RightCall {
                        return {in(s.signedData), number(0), in(s.signatureStamp), out()};
                    }});
    rows.push_back({"GPKI_CMS_ProcessSignedData", [](auto&, auto& s) -> RightCall {
                        return {in(s.signedData), out(), out(Optional), buffer()};
                    }});
}

void addEnveloping(std::vector<Row>& rows)
{
    for (const char* operation : {"CMSMakeEnvelopedData", "CMSMakeEnvDataWithMultiRec"})
        rows.push_back({operation, [](auto&, auto& s) -> RightCall {
                            return {option, in(s.certificates), any(s.content), cipher, out()};
                        }});
    rows.push_back({"CMSProcessEnvelopedData", [](auto&, auto& s) -> RightCall {
                        return {own(s.certificate), own(s.key), in(s.envelopedData), out()};
                    }});
    rows.push_back({"CMSMakeEnvelopedDataFile", [](auto&, auto& s) -> RightCall {
                        return {in(s.certificates), anyFile(s.content), cipher, outFile(), outFile()};
                    }});
    rows.push_back({"GPKI_CMS_MakeEnvelopedData_NoContent_File", [](auto&, auto& s) -> RightCall {
                        return {in(s.certificates), anyFile(s.content), cipher, outFile(), outFile()};
                    }});
    rows.push_back({"CMSMakeEnveDataFileWithContent", [](auto&, auto& s) -> RightCall {
                        return {in(s.certificates), anyFile(s.content), cipher, outFile()};
                    }});
    rows.push_back({"CMSProcessEnvDataFileWithContent", [](auto&, auto& s) -> RightCall {
                        return {own(s.certificate), own(s.key), file(s.envelopedData), outFile()};
                    }});
    rows.push_back({"CMSProcessEnvelopedDataFile", [](auto&, auto& s) -> RightCall {
                        // Nothing in the bare output of a cipher says whether it is the right one.
                        return {own(s.certificate), own(s.key), file(s.envelopeBeside),
                                anyFile(s.encryptedBeside.bytes), outFile()};
                    }});
    rows.push_back(
        {"CMSMakeSignedAndEnvData", [](auto&, auto& s) -> RightCall {
             return {option, own(s.certificate), own(s.key), in(s.certificates), any(s.content), cipher,
                     out()};
         }});
    rows.push_back({"CMSProcessSignedAndEnvData", [](auto&, auto& s) -> RightCall {
                        return {option, own(s.certificate), own(s.key), in(s.signedAndEnveloped),
                                out(),  out(Optional)};
                    }});
    rows.push_back({"CMSMakeEncryptedData", [](auto& b, auto& s) -> RightCall {
                        setSymmetricKey(b, s);
                        return {option, in(s.certificate, Optional), any(s.content), cipher, out()};
                    }});
    rows.push_back({"CMSProcessEncryptedData", [](auto&, auto& s) -> RightCall {
                        return {in(s.symmetricKey), in(s.encryptedData), out()};
                    }});
    rows.push_back({"ZRTK_CMS_GetEnvDataRecipCnt", [](auto&, auto& s) -> RightCall {
                        return {in(s.envelopedData), buffer()};
                    }});
}

void addWireless(std::vector<Row>& rows)
{
    rows.push_back({"GPKI_WCMS_MakeSignedContent", [](auto&, auto& s) -> RightCall {
                        return {own(s.certificate), own(s.key), any(s.content), textIn(time), out()};
                    }});
    rows.push_back({"GPKI_WCMS_ProcessSignedContent", [](auto&, auto& s) -> RightCall {
                        return {in(s.signedData), out(), out(Optional), buffer()};
                    }});
    rows.push_back({"GPKI_WCMS_MakeWapEnvelopedData", [](auto&, auto& s) -> RightCall {
                        return {in(s.certificates), any(s.content), cipher, out()};
                    }});
    rows.push_back({"WPKISignData", [](auto&, auto& s) -> RightCall {
                        return {own(s.certificate), own(s.key), any(s.content), out()};
                    }});
    for (const char* operation : {"WPKIVerifyData", "UNIVerifySignData"})
        rows.push_back({operation, [](auto&, auto& s) -> RightCall {
                            return {in(s.signedData), out(), out(Optional)};
                        }});
    rows.push_back({"WPKIEncryptData", [](auto&, auto& s) -> RightCall {
                        return {in(s.certificates), any(s.content), cipher,
                                own(s.certificate), own(s.key),     out()};
                    }});
    rows.push_back({"WPKIDecryptData", [](auto&, auto& s) -> RightCall {
                        return {own(s.certificate), own(s.key), in(s.letter), out()};
                    }});
    for (const char* operation : {"UNIDecryptEnvData", "GPKI_WCMS_ProcessWapEnvelopedData"})
        rows.push_back({operation, [](auto&, auto& s) -> RightCall {
                            return {own(s.certificate), own(s.key), in(s.envelopedData), out()};
                        }});
    rows.push_back({"WPKIVerifyCert", [](auto& b, auto& s) -> RightCall {
                        trustAuthorities(b, s);
                        return {in(s.certificate)};
                    }});
}

void addContainers(std::vector<Row>& rows)
{
    rows.push_back({"PFXExport", [](auto&, auto& s) -> RightCall {
                        return {
                            option,         anyText(), own(s.certificate), own(s.key), in(s.otherCertificate),
                            in(s.otherKey), out()};
                    }});
    rows.push_back({"PFXExport2", [](auto&, auto& s) -> RightCall {
                        return {option, anyText(), own(s.certificate), own(s.key), in(s.authorities), out()};
                    }});
    rows.push_back({"PFXImport", [](auto& b, auto& s) -> RightCall {
                        // Each side passes the records on that it knows; on the ZR side the last may be
                        // absent.
                        return {textIn(s.password),
                                in(s.pfx),
                                out(),
                                out(),
                                out(),
                                out(),
                                out(b.isZrtk() ? Optional : Tolerance::Nothing)};
                    }});
    rows.push_back({"PFXExportMultiPair", [](auto&, auto& s) -> RightCall {
                        return {option, anyText(), in(s.certificates), in(s.keys), out()};
                    }});
    rows.push_back({"PFXExportMultiPair2", [](auto&, auto& s) -> RightCall {
                        return {option, anyText(), in(s.certificates), in(s.keys), in(s.authorities), out()};
                    }});
    rows.push_back({"PFXImportMultiPair", [](auto&, auto& s) -> RightCall {
                        return {in(s.pfx), textIn(s.password), out(), out(), out()};
                    }});
    rows.push_back({"PFXImportMultiPair2", [](auto&, auto& s) -> RightCall {
                        return {option, in(s.pfx), textIn(s.password), out(), out(), out()};
                    }});
}

} // namespace

void addMessageRows(std::vector<Row>& rows)
{
    addSigning(rows);
    addEnveloping(rows);
    addWireless(rows);
    addContainers(rows);
}
