#include "TokenTest.h"

#include <cstdlib>

#include "Programs.h"
#include "TestHome.h"

void TokenTest::SetUp()
{
    tokens = TestHome::scratch("tokens").string();
    writeFile(tokens + ".conf", "directories.tokendir = " + tokens + "\nobjectstore.backend = file\n");
    setenv("SOFTHSM2_CONF", (tokens + ".conf").c_str(), 1);
    ToolkitTest::SetUp();
    ASSERT_EQ(loadModule(), 0);
}

void TokenTest::TearDown()
{
    ToolkitTest::TearDown();
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
