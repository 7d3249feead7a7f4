#pragma once

#include "Argument.h"

/** What a call takes in the place of a good argument. */
struct Substitute
{
    enum Form
    {
        Bytes,       /**< in a byte string, a file or a text, as the argument is */
        NullPointer, /**< no byte string, path or text at all */
        NoData,      /**< a byte string of null pointer and length 0 */
        ZeroLength,  /**< a byte string of length 0 that points somewhere */
        NegativeLength,
        LengthAlone, /**< a byte string of null pointer and length 5 */
        MissingFile,
        Directory,
        Fifo,
        BelowAFile, /**< a path that leads through a regular file */
        EmptyText
    };

    std::string what; /**< for the report of a failure */
    Form form;
    std::string bytes;
    bool mayBeGood; /**< a success is in order as well */
};

/** Whether an operation that wants one kind takes the other for it. */
bool passesFor(Kind wanted, Kind given);

/** What is no good at all for an argument: nothing, emptiness, things that are no files. */
std::vector<Substitute> absences(const Argument& argument);

/** Bytes that are not what an argument should be: cut, random, altered, or the outputs of other operations.
 */
std::vector<Substitute> foreignBytes(const Argument& argument);
