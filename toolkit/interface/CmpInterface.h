#pragma once

#include "quillgate/toolkit_protocol.h"
#include "quillgate/toolkit_token.h"
#include "toolkit/core/CmpTokenPairs.h"
#include "toolkit/core/ObjectList.h"
#include "toolkit/interface/Interface.h"

namespace qgtk {

static_assert(QG_CMP_HTTP == static_cast<int>(CmpProtocol::Http));
static_assert(QG_CMP_TCP == static_cast<int>(CmpProtocol::Tcp));

/** Whom a caller asks, and for. Throws BadArgument without host, number or file. */
inline CmpApplication applicationOf(const char* host, int port, const char* idNumber,
                                    const char* authorityFile)
{
    require(idNumber != nullptr, Code::BadArgument);
    return {{pathArgument(host), port}, idNumber, pathArgument(authorityFile)};
}

/** Whether a record that a caller may leave out holds something. */
inline bool holdsBytes(const BINSTR* record)
{
    return record && record->pData && record->nLen > 0;
}

/** A certificate and a key that a caller hands in. */
inline CmpPair pairOf(PairPurpose purpose, ByteView certificate, ByteView key)
{
    return {purpose, Bytes(certificate.begin(), certificate.end()), SecretBytes(key.begin(), key.end())};
}

/** What a caller gets besides the pairs. */
inline std::vector<Output> withAuthorities(std::vector<Output> outputs, BINSTR* record, ByteView list)
{
    if (record)
        outputs.push_back({record, list});
    return outputs;
}

/** A caller's records of a signing and a key-management pair. The latter may be left out, as a whole. */
struct PairRecords
{
    BINSTR* signCertificate;
    BINSTR* signKey;
    BINSTR* manageCertificate;
    BINSTR* manageKey;

    /** The pairs that there are records for. Throws BadArgument. */
    std::vector<PairPurpose> wanted() const
    {
        require(signCertificate && signKey && !manageCertificate == !manageKey, Code::BadArgument);
        if (!manageCertificate)
            return {PairPurpose::Signing};
        return {PairPurpose::Signing, PairPurpose::Management};
    }

    /** The pairs that the records hold; one that stands there as both kinds once. Throws BadArgument. */
    std::vector<CmpPair> given() const
    {
        std::vector<CmpPair> pairs;
        pairs.push_back(pairOf(PairPurpose::Signing, viewOf(signCertificate), viewOf(signKey)));
        require(holdsBytes(manageCertificate) == holdsBytes(manageKey), Code::BadArgument);
        if (!holdsBytes(manageCertificate))
            return pairs;
        CmpPair managing = pairOf(PairPurpose::Management, viewOf(manageCertificate), viewOf(manageKey));
        const bool isSame =
            managing.certificate == pairs.front().certificate && managing.key == pairs.front().key;
        if (!isSame)
            pairs.push_back(std::move(managing));
        return pairs;
    }

    /** Fills the records of the pairs, all or none. */
    void store(const CmpResult& result, BINSTR* authorities) const
    {
        const CmpPair& managing = result.pairs.back();
        std::vector<Output> outputs{{signCertificate, result.pairs[0].certificate},
                                    {signKey, result.pairs[0].key}};
        if (result.pairs.size() > 1 || holdsBytes(manageCertificate)) {
            outputs.push_back({manageCertificate, managing.certificate});
            outputs.push_back({manageKey, managing.key});
        }
        assignAll(withAuthorities(std::move(outputs), authorities, result.authorities));
    }
};

/** A caller's lists of pairs: each entry of types is one byte, QG_TOKEN_SIGNING or QG_TOKEN_MANAGEMENT. */
struct PairLists
{
    BINSTR* types;
    BINSTR* certificates;
    BINSTR* keys;

    static PairPurpose purposeOf(ByteView type)
    {
        const bool known =
            type.size() == 1 && (type[0] == QG_TOKEN_SIGNING || type[0] == QG_TOKEN_MANAGEMENT);
        require(known, Code::BadArgument);
        return type[0] == QG_TOKEN_SIGNING ? PairPurpose::Signing : PairPurpose::Management;
    }

    /** The types that the list holds, one pair of each kind when it is empty. Throws BadArgument,
     * ListDamaged. */
    std::vector<PairPurpose> wanted() const
    {
        require(types && certificates && keys, Code::BadArgument);
        if (!holdsBytes(types))
            return {PairPurpose::Signing, PairPurpose::Management};
        std::vector<PairPurpose> purposes;
        for (const ByteView type : splitObjectList(viewOf(types)))
            purposes.push_back(purposeOf(type));
        return purposes;
    }

    /** The pairs that the lists hold. Throws BadArgument, ListDamaged. */
    std::vector<CmpPair> given() const
    {
        const std::vector<ByteView> kinds = splitObjectList(viewOf(types));
        const std::vector<ByteView> ders = splitObjectList(viewOf(certificates));
        const std::vector<ByteView> plainKeys = splitObjectList(viewOf(keys));
        require(kinds.size() == ders.size() && kinds.size() == plainKeys.size(), Code::BadArgument);
        std::vector<CmpPair> pairs;
        for (std::size_t i = 0; i < kinds.size(); ++i)
            pairs.push_back(pairOf(purposeOf(kinds[i]), ders[i], plainKeys[i]));
        return pairs;
    }

    /** Fills the lists, all or none. */
    void store(const CmpResult& result, BINSTR* authorities) const
    {
        SecretBytes newTypes;
        SecretBytes newCertificates;
        SecretBytes newKeys;
        for (const CmpPair& pair : result.pairs) {
            const bool signs = pair.purpose == PairPurpose::Signing;
            const std::uint8_t type = signs ? QG_TOKEN_SIGNING : QG_TOKEN_MANAGEMENT;
            newTypes = appendObject(newTypes, ByteView(&type, 1));
            newCertificates = appendObject(newCertificates, pair.certificate);
            newKeys = appendObject(newKeys, pair.key);
        }
        assignAll(withAuthorities({{types, newTypes}, {certificates, newCertificates}, {keys, newKeys}},
                                  authorities, result.authorities));
    }
};

} // namespace qgtk
