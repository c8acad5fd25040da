#include "platform/app_info.h"

#include <cstddef>
#include <pugixml.hpp>

#include "platform/atomic_file.h"
#include "platform/message_log.h"

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

std::optional<std::string> appVersionInPlist(const std::string& path) {
  constexpr std::size_t most = std::size_t{64} * 1024;
  FileReader file;
  std::string content(most, '\0');
  int error = file.open(path);
  if (error == 0) content.resize(file.read(content.data(), most));
  if (error == 0) error = file.error();
  if (error != 0) {
    log_failure("appVersionInPlist", system_error_text(error));
    return std::nullopt;
  }
  pugi::xml_document document;
  const pugi::xml_parse_result result = document.load_buffer_inplace(content.data(), content.size());
  const pugi::xml_attribute version = document.document_element().attribute("appversion");
  // A piece of a file is no whole document, but its root's start tag is there all the same.
  if (!result && (file.size() <= most || !version)) log_failure("appVersionInPlist", result.description());
  if (!version || (!result && file.size() <= most)) return std::nullopt;
  return version.value();
}

}  // namespace brindle
