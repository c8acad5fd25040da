#pragma once

// What an undo before this one did that its marks do not tell: found out from the disk and from how the entries of a
// log hang together. The undo goes from the last entry to the first, so of what is still to come nothing else can have
// moved. One thread.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "log/rename_log.h"
#include "log/undo_progress.h"

namespace brindle {

class EntryPlaces {
 public:
  EntryPlaces(const LogFile& log, const UndoProgress& progress) : log_(log), progress_(progress) {}

  /// The present path of a folder that the entry numbered `entry` names: it may lie in folders that have got their old
  /// names back.
  std::string place_of(std::string_view folder, std::size_t entry);

  /// Whether an entry whose old and new name are both there has its old name: what stands at the new one is then
  /// another entry's item, which has got its old name back.
  bool gave_up_its_new_name(std::size_t entry);

 private:
  using Index = std::unordered_map<std::string, std::vector<std::size_t>>;  // entries by path, rising

  const Index& by_target();
  const Index& by_source();
  bool is_back(std::size_t entry) const;
  std::size_t find_holder(std::size_t entry);

  const LogFile& log_;
  const UndoProgress& progress_;
  Index by_target_;  // made when first needed
  Index by_source_;
  std::vector<std::uint8_t> answers_;  // of gave_up_its_new_name, kept: chains of names are long
};

}  // namespace brindle
