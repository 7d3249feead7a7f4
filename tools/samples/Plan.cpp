#include "Plan.h"

using samplepki::KeyCipher;
using samplepki::KeyKind;
using samplepki::Spelling;
using samplepki::StringType;

namespace {

constexpr const char* rootSubjects[] = {
    "cn=Sample RootCA 1,ou=Sample Certification Authority Central,o=KISA,c=KR",
    "cn=Sample GPKIRootCA 1,ou=GPKI,o=Government of Korea,c=KR",
};

// The addresses lead nowhere: nothing of the sample data is to reach a real authority.
constexpr IssuerPlan plannedIssuers[] = {
    {Root::Accredited, "cn=yessignCA Class 2,ou=AccreditedCA,o=yessign,c=kr",
     "ldap://ds.yessign.example:389/ou=dp5p1,ou=AccreditedCA,o=yessign,c=kr?certificateRevocationList",
     "http://ocsp.yessign.example:4612", "http://www.yessign.example/cps.htm"},
    {Root::Accredited, "cn=signGATE CA5,ou=AccreditedCA,o=KICA,c=KR",
     "ldap://ldap.kica.example:389/ou=dp4p1,ou=crldp,ou=AccreditedCA,o=KICA,c=KR?certificateRevocationList",
     "http://ocsp.kica.example:9020", "http://www.kica.example/cps.html"},
    {Root::Accredited, "cn=SignKorea CA3,ou=AccreditedCA,o=SignKorea,c=KR",
     "ldap://dir.signkorea.example:389/ou=dp4p1,ou=AccreditedCA,o=SignKorea,c=KR?certificateRevocationList",
     "http://ocsp.signkorea.example:5050", "http://www.signkorea.example/cps.html"},
    {Root::Government, "cn=CA131100001,ou=GPKI,o=Government of Korea,c=KR",
     "ldap://cen.dir.example:389/cn=crl1p1dp1,cn=CA131100001,ou=GPKI,o=Government of Korea,c=KR?"
     "certificateRevocationList;binary",
     "http://gva.gpki.example:8000", "http://www.gpki.example/cps.html"},
    {Root::Government, "cn=CA001,ou=MPKI,o=Ministry of National Defense,c=KR",
     "ldap://dir.mpki.example:389/cn=crl1,cn=CA001,ou=MPKI,o=Ministry of National Defense,c=KR?"
     "certificateRevocationList;binary",
     "", "http://www.mpki.example/cps.html"},
};

const HolderPlan holders[] = {
    // NPKI: the personal certificate that most people have.
    {.place = Place::Npki,
     .folder = "yessign",
     .issuer = Issuer::Yessign,
     .subject = "cn=홍길동()0010041202403150001234,ou=HNB,ou=personal4IB,o=yessign,c=kr",
     .keyManagement = KeyManagement::SamePassword,
     .form = {KeyCipher::Seed},
     .policy = "1.2.410.200005.1.1.1",
     .identity = "8001011999991"},
    {.place = Place::Npki,
     .folder = "yessign",
     .issuer = Issuer::Yessign,
     .subject = "cn=김영희(KIM YOUNG HEE)0088044202411200005678,ou=SHB,ou=personal4IB,o=yessign,c=kr",
     .state = State::Renewal,
     .form = {KeyCipher::SeedPbkdf1},
     .policy = "1.2.410.200005.1.1.4",
     .identity = "8502022999992"},
    {.place = Place::Npki,
     .folder = "KICA",
     .issuer = Issuer::Kica,
     .subject = "cn=이철수,ou=RA센터,ou=licensedCA,o=KICA,c=KR",
     .state = State::Expired,
     .keyManagement = KeyManagement::SamePassword,
     .form = {KeyCipher::SeedFixedVector},
     .policy = "1.2.410.200004.5.2.1.2",
     .identity = "7903031999993"},
    {.place = Place::Npki,
     .folder = "signGATE",
     .issuer = Issuer::Kica,
     .subject = "cn=박서연,ou=은행,ou=licensedCA,o=KICA,c=KR",
     .stringType = StringType::Bmp,
     .form = {KeyCipher::Aria128, "SHA256"},
     .policy = "1.2.410.200004.5.2.1.7.1",
     .identity = "9204042999994"},
    {.place = Place::Npki,
     .folder = "SignKorea",
     .issuer = Issuer::SignKorea,
     .subject = "cn=최수진()2024070912345678,ou=증권,ou=personal,o=SignKorea,c=KR",
     .keyManagement = KeyManagement::OwnPassword,
     .form = {KeyCipher::Aes128, "SHA256"},
     .policy = "1.2.410.200004.5.1.1.5",
     .identity = "8805052999995"},
    {.place = Place::Npki,
     .folder = "YESSIGN",
     .spelling = Spelling::Upper,
     .issuer = Issuer::Yessign,
     .subject = "cn=정민호()0020043201911110004321,ou=WRB,ou=personal4IB,o=yessign,c=kr",
     .keyRandom = false,
     .form = {KeyCipher::Aria192},
     .policy = "1.2.410.200005.1.1.1",
     .identity = "7706061999996"},
    {.place = Place::Npki,
     .folder = "kica",
     .spelling = Spelling::Lower,
     .issuer = Issuer::Kica,
     .subject = "cn=강한결,ou=RA센터,ou=licensedCA,o=KICA,c=KR",
     .key = KeyKind::Rsa4096,
     .form = {KeyCipher::Aes256, "SHA256"},
     .policy = "1.2.410.200004.5.2.1.2",
     .identity = "9107071999997"},
    {.place = Place::Npki,
     .folder = "SignKorea",
     .issuer = Issuer::SignKorea,
     .subject = "cn=윤서연()2025020187654321,ou=증권,ou=personal,o=SignKorea,c=KR",
     .key = KeyKind::EcP256,
     .form = {KeyCipher::Aes256, "SHA256", 200000},
     .policy = "1.2.410.200004.5.1.1.9",
     .identity = "9508082999998"},
    {.place = Place::Npki,
     .folder = "yessign",
     .issuer = Issuer::Yessign,
     .subject = "cn=(주)한빛상사()0003044202501060007777,ou=IBK,ou=corporation4EC,o=yessign,c=kr",
     .keyManagement = KeyManagement::SamePassword,
     .form = {KeyCipher::Aria256, "SHA256"},
     .policy = "1.2.410.200005.1.1.5",
     .identity = "1234567891"},
    // An old issuer that wrote names in EUC-KR bytes.
    {.place = Place::Npki,
     .folder = "kica",
     .spelling = Spelling::Lower,
     .issuer = Issuer::Kica,
     .subject = "cn=임꺽정,ou=RA센터,ou=licensedCA,o=KICA,c=KR",
     .stringType = StringType::EucKrInT61,
     .form = {KeyCipher::SeedPbkdf1},
     .policy = "1.2.410.200004.5.2.1.2",
     .identity = "7009091999999"},
    // GPKI: civil servants in class2, an agency in class1.
    {.place = Place::Gpki,
     .folder = "class2",
     .issuer = Issuer::Government,
     .subject = "cn=850성춘향001,ou=people,ou=시험구청,o=Government of Korea,c=KR",
     .keyManagement = KeyManagement::SamePassword,
     .form = {KeyCipher::Aes192, "SHA256"},
     .policy = "1.2.410.100001.2.2.1",
     .identity = "7510101999990"},
    {.place = Place::Gpki,
     .folder = "class2",
     .issuer = Issuer::Government,
     .subject = "cn=851한지우002,ou=people,ou=시험구청,o=Government of Korea,c=KR",
     .state = State::Renewal,
     .keyManagement = KeyManagement::SamePassword,
     .form = {KeyCipher::TripleDes},
     .policy = "1.2.410.100001.2.2.2",
     .identity = "9011112999991"},
    {.place = Place::Gpki,
     .folder = "class1",
     .spelling = Spelling::Lower,
     .issuer = Issuer::Government,
     .subject = "cn=시험구청전자관인001,ou=시험구청,o=Government of Korea,c=KR",
     .keyManagement = KeyManagement::SamePassword,
     .form = {KeyCipher::Seed, "SHA256"},
     .policy = "1.2.410.100001.2.1.1",
     .identity = "9876543211"},
    // MPKI: both forms in one directory.
    {.place = Place::MpkiPairs,
     .issuer = Issuer::Defence,
     .subject = "cn=서도윤,ou=people,ou=MPKI,o=Ministry of National Defense,c=KR",
     .keyManagement = KeyManagement::SamePassword,
     .form = {KeyCipher::Aria128},
     .policy = "1.2.410.200006.2.1",
     .identity = "9812121999992"},
    {.place = Place::MpkiHolder,
     .issuer = Issuer::Defence,
     .subject = "cn=문새롬,ou=people,ou=MPKI,o=Ministry of National Defense,c=KR",
     .keyManagement = KeyManagement::SamePassword,
     .form = {KeyCipher::Seed},
     .policy = "1.2.410.200006.2.1",
     .identity = "9901012999993"},
};

} // namespace

std::span<const char* const> rootPlans()
{
    return rootSubjects;
}

std::span<const IssuerPlan> issuerPlans()
{
    return plannedIssuers;
}

std::span<const HolderPlan> holderPlans()
{
    return holders;
}
