// Texts in EUC-KR, UTF-8 and what claims to be: conversion, cutting, the parts of names.

#include <cstring>
#include <memory>
#include <string>

#include "Target.h"
#include "Util.h"
#include "toolkit/core/CertificateText.h"
#include "toolkit/core/Handles.h"
#include "toolkit/core/Pkcs12Password.h"
#include "toolkit/core/TextConversion.h"
#include "toolkit/core/Verification.h"

using namespace qgtk;

namespace {

void convert(Charset& charset, ByteView input)
{
    charset.fromUtf8(textOf(input));
    for (const int type : {V_ASN1_UTF8STRING, V_ASN1_BMPSTRING, V_ASN1_UNIVERSALSTRING, V_ASN1_T61STRING}) {
        const StringHandle string(ASN1_STRING_type_new(type));
        ASN1_STRING_set(string.get(), input.data(), static_cast<int>(input.size()));
        charset.fromAsn1(string.get());
    }
}

/** A text cut to a buffer ends in it, and is the text's beginning. */
void cut(const std::string& text)
{
    for (int size = 1; size <= 8; ++size) {
        const std::unique_ptr<char[]> buffer(new char[static_cast<std::size_t>(size)]);
        copyCut(text, size, buffer.get());
        expect(std::strlen(buffer.get()) < static_cast<std::size_t>(size));
        expect(text.starts_with(buffer.get()));
    }
}

/** The helpers of the library, into buffers of the sizes that they ask for. */
void help(const std::string& text)
{
    constexpr std::size_t fixed = 1024;
    constexpr std::size_t utf8Room = 2048;
    char out[fixed] = {};
    CUtil::GetCNString(text.c_str(), 0, out);
    CUtil::GetOString(text.c_str(), 0, out);
    CUtil::GetOUString(text.c_str(), 0, out);
    int type = 0;
    CUtil::GetCertCAType(text.c_str(), &type);
    CUtil::str2time(text.c_str());
    CUtil::ReplaceAll(text.c_str(), "a", "bc", fixed, out);
    std::string in = text;
    std::string trimmed(text.size() + 1, '\0');
    CUtil::TrimData(in.data(), trimmed.data());
    in = text;
    CUtil::TrimDataSpace(in.data(), trimmed.data());
    in = text;
    int length = 0;
    CUtil::HexStringToBin(text.c_str(), static_cast<int>(text.size()), in.data(), &length);
    if (text.size() >= utf8Room)
        return;
    char inPlace[utf8Room] = {};
    text.copy(inPlace, utf8Room - 1);
    CUtil::EucKrToUTF8(inPlace);
    expect(std::memchr(inPlace, 0, utf8Room) != nullptr);
}

} // namespace

void fuzz(ByteView input)
{
    static Charset charset;
    const std::string text(std::string(textOf(input)).c_str());
    convert(charset, input);
    cut(text);
    help(text);
    attempt([&] { parseTimeText(text); });
    attempt([&] { policiesOf(text); });
    attempt([&] { passwordReadings(textOf(input)); });
}
