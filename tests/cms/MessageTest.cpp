#include "MessageTest.h"

namespace {

using namespace samplepki;

Holder makeHolder(const std::string& name, KeyKind kind, unsigned number, unsigned usage)
{
    const KeyPair& pair = KeyPool::key(kind, number);
    Holder holder;
    holder.certificate = messagePki().ca.issue(
        {.subject = nameFromText("cn=" + name + ",o=Sample,c=KR"), .key = pair, .keyUsage = usage});
    holder.key = pair.privateKeyInfo();
    const std::filesystem::path directory = TestHome::scratch("holder-" + name);
    holder.certificateFile = directory / "certificate.pem";
    holder.keyFile = directory / "key.pem";
    writeFile(holder.certificateFile, pem(holder.certificate, "CERTIFICATE"));
    writeFile(holder.keyFile, pem(holder.key, "PRIVATE KEY"));
    return holder;
}

constexpr unsigned rsaUse = SigningUse | EnvelopeUse;
constexpr unsigned curveUse = SigningUse | KeyAgreement;

} // namespace

const Holder& hong()
{
    static const Holder holder = makeHolder("Hong", KeyKind::Rsa2048, 2, rsaUse);
    return holder;
}

const Holder& kim()
{
    static const Holder holder = makeHolder("Kim", KeyKind::Rsa2048, 3, rsaUse);
    return holder;
}

const Holder& ecHong()
{
    static const Holder holder = makeHolder("Hong-EC", KeyKind::EcP256, 0, curveUse);
    return holder;
}

const Holder& ecKim()
{
    static const Holder holder = makeHolder("Kim-EC", KeyKind::EcP256, 1, curveUse);
    return holder;
}

TestPki& messagePki()
{
    static TestPki pki;
    return pki;
}

const std::string& rootFile()
{
    static const std::string file = [] {
        std::string path = TestHome::scratch("authorities") / "all.pem";
        writeFile(path, pem(messagePki().root.certificate(), "CERTIFICATE") +
                            pem(messagePki().ca.certificate(), "CERTIFICATE"));
        return path;
    }();
    return file;
}

std::vector<std::string> verifyOptions(const std::vector<std::string>& more)
{
    std::vector<std::string> options = {"-verify", "-binary", "-CAfile", rootFile(), "-purpose", "any"};
    options.insert(options.end(), more.begin(), more.end());
    return options;
}

void MessageTest::setOptions(int options)
{
    ASSERT_EQ(call(isZrtk() ? "CMS_SetOption" : "API_SetOption", options), 0);
}

Answer MessageTest::sign(const Holder& holder, const std::string& data, const std::string& time)
{
    return isZrtk() ? ask("CMS_MakeSignedData", 0, holder.certificate, holder.key, data, text(time))
                    : ask("CMS_MakeSignedData", holder.certificate, holder.key, data, text(time));
}

Answer MessageTest::addSigner(const Holder& holder, const std::string& message)
{
    const std::string operation = "CMS_MakeSignedDataWithAddSigner";
    return isZrtk() ? ask(operation, 0, holder.certificate, holder.key, message, text(""))
                    : ask(operation, holder.certificate, holder.key, message, text(""));
}

Verified MessageTest::verify(const std::string& message, const std::string& detached)
{
    BinString data(library, detached);
    Passed<std::string> input(message);
    Verified result;
    result.code = isZrtk() ? call("CMS_ProcessSignedData", 0, input.get(), &data, &result.signers)
                           : call("CMS_ProcessSignedData2", input.get(), &data, &result.signers);
    result.content = data.bytes();
    if (result.code != 0) {
        EXPECT_EQ(result.content, detached) << "written in spite of " << result.code;
        EXPECT_EQ(result.signers, -1);
    }
    return result;
}

Answer MessageTest::signerCertificate(int index)
{
    BinString certificate(library, "as it was");
    const int code = call(isZrtk() ? "CMS_GetSignerCert" : "CMS_GetSigner", index, &certificate,
                          static_cast<char*>(nullptr));
    return {code, certificate.bytes()};
}

std::string MessageTest::signTime(int index)
{
    std::string buffer(50, '#');
    EXPECT_EQ(call(isZrtk() ? "CMS_GetSignerCert" : "CMS_GetSigner", index, static_cast<BINSTR*>(nullptr),
                   buffer.data()),
              0);
    return buffer.c_str();
}

