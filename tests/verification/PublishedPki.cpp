#include "PublishedPki.h"

using namespace samplepki;

void PublishedPki::SetUp()
{
    restartWith("CONNECT_TIMEOUT=1\nTOTAL_TIMEOUT=2\nLANGUAGE=ENG");
    publish(rootList, pki.root.revocationList());
    authority();
    publish(caList, m_ca->revocationList());
}

void PublishedPki::prepare(Source source, bool wholeChain)
{
    trust(pki.root.certificate());
    know(authority());
    look(source, wholeChain);
}

Bytes PublishedPki::authority()
{
    Request request{.subject = nameFromText(caName), .key = testKey(1), .serial = "2"};
    request.validity = Validity::days(-5, 5);
    request.crlPoints = {files.url(rootList)};
    m_ca = pki.root.intermediate(request);
    return m_ca->certificate();
}

Bytes PublishedPki::leaf(const std::string& listUrl, const std::string& ocspUrl)
{
    Request request = TestPki::leaf();
    request.crlPoints = {listUrl};
    request.ocspUrl = ocspUrl;
    return m_ca->issue(request);
}

std::string PublishedPki::indexOf(const std::string& serial, bool revoked)
{
    return std::string(revoked ? "R" : "V") + "\t400101000000Z\t" +
           (revoked ? "260101000000Z,keyCompromise" : "") + "\t" + serial + "\tunknown\t/CN=x\n";
}
