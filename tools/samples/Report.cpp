#include "Report.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::size_t columns = 7;
using Row = std::array<std::string, columns>;

/** Columns that a text takes on a terminal: letters of the Korean script take two. */
std::size_t width(const std::string& text)
{
    std::size_t total = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0) != 0x80)
            total += byte >= 0xE0 ? 2 : 1;
    }
    return total;
}

const char* stateText(State state)
{
    constexpr const char* texts[] = {"valid", "about to expire", "expired"};
    return texts[static_cast<std::size_t>(state)];
}

const char* keyText(samplepki::KeyKind kind)
{
    constexpr const char* texts[] = {"RSA-1024", "RSA-2048", "RSA-4096", "EC P-256"};
    return texts[static_cast<std::size_t>(kind)];
}

std::string formText(const samplepki::KeyFileForm& form)
{
    using samplepki::KeyCipher;
    constexpr const char* ciphers[] = {
        "SEED",    "ARIA-128", "ARIA-192", "ARIA-256",    "AES-128",
        "AES-192", "AES-256",  "3DES",     "SEED PBKDF1", "SEED PBKDF1 (fixed vector)"};
    const std::string cipher = ciphers[static_cast<std::size_t>(form.cipher)];
    return form.cipher < KeyCipher::SeedPbkdf1 ? cipher + " PBKDF2 " + form.hash : cipher;
}

std::string passwordText(const HolderPlan& plan, const SampleOptions& options)
{
    const std::string km = keyManagementPassword(plan, options);
    if (km.empty())
        return options.password + " (no key management)";
    return km == options.password ? km : options.password + ", key management " + km;
}

Row makeRow(const HolderPlan& plan, const SampleOptions& options, const std::filesystem::path& place)
{
    return {samplepki::commonName(samplepki::nameFromText(plan.subject)),
            stateText(plan.state),
            passwordText(plan, options),
            keyText(plan.key) + std::string(plan.keyRandom ? "" : ", no random value"),
            formText(plan.form),
            plan.identity,
            place.string()};
}

void printRow(std::ostream& out, const Row& row, const std::array<std::size_t, columns>& widths)
{
    for (std::size_t i = 0; i + 1 < columns; ++i)
        out << row[i] << std::string(widths[i] - width(row[i]) + 2, ' ');
    out << row.back() << '\n';
}

} // namespace

void printReport(std::ostream& out, const SampleOptions& options,
                 const std::vector<std::filesystem::path>& places)
{
    std::vector<Row> rows = {{"name", "state", "password", "key", "key file", "identity number", "files in"}};
    for (std::size_t i = 0; i < places.size(); ++i)
        rows.push_back(makeRow(holderPlans()[i], options, places[i]));
    std::array<std::size_t, columns> widths{};
    for (const auto& row : rows)
        for (std::size_t i = 0; i < columns; ++i)
            widths[i] = std::max(widths[i], width(row[i]));
    for (const auto& row : rows)
        printRow(out, row, widths);
}
