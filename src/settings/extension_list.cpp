#include "settings/extension_list.h"

#include <algorithm>

#include "text/text_case.h"
#include "text/text_encoding.h"

namespace brindle {

std::u16string extension_entry(std::u16string_view extension) {
  if (extension.starts_with(u'.')) extension.remove_prefix(1);
  if (extension.empty()) return {};
  std::u16string entry = u".";
  append_upper_case(extension, entry);
  return entry;
}

TextList parsed_extensions(std::u16string_view text) {
  TextList extensions;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(u';'), text.size());
    std::u16string entry = extension_entry(trimmed(text.substr(0, end)));
    const bool is_new = std::find(extensions.begin(), extensions.end(), entry) == extensions.end();
    if (!entry.empty() && is_new) extensions.push_back(std::move(entry));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return extensions;
}

}  // namespace brindle
