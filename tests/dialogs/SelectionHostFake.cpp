/* A selection host over the tests' own list service. */

#include "DialogBench.h"
#include "FakeService.h"
#include "SelectionHost.h"

void prepareCertificates()
{
    FakeService::instance().certs = {sampleCert("kim"), sampleCert("lee")};
}

std::string workDirectory()
{
    return LanguageFolder().path().toStdString();
}

std::string firstName()
{
    return "kim";
}

std::string certificatePassword()
{
    return FakeService::instance().password;
}
