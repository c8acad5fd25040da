#pragma once

// What the steps of a plan want to know of the files themselves, read ahead of the row at hand on another core. Which
// values come out does not depend on that.

#include <memory>
#include <optional>
#include <vector>

#include "list/file_list.h"
#include "metadata/audio_attributes.h"
#include "metadata/metadata_ahead.h"
#include "methods/photo_renaming.h"

namespace brindle {

class RenamePlan;

/// The metadata of one item for one run of a plan's steps.
struct ItemMetadata {
  std::vector<std::optional<PhotoMetadata>>
      photos;  ///< by step; none for steps of other kinds, and for what was not read
  std::optional<AudioAttributes> audio;

  const PhotoMetadata* photo(std::size_t step) const {
    return step < photos.size() && photos[step] ? &*photos[step] : nullptr;
  }
};

/// Hands out the metadata of rows that are asked for in rising order. One thread; the list and the plan must outlive
/// it, and the names on the list must not change while it is used.
class MetadataWindow {
 public:
  /// Does nothing at all for a plan whose steps read no files.
  MetadataWindow(const FileList& files, const RenamePlan& plan);

  /// None when nothing was read ahead: the steps then read what they need themselves.
  std::optional<ItemMetadata> take(std::size_t row);

 private:
  void announce();

  const FileList& files_;
  const RenamePlan& plan_;
  std::size_t next_ = 0;  // the first row not announced
  std::unique_ptr<MetadataAhead<ItemMetadata>> ahead_;
};

}  // namespace brindle
