#include "toolkit/core/Identity.h"

#include <openssl/asn1t.h>

#include "toolkit/core/Errors.h"
#include "toolkit/core/Oid.h"

namespace qgtk {

struct UserInfo
{
    ASN1_OBJECT* type;
    ASN1_TYPE* value;
};

DEFINE_STACK_OF(UserInfo)

struct IdentifyData
{
    ASN1_TYPE* realName;
    STACK_OF(UserInfo) * userInfo;
};

struct VirtualIdData
{
    X509_ALGOR* hash;
    ASN1_OCTET_STRING* virtualId;
};

struct HashContent
{
    ASN1_PRINTABLESTRING* idNumber;
    ASN1_BIT_STRING* random;
};

namespace {

// clang-format off
ASN1_SEQUENCE(UserInfo) = {
    ASN1_SIMPLE(UserInfo, type, ASN1_OBJECT),
    ASN1_SIMPLE(UserInfo, value, ASN1_ANY)
} static_ASN1_SEQUENCE_END(UserInfo)

ASN1_SEQUENCE(IdentifyData) = {
    ASN1_SIMPLE(IdentifyData, realName, ASN1_ANY),
    ASN1_SEQUENCE_OF(IdentifyData, userInfo, UserInfo)
} static_ASN1_SEQUENCE_END(IdentifyData)

ASN1_SEQUENCE(VirtualIdData) = {
    ASN1_SIMPLE(VirtualIdData, hash, X509_ALGOR),
    ASN1_EXP(VirtualIdData, virtualId, ASN1_OCTET_STRING, 0)
} static_ASN1_SEQUENCE_END(VirtualIdData)

ASN1_SEQUENCE(HashContent) = {
    ASN1_SIMPLE(HashContent, idNumber, ASN1_PRINTABLESTRING),
    ASN1_SIMPLE(HashContent, random, ASN1_BIT_STRING)
} static_ASN1_SEQUENCE_END(HashContent)
    // clang-format on

