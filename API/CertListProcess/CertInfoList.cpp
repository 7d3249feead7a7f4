#include "CertInfoList.h"

#include "Secret.h"

namespace {

/** The fields with a length that is above 0 once something was written. */
template <auto Bytes, auto Length>
void wipeBytes(CERTINFO& record)
{
    if (record.*Length == 0)
        return;
    wipe(record.*Bytes, sizeof(record.*Bytes));
    record.*Length = 0;
}

/** The whole field: an earlier, longer text may have left its tail behind the terminator. */
template <auto Text>
void wipeText(CERTINFO& record)
{
    if ((record.*Text)[0] != '\0')
        wipe(record.*Text, sizeof(record.*Text));
}

} // namespace

void wipeSecrets(CERTINFO& record)
{
    wipeBytes<&CERTINFO::szSignKey, &CERTINFO::nSignKeyLen>(record);
    wipeBytes<&CERTINFO::szKmKey, &CERTINFO::nKmKeyLen>(record);
    wipeBytes<&CERTINFO::szEncSignKey, &CERTINFO::nEncSignKeyLen>(record);
    wipeBytes<&CERTINFO::szEncKmKey, &CERTINFO::nEncKmKeyLen>(record);
    wipeBytes<&CERTINFO::szKeyRandom, &CERTINFO::nKeyRandomLen>(record);
    wipeText<&CERTINFO::szPinNumber>(record);
    wipeText<&CERTINFO::szCertPassword>(record);
}

CertInfoList makeCertInfoList(int count)
{
    if (count < 1)
        return {};
    void* records = std::calloc(static_cast<size_t>(count) + 1, sizeof(CERTINFO));
    return CertInfoList(static_cast<CERTINFO*>(records), CertInfoListDeleter{count});
}

void CertInfoListDeleter::operator()(CERTINFO* list) const
{
    for (int i = 0; i < count; ++i)
        wipeSecrets(list[i]);
    std::free(list);
}
