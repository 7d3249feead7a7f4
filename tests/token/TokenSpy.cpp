// A module that is SoftHSM, but for what a TokenSpy says.

#include "TokenSpy.h"

#include <algorithm>
#include <chrono>
#include <dlfcn.h>
#include <openssl/crypto.h>
#include <thread>

namespace {

TokenSpy spy;
CK_FUNCTION_LIST* softHsm = nullptr;
CK_FUNCTION_LIST spied;

/** SoftHSM works in the process's own context, whatever the thread's default is. */
class GlobalContext
{
public:
    GlobalContext() : m_before(OSSL_LIB_CTX_set0_default(OSSL_LIB_CTX_get0_global_default()))
    {
        if (spy.expected && m_before != spy.expected)
            ++spy.strangers;
    }
    ~GlobalContext() { OSSL_LIB_CTX_set0_default(m_before); }
    GlobalContext(const GlobalContext&) = delete;
    GlobalContext& operator=(const GlobalContext&) = delete;

private:
    OSSL_LIB_CTX* m_before;
};

/** A function of SoftHSM's, in that context. */
template <auto Function, typename = decltype(Function)>
struct Real;
template <auto Function, typename... Arguments>
struct Real<Function, CK_RV (*CK_FUNCTION_LIST::*)(Arguments...)>
{
    static CK_RV call(Arguments... arguments)
    {
        const GlobalContext context;
        return (softHsm->*Function)(arguments...);
    }
};

template <auto... Functions>
void placeAll()
{
    ((spied.*Functions = Real<Functions>::call), ...);
}

using List = CK_FUNCTION_LIST;

/** Begins a step that works with a mechanism. */
template <auto Function>
CK_RV begin(CK_SESSION_HANDLE session, CK_MECHANISM* mechanism, CK_OBJECT_HANDLE key)
{
    return mechanism->mechanism == spy.lacks ? CKR_MECHANISM_INVALID
                                             : Real<Function>::call(session, mechanism, key);
}

void cutZeros(CK_BYTE* bytes, CK_ULONG* length)
{
    CK_BYTE* const end = bytes + *length;
    CK_BYTE* const first = std::find_if(bytes, end, [](CK_BYTE byte) { return byte != 0; });
    *length = static_cast<CK_ULONG>(std::copy(first, end, bytes) - bytes);
}

/** A step of one part; the call that only asks for a length is not its end. */
template <auto Function>
CK_RV step(CK_SESSION_HANDLE session, CK_BYTE* data, CK_ULONG size, CK_BYTE* result, CK_ULONG* length)
{
    constexpr CK_ULONG longest = 2000;
    const CK_RV done = Real<Function>::call(session, data, size, result, length);
    if (done == CKR_OK && spy.spares > 0) {
        --spy.spares;
        return done;
    }
    if (done == CKR_OK && !result && spy.measure != 0)
        *length = spy.measure;
    if (done == CKR_OK && result && spy.claim != 0)
        *length = spy.claim;
    if (done == CKR_OK && !result && spy.lengthens)
        *length = longest;
    if (done != CKR_OK || !result)
        return done;
    if (spy.lengthens) {
        std::fill(result + *length, result + longest, CK_BYTE(1));
        *length = longest;
    }
    if (spy.damages)
        result[*length - 1] ^= 1;
    if (spy.cutsZeros)
        cutZeros(result, length);
    return spy.answer;
}

CK_RV derive(CK_SESSION_HANDLE session, CK_MECHANISM* mechanism, CK_OBJECT_HANDLE key, CK_ATTRIBUTE* wanted,
             CK_ULONG count, CK_OBJECT_HANDLE* made)
{
    if (spy.answer != CKR_OK)
        return spy.answer;
    const CK_RV done = Real<&List::C_DeriveKey>::call(session, mechanism, key, wanted, count, made);
    spy.agreed += done == CKR_OK ? 1 : 0;
    return done;
}

CK_RV destroyObject(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object)
{
    CK_OBJECT_CLASS kind = CKO_DATA;
    CK_ATTRIBUTE asked = {CKA_CLASS, &kind, sizeof kind};
    Real<&List::C_GetAttributeValue>::call(session, object, &asked, 1);
    const CK_RV done = Real<&List::C_DestroyObject>::call(session, object);
    spy.agreed -= done == CKR_OK && kind == CKO_SECRET_KEY ? 1 : 0;
    return done;
}

CK_RV readAttribute(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object, CK_ATTRIBUTE* attribute,
                    CK_ULONG count)
{
    const CK_RV done = Real<&List::C_GetAttributeValue>::call(session, object, attribute, count);
    const CK_ULONG said = attribute->pValue ? spy.attributeClaim : spy.attributeMeasure;
    if (done == CKR_OK && said != 0)
        attribute->ulValueLen = said;
    return done;
}

CK_RV createObject(CK_SESSION_HANDLE session, CK_ATTRIBUTE* attributes, CK_ULONG count,
                   CK_OBJECT_HANDLE* object)
{
    if (spy.room == 0)
        return CKR_DEVICE_MEMORY;
    --spy.room;
    return Real<&List::C_CreateObject>::call(session, attributes, count, object);
}

CK_RV listSlots(CK_BBOOL present, CK_SLOT_ID* slots, CK_ULONG* count)
{
    const CK_RV done = Real<&List::C_GetSlotList>::call(present, slots, count);
    if (done == CKR_OK && !slots && spy.plugs)
        --*count;
    return done;
}

CK_RV describeToken(CK_SLOT_ID slot, CK_TOKEN_INFO* info)
{
    const CK_RV done = Real<&List::C_GetTokenInfo>::call(slot, info);
    if (spy.counts)
        info->ulSessionCount = spy.sessions;
    if (spy.isProtected)
        info->flags |= CKF_WRITE_PROTECTED;
    return done;
}

CK_RV openSession(CK_SLOT_ID slot, CK_FLAGS flags, void* data, CK_NOTIFY notify, CK_SESSION_HANDLE* session)
{
    const CK_RV done = Real<&List::C_OpenSession>::call(slot, flags, data, notify, session);
    spy.sessions += done == CKR_OK ? 1 : 0;
    return done;
}

CK_RV closeSession(CK_SESSION_HANDLE session)
{
    const CK_RV done = Real<&List::C_CloseSession>::call(session);
    spy.sessions -= done == CKR_OK ? 1 : 0;
    return done;
}

CK_RV end(void* reserved)
{
    ++spy.ends;
    spy.sessions = 0;
    return Real<&List::C_Finalize>::call(reserved);
}

CK_RV makePair(CK_SESSION_HANDLE session, CK_MECHANISM* mechanism, CK_ATTRIBUTE* open, CK_ULONG openCount,
               CK_ATTRIBUTE* secret, CK_ULONG secretCount, CK_OBJECT_HANDLE* publicKey,
               CK_OBJECT_HANDLE* privateKey)
{
    const auto done = std::chrono::steady_clock::now() + std::chrono::milliseconds(spy.slowness);
    while (std::chrono::steady_clock::now() < done)
        std::this_thread::yield();
    return Real<&List::C_GenerateKeyPair>::call(session, mechanism, open, openCount, secret, secretCount,
                                                publicKey, privateKey);
}

} // namespace

