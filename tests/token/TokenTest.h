#pragma once

#include <p11-kit/pkcs11.h>

#include "PfxSamples.h"
#include "quillgate/toolkit_token.h"

inline constexpr const char* officerPin = "87654321";
inline constexpr const char* userPin = "123456";

/** Operations on SoftHSM tokens in a directory of the test's own. */
class TokenTest : public ToolkitTest
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

    bool isZrtk() const { return std::string(GetParam().prefix) == "ZRTK_"; }

    /** Loads SoftHSM. */
    int loadModule();

    /** Makes a token with both PINs by SoftHSM's own program. */
    void makeToken(const std::string& label);

    /** Opens the session on a slot and logs in. */
    int open(unsigned long slot, const char* pin = userPin);

    /** The slots that hold a token. */
    std::vector<unsigned long> slots();

    /** What pkcs11-tool prints. */
    std::string pkcs11Tool(const std::string& arguments);

    std::string tokens; /**< the directory */
};
