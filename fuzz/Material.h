#pragma once

#include "toolkit/core/Context.h"

/** What the seeds were made with, by its name: certificates, keys and requests, DER. Ends the program when it
 * is not there. */
qgtk::Bytes material(const char* name);

/** Makes the root of the seeds trusted and its authority known. */
void trustAuthorities(qgtk::Context& context);

/** The password of the seeds. */
inline constexpr const char* seedPassword = "Passw0rd!";

/** Bytes of the key of encrypted messages. */
inline constexpr std::size_t messageKeyLength = 32;
