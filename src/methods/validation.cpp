#include "methods/validation.h"

namespace brindle {

void normalise(RenameSettings& settings, Purpose purpose) {
  const std::optional<Method> method = selected_method(settings);
  if (!method) return;
  const MethodRow& row = method_row(*method);
  for (const AbsentOption& option : row.absent) {
    if (!(settings.*option.text)) settings.*option.text = option.value;
  }
  if (row.normalise != nullptr) row.normalise(settings, purpose);
}

std::optional<Refusal> find_missing_text(const RenameSettings& settings) {
  const std::optional<Method> method = selected_method(settings);
  if (!method) return std::nullopt;
  for (const Requirement& needed : method_row(*method).required) {
    const bool is_chosen = needed.option == nullptr || settings.*needed.option == needed.value;
    const bool is_on = needed.flag == nullptr || settings.*needed.flag;
    if (is_chosen && is_on && is_blank(settings.*needed.text)) {
      return Refusal{needed.title, needed.message, key_of(needed.text)};
    }
  }
  return std::nullopt;
}

std::optional<Refusal> validate_and_normalise(RenameSettings& settings) {
  normalise(settings, Purpose::run);
  return find_missing_text(settings);
}

}  // namespace brindle
