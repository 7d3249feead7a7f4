#include "Report.h"

#include "KeyProof.h"

#include <QByteArray>
#include <QString>
#include <QTextCodec>
#include <cstdio>

namespace {

void row(const char* name, const QString& value)
{
    if (!value.isEmpty())
        std::printf("  %-24s %s\n", name, value.toUtf8().constData());
}

QString eucKr(const char* text)
{
    return QTextCodec::codecForName("EUC-KR")->toUnicode(text);
}

QString bytes(int length)
{
    return QString("%1 bytes").arg(length);
}

/** The rows of one certificate and key pair; answers whether they belong together. */
bool printPair(const char* title, const char* certificate, int certificateLength, const char* key,
               int keyLength)
{
    if (certificateLength < 1 && keyLength < 1)
        return true;
    std::printf("%s\n", title);
    row("certificate", bytes(certificateLength));
    row("private key", bytes(keyLength));
    if (keyLength < 1)
        return true;
    row("SHA-256 of the key", QString::fromStdString(sha256(key, keyLength)));
    const std::string fault = proveKey(certificate, certificateLength, key, keyLength);
    row("proof", fault.empty() ? QString("signed with the key, verified with the certificate")
                               : QString::fromStdString("FAILED: " + fault));
    return fault.empty();
}

} // namespace

bool printSelection(const SELCERTINFO& selection)
{
    std::printf("\nThe host received\n");
    row("medium", QString::number(selection.nMediaType));
    row("subject DN", QString::fromUtf8(selection.szSubjectDN));
    row("subject CN", eucKr(selection.szSubjectCN));
    row("issuer DN", eucKr(selection.szIssuerDN));
    row("issuer CN", eucKr(selection.szIssuerCN));
    row("serial number", eucKr(selection.szSerialNumber));
    row("policy", QString::fromUtf8(selection.szCertPolicy).simplified());
    row("valid from", eucKr(selection.szBeforeDay));
    row("valid to", eucKr(selection.szAfterDay));
    row("certificate file", QString::fromLocal8Bit(selection.szSignCertPath));
    row("key file", QString::fromLocal8Bit(selection.szSignKeyPath));
    row("KM certificate file", QString::fromLocal8Bit(selection.szKmCertPath));
    row("KM key file", QString::fromLocal8Bit(selection.szKmKeyPath));
    row("key random", bytes(selection.nKeyRandomLen));
    const bool signPair = printPair("Signing pair", selection.szSignCert, selection.nSignCertLen,
                                    selection.szSignKey, selection.nSignKeyLen);
    const bool kmPair = printPair("Key-management pair", selection.szKmCert, selection.nKmCertLen,
                                  selection.szKmKey, selection.nKmKeyLen);
    return signPair && kmPair;
}
