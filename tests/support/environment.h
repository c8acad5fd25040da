#pragma once

// Environment variables that a test sets, and puts back when it is over.

#include <cstdlib>
#include <map>
#include <optional>
#include <string>

namespace brindle::test {

class Environment {
 public:
  /// No value: the variable is not set.
  explicit Environment(const std::map<std::string, std::optional<std::string>>& variables) {
    for (const auto& [name, value] : variables) {
      const char* old = std::getenv(name.c_str());
      old_[name] = old == nullptr ? std::nullopt : std::optional<std::string>(old);
      set(name, value);
    }
  }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;
  ~Environment() {
    for (const auto& [name, value] : old_) set(name, value);
  }

 private:
  static void set(const std::string& name, const std::optional<std::string>& value) {
    if (value)
      ::setenv(name.c_str(), value->c_str(), 1);
    else
      ::unsetenv(name.c_str());
  }
  std::map<std::string, std::optional<std::string>> old_;
};

}  // namespace brindle::test