Answer MessageTest::envelope(const std::string& recipients, const std::string& data, int cipher)
{
    const std::string operation = "CMS_MakeEnvelopedDataWithMultiRecipients";
    return isZrtk() ? ask(operation, 0, recipients, data, cipher) : ask(operation, recipients, data, cipher);
}

Answer MessageTest::open(const Holder& holder, const std::string& message)
{
    return ask("CMS_ProcessEnvelopedData", holder.certificate, holder.key, message);
}

Answer MessageTest::signAndEnvelope(const Holder& signer, const std::string& recipients,
                                    const std::string& data, int cipher)
{
    const std::string operation = "CMS_MakeSignedAndEnvData";
    return isZrtk() ? ask(operation, 0, signer.certificate, signer.key, recipients, data, cipher)
                    : ask(operation, signer.certificate, signer.key, recipients, data, cipher);
}

Answer MessageTest::openSigned(const Holder& holder, const std::string& message)
{
    BinString data(library, "as it was");
    BinString certificate(library);
    Passed<std::string> own(holder.certificate);
    Passed<std::string> key(holder.key);
    Passed<std::string> input(message);
    const std::string operation = "CMS_ProcessSignedAndEnvData";
    const int code = isZrtk() ? call(operation, 0, own.get(), key.get(), input.get(), &data, &certificate)
                              : call(operation, own.get(), key.get(), input.get(), &data, &certificate);
    if (code != 0) {
        EXPECT_EQ(data.bytes() + certificate.bytes(), "as it was");
    }
    return {code, data.bytes()};
}

int MessageTest::signFile(const Holder& holder, const std::string& source, const std::string& target,
                          bool carried)
{
    const char* operation =
        isZrtk() ? (carried ? "CMS_MakeSignedData_WithContent_File" : "CMS_MakeSignedData_File")
                 : (carried ? "CMS_MakeSignedData_File" : "CMS_MakeSignedData_NoContent_File");
    return tell(operation, holder.certificate, holder.key, text(source), text(""), text(target));
}

int MessageTest::verifyFile(const std::string& message, const std::string& contentFile, bool carried,
                            BINSTR* certificate, char* time)
{
    const char* operation =
        isZrtk() || carried ? "CMS_ProcessSignedData_File" : "CMS_ProcessSignedData_NoContent_File";
    return call(operation, text(message), text(contentFile), certificate, time);
}

int MessageTest::envelopeFile(const std::string& recipients, const std::string& source, int cipher,
                              const std::string& target)
{
    return tell(isZrtk() ? "CMS_MakeEnvelopedData_WithContent_File" : "CMS_MakeEnvelopedData_File",
                recipients, text(source), cipher, text(target));
}

int MessageTest::envelopeFiles(const std::string& recipients, const std::string& source, int cipher,
                               const std::string& target, const std::string& encrypted)
{
    return tell(isZrtk() ? "CMS_MakeEnvelopedData_File" : "CMS_MakeEnvelopedData_NoContent_File", recipients,
                text(source), cipher, text(target), text(encrypted));
}

int MessageTest::openFile(const Holder& holder, const std::string& message, const std::string& target)
{
    return tell(isZrtk() ? "CMS_ProcessEnvelopedData_WithContent_File" : "CMS_ProcessEnvelopedData_File",
                holder.certificate, holder.key, text(message), text(target));
}

int MessageTest::openFiles(const Holder& holder, const std::string& message, const std::string& encrypted,
                           const std::string& target)
{
    return tell(isZrtk() ? "CMS_ProcessEnvelopedData_File" : "CMS_ProcessEnvelopedData_NoContent_File",
                holder.certificate, holder.key, text(message), text(encrypted), text(target));
}

std::string MessageTest::cms(const std::string& message, const std::vector<std::string>& arguments)
{
    std::vector<std::string> all = {"cms",     "-in",        file("cms.in", message),
                                    "-inform", "DER",        "-provider",
                                    "default", "-provider",  "legacy",
                                    "-out",    at("cms.out")};
    all.insert(all.end(), arguments.begin(), arguments.end());
    writeFile(at("cms.out"), "");
    openssl(all);
    return readFile(at("cms.out"));
}
