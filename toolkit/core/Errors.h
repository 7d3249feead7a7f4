#pragma once

#include <exception>
#include <string>

namespace qgtk {

/**
 * Every code that the toolkit answers: X(name, number, English text, Korean text).
 *
 * 2000, 2001, 2004, 3500 and 4505 are numbers that callers act upon; the others are this toolkit's own.
 */
// clang-format off
#define QGTK_CODES(X)                                                                                                  \
    X(Ok, 0, "Success", "성공")                                                                                        \
    X(BadArgument, 1000, "An argument is missing or out of range", "인자가 없거나 범위를 벗어났습니다")                \
    X(NoContext, 1001, "The context is not one of this library", "이 라이브러리의 컨텍스트가 아닙니다")                \
    X(OutOfMemory, 1002, "Out of memory", "메모리가 부족합니다")                                                       \
    X(Internal, 1003, "Unexpected failure", "예기치 않은 오류가 발생했습니다")                                         \
    X(NotSupported, 1004, "The medium or option is not supported", "지원하지 않는 매체 또는 옵션입니다")               \
    X(CryptoUnavailable, 1005, "OpenSSL lacks the needed algorithm", "OpenSSL에서 필요한 알고리즘을 쓸 수 없습니다")   \
    X(BufferTooSmall, 1006, "The buffer is too small", "버퍼가 너무 작습니다")                                         \
    X(BadTime, 1007, "The text is not a time", "시간 형식이 올바르지 않습니다")                                        \
    X(FileMissing, 1100, "The file does not exist", "파일이 없습니다")                                                 \
    X(FileUnreadable, 1101, "The file cannot be read", "파일을 읽을 수 없습니다")                                      \
    X(FileNotRegular, 1102, "It is not a regular file", "일반 파일이 아닙니다")                                        \
    X(FileTooLarge, 1103, "The file is too large", "파일이 너무 큽니다")                                               \
    X(FileEmpty, 1104, "The file is empty", "파일이 비어 있습니다")                                                    \
    X(FileNotWritten, 1105, "The file cannot be written", "파일을 쓸 수 없습니다")                                     \
    X(FileNotDeleted, 1106, "The file cannot be deleted", "파일을 삭제할 수 없습니다")                                 \
    X(CertDamaged, 1200, "The certificate is damaged or is not one", "인증서가 손상되었거나 인증서가 아닙니다")        \
    X(CertNotLoaded, 1201, "No certificate is loaded", "인증서가 로드되지 않았습니다")                                 \
    X(CertExtensionDamaged, 1202, "A certificate extension is damaged", "인증서 확장 영역이 손상되었습니다")           \
    X(CertPublicKeyUnknown, 1203, "The public key is of an unknown kind", "알 수 없는 공개키입니다")                   \
    X(CertListDamaged, 1210, "The certificate list is damaged", "인증서 목록이 손상되었습니다")                        \
    X(CertListIndex, 1211, "The certificate list has no such entry", "인증서 목록에 해당 항목이 없습니다")             \
    X(KeyDamaged, 2000, "The private key is damaged or is not one", "개인키가 손상되었거나 개인키가 아닙니다")         \
    X(KeyUndecryptable, 2001, "The private key cannot be decrypted", "개인키를 복호화할 수 없습니다")                  \
    X(KeyAlgorithmUnknown, 2002, "The private key uses an unknown algorithm", "개인키의 암호 알고리즘을 알 수 없습니다")\
    X(KeyTooCostly, 2003, "The private key asks for too many iterations", "개인키의 반복 횟수가 허용 한도를 넘습니다") \
    X(WrongPassword, 2004, "The password is wrong", "비밀번호가 올바르지 않습니다")                                    \
    X(KeyParameters, 2005, "The private key's parameters are unusable", "개인키의 암호 매개변수가 올바르지 않습니다")  \
    X(KeyNotPlain, 2006, "The data are not a plain private key", "평문 개인키가 아닙니다")                             \
    X(KeyMismatch, 2007, "Certificate and private key do not match", "인증서와 개인키가 일치하지 않습니다")            \
    X(AlgorithmCodeUnknown, 2008, "The algorithm code is unknown", "알 수 없는 알고리즘 코드입니다")                   \
    X(NoKeyRandom, 3500, "The private key holds no random value", "개인키에 난수 값이 없습니다")                       \
    X(NoIdentity, 3501, "The certificate holds no identity value", "인증서에 본인확인 값이 없습니다")                  \
    X(IdentityMismatch, 3502, "The identification number does not match", "본인확인 번호가 일치하지 않습니다")         \
    X(IdentityHashUnknown, 3503, "The identity value uses an unknown hash", "본인확인 값의 해시 알고리즘을 알 수 없습니다")\
    X(WrongPfxPassword, 4505, "The password of the PFX file is wrong", "PFX 파일의 비밀번호가 올바르지 않습니다")      \
    X(Base64Damaged, 5000, "The text is not Base64", "Base64 형식이 아닙니다")                                         \
    X(ModuleNotLoaded, 5100, "The module cannot be loaded", "모듈을 로드할 수 없습니다")                               \
    X(ModuleUnsuitable, 5101, "The library is not a PKCS#11 module", "PKCS#11 모듈이 아닙니다")
// clang-format on

#define QGTK_CODE_ENUMERATOR(name, number, english, korean) name = (number),
/** Results of the toolkit's operations. */
enum class Code : int
{
    QGTK_CODES(QGTK_CODE_ENUMERATOR)
};
#undef QGTK_CODE_ENUMERATOR

/** Languages of the code texts. */
enum class Language
{
    Korean,
    English
};

/** The text of a code, UTF-8, without a full stop; static. */
const char* textOfCode(Code code, Language language);

/** What every operation of the core throws when it fails. Never holds a secret. */
class Failure : public std::exception
{
public:
    /** detail, UTF-8 or a path's own bytes, names the object, as a path; it may be empty. */
    explicit Failure(Code failureCode, std::string failureDetail = {})
        : m_code(failureCode), m_detail(std::move(failureDetail))
    {}
    Code code() const { return m_code; }
    const std::string& detail() const { return m_detail; }
    /** The English text of the code. */
    const char* what() const noexcept override;

private:
    Code m_code;
    std::string m_detail;
};

/** Throws Failure(code) when the condition does not hold. */
inline void require(bool condition, Code code)
{
    if (!condition)
        throw Failure(code);
}

} // namespace qgtk
