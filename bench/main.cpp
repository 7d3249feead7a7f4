// Measures Quillgate against bare library calls in one run, and prints the ratios.

#include "Memory.h"
#include "Ratios.h"

#include <QApplication>
#include <TestHome.h>
#include <benchmark/benchmark.h>

namespace {

std::vector<Ratio> ratios()
{
    return {
        {"list of 10, two passes / bare read and decode", "List/10", "FloorList/10", 1.0},
        {"list of 100", "List/100", "FloorList/100", 1.0},
        {"list of 1,000", "List/1000", "FloorList/1000", 1.0},
        {"list of 10,000", "List/10000", "FloorList/10000", 1.0},
        {"list of 10,000 / list of 1,000 (a certificate: a tenth)", "List/10000", "List/1000", 12.0},
        {"list of 100 with the log / without", "ListLogging/100", "List/100", 0},
        {"list of 100, issuer configuration of 2,000 lines / usual", "ListLongConfiguration/100", "List/100",
         0},
        {"CLP_DecryptPriKeyData, PBES2 with SEED / bare OpenSSL", "DecryptPbes2", "FloorDecryptPbes2", 1.15},
        {"CLP_DecryptPriKeyData, PBKDF1 with SEED / bare OpenSSL", "DecryptPbkdf1", "FloorDecryptPbkdf1",
         1.15},
        {"PFX file written / bare OpenSSL", "ExportPfx", "FloorExportPfx", 1.1},
        {"PFX file read / bare OpenSSL", "ImportPfx", "FloorImportPfx", 1.1},
        {"CLP_SaveCert, two pairs / bare write and fsync of four files", "Save", "FloorSave", 0},
        {"CIniFile of 10,000 lines / bare fgets and split", "Ini", "FloorIni", 0},
        {"flat call / dlsym and an indirect call", "FlatCall", "FloorCall", 1.3},
        {"CRYPTHashFile, SHA-256, 100 MiB / bare OpenSSL", "HashFile", "FloorHashFile", 1.05},
        {"CRYPTEncryptFile, AES-256, 100 MiB / bare OpenSSL", "EncryptFile", "FloorEncryptFile", 1.05},
        {"CRYPTHash of 1 KiB and its release / EVP_Digest", "Hash", "FloorHash", 0},
        {"CertVerify of leaf, CA and root / bare parse and X509_verify_cert", "Verify", "FloorVerify", 1.3},
        {"CMSMakeSignedData of 1 KiB, RSA-2048 / bare OpenSSL", "Sign", "FloorSign", 1.05},
        {"CMSProcessSignedData", "VerifyMessage", "FloorVerifyMessage", 0},
        {"CMSMakeEnvelopedData, AES-256", "Envelope", "FloorEnvelope", 0},
        {"CMSProcessEnvelopedData", "Open", "FloorOpen", 1.05},
        {"CMSMakeSignedDataFileWithContent, 100 MiB", "SignFile", "FloorSignFile", 1.05},
        {"CMSProcessSignedDataFileWithContent, 100 MiB", "VerifyFile", "FloorVerifyFile", 1.05},
        {"CMSMakeEnveDataFileWithContent, 100 MiB", "EnvelopeFile", "FloorEnvelopeFile", 1.05},
        {"CMSProcessEnvDataFileWithContent, 100 MiB", "OpenFile", "FloorOpenFile", 1.05},
        {"OCSPMakeOCSPReq / bare OpenSSL", "StatusRequest", "FloorStatusRequest", 0},
        {"OCSPVerifyResMsg, two signatures / bare OpenSSL", "StatusResponse", "FloorStatusResponse", 0},
        {"TSPMakeReqMsg / bare OpenSSL", "StampRequest", "FloorStampRequest", 0},
        {"dialog with 10, to painted / empty dialog and list", "Dialog/10", "FloorDialog/10", 1.5},
        {"dialog with 100", "Dialog/100", "FloorDialog/100", 1.5},
        {"dialog with 1,000", "Dialog/1000", "FloorDialog/1000", 1.5},
        {"viewer, double click to painted / empty dialog", "Viewer", "FloorViewer", 1.5},
        {"viewer / the same widgets, bare", "Viewer", "FloorViewerWidgets", 1.5},
    };
}

} // namespace

int main(int argc, char** argv)
{
    // Before Qt asks for the user: libnss_wrapper reads its file once.
    TestHome::path();
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    RatioReporter reporter(ratios());
    benchmark::RunSpecifiedBenchmarks(&reporter);
    printMemory();
    return reporter.failed() ? 1 : 0;
}
