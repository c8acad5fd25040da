#include "methods/method_table.h"

#include <algorithm>
#include <array>

#include "methods/audio_renaming.h"
#include "methods/date_time.h"
#include "methods/general.h"
#include "methods/insert_delete.h"
#include "methods/path_components.h"
#include "methods/photo_renaming.h"
#include "methods/prefix_suffix.h"
#include "methods/replace_remove.h"
#include "methods/sequence.h"

namespace brindle {
namespace {

// Takes the names from a list file: no options, no rules, no operation.
constexpr MethodRow from_list_method = {.method = Method::from_list, .title = "METHODFROMLIST", .icon = "from_list"};

constexpr auto methods = std::to_array<const MethodRow*>({
    &sequence_method,
    &insert_delete_method,
    &replace_remove_method,
    &prefix_suffix_method,
    &date_time_method,
    &general_method,
    &audio_method,
    &photo_method,
    &path_components_method,
    &from_list_method,
});

}  // namespace

void RuleRows::list(std::string_view label, const TextList& members) {
  std::u16string joined;
  for (const std::u16string& member : members) joined.append(joined.empty() ? u"" : u"; ").append(member);
  text(label, joined);
}

std::span<const MethodRow* const> method_table() {
  return methods;
}

const MethodRow& method_row(Method method) {
  return *methods.at(static_cast<std::size_t>(method));
}

RuleNames rule_names(RuleVariant variant) {
  for (const MethodRow* row : methods) {
    const auto kind = std::ranges::find(row->kinds, variant, &RuleKind::variant);
    if (kind != row->kinds.end()) return {row->method, row->rule, kind->type};
  }
  return {};
}

std::optional<RuleVariant> find_variant(std::u16string_view rule, std::u16string_view type) {
  for (const MethodRow* row : methods) {
    if (row->kinds.empty() || row->rule != rule) continue;
    const auto kind = std::ranges::find(row->kinds, type, &RuleKind::type);
    return kind != row->kinds.end() ? kind->variant : row->kinds.back().variant;
  }
  return std::nullopt;
}

std::optional<RuleVariant> chosen_variant(const RenameSettings& settings) {
  const std::optional<Method> method = selected_method(settings);
  if (!method || method_row(*method).kinds.empty()) return std::nullopt;
  const MethodRow& row = method_row(*method);
  return row.chosen != nullptr ? row.chosen(settings) : row.kinds.front().variant;
}

void select_variant(RenameSettings& settings, RuleVariant variant) {
  const MethodRow& row = method_row(rule_names(variant).method);
  settings.selectedTab = tab_of(row.method);
  if (row.select != nullptr) row.select(settings, variant);
}

void select_flag(RenameSettings& settings, std::span<bool RenameSettings::*const> flags, std::int32_t index) {
  for (std::size_t i = 0; i < flags.size(); ++i) settings.*flags[i] = std::cmp_equal(i, index);
}

}  // namespace brindle