extern "C" __attribute__((visibility("default"))) TokenSpy* tokenSpy()
{
    return &spy;
}

extern "C" __attribute__((visibility("default"))) CK_RV C_GetFunctionList(CK_FUNCTION_LIST** list)
{
    void* const module = dlopen(QGTK_SOFTHSM_FILE, RTLD_NOW);
    const auto get = reinterpret_cast<CK_C_GetFunctionList>(dlsym(module, "C_GetFunctionList"));
    const CK_RV result = get(&softHsm);
    if (result != CKR_OK)
        return result;
    spied = *softHsm;
    placeAll<&List::C_GetSessionInfo, &List::C_FindObjectsInit, &List::C_FindObjects,
             &List::C_FindObjectsFinal>();
    spied.C_DestroyObject = destroyObject;
    spied.C_GetAttributeValue = readAttribute;
    spied.C_CreateObject = createObject;
    spied.C_GetSlotList = listSlots;
    spied.C_GetTokenInfo = describeToken;
    spied.C_OpenSession = openSession;
    spied.C_CloseSession = closeSession;
    spied.C_Finalize = end;
    spied.C_GenerateKeyPair = makePair;
    spied.C_SignInit = begin<&List::C_SignInit>;
    spied.C_DecryptInit = begin<&List::C_DecryptInit>;
    spied.C_Sign = step<&List::C_Sign>;
    spied.C_Decrypt = step<&List::C_Decrypt>;
    spied.C_DeriveKey = derive;
    *list = &spied;
    return CKR_OK;
}
