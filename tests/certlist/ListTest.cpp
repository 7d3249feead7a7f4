#include "SessionTest.h"

using List = SessionTest;

TEST_F(List, MediaWithoutAStoreAreRefused)
{
    ASSERT_EQ(start(), 0);
    for (const int medium : {0, 3, 4, 5, 9, -1}) {
        session().m_nMediaType = medium;
        EXPECT_EQ(CLP_LoadCertList(handle), QG_BAD_ARGUMENT) << medium;
    }
    session().m_nMediaType = MEDIA_USIM;
    EXPECT_EQ(CLP_LoadCertList(handle), 0);
}

TEST_F(List, EmptyDiskIsTold)
{
    startOn(MEDIA_HARDDISK);
    EXPECT_EQ(CLP_LoadCertList(handle), CLPERR_NOTEXISTCERT);
    EXPECT_EQ(CLP_GetCertCount(handle), 0);
}

TEST_F(List, MemoryWithoutACertificateGivesZeroAndAnUnchangedCount)
{
    startOn(MEDIA_MEMORY);
    EXPECT_EQ(CLP_LoadCertList(handle), 0);
    EXPECT_EQ(CLP_GetCertCount(handle), 0);
    CERTINFO record{};
    EXPECT_EQ(CLP_GetCertInfo(handle, 0, &record), QG_BAD_ARGUMENT);
}

TEST_F(List, MemoryCertificateIsCopiedAtIndexZero)
{
    startOn(MEDIA_MEMORY);
    toolkit.texts["CertGetValidity.to"] = "2026-12-15 12:00:00";
    ASSERT_EQ(setMemoryCert("cert", "R:random", "km", "km key"), 0);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    EXPECT_EQ(CLP_GetCertCount(handle), 1);
    const CERTINFO record = info(0);
    EXPECT_EQ(bytes(record.szSignKey, record.nSignKeyLen), "R:random");
    EXPECT_EQ(bytes(record.szKmKey, record.nKmKeyLen), "km key");
    EXPECT_STREQ(record.szSignCertPath, "");
    EXPECT_EQ(record.nCertType, CERTTYPE_NONE);
    EXPECT_EQ(record.nMediaType, MEDIA_MEMORY);
    EXPECT_EQ(record.nCertState, CERTSTATE_RENEWAL_1024);
    EXPECT_EQ(record.nRemainDay, 25);
    CERTINFO none{};
    EXPECT_EQ(CLP_GetCertInfo(handle, 1, &none), QG_BAD_ARGUMENT);
}

TEST_F(List, RefusedMemoryCertificateLeavesTheCount)
{
    startOn(MEDIA_MEMORY);
    copyText(certOption.szCertDN, "cn=x");
    ASSERT_EQ(CLP_SetType(handle, &certOption), 0);
    ASSERT_EQ(setMemoryCert("cert", "key"), 0);
    EXPECT_EQ(CLP_LoadCertList(handle), 0);
    EXPECT_EQ(CLP_GetCertCount(handle), 0);
    EXPECT_EQ(info(0).nSignCertLen, 0);
}

TEST_F(List, EarlierKmPairStaysWhenTheNextHasNone)
{
    startOn(MEDIA_MEMORY);
    ASSERT_EQ(setMemoryCert("cert", "key", "km", "km key"), 0);
    ASSERT_EQ(setMemoryCert("cert2", "key2", "km2"), 0);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    EXPECT_EQ(bytes(info(0).szSignKey, info(0).nSignKeyLen), "key2");
    EXPECT_EQ(bytes(info(0).szKmCert, info(0).nKmCertLen), "km");
}

TEST_F(List, MemoryCertificateAbove4096BytesIsRefusedAndChangesNothing)
{
    startOn(MEDIA_MEMORY);
    ASSERT_EQ(setMemoryCert("cert", "key", "km", "km key"), 0);
    const std::string tooLong(4097, 'x');
    EXPECT_EQ(setMemoryCert(tooLong, "k"), QG_BAD_ARGUMENT);
    EXPECT_EQ(setMemoryCert("c", tooLong), QG_BAD_ARGUMENT);
    EXPECT_EQ(setMemoryCert("c", "k", tooLong, "k"), QG_BAD_ARGUMENT);
    EXPECT_EQ(setMemoryCert("c", "k", "c", tooLong), QG_BAD_ARGUMENT);
    EXPECT_EQ(bytes(session().m_szMemSignCert, session().m_nMemSignCertLen), "cert");
    EXPECT_EQ(bytes(session().m_szMemKmKey, session().m_nMemKmKeyLen), "km key");
    EXPECT_EQ(setMemoryCert("", "k"), QG_BAD_ARGUMENT);
    EXPECT_EQ(setMemoryCert("c", ""), QG_BAD_ARGUMENT);
}

