#pragma once

#include <string>

/*
 * What a selection host shows its user. Two sets of these functions exist: one over the tests' own list
 * service, one over the real one with sample certificates in a home directory.
 */

/** Makes the certificates. Called before anything of Qt. */
void prepareCertificates();

/** Work directory with language packs and, where the service is real, the toolkit. */
std::string workDirectory();

/** Common name of the first row, and the password of all certificates. */
std::string firstName();
std::string certificatePassword();
