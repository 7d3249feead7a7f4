// INI texts: the library's object, and the settings of the open toolkit.

#include <string>

#include "MemoryFile.h"
#include "Target.h"
#include "iniFile.h"
#include "toolkit/core/Configuration.h"

using namespace qgtk;

namespace {

/** All that was read is found again. */
void readAll(const CIniFile& ini)
{
    for (unsigned i = 0; i < ini.NumKeys(); ++i) {
        expect(ini.FindKey(ini.KeyName(i)) != CIniFile::noID);
        for (unsigned j = 0; j < ini.NumValues(i); ++j)
            expect(ini.FindValue(i, ini.ValueName(i, j)) == static_cast<long>(j));
        for (unsigned j = 0; j < ini.NumKeyComments(i); ++j)
            ini.KeyComment(i, j);
    }
}

} // namespace

void fuzz(ByteView input)
{
    static const MemoryFile file;
    CIniFile ini;
    ini.ReadString(std::string(textOf(input)).c_str());
    readAll(ini);
    expect(file.fill(input));
    const Configuration settings = Configuration::read(file.path());
    expect(settings.maxIterations > 0 && settings.totalSeconds > 0);
}