TEST_F(List, MemoryCertificateOf4096BytesIsTakenAndRefusedByTheLoad)
{
    startOn(MEDIA_MEMORY);
    for (const auto& [cert, key] : {std::pair(4096, 1), std::pair(1, 4096), std::pair(4096, 4096)}) {
        ASSERT_EQ(setMemoryCert(std::string(cert, 'c'), std::string(key, 'k')), 0);
        EXPECT_EQ(CLP_LoadCertList(handle), QG_BAD_ARGUMENT);
        EXPECT_EQ(CLP_GetCertCount(handle), 0);
    }
    ASSERT_EQ(setMemoryCert(std::string(4095, 'c'), std::string(4095, 'k')), 0);
    EXPECT_EQ(CLP_LoadCertList(handle), 0);
    EXPECT_EQ(info(0).nSignCertLen, 4095);
    EXPECT_EQ(info(0).nSignKeyLen, 4095);
}

TEST_F(List, ShorterMemoryKeyLeavesNoTailOfTheLonger)
{
    startOn(MEDIA_MEMORY);
    ASSERT_EQ(setMemoryCert("cert", "a long key"), 0);
    ASSERT_EQ(setMemoryCert("cert", "short"), 0);
    EXPECT_EQ(bytes(session().m_szMemSignKey, 11), std::string("short\0\0\0\0\0\0", 11));
}

TEST_F(List, ChangeOfMediumLeavesTheOtherStoresList)
{
    writeFlat(class1, "a");
    startOn(MEDIA_HARDDISK);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    ASSERT_EQ(CLP_SetMediaType(handle, MEDIA_MEMORY, 0), 0);
    ASSERT_EQ(setMemoryCert("cert", "key"), 0);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    ASSERT_EQ(CLP_SetMediaType(handle, MEDIA_HARDDISK, 0), 0);
    EXPECT_EQ(CLP_GetCertCount(handle), 1);
    EXPECT_EQ(info(0).szSignCertPath, (class1 / "a_sig.cer").string());
}

TEST_F(List, CountOfOtherMediaIsTheDisks)
{
    writeFlat(class1, "a");
    startOn(MEDIA_HARDDISK);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    session().m_nMediaType = MEDIA_NONE;
    EXPECT_EQ(CLP_GetCertCount(handle), 1);
    session().m_nMediaType = MEDIA_SERVICE_MEMORY;
    EXPECT_EQ(CLP_GetCertCount(handle), 0);
}

TEST_F(List, RecordIsCopiedFieldByField)
{
    writeFlat(class1, "a", "pw:R:random", "pw:km");
    startOn(MEDIA_HARDDISK);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    CERTINFO& entry = *disk().record(0);
    copyText(entry.szLibPath, "lib");
    copyText(entry.szPinNumber, "1234");
    ASSERT_EQ(CLP_DecryptPriKey(handle, 0, text("pw")), 0);
    CERTINFO record = info(0);
    EXPECT_STREQ(record.szLibPath, "");
    EXPECT_STREQ(record.szPinNumber, "1234");
    copyText(record.szLibPath, "lib");
    EXPECT_EQ(std::memcmp(&record, &entry, sizeof(record)), 0) << "all other fields are the list's";
}

TEST_F(List, FieldsWithoutAValueKeepTheCallersOld)
{
    toolkit.texts["CertGetAIA"] = "";
    writeFlat(class1, "a");
    startOn(MEDIA_HARDDISK);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    CERTINFO record{};
    copyText(record.szAIA, "old");
    record.nSignKeyLen = 3;
    record.nRemainDay = 9;
    ASSERT_EQ(CLP_GetCertInfo(handle, 0, &record), 0);
    EXPECT_STREQ(record.szAIA, "old");
    EXPECT_EQ(record.nSignKeyLen, 3);
    EXPECT_EQ(record.nRemainDay, 42) << "numbers are always copied";
}

