#include "TokenTest.h"

#include <cstdlib>
#include <dlfcn.h>

#include "Programs.h"
#include "TestHome.h"

namespace {

std::string bytesOrCode(const Answer& answer)
{
    return answer.code == 0 ? answer.bytes : "code " + std::to_string(answer.code);
}

} // namespace

void TokenTest::SetUp()
{
    if (tokens.empty())
        tokens = TestHome::scratch("tokens").string();
    writeFile(tokens + ".conf", "directories.tokendir = " + tokens + "\nobjectstore.backend = file\n");
    setenv("SOFTHSM2_CONF", (tokens + ".conf").c_str(), 1);
    MessageTest::SetUp();
    ASSERT_EQ(loadModule(), 0);
}

void TokenTest::TearDown()
{
    MessageTest::TearDown();
}

int TokenTest::loadModule()
{
    return call(isZrtk() ? "MEDIA_Load" : "STORAGE_Load", text(QGTK_SOFTHSM_FILE));
}

void TokenTest::makeToken(const std::string& label)
{
    const Outcome made = runIn(tokens, "softhsm2-util --init-token --free --label " + label + " --so-pin " +
                                           officerPin + " --pin " + userPin);
    ASSERT_EQ(made.status, 0) << made.output;
}

int TokenTest::open(unsigned long slot, const char* pin)
{
    if (isZrtk())
        return token("OpenSessionWithSlotID", slot, text(pin), 0);
    const int opened = token("OpenSession", slot, 0);
    return opened != 0 ? opened : token("Login", text(pin));
}

std::vector<unsigned long> TokenTest::slots()
{
    std::vector<unsigned long> found(QG_TOKEN_SLOTS, 0);
    unsigned long count = 0;
    EXPECT_EQ(token("GetSlotList", found.data(), &count), 0);
    found.resize(count);
    return found;
}

std::string TokenTest::pkcs11Tool(const std::string& arguments)
{
    const Outcome ran =
        runIn(tokens, std::string("pkcs11-tool --module ") + QGTK_SOFTHSM_FILE + " " + arguments);
    return ran.status == 0 ? ran.output : "failed: " + ran.output;
}

void TokenTest::makeOpenToken()
{
    makeToken("first");
    ASSERT_EQ(open(slots().front()), 0);
}

int TokenTest::write(const SamplePair& pair)
{
    BinString certificate(library, pair.certificate);
    BinString key(library, pair.key);
    return token("WriteCertAndPriKey", &certificate, &key);
}

int TokenTest::count()
{
    int found = -1;
    EXPECT_EQ(token("GetCertCnt", &found), 0);
    return found;
}

TokenTest::Info TokenTest::info(int index)
{
    Info result;
    BinString name(library);
    BinString id(library);
    result.code = token("GetCertInfo", index, &result.type, &name, &id);
    result.name = name.bytes();
    result.id = id.bytes();
    return result;
}

std::string TokenTest::idOf(const std::string& certificate)
{
    for (int index = 0; index < count(); ++index)
        if (read("ReadCert", info(index).id) == certificate)
            return info(index).id;
    return "no such certificate";
}

std::string TokenTest::read(const std::string& operation, const std::string& id)
{
    return bytesOrCode(ask((isZrtk() ? "PKCS11_" : "HSM_") + operation, id));
}

std::string TokenTest::read(const std::string& operation, const std::string& id, const std::string& input)
{
    return bytesOrCode(ask((isZrtk() ? "PKCS11_" : "HSM_") + operation, id, input));
}

std::string TokenTest::asUser(const std::string& arguments)
{
    return pkcs11Tool(std::string("--token-label first --login --pin ") + userPin + " " + arguments);
}

std::string TokenTest::certify(const std::string& id)
{
    asUser("--read-object --type pubkey -o public.der --id " + hex(id));
    openssl({"x509", "-new", "-subj", "/CN=made", "-force_pubkey", tokens + "/public.der", "-keyform", "DER",
             "-CA", kim().certificateFile, "-CAkey", kim().keyFile, "-outform", "DER", "-out",
             tokens + "/made.der"});
    asUser("--write-object made.der --type cert --id " + hex(id));
    return readFile(tokens + "/made.der");
}

std::shared_ptr<TokenSpy> spyInModule()
{
    const std::shared_ptr<void> module(dlopen(QGTK_SPY_FILE, RTLD_NOW), dlclose);
    TokenSpy* const spy = reinterpret_cast<TokenSpy* (*)()>(dlsym(module.get(), "tokenSpy"))();
    *spy = TokenSpy();
    return {module, spy};
}

std::string refused(qgtk::Code code)
{
    return "code " + std::to_string(number(code));
}
