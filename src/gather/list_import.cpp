#include "gather/list_import.h"

#include <cerrno>
#include <exception>
#include <numeric>
#include <utility>

#include "gather/list_rows.h"
#include "list/open_folder.h"
#include "platform/atomic_file.h"
#include "platform/file_kind.h"
#include "platform/file_name.h"
#include "platform/message_log.h"
#include "platform/translation.h"
#include "run/rename_row.h"

namespace brindle {
namespace {

constexpr int not_looked_at = -1;

/// One run of the import job.
class ImportRun {
 public:
  ImportRun(FileList& files, const FileRenameItem& item, bool include_hidden, DiskNames& disk_names,
            const JobControl& control)
      : files_(files),
        item_(item),
        include_hidden_(include_hidden),
        disk_names_(disk_names),
        control_(control),
        throttle_(control) {}

  ImportResult run() {
    find_folders();
    disk_names_.begin_run(files_.folders());
    for (std::size_t i = 0; i < item_.paths.size() && !stop(); ++i) add(i);
    throttle_.finish(result_.searchFilesCount);
    return result_;
  }

 private:
  bool stop() {
    result_.cancelled = result_.cancelled || control_.cancelled();
    return result_.cancelled;
  }

  void find_folders();
  void add(std::size_t index);
  void look_at_all_in(FolderId folder);
  void set_new_name(std::size_t row, std::string_view new_name);
  void set_missing(std::size_t row, bool is_absolute);

