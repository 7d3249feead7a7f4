#include "Operations.h"

namespace {

/** The formatter writes "BINSTR * pName" where it takes a star for a product. */
std::string withTightStar(std::string type)
{
    const std::size_t star = type.find(" *");
    return star != std::string::npos ? type.erase(star, 1) : type;
}

} // namespace

std::vector<Parameter> parseParameters(const std::string& text)
{
    std::vector<Parameter> parameters;
    for (std::size_t start = 1; start < text.size() - 1;) {
        const std::size_t end = text.find_first_of(",)", start);
        const std::string parameter = text.substr(start, end - start);
        const std::size_t blank = parameter.rfind(' ');
        parameters.push_back({withTightStar(parameter.substr(0, blank)), parameter.substr(blank + 1)});
        start = text[end] == ',' ? end + 2 : text.size();
    }
    return parameters;
}

const std::vector<Operation>& allOperations()
{
    static const std::vector<Operation> operations = [] {
        std::vector<Operation> all;
        for (const auto add : {addFrameOperations, addCertificateOperations, addKeyOperations,
                               addMediaOperations, addMessageOperations, addProtocolOperations,
                               addTokenOperations, addCryptoOperations, addUtilityOperations})
            add(all);
        return all;
    }();
    return operations;
}
