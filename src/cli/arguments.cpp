#include "cli/arguments.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <variant>

#include "cli/method_call.h"
#include "cli/method_words.h"
#include "platform/file_name.h"
#include "platform/path.h"
#include "platform/translation.h"

namespace brindle {
namespace {

bool is_option_word(std::string_view word) {
  return word.size() > 1 && word.front() == '-';
}

std::string meant(std::string_view word, const std::vector<std::string_view>& candidates,
                  std::string_view dashes = "") {
  const std::string_view closest = closest_word(word, candidates);
  return closest.empty() ? std::string() : translated("; did you mean {}{}?", dashes, closest);
}

std::vector<std::string_view> option_names(const CommandRow& command, const MethodWord* method) {
  std::vector<std::string_view> names;
  if (method != nullptr) {
    for (const MethodOption& option : method->options) names.push_back(option.name);
  }
  for (const OptionId id : command.options) names.push_back(option_row(id).name);
  return names;
}

// "--name=value" and "--name" taken apart.
struct OptionWord {
  std::string_view name;
  std::optional<std::string_view> value;
};

OptionWord split_option(std::string_view word) {
  word.remove_prefix(2);
  const std::size_t equals = word.find('=');
  if (equals == std::string_view::npos) return {word, std::nullopt};
  return {word.substr(0, equals), word.substr(equals + 1)};
}

// The command whose option it would be, or a method's: where to look when an option is in the wrong place.
std::string where_option_belongs(std::string_view name) {
  for (const MethodWord& method : method_words()) {
    if (find_option(method, name) != nullptr) {
      return translated("; it belongs to methods such as {}: write it behind the method's word", method.word);
    }
  }
  for (const CommandRow& command : command_table()) {
    if (find_option(command, name) != nullptr) return translated("; it belongs to brindle {}", command.word);
  }
  return {};
}

void choose(std::optional<bool>& choice, bool value, std::string_view complaint) {
  if (choice && *choice != value) throw UsageError(translated(complaint));
  choice = value;
}

void set_choice_of_items(Options& options, OptionId id) {
  if (id == OptionId::files || id == OptionId::folders) {
    return choose(options.folders, id == OptionId::folders, to_translate("give either --files or --folders"));
  }
  choose(options.subfolders, id == OptionId::subfolders, to_translate("give either --subfolders or --no-subfolders"));
}

void set_on_problem(GivenChoices& choices, std::string_view word) {
  const auto* const found = std::ranges::find(on_problem_words, word);
  choices.on_problem = static_cast<OnProblem>(found - on_problem_words.begin());
}

void set_number_pattern(GivenChoices& choices, std::string_view pattern) {
  choices.number_pattern = decode_file_name(pattern);
  if (!is_number_pattern(*choices.number_pattern))
    throw UsageError(translated("--number-pattern needs \"{}\" once, where the number goes", "{}"));
}

/// What an option is kept in; a flag with the value that it stands for.
struct Keeping {
  OptionId id;
  std::variant<bool Options::*, bool ExportOptions::*, bool GivenChoices::*, std::string Options::*,
               std::vector<std::string> Options::*>
      member;
  bool value = true;
};
constexpr auto keepings = std::to_array<Keeping>({
    {OptionId::hidden, &Options::hidden},
    {OptionId::no_preserve_root, &Options::no_preserve_root},
    {OptionId::nul, &Options::nul},
    {OptionId::permute, &GivenChoices::permute},
    {OptionId::from_elsewhere, &Options::from_elsewhere},
    {OptionId::dry_run, &Options::dry_run},
    {OptionId::all, &Options::all},
    {OptionId::json, &Options::json},
    {OptionId::yes, &Options::yes},
    {OptionId::quiet, &Options::quiet},
    {OptionId::no_color, &Options::color, false},
    {OptionId::help, &Options::help},
    {OptionId::version, &Options::version},
    {OptionId::no_name, &ExportOptions::isFilename, false},
    {OptionId::no_new_name, &ExportOptions::isNewFilename, false},
    {OptionId::no_location, &ExportOptions::isLocation, false},
    {OptionId::full_paths, &ExportOptions::isIncludeLocation},
    {OptionId::no_header, &ExportOptions::addColumnNamesInHeader, false},
    {OptionId::profile, &Options::profile},
    {OptionId::rules, &Options::rules},
    {OptionId::list, &Options::list},
    {OptionId::from, &Options::from},
    {OptionId::set, &Options::set},
});

struct Keep {
  Options& options;
  std::string_view text;
  bool value;

