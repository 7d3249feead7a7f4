#include "toolkit/core/Hash.h"

#include "toolkit/core/Errors.h"

namespace qgtk {

Bytes digestOf(const Crypto& crypto, const char* digest, const DataInput& data)
{
    const DigestHandle hash = crypto.digest(digest);
    const DigestRun run = owned<DigestRun>(EVP_MD_CTX_new());
    require(EVP_DigestInit_ex2(run.get(), hash.get(), nullptr) == 1, Code::CryptoUnavailable);
    data.forEachPiece([&](ByteView piece) {
        require(EVP_DigestUpdate(run.get(), piece.data(), piece.size()) == 1, Code::CryptoUnavailable);
    });
    Bytes result(static_cast<std::size_t>(EVP_MD_get_size(hash.get())));
    require(EVP_DigestFinal_ex(run.get(), result.data(), nullptr) == 1, Code::CryptoUnavailable);
    return result;
}

} // namespace qgtk
