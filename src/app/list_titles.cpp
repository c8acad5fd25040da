#include "app/list_titles.h"

#include "app/string_table.h"
#include "platform/text_encoding.h"

namespace brindle {
namespace {

std::vector<std::u16string> titles_of(std::string_view key) {
  std::vector<std::u16string> titles;
  for (const std::string& title : localized_in_all_languages(key)) titles.push_back(decode_utf8(title));
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
