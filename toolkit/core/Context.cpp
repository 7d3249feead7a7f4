#include "toolkit/core/Context.h"

#include "toolkit/core/CertificateList.h"
#include "toolkit/core/Media.h"

namespace qgtk {

const Crypto& Context::crypto()
{
    if (!m_crypto)
        m_crypto = std::make_unique<Crypto>();
    return *m_crypto;
}

const Configuration& Context::configuration()
{
    if (!m_configuration)
        m_configuration = Configuration::read(m_otherConfigurationFile.empty() ? m_configurationFile
                                                                               : m_otherConfigurationFile);
    return *m_configuration;
}

void Context::useConfigurationFile(const std::string& path)
{
    if (!path.empty())
        readFile(path, maxObjectLength);
    m_otherConfigurationFile = path;
    m_configuration.reset();
}

const Certificate& Context::certificate() const
{
    require(m_certificate.has_value(), Code::CertNotLoaded);
    return *m_certificate;
}

void Context::setCaCertificates(ByteView list)
{
    splitCertificateList(list);
    m_caCertificates.assign(list.begin(), list.end());
}

X509_STORE* Context::trusted()
{
    if (!m_trusted)
        m_trusted = owned<StoreHandle>(X509_STORE_new());
    return m_trusted.get();
}

void Context::trust(ByteView der)
{
    const X509Handle certificate = decodeX509(crypto(), der);
    require(isAuthority(certificate.get()), Code::IssuerNotCa);
    if (X509_STORE_add_cert(trusted(), certificate.get()) != 1)
        throw std::bad_alloc();
}

void Context::note(Code code, const std::string& detail) noexcept
{
    m_code = code;
    try {
        m_detail = detail;
    } catch (...) {
        m_detail.clear();
    }
}

std::string Context::errorText()
{
    if (m_code == Code::Ok)
        return {};
    std::string text = isVerdict(m_code) ? "<wrenlib>" : "";
    text += m_charset.fromUtf8(textOfCode(m_code, configuration().language));
    text += " (" + std::to_string(static_cast<int>(m_code)) + ")";
    return m_detail.empty() ? text : text + ": " + m_detail;
}

} // namespace qgtk
