#include "platform/translation.h"

#include <fmt/args.h>
#include <fmt/format.h>

#include <atomic>
#include <functional>

namespace brindle {
namespace {

std::string_view as_in_english(std::string_view english, std::string_view other, std::uint64_t number) {
  return other.empty() || number == 1 ? english : other;
}

std::atomic<Translate> translation = as_in_english;

}  // namespace

void set_translation(Translate translate) {
  translation = translate;
}

std::string_view sentence_for(std::string_view english) {
  return translation.load()(english, {}, 0);
}

std::string translated(std::string_view english) {
  return std::string(sentence_for(english));
}

std::string_view form_for(std::uint64_t number, std::string_view one, std::string_view other) {
  return translation.load()(one, other, number);
}

std::string fill_sentence(std::string_view sentence, std::span<const std::string> values) {
  fmt::dynamic_format_arg_store<fmt::format_context> arguments;
  for (const std::string& value : values) arguments.push_back(std::cref(value));
  return fmt::vformat(sentence, arguments);
}

}  // namespace brindle
