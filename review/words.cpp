#include "words.hpp"

#include <algorithm>
#include <array>
#include <cstddef>

namespace vx::review {

namespace {

enum class CharacterKind
{
    other,
    digit,
    lower,
    upper
};

constexpr CharacterKind kindOfAscii(char character)
{
    return character >= 'a' && character <= 'z'   ? CharacterKind::lower
           : character >= 'A' && character <= 'Z' ? CharacterKind::upper
           : character >= '0' && character <= '9' ? CharacterKind::digit
                                                  : CharacterKind::other;
}

constexpr auto asciiKinds = [] {
    std::array<CharacterKind, 128> kinds = {};
    for (std::size_t code = 0; code < kinds.size(); ++code) {
        kinds[code] = kindOfAscii(static_cast<char>(code));
    }
    return kinds;
}();

/// Returns the kind of the character beyond ASCII that a text begins with.
CharacterKind kindBeyondAscii(std::string_view text)
{
    const bool isSign = text.starts_with('\xC2') || text.starts_with("\xE2\x80") ||
                        (text.starts_with("\xE2\x81") && text < "\xE2\x81\xB0");
    return isSign ? CharacterKind::other : CharacterKind::lower;
}

/// Returns the kind of the character at an offset before the end, where one begins.
inline CharacterKind kindAt(std::string_view text, std::size_t at)
{
    const auto first = static_cast<unsigned char>(text[at]);
    return first < asciiKinds.size() ? asciiKinds[first] : kindBeyondAscii(text.substr(at));
}

bool continuesCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// Returns the end of the run of characters of one kind at an offset, where a character begins.
std::size_t endOfRun(std::string_view text, std::size_t at, CharacterKind kind)
{
    while (at < text.size() && kindAt(text, at) == kind) {
        do {
            ++at;
        } while (at < text.size() && continuesCharacter(text[at]));
    }
    return at;
}

constexpr char lowerCaseOf(char character)
{
    return static_cast<char>(character + (character >= 'A' && character <= 'Z' ? 'a' - 'A' : 0));
}

struct Ending
{
    std::string_view letters;
    std::size_t shortest;  ///< number of letters that have to be before it
    std::string_view replacement;
};

constexpr std::array<Ending, 7> endings = {{{"ies", 3, "y"},
                                            {"est", 4, ""},
                                            {"ing", 3, ""},
                                            {"ly", 4, ""},
                                            {"ed", 3, ""},
                                            {"es", 3, ""},
                                            {"s", 3, ""}}};

}  // namespace

std::string_view nextWord(std::string_view text, std::size_t& offset)
{
    const std::size_t start = endOfRun(text, offset, CharacterKind::other);
    if (start == text.size()) {
        offset = start;
        return {};
    }
    const CharacterKind kind = kindAt(text, start);
    offset = endOfRun(text, start, kind);
    if (kind == CharacterKind::upper) {
        const std::size_t endOfLower = endOfRun(text, offset, CharacterKind::lower);
        const bool endsBefore = endOfLower > offset && offset - start > 1;
        offset = endsBefore ? offset - 1 : endOfLower;
    }
    return text.substr(start, offset - start);
}

std::vector<std::string_view> splitWords(std::string_view text)
{
    std::vector<std::string_view> words;
    std::size_t offset = 0;
    for (auto word = nextWord(text, offset); !word.empty(); word = nextWord(text, offset)) {
        words.push_back(word);
    }
    return words;
}

std::string lowerCase(std::string_view text)
{
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), lowerCaseOf);
    return lower;
}

std::vector<std::string> lowerWords(std::string_view text)
{
    const auto words = splitWords(text);
    std::vector<std::string> lower(words.size());
    std::ranges::transform(words, lower.begin(), lowerCase);
    return lower;
}

bool areTogether(std::string_view text, std::string_view word)
{
    std::size_t offset = 0;
    for (auto part = nextWord(text, offset); !part.empty(); part = nextWord(text, offset)) {
        if (!std::ranges::equal(part, word.substr(0, part.size()), {}, lowerCaseOf)) {
            return false;
        }
        word.remove_prefix(part.size());
    }
    return word.empty();
}

std::string stemOf(std::string_view word)
{
    std::string stem(word);
    if (!std::ranges::all_of(word, [](char c) { return c >= 'a' && c <= 'z'; })) {
        return stem;
    }
    const auto* ending = std::ranges::find_if(endings, [&word](const Ending& candidate) {
        return word.size() >= candidate.shortest + candidate.letters.size() &&
               word.ends_with(candidate.letters) && !word.ends_with("ss");
    });
    if (ending != endings.end()) {
        stem.replace(stem.size() - ending->letters.size(), std::string::npos, ending->replacement);
    }
    if (stem.size() > 3 && (stem.back() == 'e' || stem.back() == stem[stem.size() - 2])) {
        stem.pop_back();
    }
    return stem;
}

}  // namespace vx::review
