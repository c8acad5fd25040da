#pragma once

// Cases as data: lines of tab-separated columns, and settings written as "KEY=VALUE|KEY=VALUE|~KEY" (~: absent).

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "settings/setting_text.h"

namespace brindle {

using CaseColumns = std::vector<std::string>;

inline CaseColumns split(const std::string& text, char separator) {
  CaseColumns parts;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

/// The lines of a file of tests/cases, "#" lines left out, each with exactly `columns` columns.
inline std::vector<CaseColumns> read_cases(const std::string& name, std::size_t columns) {
  std::ifstream file(std::string(BRINDLE_TEST_CASES "/") + name);
  std::vector<CaseColumns> cases;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line.front() == '#') continue;
    cases.push_back(split(line, '\t'));
    EXPECT_LE(cases.back().size(), columns) << line;
    cases.back().resize(columns);
  }
  EXPECT_FALSE(cases.empty()) << name;
  return cases;
}

/// Applies settings one by one, as written and nothing more.
inline RenameSettings with(RenameSettings settings, const std::string& changes,
                           FieldOfToken field_of = field_of_token) {
  for (const std::string& change : split(changes, '|')) {
    if (change.front() == '~') {
      const SettingRow* row = find_setting(std::string_view(change).substr(1));
      settings.*std::get<Text RenameSettings::*>(row->member) = std::nullopt;
    } else {
      const std::size_t equals = change.find('=');
      EXPECT_EQ(set_from_text(settings, change.substr(0, equals), change.substr(equals + 1), field_of), std::nullopt);
    }
  }
  return settings;
}

/// The keys whose values differ, for a readable failure.
inline std::vector<std::string_view> differing_keys(const RenameSettings& a, const RenameSettings& b) {
  const SettingSet rows = compare_settings(a, b);
  std::vector<std::string_view> keys;
  for (const SettingRow& row : settings_table()) {
    if (rows[setting_index(row)]) keys.push_back(row.key);
  }
  return keys;
}

/// Settings of which no member has its default.
inline RenameSettings all_changed() {
  struct Change {
    void operator()(bool& flag) const { flag = !flag; }
    void operator()(std::int32_t& number) const { number += 7; }
    void operator()(Text& text) const { text = text.value_or(u"") + u"é;<1"; }
    void operator()(Date& date) const { date += std::chrono::seconds(86400); }
    void operator()(TextList& texts) const { texts = {u".A", u".B"}; }
    void operator()(FieldList& fields) const { fields = {{u"EXIF", u"Date", u"<EXIF_Date>", u"Date", u""}}; }
  };
  RenameSettings settings;
  for (const SettingRow& row : settings_table()) visit_member(row, settings, Change{});
  return settings;
}

}  // namespace brindle
