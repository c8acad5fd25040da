#include "gather/list_export.h"

#include <algorithm>

#include "gather/list_rows.h"
#include "platform/atomic_file.h"
#include "platform/file_name.h"
#include "platform/output_file.h"
#include "platform/translation.h"

namespace brindle {
namespace {

bool is_ascii(std::string_view bytes) {
  return std::none_of(bytes.begin(), bytes.end(), [](char c) { return (static_cast<unsigned char>(c) & 0x80U) != 0; });
}

void append_text(std::string_view bytes, std::string& line) {
  if (is_ascii(bytes)) {
    line += bytes;
  } else {
    line += to_utf8(decode_file_name(bytes));
  }
}

// A name as people see it.
void append_shown(std::string_view bytes, std::string& line) {
  const auto start = static_cast<std::ptrdiff_t>(line.size());
  append_text(bytes, line);
  std::replace(line.begin() + start, line.end(), ':', '/');
}

/// Makes the lines of a list.
class LineMaker {
 public:
  LineMaker(const FileList& files, const ExportOptions& options) : files_(files), options_(options) {}

  /// Valid until the next call.
  const std::string& line(std::size_t row) {
    const ItemRecord& record = files_[row];
    turn_to(record.folder);
    line_.clear();
    if (options_.isFilename) {
      if (options_.isIncludeLocation) {
        append_folder_and_separator();
        append_text(record.name(), line_);
      } else {
        append_shown(record.name(), line_);
      }
      line_ += '\t';
    }
    if (options_.isNewFilename) {
      const bool is_empty = record.status == ItemStatus::none;
      if (options_.isIncludeLocation && is_empty) line_ += folder_;
      if (options_.isIncludeLocation && !is_empty) append_folder_and_separator();
      append_new_name(row);
      line_ += '\t';
    }
    if (options_.isLocation && !options_.isIncludeLocation) (line_ += folder_) += '\t';
    line_.back() = '\n';
    return line_;
  }

 private:
  void turn_to(FolderId folder) {
    if (folder == folder_id_) return;
    folder_id_ = folder;
    folder_.clear();
    append_text(files_.folders().path(folder), folder_);
  }

  void append_folder_and_separator() {
    line_ += folder_;
    if (!folder_.ends_with('/')) line_ += '/';
  }

  void append_new_name(std::size_t row) {
    const ItemRecord& record = files_[row];
    if (record.status == ItemStatus::proposed) {
      append_shown(record.proposed(), line_);
    } else {
      line_ += to_utf8(status_text(record.status));
    }
  }

  const FileList& files_;
  const ExportOptions& options_;
  FolderId folder_id_ = FolderTable::none;
  std::string folder_;
  std::string line_;
};

std::string header(const ExportOptions& options, const ExportTitles& titles) {
  std::string line;
  if (options.isFilename) line += titles.filename + '\t';
  if (options.isNewFilename) line += titles.newFilename + '\t';
  if (options.isLocation && !options.isIncludeLocation) line += titles.location + '\t';
  line.back() = '\n';
  return line;
}

std::ptrdiff_t count_columns(const ExportOptions& options) {
  return (options.isFilename ? 1 : 0) + (options.isNewFilename ? 1 : 0) +
         (options.isLocation && !options.isIncludeLocation ? 1 : 0);
}

// Whether a line is one line, and its fields are as many as were put in.
bool reads_back(std::string_view line, std::ptrdiff_t columns) {
  line.remove_suffix(1);
  return std::count(line.begin(), line.end(), '\t') == columns - 1 && !holds_line_break(line);
}

}  // namespace

ExportRefusal check_export(const ExportOptions& options) {
  if (options.isFilename || options.isNewFilename) return ExportRefusal::none;
  if (!options.isLocation) return ExportRefusal::no_column;
  return options.isIncludeLocation ? ExportRefusal::nothing_to_say : ExportRefusal::none;
}

Result<std::vector<std::uint32_t>> export_list(const FileList& files, const ExportOptions& options,
                                               const ExportTitles& titles, const std::string& path,
                                               const JobControl& control) {
  if (check_export(options) != ExportRefusal::none) return Status(translated("there is no column to write"));
  std::vector<std::uint32_t> left_out;
  OutputFile output;
  if (Status status = output.open(path); !status.ok()) return status;
  if (options.addColumnNamesInHeader) output.write(header(options, titles));
  LineMaker lines(files, options);
  const std::ptrdiff_t columns = count_columns(options);
  ProgressThrottle throttle(control, files.size());
  for (std::size_t row = 0; row < files.size(); ++row) {
    if (control.cancelled()) {
      throttle.finish(row);
      return left_out;
    }
    throttle.step(row, [&] { return files.path(row); });
    const std::string& line = lines.line(row);
    if (reads_back(line, columns)) {
      output.write(line);
    } else {
      left_out.push_back(static_cast<std::uint32_t>(row));
    }
  }
  Status status = output.finish();
  throttle.finish(files.size());
  if (!status.ok()) return status;
  return left_out;
}

}  // namespace brindle
