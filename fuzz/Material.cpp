#include "Material.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

qgtk::Bytes material(const char* name)
{
    const std::string path = std::string(FUZZ_SEEDS "/material/") + name;
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        std::fprintf(stderr, "%s is missing: run fuzz-seeds\n", path.c_str());
        std::exit(2);
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

void trustAuthorities(qgtk::Context& context)
{
    context.trust(material("root"));
    context.setCaCertificates(material("authority"));
}
