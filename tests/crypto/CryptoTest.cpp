#include "CryptoTest.h"

#include <random>

namespace {

Pair makePair(const std::filesystem::path& directory, const std::vector<std::string>& arguments)
{
    const std::string privateFile = directory / "made.key";
    const std::string publicFile = directory / "made.pub";
    std::vector<std::string> make = {"openssl", "genpkey", "-quiet", "-outform", "DER", "-out", privateFile};
    make.insert(make.end(), arguments.begin(), arguments.end());
    const std::vector<std::string> convert = {"openssl",  "pkcs8", "-topk8", "-nocrypt",
                                              "-inform",  "DER",   "-in",    privateFile,
                                              "-outform", "DER",   "-out",   privateFile + "8"};
    const std::vector<std::string> half = {"openssl", "pkey",     "-inform", "DER",  "-in",     privateFile,
                                           "-pubout", "-outform", "DER",     "-out", publicFile};
    for (const auto& command : {make, convert, half}) {
        const CommandResult result = runCommand(command);
        EXPECT_EQ(result.status, 0) << result.output;
    }
    return {readFile(privateFile + "8"), readFile(publicFile)};
}

} // namespace

std::string unhex(const std::string& text)
{
    return std::string(qgtk::textOf(fromHex(text)));
}

std::string hex(const std::string& bytes)
{
    return toHex(qgtk::bytesOf(bytes));
}

std::string noise(std::size_t length, unsigned seed)
{
    std::mt19937 generator(seed);
    std::string bytes(length, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(generator());
    return bytes;
}

void CryptoTest::SetUp()
{
    ToolkitTest::SetUp();
    directory = TestHome::scratch("crypto");
}

void CryptoTest::setKey(int algorithm, const std::string& key, const std::string& iv)
{
    ASSERT_EQ(tell("CRYPT_SetKeyAndIV", algorithm, unhex(key), unhex(iv)), 0);
}

std::string CryptoTest::file(const std::string& name, const std::string& bytes) const
{
    writeFile(at(name), bytes);
    return at(name);
}

std::string CryptoTest::openssl(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), "openssl");
    const CommandResult result = runCommand(arguments);
    EXPECT_EQ(result.status, 0) << testing::PrintToString(arguments) << result.output;
    return result.output;
}

Pair CryptoTest::opensslPair(const std::vector<std::string>& arguments) const
{
    return makePair(directory, arguments);
}

const Pair& rsaPair()
{
    static const Pair pair = makePair(TestHome::scratch("rsa-pair"), {"-algorithm", "RSA"});
    return pair;
}

const Pair& ecPair()
{
    static const Pair pair =
        makePair(TestHome::scratch("ec-pair"), {"-algorithm", "EC", "-pkeyopt", "group:P-256"});
    return pair;
}
