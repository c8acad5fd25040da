#pragma once

// Moving the entries of a log back on disk, and what an undo before this one did that its marks do not tell: found out
// from the disk and from how the entries hang together. The undo goes from the last entry to the first, so of what is
// still to come nothing else can have moved. One thread.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "log/rename_log.h"
#include "log/undo_progress.h"
#include "platform/disks.h"
#include "platform/folder_handle.h"
#include "platform/move.h"
#include "platform/own_folders.h"
#include "run/log_cycles.h"

namespace brindle {

class EntryPlaces {
 public:
  EntryPlaces(const LogFile& log, const UndoProgress& progress)
      : log_(log), progress_(progress), cycles_(cycles_in(log)) {}

  /// The entries that passed their names round, rising.
  const std::vector<LogCycle>& cycles() const { return cycles_; }

  /// The present path of a folder that the entry numbered `entry` names: it may lie in folders that have got their old
  /// names back.
  std::string place_of(std::string_view folder, std::size_t entry);

  /// Whether an entry whose old and new name are both there has its old name: what stands at the new one is then
  /// another entry's item, which has got its old name back.
  bool gave_up_its_new_name(std::size_t entry);
  /// Whether what stands at an entry's new name is another entry's item, which has got its old name back.
  bool is_another_at_new_name(std::size_t entry);
  /// Whether the path of a folder, as an entry names it, may lead to another folder by now, which has got its old name
  /// back.
  bool may_lead_elsewhere() { return log_.type == "FOLDERS" && shares_names(); }

 private:
  using Index = std::unordered_map<std::string, std::vector<std::size_t>>;  // entries by path, rising

  const Index& by_target();
  const Index& by_source();
  bool is_back(std::size_t entry);
  bool is_cycle_back(const LogCycle& cycle);
  bool has_old_name(std::size_t entry);
  bool has_new_name(std::size_t entry);
  std::string folder_now(std::string_view folder, std::size_t entry);
  bool shares_names();
  std::size_t find_holder(std::size_t entry);

  const LogFile& log_;
  const UndoProgress& progress_;
  std::vector<LogCycle> cycles_;
  std::optional<bool> shares_names_;
  std::unordered_map<std::size_t, bool> cycles_back_;  // by first entry
  int depth_ = 0;                                      // of questions about folders of folders
  Index by_target_;                                    // made when first needed
  Index by_source_;
  std::vector<std::uint8_t> answers_;  // of gave_up_its_new_name, kept: chains of names are long
};

class Restorer {
 public:
  /// `was_tried_before`: an undo of the same log came before this one. `log_folder` is one of the folders that must not
  /// be moved away from under the program.
  Restorer(EntryPlaces& places, bool was_tried_before, const std::string& log_folder)
      : places_(places), own_folders_(OwnFolders::with_logs_in(log_folder)), was_tried_before_(was_tried_before) {}

  /// Moves an entry from its target to its source. Empty when that was done, else why not (valid until the next call).
  std::string_view restore(const LogEntry& entry, std::size_t number, MoveWatcher& watcher);
  /// Settles what an undo before this one left half done; true when that one had come through.
  bool settle_half_step(const LogEntry& entry, std::size_t number);
  /// Whether an entry that restore() left alone has its old name already.
  bool is_back(const LogEntry& entry, std::size_t number);
  /// Whether the disk has the new name and not the old one.
  bool is_forth(const LogEntry& entry, std::size_t number);

  /// The folder in which the entries of a cycle lie, to move them there. Valid until the next call.
  const FolderHandle& open_to_change(const LogEntry& entry, std::size_t number);
  /// Why that one cannot be opened, or an entry not be moved in it.
  std::string_view describe(int error, const LogEntry& entry);
  bool holds_own_data(const FolderHandle& folder, std::string_view name) const;

  /// Brings all that was moved to the disks it lies on. 0 or errno.
  [[nodiscard]] int sync();

 private:
  /// A folder held open as long as entry after entry lies in it.
  ///
  /// A path that is held cannot come to mean another folder by our own moves: an entry's move changes what is below its
  /// target and its source only, the held folders are always those of the entry at hand, and neither can lie below
  /// either (the move into itself is refused, and so is the one onto a source that is there).
  struct HeldFolder {
    std::string path;
    FolderHandle handle;
    bool has_changed = false;
  };

  const FolderHandle& open(HeldFolder& held, std::string_view path);
  const FolderHandle& find(HeldFolder& held, std::string_view logged, std::size_t number);
  /// Which of an entry's names are there; neither where a folder cannot be opened.
  struct Names {
    bool old_name = false;
    bool new_name = false;
  };
  Names look(const LogEntry& entry, std::size_t number);
  std::string_view describe(int error, std::string_view folder, std::string_view when_missing);

  EntryPlaces& places_;
  OwnFolders own_folders_;
  bool was_tried_before_;
  HeldFolder targets_;
  HeldFolder sources_;
  TouchedDisks disks_;
  std::string text_;
};

}  // namespace brindle
