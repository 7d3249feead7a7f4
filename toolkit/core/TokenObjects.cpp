#include "toolkit/core/TokenObjects.h"

#include <algorithm>
#include <array>

#include "toolkit/core/Errors.h"
#include "toolkit/core/TokenFailure.h"

namespace qgtk {

namespace {

CK_BBOOL flagTrue = CK_TRUE;
CK_BBOOL flagFalse = CK_FALSE;

/** Bytes that an attribute may have, as a certificate may; what is unavailable has more. */
constexpr std::size_t mostBytes = 1U << 20;

} // namespace

void TokenAttributes::addBytes(CK_ATTRIBUTE_TYPE type, ByteView bytes)
{
    m_attributes.push_back({type, const_cast<std::uint8_t*>(bytes.data()), bytes.size()});
}

void TokenAttributes::addNumber(CK_ATTRIBUTE_TYPE type, CK_ULONG number)
{
    m_numbers.push_back(number);
    m_attributes.push_back({type, &m_numbers.back(), sizeof number});
}

void TokenAttributes::addFlag(CK_ATTRIBUTE_TYPE type, bool flag)
{
    m_attributes.push_back({type, flag ? &flagTrue : &flagFalse, sizeof(CK_BBOOL)});
}

std::vector<CK_OBJECT_HANDLE> findObjects(const TokenSession& session, const TokenAttributes& attributes)
{
    const CK_FUNCTION_LIST& functions = session.functions();
    invoke("C_FindObjectsInit", functions.C_FindObjectsInit, session.handle(), attributes.data(),
           attributes.count());
    const std::shared_ptr<void> end(nullptr, [&](void*) { functions.C_FindObjectsFinal(session.handle()); });
    std::vector<CK_OBJECT_HANDLE> found;
    std::array<CK_OBJECT_HANDLE, 64> some{};
    CK_ULONG count = 0;
    do {
        invoke("C_FindObjects", functions.C_FindObjects, session.handle(), some.data(), CK_ULONG(some.size()),
               &count);
        require(count <= some.size(), Code::ModuleFailed);
        found.insert(found.end(), some.begin(), some.begin() + static_cast<std::ptrdiff_t>(count));
    } while (count > 0);
    std::ranges::sort(found);
    return found;
}

SecretBytes readAttribute(const TokenSession& session, CK_OBJECT_HANDLE object, CK_ATTRIBUTE_TYPE type)
{
    CK_ATTRIBUTE attribute{type, nullptr, 0};
    const auto get = session.functions().C_GetAttributeValue;
    const CK_RV measured = get(session.handle(), object, &attribute, 1);
    if (measured == CKR_ATTRIBUTE_TYPE_INVALID)
        return {};
    requireOk(measured, "C_GetAttributeValue");
    require(attribute.ulValueLen <= mostBytes, Code::ModuleFailed);
    SecretBytes bytes(attribute.ulValueLen);
    attribute.pValue = bytes.data();
    if (!bytes.empty())
        invoke("C_GetAttributeValue", get, session.handle(), object, &attribute, CK_ULONG(1));
    require(attribute.ulValueLen <= bytes.size(), Code::ModuleFailed);
    bytes.resize(attribute.ulValueLen);
    return bytes;
}

CK_OBJECT_HANDLE createObject(const TokenSession& session, const TokenAttributes& attributes)
{
    CK_OBJECT_HANDLE object = 0;
    invoke("C_CreateObject", session.functions().C_CreateObject, session.handle(), attributes.data(),
           attributes.count(), &object);
    return object;
}

void destroyObject(const TokenSession& session, CK_OBJECT_HANDLE object)
{
    invoke("C_DestroyObject", session.functions().C_DestroyObject, session.handle(), object);
}

NewObjects::~NewObjects()
{
    for (const CK_OBJECT_HANDLE object : m_objects)
        m_session.functions().C_DestroyObject(m_session.handle(), object);
}

void NewObjects::create(const TokenAttributes& attributes)
{
    add([&] { return createObject(m_session, attributes); });
}

} // namespace qgtk
