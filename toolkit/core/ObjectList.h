#pragma once

#include <vector>

#include "toolkit/core/Bytes.h"

namespace qgtk {

/*
 * A list of byte strings in one byte string: DER elements, one behind the other. An object that is itself one
 * DER SEQUENCE, as a certificate or a private key is, stands as it is, so that a certificate is a list of one
 * and certificates behind one another are a list; any other is the content of an OCTET STRING.
 */

/**
 * The objects of a list, in its order; none for no bytes. Throws ListDamaged for a length that reaches past
 * the end and for an element that is neither a SEQUENCE nor an OCTET STRING of definite length.
 */
std::vector<ByteView> splitObjectList(ByteView list);

/** The list with an object behind the others. Throws ListDamaged. */
SecretBytes appendObject(ByteView list, ByteView object);

/** An object by its number, from 0. Throws ListDamaged, ListIndex. */
ByteView objectAt(ByteView list, int index);

} // namespace qgtk
