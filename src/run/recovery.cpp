#include "run/recovery.h"

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <new>
#include <optional>
#include <span>
#include <stdexcept>
#include <string_view>
#include <tuple>
#include <unordered_map>

#include "list/file_list.h"
#include "list/path_follower.h"
#include "log/journal.h"
#include "log/rename_log.h"
#include "log/undo_progress.h"
#include "platform/ascii.h"
#include "platform/atomic_file.h"
#include "platform/folder_handle.h"
#include "platform/move.h"
#include "platform/path.h"
#include "platform/translation.h"
#include "run/disk_evidence.h"
#include "run/stopped_cycle.h"
#include "text/hash.h"

namespace brindle {
namespace {

/// The folder and the name that each entry had when its turn came. In most runs they are what the journal says; where
/// paths follow renamed folders, the run is gone through once more.
class Replay {
 public:
  explicit Replay(const JournalReader& journal) : journal_(journal), renamed_(journal.entries().size()) {
    find_shared_names();
    if (!journal.info().paths_follow) return;
    for (const JournalEntry& entry : journal.entries()) {
      const FolderId folder = files_.folders().intern(journal.folders()[entry.folder]);
      // Every entry is a row, or the rows would not be the entries any more; a run never holds a path twice.
      if (!files_.add(folder, entry.old_name, 0, entry.inode)) throw std::invalid_argument("a path stands in it twice");
    }
    follower_.emplace(files_);
  }

  IntendedRenaming at(std::size_t index) {
    const JournalEntry& entry = journal_.entries()[index];
    IntendedRenaming renaming{journal_.folders()[entry.folder], entry.old_name, entry.new_name, entry.inode};
    describe_names(index, renaming);
    if (!follower_) return renaming;
    path_.clear();
    files_.folders().append_path(files_[index].folder, path_);
    renaming.folder = path_;
    renaming.old_name = files_[index].name();
    return renaming;
  }
  /// Entries of one folder, one behind the other, were renamed; at once, when they are several.
  void renamed(std::size_t first, std::span<const NameChange> changes) {
    std::fill_n(renamed_.begin() + static_cast<std::ptrdiff_t>(first), changes.size(), true);
    if (follower_) follower_->follow_all(files_[first].folder, changes);
  }

 private:
  struct NameKey {
    std::uint32_t folder;
    std::string_view name;
    bool operator==(const NameKey&) const = default;
  };
  struct NameHash {
    std::size_t operator()(const NameKey& key) const { return hash_bytes(key.name, key.folder); }
  };
  static constexpr std::uint32_t nobody = UINT32_MAX;

  // Who has the name that an entry is to get, and who is to get the name that it has.
  void find_shared_names() {
    const std::vector<JournalEntry>& entries = journal_.entries();
    std::unordered_map<NameKey, std::uint32_t, NameHash> by_old_name;
    by_old_name.reserve(entries.size());
    for (std::uint32_t i = 0; i < entries.size(); ++i)
      by_old_name.emplace(NameKey{entries[i].folder, entries[i].old_name}, i);
    holders_.resize(entries.size(), nobody);
    followers_.resize(entries.size(), nobody);
    for (std::uint32_t i = 0; i < entries.size(); ++i) {
      const auto holder = by_old_name.find({entries[i].folder, entries[i].new_name});
      if (holder == by_old_name.end() || holder->second == i) continue;
      holders_[i] = holder->second;
      followers_[holder->second] = i;
    }
  }
  void describe_names(std::size_t index, IntendedRenaming& renaming) const {
    const std::vector<JournalEntry>& entries = journal_.entries();
    const JournalEntry& entry = entries[index];
    const std::uint32_t holder = holders_[index];
    const std::uint32_t follower = followers_[index];
    const bool shares_names = holder != nobody || follower != nobody;
    renaming.old_name_is_wanted = follower != nobody;
    renaming.new_name_was_taken =
        (holder != nobody && !renamed_[holder]) || (shares_names && entry.mark == JournalMark::failed);
    const bool was_cut_off = entry.mark != JournalMark::done && entry.mark != JournalMark::failed;
    const bool is_link_of_follower = follower != nobody && entries[follower].inode == entry.inode;
    renaming.may_be_half = was_cut_off && !renaming.new_name_was_taken && !is_link_of_follower;
  }

