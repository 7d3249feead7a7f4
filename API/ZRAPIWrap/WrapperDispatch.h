#pragma once

#include "WrapperAPI.h"

/** A side without the operation. */
constexpr auto NotOffered = [](auto& /* wrapper */) -> int {
    return QG_NOT_AVAILABLE;
};

inline bool CWrapperAPI::CheckInit() const
{
    switch (m_nAPIType) {
    case TOOLKIT_ZRTK:
        return m_pZrtk != nullptr;
    case TOOLKIT_GPKI:
        return m_pGpki != nullptr;
    default:
        return true;
    }
}

template <class OnZrtk, class OnGpki>
int CWrapperAPI::Dispatch(int nRefusal, OnZrtk onZrtk, OnGpki onGpki)
{
    if (!CheckInit())
        return QG_NO_CONTEXT;
    if (nRefusal != QG_OK)
        return nRefusal;
    switch (m_nAPIType) {
    case TOOLKIT_ZRTK:
        return onZrtk(*m_pZrtk);
    case TOOLKIT_GPKI:
        return onGpki(*m_pGpki);
    default:
        return QG_OK;
    }
}

template <class... Args>
int CWrapperAPI::Both(int nRefusal, int (CZRTKWrap::*pZrtk)(std::type_identity_t<Args>...),
                      int (CGPKIWrap::*pGpki)(std::type_identity_t<Args>...), Args... args)
{
    return Dispatch(
        nRefusal, [=](CZRTKWrap& zrtk) { return (zrtk.*pZrtk)(args...); },
        [=](CGPKIWrap& gpki) { return (gpki.*pGpki)(args...); });
}

template <class... Args>
int CWrapperAPI::OnlyZrtk(int nRefusal, int (CZRTKWrap::*pZrtk)(std::type_identity_t<Args>...), Args... args)
{
    return Dispatch(
        nRefusal, [=](CZRTKWrap& zrtk) { return (zrtk.*pZrtk)(args...); }, NotOffered);
}

template <class... Args>
int CWrapperAPI::OnlyGpki(int nRefusal, int (CGPKIWrap::*pGpki)(std::type_identity_t<Args>...), Args... args)
{
    return Dispatch(nRefusal, NotOffered, [=](CGPKIWrap& gpki) { return (gpki.*pGpki)(args...); });
}
