// What is exported comes back, through every operation of both interfaces.
// The fixture's functions are PFX_Export, PFX_ExportMultiPair and PFX_ImportMultiPair2.

#include "PfxSamples.h"

using qgtk::Code;
using testing::ElementsAre;
using testing::IsEmpty;

class RoundTrip : public PfxTest
{
protected:
    const SampleHolder& holder = sampleHolder();

    /** The number of a text of exportOne and its like. */
    static std::string failure(Code code) { return "code " + std::to_string(number(code)); }
};
INSTANTIATE_ZR_SIDE(RoundTrip);

TEST_P(RoundTrip, KeyComesBackByteForByte)
{
    for (const int option : {0, 1}) {
        const std::string pfx = exportOne("비밀번호", holder.signing, option);
        for (const int mode : {0, 16}) {
            const Contents contents = import(pfx, "비밀번호", mode);
            EXPECT_EQ(contents.code, 0);
            EXPECT_THAT(contents.certificates, ElementsAre(holder.signing.certificate));
            EXPECT_THAT(contents.keys, ElementsAre(holder.signing.key)) << "random value and all";
            EXPECT_THAT(contents.authorities, IsEmpty());
        }
    }
}

TEST_P(RoundTrip, TwoPairsComeBackInTheirOrder)
{
    const std::string pfx = exportPairs("password", {holder.signing, holder.management});
    const Contents contents = import(pfx, "password");
    EXPECT_EQ(contents.code, 0);
    EXPECT_THAT(contents.certificates,
                ElementsAre(holder.signing.certificate, holder.management.certificate));
    EXPECT_THAT(contents.keys, ElementsAre(holder.signing.key, holder.management.key));
}

TEST_P(RoundTrip, KeysInAnotherOrderArePaired)
{
    BinString certificates(library, listOf({holder.signing.certificate, holder.management.certificate}));
    BinString keys(library, listOf({holder.management.key, holder.signing.key}));
    BinString pfx(library);
    ASSERT_EQ(call("PFX_ExportMultiPair", 0, text("p"), &certificates, &keys, &pfx), 0);
    EXPECT_THAT(import(pfx.bytes(), "p").keys, ElementsAre(holder.signing.key, holder.management.key));
}

TEST_P(RoundTrip, BothArgumentListsOfTheOneSymbolWork)
{
    BinString certificates(library, listOf({holder.signing.certificate, holder.management.certificate}));
    BinString keys(library, listOf({holder.signing.key, holder.management.key}));
    BinString authorities(library, listOf({holder.issuer, holder.root}));
    BinString pfx(library);
    ASSERT_EQ(call("PFX_ExportMultiPair", 1, text("one"), &certificates, &keys, &pfx), 0);
    EXPECT_THAT(import(pfx.bytes(), "one").authorities, IsEmpty());
    ASSERT_EQ(call("PFX_ExportMultiPair", text("two"), &certificates, &keys, &authorities, &pfx), 0);
    const Contents contents = import(pfx.bytes(), "two");
    EXPECT_THAT(contents.certificates,
                ElementsAre(holder.signing.certificate, holder.management.certificate));
    EXPECT_THAT(contents.keys, ElementsAre(holder.signing.key, holder.management.key));
    EXPECT_THAT(contents.authorities, ElementsAre(holder.issuer, holder.root));
}

