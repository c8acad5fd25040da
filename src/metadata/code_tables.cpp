#include "metadata/code_tables.h"

#include <pugixml.hpp>
#include <string>
#include <unordered_map>

#include "platform/message_log.h"
#include "text/text_encoding.h"

namespace brindle {
namespace {

/// A property list that is one flat dictionary of texts.
class CodeTable {
 public:
  CodeTable(const char* name, std::string_view property_list) {
    pugi::xml_document document;
    if (!document.load_buffer(property_list.data(), property_list.size())) {
      log_failure("CodeTable", name);
      return;
    }
    for (const pugi::xml_node key : document.child("plist").child("dict").children("key")) {
      texts_.emplace(decode_utf8(key.text().get()), decode_utf8(key.next_sibling("string").text().get()));
    }
  }

  std::u16string_view text(std::u16string_view code) const {
    const auto found = texts_.find(std::u16string(code));
    return found == texts_.end() ? std::u16string_view() : found->second;
  }

 private:
  std::unordered_map<std::u16string, std::u16string> texts_;
};

}  // namespace

std::u16string_view subject_text(std::u16string_view code) {
  static const CodeTable table("subjectcode", subjectcode_property_list);
  return table.text(code);
}

std::u16string_view scene_text(std::u16string_view code) {
  static const CodeTable table("scene", scene_property_list);
  return table.text(code);
}

}  // namespace brindle
