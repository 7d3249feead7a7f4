#include "PfxSamples.h"

using namespace samplepki;

namespace {

std::string codeText(int code)
{
    return "code " + std::to_string(code);
}

SampleHolder makeHolder()
{
    SampleHolder holder;
    Authority root =
        Authority::root(nameFromText("cn=뿌리 인증기관,o=yessign,c=kr"), KeyPool::key(KeyKind::Rsa2048, 0));
    Authority issuer =
        root.intermediate(nameFromText("cn=yessignCA,o=yessign,c=kr"), KeyPool::key(KeyKind::Rsa2048, 1));
    holder.root = root.certificate();
    holder.issuer = issuer.certificate();
    const KeyPair signing =
        KeyPool::key(KeyKind::Rsa2048, 2).withRandom(fromHex("0102030405060708090a0b0c0d0e0f1011121300"));
    const KeyPair management =
        KeyPool::key(KeyKind::Rsa2048, 3).withRandom(fromHex("1112131415161718191a1b1c1d1e1f2021222324"));
    Request request{nameFromText("cn=홍길동()0010,ou=personal4IB,o=yessign,c=kr"), signing};
    request.identity = Identity{"홍길동", "1234561234567"};
    holder.signing = {issuer.issue(request), signing.privateKeyInfo()};
    Request forKeys{request.subject, management};
    forKeys.keyUsage = EnvelopeUse;
    holder.management = {issuer.issue(forKeys), management.privateKeyInfo()};
    return holder;
}

} // namespace

const SampleHolder& sampleHolder()
{
    static const SampleHolder holder = makeHolder();
    return holder;
}

std::string PfxTest::exportOne(const std::string& password, const SamplePair& pair, int option)
{
    BinString certificate(library, pair.certificate);
    BinString key(library, pair.key);
    BinString pfx(library);
    const int code = call("PFX_Export", option, text(password), &certificate, &key, &pfx);
    return code == 0 ? pfx.bytes() : codeText(code);
}

std::string PfxTest::exportPairs(const std::string& password, const std::vector<SamplePair>& pairs,
                                 int option)
{
    std::vector<std::string> certificateBytes;
    std::vector<std::string> keyBytes;
    for (const SamplePair& pair : pairs) {
        certificateBytes.push_back(pair.certificate);
        keyBytes.push_back(pair.key);
    }
    BinString certificates(library, listOf(certificateBytes));
    BinString keys(library, listOf(keyBytes));
    BinString pfx(library);
    const int code = call("PFX_ExportMultiPair", option, text(password), &certificates, &keys, &pfx);
    return code == 0 ? pfx.bytes() : codeText(code);
}

PfxTest::Contents PfxTest::import(const std::string& pfx, const std::string& password, int mode)
{
    BinString file(library, pfx);
    BinString certificates(library);
    BinString keys(library);
    BinString authorities(library);
    Contents contents;
    contents.code =
        call("PFX_ImportMultiPair2", mode, text(password), &file, &certificates, &keys, &authorities);
    contents.certificates = split(certificates.bytes());
    contents.keys = split(keys.bytes());
    contents.authorities = split(authorities.bytes());
    return contents;
}

std::string PfxTest::listOf(const std::vector<std::string>& objects)
{
    BinString list(library);
    for (const std::string& object : objects) {
        BinString added(library, object);
        EXPECT_EQ(call("UTIL_AddObject", &added, &list), 0);
    }
    return list.bytes();
}

std::vector<std::string> PfxTest::split(const std::string& list)
{
    std::vector<std::string> objects;
    if (list.empty())
        return objects;
    BinString source(library, list);
    int count = 0;
    EXPECT_EQ(call("UTIL_GetObjectCount", &source, &count), 0);
    for (int i = 0; i < count; ++i) {
        BinString object(library);
        EXPECT_EQ(call("UTIL_GetObject", &source, i, &object), 0);
        objects.push_back(object.bytes());
    }
    return objects;
}