  FileList& files_;
  const FileRenameItem& item_;
  const bool include_hidden_;
  DiskNames& disk_names_;
  const JobControl& control_;
  ProgressThrottle throttle_;
  OpenFolder open_;
  std::vector<FolderId> folder_of_;       // by path
  std::vector<FileKind> kinds_;           // by path, once its folder was looked at
  std::vector<std::uint32_t> by_folder_;  // the numbers of the paths, folder by folder
  std::vector<std::uint32_t> first_of_;   // by folder: where its paths begin in by_folder_
  std::vector<int> folder_errors_;        // by folder, once it was looked at: errno, 0 when it could be
  FileSystemItem field_;
  ImportResult result_;
};

std::size_t name_start(std::string_view path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string_view::npos ? 0 : slash + 1;
}

// All at once: a run of existence tests wants to know its folders, and how much it will be asked about each.
void ImportRun::find_folders() {
  FolderTable& folders = files_.folders();
  const std::size_t count = item_.paths.size();
  std::string_view last;
  folder_of_.reserve(count);
  for (const std::string_view path : item_.paths) {
    const std::string_view location = path.substr(0, name_start(path));
    const bool is_same = !folder_of_.empty() && location == last;
    folder_of_.push_back(is_same ? folder_of_.back() : folders.intern(location));
    last = location;
  }
  first_of_.resize(folders.size() + 1);
  for (const FolderId folder : folder_of_) ++first_of_[folder + 1];
  std::partial_sum(first_of_.begin(), first_of_.end(), first_of_.begin());
  by_folder_.resize(count);
  std::vector<std::uint32_t> next = first_of_;
  for (std::uint32_t i = 0; i < count; ++i) by_folder_[next[folder_of_[i]]++] = i;
  kinds_.resize(count);
  folder_errors_.resize(folders.size(), not_looked_at);
}

// However the lines are ordered, a folder is opened once.
void ImportRun::look_at_all_in(FolderId folder) {
  if (folder_errors_[folder] != not_looked_at) return;
  open_.open(files_.folders(), folder);
  folder_errors_[folder] = open_.handle().error();
  FolderIdentity identity;
  if (!open_.handle().identity(identity)) return;
  files_.folders().set_identity(folder, identity);
  for (std::uint32_t i = first_of_[folder]; i < first_of_[folder + 1]; ++i) {
    const std::string_view listed = item_.paths[by_folder_[i]];
    if (!listed.starts_with('/')) continue;
    kinds_[by_folder_[i]] = file_kind(open_.handle(), listed.data() + name_start(listed));
  }
}

void ImportRun::add(std::size_t index) {
  const std::string_view path = item_.paths[index];
  const std::string_view name = path.substr(name_start(path));
  if (!is_entry_name(name)) return;
  if (name.starts_with('.') && !include_hidden_) {
    ++result_.hidden_paths;
    return;
  }
  look_at_all_in(folder_of_[index]);
  const FileKind& kind = kinds_[index];
  const bool wants_folders = item_.importType != 0;
  const bool is_real_folder = kind.is_folder && !kind.is_alias && !kind.is_package;
  if (kind.exists && is_real_folder != wants_folders) return;
  const std::uint8_t bits = kind.exists ? kind_bits(kind.is_folder, kind.is_alias) : kind_bits(wants_folders, false);
  if (!files_.add(folder_of_[index], name, bits, kind.inode)) return;
  ++result_.searchFilesCount;
  const std::size_t row = files_.size() - 1;
  throttle_.step(result_.searchFilesCount, [&] { return files_.path(row); });
  if (!kind.exists) return set_missing(row, path.starts_with('/'));
  const auto record = item_.records.find(path);
  set_new_name(row, record == item_.records.end() ? std::string_view() : record->second);
}

void ImportRun::set_missing(std::size_t row, bool is_absolute) {
  files_.set_status(row, not_found(files_[row].type()));
  const int error = folder_errors_[files_[row].folder];
  if (!is_absolute) {
    files_.set_reason(row, "the location in the list is no absolute path");
  } else if (error != 0 && error != ENOENT && error != ENOTDIR) {
    files_.set_reason(row, describe_error(error));
  }
}

void ImportRun::set_new_name(std::size_t row, std::string_view new_name) {
  // First of all, because a file may bear the name of a status.
  if (new_name.empty() || new_name == files_[row].name()) return files_.set_status(row, ItemStatus::no_changes);
  const FolderId folder = files_[row].folder;
  disk_names_.enter(folder, first_of_[folder + 1] - first_of_[folder]);
  disk_names_.exists(files_[row].name());  // it is; this tells whether the folder knows letter case
  field_.setNewFilename(decode_file_name(new_name));
  files_.write(row, field_, disk_names_.name_limit());
  const bool renameable = files_[row].status == ItemStatus::proposed && check_new_name(files_, row, disk_names_);
  result_.isHasFilesForRenaming = result_.isHasFilesForRenaming || renameable;
}

}  // namespace

void FileRenameItem::add(std::string_view path, std::string_view new_name) {
  const auto known = records.find(path);
  if (known == records.end()) {
    paths.push_back(texts_.keep(path));
    records.emplace(paths.back(), texts_.keep(new_name));
  } else if (known->second != new_name) {
    known->second = texts_.keep(new_name);
  }
}

Result<FileRenameItem> read_rename_list(std::string_view bytes, std::int32_t importType, const ListTitles& titles) {
  if (std::string fault = list_text_fault(bytes); !fault.empty()) return Status(std::move(fault));
  const auto [rows, odd_lines] = list_rows(bytes, titles);
  if (rows.size() > list_line_limit) return Status(translated("it has more than ten million lines"));
  FileRenameItem item;
  item.importType = importType;
  item.odd_lines = odd_lines;
  TextArena texts;
  for (const FoundItem& found : look_up_rows(rows, texts)) item.add(found.path, found.new_name);
  return item;
}

Result<FileRenameItem> loadRenameFile(const std::string& path, std::int32_t importType, const ListTitles& titles) {
  try {
    const Result<std::string> bytes = read_regular_file(path, list_size_limit);
    return bytes.ok() ? read_rename_list(*bytes, importType, titles) : bytes.status();
  } catch (const std::exception& failure) {
    log_failure("browseRenameFile", failure.what());
    return Status(failure.what());
  }
}

ImportResult importFiles(FileList& files, const FileRenameItem& item, bool include_hidden, DiskNames& disk_names,
                         const JobControl& control) {
  return ImportRun(files, item, include_hidden, disk_names, control).run();
}

}  // namespace brindle
