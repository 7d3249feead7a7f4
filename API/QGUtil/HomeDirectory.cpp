#include "HomeDirectory.h"

#include <pwd.h>
#include <unistd.h>

#include "BoundedText.h"

bool homeDirectory(char (&path)[1024])
{
    passwd entry{};
    passwd* found = nullptr;
    char texts[16384];
    if (getpwuid_r(getuid(), &entry, texts, sizeof(texts), &found) != 0 || !found)
        return false;
    if (!found->pw_dir || !*found->pw_dir)
        return false;
    copyText(path, found->pw_dir);
    return true;
}
