// Lists of objects: built, read, and refused when they are damaged.

#include "PfxSamples.h"
#include "samplepki/Der.h"

using qgtk::Code;
namespace der = samplepki::der;

class ObjectList : public PfxTest
{
protected:
    int count(const std::string& list)
    {
        BinString source(library, list);
        int result = -1;
        const int code = call("UTIL_GetObjectCount", &source, &result);
        return code == 0 ? result : -code;
    }
};
INSTANTIATE_ZR_SIDE(ObjectList);

TEST_P(ObjectList, ObjectsOfAnyKindComeBackByteForByte)
{
    const std::vector<std::string> objects = {sampleHolder().signing.certificate,
                                              "text",
                                              std::string(1, '\0'),
                                              der::element(der::OctetString, "inner"),
                                              der::sequence({der::integer(1)}) + "behind",
                                              std::string("\x30\x80\x02\x01\x01\0\0", 7),
                                              "\x30\x05",
                                              std::string(70'000, '\xff'),
                                              sampleHolder().signing.key};
    EXPECT_EQ(split(listOf(objects)), objects);
}

TEST_P(ObjectList, CertificatesBehindOneAnotherAreAList)
{
    const SampleHolder& holder = sampleHolder();
    const std::string joined = holder.signing.certificate + holder.issuer + holder.root;
    EXPECT_EQ(listOf({holder.signing.certificate, holder.issuer, holder.root}), joined);
    EXPECT_EQ(split(joined)[1], holder.issuer);
    BinString authorities(library, listOf({holder.issuer, holder.root}));
    EXPECT_EQ(call("CERT_SetCaPubs", &authorities), 0);
    BinString wrapped(library, listOf({holder.issuer + "\n", holder.root}));
    EXPECT_EQ(call("CERT_SetCaPubs", &wrapped), 0) << "one list format for all";
}

TEST_P(ObjectList, LengthsPastTheEndAreDamage)
{
    const std::string list = listOf({"one", sampleHolder().signing.certificate, "three"});
    ASSERT_EQ(count(list), 3);
    int sound = 0;
    for (std::size_t length = 1; length < list.size(); ++length)
        sound += count(list.substr(0, length)) == -number(Code::ListDamaged) ? 0 : 1;
    EXPECT_EQ(sound, 2) << "cut between two objects it is a shorter list";
    using namespace std::string_literals;
    for (const std::string& bad :
         {"\x04\x05"s, "\x04\x84\x7f\xff\xff\xff"s, "\x04\x84\xff\xff\xff\xff"s,
          "\x30\x88\x7f\xff\xff\xff\xff\xff\xff\xff"s, "\x04\x89\x01\x01\x01\x01\x01\x01\x01\x01\x01"s,
          "\x30\x80\x00\x00"s, "\x24\x03\x04\x01x"s, "\x10\x01x"s, "\x02\x01\x01"s, "\x00\x00"s, "text"s,
          "\x30"s, "\xff\xff\xff\xff\xff"s})
        EXPECT_EQ(count(bad), -number(Code::ListDamaged)) << samplepki::toHex(bad);
}

TEST_P(ObjectList, DamageLeavesOutputsAsTheyWere)
{
    BinString damaged(library, "text");
    BinString object(library, "object");
    BinString kept(library, "kept");
    int result = 7;
    EXPECT_EQ(call("UTIL_GetObjectCount", &damaged, &result), number(Code::ListDamaged));
    EXPECT_EQ(result, 7);
    EXPECT_EQ(call("UTIL_GetObject", &damaged, 0, &kept), number(Code::ListDamaged));
    EXPECT_EQ(call("UTIL_AddObject", &object, &damaged), number(Code::ListDamaged));
    EXPECT_EQ(damaged.bytes(), "text");
    BinString list(library, listOf({"a", "b"}));
    for (const int index : {-1, 2, 2147483647, -2147483647 - 1})
        EXPECT_EQ(call("UTIL_GetObject", &list, index, &kept), number(Code::ListIndex)) << index;
    EXPECT_EQ(kept.bytes(), "kept");
    EXPECT_EQ(call("UTIL_GetObject", &list, 1, &list), 0) << "a list may be its own output";
    EXPECT_EQ(list.bytes(), "b");
}

TEST_P(ObjectList, NullAndEmptyAreRefused)
{
    BINSTR null = {};
    unsigned char byte = 0;
    BINSTR negative{&byte, -1};
    BinString object(library, "object");
    BinString list(library, listOf({"a"}));
    int result = 0;
    for (BINSTR* bad : {static_cast<BINSTR*>(nullptr), &null, &negative}) {
        EXPECT_EQ(call("UTIL_AddObject", bad, &list), number(Code::BadArgument));
        EXPECT_EQ(call("UTIL_GetObjectCount", bad, &result), number(Code::BadArgument));
        EXPECT_EQ(call("UTIL_GetObject", bad, 0, &object), number(Code::BadArgument));
    }
    EXPECT_EQ(call("UTIL_AddObject", &object, &negative), number(Code::BadArgument));
    EXPECT_EQ(call("UTIL_AddObject", &object, static_cast<BINSTR*>(nullptr)), number(Code::BadArgument));
    EXPECT_EQ(call("UTIL_GetObject", &list, 0, static_cast<BINSTR*>(nullptr)), number(Code::BadArgument));
    EXPECT_EQ(call("UTIL_GetObjectCount", &list, static_cast<int*>(nullptr)), number(Code::BadArgument));
    EXPECT_EQ(list.bytes(), listOf({"a"}));
}
