#pragma once

// Rename from a list: reading the tab-delimited text file, and the job that fills the file list from it.
//
// A line is three fields with a tab between them: name, new name (may be empty), and the path of the folder. The file
// is UTF-8; bytes of names that are not valid UTF-8 stand in it as U+EF80…U+EFFF (see platform/file_name.h). Nothing in
// a list leads out of the folder that its line names: a "/" in a name stands for ":", and lines whose name is "", "."
// or ".." are ignored.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "list/disk_names.h"
#include "list/file_list.h"
#include "platform/job.h"
#include "platform/status.h"
#include "text/text_arena.h"

namespace brindle {

/// What a list file asks for, in on-disk bytes. Movable; its views stay valid through a move.
struct FileRenameItem {
  std::vector<std::string_view> paths;  ///< in the order of the file, none twice; with a NUL behind their end
  std::unordered_map<std::string_view, std::string_view> records;  ///< new name by path
  std::int32_t importType = 0;                                     ///< 0 files, 1 folders
  std::size_t odd_lines = 0;  ///< lines that were ignored: something stands in them, but not three fields

  /// Takes a line. The last new name of a path counts.
  void add(std::string_view path, std::string_view new_name);

 private:
  TextArena texts_;
};

/// The titles of the three columns, as the export writes them and as a header is known by. In every language of the
/// string table at once: a list travels.
struct ListTitles {
  std::vector<std::u16string> filename;
  std::vector<std::u16string> newFilename;
  std::vector<std::u16string> location;
};

inline constexpr std::size_t list_size_limit = std::size_t{1} << 30;  ///< in bytes
inline constexpr std::size_t list_line_limit = 10'000'000;            ///< usable lines

/// Reads a list file: lines ended by line feeds, or by carriage returns where there is no line feed. A first line
/// without exactly three fields spoils the file; one that has a column's title in its place is a header; other lines
/// that do not have three fields are ignored.
///
/// Existing items are looked up: their paths become real (the folder's links resolved, the name as the disk has
/// it, a last link not followed), and an empty new name stands for the name they have. A location that is no absolute
/// path is left as it is, and leads nowhere. Where a spreadsheet has put quotes around fields, a line that names
/// nothing on disk is tried without them. A list in which no line is usable is an item without paths. The reason of a
/// failure (no such file, not regular, too large, not UTF-8, no text) is a few words that name no file. Any thread.
Result<FileRenameItem> loadRenameFile(const std::string& path, std::int32_t importType, const ListTitles& titles);
/// The same for the bytes of a file.
Result<FileRenameItem> read_rename_list(std::string_view bytes, std::int32_t importType, const ListTitles& titles);

struct ImportResult {
  std::size_t searchFilesCount = 0;    ///< items accepted
  std::size_t hidden_paths = 0;        ///< paths left out because their names begin with "."
  bool isHasFilesForRenaming = false;  ///< at least one of them can be renamed without a separate preview
  bool cancelled = false;
};

/// The import job: appends the items of the asked kind (files are all that gathering takes for one: links and packages
/// too), each with its new name or its status. Items that are not on disk are listed as "File Not Found" or "Folder Not
/// Found". `disk_names` answers whether new names are taken, and keeps what it learnt.
ImportResult importFiles(FileList& files, const FileRenameItem& item, bool include_hidden, DiskNames& disk_names,
                         const JobControl& control);

}  // namespace brindle