    void freeIdentifyData(IdentifyData * data)
{
    ASN1_item_free(reinterpret_cast<ASN1_VALUE*>(data), ASN1_ITEM_rptr(IdentifyData));
}

void freeVirtualId(VirtualIdData* data)
{
    ASN1_item_free(reinterpret_cast<ASN1_VALUE*>(data), ASN1_ITEM_rptr(VirtualIdData));
}

void freeHashContent(HashContent* content)
{
    OPENSSL_cleanse(content->random->data, static_cast<std::size_t>(content->random->length));
    OPENSSL_cleanse(content->idNumber->data, static_cast<std::size_t>(content->idNumber->length));
    ASN1_item_free(reinterpret_cast<ASN1_VALUE*>(content), ASN1_ITEM_rptr(HashContent));
}

/** Unpacks a sequence held in a value of any type. Null when it is something else. */
template <typename T>
T* unpack(const ASN1_TYPE* value, const ASN1_ITEM* item)
{
    if (!value || value->type != V_ASN1_SEQUENCE)
        return nullptr;
    return static_cast<T*>(ASN1_item_unpack(value->value.sequence, item));
}

/** The virtual identifier among the user information; null when there is none. */
const ASN1_TYPE* virtualIdOf(const IdentifyData& data)
{
    for (int i = 0; i < sk_UserInfo_num(data.userInfo); ++i) {
        const UserInfo* info = sk_UserInfo_value(data.userInfo, i);
        if (dottedOid(info->type) == oids::virtualId)
            return info->value;
    }
    return nullptr;
}

/** The holder's name as a string; other types than strings give an empty one. */
StringHandle nameOf(const ASN1_TYPE* realName)
{
    constexpr unsigned long textTypes = B_ASN1_DIRECTORYSTRING | B_ASN1_IA5STRING | B_ASN1_NUMERICSTRING;
    const bool text = (ASN1_tag2bit(realName->type) & textTypes) != 0;
    return owned<StringHandle>(text ? ASN1_STRING_dup(realName->value.asn1_string)
                                    : ASN1_STRING_type_new(V_ASN1_UTF8STRING));
}

/** The digits that are hashed. */
SecretBytes bareNumber(std::string_view idNumber)
{
    SecretBytes bare;
    bare.reserve(idNumber.size());
    for (const char c : idNumber)
        if (c != '-' && c != ' ')
            bare.push_back(static_cast<std::uint8_t>(c));
    return bare;
}

SecretBytes encodeHashContent(ByteView idNumber, ByteView random)
{
    using ContentHandle = Handle<HashContent, freeHashContent>;
    const ContentHandle content =
        owned<ContentHandle>(reinterpret_cast<HashContent*>(ASN1_item_new(ASN1_ITEM_rptr(HashContent))));
    ASN1_BIT_STRING* bits = content->random;
    const bool set = ASN1_STRING_set(content->idNumber, idNumber.data(), static_cast<int>(idNumber.size())) &&
                     ASN1_STRING_set(bits, random.data(), static_cast<int>(random.size()));
    if (!set)
        throw std::bad_alloc();
    // Without the flag trailing zero bits are dropped when the value is encoded.
    bits->flags = (bits->flags & ~7L) | ASN1_STRING_FLAG_BITS_LEFT;
    const auto encode = [](HashContent* value, unsigned char** target) {
        return ASN1_item_i2d(reinterpret_cast<ASN1_VALUE*>(value), target, ASN1_ITEM_rptr(HashContent));
    };
    return encodeDer<SecretBytes>(encode, content.get());
}

Bytes hashOf(const Crypto& crypto, const X509_ALGOR* algorithm, ByteView random, std::string_view idNumber)
{
    const SecretBytes number = bareNumber(idNumber);
    require(!number.empty() && !random.empty(), Code::BadArgument);
    const ASN1_OBJECT* object = nullptr;
    X509_ALGOR_get0(&object, nullptr, nullptr, algorithm);
    const std::string digest = dottedOid(object);
    const SecretBytes content = encodeHashContent(number, random);
    try {
        return crypto.hash(digest.c_str(), crypto.hash(digest.c_str(), content));
    } catch (const Failure&) {
        throw Failure(Code::IdentityHashUnknown, digest);
    }
}

using VirtualIdHandle = Handle<VirtualIdData, freeVirtualId>;
using IdentifyHandle = Handle<IdentifyData, freeIdentifyData>;
using TypeHandle = Handle<ASN1_TYPE, ASN1_TYPE_free>;

void setString(ASN1_STRING* string, ByteView bytes)
{
    if (ASN1_STRING_set(string, bytes.data(), static_cast<int>(bytes.size())) != 1)
        throw std::bad_alloc();
}

ObjectHandle objectOf(const char* dotted)
{
    return owned<ObjectHandle>(OBJ_txt2obj(dotted, 1));
}

/** Puts a structure into a value of any type, as a sequence. */
void pack(void* structure, const ASN1_ITEM* item, ASN1_TYPE* value)
{
    if (!ASN1_TYPE_pack_sequence(item, structure, &value))
        throw std::bad_alloc();
}

} // namespace

std::optional<Identity> decodeIdentity(const OTHERNAME* name)
{
    if (dottedOid(name->type_id) != oids::identifyData)
        return std::nullopt;
    const IdentifyHandle data(unpack<IdentifyData>(name->value, ASN1_ITEM_rptr(IdentifyData)));
    if (!data)
        return std::nullopt;
    const VirtualIdHandle virtualId(unpack<VirtualIdData>(virtualIdOf(*data), ASN1_ITEM_rptr(VirtualIdData)));
    if (!virtualId)
        return std::nullopt;
    const ByteView bytes = contentOf(virtualId->virtualId);
    AlgorithmHandle hash(virtualId->hash);
    virtualId->hash = nullptr;
    return Identity{nameOf(data->realName), std::move(hash), Bytes(bytes.begin(), bytes.end())};
}

Identity identityOf(const Certificate& certificate)
{
    using NamesHandle = Handle<GENERAL_NAMES, GENERAL_NAMES_free>;
    const NamesHandle names = extensionOf<NamesHandle>(certificate, NID_subject_alt_name);
    for (int i = 0; i < sk_GENERAL_NAME_num(names.get()); ++i) {
        const GENERAL_NAME* name = sk_GENERAL_NAME_value(names.get(), i);
        std::optional<Identity> identity;
        if (name->type == GEN_OTHERNAME)
            identity = decodeIdentity(name->d.otherName);
        if (identity)
            return std::move(*identity);
    }
    throw Failure(Code::NoIdentity);
}

NameHandle makeIdentity(const Crypto& crypto, std::string_view realName, ByteView random,
                        std::string_view idNumber)
{
    const auto virtualId = owned<VirtualIdHandle>(
        reinterpret_cast<VirtualIdData*>(ASN1_item_new(ASN1_ITEM_rptr(VirtualIdData))));
    const DigestHandle digest = crypto.digest("SHA256");
    X509_ALGOR_set_md(virtualId->hash, digest.get());
    const Bytes hash = hashOf(crypto, virtualId->hash, random, idNumber);
    setString(virtualId->virtualId, hash);

    const auto data =
        owned<IdentifyHandle>(reinterpret_cast<IdentifyData*>(ASN1_item_new(ASN1_ITEM_rptr(IdentifyData))));
    StringHandle name = owned<StringHandle>(ASN1_STRING_type_new(V_ASN1_UTF8STRING));
    setString(name.get(), bytesOf(realName));
    ASN1_TYPE_set(data->realName, V_ASN1_UTF8STRING, name.release());
    auto* info = reinterpret_cast<UserInfo*>(ASN1_item_new(ASN1_ITEM_rptr(UserInfo)));
    if (!info || sk_UserInfo_push(data->userInfo, info) == 0)
        throw std::bad_alloc();
    info->type = objectOf(oids::virtualId).release();
    pack(virtualId.get(), ASN1_ITEM_rptr(VirtualIdData), info->value);

    NameHandle other = owned<NameHandle>(GENERAL_NAME_new());
    TypeHandle value = owned<TypeHandle>(ASN1_TYPE_new());
    ASN1_TYPE* packed = value.get();
    pack(data.get(), ASN1_ITEM_rptr(IdentifyData), packed);
    ObjectHandle type = objectOf(oids::identifyData);
    if (GENERAL_NAME_set0_othername(other.get(), type.get(), value.get()) != 1)
        throw std::bad_alloc();
    static_cast<void>(type.release());
    static_cast<void>(value.release());
    return other;
}

Bytes identityHash(const Crypto& crypto, const Certificate& certificate, ByteView random,
                   std::string_view idNumber)
{
    return hashOf(crypto, identityOf(certificate).hash.get(), random, idNumber);
}

void verifyIdentity(const Crypto& crypto, const Certificate& certificate, ByteView random,
                    std::string_view idNumber)
{
    const Identity identity = identityOf(certificate);
    const Bytes hash = hashOf(crypto, identity.hash.get(), random, idNumber);
    const bool equal = hash.size() == identity.virtualId.size() &&
                       CRYPTO_memcmp(hash.data(), identity.virtualId.data(), hash.size()) == 0;
    require(equal, Code::IdentityMismatch);
}

} // namespace qgtk