TEST_P(RoundTrip, MixedUpListsOfTheOneSymbolAreRefusedInBoth)
{
    BinString certificates(library, listOf({holder.signing.certificate}));
    BinString keys(library, listOf({holder.signing.key}));
    BinString damaged(library, listOf({"damaged"}));
    BinString kept(library, "kept");
    const std::string password(1, 'p');
    for (const int option : {0, 1, 16})
        EXPECT_EQ(call("PFX_ExportMultiPair", option, text(password), &keys, &certificates, &kept),
                  number(Code::BadArgument));
    EXPECT_EQ(call("PFX_ExportMultiPair", 0, text(password), &damaged, &keys, &kept),
              number(Code::CertListDamaged));
    EXPECT_EQ(call("PFX_ExportMultiPair", text(password), &keys, &certificates, &certificates, &kept),
              number(Code::NotSupported))
        << "certificates where the keys belong: the first form, whose option this is not";
    EXPECT_EQ(call("PFX_ExportMultiPair", text(password), &certificates, &damaged, &certificates, &kept),
              number(Code::NotSupported));
    EXPECT_EQ(call("PFX_ExportMultiPair", text(password), &certificates, &keys, static_cast<BINSTR*>(nullptr),
                   &kept),
              number(Code::BadArgument));
    EXPECT_EQ(
        call("PFX_ExportMultiPair", static_cast<char*>(nullptr), &certificates, &keys, &certificates, &kept),
        number(Code::BadArgument));
    EXPECT_EQ(kept.bytes(), "kept");
}

TEST_P(RoundTrip, ChainIsExportedOnceAndComesBackAsAuthorities)
{
    BinString certificate(library, holder.signing.certificate);
    BinString key(library, holder.signing.key);
    BinString chain(library, listOf({holder.signing.certificate, holder.issuer, holder.root}));
    BinString pfx(library);
    ASSERT_EQ(call("PFX_Export2", text("p"), &certificate, &key, &chain, &pfx), 0);
    BinString certificates(library);
    BinString keys(library);
    BinString authorities(library);
    ASSERT_EQ(call("PFX_ImportMultiPair", text("p"), &pfx, &certificates, &keys, &authorities), 0);
    EXPECT_EQ(certificates.bytes(), holder.signing.certificate);
    EXPECT_EQ(keys.bytes(), holder.signing.key);
    EXPECT_EQ(authorities.bytes(), holder.issuer + holder.root);
    EXPECT_EQ(call("CERT_SetCaPubs", &authorities), 0);
}

TEST_P(RoundTrip, SingleImportGivesTheSigningPairAndTheChain)
{
    BinString certificates(library, listOf({holder.management.certificate, holder.signing.certificate}));
    BinString keys(library, listOf({holder.management.key, holder.signing.key}));
    BinString chain(library, listOf({holder.issuer}));
    BinString pfx(library);
    ASSERT_EQ(call("PFX_ExportMultiPair", text("p"), &certificates, &keys, &chain, &pfx), 0);
    BinString certificate(library, "what was there");
    BinString key(library);
    BinString authorities(library);
    ASSERT_EQ(call("PFX_Import", text("p"), &pfx, &certificate, &key, &authorities), 0);
    EXPECT_EQ(certificate.bytes(), holder.signing.certificate);
    EXPECT_EQ(key.bytes(), holder.signing.key);
    EXPECT_EQ(authorities.bytes(), holder.issuer);
    ASSERT_EQ(call("PFX_Import", text("p"), &pfx, &certificate, &key, static_cast<BINSTR*>(nullptr)), 0)
        << "who wants no chain hands no record";
}

TEST_P(RoundTrip, WrongPasswordHasItsOwnCode)
{
    for (const int option : {0, 1}) {
        const std::string pfx = exportOne("right", holder.signing, option);
        for (const std::string& wrong :
             {std::string("wrong"), std::string(), std::string("right "), std::string("비밀번호"),
              eucKr("비밀번호"), std::string("\xff\xfe"), std::string(5000, 'x')}) {
            EXPECT_EQ(import(pfx, wrong).code, 4505) << wrong;
            EXPECT_EQ(import(pfx, wrong, 16).code, 4505) << wrong;
        }
    }
    EXPECT_THAT(errorText(), testing::StartsWith(eucKr("PFX 파일의 비밀번호가 올바르지 않습니다 (4505)")));
}

