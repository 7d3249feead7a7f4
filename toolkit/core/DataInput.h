#pragma once

#include <algorithm>
#include <variant>
#include <vector>

#include "toolkit/core/FileStream.h"

namespace qgtk {

/** Bytes to go through once from the beginning: in memory, or files of any length, one behind the other. */
class DataInput
{
public:
    DataInput(ByteView bytes) : m_source(bytes) {}
    /** The file is opened by forEachPiece. */
    DataInput(std::string path) : m_source(std::vector<std::string>{std::move(path)}) {}
    DataInput(std::vector<std::string> paths) : m_source(std::move(paths)) {}

    /** Gives take(ByteView) piece by piece; none for an empty file. Throws as FileSource and take do. */
    template <typename Take>
    void forEachPiece(Take&& take) const
    {
        if (const ByteView* bytes = std::get_if<ByteView>(&m_source))
            forEachOf(*bytes, take);
        else
            for (const std::string& path : std::get<std::vector<std::string>>(m_source))
                forEachOf(path, take);
    }

private:
    /** Large enough that the calls for a piece don't count, small enough for the processor's cache. */
    static constexpr std::size_t pieceLength = 128U << 10;

    template <typename Take>
    static void forEachOf(ByteView bytes, Take& take)
    {
        for (; !bytes.empty(); bytes = bytes.subspan(std::min(bytes.size(), pieceLength)))
            take(bytes.first(std::min(bytes.size(), pieceLength)));
    }

    template <typename Take>
    static void forEachOf(const std::string& path, Take& take)
    {
        FileSource file(path);
        SecretBytes piece(pieceLength);
        while (const std::size_t count = file.read(piece))
            take(ByteView(piece).first(count));
    }

    std::variant<ByteView, std::vector<std::string>> m_source;
};

} // namespace qgtk