TEST_F(List, BadIndexAndNullRecordAreRefused)
{
    writeFlat(class1, "a");
    startOn(MEDIA_HARDDISK);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    CERTINFO record{};
    for (const int index : {-1, 1, 1 << 30})
        EXPECT_EQ(CLP_GetCertInfo(handle, index, &record), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_GetCertInfo(handle, 0, nullptr), QG_BAD_ARGUMENT);
    session().m_nMediaType = 99;
    EXPECT_EQ(CLP_GetCertInfo(handle, 5, &record), 0);
    EXPECT_EQ(record.nSignCertLen, 0);
}

TEST_F(List, HashFollowsTheLowerCaseWordInTheAlgorithm)
{
    const std::pair<const char*, int> algorithms[] = {{"sha256WithRSAEncryption", 4},
                                                      {"sha512WithRSAEncryption", 5},
                                                      {"sha512 and sha256", 4},
                                                      {"sha1WithRSAEncryption", 1},
                                                      {"SHA256WITHRSA", 1}};
    writeFlat(class1, "a");
    startOn(MEDIA_HARDDISK);
    for (const auto& [algorithm, expected] : algorithms) {
        toolkit.texts["CertGetSignatureAlgorithm"] = algorithm;
        ASSERT_EQ(CLP_LoadCertList(handle), 0);
        int hash = 0;
        EXPECT_EQ(CLP_GetHashAlgInfo(handle, 0, &hash), 0);
        EXPECT_EQ(hash, expected) << algorithm;
    }
    int hash = -7;
    EXPECT_EQ(CLP_GetHashAlgInfo(handle, -1, &hash), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_GetHashAlgInfo(handle, 1, &hash), QG_BAD_ARGUMENT);
    EXPECT_EQ(CLP_GetHashAlgInfo(handle, 0, nullptr), QG_BAD_ARGUMENT);
    EXPECT_EQ(hash, -7) << "a refusal leaves the output alone";
    session().m_nMediaType = MEDIA_NONE;
    EXPECT_EQ(CLP_GetHashAlgInfo(handle, 0, &hash), 0);
    EXPECT_EQ(hash, 1);
}

TEST_F(List, HashOfTheMemoryRecordIgnoresTheIndex)
{
    startOn(MEDIA_MEMORY);
    ASSERT_EQ(setMemoryCert("cert", "key"), 0);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    int hash = 0;
    EXPECT_EQ(CLP_GetHashAlgInfo(handle, 7, &hash), 0);
    EXPECT_EQ(hash, 4);
}

TEST_F(List, CertificateDataIsHandedOutWithTheResultThatStood)
{
    writeFlat(class1, "a");
    startOn(MEDIA_HARDDISK);
    ASSERT_EQ(CLP_LoadCertList(handle), 0);
    char* cert = nullptr;
    int length = 0;
    session().m_nRtn = 77;
    EXPECT_EQ(session().GetCertData(0, &cert, &length), 77);
    EXPECT_EQ(bytes(cert, length + 1), std::string("cert a\0", 7));
    take(cert, length);
    session().m_nMediaType = MEDIA_PFX;
    EXPECT_EQ(session().GetCertData(0, &cert, &length), 77);
    EXPECT_EQ(cert, nullptr);
    EXPECT_EQ(session().GetCertData(-1, &cert, &length), QG_BAD_ARGUMENT);
    EXPECT_EQ(session().GetCertData(0, nullptr, &length), QG_BAD_ARGUMENT);
}

TEST_F(List, MemoryRecordCanBeLoadedDirectly)
{
    startOn(MEDIA_MEMORY);
    EXPECT_EQ(session().LoadMemoryCert(text("cert"), 4, text("key"), 3, nullptr, 0, nullptr, 0), 0);
    EXPECT_EQ(CLP_GetCertCount(handle), 1);
    char* cert = nullptr;
    int length = 0;
    EXPECT_EQ(session().GetCertData(9, &cert, &length), 0);
    EXPECT_EQ(take(cert, length), "cert");
}
