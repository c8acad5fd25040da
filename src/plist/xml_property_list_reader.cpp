
#include <optional>
#include <utility>
#include <vector>

#include "platform/file_name.h"
#include "platform/translation.h"
#include "plist/property_list.h"
#include "plist/property_value.h"
#include "plist/scalar_text.h"
#include "plist/xml_escape.h"
#include "plist/xml_tokens.h"

namespace brindle {
namespace {

using Token = XmlTokens::Token;

std::u16string_view without_blanks(std::u16string_view text) {
  constexpr std::u16string_view blanks = u" \t\n\r";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::u16string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

template <class Value>
std::optional<PropertyValue> value_or_none(std::optional<Value> value) {
  return value ? std::optional<PropertyValue>(std::move(*value)) : std::nullopt;
}

// The value of an element that holds no others; none when its text is no such value.
std::optional<PropertyValue> value_of(std::u16string_view element, std::u16string text) {
  if (element == u"string") return PropertyValue(restore_xml_text(std::move(text)));
  if (element == u"data") return value_or_none(data_of_base64(text));
  const std::u16string_view content = without_blanks(text);
  if (element == u"integer") return integer_of_text(content);
  if (element == u"real") return value_or_none(real_of_text(content));
  if (element == u"date") return value_or_none(date_of_text(content));
  return content.empty() ? std::optional<PropertyValue>(element == u"true") : std::nullopt;
}

bool is_leaf(std::u16string_view element) {
  for (const std::u16string_view known : {u"string", u"data", u"integer", u"real", u"date", u"true", u"false"}) {
    if (element == known) return true;
  }
  return false;
}

// A dictionary's form of a reference.
std::optional<PropertyUid> reference_of(const std::vector<PropertyEntry>& pairs) {
  if (pairs.size() != 1 || pairs.front().key != u"CF$UID") return std::nullopt;
  const auto* index = pairs.front().value.get_if<std::int64_t>();
  if (!index || *index < 0) return std::nullopt;
  return PropertyUid{static_cast<std::uint64_t>(*index)};
}

/// An array or dictionary of which not all was read.
struct Container {
  bool is_dictionary = false;
  PropertyValue::Array members;
  std::vector<PropertyEntry> pairs;
  std::optional<std::u16string> key;  // whose value comes next
};

PropertyValue value_of(Container&& container) {
  if (!container.is_dictionary) return std::move(container.members);
  if (const std::optional<PropertyUid> reference = reference_of(container.pairs)) return *reference;
  return dictionary_of_pairs(std::move(container.pairs));
}

class XmlReader {
 public:
  XmlReader(std::u16string_view document, const PropertyListBudget& budget) : tokens_(document), budget_(budget) {}

  bool read(PropertyList& list) {
    if (tokens_.next() != Token::start) return fail("it is no XML");
    if (tokens_.name() != u"plist") {
      return fail(translated("the root element is “{}” where “plist” is expected", shown_name()));
    }
    std::u16string appversion = restore_xml_text(std::u16string(tokens_.attribute(u"appversion")));
    while (!is_finished_) {
      if (!read_one()) return false;
    }
    if (!root_) return fail("the element “plist” holds no value");
    if (tokens_.next() != Token::finished) return fail("there is something behind the element “plist”");
    list = {std::move(*root_), std::move(appversion)};
    return true;
  }

  const std::string& error() const { return tokens_.error(); }

 private:
  bool fail(std::string_view reason) {
    if (tokens_.error().empty()) tokens_.fail(reason);
    return false;
  }

  std::string shown_name() const { return to_utf8(tokens_.name().substr(0, 40)); }

  bool read_one() {
    switch (tokens_.next()) {
      case Token::start:
        return open();
      case Token::end:
        return close();
      case Token::text:
        return without_blanks(tokens_.text()).empty() || fail("there is text outside of a value");
      default:
        return fail("it ends too early");
    }
  }

  bool open() {
    const std::u16string_view element = tokens_.name();
    if (!budget_.take_values(1)) return fail("there are more values than can be read");
    if (element == u"key") return read_key();
    if (!is_value_expected()) return fail(translated("“{}” stands where no value can be", shown_name()));
    if (is_leaf(element)) return read_leaf(element);
    if (element != u"array" && element != u"dict") {
      return fail(translated("the element “{}” is none of a property list's", shown_name()));
    }
    if (open_.size() == property_list_depth_limit) return fail("its values are nested too deeply");
    open_.emplace_back().is_dictionary = element == u"dict";
    return true;
  }

  bool is_value_expected() const {
    if (open_.empty()) return !root_;
    return !open_.back().is_dictionary || open_.back().key;
  }

  bool read_key() {
    if (open_.empty() || !open_.back().is_dictionary || open_.back().key) {
      return fail("a key stands where none can be");
    }
    std::u16string text;
    if (!read_text(text)) return false;
    open_.back().key = restore_xml_text(std::move(text));
    return true;
  }

  bool read_leaf(std::u16string_view element) {
    std::u16string text;
    if (!read_text(text)) return false;
    std::optional<PropertyValue> value = value_of(element, std::move(text));
    if (!value) return fail(translated("the content of “{}” is not what its name says", to_utf8(element)));
    add(std::move(*value));
    return true;
  }

  // All text up to the end of an element that holds nothing else.
  bool read_text(std::u16string& text) {
    for (;;) {
      const Token token = tokens_.next();
      if (token == Token::end) return budget_.take_bytes(2 * text.size()) || fail("its texts are too long");
      if (token != Token::text) return fail("there is an element within a value that holds none");
      text += tokens_.text();
    }
  }

  bool close() {
    if (open_.empty()) {
      is_finished_ = true;
      return true;
    }
    if (open_.back().key) return fail("a key has no value");
    Container container = std::move(open_.back());
    open_.pop_back();
    add(value_of(std::move(container)));
    return true;
  }

  void add(PropertyValue value) {
    if (open_.empty()) {
      root_ = std::move(value);
    } else if (Container& container = open_.back(); container.is_dictionary) {
      container.pairs.push_back({std::move(*container.key), std::move(value)});
      container.key.reset();
    } else {
      container.members.push_back(std::move(value));
    }
  }

  XmlTokens tokens_;
  PropertyListBudget budget_;
  std::vector<Container> open_;
  std::optional<PropertyValue> root_;
  bool is_finished_ = false;
};

}  // namespace

Result<PropertyList> read_xml_property_list(std::string_view bytes, const PropertyListBudget& budget) {
  const Result<std::u16string> document = decode_xml(bytes);
  if (!document.ok()) return document.status();
  XmlReader reader(*document, budget);
  PropertyList list;
  if (!reader.read(list)) return Status(reader.error());
  return list;
}

}  // namespace brindle
