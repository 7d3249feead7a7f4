#pragma once

#include <span>
#include <string_view>

#include "LoadDISK.h"

/** One level of a directory tree: which names lead on. */
struct DirectoryLevel
{
    using Fold = void (*)(LPBYTE);

    Fold fold;                               /**< how a name is folded before it is compared */
    std::span<const std::string_view> names; /**< folded names that lead on */
    bool takesAdded;                         /**< names added by the host lead on as well */
};

/** One of the three trees, and where its directories are kept. */
struct CLoadDISK::DirectoryKind
{
    int certType; /**< CERTTYPE_..., also the bit in nCertCAType */
    std::span<const DirectoryLevel> levels;
    std::span<const Walk> walks; /**< one, or two for the two forms of MPKI */
    std::unique_ptr<CERTDIRPATH[]> CLoadDISK::*directories;
    int CLoadDISK::*count; /**< length of the array */
};