  const JournalReader& journal_;
  FileList files_;
  std::optional<PathFollower> follower_;
  std::string path_;
  std::vector<bool> renamed_;
  std::vector<std::uint32_t> holders_;
  std::vector<std::uint32_t> followers_;
};

/// Says of each entry, in order, whether it was renamed. The disk is asked, always: a mark may never have reached the
/// journal's disk, or may have, and the rename not its own.
class Judge {
 public:
  bool is_renamed(JournalMark mark, const IntendedRenaming& renaming) {
    switch (mark == JournalMark::half ? disk_.settle_half_step(renaming) : disk_.ask(renaming)) {
      case Evidence::renamed:
        return true;
      case Evidence::not_renamed:
        return false;
      case Evidence::cannot_tell:
        return mark == JournalMark::done;
      case Evidence::unreachable:
        break;
    }
    return mark != JournalMark::failed;  // undoing what was never done does nothing
  }

 private:
  DiskEvidence disk_;
};

/// The log in the making, with what the run comes to as the disk tells it.
class RecoveredLog {
 public:
  RecoveredLog(JournalReader& journal, RenameLogWriter& log) : journal_(journal), log_(log), replay_(journal) {}

  Status add_all() {
    auto cycle = journal_.cycles().begin();
    for (std::size_t i = 0; i < journal_.entries().size(); ++i) {
      if (cycle == journal_.cycles().end() || cycle->first != i) {
        add_one(i);
        continue;
      }
      if (Status status = add_cycle(*cycle); !status.ok()) return status;
      i += cycle++->count - 1;
    }
    return {};
  }

 private:
  void add_one(std::size_t index) {
    const IntendedRenaming renaming = replay_.at(index);
    if (!judge_.is_renamed(journal_.entries()[index].mark, renaming)) return;
    log_.addLogEntry(renaming.folder, renaming.old_name, renaming.folder, renaming.new_name);
    const NameChange change{renaming.old_name, renaming.new_name};
    replay_.renamed(index, {&change, 1});
  }

  Status add_cycle(const JournalCycle& recorded) {
    StoppedCycle cycle(journal_, recorded, replay_.at(recorded.first).folder);
    if (Status status = cycle.settle(); !status.ok()) return status;
    std::vector<NameChange> changes;
    for (std::size_t member = 0; member < recorded.count; ++member) {
      if (!cycle.is_renamed(member)) continue;
      changes.push_back(cycle.names(member));
      log_.addLogEntry(cycle.folder(), changes.back().old_name, cycle.folder(), changes.back().new_name);
    }
    // All of them, or none; but for what somebody has taken away since.
    if (changes.size() == recorded.count) replay_.renamed(recorded.first, changes);
    return {};
  }

