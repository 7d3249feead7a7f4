#pragma once

#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <string_view>

/**
 * Copies a text into an array of `size` bytes: at most size less one bytes, always terminated, a longer
 * source cut silently. Source and target may overlap. Nothing happens, so that the target keeps its text,
 * when the source is null or empty, or the target null or of size 0.
 */
inline void copyText(char* target, std::size_t size, const char* source)
{
    if (!target || size == 0 || !source || !*source)
        return;
    const std::size_t length = strnlen(source, size - 1);
    std::memmove(target, source, length);
    target[length] = '\0';
}

/** The same into an array, whose size is known. */
template <std::size_t N>
void copyText(char (&target)[N], const char* source)
{
    copyText(target, N, source);
}

/**
 * Fills exactly `count` bytes: the text, then zeros. A text of `count` bytes or more leaves no terminator,
 * for the operations that promise just that; their callers pass a cleared buffer that is longer than `count`.
 * The text must not lie in the target.
 */
inline void copyField(char* target, std::size_t count, std::string_view source)
{
    const std::size_t length = source.copy(target, count);
    std::memset(target + length, 0, count - length);
}

/**
 * Writes the pieces one behind the other into an array of `size` bytes (above 0), cut at size less one and
 * terminated, as "%s/%s" would. The pieces must not lie in the target. Returns the length written.
 */
inline std::size_t joinText(char* target, std::size_t size, std::initializer_list<std::string_view> pieces)
{
    std::size_t length = 0;
    for (std::string_view piece : pieces) {
        length += piece.copy(target + length, size - 1 - length);
    }
    target[length] = '\0';
    return length;
}

/** The same into an array, whose size is known. */
template <std::size_t N>
std::size_t joinText(char (&target)[N], std::initializer_list<std::string_view> pieces)
{
    return joinText(target, N, pieces);
}
