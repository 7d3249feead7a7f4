#pragma once

#include "Util.h"
#include "quillgate/toolkit.h"

/**
 * The log lines of a store or of the session, and the toolkit's text for its last failure.
 *
 * Made on the stack by its owner for the length of one operation; it borrows everything. All lines go through
 * CUtil::SetLogInfo, which does nothing while the path is empty. A failing log never changes a result.
 */
class OperationLog
{
public:
    /**
     * @param path      log file path of the owner; empty: no lines
     * @param toolkit   context that is asked for the text of a failure; may be null
     * @param errorText takes that text, EUC-KR, NUL-terminated
     */
    OperationLog(const char* path, void* toolkit, char (&errorText)[1024])
        : m_path(path), m_toolkit(toolkit), m_errorText(errorText)
    {}

    void* toolkit() const { return m_toolkit; }

    /** "CLoadDISK::LoadCertList() Start..." for the tag "CLoadDISK::LoadCertList()". */
    void start(const char* tag) const;

    /** "CLoadDISK::LoadCertList() End... : 0". */
    void end(const char* tag, int code) const;

    /** A failed toolkit call: asks for its text and writes tag, callee, code and text. */
    void failure(const char* tag, const char* callee, int code) const;

    /** The same without a blank before the text, as verification has always written it. */
    void verifyFailure(const char* tag, const char* callee, int code) const;

    /** A failure that the toolkit has no text for: tag, callee and code. */
    void plainFailure(const char* tag, const char* callee, int code) const;

    /** The same line with the text of the last failure that was asked for, which may be empty. */
    void lastFailure(const char* tag, const char* callee, int code) const;

    /** The same without a text and with the code in brackets. */
    void codeInBrackets(const char* tag, const char* callee, int code) const;

    /** A failed condition: tag and condition. */
    void condition(const char* tag, const char* text) const;

    /** A certificate left out by a filter: tag, "CLPERR_PASS" and the reason. */
    void filtered(const char* tag, const char* reason) const;

    /** A named value: "tag >> name : value". */
    void value(const char* tag, const char* name, const char* text) const;

    /** Runs an operation between its start and end line and gives its result. */
    template <typename Body>
    int traced(const char* tag, Body body) const
    {
        return traced(tag, tag, body);
    }

    /** The same where the end line carries another tag. */
    template <typename Body>
    int traced(const char* tag, const char* endTag, Body body) const
    {
        start(tag);
        const int code = body();
        end(endTag, code);
        return code;
    }

private:
    void askForText() const;

    const char* m_path;
    void* m_toolkit;
    char (&m_errorText)[1024];
};
