#pragma once

#include "samplepki/Authority.h"

/** Leaf-first names of the tests' PKI. */
inline const char* const rootName = "cn=Test RootCA 1,o=Sample,c=KR";
inline const char* const caName = "cn=Test CA 1,o=Sample,c=KR";
inline const char* const leafName = "cn=Hong,o=Sample,c=KR";

/** A key of the tests by number, made once a process. */
const samplepki::KeyPair& testKey(unsigned number);

/** A root, an authority below it, and requests for certificates. */
struct TestPki
{
    TestPki();

    /** A request for the leaf, with serial number "77". */
    static samplepki::Request leaf();

    samplepki::Authority root;
    samplepki::Authority ca;
};

/** A certificate, private key or list in PEM, label as "CERTIFICATE" or "X509 CRL". */
std::string pem(const samplepki::Bytes& der, const std::string& label);

/** Runs a program and gives its exit code; what it writes is dropped. */
int runProgram(const std::vector<std::string>& arguments);
