#pragma once

#include <filesystem>

#include "Command.h"
#include "KeySamples.h"
#include "TestHome.h"
#include "ToolkitLibrary.h"
#include "quillgate/algorithms.h"

/** What an operation answered and gave. */
struct Answer
{
    int code = -1;
    std::string bytes;
};

/** An argument as an operation takes it: a string is a byte string, which stays the test's. */
template <typename T>
struct Passed
{
    explicit Passed(T passed) : value(passed) {}
    T get() { return value; }
    T value;
};
template <>
struct Passed<std::string>
{
    explicit Passed(const std::string& bytes)
        : record{reinterpret_cast<unsigned char*>(const_cast<char*>(bytes.data())),
                 static_cast<int>(bytes.size())}
    {}
    BINSTR* get() { return &record; }
    BINSTR record;
};

/** Bytes from hexadecimal text. */
std::string unhex(const std::string& text);

/** Lower-case hexadecimal text of bytes. */
std::string hex(const std::string& bytes);

/** Bytes that look random and are the same in every run. */
std::string noise(std::size_t length, unsigned seed = 1);

/** A pair of keys, DER. */
struct Pair
{
    std::string privateKey;
    std::string publicKey;
};

/** A context, and a directory for files that other programs read and write. */
class CryptoTest : public ToolkitTest
{
protected:
    void SetUp() override;

    bool isZrtk() const { return GetParam().prefix == std::string("ZRTK_"); }

    /** Calls an operation that gives one byte string, its last argument, which a failure must not touch. */
    template <typename... Arguments>
    Answer ask(const std::string& operation, const Arguments&... arguments)
    {
        BinString output(library, untouched);
        const int code = call(operation, Passed<Arguments>(arguments).get()..., &output);
        if (code != 0) {
            EXPECT_EQ(output.bytes(), untouched) << operation;
        }
        return {code, output.bytes()};
    }

    /** Calls an operation that gives none. */
    template <typename... Arguments>
    int tell(const std::string& operation, const Arguments&... arguments)
    {
        return call(operation, Passed<Arguments>(arguments).get()...);
    }

    /** The result of ask, which must succeed. */
    template <typename... Arguments>
    std::string give(const std::string& operation, const Arguments&... arguments)
    {
        const Answer answer = ask(operation, arguments...);
        EXPECT_EQ(answer.code, 0) << operation;
        return answer.bytes;
    }

    /** Sets key and initial value, both in hexadecimal. */
    void setKey(int algorithm, const std::string& key, const std::string& iv);

    /** A path in the directory. */
    std::string at(const std::string& name) const { return directory / name; }

    /** Writes bytes to a file in the directory and gives its path. */
    std::string file(const std::string& name, const std::string& bytes) const;

    /** Runs openssl, which must succeed, and gives what it prints. */
    static std::string openssl(std::vector<std::string> arguments);

    /** A pair made by openssl genpkey with these arguments. */
    Pair opensslPair(const std::vector<std::string>& arguments) const;

    std::filesystem::path directory;

private:
    static constexpr const char* untouched = "as it was";
};

/** RSA-2048 and P-256 pairs that openssl made, one of each a process. */
const Pair& rsaPair();
const Pair& ecPair();