TEST_P(RoundTrip, PasswordsOfBothEncodingsOpenOneAnother)
{
    // "철" in EUC-KR is a sound letter in UTF-8.
    for (const std::string& utf8 :
         {std::string("비밀번호!1"), std::string("철"), std::string("똠방각하"), std::string("김철수abc")}) {
        for (const int option : {0, 1}) {
            const std::string fromUtf8 = exportOne(utf8, holder.signing, option);
            const std::string fromEucKr = exportOne(eucKr(utf8), holder.signing, option);
            for (const std::string& pfx : {fromUtf8, fromEucKr}) {
                EXPECT_EQ(import(pfx, utf8).code, 0) << utf8;
                EXPECT_EQ(import(pfx, eucKr(utf8)).code, 0) << utf8;
            }
        }
    }
}

TEST_P(RoundTrip, PasswordsOfAnyLengthAndKindWork)
{
    for (const std::string& password :
         {std::string(), std::string(1, 'k'), std::string(70'000, 'k'), std::string("\xff\xfe\x80"),
          std::string("p\xc3\xa4ss"), std::string("😀")}) {
        const std::string pfx = exportOne(password, holder.signing);
        EXPECT_EQ(import(pfx, password).code, 0) << password.size();
        EXPECT_EQ(import(pfx, password + "x").code, 4505) << password.size();
    }
    BinString certificate(library, holder.signing.certificate);
    BinString key(library, holder.signing.key);
    BinString pfx(library);
    EXPECT_EQ(call("PFX_Export", 0, static_cast<char*>(nullptr), &certificate, &key, &pfx), 0)
        << "a null password is an empty one";
    EXPECT_EQ(import(pfx.bytes(), "").code, 0);
}

TEST_P(RoundTrip, WhatIsNoPairIsNotExported)
{
    EXPECT_EQ(exportOne("p", {holder.signing.certificate, holder.management.key}),
              failure(Code::KeyMismatch));
    EXPECT_EQ(exportOne("p", {holder.signing.certificate, holder.signing.certificate}),
              failure(Code::KeyNotPlain));
    EXPECT_EQ(exportOne("p", {holder.signing.key, holder.signing.key}), failure(Code::CertDamaged));
    EXPECT_EQ(exportOne("p", {holder.signing.certificate, "key"}), failure(Code::KeyNotPlain));
    for (const int option : {2, 16, -1})
        EXPECT_EQ(exportOne("p", holder.signing, option), failure(Code::NotSupported)) << option;
    BinString certificates(library, listOf({holder.signing.certificate, holder.management.certificate}));
    BinString key(library, listOf({holder.signing.key}));
    BinString pfx(library, "kept");
    EXPECT_EQ(call("PFX_ExportMultiPair", 0, text("p"), &certificates, &key, &pfx),
              number(Code::BadArgument));
    BinString twice(library, listOf({holder.signing.key, holder.signing.key}));
    EXPECT_EQ(call("PFX_ExportMultiPair", 0, text("p"), &certificates, &twice, &pfx),
              number(Code::KeyMismatch));
    BinString same(library, listOf({holder.signing.certificate, holder.signing.certificate}));
    BinString keys(library, listOf({holder.management.key, holder.signing.key}));
    EXPECT_EQ(call("PFX_ExportMultiPair", 0, text("p"), &same, &keys, &pfx), number(Code::KeyMismatch))
        << "a key would be lost";
    EXPECT_EQ(pfx.bytes(), "kept");
    EXPECT_EQ(call("PFX_ExportMultiPair", 0, text("p"), &same, &twice, &pfx), 0)
        << "two certificates of one key";
}

TEST_P(RoundTrip, KeysOfOtherKindsArePairedToo)
{
    using namespace samplepki;
    const KeyPair curve = KeyPool::key(KeyKind::EcP256, 0);
    const KeyPair otherCurve = KeyPool::key(KeyKind::EcP256, 1);
    Authority root = Authority::root(nameFromText("cn=r,o=o,c=kr"), KeyPool::key(KeyKind::Rsa2048, 0));
    const SamplePair pair{root.issue({nameFromText("cn=curve,o=o,c=kr"), curve}), curve.privateKeyInfo()};
    const SamplePair other{root.issue({nameFromText("cn=other,o=o,c=kr"), otherCurve}),
                           otherCurve.privateKeyInfo()};
    EXPECT_EQ(exportOne("p", {pair.certificate, other.key}), failure(Code::KeyMismatch));
    EXPECT_EQ(exportOne("p", {pair.certificate, holder.signing.key}), failure(Code::KeyMismatch));
    EXPECT_EQ(exportOne("p", {holder.signing.certificate, pair.key}), failure(Code::KeyMismatch));
    const std::string pfx = exportPairs("p", {holder.signing, pair, other});
    EXPECT_THAT(import(pfx, "p").keys, ElementsAre(holder.signing.key, pair.key, other.key));
    BinString file(library, exportOne("p", pair));
    BinString certificate(library);
    BinString key(library);
    BinString authorities(library);
    ASSERT_EQ(call("PFX_Import", text("p"), &file, &certificate, &key, &authorities), 0);
    EXPECT_EQ(key.bytes(), pair.key);
}

TEST_P(RoundTrip, UnknownModesAreRefused)
{
    const std::string pfx = exportOne("p", holder.signing);
    for (const int mode : {1, 8, 17, -1})
        EXPECT_EQ(import(pfx, "p", mode).code, number(Code::NotSupported)) << mode;
}

class GovernmentRoundTrip : public PfxTest
{
protected:
    const SampleHolder& holder = sampleHolder();
};
INSTANTIATE_TEST_SUITE_P(GovernmentLibrary, GovernmentRoundTrip, testing::Values(gpkiSide),
                         [](const auto& side) { return side.param.name; });

TEST_P(GovernmentRoundTrip, BothPairsComeBackInTheirPlaces)
{
    BinString signCertificate(library, holder.signing.certificate);
    BinString signKey(library, holder.signing.key);
    BinString kmCertificate(library, holder.management.certificate);
    BinString kmKey(library, holder.management.key);
    BinString pfx(library);
    BinString out[4] = {BinString(library), BinString(library), BinString(library), BinString(library)};
    ASSERT_EQ(call("PFX_Export", text("비밀"), &signCertificate, &signKey, &kmCertificate, &kmKey, &pfx), 0);
    ASSERT_EQ(call("PFX_Import", text("비밀"), &pfx, &out[0], &out[1], &out[2], &out[3]), 0);
    EXPECT_EQ(out[0].bytes(), holder.signing.certificate);
    EXPECT_EQ(out[1].bytes(), holder.signing.key);
    EXPECT_EQ(out[2].bytes(), holder.management.certificate);
    EXPECT_EQ(out[3].bytes(), holder.management.key);
    EXPECT_EQ(call("PFX_Import", text("wrong"), &pfx, &out[0], &out[1], &out[2], &out[3]), 4505);
    EXPECT_EQ(out[1].bytes(), holder.signing.key) << "left as it was";
}

TEST_P(GovernmentRoundTrip, SinglePairLeavesTheOtherPlacesEmpty)
{
    BinString certificate(library, holder.management.certificate);
    BinString key(library, holder.management.key);
    BINSTR null = {};
    BinString pfx(library);
    BinString out[4] = {BinString(library, "old"), BinString(library, "old"), BinString(library),
                        BinString(library)};
    ASSERT_EQ(call("PFX_Export", text("p"), &certificate, &key, &null, static_cast<BINSTR*>(nullptr), &pfx),
              0);
    ASSERT_EQ(call("PFX_Import", text("p"), &pfx, &out[0], &out[1], &out[2], &out[3]), 0);
    EXPECT_EQ(out[0].bytes() + out[1].bytes(), "");
    EXPECT_EQ(out[2].bytes(), holder.management.certificate);
    EXPECT_EQ(out[3].bytes(), holder.management.key);
    EXPECT_EQ(call("PFX_Export", text("p"), &certificate, &key, &certificate, &null, &pfx),
              number(Code::BadArgument))
        << "half a pair";
    EXPECT_FALSE(library.has("UTIL_AddObject")) << "lists are the main toolkit's";
}
