#include "SubjectTexts.h"

#include "ToolkitBytes.h"

int readSubjectTexts(void* toolkit, SubjectTexts& texts, const char*& callee)
{
    callee = "CertGetSubjectName()";
    if (const int code = CertGetSubjectName(toolkit, SUBJECT_TEXT_SIZE, texts.subject))
        return code;
    callee = "CertGetPubKeyInfo()";
    ToolkitBytes info(toolkit);
    return CertGetPubKeyInfo(toolkit, texts.algorithm, texts.keyLength, SUBJECT_TEXT_SIZE, texts.key,
                             info.get());
}