  void operator()(bool Options::*flag) const { options.*flag = value; }
  void operator()(bool ExportOptions::*flag) const { options.columns.*flag = value; }
  void operator()(bool GivenChoices::*flag) const { options.choices.*flag = value; }
  void operator()(std::string Options::*member) const { options.*member = text; }
  void operator()(std::vector<std::string> Options::*members) const { (options.*members).emplace_back(text); }
};

void set_option(Options& options, OptionId id, std::string_view value) {
  const auto* const keeping = std::ranges::find(keepings, id, &Keeping::id);
  if (keeping != keepings.end()) return std::visit(Keep{options, value, keeping->value}, keeping->member);
  if (id == OptionId::on_problem) return set_on_problem(options.choices, value);
  if (id == OptionId::number_pattern) return set_number_pattern(options.choices, value);
  if (id != OptionId::sort) return set_choice_of_items(options, id);
  options.sort = value == "name" ? ListOrder::name : value == "folder" ? ListOrder::folder : ListOrder::as_found;
}

class ArgumentParser {
 public:
  explicit ArgumentParser(std::span<const char* const> words) : words_(words) {}

  CommandLine parse();

 private:
  bool at_end() const { return next_ == words_.size(); }
  std::string_view peek() const { return words_[next_]; }
  std::string_view take() { return words_[next_++]; }
  /// The value of an option, from behind "=" or the next word.
  std::string_view value_of(const OptionWord& word, std::string_view value_name);

  void take_command();
  void take_second_word(std::string_view first);
  void take_words();
  void take_operand(std::string_view word);
  bool begins_method(std::string_view word, bool options_ended) const;

  void take_option(std::string_view word, const MethodWord* method);
  void take_letters(std::string_view word);
  [[noreturn]] void refuse_option(std::string_view name, const MethodWord* method) const;

  void take_methods(std::string_view first);
  /// True when "then" ended it.
  bool take_method(const MethodWord& method);
  bool take_method_option(MethodCall& call, std::string_view word);
  void take_method_operand(MethodCall& call, std::string_view word);
  const MethodWord& method_behind_then();

  void check_line() const;
  void check_sources() const;