  JournalReader& journal_;
  RenameLogWriter& log_;
  Replay replay_;
  Judge judge_;
};

Result<RecoveredRun> write_log(JournalReader& journal, const std::string& path) {
  RenameLogWriter log;
  Status status = log.take_over(path, journal.info().isFolders ? "FOLDERS" : "FILES", journal.info().appversion);
  if (!status.ok()) return status;
  status = RecoveredLog(journal, log).add_all();
  if (!status.ok()) return status;
  status = log.saveLog();
  if (!status.ok()) return status;
  return RecoveredRun{log.saved_path(), log.count()};
}

// Whether a finished log is this run's: its entries are some of the journal's, in the same order.
bool is_log_of(const JournalReader& journal, const LogFile& log) {
  if (log.type != (journal.info().isFolders ? "FOLDERS" : "FILES")) return false;
  // Following a renamed folder may have changed the old name as well, where the folder's whole path recurs in the
  // item's.
  const bool follows = journal.info().paths_follow;
  auto intended = journal.entries().begin();
  const auto end = journal.entries().end();
  for (const LogEntry& entry : log.entries) {
    intended = std::find_if(intended, end, [&](const JournalEntry& candidate) {
      return candidate.new_name == entry.target_name && (follows || candidate.old_name == entry.source_name);
    });
    if (intended == end) return false;
    ++intended;
  }
  return true;
}

// The program may have been stopped between the finished log and the end of its journal.
std::optional<RecoveredRun> finished_log_of(const JournalReader& journal, std::string path) {
  for (; !path.empty(); path = next_log_path(path)) {
    const std::vector<std::string> logs = find_finished_logs(path);
    if (logs.empty()) return std::nullopt;
    for (const std::string& candidate : logs) {
      const Result<LogFile> log = readLogFile(candidate);
      if (log.ok() && is_log_of(journal, *log)) return RecoveredRun{candidate, log->entries.size()};
    }
  }
  return std::nullopt;
}

void remove_traces(const std::string& log_path) {
  ::unlink(log_path.c_str());
  ::unlink(unfinished_log_path(log_path).c_str());
  ::unlink(journal_path(log_path).c_str());  // the last: as long as it is there, the rest can be done again
}

// A journal that cannot be read is kept under a name that recovery passes over; the other traces go, since without it
// they mean nothing.
std::string set_journal_aside(const std::string& log_path, const std::string& problem) {
  const std::string journal = journal_path(log_path);
  const PathParts from = split_path(journal);
  const FolderHandle folder = FolderHandle::open(from.folder);
  int error = folder ? EEXIST : folder.error();
  std::string name;
  for (int number = 1; error == EEXIST; ++number) {
    name = number == 1 ? from.name + ".damaged" : fmt::format("{}.damaged-{}", from.name, number);
    error = move_exclusively(folder, from.name.c_str(), folder, name.c_str());
  }
  if (error != 0) return translated("{}, nor can it be set aside: {}", problem, translated(system_error_text(error)));
  ::unlink(log_path.c_str());
  ::unlink(unfinished_log_path(log_path).c_str());
  return translated("{}; what its run renamed cannot be undone any more. It is kept as “{}”", problem, name);
}

void recover_run(const std::string& log_path, RecoveryResult& result) {
  JournalReader journal;
  Result<RecoveredRun> run = RecoveredRun();
  switch (journal.open(journal_path(log_path))) {
    case JournalReader::State::in_progress:
      result.going_on.push_back(log_path);
      return;
    case JournalReader::State::damaged:
      result.set_aside.push_back(set_journal_aside(log_path, journal.error()));
      return;
    case JournalReader::State::missing:
      if (!journal.error().empty()) result.problems.push_back(journal.error());
      return;
    case JournalReader::State::sealed:
      if (auto finished = finished_log_of(journal, log_path)) {
        run = std::move(*finished);
      } else {
        run = write_log(journal, log_path);
      }
      break;
    case JournalReader::State::unsealed:
      break;
  }
  if (!run.ok()) return result.problems.push_back(run.reason());
  remove_traces(log_path);
  result.runs.push_back(*run);
}

struct Leftovers {
  std::vector<std::string> journals;  // the "#" paths they belong to, oldest first
  std::vector<std::string> others;    // names that only make sense beside another file
};

Leftovers find_leftovers(const std::string& folder_path) {
  Leftovers found;
  const FolderHandle folder = FolderHandle::open(folder_path);
  if (!folder) return found;
  FolderReader reader;
  FolderEntry entry;
  for (reader.start(folder); reader.next(entry);) {
    const std::string path = join_path(folder_path, entry.name);
    if (is_journal_name(entry.name)) found.journals.push_back(log_path_of_journal(path));
    const bool is_trace = is_open_log_name(entry.name) || ends_ignoring_case(entry.name, "-#.xml.part") ||
                          ends_ignoring_case(entry.name, ".xml.undo");
    if (is_trace && begins_ignoring_case(entry.name, "Log ")) found.others.push_back(path);
  }
  std::sort(found.journals.begin(), found.journals.end(), [](const std::string& a, const std::string& b) {
    return std::tuple(log_time(a), a) < std::tuple(log_time(b), b);
  });
  return found;
}

bool is_empty_log(const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_size == 0) return true;
  const Result<LogFile> log = readLogFile(path);
  return log.ok() && log->entries.empty();
}

// Traces of a run without its journal: the run is over, or never came to anything.
void remove_orphan(const std::string& path) {
  const std::string_view name = path;
  if (ends_ignoring_case(name, ".undo")) {
    if (!entry_exists(path.substr(0, path.size() - 5))) ::unlink(path.c_str());
  } else if (ends_ignoring_case(name, ".part")) {
    if (!entry_exists(journal_path(path.substr(0, path.size() - 5)))) ::unlink(path.c_str());
  } else if (!entry_exists(journal_path(path)) && is_empty_log(path)) {
    ::unlink(path.c_str());
  }
}

}  // namespace

RecoveryResult recover(const std::string& log_folder) {
  RecoveryResult result;
  const Leftovers leftovers = find_leftovers(log_folder);
  for (const std::string& log_path : leftovers.journals) {
    try {
      recover_run(log_path, result);
    } catch (const std::bad_alloc&) {
      result.problems.push_back(translated("there is not enough memory for the journal of “{}”", log_path));
    } catch (const std::logic_error& error) {
      result.problems.push_back(translated("the journal of “{}” cannot be used: {}", log_path, error.what()));
    }
  }
  for (const std::string& path : leftovers.others) remove_orphan(path);
  return result;
}

Status may_undo(const RecoveryResult& recovery) {
  if (!recovery.going_on.empty()) {
    return Status(translated("a renaming is going on (“{}”): undo when it is over", recovery.going_on.front()));
  }
  if (!recovery.problems.empty()) {
    return Status(translated("an interrupted renaming could not be finished, and nothing is undone before it is: {}",
                             recovery.problems.front()));
  }
  return recovery.set_aside.empty() ? Status() : Status(recovery.set_aside.front());
}

}  // namespace brindle
