#pragma once

#include "toolkit/core/Handles.h"

namespace qgtk {

using PbeHandle = Handle<PBEPARAM, PBEPARAM_free>;
using Pbes2Handle = Handle<PBE2PARAM, PBE2PARAM_free>;
using Pbkdf2Handle = Handle<PBKDF2PARAM, PBKDF2PARAM_free>;

/** The object identifier of an algorithm, borrowed. */
inline const ASN1_OBJECT* objectOf(const X509_ALGOR* algorithm)
{
    const ASN1_OBJECT* object = nullptr;
    X509_ALGOR_get0(&object, nullptr, nullptr, algorithm);
    return object;
}

/** Unpacks the parameters of an algorithm. Null when they are missing or something else. */
template <typename H>
H parametersOf(const X509_ALGOR* algorithm, const ASN1_ITEM* item)
{
    const void* parameters = nullptr;
    int type = V_ASN1_UNDEF;
    X509_ALGOR_get0(nullptr, &type, &parameters, algorithm);
    if (type != V_ASN1_SEQUENCE)
        return nullptr;
    return H(static_cast<typename H::pointer>(
        ASN1_item_unpack(static_cast<const ASN1_STRING*>(parameters), item)));
}

} // namespace qgtk
