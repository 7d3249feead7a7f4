#include "toolkit/core/CertificateList.h"

#include "toolkit/core/ObjectList.h"

namespace qgtk {

std::vector<ByteView> splitCertificateList(ByteView list)
{
    try {
        std::vector<ByteView> certificates = splitObjectList(list);
        for (const ByteView certificate : certificates)
            certificateLength(certificate);
        return certificates;
    } catch (const Failure&) {
        throw Failure(Code::CertListDamaged);
    }
}

SecretBytes appendCertificate(ByteView list, ByteView certificate)
{
    splitCertificateList(list);
    return appendObject(list, certificate);
}

} // namespace qgtk
