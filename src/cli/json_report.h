#pragma once

// The objects that preview, rename and undo print with --json.

#include <cstddef>
#include <string>
#include <string_view>

#include "list/file_list.h"
#include "methods/validation.h"

namespace brindle {

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
