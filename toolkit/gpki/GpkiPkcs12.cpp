/* The government PKI library's interface: PFX files. */

#define QGTK_PREFIX GPKI_

#include "toolkit/interface/Pkcs12.h"

using namespace qgtk;

namespace {

bool isAbsent(const BINSTR* input)
{
    return !input || !input->pData || input->nLen == 0;
}

} // namespace

QGTK_OPERATION(PFX_Export)
(void* handle, char* password, BINSTR* signCertificate, BINSTR* signKey, BINSTR* managementCertificate,
 BINSTR* managementKey, BINSTR* pfx)
{
    return callOn(handle, [&](Context& context) {
        std::vector<ByteView> certificates{viewOf(signCertificate)};
        std::vector<ByteView> keys{viewOf(signKey)};
        if (!isAbsent(managementCertificate) || !isAbsent(managementKey)) {
            certificates.push_back(viewOf(managementCertificate));
            keys.push_back(viewOf(managementKey));
        }
        const std::vector<PfxPair> pairs = matchPairs(context.crypto(), certificates, keys);
        assign(pfx, writePfx(context, pairs, {}, password, PfxProfile::Strong));
    });
}

QGTK_OPERATION(PFX_Import)
(void* handle, char* password, BINSTR* pfx, BINSTR* signCertificate, BINSTR* signKey,
 BINSTR* managementCertificate, BINSTR* managementKey)
{
    return callOn(handle, [&](Context& context) {
        const PfxContents contents = readPfx(context, pfx, password, PfxIntegrity::WhenPresent);
        const PfxHolder holder = holderOf(context.crypto(), contents, context.charset());
        assignAll({{signCertificate, holder.signing.certificate},
                   {signKey, holder.signing.key},
                   {managementCertificate, holder.management.certificate},
                   {managementKey, holder.management.key}});
    });
}