  std::span<const char* const> words_;
  std::size_t next_ = 0;
  CommandLine line_;
};

CommandLine ArgumentParser::parse() {
  take_command();
  if (line_.command == nullptr) return std::move(line_);
  take_words();
  if (!line_.options.help) check_line();
  return std::move(line_);
}

void ArgumentParser::take_command() {
  if (at_end())
    throw UsageError(
        translated("say what to do, such as: brindle preview FOLDER insert TEXT (brindle --help tells more)"));
  const std::string_view word = take();
  line_.options.help = word == "--help" || word == "-h";
  line_.options.version = word == "--version";
  if (line_.options.help || line_.options.version) return;
  if (begins_commands(word)) return take_second_word(word);
  line_.command = find_command(word);
  if (line_.command != nullptr) return;
  line_.help_method = find_method(word);
  if (line_.help_method != nullptr) {
    line_.options.help =
        std::ranges::any_of(words_, [](std::string_view each) { return each == "--help" || each == "-h"; });
    if (line_.options.help) return;
    throw UsageError(translated("{} is a method; say what to do with it: brindle preview PATH... {} ...", word, word));
  }
  if (is_option_word(word)) throw UsageError(translated("{} comes behind a command (brindle --help lists them)", word));
  std::vector<std::string_view> words = words_of_methods();
  for (const CommandRow& row : command_table()) words.push_back(row.word);
  throw UsageError(translated("there is no command {}{} (brindle --help lists them)", word, meant(word, words)));
}

void ArgumentParser::take_second_word(std::string_view first) {
  std::vector<std::string_view> words;
  for (const CommandRow& row : command_table()) {
    if (row.word.starts_with(fmt::format("{} ", first))) words.push_back(row.word.substr(first.size() + 1));
  }
  const std::string_view second = at_end() ? std::string_view() : take();
  line_.command = find_command(fmt::format("{} {}", first, second));
  if (line_.command != nullptr) return;
  line_.options.help = second == "--help" || second == "-h";
  line_.help_group = first;
  if (line_.options.help) return;
  const std::string what = second.empty() ? translated("{} needs a second word", first)
                                          : translated("there is no command {} {}", first, second);
  throw UsageError(fmt::format("{}: brindle {} {} FILE", what, first, fmt::join(words, "|")));
}

void ArgumentParser::take_words() {
  bool options_ended = false;
  while (!at_end()) {
    const std::string_view word = take();
    if (!options_ended && word == "--") {
      options_ended = true;
    } else if (!options_ended && word.starts_with("--")) {
      take_option(word, nullptr);
    } else if (!options_ended && is_option_word(word)) {
      take_letters(word);
    } else if (begins_method(word, options_ended)) {
      take_methods(word);
    } else {
      take_operand(word);
    }
  }
}

bool ArgumentParser::begins_method(std::string_view word, bool options_ended) const {
  if (!takes_methods(line_.command->operands) || find_method(word) == nullptr) return false;
  return !(options_ended && entry_exists(std::string(word)));
}

void ArgumentParser::take_operand(std::string_view word) {
  const Operands operands = line_.command->operands;
  if (takes_file(operands) && line_.file.empty() && !word.empty()) {
    line_.file = word;
    return;
  }
  if (operands == Operands::file_and_methods && !word.empty()) {
    throw UsageError(
        translated("there is no method {}{} (brindle --help lists them)", word, meant(word, words_of_methods())));
  }
  const bool one_at_most = operands == Operands::log || operands == Operands::optional_file;
  if (operands == Operands::none || operands == Operands::file || (one_at_most && !line_.operands.empty())) {
    throw UsageError(translated("{} takes no {}; usage: brindle {} {}", line_.command->word, word, line_.command->word,
                                line_.command->synopsis));
  }
  if (word.empty()) throw UsageError(translated("an argument is empty; a path or name cannot be"));
  line_.operands.emplace_back(word);
}

std::string_view ArgumentParser::value_of(const OptionWord& word, std::string_view value_name) {
  if (value_name.empty()) {
    if (word.value) throw UsageError(translated("--{} takes no value", word.name));
    return {};
  }
  if (word.value) return *word.value;
  if (at_end()) throw UsageError(translated("--{} needs a value: --{} {}", word.name, word.name, value_name));
  return take();
}

void ArgumentParser::take_option(std::string_view word, const MethodWord* method) {
  const OptionWord parts = split_option(word);
  const OptionRow* row = find_option(*line_.command, parts.name);
  if (row == nullptr) refuse_option(parts.name, method);
  const std::string_view value = value_of(parts, row->value);
  if (row->value.find('|') != std::string_view::npos) read_value(ValueKind::choice, row->name, row->value, value);
  if (row->value == "FILE" && value.empty()) throw UsageError(translated("--{} needs a FILE", row->name));
  set_option(line_.options, row->id, value);
  if (row->id == OptionId::help) line_.help_method = method;
}

void ArgumentParser::take_letters(std::string_view word) {
  for (const char letter : word.substr(1)) {
    const OptionRow* row = find_letter(*line_.command, letter);
    if (row == nullptr) {
      throw UsageError(
          translated("{} has no option {}; write a path that begins with \"-\" as ./{} (brindle {} --help)",
                     line_.command->word, word, word, line_.command->word));
    }
    set_option(line_.options, row->id, {});
  }
}

void ArgumentParser::refuse_option(std::string_view name, const MethodWord* method) const {
  const std::string_view owner = method != nullptr ? method->word : line_.command->word;
  std::string advice = meant(name, option_names(*line_.command, method), "--");
  if (advice.empty()) advice = where_option_belongs(name);
  if (advice.empty() && method != nullptr) advice = translated("; write -- before a text that begins with \"--\"");
  throw UsageError(translated("{} has no option --{}{} (brindle {} --help lists them)", owner, name, advice, owner));
}

void ArgumentParser::take_methods(std::string_view first) {
  const MethodWord* method = find_method(first);
  while (take_method(*method)) method = &method_behind_then();
}

const MethodWord& ArgumentParser::method_behind_then() {
  if (at_end()) throw UsageError(translated("a method is missing behind then (brindle --help lists them)"));
  const std::string_view word = take();
  const MethodWord* method = find_method(word);
  if (method != nullptr) return *method;
  throw UsageError(
      translated("there is no method {}{} (brindle --help lists them)", word, meant(word, words_of_methods())));
}

bool ArgumentParser::take_method(const MethodWord& method) {
  MethodCall call{&method, {}, {}};
  bool options_ended = false;
  bool then = false;
  while (!at_end() && !then) {
    const std::string_view word = take();
    if (word == "then" && has_its_operands(call)) {
      then = true;
    } else if (!options_ended && word == "--") {
      options_ended = true;
    } else if (!options_ended && word.starts_with("--")) {
      if (!take_method_option(call, word)) take_option(word, &method);
    } else if (!options_ended && is_option_word(word) && has_its_operands(call)) {
      take_letters(word);
    } else {
      take_method_operand(call, word);
    }
  }
  if (!line_.options.help) check_call(call);
  line_.methods.push_back(std::move(call));
  return then;
}

bool ArgumentParser::take_method_option(MethodCall& call, std::string_view word) {
  const OptionWord parts = split_option(word);
  const MethodOption* option = find_option(*call.method, parts.name);
  if (option == nullptr) return false;
  const std::string_view text = value_of(parts, option->value);
  add_option(call, *option, read_value(option->kind, option->name, option->value, text));
  return true;
}

void ArgumentParser::take_method_operand(MethodCall& call, std::string_view word) {
  const MethodWord& method = *call.method;
  if (call.operands.size() == method.operands.size()) {
    const std::string advice = find_method(word) != nullptr ? translated("; methods are joined by then")
                                                            : translated("; put quotes round a text with spaces");
    throw UsageError(translated("{} does not take {} as well{}", method.word, word, advice));
  }
  const MethodOperand& operand = method.operands[call.operands.size()];
  call.operands.push_back(read_value(operand.kind, operand.name, operand.name, word));
}

// A list and a rule file say by themselves how to rename, and a list what.
void ArgumentParser::check_sources() const {
  const Options& options = line_.options;
  if (!options.list.empty() && !options.rules.empty()) throw UsageError(translated("give either --list or --rules"));
  const std::string_view source = options.list.empty() ? "--rules" : "--list";
  if (options.list.empty() && options.rules.empty()) return;
  if (!line_.methods.empty()) {
    throw UsageError(translated("{} says how to rename; leave {} out", source, line_.methods.front().method->word));
  }
  if (!options.list.empty() && !(line_.operands.empty() && options.from.empty())) {
    throw UsageError(translated("--list names the items itself; leave the PATHs out"));
  }
}

void ArgumentParser::check_line() const {
  if (takes_file(line_.command->operands) && line_.file.empty()) {
    throw UsageError(translated("say which file: brindle {} {}", line_.command->word, line_.command->synopsis));
  }
  check_sources();
  if (line_.options.nul && line_.options.from.empty()) {
    throw UsageError(translated("-0 says how --from reads PATHs; write --from - to read them from standard input"));
  }
}

}  // namespace

RunChoices GivenChoices::over(RunChoices choices) const {
  choices.on_problem = on_problem.value_or(choices.on_problem);
  choices.number_pattern = number_pattern.value_or(choices.number_pattern);
  choices.permute = permute || choices.permute;
  return choices;
}

CommandLine parse_arguments(std::span<const char* const> words) {
  return ArgumentParser(words).parse();
}

}  // namespace brindle
