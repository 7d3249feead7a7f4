#include "Rows.h"

using namespace argument;

namespace {

const Sample service = {Kind::Settings, "[OPEN_TOOLKIT]\nIVS_URL=http://127.0.0.1:1/service\n"};
const std::string shortTime = "2026-01-01 00:00:00";

/** A certificate that is valid from a time until "x...". */
Sample withDamagedEnd(const Samples& s)
{
    const std::string time = "\x17\x0d"; // UTCTime
    Sample damaged = s.certificate;
    damaged.bytes[damaged.bytes.find(time, damaged.bytes.find(time) + 1) + 2] = 'x';
    return damaged;
}

/** What gives several outputs gives all or none of them. */
void addManyOutputs(std::vector<Row>& rows)
{
    const Argument size = number(1024);
    rows.push_back({"CertGetValidity", [=](auto& b, auto& s) -> RightCall {
                        b.run("CertLoad", {in(s.certificate)});
                        return {size, buffer(), size, buffer()};
                    }});
    rows.push_back({"CertGetValidity",
                    [=](auto& b, auto& s) -> RightCall {
                        b.run("CertLoad", {in(withDamagedEnd(s))});
                        return {static_cast<int>(qgtk::Code::CertDamaged), {size, buffer(), size, buffer()}};
                    },
                    "DamagedEnd"});
    rows.push_back({"ZRTK_CERT_GetPubKey", [=](auto& b, auto& s) -> RightCall {
                        b.run("CertLoad", {in(s.certificate)});
                        return {size, buffer(), buffer()};
                    }});
    rows.push_back({"ZRTK_CERT_GetPubKey2", [](auto& b, auto& s) -> RightCall {
                        b.run("CertLoad", {in(s.certificate)});
                        return {buffer(), buffer(), out()};
                    }});
    rows.push_back({"ZRTK_API_GetInfo", [](auto&, auto&) -> RightCall {
                        return {buffer(), buffer()};
                    }});
    rows.push_back({"ZRTK_CMS_GetEnvDataRecipInfo", [=](auto& b, auto& s) -> RightCall {
                        b.run("ZRTK_CMS_GetEnvDataRecipCnt", {in(s.envelopedData), buffer()});
                        return {number(0), size, buffer(), buffer(), buffer()};
                    }});
}

} // namespace

void addCertificateRows(std::vector<Row>& rows)
{
    addManyOutputs(rows);
    rows.push_back({"ZR_SetCaPubs", [](auto&, auto& s) -> RightCall {
                        return {in(s.certificates)};
                    }});
    rows.push_back({"ZR_SetConfFile", [](auto& b, auto&) -> RightCall {
                        // Hosts of the ZR side can only go back to the work directory's file.
                        if (b.isZrtk())
                            return {textIn("", Unread)};
                        return {file("[OPEN_TOOLKIT]\n", Unread)};
                    }});
    rows.push_back({"ZR_Str2Time", [](auto&, auto&) -> RightCall {
                        return {textIn(shortTime), buffer()};
                    }});
    rows.push_back({"CertLoad", [](auto&, auto& s) -> RightCall {
                        return {in(s.certificate)};
                    }});
    rows.push_back({"CertGetRemainDays", [](auto&, auto& s) -> RightCall {
                        return {in(s.certificate), buffer()};
                    }});
    rows.push_back({"CertAddCert", [](auto&, auto& s) -> RightCall {
                        return {in(s.certificate), exchanged(s.certificates, Optional)};
                    }});
    rows.push_back({"CertGetCertCount", [](auto&, auto& s) -> RightCall {
                        return {in(s.certificates), buffer()};
                    }});
    rows.push_back({"CertGetCert", [](auto&, auto& s) -> RightCall {
                        return {in(s.certificates), number(1), out()};
                    }});
    rows.push_back({"CertAddTrustedCert", [](auto&, auto& s) -> RightCall {
                        return {in(s.root)};
                    }});
    rows.push_back({"CertSetVerifyEnv", [](auto&, auto&) -> RightCall {
                        return {number(0), number(0), number(0), textIn(shortTime), anyText()};
                    }});
    rows.push_back({"CertSetVerifyEnv2", [](auto&, auto& s) -> RightCall {
                        return {textIn(shortTime), in(s.rootList, Optional), in(s.authorityList, Optional)};
                    }});
    rows.push_back({"CertVerify", [](auto& b, auto& s) -> RightCall {
                        trustAuthorities(b, s);
                        return {in(s.certificate),  number(1), textIn(""),
                                textIn("", Unread), number(1), in(s.otherCertificate),
                                in(s.otherKey)};
                    }});
    rows.push_back({"CertVerify2", [](auto& b, auto& s) -> RightCall {
                        trustAuthorities(b, s);
                        return {in(s.certificate), number(1), textIn(""), anyText()};
                    }});
    rows.push_back({"CertVerifyByIVS", [](auto& b, auto& s) -> RightCall {
                        trustAuthorities(b, s);
                        return {unreachable, {file(service), in(s.certificate), in(s.otherCertificate)}};
                    }});
    rows.push_back({"CertCheckStatByOCSP", [](auto& b, auto& s) -> RightCall {
                        trustAuthorities(b, s);
                        return {unreachable,
                                {in(s.certificate), number(1), in(s.otherCertificate), in(s.otherKey),
                                 textIn(nobodysUrl), out(Optional), buffer(), buffer()}};
                    }});
    rows.push_back({"ZRTK_OCSP_CheckCertStatus", [](auto& b, auto& s) -> RightCall {
                        trustAuthorities(b, s);
                        return {unreachable,
                                {textIn(nobodysUrl), in(s.certificate), number(1), in(s.otherCertificate),
                                 in(s.otherKey)}};
                    }});
    rows.push_back(
        {"CertCheckStatByCRL", [](auto& b, auto& s) -> RightCall {
             trustAuthorities(b, s);
             if (!b.isZrtk()) // which can't be handed a list; the certificate names none
                 return {static_cast<int>(qgtk::Code::CrlMissing), {in(s.certificate), buffer(), buffer()}};
             b.run("CertSetVerifyEnv2", {fixed(""), in(s.rootList), in(s.authorityList)});
             return {in(s.certificate), buffer(), buffer()};
         }});
    rows.push_back({"VIDVerifyByIVS", [](auto& b, auto& s) -> RightCall {
                        trust(b, s.identifiedRoot, s.identifiedAuthority);
                        return {unreachable,
                                {file(service), in(s.identified), in(s.identityRandom), textIn(s.idNumber),
                                 in(s.otherCertificate)}};
                    }});
}
