/* A selection host over the real list service, with certificates in a home directory of its own. */

#include "SelectionHost.h"
#include "TestHome.h"
#include "samplepki/Authority.h"
#include "samplepki/Media.h"

void prepareCertificates()
{
    using namespace samplepki;
    const KeyPair& key = KeyPool::key();
    Authority root = Authority::root(nameFromText("cn=KISA RootCA 4,o=KISA,c=KR"), key);
    Authority ca =
        root.intermediate(nameFromText("cn=yessignCA Class 2,ou=AccreditedCA,o=yessign,c=kr"), key);
    const Name subject = nameFromText("cn=kim,ou=personal4IB,o=yessign,c=kr");
    const Holder holder{filePair(ca.issue({subject, key}), key, certificatePassword())};
    writeNpkiHolder(TestHome::path(), "yessign", nameText(subject), holder);
}

std::string workDirectory()
{
    return QUILLGATE_WORKDIR;
}

std::string firstName()
{
    return "kim";
}

std::string certificatePassword()
{
    return "password1!";
}
