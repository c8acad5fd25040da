#include "platform/app_info.h"

namespace brindle {

std::string_view appVersion() {
  return BRINDLE_VERSION;
}

std::string getAppTitle(std::string_view suffix) {
  return std::string("Brindle").append(suffix);
}

bool isFileVersionMatch(std::string_view version) {
  const auto first_component = [](std::string_view text) { return text.substr(0, text.find('.')); };
  [[maybe_unused]] const bool same_generation = first_component(version) == first_component(appVersion());
  return true;
}

}  // namespace brindle
