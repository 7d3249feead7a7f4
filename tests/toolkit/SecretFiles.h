#pragma once

#include <cstdlib>
#include <malloc.h>
#include <stdexcept>

#include "RawFile.h"
#include "TestHome.h"
#include "ToolkitLibrary.h"

/**
 * Takes all memory that is free, overwrites it and gives it back: OpenSSL leaves what it decodes private keys
 * from to the allocator, unwiped, until somebody takes it. What is found behind this is held by somebody.
 */
inline void overwriteFreeMemory()
{
    std::vector<void*> blocks;
    for (const std::size_t size : {std::size_t{4096}, std::size_t{512}, std::size_t{64}, std::size_t{24}}) {
        const std::size_t before = mallinfo2().arena;
        while (mallinfo2().arena == before)
            for (int i = 0; i < 100; ++i) {
                blocks.push_back(std::calloc(1, size));
                OPENSSL_cleanse(blocks.back(), size);
            }
    }
    for (void* block : blocks)
        std::free(block);
}

/** A key and a password in files, made by other programs: nothing of them was in this process before. */
class SecretFiles
{
public:
    /** Throws when the programs fail. */
    SecretFiles() : m_directory(TestHome::scratch("secrets").string() + "/")
    {
        const std::string make =
            "cd " + m_directory +
            " && export LD_PRELOAD= && head -c 18 /dev/urandom | base64 | tr -d '\\n' > password && "
            "openssl req -x509 -newkey rsa:2048 -nodes -subj /CN=t -keyout k.pem -outform DER "
            "-out certificate 2> log && openssl pkcs8 -topk8 -nocrypt -in k.pem -outform DER -out key && "
            "openssl pkcs8 -topk8 -in k.pem -v2 aes-256-cbc -passout file:password -outform DER -out sealed";
        if (std::system(make.c_str()) != 0)
            throw std::runtime_error(readFile(m_directory + "log"));
    }

    std::string certificate() const { return readFile(m_directory + "certificate"); }

    /** The key, encrypted under the password. */
    std::string sealedKey() const { return readFile(m_directory + "sealed"); }

    std::string passwordFile() const { return m_directory + "password"; }

    /** Part of the private exponent, and the password. */
    Needle keyNeedle() const { return part(m_directory + "key", 400); }
    Needle passwordNeedle() const { return part(passwordFile(), 0); }

    /** Hands the plain key to a byte string of the library. */
    void readKey(const ToolkitLibrary& library, BINSTR* target) const
    {
        RawFile key(m_directory + "key");
        const BINSTR read = key.record();
        EXPECT_EQ(library.callBare("BINSTR_SetData", read.pData, read.nLen, target), 0);
    }

    static constexpr std::size_t passwordLength = 24;

private:
    static Needle part(const std::string& path, std::size_t offset)
    {
        return {RawFile(path).text() + offset, passwordLength};
    }

    std::string m_directory;
};
