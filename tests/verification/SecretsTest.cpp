/* The key that signs a status request stands in memory only where the caller holds it. A program of its own:
 * no thread may come or go while memory is searched. */

#include "PublishedPki.h"
#include "SecretFiles.h"

class ExchangeSecrets : public PublishedPki
{};
INSTANTIATE_BOTH_SIDES(ExchangeSecrets);

TEST_P(ExchangeSecrets, KeysOfSignedRequestsDoNotStay)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer maps terabytes and keeps freed memory";
#endif
    prepare(Source::None);
    const SecretFiles secrets;
    const Needle key = secrets.keyNeedle();
    ASSERT_EQ(key.count(), 0);
    const samplepki::Bytes certificate = m_ca->issue(TestPki::leaf());
    BinString asked(library, certificate);
    BinString signer(library, secrets.certificate());
    BinString stranger(library, certificate);
    BinString made(library);
    BINSTR plain = {};
    secrets.readKey(library, &plain);
    EXPECT_EQ(call("OCSP_MakeOCSPReq", &asked, true, &signer, &plain, &made), 0) << errorText();
    EXPECT_NE(call("OCSP_MakeOCSPReq", &asked, true, &stranger, &plain, &made), 0);
    overwriteFreeMemory();
    EXPECT_EQ(key.count(), 1) << "the caller's copy alone, which shows that the search finds one";
    EXPECT_EQ(library.callBare("BINSTR_Delete", &plain), 0);
    EXPECT_EQ(key.count(), 0);
}
