#include "texts/list_titles.h"

#include <algorithm>

#include "text/text_encoding.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

std::vector<std::u16string> titles_of(std::string_view key) {
  const std::vector<std::string> texts = localized_in_all_languages(key);
  std::vector<std::u16string> titles(texts.size());
  std::ranges::transform(texts, titles.begin(), decode_utf8);
  return titles;
}

}  // namespace

ListTitles list_titles() {
  return {titles_of("FILENAME"), titles_of("NEWFILENAME"), titles_of("LOCATION")};
}

ExportTitles export_titles() {
  return {localized("FILENAME"), localized("NEWFILENAME"), localized("LOCATION")};
}

}  // namespace brindle
