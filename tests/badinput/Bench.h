#pragma once

#include <memory>

#include "Argument.h"
#include "Operations.h"
#include "ToolkitLibrary.h"

/** Where an operation is called. */
enum class Level
{
    Flat, /**< the flat function, as hosts do */
    Bare  /**< the toolkit's own operation: what the layers above refuse gets through to it */
};

/** An operation by the name of its flat function, or by its own when no flat function reaches it. */
const Operation& operationCalled(const std::string& name);

/** The operations that no flat function reaches. */
const std::vector<Operation>& bareOperations();

/** What stands for an operation's call on a side. */
const std::string& cellOf(const Operation& operation, const Side& side);

/** A context on one side of the open toolkit, over a work directory of its own. */
class Bench
{
public:
    Bench(const Side& side, Level level);
    ~Bench();
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    const Side& side() const { return m_side; }
    Level level() const { return m_level; }
    bool isZrtk() const { return &m_side == &zrtkSide; }

    /** Calls an operation; words are the flat arguments behind the context. */
    int call(const Operation& operation, const std::vector<Word>& words) const;

    /** Makes a right call, which must succeed, and gives the last byte string that it filled. */
    std::string give(const std::string& name, const std::vector<Argument>& arguments) const;

    /** The same of an operation that gives none. */
    void run(const std::string& name, const std::vector<Argument>& arguments) const;

    /** The text of the last failure. */
    std::string errorText() const;

    /** Fills and empties records that the library's bytes stand in. */
    void fill(BINSTR& record, const std::string& bytes) const;
    void release(BINSTR& record) const;

private:
    int callBare(const Operation& operation, const std::vector<Word>& words) const;

    const Side& m_side;
    Level m_level;
    void* m_context = nullptr;
    std::unique_ptr<ToolkitLibrary> m_library;
    void* m_bareContext = nullptr;
};
