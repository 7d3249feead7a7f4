#pragma once

#include <cstdint>
#include <string>
#include <vector>

/** What bytes are. */
enum class Kind
{
    Certificate,
    CertificateList, /**< one certificate is a list as well */
    PlainKey,
    EncryptedKey,
    PublicKey, /**< a certificate is taken for one too */
    SignedData,
    DetachedData, /**< a signed message without its content */
    EnvelopedData,
    SignedAndEnvelopedData,
    EncryptedData,
    Pfx,
    RevocationList,
    StatusRequest,
    StatusResponse,
    StampRequest,
    StampResponse,
    StampToken, /**< which is a signed message */
    Challenge,
    ChallengeResponse, /**< likewise */
    ObjectList,        /**< any DER SEQUENCE is one */
    DerObject,         /**< one DER structure, whatever it is */
    Base64Text,
    PemText,
    Settings, /**< text of a configuration file */
    Value /**< what has no form: a signature, an identifier, a key's random value, the content of a message */
};

/** Good bytes. */
struct Sample
{
    Kind kind;
    std::string bytes;
};

/** What may stand in the place of a good argument. */
enum class Tolerance
{
    Nothing,  /**< anything but what is right is refused */
    Own,      /**< the same, and what the other holder has is refused too */
    Optional, /**< what Nothing says, and it may be left out */
    Anything, /**< any bytes do; none at all do not */
    Chosen,   /**< the same, and each makes something new of that name */
    Unread    /**< it is not looked at, or is missed at once for a reason of the caller's own */
};

/** An argument of an operation in a right call. */
struct Argument
{
    enum Role
    {
        Number,
        Text,       /**< char*, read */
        Input,      /**< BINSTR*, read */
        File,       /**< path of a file that is read */
        Output,     /**< BINSTR*, written */
        Exchanged,  /**< BINSTR*, read and then written */
        OutputFile, /**< path of a file that is written */
        Buffer      /**< memory that is written: a text, a number */
    };

    Role role;
    Sample good = {Kind::Value, {}};
    Tolerance tolerance = Tolerance::Nothing;
    std::uintptr_t number = 0;
};

namespace argument {

inline Argument number(int value)
{
    return {Argument::Number, {}, Tolerance::Unread, static_cast<std::uintptr_t>(value)};
}
/** A text that nobody spoils, as a host's name: what is wrong with it is a matter of the network. */
inline Argument fixed(const std::string& text)
{
    return {Argument::Text, {Kind::Value, text}, Tolerance::Unread};
}
inline Argument textIn(const std::string& text, Tolerance tolerance = Tolerance::Nothing)
{
    return {Argument::Text, {Kind::Value, text}, tolerance};
}
/** A text of the caller's choice, as a new password. */
inline Argument anyText(const std::string& good = "text")
{
    return textIn(good, Tolerance::Anything);
}
inline Argument in(const Sample& sample, Tolerance tolerance = Tolerance::Nothing)
{
    return {Argument::Input, sample, tolerance};
}
inline Argument in(const std::string& value, Tolerance tolerance = Tolerance::Nothing)
{
    return in(Sample{Kind::Value, value}, tolerance);
}
/** What belongs to one holder, as half of a pair. */
inline Argument own(const Sample& sample)
{
    return in(sample, Tolerance::Own);
}
/** Bytes that may be any, as what is to be hashed. */
inline Argument any(const std::string& bytes)
{
    return in(bytes, Tolerance::Anything);
}
/** A name that is given to something. */
inline Argument chosen(const std::string& name)
{
    return in(name, Tolerance::Chosen);
}
inline Argument exchanged(const Sample& sample, Tolerance tolerance = Tolerance::Nothing)
{
    return {Argument::Exchanged, sample, tolerance};
}
inline Argument file(const Sample& sample, Tolerance tolerance = Tolerance::Nothing)
{
    return {Argument::File, sample, tolerance};
}
inline Argument file(const std::string& value, Tolerance tolerance = Tolerance::Nothing)
{
    return file(Sample{Kind::Value, value}, tolerance);
}
inline Argument anyFile(const std::string& bytes)
{
    return file(bytes, Tolerance::Anything);
}
inline Argument out(Tolerance tolerance = Tolerance::Nothing)
{
    return {Argument::Output, {}, tolerance};
}
inline Argument outFile()
{
    return {Argument::OutputFile};
}
/** Room for a text, a number or a truth value. */
inline Argument buffer()
{
    return {Argument::Buffer};
}

constexpr Tolerance Optional = Tolerance::Optional;
constexpr Tolerance Unread = Tolerance::Unread;

} // namespace argument

/** The arguments of a right call behind the context, and what it answers. */
struct RightCall
{
    RightCall(std::initializer_list<Argument> list) : arguments(list) {}
    RightCall(int code, std::initializer_list<Argument> list) : arguments(list), answer(code) {}

    std::vector<Argument> arguments;
    /** 0, or why it fails: of an operation that asks servers, that none is there. All before was right then.
     */
    int answer = 0;
};
