#pragma once

// Sentences for people, in their language. What stands in the source is English, and a catalogue (po/) may know another
// text for it; whoever chooses the language says so here, from above. Until then, and for every sentence that the
// catalogue lacks, the English is shown. What programs read (JSON, files, keys) does not come through here.
//
// tools/translate finds the sentences by the names of these functions: the English is always a literal, and one that
// stands in a table or a constant is marked by to_translate(). Any thread.

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

namespace brindle {

/// Gives the text for a sentence, or for the form of it that a number takes: then `other` is the English form for all
/// numbers but 1. What it gives lives as long as the program, or is its argument.
using Translate = std::string_view (*)(std::string_view english, std::string_view other, std::uint64_t number);
void set_translation(Translate translate);

/// The sentence in the language of the person.
std::string translated(std::string_view english);

/// Marks a literal that translated() is asked for elsewhere.
consteval std::string_view to_translate(std::string_view english) {
  return english;
}

/// A sentence with a "{}" for each of `places` values. A catalogue may turn their order round: "{1}" is the second one.
template <std::size_t places>
struct SentenceWith {
  std::string_view text;
  template <class Literal>
  requires std::convertible_to<const Literal&, std::string_view>
  consteval SentenceWith(const Literal& literal) : text(literal) {  // NOLINT(*-explicit-*): a literal stands for it
    std::size_t found = 0;
    for (std::size_t at = text.find("{}"); at != std::string_view::npos; at = text.find("{}", at + 2)) ++found;
    if (found != places) throw "a sentence has as many {} as values";
  }
};

/// As translated() and translated_count() find it; lives as long as `english`.
std::string_view sentence_for(std::string_view english);

/// `sentence` with its places filled.
std::string fill_sentence(std::string_view sentence, std::span<const std::string> values);

inline std::string value_in_sentence(std::string_view text) {
  return std::string(text);
}
template <std::integral I>
std::string value_in_sentence(I number) {
  return std::to_string(number);
}

template <class... Values>
requires(sizeof...(Values) > 0) std::string
    translated(SentenceWith<sizeof...(Values)> english, const Values&... values) {
  return fill_sentence(sentence_for(english.text), std::array{value_in_sentence(values)...});
}

/// The form of a sentence that `number` takes: translated_count(n, "{} file left out", "{} files left out", n).
std::string_view form_for(std::uint64_t number, std::string_view one, std::string_view other);

template <class... Values>
std::string translated_count(std::uint64_t number, SentenceWith<sizeof...(Values)> one,
                             SentenceWith<sizeof...(Values)> other, const Values&... values) {
  return fill_sentence(form_for(number, one.text, other.text),
                       std::array<std::string, sizeof...(Values)>{value_in_sentence(values)...});
}

}  // namespace brindle
