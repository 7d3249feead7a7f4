// What servers send: HTTP, LDAP, and time stamps over TCP. The first byte says which.

#include <string>

#include "FakeNetwork.h"
#include "Material.h"
#include "Target.h"
#include "toolkit/core/Network.h"
#include "toolkit/core/TimeStampServer.h"

using namespace qgtk;

namespace {

constexpr std::size_t mostLength = 65536;

void askHttp()
{
    Network network(1, 1);
    attempt([&] { network.fetch("http://127.0.0.1:80/x", ObjectKind::AuthorityCertificate); });
    attempt([&] { network.post("http://127.0.0.1:80/x", "application/ocsp-request", bytesOf("request")); });
}

void askDirectory()
{
    Network network(1, 1);
    attempt([&] { network.fetch("ldap://127.0.0.1/cn=x", ObjectKind::Crl); });
    attempt([&] { network.find("127.0.0.1", 389, "x", ObjectKind::UserCertificate); });
}

void askStampServer()
{
    static Context context("");
    static const Bytes request = material("stamp-request");
    attempt([&] { exchangeTimeStamp(context, "127.0.0.1", 318, request); });
}

} // namespace

void fuzz(ByteView input)
{
    if (input.empty() || input.size() > mostLength)
        return;
    const FakeReply reply(input.subspan(1));
    switch (input.front()) {
    case 'h':
        return askHttp();
    case 'l':
        return askDirectory();
    case 't':
        return askStampServer();
    default:
        return;
    }
}
