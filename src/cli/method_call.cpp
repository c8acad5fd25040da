#include "cli/method_call.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "cli/exit_code.h"
#include "cli/option_value.h"
#include "methods/method_table.h"
#include "platform/translation.h"

namespace brindle {
namespace {

bool has_option(const MethodCall& call, std::string_view name) {
  return std::ranges::any_of(call.options, [&](const auto& given) { return given.first->name == name; });
}

bool operands_replaced(const MethodCall& call) {
  return std::ranges::any_of(call.options, [](const auto& given) { return given.first->replaces_operands; });
}

// "--before or --after", from "before|after".
std::string listed_options(std::string_view names) {
  std::string text;
  for (const std::string_view name : split_choices(names)) {
    text += fmt::format("{}--{}", text.empty() ? "" : translated(" or "), name);
  }
  return text;
}

void check_operands(const MethodCall& call) {
  const MethodWord& method = *call.method;
  if (operands_replaced(call)) {
    const auto& option =
        std::ranges::find_if(call.options, [](const auto& each) { return each.first->replaces_operands; });
    if (call.operands.empty()) return;
    throw UsageError(translated("{}: --{} stands instead of {}; give one of them", method.word, option->first->name,
                                method.operands.front().name));
  }
  if (call.operands.size() == method.operands.size()) return;
  const MethodOperand& missing = method.operands[call.operands.size()];
  throw UsageError(translated("{} needs {}, {} (brindle {} --help shows examples)", method.word, missing.name,
                              translated(missing.help), method.word));
}

void check_group(const MethodCall& call) {
  const MethodWord& method = *call.method;
  if (method.required_group == 0) return;
  const auto in_group = [&](const MethodOption& option) {
    return option.groups.find(method.required_group) != std::string_view::npos;
  };
  if (std::ranges::any_of(call.options, [&](const auto& given) { return in_group(*given.first); })) return;
  std::string names;
  for (const MethodOption& option : method.options) {
    if (in_group(option)) names += fmt::format("{}--{}", names.empty() ? "" : ", ", option.name);
  }
  throw UsageError(
      translated("{} needs one of {} (brindle {} --help shows examples)", method.word, names, method.word));
}

void check_needs(const MethodCall& call) {
  for (const auto& [option, value] : call.options) {
    if (option->needs.empty()) continue;
    const auto names = split_choices(option->needs);
    if (std::ranges::any_of(names, [&](std::string_view name) { return has_option(call, name); })) continue;
    throw UsageError(
        translated("{}: --{} goes with {}", call.method->word, option->name, listed_options(option->needs)));
  }
}

}  // namespace

bool has_its_operands(const MethodCall& call) {
  return call.operands.size() == call.method->operands.size() || operands_replaced(call);
}

void check_call(const MethodCall& call) {
  check_operands(call);
  check_group(call);
  check_needs(call);
}

void add_option(MethodCall& call, const MethodOption& option, OptionValue value) {
  for (auto& [given, given_value] : call.options) {
    if (given == &option) {
      given_value = std::move(value);
      return;
    }
    if (given->groups.find_first_of(option.groups) != std::string_view::npos) {
      throw UsageError(translated("{}: give either --{} or --{}", call.method->word, given->name, option.name));
    }
  }
  call.options.emplace_back(&option, std::move(value));
}

void fill_settings(RenameSettings& settings, const MethodCall& call) {
  const MethodWord& method = *call.method;
  if (method.fill != nullptr) method.fill(settings, {});
  for (std::size_t i = 0; i < call.operands.size(); ++i) method.operands[i].fill(settings, call.operands[i]);
  RuleVariant variant = method.variant;
  // In the order of the table, so that the order on the command line does not matter.
  for (const MethodOption& option : method.options) {
    const auto given = std::ranges::find(call.options, &option, &std::pair<const MethodOption*, OptionValue>::first);
    if (given == call.options.end()) continue;
    option.fill(settings, given->second);
    variant = option.variant.value_or(variant);
  }
  select_variant(settings, variant);
}

}  // namespace brindle
