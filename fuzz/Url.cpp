// Addresses, as certificates and callers name them. Nobody is reached.

#include <string>

#include "Target.h"
#include "toolkit/core/Network.h"

using namespace qgtk;

void fuzz(ByteView input)
{
    const std::string url(textOf(input));
    Network network(1, 1);
    attempt([&] { network.fetch(url, ObjectKind::AuthorityCertificate); });
    attempt([&] { network.fetchAttribute(url, "cACertificate"); });
    attempt([&] { network.post(url, "application/ocsp-request", bytesOf("request")); });
    const std::string form = addressForm(url);
    expect(form.find_first_of(" \t\r\n?#") == std::string::npos);
}
