#pragma once

// Table data: tests/cases/NAME.tsv. The first line names the columns; "#" begins a remark line. Every case is one line:
// the leading columns in order, then any number of key=value arguments. In all of them \t, \n, \r, \\ and \uXXXX (one
// UTF-16 unit) stand for characters.

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_name.h"
#include "text/number_text.h"

namespace brindle::test {

inline std::u16string unescaped(std::string_view utf8) {
  const std::u16string raw = decode_file_name(utf8);
  std::u16string text;
  for (std::size_t i = 0; i < raw.size(); ++i) {
    if (raw[i] != u'\\' || i + 1 == raw.size()) {
      text.push_back(raw[i]);
      continue;
    }
    const char16_t escape = raw[++i];
    if (escape == u'u') {
      text.push_back(
          static_cast<char16_t>(std::stoul(to_utf8(std::u16string_view(raw).substr(i + 1, 4)), nullptr, 16)));
      i += 4;
    } else {
      text.push_back(escape == u't' ? u'\t' : escape == u'n' ? u'\n' : escape == u'r' ? u'\r' : escape);
    }
  }
  return text;
}

/// One line of a table.
class Case {
 public:
  std::string line;  ///< for messages
  std::map<std::string, std::u16string> values;

  bool has(const std::string& key) const {
    asked_.insert(key);
    return values.contains(key);
  }
  /// Empty where the line says nothing.
  const std::u16string& operator[](const std::string& key) const {
    static const std::u16string none;
    return has(key) ? values.at(key) : none;
  }
  std::int32_t number(const std::string& key, std::int32_t otherwise) const {
    return has(key) ? integer_value(values.at(key)) : otherwise;
  }
  bool flag(const std::string& key, bool otherwise = false) const { return number(key, otherwise ? 1 : 0) != 0; }

  /// A misspelt key would be a case that tests nothing.
  void expect_all_asked() const {
    for (const auto& [key, value] : values) EXPECT_TRUE(asked_.contains(key)) << "nobody asked for " << key;
  }

 private:
  mutable std::set<std::string> asked_;
};

inline std::vector<std::string> split(const std::string& line, char separator) {
  std::vector<std::string> fields;
  std::istringstream stream(line);
  for (std::string field; std::getline(stream, field, separator);) fields.push_back(field);
  return fields;
}

inline std::vector<Case> read_cases(const std::string& name) {
  std::ifstream file(std::string(BRINDLE_TEST_CASES) + "/" + name + ".tsv");
  std::vector<Case> cases;
  std::vector<std::string> columns;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line.front() == '#') continue;
    const std::vector<std::string> fields = split(line, '\t');
    if (columns.empty()) {
      columns = fields;
      continue;
    }
    Case& added = cases.emplace_back();
    added.line = line;
    for (std::size_t i = 0; i < fields.size(); ++i) {
      const std::size_t equals = i < columns.size() ? 0 : fields[i].find('=');
      const std::string key = i < columns.size() ? columns[i] : fields[i].substr(0, equals);
      added.values[key] = unescaped(i < columns.size() ? fields[i] : fields[i].substr(equals + 1));
    }
  }
  return cases;
}

/// Runs `check` on every case of a table.
template <class Check>
void for_each_case(const std::string& name, Check check) {
  const std::vector<Case> cases = read_cases(name);
  EXPECT_FALSE(cases.empty()) << "no cases in " << name;
  for (const Case& each : cases) {
    SCOPED_TRACE(each.line);
    check(each);
    each.expect_all_asked();
  }
}

}  // namespace brindle::test
