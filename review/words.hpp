#pragma once

// Words of names and sentences.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vx::review {

/// Returns the next word of a text in UTF-8 at or after an offset, which is moved to its end; empty if there
/// is none. A word is a run of letters or digits. A capital after a small letter begins a word, and so does
/// the last of several capitals if a small letter follows it. Characters beyond ASCII count as small letters,
/// except Latin-1 signs (to U+00BF) and general punctuation (U+2000 to U+206F).
[[nodiscard]] std::string_view nextWord(std::string_view text, std::size_t& offset);

/// Returns all words of a text.
[[nodiscard]] std::vector<std::string_view> splitWords(std::string_view text);

/// Returns the text with the capitals of ASCII in lower case.
[[nodiscard]] std::string lowerCase(std::string_view text);

/// Returns the words of a text in lower case.
[[nodiscard]] std::vector<std::string> lowerWords(std::string_view text);

/// Whether all words of a text, run together in lower case, are equal to a word.
[[nodiscard]] bool areTogether(std::string_view text, std::string_view word);

/// Returns what an English word in lower case has in common with its inflected forms: "fil" for file, files,
/// filed and filing. Words with characters other than a to z are returned as they are.
[[nodiscard]] std::string stemOf(std::string_view word);

}  // namespace vx::review
