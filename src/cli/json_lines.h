#pragma once

// JSON, one object a line, always valid: bytes of a name that are not UTF-8 become U+FFFD, and the name then stands
// beside it in base64.

#include <concepts>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace brindle {

struct JsonPair {
  std::string_view first;
  std::string_view second;
};

/// Appends one object and the end of its line to a buffer: opened by the constructor, closed by the destructor.
class JsonLine {
 public:
  JsonLine(std::string& buffer, std::string_view type);
  /// An object without a "type".
  explicit JsonLine(std::string& buffer);
  ~JsonLine();
  JsonLine(const JsonLine&) = delete;
  JsonLine& operator=(const JsonLine&) = delete;

  /// A text in UTF-8.
  JsonLine& text(std::string_view key, std::string_view value);
  /// A name or path: the text, and `key` + "Bytes" when it is not UTF-8.
  JsonLine& bytes(std::string_view key, std::string_view value);
  template <std::integral I>
  JsonLine& number(std::string_view key, I value) {
    return raw(key, std::to_string(value));
  }
  JsonLine& seconds(std::string_view key, double value);
  JsonLine& flag(std::string_view key, bool value) { return raw(key, value ? "true" : "false"); }
  JsonLine& null(std::string_view key) { return raw(key, "null"); }
  /// An array of objects with two texts each.
  JsonLine& pairs(std::string_view key, std::string_view first, std::string_view second,
                  std::span<const JsonPair> members);

 private:
  JsonLine& raw(std::string_view key, std::string_view value);
  void begin(std::string_view key);

  std::string& buffer_;
  bool first_ = true;
};

}  // namespace brindle
