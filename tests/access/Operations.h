#pragma once

#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "RecordingToolkit.h"
#include "quillgate/toolkit.h"

/**
 * What every operation of the toolkit access promises: one row a flat function.
 *
 * A row names the flat function, its parameters behind the context, what reaches the library on the ZR side
 * and on the GPKI side, and the arguments that are tested.
 *
 * - Operation cells: "ZRTK_X" is called with ctx and the flat parameters in order; "ZRTK_X(ctx, b, 8)" with
 *   just these, "?" being an address of the layer's own; ";" separates calls that follow each other. "-": the
 *   side answers 10005. "no library call": answers 0 by itself. "refused (10004)": never gets through.
 * - Tested arguments, in order: "name" is a pointer that must not be null, a byte string with data, or an
 *   integer other than 0; "name+" a byte string of at least one byte; marks behind a name: "(pointer)",
 *   "(non-empty)", "(must be empty)", "(at least 25)", and "(10003)" for a code other than 10004. "ZR side:"
 *   and "GPKI side:" open the tests of that side alone.
 */
struct Parameter
{
    std::string type;
    std::string name;
};

struct Operation
{
    std::string name;
    std::function<int(void* context, const Word* words)> call;
    std::vector<Parameter> parameters;
    std::string zrtk;
    std::string gpki;
    std::string tested;
};

/** All rows. */
const std::vector<Operation>& allOperations();

void addFrameOperations(std::vector<Operation>& operations);
void addCertificateOperations(std::vector<Operation>& operations);
void addKeyOperations(std::vector<Operation>& operations);
void addMediaOperations(std::vector<Operation>& operations);
void addMessageOperations(std::vector<Operation>& operations);
void addProtocolOperations(std::vector<Operation>& operations);
void addTokenOperations(std::vector<Operation>& operations);
void addCryptoOperations(std::vector<Operation>& operations);
void addUtilityOperations(std::vector<Operation>& operations);

/** Reads "(char* pszPath, int nType)". */
std::vector<Parameter> parseParameters(const std::string& text);

template <class T>
T fromWord(Word word)
{
    if constexpr (std::is_pointer_v<T>)
        return reinterpret_cast<T>(word);
    else
        return static_cast<T>(word);
}

template <class... P>
auto callFlat(int (*function)(void*, P...))
{
    return [function](void* context, const Word* words) {
        return [&]<std::size_t... I>(std::index_sequence<I...>)
        {
            return function(context, fromWord<P>(words[I])...);
        }
        (std::index_sequence_for<P...>());
    };
}

template <class Wrapper, class... P>
auto callMethod(int (Wrapper::*method)(P...))
{
    return [method](void* wrapper, const Word* words) {
        return [&]<std::size_t... I>(std::index_sequence<I...>)
        {
            return (static_cast<Wrapper*>(wrapper)->*method)(fromWord<P>(words[I])...);
        }
        (std::index_sequence_for<P...>());
    };
}

// NOLINTBEGIN(bugprone-macro-parentheses): the arguments are names and parameter lists
#define BEHIND_CONTEXT(...) (void* pContext __VA_OPT__(, ) __VA_ARGS__)

/** The parameters of a row are also the function's own: a row of other types does not compile. */
#define OPERATION(name, parameters, zrtk, gpki, tested)                                                      \
    static_assert(std::is_same_v<decltype(&name), int(*) BEHIND_CONTEXT parameters>);                        \
    operations.push_back({#name, callFlat(&name), parseParameters(#parameters), zrtk, gpki, tested})
// NOLINTEND(bugprone-macro-parentheses)
