#include <fmt/format.h>

#include <algorithm>

#include "platform/byte_text.h"
#include "plist/property_list.h"
#include "plist/scalar_text.h"
#include "plist/xml_escape.h"

namespace brindle {
namespace {

constexpr std::string_view heading =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n";

// Its recursion goes as deep as the value, which the readers bound.
class Writer {
 public:
  explicit Writer(std::string& xml) : xml_(xml) {}

  void write(const PropertyValue& value) { value.visit(*this); }

  void operator()(const std::u16string& text) { write_text("string", text); }
  void operator()(bool flag) { line(flag ? "<true/>" : "<false/>"); }
  void operator()(std::int64_t number) { line(fmt::format("<integer>{}</integer>", number)); }
  void operator()(double number) { line(fmt::format("<real>{}</real>", real_text(number))); }
  void operator()(Date date) { line(fmt::format("<date>{}</date>", date_text(date))); }

  void operator()(const PropertyValue::Data& data) {
    // With tabs of eight columns, lines end at the 76th; four digits are three bytes.
    const std::size_t width = std::max<std::size_t>(16, 76 - 8 * std::min<std::size_t>(indent_, 8));
    std::string digits;
    append_base64({reinterpret_cast<const char*>(data.data()), data.size()}, digits);
    line("<data>");
    for (std::size_t i = 0; i < digits.size(); i += width) line(std::string_view(digits).substr(i, width));
    line("</data>");
  }

  void operator()(const PropertyValue::Array& members) {
    if (members.empty()) return line("<array/>");
    line("<array>");
    ++indent_;
    for (const PropertyValue& member : members) write(member);
    --indent_;
    line("</array>");
  }

  void operator()(const PropertyDictionary& dictionary) {
    if (dictionary.empty()) return line("<dict/>");
    line("<dict>");
    ++indent_;
    for (const PropertyEntry& entry : dictionary) {
      write_text("key", entry.key);
      write(entry.value);
    }
    --indent_;
    line("</dict>");
  }

  // What XML has no element for.
  void operator()(PropertyUid uid) {
    PropertyDictionary dictionary;
    dictionary.append(u"CF$UID", static_cast<std::int64_t>(uid.index));
    (*this)(dictionary);
  }

 private:
  void line(std::string_view content) {
    xml_.append(indent_, '\t').append(content);
    xml_ += '\n';
  }

  void write_text(std::string_view element, std::u16string_view text) {
    xml_.append(indent_, '\t').append("<").append(element).append(">");
    append_xml_text(text, xml_);
    xml_.append("</").append(element).append(">\n");
  }

  std::string& xml_;
  std::size_t indent_ = 0;
};

}  // namespace

std::string write_xml_property_list(const PropertyValue& value, std::u16string_view appversion) {
  std::string xml(heading);
  xml += "<plist version=\"1.0\"";
  if (!appversion.empty()) {
    xml += " appversion=\"";
    append_xml_attribute_text(appversion, xml);
    xml += '"';
  }
  xml += ">\n";
  Writer(xml).write(value);
  xml += "</plist>\n";
  return xml;
}

}  // namespace brindle
