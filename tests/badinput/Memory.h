#pragma once

#include <filesystem>
#include <memory>

#include "Bench.h"
#include "MemoryDirectory.h"
#include "Substitutes.h"

/** What the arguments of a call point to: inputs of exactly their size, and outputs that are watched. */
class Memory
{
public:
    Memory(const Bench& bench, const std::vector<Argument>& arguments);
    ~Memory();
    Memory(const Memory&) = delete;
    Memory& operator=(const Memory&) = delete;

    /** The words of a call with good arguments. Files are written, outputs are as before any call. */
    std::vector<Word> words();

    /** The same with another value for one argument. */
    std::vector<Word> words(std::size_t position, const Substitute& substitute);

    /** What has changed since, for the report: empty when nothing has. A good file that was deleted counts.
     */
    std::string changes() const;

    /** The bytes of an output. */
    std::string output(std::size_t position) const;

private:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    /** One argument. */
    struct Place
    {
        std::vector<unsigned char> bytes; /**< without a byte behind them that could hide a read too far */
        std::filesystem::path path;
        std::string pathText;
        BINSTR record = {};
        BINSTR before = {};
        std::string written; /**< what the file holds */
    };

    Word good(std::size_t position);
    Word spoilt(std::size_t position, const Substitute& substitute);
    Word pathWord(Place& place, const std::filesystem::path& path);
    Word fileOf(std::size_t position, const std::string& bytes);
    Word recordOf(std::size_t position, const std::string& bytes);
    Word textOf(Place& place, const std::string& text);
    void fillRecord(Place& place, const std::string& bytes);
    std::string changeOf(std::size_t position) const;

    const Bench& m_bench;
    const std::vector<Argument> m_arguments;
    std::vector<std::unique_ptr<Place>> m_places;
    const MemoryDirectory m_directory{"bad-input"}; /**< many files are written, and flushed */
    std::size_t m_spoilt = none;
};
