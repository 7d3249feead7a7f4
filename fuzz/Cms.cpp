// Messages in memory: verified, opened, looked at, signed once more.

#include "Material.h"
#include "Target.h"
#include "toolkit/core/Challenge.h"
#include "toolkit/core/CmsAttributes.h"
#include "toolkit/core/CmsEnveloped.h"
#include "toolkit/core/CmsSigned.h"
#include "toolkit/core/CmsSignedEnveloped.h"
#include "toolkit/core/CmsTimeStamp.h"

#include "quillgate/message_options.h"

using namespace qgtk;

namespace {

struct Reader
{
    Reader()
    {
        trustAuthorities(context);
        context.verifySettings.source = StatusSource::None;
        holder = requestSigner(context.crypto(), material("holder"), material("holder-key"));
        curveHolder = requestSigner(context.crypto(), material("curve-holder"), material("curve-holder-key"));
        token = material("token");
    }

    Context context{""};
    RequestSigner holder;
    RequestSigner curveHolder;
    Bytes messageKey = Bytes(messageKeyLength);
    Bytes token;
};

void verify(Reader& reader, ByteView message, int options, BIO* source)
{
    const CmsHandle decoded = decodeMessage(reader.context.crypto(), message);
    verifyMessage(reader.context, decoded.get(), options, source, [](ByteView) {});
    keptSigner(reader.context, 0);
}

} // namespace

void fuzz(ByteView input)
{
    static Reader reader;
    Context& context = reader.context;
    const BioHandle content = sourceOver(bytesOf("content"));
    attempt([&] { verify(reader, input, QG_CMS_VERIFY_SIGNER, nullptr); });
    attempt([&] { verify(reader, input, 0, content.get()); });
    attempt([&] { recipientsOf(context, input); });
    attempt([&] { openEnvelope(context, input, reader.curveHolder); });
    attempt([&] { openEnvelope(context, input, reader.holder); });
    attempt([&] { decryptData(context, input, reader.messageKey); });
    attempt([&] { openSignedEnvelope(context, input, 0, reader.holder); });
    attempt([&] { addSigner(context, reader.curveHolder, signingForm(context, 0, ""), input); });
    attempt([&] { withTimeStamp(context.crypto(), input, 0, reader.token); });
    attempt([&] { answerChallenge(context, reader.curveHolder, input); });
}
