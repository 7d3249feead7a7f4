#include "Substitutes.h"

#include <algorithm>
#include <set>

#include "CryptoTest.h"
#include "Samples.h"
#include "samplepki/Der.h"

namespace {

/** What is left of a text that is cut may be a shorter one of its kind. */
bool isText(Kind kind)
{
    return kind == Kind::Base64Text || kind == Kind::PemText || kind == Kind::Settings;
}

bool isDer(Kind kind)
{
    return !isText(kind) && kind != Kind::Value && kind != Kind::Challenge;
}

void addCut(std::vector<Substitute>& list, const Argument& argument)
{
    const std::string& good = argument.good.bytes;
    const std::size_t size = good.size();
    std::set<std::size_t> lengths;
    for (const std::size_t length : {std::size_t{1}, std::size_t{4}, size / 7, size / 3, size * 2 / 3,
                                     size - std::min<std::size_t>(size, 9), size - 1})
        if (length > 0 && length < size)
            lengths.insert(length);
    for (const std::size_t length : lengths)
        list.push_back({"cut to " + std::to_string(length), Substitute::Bytes, good.substr(0, length),
                        isText(argument.good.kind)});
}

void addRandom(std::vector<Substitute>& list, Kind wanted)
{
    const bool isGoodFrame = wanted == Kind::ObjectList || wanted == Kind::DerObject;
    for (const std::size_t length : {1U, 17U, 256U, 5001U})
        list.push_back({"random " + std::to_string(length), Substitute::Bytes,
                        noise(length, static_cast<unsigned>(length)), false});
    using samplepki::der::Sequence;
    using samplepki::der::Set;
    for (const auto& [tag, length] : {std::pair(Sequence, 2U), {Sequence, 2000U}, {Set, 100U}})
        list.push_back({"random, framed", Substitute::Bytes, samplepki::der::element(tag, noise(length, 7)),
                        isGoodFrame && tag == Sequence});
    list.push_back({"zeros", Substitute::Bytes, std::string(5000, '\0'), false});
    list.push_back({"too long a length", Substitute::Bytes, std::string("0\x84\x7f\xff\xff\xff", 6), false});
    list.push_back({"no end", Substitute::Bytes, std::string("0\x80\x30\x80", 4), false});
}

/** Whether something is the other holder's. */
bool isOthers(const Sample& sample)
{
    const Samples& s = Samples::get();
    return sample.bytes == s.otherCertificate.bytes || sample.bytes == s.otherKey.bytes;
}

void addOthers(std::vector<Substitute>& list, const Argument& argument)
{
    const bool isOwn = argument.tolerance == Tolerance::Own;
    for (const Sample* sample : Samples::all())
        if (sample->bytes != argument.good.bytes)
            list.push_back({"another's output " + std::to_string(static_cast<int>(sample->kind)),
                            Substitute::Bytes, sample->bytes,
                            passesFor(argument.good.kind, sample->kind) && !(isOwn && isOthers(*sample))});
}

void addAltered(std::vector<Substitute>& list, const std::string& good)
{
    constexpr std::size_t places = 12;
    const std::size_t step = good.size() / places + 1;
    for (std::size_t place = 0; place < good.size(); place += step) {
        std::string altered = good;
        altered[place] = static_cast<char>(altered[place] ^ (1U << (place % 8)));
        list.push_back({"altered at " + std::to_string(place), Substitute::Bytes, altered, true});
    }
}

void addTexts(std::vector<Substitute>& list)
{
    for (const std::string& text :
         {std::string(5000, 'a'), std::string("\xff\xfe%s%n\x01"), std::string("\n=,;://"), noise(300, 3)})
        list.push_back({"no such text", Substitute::Bytes, text.substr(0, text.find('\0')), false});
}

} // namespace

bool passesFor(Kind wanted, Kind given)
{
    if (wanted == given || wanted == Kind::Value)
        return wanted == given && wanted != Kind::Value;
    switch (wanted) {
    case Kind::Certificate: // bytes behind one do not count
        return given == Kind::CertificateList;
    case Kind::CertificateList:
        return given == Kind::Certificate;
    case Kind::PublicKey:
        return given == Kind::Certificate || given == Kind::CertificateList;
    case Kind::SignedData:
    case Kind::DetachedData:
        return given == Kind::SignedData || given == Kind::DetachedData || given == Kind::StampToken ||
               given == Kind::ChallengeResponse;
    case Kind::StampToken:
        return given == Kind::StampToken;
    case Kind::ObjectList:
        return isDer(given);
    case Kind::DerObject:
        return isDer(given) && given != Kind::CertificateList && given != Kind::ObjectList;
    default:
        return false;
    }
}

std::vector<Substitute> absences(const Argument& argument)
{
    const bool tolerated =
        argument.tolerance == Tolerance::Optional || argument.tolerance == Tolerance::Unread;
    switch (argument.role) {
    case Argument::Input:
    case Argument::Exchanged:
        return {{"no byte string", Substitute::NullPointer, {}, tolerated},
                {"no data", Substitute::NoData, {}, tolerated},
                {"length 0", Substitute::ZeroLength, {}, tolerated},
                {"length -1", Substitute::NegativeLength, {}, tolerated},
                {"a length alone", Substitute::LengthAlone, {}, tolerated}};
    case Argument::File:
    case Argument::OutputFile: {
        std::vector<Substitute> list = {{"no path", Substitute::NullPointer, {}, tolerated},
                                        {"empty path", Substitute::EmptyText, {}, tolerated},
                                        {"a directory", Substitute::Directory, {}, tolerated},
                                        {"a FIFO", Substitute::Fifo, {}, tolerated},
                                        {"a path below a file", Substitute::BelowAFile, {}, tolerated}};
        if (argument.role == Argument::File)
            list.push_back({"no such file", Substitute::MissingFile, {}, tolerated});
        return list;
    }
    case Argument::Output:
        return {{"no byte string", Substitute::NullPointer, {}, tolerated}};
    case Argument::Text:
        // An absent text is often an empty one, and that a default: an absent password is an empty password.
        return {{"no text", Substitute::NullPointer, {}, true},
                {"empty text", Substitute::EmptyText, {}, true}};
    case Argument::Buffer:
        // Many outputs may be left out.
        return {{"no buffer", Substitute::NullPointer, {}, true}};
    case Argument::Number:
        break;
    }
    return {};
}

std::vector<Substitute> foreignBytes(const Argument& argument)
{
    std::vector<Substitute> list;
    if (argument.role == Argument::Text && argument.tolerance != Tolerance::Unread)
        addTexts(list);
    const bool isBytes = argument.tolerance != Tolerance::Chosen &&
                         (argument.role == Argument::Input || argument.role == Argument::Exchanged ||
                          argument.role == Argument::File);
    if (isBytes && argument.tolerance != Tolerance::Anything && argument.tolerance != Tolerance::Unread) {
        addCut(list, argument);
        addRandom(list, argument.good.kind);
        addOthers(list, argument);
        addAltered(list, argument.good.bytes);
    } else if (isBytes)
        addRandom(list, argument.good.kind);
    for (Substitute& substitute : list)
        substitute.mayBeGood |=
            argument.tolerance == Tolerance::Anything || argument.tolerance == Tolerance::Unread;
    // First what must leave everything as it is: a success may not.
    std::ranges::stable_partition(list, [](const Substitute& one) { return !one.mayBeGood; });
    return list;
}
