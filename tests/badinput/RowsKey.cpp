#include "Rows.h"
#include "quillgate/algorithms.h"

using namespace argument;

void addKeyRows(std::vector<Row>& rows)
{
    const Argument cipher = number(QG_CIPHER_AES256);
    rows.push_back({"PriKeyEncrypt", [=](auto&, auto& s) -> RightCall {
                        return {cipher, anyText(), in(s.key), out()};
                    }});
    rows.push_back({"PriKeyDecrypt", [](auto&, auto& s) -> RightCall {
                        return {textIn(s.password), in(s.encryptedKey), out()};
                    }});
    rows.push_back({"PriKeyChangePasswd", [](auto&, auto& s) -> RightCall {
                        return {textIn(s.password), anyText(), in(s.encryptedKey), out()};
                    }});
    rows.push_back({"PriKeyCheckKeyPair", [](auto&, auto& s) -> RightCall {
                        return {own(s.certificate), own(s.key)};
                    }});
    rows.push_back({"VIDGetRandomFromPriKey", [](auto&, auto& s) -> RightCall {
                        return {in(s.identifiedKey), out()};
                    }});
    rows.push_back({"VIDHashOfIDNR", [](auto&, auto& s) -> RightCall {
                        return {in(s.identified), any(s.identityRandom.bytes), anyText(s.idNumber), out()};
                    }});
    rows.push_back({"VIDVerify", [](auto&, auto& s) -> RightCall {
                        return {in(s.identified), in(s.identityRandom), textIn(s.idNumber)};
                    }});
    rows.push_back({"MediaLoad", [](auto&, auto&) -> RightCall {
                        return {textIn(QGTK_SOFTHSM_FILE)};
                    }});
    rows.push_back({"MediaDiskReadFile", [](auto&, auto& s) -> RightCall {
                        return {anyFile(s.content), out()};
                    }});
    rows.push_back({"MediaDiskWriteFile", [](auto&, auto& s) -> RightCall {
                        return {outFile(), any(s.content)};
                    }});
    rows.push_back({"MediaDiskReadCert", [](auto&, auto& s) -> RightCall {
                        return {file(s.certificate), number(0), out()};
                    }});
    rows.push_back({"MediaDiskReadPriKey", [](auto&, auto& s) -> RightCall {
                        return {file(s.encryptedKey), textIn(s.password), number(0), out()};
                    }});
    rows.push_back({"MediaDiskWriteCert", [](auto&, auto& s) -> RightCall {
                        return {outFile(), number(0), in(s.certificate)};
                    }});
    rows.push_back({"MediaDiskWritePriKey", [=](auto&, auto& s) -> RightCall {
                        return {cipher, outFile(), number(0), anyText(), in(s.key)};
                    }});
    rows.push_back({"MediaDiskDeleteCert", [](auto&, auto& s) -> RightCall {
                        return {anyFile(s.certificate.bytes), number(0)};
                    }});
    rows.push_back({"MediaDiskDeletePriKey", [](auto&, auto& s) -> RightCall {
                        return {textIn(s.password), number(0), file(s.encryptedKey)};
                    }});
}
