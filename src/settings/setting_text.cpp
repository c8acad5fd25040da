#include "settings/setting_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <numeric>
#include <type_traits>
#include <utility>

#include "platform/app_info.h"
#include "platform/ascii.h"
#include "platform/file_name.h"
#include "platform/translation.h"
#include "plist/iso_date.h"
#include "text/text_case.h"
#include "text/text_encoding.h"

namespace brindle {
namespace {

using Fault = std::optional<std::string>;

constexpr std::u16string_view blanks = u" \t";

std::u16string_view without_edge_blanks(std::u16string_view text) {
  const std::size_t start = std::min(text.find_first_not_of(blanks), text.size());
  return text.substr(start, text.find_last_not_of(blanks) + 1 - start);
}

// Where the member that begins a text ends: at the next ";", which does not count within the brackets of a token.
std::size_t member_end(std::u16string_view rest) {
  for (std::size_t end = rest.find(u';'); end != std::u16string_view::npos; end = rest.find(u';', end + 1)) {
    const std::u16string_view member = without_edge_blanks(rest.substr(0, end));
    if (member.empty() || member.front() != u'<' || member.back() == u'>') return end;
  }
  return rest.size();
}

std::vector<std::u16string_view> members_of(std::u16string_view text) {
  std::vector<std::u16string_view> members;
  while (!text.empty()) {
    const std::size_t end = member_end(text);
    const std::u16string_view member = without_edge_blanks(text.substr(0, end));
    if (!member.empty()) members.push_back(member);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return members;
}

// ".JPG" for "jpg" and for ".jpg"; "" for nothing.
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

// Reading a value into a member: one function a type.

Fault read(bool& flag, std::string_view value, FieldOfToken) {
  const std::string word = in_lower_case(value);
  const bool yes = word == "1" || word == "true" || word == "yes";
  if (!yes && word != "0" && word != "false" && word != "no")
    return translated("is a flag: 0, 1, true, false, yes or no");
  flag = yes;
  return std::nullopt;
}

Fault read(std::int32_t& number, std::string_view value, FieldOfToken) {
  const std::string_view digits = value.starts_with('+') && !value.starts_with("+-") ? value.substr(1) : value;
  std::int32_t read_number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), read_number);
  if (error == std::errc::result_out_of_range) return translated("is a number of 32 bits");
  if (error != std::errc() || end != digits.data() + digits.size()) return translated("is a decimal number");
  number = read_number;
  return std::nullopt;
}

Fault read(Text& text, std::string_view value, FieldOfToken) {
  text = decode_file_name(value);
  return std::nullopt;
}

Fault read(Date& date, std::string_view value, FieldOfToken) {
  const std::optional<Date> found = value == "now" ? current_time() : date_of_iso_text(value);
  if (!found) return translated("is a date such as 2026-11-21T10:00:00Z or 2026-11-21T10:00, or now");
  date = *found;
  return std::nullopt;
}

Fault read(TextList& texts, std::string_view value, FieldOfToken) {
  texts = parsed_extensions(decode_file_name(value));
  return std::nullopt;
}

Fault read(FieldList& fields, std::string_view value, FieldOfToken field_of) {
  const std::u16string text = decode_file_name(value);
  fields.clear();
  for (const std::u16string_view token : members_of(text)) fields.push_back(field_of(token));
  return std::nullopt;
}

// Writing one.

std::string utf8(std::u16string_view text) {
  std::string bytes;
  return encode_path(text, bytes) ? bytes : to_utf8(text);
}

std::string written(bool flag) {
  return flag ? "1" : "0";
}
std::string written(std::int32_t number) {
  return std::to_string(number);
}
std::string written(const Text& text) {
  return utf8(text.value_or(u""));
}
std::string written(Date date) {
  return iso_text(date);
}
std::string written(const TextList& texts) {
  std::u16string joined;
  for (const std::u16string& text : texts) joined.append(joined.empty() ? u"" : u";").append(text);
  return utf8(joined);
}
std::string written(const FieldList& fields) {
  return written(MetaDataField::getTagsList(fields));
}

// How many letters are to be typed, dropped or exchanged to get from one word to the other.
std::size_t edit_distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t k = 0; k < b.size(); ++k) {
      const std::size_t exchanged = diagonal + (a[i] == b[k] ? 0 : 1);
      diagonal = std::exchange(row[k + 1], std::min({row[k] + 1, row[k + 1] + 1, exchanged}));
    }
  }
  return row.back();
}

