#include "OperationLog.h"

#include <cstring>

void OperationLog::start(const char* tag) const
{
    CUtil::SetLogInfo(m_path, "%s Start...", tag);
}

void OperationLog::end(const char* tag, int code) const
{
    CUtil::SetLogInfo(m_path, "%s End... : %d", tag, code);
}

void OperationLog::askForText() const
{
    // The toolkit's copy is bounded by the size it is told and may lack a terminator.
    std::memset(m_errorText, 0, sizeof(m_errorText));
    ZR_GetErrInfo(m_toolkit, sizeof(m_errorText), m_errorText);
    m_errorText[sizeof(m_errorText) - 1] = '\0';
}

void OperationLog::failure(const char* tag, const char* callee, int code) const
{
    askForText();
    lastFailure(tag, callee, code);
}

void OperationLog::verifyFailure(const char* tag, const char* callee, int code) const
{
    askForText();
    CUtil::SetLogInfo(m_path, "%s >> %s : %d(%s)", tag, callee, code, m_errorText);
}

void OperationLog::lastFailure(const char* tag, const char* callee, int code) const
{
    CUtil::SetLogInfo(m_path, "%s >> %s : %d (%s)", tag, callee, code, m_errorText);
}

void OperationLog::codeInBrackets(const char* tag, const char* callee, int code) const
{
    CUtil::SetLogInfo(m_path, "%s >> %s(%d)", tag, callee, code);
}

void OperationLog::plainFailure(const char* tag, const char* callee, int code) const
{
    CUtil::SetLogInfo(m_path, "%s >> %s : %d", tag, callee, code);
}

void OperationLog::condition(const char* tag, const char* text) const
{
    CUtil::SetLogInfo(m_path, "%s >> %s", tag, text);
}

void OperationLog::filtered(const char* tag, const char* reason) const
{
    CUtil::SetLogInfo(m_path, "%s >> %s(%s)", tag, "CLPERR_PASS", reason);
}

void OperationLog::value(const char* tag, const char* name, const char* text) const
{
    CUtil::SetLogInfo(m_path, "%s >> %s : %s", tag, name, text);
}
