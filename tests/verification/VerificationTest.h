#pragma once

#include "TestHome.h"
#include "TestPki.h"
#include "ToolkitLibrary.h"

/** A context of one side that verifies certificates; the sides' differences are hidden here. */
class VerificationTest : public ToolkitTest
{
protected:
    enum class Source
    {
        None,
        Crl,
        Ocsp
    };

    bool isZrtk() const { return GetParam().prefix == std::string("ZRTK_"); }

    /** Gives certificates to the context: anchors, and authorities that may be on a path. */
    void trust(const samplepki::Bytes& certificate);
    void know(const samplepki::Bytes& certificates);

    /** Sets the whole chain or the certificate alone, and where revocation is looked up. */
    void look(Source source, bool wholeChain = true);

    /** Verifies and gives the code. */
    int verify(const samplepki::Bytes& certificate, const std::string& policies = {},
               int certificateType = 1);
};

/** Bytes that are no structure of a kind, among them a good one that is cut, and one of another kind. */
inline std::vector<std::string> damagedForms(const std::string& good, const std::string& foreign)
{
    return {"x",
            std::string(100, '\xff'),
            samplepki::fromHex("3000"),
            good.substr(0, good.size() / 2),
            good.substr(0, good.size() - 1),
            foreign};
}
