#include "plist/xml_tokens.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <optional>
#include <utility>

#include "platform/file_name.h"
#include "platform/translation.h"
#include "text/text_encoding.h"
#include "text/unicode_fold.h"

namespace brindle {
namespace {

using namespace std::string_view_literals;

bool is_utf16(std::string_view bytes) {
  return bytes.starts_with("\xFE\xFF"sv) || bytes.starts_with("\xFF\xFE"sv) || bytes.starts_with("<\0"sv) ||
         bytes.starts_with("\0<"sv);
}

bool is_well_formed(std::u16string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (is_low_surrogate(text[i])) return false;
    if (is_high_surrogate(text[i]) && (++i == text.size() || !is_low_surrogate(text[i]))) return false;
  }
  return true;
}

// What the XML declaration says, in capitals; "" when it says nothing.
std::string declared_encoding(std::string_view bytes) {
  if (!bytes.starts_with("<?xml")) return {};
  const std::string_view declaration = bytes.substr(0, bytes.find("?>"));
  const std::size_t key = declaration.find("encoding");
  const std::size_t start = key == std::string_view::npos ? key : declaration.find_first_of("\"'", key);
  if (start == std::string_view::npos) return {};
  std::string name(declaration.substr(start + 1, declaration.find(declaration[start], start + 1) - start - 1));
  std::ranges::transform(name, name.begin(), [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return name;
}

Result<std::u16string> decode_wide(std::string_view bytes) {
  const bool is_whole = bytes.size() % 2 == 0;
  std::u16string text = decode_utf16(bytes, bytes.front() == '\0');
  if (!is_whole || !is_well_formed(text)) return Status(translated("it is no valid UTF-16 text"));
  return text;
}

using Token = XmlTokens::Token;

constexpr std::u16string_view xml_blanks = u" \t\n\r";

bool is_name_character(char16_t c) {
  constexpr std::u16string_view ends = u" \t\n\r/><='\"&";
  return ends.find(c) == std::u16string_view::npos && c > 0x20;
}

std::string shown(std::u16string_view name) {
  return to_utf8(name.substr(0, 40));
}

// "#13" and "#xD" name a character by its number.
std::optional<char32_t> character_of_number(std::u16string_view reference) {
  const bool is_hexadecimal = reference.starts_with(u"#x");
  reference.remove_prefix(is_hexadecimal ? 2 : 1);
  const std::string digits(reference.begin(), reference.end());
  std::uint32_t number = 0;
  const auto [end, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), number, is_hexadecimal ? 16 : 10);
  const bool is_character = number != 0 && number < 0x110000 && (number < 0xD800 || number >= 0xE000);
  if (error != std::errc() || end != digits.data() + digits.size() || !is_character) return std::nullopt;
  return number;
}

void append_character(char32_t c, std::u16string& text) {
  if (c >= 0x10000) {
    text += static_cast<char16_t>(0xD7C0U + (c >> 10U));
    text += static_cast<char16_t>(0xDC00U | (c & 0x3FFU));
  } else {
    text += static_cast<char16_t>(c);
  }
}

constexpr std::array<std::pair<std::u16string_view, char16_t>, 5> entities = {
    {{u"amp", u'&'}, {u"lt", u'<'}, {u"gt", u'>'}, {u"quot", u'"'}, {u"apos", u'\''}}};

}  // namespace

Result<std::u16string> decode_xml(std::string_view bytes) {
  if (is_utf16(bytes)) return decode_wide(bytes);
  if (bytes.starts_with("\xEF\xBB\xBF"sv)) bytes.remove_prefix(3);
  const std::string encoding = declared_encoding(bytes);
  if (encoding == "ISO-8859-1") return decode_latin1(bytes);
  // Editors that save as UTF-8 may leave a declaration of UTF-16 as it is.
  const std::string_view known[] = {"", "UTF-8", "US-ASCII", "ASCII", "UTF-16"};
  if (std::ranges::find(known, encoding) == std::end(known)) {
    return Status(
        translated("its encoding, {}, is not one that is read here; save it as UTF-8", encoding.substr(0, 40)));
  }
  std::optional<std::u16string> decoded = decode_valid_utf8(bytes);
  if (!decoded) return Status(translated("it is no valid UTF-8 text"));
  return std::move(*decoded);
}

Token XmlTokens::fail(std::string_view reason) {
  const std::u16string_view before = document_.substr(0, at_);
  error_ = translated("line {}: {}", 1 + std::ranges::count(before, u'\n'), translated(reason));
  return Token::fault;
}

std::u16string_view XmlTokens::attribute(std::u16string_view name) const {
  const auto found = std::ranges::find(attributes_, name, &Attribute::name);
  return found == attributes_.end() ? std::u16string_view() : std::u16string_view(found->value);
}

Token XmlTokens::next() {
  if (std::exchange(closes_itself_, false)) return close();
  while (at_ < document_.size()) {
    skipped_ = false;
    const Token token = document_[at_] == u'<' ? take_markup() : take_text();
    if (!skipped_) return token;
  }
  if (!open_.empty()) return fail(translated("it ends within the element “{}”", shown(open_.back())));
  return has_root_ ? Token::finished : fail("it is no XML: there is no element");
}

bool XmlTokens::skip_past(std::u16string_view end) {
  const std::size_t found = document_.find(end, at_);
  if (found != std::u16string_view::npos) at_ = found + end.size();
  return found != std::u16string_view::npos;
}

void XmlTokens::skip_blanks() {
  at_ = std::min(document_.find_first_not_of(xml_blanks, at_), document_.size());
}

std::u16string_view XmlTokens::take_name() {
  const std::size_t start = at_;
  while (at_ < document_.size() && is_name_character(document_[at_])) ++at_;
  return document_.substr(start, at_ - start);
}

Token XmlTokens::take_markup() {
  if (at(u"<!--")) return skip_markup(u"-->");
  if (at(u"<?")) return skip_markup(u"?>");
  if (at(u"<![CDATA[")) return take_character_data();
  if (at(u"<!DOCTYPE")) return skip_document_type();
  return at(u"</") ? take_end() : take_start();
}

Token XmlTokens::skip_markup(std::u16string_view end) {
  at_ += 2;
  if (at(u"--")) at_ += 2;
  skipped_ = skip_past(end);
  return skipped_ ? Token::text : fail("a comment or an instruction does not end");
}

Token XmlTokens::skip_document_type() {
  if (has_root_) return fail("a document type stands behind its place");
  while (at_ < document_.size() && document_[at_] != u'>') {
    const char16_t c = document_[at_++];
    if (c == u'[') return fail("it declares a document type of its own, which is not read here");
    if ((c == u'"' || c == u'\'') && !skip_past(std::u16string_view(&c, 1))) break;
  }
  skipped_ = skip_past(u">");
  return skipped_ ? Token::text : fail("the document type does not end");
}

Token XmlTokens::take_character_data() {
  at_ += std::u16string_view(u"<![CDATA[").size();
  const std::size_t start = at_;
  if (open_.empty() || !skip_past(u"]]>")) return fail("a CDATA section has no end or stands outside of the root");
  text_.clear();
  for (std::size_t i = start; i < at_ - 3; ++i) {
    if (document_[i] == u'\r' && document_[i + 1] == u'\n') continue;
    text_ += document_[i] == u'\r' ? u'\n' : document_[i];
  }
  skipped_ = text_.empty();
  return Token::text;
}

Token XmlTokens::take_text() {
  const std::size_t end = std::min(document_.find(u'<', at_), document_.size());
  const std::u16string_view raw = document_.substr(at_, end - at_);
  if (open_.empty()) {
    skipped_ = raw.find_first_not_of(xml_blanks) == std::u16string_view::npos;
    if (!skipped_) return fail(has_root_ ? "there is text behind the root element" : "it is no XML");
    at_ = end;
    return Token::text;
  }
  text_.clear();
  if (!append_text(raw, text_)) return Token::fault;
  at_ = end;
  return Token::text;
}

Token XmlTokens::take_start() {
  ++at_;
  name_ = take_name();
  if (name_.empty()) return fail("a “<” begins no tag");
  if (open_.empty() && has_root_) return fail("there is a second root element");
  attributes_.clear();
  for (skip_blanks(); at_ < document_.size() && document_[at_] != u'>' && !at(u"/>"); skip_blanks()) {
    if (!take_attribute()) return Token::fault;
  }
  closes_itself_ = at(u"/>");
  if (!skip_past(u">")) return fail(translated("the tag “{}” does not end", shown(name_)));
  has_root_ = true;
  open_.push_back(name_);
  return Token::start;
}

bool XmlTokens::take_attribute() {
  const bool apart = xml_blanks.find(document_[at_ - 1]) != std::u16string_view::npos;
  const std::u16string_view name = take_name();
  skip_blanks();
  const bool is_given = !name.empty() && apart && at(u"=");
  if (is_given) ++at_;
  skip_blanks();
  std::u16string_view raw;
  if (!is_given || !take_quoted(raw)) {
    fail(translated("an attribute of the tag “{}” is damaged", shown(name_)));
    return false;
  }
  std::u16string value;
  if (!append_text(raw, value)) return false;
  if (attributes_.size() < 16) attributes_.push_back({name, std::move(value)});
  return true;
}

bool XmlTokens::take_quoted(std::u16string_view& value) {
  if (!at(u"\"") && !at(u"'")) return false;
  const std::size_t start = at_ + 1;
  const std::size_t end = document_.find(document_[at_], start);
  if (end == std::u16string_view::npos) return false;
  value = document_.substr(start, end - start);
  at_ = end + 1;
  return value.find(u'<') == std::u16string_view::npos;
}

Token XmlTokens::take_end() {
  at_ += 2;
  name_ = take_name();
  skip_blanks();
  if (!at(u">")) return fail(translated("the end of “{}” is damaged", shown(name_)));
  ++at_;
  return close();
}

Token XmlTokens::close() {
  if (open_.empty() || open_.back() != name_) {
    const std::string open = open_.empty() ? translated("no element") : "“" + shown(open_.back()) + "”";
    return fail(translated("“{}” ends where {} is open", shown(name_), open));
  }
  open_.pop_back();
  return Token::end;
}

// Line ends become single line feeds; references that name a carriage return keep it.
bool XmlTokens::append_text(std::u16string_view raw, std::u16string& text) {
  for (std::size_t i = 0; i < raw.size(); ++i) {
    if (raw[i] == u'&') {
      const std::size_t end = raw.find(u';', i);
      if (end == std::u16string_view::npos || !append_reference(raw.substr(i + 1, end - i - 1), text)) {
        fail("a “&” begins none of the references that XML knows by itself; write “&amp;” for the character");
        return false;
      }
      i = end;
    } else if (raw[i] == u'\r') {
      if (i + 1 == raw.size() || raw[i + 1] != u'\n') text += u'\n';
    } else {
      text += raw[i];
    }
  }
  return true;
}

bool XmlTokens::append_reference(std::u16string_view reference, std::u16string& text) {
  if (reference.size() > 12) return false;
  if (reference.starts_with(u'#')) {
    const std::optional<char32_t> c = character_of_number(reference);
    if (c) append_character(*c, text);
    return c.has_value();
  }
  const auto entity = std::ranges::find(entities, reference, &std::pair<std::u16string_view, char16_t>::first);
  if (entity != entities.end()) text += entity->second;
  return entity != entities.end();
}

}  // namespace brindle
