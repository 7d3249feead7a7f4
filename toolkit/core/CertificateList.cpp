#include "toolkit/core/CertificateList.h"

namespace qgtk {

std::vector<ByteView> splitCertificateList(ByteView list)
{
    std::vector<ByteView> certificates;
    while (!list.empty()) {
        std::size_t length = 0;
        try {
            length = certificateLength(list);
        } catch (const Failure&) {
            throw Failure(Code::CertListDamaged);
        }
        certificates.push_back(list.first(length));
        list = list.subspan(length);
    }
    return certificates;
}

Bytes appendCertificate(ByteView list, ByteView certificate)
{
    splitCertificateList(list);
    Bytes longer(list.begin(), list.end());
    longer.insert(longer.end(), certificate.begin(), certificate.end());
    return longer;
}

} // namespace qgtk
