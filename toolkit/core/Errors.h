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
    X(NoPlatform, 1008, "Not supported on this platform", "이 플랫폼에서는 지원하지 않습니다") \
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
    X(ListDamaged, 1220, "The list of objects is damaged", "객체 목록이 손상되었습니다") \
    X(ListIndex, 1221, "The list of objects has no such entry", "객체 목록에 해당 항목이 없습니다") \
    X(CertExpired, 1300, "The certificate has expired", "인증서의 유효기간이 지났습니다") \
    X(CertNotYetValid, 1301, "The certificate is not valid yet", "인증서의 유효기간이 시작되지 않았습니다") \
    X(CertSignature, 1302, "The signature of the certificate is wrong", "인증서의 서명이 올바르지 않습니다") \
    X(IssuerMissing, 1303, "The issuer's certificate cannot be found", "발급자 인증서를 찾을 수 없습니다") \
    X(RootNotTrusted, 1304, "The root certificate is not trusted", "신뢰하지 않는 최상위 인증서입니다") \
    X(NoTrustedRoot, 1305, "No trusted root certificate is set", "신뢰하는 최상위 인증서가 설정되지 않았습니다") \
    X(IssuerNotCa, 1306, "The issuer may not issue certificates", "인증서를 발급할 수 없는 발급자입니다") \
    X(PathTooLong, 1307, "The certificate path is too long", "인증 경로가 너무 깁니다") \
    X(PolicyRefused, 1308, "The certificate policy is not acceptable", "허용하지 않는 인증서 정책입니다") \
    X(NameRefused, 1309, "The name violates a constraint of an issuer", "발급자의 이름 제한을 벗어났습니다") \
    X(CriticalExtension, 1310, "A critical extension is unknown", "알 수 없는 필수 확장 영역이 있습니다") \
    X(UsageRefused, 1311, "The key usage does not fit", "키 용도가 맞지 않습니다") \
    X(PathRefused, 1312, "The certificate path is not valid", "인증 경로가 올바르지 않습니다") \
    X(NamesDiffer, 1313, "The names differ", "이름이 서로 다릅니다") \
    X(CertRevoked, 1320, "The certificate is revoked", "폐지된 인증서입니다") \
    X(CrlMissing, 1321, "No revocation list can be found", "인증서 폐지목록을 찾을 수 없습니다") \
    X(CrlExpired, 1322, "The revocation list is outdated", "인증서 폐지목록의 유효기간이 지났습니다") \
    X(CrlNotYetValid, 1323, "The revocation list is not valid yet", "인증서 폐지목록의 유효기간이 시작되지 않았습니다") \
    X(CrlSignature, 1324, "The signature of the revocation list is wrong", "인증서 폐지목록의 서명이 올바르지 않습니다") \
    X(CrlRefused, 1325, "The revocation list cannot be used", "사용할 수 없는 인증서 폐지목록입니다") \
    X(CrlDamaged, 1326, "The revocation list is damaged or is not one", "인증서 폐지목록이 손상되었거나 폐지목록이 아닙니다") \
    X(OcspMissing, 1330, "The certificate names no status responder", "인증서에 상태확인 서버가 없습니다") \
    X(OcspUnknown, 1331, "The responder does not know the certificate", "상태확인 서버가 모르는 인증서입니다") \
    X(OcspRefused, 1332, "The responder refused the request", "상태확인 서버가 요청을 거부했습니다") \
    X(OcspUntrusted, 1333, "The responder's answer is not trusted", "상태확인 응답을 신뢰할 수 없습니다") \
    X(OcspOutdated, 1334, "The responder's answer is outdated", "상태확인 응답의 유효기간이 지났습니다") \
    X(ServiceMissing, 1335, "The configuration names no validation service", "설정 파일에 검증 서버가 없습니다") \
    X(UrlRefused, 1400, "The address is not supported", "지원하지 않는 주소입니다") \
    X(ServerUnreachable, 1401, "The server cannot be reached", "서버에 연결할 수 없습니다") \
    X(ServerTimeout, 1402, "The server does not answer in time", "서버가 제한 시간 안에 응답하지 않습니다") \
    X(ServerRefused, 1403, "The server refused the request", "서버가 요청을 거부했습니다") \
    X(EntryMissing, 1404, "The server has no such entry", "서버에 해당 항목이 없습니다") \
    X(ReplyTooLarge, 1405, "The reply is too large", "응답이 너무 큽니다") \
    X(ReplyDamaged, 1406, "The reply is not what was asked for", "요청한 것과 다른 응답입니다") \
    X(MessageDamaged, 1500, "The message is damaged or is not one", "메시지가 손상되었거나 메시지가 아닙니다") \
    X(MessageKind, 1501, "The message is of another kind", "다른 종류의 메시지입니다") \
    X(MessageTooLarge, 1502, "The message is too large", "메시지가 너무 큽니다") \
    X(SignerCertMissing, 1503, "The signer's certificate is not there", "서명자의 인증서가 없습니다") \
    X(ContentMissing, 1504, "The content of the message is not there", "메시지의 원문이 없습니다") \
    X(NotRecipient, 1505, "The message is not for this certificate", "이 인증서로 받은 메시지가 아닙니다") \
    X(MessageAlgorithm, 1506, "The message uses an unknown algorithm", "메시지의 알고리즘을 알 수 없습니다") \
    X(MessageIndex, 1507, "The message has no such signer or recipient", "메시지에 해당 서명자 또는 수신자가 없습니다") \
    X(TokenMissing, 1508, "The signer has no time stamp token", "서명자에게 타임스탬프 토큰이 없습니다") \
    X(TokenDamaged, 1509, "The time stamp token is damaged or is not one", "타임스탬프 토큰이 손상되었거나 토큰이 아닙니다") \
    X(TokenForeign, 1510, "The time stamp token is of another signature", "다른 서명의 타임스탬프 토큰입니다") \
    X(NothingPending, 1511, "No message waits for a signature", "서명을 기다리는 메시지가 없습니다") \
    X(ChallengeDamaged, 1520, "The challenge is damaged or is not one", "시도값이 손상되었거나 시도값이 아닙니다") \
    X(ChallengeUnknown, 1521, "The challenge is not an open one of this context", "이 컨텍스트에서 만들어 응답을 기다리는 시도값이 아닙니다") \
    X(ResponseOther, 1522, "The response is to another challenge", "다른 시도값에 대한 응답입니다") \
    X(ResponseForeign, 1523, "The response is from another certificate", "다른 인증서로 만든 응답입니다") \
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
    X(PfxDamaged, 4500, "The PFX file is damaged or is not one", "PFX 파일이 손상되었거나 PFX 파일이 아닙니다") \
    X(PfxAlgorithm, 4501, "The PFX file's encryption is unknown or unusable", "PFX 파일의 암호 알고리즘을 알 수 없거나 사용할 수 없습니다") \
    X(PfxTooCostly, 4502, "The PFX file asks for too much work", "PFX 파일이 요구하는 연산량이 허용 한도를 넘습니다") \
    X(PfxNoMac, 4503, "The PFX file has no integrity check", "PFX 파일에 무결성 검증 값이 없습니다") \
    X(PfxNoPair, 4504, "The PFX file holds no certificate with its key", "PFX 파일에 인증서와 개인키의 쌍이 없습니다") \
    X(WrongPfxPassword, 4505, "The password of the PFX file is wrong", "PFX 파일의 비밀번호가 올바르지 않습니다")      \
    X(Base64Damaged, 5000, "The text is not Base64", "Base64 형식이 아닙니다")                                         \
    X(PemDamaged, 5001, "The text is not PEM", "PEM 형식이 아닙니다") \
    X(PemContent, 5002, "The data are not one DER structure", "데이터가 하나의 DER 구조가 아닙니다") \
    X(ModuleNotLoaded, 5100, "The module cannot be loaded", "모듈을 로드할 수 없습니다")                               \
    X(ModuleUnsuitable, 5101, "The library is not a PKCS#11 module", "PKCS#11 모듈이 아닙니다") \
    X(NoModule, 5110, "No PKCS#11 module is loaded", "PKCS#11 모듈이 로드되지 않았습니다") \
    X(ModuleFailed, 5111, "The PKCS#11 module reports a failure", "PKCS#11 모듈에서 오류가 발생했습니다") \
    X(NoSlot, 5112, "There is no such slot", "해당 슬롯이 없습니다") \
    X(NoToken, 5113, "There is no token", "토큰이 없습니다") \
    X(TokenUninitialised, 5114, "The token is not initialised", "초기화되지 않은 토큰입니다") \
    X(TokenRemoved, 5115, "The token has been removed or its session has ended", "토큰이 제거되었거나 세션이 종료되었습니다") \
    X(NoTokenSession, 5116, "No session is open", "열린 세션이 없습니다") \
    X(TokenSessionOpen, 5117, "A session is open already", "이미 열린 세션이 있습니다") \
    X(WrongPin, 5118, "The PIN is wrong", "PIN이 올바르지 않습니다") \
    X(PinLocked, 5119, "The PIN is locked", "PIN이 잠겼습니다") \
    X(PinRefused, 5120, "The token does not accept such a PIN", "토큰에서 허용하지 않는 PIN입니다") \
    X(TokenLoggedIn, 5121, "Somebody has logged in already", "이미 로그인되어 있습니다") \
    X(TokenLoggedOut, 5122, "Nobody has logged in", "로그인되지 않았습니다") \
    X(TokenReadOnly, 5123, "The token is write-protected", "쓰기가 금지된 토큰입니다") \
    X(TokenFull, 5124, "The token is full", "토큰의 저장 공간이 부족합니다") \
    X(TokenObjectMissing, 5125, "The token holds no such object", "토큰에 해당 객체가 없습니다") \
    X(TokenObjectExists, 5126, "The token holds such an object already", "토큰에 이미 해당 객체가 있습니다") \
    X(SignatureWrong, 5200, "The signature is wrong", "서명이 올바르지 않습니다") \
    X(MacWrong, 5201, "The authentication code is wrong", "메시지 인증 코드가 올바르지 않습니다") \
    X(NotDecryptable, 5202, "The data cannot be decrypted", "데이터를 복호화할 수 없습니다") \
    X(NoCipherKey, 5203, "No symmetric key is set", "대칭키가 설정되지 않았습니다") \
    X(CipherKeyLength, 5204, "The key or initial value has the wrong length", "키 또는 초기값의 길이가 올바르지 않습니다") \
    X(DataLength, 5205, "The length of the data does not fit the key or cipher", "데이터의 길이가 키 또는 암호 알고리즘에 맞지 않습니다") \
    X(PublicKeyDamaged, 5206, "The public key is damaged or is not one", "공개키가 손상되었거나 공개키가 아닙니다") \
    X(KeyUnsuitable, 5207, "The key is not suitable for the operation", "해당 작업에 사용할 수 없는 키입니다") \
    X(OcspRequestDamaged, 5300, "The status request is damaged or is not one", "상태확인 요청이 손상되었거나 요청이 아닙니다") \
    X(OcspNoStatus, 5301, "The status response has no such entry", "상태확인 응답에 해당 항목이 없습니다") \
    X(StampRequestDamaged, 5400, "The time stamp request is damaged or is not one", "타임스탬프 요청이 손상되었거나 요청이 아닙니다") \
    X(StampNotRequested, 5401, "No time stamp has been requested", "요청한 타임스탬프가 없습니다") \
    X(StampRefused, 5402, "The time stamp server refused the request", "타임스탬프 서버가 요청을 거부했습니다") \
    X(StampDamaged, 5403, "The time stamp is damaged or is not one", "타임스탬프가 손상되었거나 타임스탬프가 아닙니다") \
    X(StampOfOther, 5404, "The time stamp is of other data or another request", "다른 데이터 또는 다른 요청의 타임스탬프입니다") \
    X(StampUntrusted, 5405, "The time stamp is not trusted", "타임스탬프를 신뢰할 수 없습니다") \
    X(CmpRefused, 5500, "The authority refused the request", "발급기관이 요청을 거부했습니다") \
    X(CmpSecretWrong, 5501, "The reference number or authorisation code is wrong", "참조번호 또는 인가코드가 올바르지 않습니다") \
    X(CmpUntrusted, 5502, "The authority's answer is not trusted", "발급기관의 응답을 신뢰할 수 없습니다") \
    X(CmpCertificateOther, 5503, "The issued certificate is not the one that was asked for", "요청한 것과 다른 인증서가 발급되었습니다") \
    X(CmpKeyMissing, 5504, "The authority did not give the key", "발급기관이 키를 주지 않았습니다")
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

/** Whether a code is what a verification found, or why a server gave nothing: texts of these carry a marker.
 */
inline bool isVerdict(Code code)
{
    constexpr int first = 1300;
    constexpr int behind = 1500;
    return static_cast<int>(code) >= first && static_cast<int>(code) < behind;
}

/** The text of a code, UTF-8, without a full stop; static. */
const char* textOfCode(Code code, Language language);

/** What every operation of the core throws when it fails. Never holds a secret. */
class Failure : public std::exception
{
public:
    /** detail, EUC-KR or a path's own bytes, names the object, as a path; it may be empty. */
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
