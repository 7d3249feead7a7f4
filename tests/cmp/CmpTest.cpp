#include "CmpTest.h"

Records::Records(const ToolkitLibrary& library, const std::string& before)
    : initial(before), signCertificate(library, before), signKey(library, before),
      manageCertificate(library, before), manageKey(library, before), authorities(library, before)
{}

bool Records::areUntouched() const
{
    for (const BinString* record : {&signCertificate, &signKey, &manageCertificate, &manageKey, &authorities})
        if (record->bytes() != initial)
            return false;
    return true;
}

void CmpTest::SetUp()
{
    CryptoTest::SetUp();
    restartWith("CONNECT_TIMEOUT=20\nTOTAL_TIMEOUT=60\nLANGUAGE=ENG\nCMP_KEY=256");
    authority.secret = secretCode;
}

int CmpTest::request(const std::string& host, int port, Records& records, const std::string& code)
{
    return call("CMP_CertRequest", text(host), port, text(reference), text(code), text(idNumber),
                text(authority.authorityFile), &records.signCertificate, &records.signKey,
                &records.manageCertificate, &records.manageKey, &records.authorities);
}

CmpTest::Issued CmpTest::issued(unsigned keyNumber, unsigned usage, const std::string& serial)
{
    samplepki::Request wanted{.subject = samplepki::nameFromText(leafName),
                              .key = testKey(keyNumber),
                              .serial = serial,
                              .keyUsage = usage};
    const std::string certificate = authority.pki.ca.issue(wanted);
    authority.know(certificate);
    return {certificate, testKey(keyNumber).privateKeyInfo()};
}

std::string CmpTest::textOf(const std::string& certificate)
{
    return openssl({"x509", "-inform", "DER", "-noout", "-text", "-in", file("shown.der", certificate)});
}
