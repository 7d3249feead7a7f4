#include "toolkit/core/CmsFile.h"

#include <filesystem>

#include "toolkit/core/CmsEnveloped.h"
#include "toolkit/core/MessageFile.h"
#include "toolkit/core/StreamBio.h"

namespace qgtk {

namespace {

/** Runs something over a stream; what failed in the stream itself goes before what came of it. */
template <typename Action>
void through(const StreamBio& stream, Action&& action)
{
    try {
        action();
    } catch (const Failure&) {
        stream.rethrow();
        throw;
    }
    stream.rethrow();
}

/** Where a file of this path is put. A link of that name would be replaced, one to its directory is followed.
 */
std::filesystem::path placeOf(const std::string& path)
{
    std::error_code failed;
    const std::filesystem::path whole = std::filesystem::absolute(path, failed);
    const std::filesystem::path directory = std::filesystem::weakly_canonical(whole.parent_path(), failed);
    return failed ? whole : directory / whole.filename();
}

/** A file that is to be signed, encrypted or decrypted. */
class ContentFile : public FileSource
{
public:
    explicit ContentFile(const std::string& path) : FileSource(path)
    {
        if (length() == 0)
            throw Failure(Code::FileEmpty, path);
    }
};

/** Writes a file into a chain of filters and ends it. */
void feedFile(const FilterChain& chain, FileSource& file)
{
    SecretBytes block(messageBlock);
    while (const std::size_t count = file.read(block))
        chain.feed(ByteView(block).first(count));
    chain.finish();
}

StreamBio::Write into(FileTarget& target)
{
    return [&target](ByteView block) {
        target.write(block);
    };
}

/** Writes a message that nothing has gone through yet, its content a file. */
void writeMessage(CMS_ContentInfo* message, FileSource& content, FileTarget& target)
{
    const StreamBio sink(into(target));
    through(sink, [&] {
        const FilterChain chain(BIO_new_CMS(sink.get(), message), sink.get(), Code::KeyUnsuitable);
        feedFile(chain, content);
    });
}

CmsHandle decodeRest(Context& context, const MessageFile& file, int kind)
{
    CmsHandle message = decodeMessage(context.crypto(), file.rest());
    requireKind(message.get(), kind);
    return message;
}

void verifyCarried(Context& context, int options, MessageFile& file, const std::string& target)
{
    const CmsHandle message = decodeRest(context, file, NID_pkcs7_signed);
    const StreamBio source([&](std::span<std::uint8_t> buffer) { return file.readContent(buffer); });
    FileTarget content(target);
    through(source, [&] { verifyMessage(context, message.get(), options, source.get(), into(content)); });
    content.commit();
}

void verifyBeside(Context& context, int options, const MessageFile& file, const std::string& path)
{
    const CmsHandle message = decodeRest(context, file, NID_pkcs7_signed);
    ContentFile content(path);
    const StreamBio source([&](std::span<std::uint8_t> buffer) { return content.read(buffer); });
    through(source, [&] { verifyMessage(context, message.get(), options, source.get(), [](ByteView) {}); });
}

/** Decrypts what a source gives into a file. */
void decryptFile(CMS_ContentInfo* message, const RequestSigner& recipient, StreamBio::Read read,
                 const std::string& target)
{
    unlock(message, recipient);
    const StreamBio source(std::move(read));
    FileTarget content(target);
    through(source, [&] { decryptContent(message, source.get(), into(content)); });
    content.commit();
}

} // namespace

void signFile(Context& context, const RequestSigner& signer, const SigningForm& form,
              const std::string& source, const std::string& target, bool withContent)
{
    ContentFile content(source);
    const CmsHandle message = startSigned(context, signer, form, !withContent);
    FileTarget file(target);
    if (withContent) {
        writeMessage(message.get(), content, file);
    } else {
        const FilterChain chain(CMS_dataInit(message.get(), nullptr), nullptr, Code::KeyUnsuitable);
        feedFile(chain, content);
        check(CMS_dataFinal(message.get(), chain.get()), Code::KeyUnsuitable);
        file.write(encodeMessage(message.get()));
    }
    file.commit();
}

void verifyFile(Context& context, int options, const std::string& message, const std::string& content,
                ContentPlace place)
{
    MessageFile file(message);
    if (file.carriesContent()) {
        require(place != ContentPlace::File, Code::MessageKind);
        verifyCarried(context, options, file, content);
        return;
    }
    require(place != ContentPlace::Message, Code::ContentMissing);
    verifyBeside(context, options, file, content);
}

void envelopeFile(Context& context, ByteView recipients, int cipher, const std::string& source,
                  const std::string& target)
{
    ContentFile content(source);
    const CmsHandle message = startEnvelope(context, recipients, cipher, false);
    FileTarget file(target);
    writeMessage(message.get(), content, file);
    file.commit();
}

void envelopeFiles(Context& context, ByteView recipients, int cipher, const std::string& source,
                   const std::string& target, const std::string& encrypted)
{
    // The second would take the place of the first, and the content would be lost.
    require(placeOf(target) != placeOf(encrypted), Code::BadArgument);
    ContentFile content(source);
    const CmsHandle message = startEnvelope(context, recipients, cipher, true);
    FileTarget encryptedFile(encrypted);
    FileTarget file(target);
    const StreamBio sink(into(encryptedFile));
    through(sink, [&] {
        const FilterChain chain(CMS_dataInit(message.get(), sink.get()), sink.get(), Code::KeyUnsuitable);
        feedFile(chain, content);
        check(CMS_dataFinal(message.get(), chain.get()), Code::KeyUnsuitable);
    });
    file.write(encodeMessage(message.get()));
    encryptedFile.commit();
    file.commit();
}

void openEnvelopeFile(Context& context, const RequestSigner& recipient, const std::string& message,
                      const std::string& target)
{
    MessageFile file(message);
    const CmsHandle envelope = decodeRest(context, file, NID_pkcs7_enveloped);
    require(file.carriesContent(), Code::ContentMissing);
    decryptFile(
        envelope.get(), recipient, [&](std::span<std::uint8_t> buffer) { return file.readContent(buffer); },
        target);
}

void openEnvelopeFiles(Context& context, const RequestSigner& recipient, const std::string& message,
                       const std::string& encrypted, const std::string& target)
{
    const MessageFile file(message);
    const CmsHandle envelope = decodeRest(context, file, NID_pkcs7_enveloped);
    require(!file.carriesContent(), Code::MessageKind);
    ContentFile content(encrypted);
    decryptFile(
        envelope.get(), recipient, [&](std::span<std::uint8_t> buffer) { return content.read(buffer); },
        target);
}

} // namespace qgtk
