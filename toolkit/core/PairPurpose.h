#pragma once

namespace qgtk {

/** What a key pair is made for. */
enum class PairPurpose
{
    Signing,
    Management
};

} // namespace qgtk
