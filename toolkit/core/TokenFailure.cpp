#include "toolkit/core/TokenFailure.h"

#include <array>
#include <cstdio>

#include "toolkit/core/Errors.h"

namespace qgtk {

namespace {

Code codeOf(CK_RV result)
{
    switch (result) {
    case CKR_HOST_MEMORY:
        return Code::OutOfMemory;
    case CKR_SLOT_ID_INVALID:
        return Code::NoSlot;
    case CKR_TOKEN_NOT_PRESENT:
        return Code::NoToken;
    case CKR_TOKEN_NOT_RECOGNIZED:
    case CKR_USER_PIN_NOT_INITIALIZED:
        return Code::TokenUninitialised;
    case CKR_DEVICE_REMOVED:
    case CKR_SESSION_CLOSED:
    case CKR_SESSION_HANDLE_INVALID:
    case CKR_CRYPTOKI_NOT_INITIALIZED: // somebody else in the process has ended the module
        return Code::TokenRemoved;
    case CKR_SESSION_EXISTS:
        return Code::TokenSessionOpen;
    case CKR_PIN_INCORRECT:
        return Code::WrongPin;
    case CKR_PIN_LOCKED:
        return Code::PinLocked;
    case CKR_PIN_INVALID:
    case CKR_PIN_LEN_RANGE:
    case CKR_PIN_EXPIRED:
        return Code::PinRefused;
    case CKR_USER_ALREADY_LOGGED_IN:
    case CKR_USER_ANOTHER_ALREADY_LOGGED_IN:
        return Code::TokenLoggedIn;
    case CKR_USER_NOT_LOGGED_IN:
        return Code::TokenLoggedOut;
    case CKR_TOKEN_WRITE_PROTECTED:
    case CKR_SESSION_READ_ONLY:
        return Code::TokenReadOnly;
    case CKR_DEVICE_MEMORY:
        return Code::TokenFull;
    case CKR_KEY_FUNCTION_NOT_PERMITTED:
    case CKR_KEY_TYPE_INCONSISTENT:
        return Code::KeyUnsuitable;
    case CKR_MECHANISM_INVALID:
    case CKR_MECHANISM_PARAM_INVALID:
        return Code::NotSupported;
    case CKR_DATA_LEN_RANGE:
        return Code::DataLength;
    case CKR_SIGNATURE_INVALID:
    case CKR_SIGNATURE_LEN_RANGE:
        return Code::SignatureWrong;
    case CKR_ENCRYPTED_DATA_INVALID:
    case CKR_ENCRYPTED_DATA_LEN_RANGE:
        return Code::NotDecryptable;
    default:
        return Code::ModuleFailed;
    }
}

} // namespace

void requireOk(CK_RV result, const char* function)
{
    if (result == CKR_OK)
        return;
    std::array<char, 80> detail{};
    std::snprintf(detail.data(), detail.size(), "%s: CKR 0x%08lX", function, result);
    throw Failure(codeOf(result), detail.data());
}

} // namespace qgtk
