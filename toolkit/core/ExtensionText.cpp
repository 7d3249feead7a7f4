#include <array>

#include "toolkit/core/CertificateText.h"
#include "toolkit/core/Identity.h"
#include "toolkit/core/Names.h"
#include "toolkit/core/Oid.h"

namespace qgtk {

namespace {

using AccessHandle = Handle<AUTHORITY_INFO_ACCESS, AUTHORITY_INFO_ACCESS_free>;
using BitsHandle = Handle<ASN1_BIT_STRING, ASN1_BIT_STRING_free>;
using ConstraintsHandle = Handle<BASIC_CONSTRAINTS, BASIC_CONSTRAINTS_free>;
using NamesHandle = Handle<GENERAL_NAMES, GENERAL_NAMES_free>;
using OctetsHandle = Handle<ASN1_OCTET_STRING, ASN1_OCTET_STRING_free>;
using PointsHandle = Handle<CRL_DIST_POINTS, CRL_DIST_POINTS_free>;
using PoliciesHandle = Handle<CERTIFICATEPOLICIES, CERTIFICATEPOLICIES_free>;
using PolicyConstraintsHandle = Handle<POLICY_CONSTRAINTS, POLICY_CONSTRAINTS_free>;
using UsesHandle = Handle<EXTENDED_KEY_USAGE, EXTENDED_KEY_USAGE_free>;

/** Adds an item to a list that is kept as a text. */
void append(std::string& list, const std::string& item, const char* separator)
{
    if (item.empty())
        return;
    list += list.empty() ? "" : separator;
    list += item;
}

constexpr const char* comma = ", ";
constexpr const char* newLine = "\n";

/** A policy with blanks between its arcs, the form in which callers compare it. */
std::string spacedOid(const ASN1_OBJECT* object)
{
    std::string text = dottedOid(object);
    for (char& c : text)
        c = c == '.' ? ' ' : c;
    return text;
}

std::string integerText(const ASN1_INTEGER* integer)
{
    return std::to_string(ASN1_INTEGER_get(integer));
}

std::string identityText(const Identity& identity, Charset& charset)
{
    const ASN1_OBJECT* hash = nullptr;
    X509_ALGOR_get0(&hash, nullptr, nullptr, identity.hash.get());
    const int nid = OBJ_obj2nid(hash);
    return "realName: " + charset.fromAsn1(identity.realName.get()) +
           "\nVID: " + (nid == NID_undef ? dottedOid(hash) : OBJ_nid2ln(nid)) + " " +
           hexText(identity.virtualId);
}

std::string otherNameText(const OTHERNAME* name, Charset& charset)
{
    if (const std::optional<Identity> identity = decodeIdentity(name))
        return identityText(*identity, charset);
    std::string value;
    if ((ASN1_tag2bit(name->value->type) & (B_ASN1_DIRECTORYSTRING | B_ASN1_IA5STRING)) != 0)
        value = " " + charset.fromAsn1(name->value->value.asn1_string);
    return "otherName: " + dottedOid(name->type_id) + value;
}

std::string addressText(const ASN1_OCTET_STRING* address)
{
    const ByteView bytes = contentOf(address);
    const bool version4 = bytes.size() == 4;
    std::string text;
    for (const std::uint8_t byte : bytes)
        append(text, version4 ? std::to_string(byte) : hexText({&byte, 1}), version4 ? "." : ":");
    return text;
}

/** A general name without its kind. */
std::string bareNameText(const GENERAL_NAME* name, Charset& charset)
{
    switch (name->type) {
    case GEN_EMAIL:
    case GEN_DNS:
    case GEN_URI:
        return charset.fromAsn1(name->d.ia5);
    case GEN_DIRNAME:
        return nameText(name->d.directoryName, charset);
    case GEN_IPADD:
        return addressText(name->d.iPAddress);
    case GEN_RID:
        return dottedOid(name->d.registeredID);
    default:
        return {};
    }
}

std::string generalNameText(const GENERAL_NAME* name, Charset& charset)
{
    // In the order of the choice's tags.
    constexpr std::array<const char*, 9> kinds{"",    "rfc822Name", "dNSName",     "", "directoryName", "",
                                               "URI", "iPAddress",  "registeredID"};
    if (name->type == GEN_OTHERNAME)
        return otherNameText(name->d.otherName, charset);
    const std::string value = bareNameText(name, charset);
    return value.empty() ? value : std::string(kinds.at(static_cast<std::size_t>(name->type))) + ": " + value;
}

std::string altNameText(const Certificate& certificate, int nid, Charset& charset)
{
    const NamesHandle names = extensionOf<NamesHandle>(certificate, nid);
    std::string text;
    for (int i = 0; i < sk_GENERAL_NAME_num(names.get()); ++i)
        append(text, generalNameText(sk_GENERAL_NAME_value(names.get(), i), charset), newLine);
    return text;
}

std::string qualifierText(const POLICYQUALINFO* qualifier, Charset& charset)
{
    const int nid = OBJ_obj2nid(qualifier->pqualid);
    if (nid == NID_id_qt_cps)
        return "CPS: " + charset.fromAsn1(qualifier->d.cpsuri);
    const bool notice = nid == NID_id_qt_unotice && qualifier->d.usernotice->exptext;
    return notice ? "UserNotice: " + charset.fromAsn1(qualifier->d.usernotice->exptext) : std::string();
}

std::string pointsText(const Certificate& certificate, bool urlsOnly, Charset& charset)
{
    const PointsHandle points = extensionOf<PointsHandle>(certificate, NID_crl_distribution_points);
    std::string text;
    for (int i = 0; i < sk_DIST_POINT_num(points.get()); ++i) {
        const DIST_POINT_NAME* point = sk_DIST_POINT_value(points.get(), i)->distpoint;
        const GENERAL_NAMES* names = point && point->type == 0 ? point->name.fullname : nullptr;
        for (int j = 0; j < sk_GENERAL_NAME_num(names); ++j) {
            const GENERAL_NAME* name = sk_GENERAL_NAME_value(names, j);
            if (!urlsOnly || name->type == GEN_URI)
                append(text, bareNameText(name, charset), newLine);
        }
    }
    return text;
}

/** Adds the addresses of one access method. */
void appendAccess(std::string& text, const AUTHORITY_INFO_ACCESS* access, bool ocsp, Charset& charset)
{
    for (int i = 0; i < sk_ACCESS_DESCRIPTION_num(access); ++i) {
        const ACCESS_DESCRIPTION* entry = sk_ACCESS_DESCRIPTION_value(access, i);
        if ((OBJ_obj2nid(entry->method) == NID_ad_OCSP) == ocsp)
            append(text, bareNameText(entry->location, charset), newLine);
    }
}

} // namespace

std::string keyUsageOf(const Certificate& certificate, Charset&)
{
    // By the number of the bit.
    constexpr std::array words{"digitalSignature", "nonRepudiation", "keyEncipherment",
                               "dataEncipherment", "keyAgreement",   "keyCertSign",
                               "crlSign",          "encipherOnly",   "decipherOnly"};
    const BitsHandle bits = extensionOf<BitsHandle>(certificate, NID_key_usage);
    std::string text;
    for (std::size_t i = 0; bits && i < words.size(); ++i)
        if (ASN1_BIT_STRING_get_bit(bits.get(), static_cast<int>(i)))
            append(text, words.at(i), comma);
    return text;
}

std::string extendedKeyUsageOf(const Certificate& certificate, Charset&)
{
    const UsesHandle uses = extensionOf<UsesHandle>(certificate, NID_ext_key_usage);
    std::string text;
    for (int i = 0; i < sk_ASN1_OBJECT_num(uses.get()); ++i) {
        const ASN1_OBJECT* use = sk_ASN1_OBJECT_value(uses.get(), i);
        const int nid = OBJ_obj2nid(use);
        append(text, nid == NID_undef ? dottedOid(use) : OBJ_nid2ln(nid), comma);
    }
    return text;
}

std::string basicConstraintsOf(const Certificate& certificate, Charset&)
{
    const ConstraintsHandle constraints = extensionOf<ConstraintsHandle>(certificate, NID_basic_constraints);
    if (!constraints)
        return {};
    std::string text = constraints->ca ? "CA: TRUE" : "CA: FALSE";
    if (constraints->pathlen)
        append(text, "pathLen: " + integerText(constraints->pathlen), comma);
    return text;
}

std::string policyConstraintsOf(const Certificate& certificate, Charset&)
{
    const auto constraints = extensionOf<PolicyConstraintsHandle>(certificate, NID_policy_constraints);
    std::string text;
    if (constraints && constraints->requireExplicitPolicy)
        append(text, "requireExplicitPolicy: " + integerText(constraints->requireExplicitPolicy), comma);
    if (constraints && constraints->inhibitPolicyMapping)
        append(text, "inhibitPolicyMapping: " + integerText(constraints->inhibitPolicyMapping), comma);
    return text;
}

std::string policyOf(const Certificate& certificate, Charset& charset)
{
    const PoliciesHandle policies = extensionOf<PoliciesHandle>(certificate, NID_certificate_policies);
    std::string text;
    for (int i = 0; i < sk_POLICYINFO_num(policies.get()); ++i) {
        const POLICYINFO* policy = sk_POLICYINFO_value(policies.get(), i);
        append(text, spacedOid(policy->policyid), newLine);
        for (int j = 0; j < sk_POLICYQUALINFO_num(policy->qualifiers); ++j)
            append(text, qualifierText(sk_POLICYQUALINFO_value(policy->qualifiers, j), charset), newLine);
    }
    return text;
}

std::string policyIdsOf(const Certificate& certificate, Charset&)
{
    const PoliciesHandle policies = extensionOf<PoliciesHandle>(certificate, NID_certificate_policies);
    std::string text;
    for (int i = 0; i < sk_POLICYINFO_num(policies.get()); ++i)
        append(text, spacedOid(sk_POLICYINFO_value(policies.get(), i)->policyid), ",");
    return text;
}

std::string subjectAltNameOf(const Certificate& certificate, Charset& charset)
{
    return altNameText(certificate, NID_subject_alt_name, charset);
}

std::string issuerAltNameOf(const Certificate& certificate, Charset& charset)
{
    return altNameText(certificate, NID_issuer_alt_name, charset);
}

std::string subjectKeyIdOf(const Certificate& certificate, Charset&)
{
    const OctetsHandle id = extensionOf<OctetsHandle>(certificate, NID_subject_key_identifier);
    return id ? hexText(contentOf(id.get())) : std::string();
}

std::string crlPointsOf(const Certificate& certificate, Charset& charset)
{
    return pointsText(certificate, false, charset);
}

std::string crlUrlsOf(const Certificate& certificate, Charset& charset)
{
    return pointsText(certificate, true, charset);
}

std::string authorityAccessOf(const Certificate& certificate, Charset& charset)
{
    const AccessHandle access = extensionOf<AccessHandle>(certificate, NID_info_access);
    std::string text;
    appendAccess(text, access.get(), true, charset);
    appendAccess(text, access.get(), false, charset);
    return text;
}

} // namespace qgtk
