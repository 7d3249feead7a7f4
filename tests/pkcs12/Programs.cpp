#include "Programs.h"

#include <array>
#include <cstdio>

#include "toolkit/core/Base64.h"

Outcome runIn(const std::string& directory, const std::string& command)
{
    const std::string line = "cd '" + directory + "' && export LD_PRELOAD= && { " + command + "; } 2>&1";
    Outcome outcome{-1, {}};
    FILE* pipe = popen(line.c_str(), "r");
    std::array<char, 4096> buffer{};
    for (std::size_t count = 0; (count = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
        outcome.output.append(buffer.data(), count);
    outcome.status = pclose(pipe);
    return outcome;
}

std::vector<std::string> pemBlocks(const std::string& text, const std::string& kind)
{
    const std::string begin = "-----BEGIN " + kind + "-----";
    const std::string end = "-----END " + kind + "-----";
    std::vector<std::string> blocks;
    for (std::size_t place = text.find(begin); place != std::string::npos; place = text.find(begin, place)) {
        place += begin.size();
        const std::string body = text.substr(place, text.find(end, place) - place);
        const auto bytes = qgtk::base64Decode(qgtk::bytesOf(body));
        blocks.emplace_back(bytes.begin(), bytes.end());
    }
    return blocks;
}

std::string pemOf(const std::string& der, const std::string& kind)
{
    constexpr std::size_t lineLength = 64;
    const auto encoded = qgtk::base64Encode(qgtk::bytesOf(der));
    const std::string body(encoded.begin(), encoded.end());
    std::string text = "-----BEGIN " + kind + "-----\n";
    for (std::size_t place = 0; place < body.size(); place += lineLength)
        text += body.substr(place, lineLength) + "\n";
    return text + "-----END " + kind + "-----\n";
}
