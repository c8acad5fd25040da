#pragma once

// JSON, one object a line, always valid: bytes of a name that are not UTF-8 become U+FFFD, and the name then stands
// beside it in base64. And the objects that preview, rename and undo print.

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "list/file_list.h"
#include "methods/validation.h"

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
  /// An object with two names (see bytes).
  JsonLine& names(std::string_view key, JsonPair keys, JsonPair values);
  /// An array of objects with two texts each.
  JsonLine& pairs(std::string_view key, std::string_view first, std::string_view second,
                  std::span<const JsonPair> members);

 private:
  JsonLine& raw(std::string_view key, std::string_view value);
  void begin(std::string_view key);

  std::string& buffer_;
  bool first_ = true;
};

/// The last line of preview and rename.
struct RunSummary {
  std::string_view command;
  struct {
    std::size_t items = 0;
    std::size_t renameable = 0;
    std::size_t renamed = 0;
  } counts;
  std::string_view log;  ///< the log's path; empty for none
  double seconds = 0;
};

void print_summary(std::string& buffer, const RunSummary& summary);
/// An item that an export has left out.
void print_left_out(std::string& buffer, std::string_view path, std::string_view reason);
/// A folder or PATH that could not be read.
void print_unreadable(std::string& buffer, std::string_view path, std::string_view reason);
void print_refusal(std::string& buffer, const Refusal& refusal, std::string_view text);

/// Prints the rows of a list, one after the other: cheapest when rows of one folder follow each other.
class ItemPrinter {
 public:
  ItemPrinter(const FileList& files, std::string& buffer) : files_(files), buffer_(buffer) {}
  /// `old_path` is left out when empty.
  void print(std::size_t row, std::string_view old_path = {});

 private:
  const FileList& files_;
  std::string& buffer_;
  FolderId folder_ = FolderTable::none;
  std::string path_;             // of the row at hand
  std::size_t folder_size_ = 0;  // how much of it is the folder, "/" included
};

}  // namespace brindle
