#include "Memory.h"

#include <cstring>
#include <sys/stat.h>

#include "TestHome.h"

namespace {

constexpr const char* untouched = "as it was";
constexpr std::size_t bufferSize = 8192; // larger than what any operation writes
constexpr unsigned char bufferByte = 0x5A;

Word wordOf(const void* pointer)
{
    return reinterpret_cast<Word>(pointer);
}

bool isLibraryRecord(Argument::Role role)
{
    return role == Argument::Output || role == Argument::Exchanged;
}

std::string bytesOf(const BINSTR& record)
{
    return {reinterpret_cast<const char*>(record.pData), static_cast<std::size_t>(record.nLen)};
}

/** A byte string that holds nothing, in one way or another. */
BINSTR emptyRecord(Substitute::Form form)
{
    static unsigned char somewhere = 0x30;
    switch (form) {
    case Substitute::ZeroLength:
        return {&somewhere, 0};
    case Substitute::NegativeLength:
        return {&somewhere, -1};
    case Substitute::LengthAlone:
        return {nullptr, 5};
    default:
        return {nullptr, 0};
    }
}

const std::string& goodRecord(const Argument& argument)
{
    static const std::string before = untouched;
    return argument.role == Argument::Output ? before : argument.good.bytes;
}

} // namespace

Memory::Memory(const Bench& bench, const std::vector<Argument>& arguments)
    : m_bench(bench), m_arguments(arguments)
{
    writeFile(m_directory.path() / "file", "a regular file");
    std::filesystem::create_directory(m_directory.path() / "directory");
    mkfifo((m_directory.path() / "fifo").c_str(), 0600);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        m_places.push_back(std::make_unique<Place>());
        m_places[i]->path = m_directory.path() / ("argument-" + std::to_string(i));
    }
}

Memory::~Memory()
{
    for (std::size_t i = 0; i < m_arguments.size(); ++i)
        if (isLibraryRecord(m_arguments[i].role))
            m_bench.release(m_places[i]->record);
}

std::vector<Word> Memory::words()
{
    m_spoilt = none;
    std::vector<Word> words;
    for (std::size_t i = 0; i < m_arguments.size(); ++i)
        words.push_back(good(i));
    return words;
}

std::vector<Word> Memory::words(std::size_t position, const Substitute& substitute)
{
    std::vector<Word> all = words();
    m_spoilt = position;
    all[position] = spoilt(position, substitute);
    return all;
}

Word Memory::good(std::size_t position)
{
    const Argument& argument = m_arguments[position];
    Place& place = *m_places[position];
    switch (argument.role) {
    case Argument::Number:
        return argument.number;
    case Argument::Text:
        return textOf(place, argument.good.bytes);
    case Argument::File:
        return fileOf(position, argument.good.bytes);
    case Argument::OutputFile:
        std::filesystem::remove(place.path);
        return pathWord(place, place.path);
    case Argument::Buffer:
        place.bytes.assign(bufferSize, bufferByte);
        return wordOf(place.bytes.data());
    case Argument::Input:
    case Argument::Output:
    case Argument::Exchanged:
        break;
    }
    return recordOf(position, goodRecord(argument));
}

Word Memory::spoilt(std::size_t position, const Substitute& substitute)
{
    const Argument& argument = m_arguments[position];
    Place& place = *m_places[position];
    switch (substitute.form) {
    case Substitute::NullPointer:
        return 0;
    case Substitute::MissingFile:
        return pathWord(place, m_directory.path() / "missing");
    case Substitute::Directory:
        return pathWord(place, m_directory.path() / "directory");
    case Substitute::Fifo:
        return pathWord(place, m_directory.path() / "fifo");
    case Substitute::BelowAFile:
        return pathWord(place, m_directory.path() / "file" / "below");
    case Substitute::EmptyText:
        return textOf(place, "");
    case Substitute::Bytes:
        if (argument.role == Argument::Text)
            return textOf(place, substitute.bytes);
        if (argument.role == Argument::File)
            return fileOf(position, substitute.bytes);
        return recordOf(position, substitute.bytes);
    default:
        break;
    }
    m_bench.release(place.record);
    place.record = emptyRecord(substitute.form);
    place.before = place.record;
    return wordOf(&place.record);
}

Word Memory::textOf(Place& place, const std::string& text)
{
    place.bytes.assign(text.begin(), text.end());
    place.bytes.push_back('\0');
    place.bytes.shrink_to_fit();
    return wordOf(place.bytes.data());
}

Word Memory::pathWord(Place& place, const std::filesystem::path& path)
{
    place.pathText = path;
    return wordOf(place.pathText.c_str());
}

Word Memory::fileOf(std::size_t position, const std::string& bytes)
{
    Place& place = *m_places[position];
    writeFile(place.path, bytes);
    place.written = bytes;
    return pathWord(place, place.path);
}

Word Memory::recordOf(std::size_t position, const std::string& bytes)
{
    Place& place = *m_places[position];
    if (isLibraryRecord(m_arguments[position].role))
        fillRecord(place, bytes);
    else {
        place.bytes.assign(bytes.begin(), bytes.end());
        place.bytes.shrink_to_fit();
        place.record = {place.bytes.data(), static_cast<int>(bytes.size())};
    }
    place.before = place.record;
    return wordOf(&place.record);
}

/** A record that a failure left alone is as good as new. */
void Memory::fillRecord(Place& place, const std::string& bytes)
{
    if (place.record.pData && place.record.nLen == static_cast<int>(bytes.size()) &&
        std::memcmp(place.record.pData, bytes.data(), bytes.size()) == 0)
        return;
    m_bench.release(place.record);
    m_bench.fill(place.record, bytes);
}

std::string Memory::changes() const
{
    std::string all;
    for (std::size_t i = 0; i < m_arguments.size(); ++i)
        all += changeOf(i);
    return all;
}

std::string Memory::changeOf(std::size_t position) const
{
    const Argument& argument = m_arguments[position];
    const Place& place = *m_places[position];
    const std::string name = "argument " + std::to_string(position) + " ";
    switch (argument.role) {
    case Argument::File:
        return readFile(place.path) == place.written ? "" : name + "(file) ";
    case Argument::OutputFile:
        return std::filesystem::exists(place.path) ? name + "(new file) " : "";
    case Argument::Buffer: {
        const auto isSet = [](unsigned char byte) {
            return byte != bufferByte;
        };
        return std::ranges::any_of(place.bytes, isSet) ? name + "(buffer) " : "";
    }
    case Argument::Output:
    case Argument::Exchanged: {
        if (place.record.pData != place.before.pData || place.record.nLen != place.before.nLen)
            return name + "(byte string) ";
        const bool isSpoilt = position == m_spoilt;
        return isSpoilt || bytesOf(place.record) == goodRecord(argument) ? "" : name + "(bytes) ";
    }
    default:
        return "";
    }
}

std::string Memory::output(std::size_t position) const
{
    return bytesOf(m_places[position]->record);
}
