#pragma once

// Texts of anybody's (names, paths, values of tags, what the system says of them) as people are shown them: they cannot
// break a line, turn the order of what stands beside them or be drawn over other rows. To be looked at only, not edited
// nor copied: they do not lead back.

#include <string>
#include <string_view>

namespace brindle {

/// Whether a text is shown as it is.
bool is_plain_line(std::u16string_view text);

/// On one line: control characters are their pictures ("␊"), what turns the direction is spelled out ("‹RLO›"), bytes
/// that are no UTF-8 are U+FFFD, and of the marks piled on a letter the first few stay ("‹+12›" stands for the others).
std::u16string in_one_line(std::u16string_view text);

/// The same of a message of several lines, which may hold texts kept apart by in_sentence.
std::u16string in_lines(std::u16string_view text);

/// On one line, UTF-8, and kept apart from the sentence around it, whichever way either is written.
std::string in_sentence(std::u16string_view text);

/// A reason as it is kept, in English, for a person: as a whole where the language knows it, else what stands on both
/// sides of each ": " for itself.
std::string reason_in_words(std::string_view english);

}  // namespace brindle
