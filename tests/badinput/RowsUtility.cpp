#include "Rows.h"

using namespace argument;

namespace {

void addServers(std::vector<Row>& rows)
{
    rows.push_back({"ZRAPGetDataByURL", [](auto&, auto&) -> RightCall {
                        return {unreachable, {number(1), textIn(nobodysUrl), out()}};
                    }});
    rows.push_back({"ZRAPGetCRLByCert", [](auto&, auto& s) -> RightCall {
                        return {static_cast<int>(qgtk::Code::CrlMissing), {in(s.certificate), out()}};
                    }});
    rows.push_back({"LDAPGetDataByCN", [](auto&, auto&) -> RightCall {
                        return {unreachable,
                                {fixed(nobody), number(nobodysPort), anyText(), number(1), buffer(), out()}};
                    }});
    rows.push_back({"LDAPGetAnyDataByURL", [](auto&, auto&) -> RightCall {
                        return {unreachable, {anyText("cACertificate"), textIn(nobodysDirectory), out()}};
                    }});
    rows.push_back({"LDAPGetCertPath", [](auto& b, auto& s) -> RightCall {
                        trustAuthorities(b, s);
                        return {in(s.certificate), textIn("", Unread), out()};
                    }});
}

void addChallenges(std::vector<Row>& rows)
{
    rows.push_back({"SIGEAMakeResponse", [](auto&, auto& s) -> RightCall {
                        return {in(s.challenge), own(s.certificate), own(s.key), out()};
                    }});
    rows.push_back(
        {"SIGEAVerifyResponse", [](auto& b, auto& s) -> RightCall {
             const Sample challenge = {Kind::Challenge,
                                       b.give("SIGEAMakeChallenge", {exchanged(s.challenge)})};
             const std::string response =
                 b.give("SIGEAMakeResponse", {in(challenge), own(s.certificate), own(s.key), out()});
             return {in(Sample{Kind::ChallengeResponse, response}), in(challenge), own(s.certificate)};
         }});
}

void addLists(std::vector<Row>& rows)
{
    rows.push_back({"UTILAddObject", [](auto&, auto& s) -> RightCall {
                        return {any(s.content), exchanged(s.objects, Optional)};
                    }});
    rows.push_back({"UTILGetObjectCount", [](auto&, auto& s) -> RightCall {
                        return {in(s.objects), buffer()};
                    }});
    rows.push_back({"UTILGetObject", [](auto&, auto& s) -> RightCall {
                        return {in(s.objects), number(1), out()};
                    }});
}

void addPaths(std::vector<Row>& rows)
{
    rows.push_back({"UTILCompareDN", [](auto&, auto&) -> RightCall {
                        return {textIn("cn=Hong,o=Sample,c=KR"), textIn("cn=hong,o=sample,c=kr")};
                    }});
    for (const char* operation : {"UTILGetCertPath", "UTILGetRootCert"})
        rows.push_back({operation, [](auto& b, auto& s) -> RightCall {
                            trustAuthorities(b, s);
                            return {in(s.certificate), out()};
                        }});
    rows.push_back({"UTILIsTrustCert", [](auto& b, auto& s) -> RightCall {
                        trustAuthorities(b, s);
                        return {in(s.certificate), in(s.root), buffer()};
                    }});
    rows.push_back({"UNIViewCert", [](auto&, auto& s) -> RightCall {
                        return {in(s.certificate), buffer()};
                    }});
}

} // namespace

void addUtilityRows(std::vector<Row>& rows)
{
    addServers(rows);
    addChallenges(rows);
    addLists(rows);
    addPaths(rows);
}
