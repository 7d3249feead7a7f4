/*
 * Preloaded: opens the file that QUILLGATE_TEST_MTAB names in place of the mount table. The variable is read
 * at every call, so a test may change it. Without it the real table is opened.
 */
#include <mntent.h>
#include <stdio.h>
#include <stdlib.h>

__attribute__((visibility("default"))) FILE* setmntent(const char* file, const char* mode)
{
    const char* replacement = getenv("QUILLGATE_TEST_MTAB");
    return fopen(replacement ? replacement : file, mode);
}
