#include "Rows.h"
#include "quillgate/algorithms.h"

using namespace argument;

namespace {

const Argument policy = fixed("");

void addStatus(std::vector<Row>& rows)
{
    rows.push_back({"OCSPMakeOCSPReq", [](auto& b, auto& s) -> RightCall {
                        trustAuthorities(b, s);
                        return {in(s.certificates), number(1), own(s.certificate), own(s.key), out()};
                    }});
    // The certificate is asked for the address alone, when there is no other.
    rows.push_back({"OCSPSendAndRecv", [](auto&, auto& s) -> RightCall {
                        return {unreachable,
                                {textIn(nobodysUrl), in(s.certificate, Unread), in(s.statusRequest), out()}};
                    }});
    rows.push_back({"OCSPSendAndRecv",
                    [](auto&, auto& s) -> RightCall {
                        return {unreachable, {fixed(""), in(s.withResponder), in(s.statusRequest), out()}};
                    },
                    "ByCertificate"});
    rows.push_back({"OCSPVerifyResMsg", [](auto& b, auto& s) -> RightCall {
                        trustAuthorities(b, s);
                        return {in(s.statusRequest), in(s.statusResponse), buffer(), out(Optional)};
                    }});
}

void addTimeStamps(std::vector<Row>& rows)
{
    // Nobody looks at the certificate and key of requests that can't be signed.
    rows.push_back({"TSPTimeStampData", [](auto&, auto& s) -> RightCall {
                        return {unreachable,
                                {noHost, noPort, theHash, policy, any(s.content), number(0),
                                 in(s.certificate, Unread), in(s.key, Unread), out()}};
                    }});
    rows.push_back({"ZRTK_TSP_TimeStampFile", [](auto&, auto& s) -> RightCall {
                        return {unreachable,
                                {noHost, noPort, theHash, policy, anyFile(s.content), number(0),
                                 in(s.certificate, Unread), in(s.key, Unread), out()}};
                    }});
    rows.push_back(
        {"TSPMakeReqMsg", [](auto&, auto& s) -> RightCall {
             return {any(s.content),    theHash, textIn("1.2.3.4"), number(0), in(s.certificate, Unread),
                     in(s.key, Unread), out()};
         }});
    rows.push_back({"TSPSendAndRecv1", [](auto&, auto& s) -> RightCall {
                        return {unreachable, {noHost, noPort, in(s.stampRequest), out()}};
                    }});
    rows.push_back(
        {"TSPSendAndRecv2", [](auto& b, auto& s) -> RightCall {
             trustAuthorities(b, s);
             const std::string request = b.give("TSPMakeReqMsg", {any(s.content), theHash, policy, number(0),
                                                                  own(s.certificate), own(s.key), out()});
             return {in(Sample{Kind::StampResponse, stampResponseTo(request)}), out(Optional), out()};
         }});
    rows.push_back({"TSPVerifyToken", [](auto& b, auto& s) -> RightCall {
                        trustAuthorities(b, s);
                        return {in(s.text), in(s.stampToken)};
                    }});
    rows.push_back({"TSPVerifyToken2", [](auto& b, auto& s) -> RightCall {
                        trustAuthorities(b, s);
                        return {file(s.content), in(s.text), in(s.stampToken), out(Optional)};
                    }});
    rows.push_back({"TSPGetTokenInfo", [](auto&, auto& s) -> RightCall {
                        return {in(s.stampToken), number(1024), buffer(), buffer(), buffer(),     buffer(),
                                buffer(),         buffer(),     buffer(), buffer(), out(Optional)};
                    }});
}

void addAuthorities(std::vector<Row>& rows)
{
    rows.push_back({"CMPCertRequest", [](auto&, auto& s) -> RightCall {
                        return {unreachable,
                                {noHost, noPort, anyText(), anyText(), anyText(s.idNumber), file(s.authority),
                                 out(), out(), out(Optional), out(Optional), out(Optional)}};
                    }});
    rows.push_back({"CMPCertRequest2", [](auto&, auto& s) -> RightCall {
                        return {unreachable,
                                {noHost, noPort, anyText(), anyText(), anyText(s.idNumber), file(s.authority),
                                 exchanged(s.pairTypes, Optional), out(), out(), out(Optional)}};
                    }});
    rows.push_back({"CMPCertUpdate", [](auto&, auto& s) -> RightCall {
                        return {unreachable,
                                {noHost, noPort, number(0), anyText(s.idNumber), file(s.authority),
                                 exchanged(s.certificate), exchanged(s.key), exchanged(s.otherCertificate),
                                 exchanged(s.otherKey), out(Optional)}};
                    }});
    rows.push_back({"CMPCertUpdate2", [](auto&, auto& s) -> RightCall {
                        return {unreachable,
                                {noHost, noPort, number(0), anyText(s.idNumber), file(s.authority),
                                 exchanged(s.pairTypes), exchanged(s.certificates), exchanged(s.keys),
                                 out(Optional)}};
                    }});
    rows.push_back({"CMPCertCertRevoke", [](auto& b, auto& s) -> RightCall {
                        trustAuthorities(b, s);
                        return {unreachable,
                                {noHost, noPort, number(0), own(s.certificate), own(s.key),
                                 in(s.otherCertificate), in(s.otherKey)}};
                    }});
    rows.push_back({"CMPCertCertRevoke2", [](auto& b, auto& s) -> RightCall {
                        trustAuthorities(b, s);
                        return {unreachable,
                                {noHost, noPort, number(0), in(s.pairTypes), in(s.certificates), in(s.keys)}};
                    }});
    rows.push_back(
        {"CMPCertCertRecovery", [](auto&, auto& s) -> RightCall {
             return {unreachable,
                     {noHost, noPort, anyText(), anyText(), own(s.certificate), own(s.key), out(), out()}};
         }});
}

} // namespace

void addProtocolRows(std::vector<Row>& rows)
{
    addStatus(rows);
    addTimeStamps(rows);
    addAuthorities(rows);
}
