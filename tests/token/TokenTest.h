#pragma once

#include <memory>
#include <p11-kit/pkcs11.h>

#include "MessageTest.h"
#include "PfxSamples.h"
#include "TokenSpy.h"
#include "quillgate/toolkit_token.h"

inline constexpr const char* officerPin = "87654321";
inline constexpr const char* userPin = "123456";

/** Operations on SoftHSM tokens in a directory of the test's own. */
class TokenTest : public MessageTest
{
protected:
    void SetUp() override;
    void TearDown() override;

    /** The operation of this side's family. */
    template <typename... Arguments>
    int token(const std::string& operation, Arguments... arguments)
    {
        return call((isZrtk() ? "PKCS11_" : "HSM_") + operation, arguments...);
    }

    /** Loads SoftHSM. */
    int loadModule();

    /** Makes a token with both PINs by SoftHSM's own program. */
    void makeToken(const std::string& label);

    /** Opens the session on a slot and logs in. */
    int open(unsigned long slot, const char* pin = userPin);
    using MessageTest::open;

    /** The slots that hold a token. */
    std::vector<unsigned long> slots();

    /** Makes the token "first" and logs in to it. */
    void makeOpenToken();

    /** Writes a pair to the token. */
    int write(const SamplePair& pair);

    /** Number of the token's certificates. */
    int count();

    /** What GetCertInfo gives. */
    struct Info
    {
        int code = -1;
        int type = 77;
        std::string name;
        std::string id;
    };
    Info info(int index);

    /** The identifier of a written certificate. */
    std::string idOf(const std::string& certificate);

    /** What an operation on an identifier gives; "code ..." when it fails. */
    std::string read(const std::string& operation, const std::string& id);

    /** The same with an input. */
    std::string read(const std::string& operation, const std::string& id, const std::string& input);

    /** What pkcs11-tool prints. */
    std::string pkcs11Tool(const std::string& arguments);

    /** The same as the user of the token "first". */
    std::string asUser(const std::string& arguments);

    /** Puts a certificate of the public key with an identifier on the token, and gives it. */
    std::string certify(const std::string& id);

    std::string tokens; /**< the directory; one of its own unless it is set before SetUp */
};

/** The spy in the module QGTK_SPY_FILE, which does nothing yet; the module stays while it is held. */
std::shared_ptr<TokenSpy> spyInModule();

/** How TokenTest::read tells a failure. */
std::string refused(qgtk::Code code);
