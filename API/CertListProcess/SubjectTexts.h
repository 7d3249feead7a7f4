#pragma once

#include "quillgate/toolkit.h"

/** Size that the toolkit is told for each text of the loaded certificate that decides where and how to save.
 */
inline constexpr int SUBJECT_TEXT_SIZE = 1024;

/** Subject and public key of a certificate; each text has one byte more than the toolkit is told. */
struct SubjectTexts
{
    char subject[SUBJECT_TEXT_SIZE + 1] = {};   /**< leaf first, EUC-KR; cut when it is longer */
    char algorithm[SUBJECT_TEXT_SIZE + 1] = {}; /**< of the public key */
    char keyLength[SUBJECT_TEXT_SIZE + 1] = {}; /**< "2048 Bits" */
    char key[SUBJECT_TEXT_SIZE + 1] = {};
};

/** Reads them of the toolkit's loaded certificate. 0, or the toolkit's number and the name of what failed. */
int readSubjectTexts(void* toolkit, SubjectTexts& texts, const char*& callee);
