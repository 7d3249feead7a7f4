#pragma once

#include <cstring>
#include <filesystem>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "BoundedText.h"
#include "FoundationTest.h"
#include "TestHome.h"
#include "quillgate/certlist.h"
#include "samplepki/Authority.h"
#include "samplepki/KeyFile.h"
#include "samplepki/Media.h"

namespace fs = std::filesystem;

/** A session on the open toolkit, with an empty home directory and a work directory of its own. */
class ToolkitSession : public testing::Test
{
protected:
    explicit ToolkitSession(int toolkit = TOOLKIT_ZRTK)
    {
        TestHome::reset();
        for (const char* library : {"libZRToolkitV30-v3.4.2.20.so", "libgpkiapi_v15.so"})
            fs::create_symlink(fs::path(QUILLGATE_WORKDIR) / library, workDir / library);
        option.nLibAPIType = toolkit;
        copyText(option.szWorkDir, workDir.c_str());
        filter.nCertCAType = CERTTYPE_GPKI | CERTTYPE_NPKI | CERTTYPE_MPKI;
    }

    ~ToolkitSession() override { CLP_UnInitalize(handle); }

    /** Starts the session on a medium, once. */
    void start(int medium = MEDIA_HARDDISK)
    {
        if (!handle) {
            ASSERT_EQ(CLP_Initalize(&handle, &option, nullptr), 0);
            ASSERT_EQ(CLP_SetType(handle, &filter), 0);
        }
        ASSERT_EQ(CLP_SetMediaType(handle, medium, 0), 0);
    }

    int load()
    {
        start();
        return CLP_LoadCertList(handle);
    }

    CERTINFO info(int index = 0)
    {
        CERTINFO record{};
        EXPECT_EQ(CLP_GetCertInfo(handle, index, &record), 0);
        return record;
    }

    /** A parameter that is not const. */
    static char* text(const std::string& value) { return const_cast<char*>(value.c_str()); }
    static int size(const std::string& value) { return static_cast<int>(value.size()); }

    static std::string bytes(const char* data, int length) { return {data, static_cast<size_t>(length)}; }

    /** The authority that issues: "cn=yessignCA Class 2,ou=AccreditedCA,o=yessign,c=kr". */
    static samplepki::Authority& authority()
    {
        static samplepki::Authority ca = samplepki::Authority::root(
            samplepki::nameFromText("cn=yessignCA Class 2,ou=AccreditedCA,o=yessign,c=kr"), key(9));
        return ca;
    }

    static const samplepki::KeyPair& key(unsigned number = 0)
    {
        return samplepki::KeyPool::key(samplepki::KeyKind::Rsa2048, number);
    }

    /** A holder's request that a test may change. */
    static samplepki::Request request(const std::string& name = "hong", unsigned keyNumber = 0)
    {
        return {.subject = samplepki::nameFromText("cn=" + name + ",ou=people,o=yessign,c=kr"),
                .key = key(keyNumber)};
    }

    static samplepki::FilePair pair(const samplepki::Request& asked, const std::string& password = "pw",
                                    const samplepki::KeyFileForm& form = {})
    {
        return samplepki::filePair(authority().issue(asked), asked.key, password, form);
    }

    fs::path writeHolder(const samplepki::Holder& holder, const std::string& folder = "hong")
    {
        return samplepki::writeNpkiHolder(home, "yessign", folder, holder);
    }

    fs::path workDir = TestHome::scratch("work");
    fs::path home = TestHome::path();
    LOADOPT option{};
    LOADCERTOPT filter{};
    void* handle = nullptr;
};
