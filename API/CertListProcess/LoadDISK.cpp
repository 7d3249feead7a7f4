#include "LoadDISK.h"

#include "PairFiles.h"

CLoadDISK::CLoadDISK(int /*nLanguage*/, int nTKType, char* /*pszWorkDir*/) : m_nTKType(nTKType) {}

CLoadDISK::~CLoadDISK() = default;
