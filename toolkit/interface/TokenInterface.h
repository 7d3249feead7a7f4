#pragma once

#include <algorithm>
#include <cstring>

#include "quillgate/toolkit_token.h"
#include "toolkit/core/Names.h"
#include "toolkit/core/TokenMessages.h"
#include "toolkit/core/TokenPairs.h"
#include "toolkit/interface/MessageInterface.h"

namespace qgtk {

static_assert(sizeof(PKCS11_TOKEN_INFO) == sizeof(CK_TOKEN_INFO));

/** The ready module of a context. */
inline TokenModule& tokenModule(Context& context)
{
    return *context.token.module(context.configuration());
}

/** A caller's PIN. Throws BadArgument when it is null. */
inline std::string_view pinArgument(const char* pin)
{
    require(pin != nullptr, Code::BadArgument);
    return pin;
}

/** Gives the slots that hold a token. The caller's array has no length: it is told how many to make room for.
 */
inline void storeSlots(TokenModule& module, unsigned long* slots, unsigned long* count)
{
    require(slots && count, Code::BadArgument);
    const std::vector<CK_SLOT_ID> found = module.slots();
    require(found.size() <= QG_TOKEN_SLOTS, Code::BufferTooSmall);
    std::copy(found.begin(), found.end(), slots);
    *count = found.size();
}

/** Gives what a token says about itself: the caller's record has the layout of the module's. */
inline void storeTokenInfo(TokenModule& module, unsigned long slot, PKCS11_TOKEN_INFO* record)
{
    require(record != nullptr, Code::BadArgument);
    const CK_TOKEN_INFO info = module.tokenInfo(slot);
    std::memcpy(record, &info, sizeof info);
}

/** The session that is open. */
inline TokenSession& tokenSession(Context& context)
{
    return context.token.session();
}

/** Gives kind, name and identifier of a certificate by its place. */
inline void storeCertificateInfo(Context& context, int index, int* type, BINSTR* name, BINSTR* id)
{
    require(type && name && id, Code::BadArgument);
    const std::vector<TokenCertificate> list = listCertificates(tokenSession(context));
    require(index >= 0 && static_cast<std::size_t>(index) < list.size(), Code::CertListIndex);
    const TokenCertificate& found = list[static_cast<std::size_t>(index)];
    const Certificate certificate(found.der);
    const int use = useOf(certificate).signs ? QG_TOKEN_SIGNING : QG_TOKEN_MANAGEMENT;
    const std::string subject = nameText(certificate.subjectDer(), context.charset());
    assignAll({{name, bytesOf(subject)}, {id, found.id}});
    *type = use;
}

/** Signs data into a message with a pair of the token, at the present time. */
inline void signDataOnToken(Context& context, int options, const BINSTR* id, const BINSTR* data,
                            BINSTR* message)
{
    requireOutput(message);
    const SigningForm form = signingForm(context, options, nullptr);
    assign(message, signMessageOnToken(context, viewOf(id), form, messageBytes(data)));
}

} // namespace qgtk