std::string unknown_key(std::string_view key) {
  constexpr std::size_t longest_sensible = 100;
  const std::string wanted = in_lower_case(key.substr(0, longest_sensible));
  const auto distance = [&wanted](const SettingRow& row) { return edit_distance(wanted, in_lower_case(row.key)); };
  const SettingRow& nearest = *std::ranges::min_element(settings_table(), {}, distance);
  const bool is_near = distance(nearest) <= std::max<std::size_t>(2, wanted.size() / 3);
  return translated("unknown setting \"{}\"{}", key,
                    is_near ? translated("; did you mean \"{}\"?", nearest.key)
                            : translated("; \"brindle settings\" lists them all"));
}

// The keys that the assignments of one command name.
struct NamedKeys {
  SettingSet rows;

  void add(std::string_view key) { rows.set(setting_index(*find_setting(key))); }
  bool has(std::string_view key) const { return rows[setting_index(*find_setting(key))]; }
};

void bring_in_line(RenameSettings& settings, const NamedKeys& named) {
  if (named.has("isFiles") && !named.has("isFolders")) settings.isFolders = !settings.isFiles;
  if (named.has("isFolders") && !named.has("isFiles")) settings.isFiles = !settings.isFolders;
  const bool photo =
      named.has("photoMetaDataList") || named.has("photoRenamingSeperator") || named.has("isPhotoRenamingSeperator");
  if (photo && !named.has("photoRenamingMask")) resetPhotoMask(settings);
  const bool audio =
      named.has("id3RenamingTagsList") || named.has("id3RenamingSeperator") || named.has("isID3RenamingSeperator");
  if (audio && !named.has("id3RenamingMask")) resetID3Mask(settings);
}

}  // namespace

std::optional<std::string> set_from_text(RenameSettings& settings, std::string_view key, std::string_view value,
                                         FieldOfToken field_of) {
  const SettingRow* row = find_setting(key);
  if (!row) return unknown_key(key);
  Fault fault;
  visit_member(*row, settings, [&](auto& member) { fault = read(member, value, field_of); });
  if (fault) return translated("{} {}, not \"{}\"", key, *fault, value);
  return std::nullopt;
}

std::optional<std::string> apply_assignments(RenameSettings& settings, std::span<const std::string_view> assignments,
                                             FieldOfToken field_of) {
  RenameSettings edited = settings;
  NamedKeys named;
  for (const std::string_view assignment : assignments) {
    const std::size_t equals = assignment.find('=');
    if (equals == std::string_view::npos) return translated("\"{}\" is not of the form KEY=VALUE", assignment);
    const std::string_view key = assignment.substr(0, equals);
    if (Fault fault = set_from_text(edited, key, assignment.substr(equals + 1), field_of)) return fault;
    named.add(key);
  }
  bring_in_line(edited, named);
  settings = std::move(edited);
  return std::nullopt;
}

std::string text_of_setting(const RenameSettings& settings, const SettingRow& row) {
  std::string text(row.key == "appVersion" ? appVersion() : "");
  visit_member(row, settings, [&text](const auto& member) { text = written(member); });
  return text;
}

std::string_view type_name(const SettingRow& row) {
  constexpr std::array<std::string_view, std::variant_size_v<SettingMember>> names = {
      "text", "boolean", "integer", "text", "date", "list", "tag list"};
  return names[row.member.index()];
}

std::vector<SettingDescription> describe_settings() {
  const RenameSettings defaults;
  std::vector<SettingDescription> rows;
  rows.reserve(setting_count);
  for (const SettingRow& row : settings_table()) {
    const std::string_view type = type_name(row);
    rows.push_back({row.key, type, type == "date" ? "now" : text_of_setting(defaults, row), row.meaning});
  }
  return rows;
}

}  // namespace brindle
