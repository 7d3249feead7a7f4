#pragma once

#include "toolkit/core/KeyObjects.h"
#include "toolkit/core/TokenObjects.h"

namespace qgtk {

/** The numbers of a key pair as PKCS#11 takes them, wiped when they go. */
class TokenKey
{
public:
    /** Takes an RSA or elliptic curve pair apart. Throws KeyUnsuitable for any other. */
    explicit TokenKey(const KeyHandle& pair);

    bool isOfCurve() const { return m_kind == CKK_EC; }

    /** Adds kind and numbers of the public half. The bytes stay this object's. */
    void addPublic(TokenAttributes& attributes) const;

    /** The same with the private half. */
    void addPrivate(TokenAttributes& attributes) const;

private:
    struct Number
    {
        CK_ATTRIBUTE_TYPE type;
        SecretBytes bytes;
    };
    void readRsa(const KeyHandle& pair);
    void readCurve(const KeyHandle& pair);

    CK_KEY_TYPE m_kind = CKK_RSA;
    std::vector<Number> m_public;
    std::vector<Number> m_private;
};

} // namespace qgtk
