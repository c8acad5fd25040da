#pragma once

// The photo fields of the list's items, read when they are first asked for and then kept.
//
// What is kept goes by the item's folder in the list and its inode, so that renaming and sorting lose nothing; where a
// listing gave no inode, by folder and name, and then a renamed item is read again. Numbers of folders mean something
// within one filling of the list only, and contents of files change: clear() whenever the list is emptied or filled
// anew.
//
// Any thread may call, several at once; the list must not change during a call. No call waits for another's reading.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "list/file_list.h"

namespace brindle {

class PhotoFieldsCache {
 public:
  /// Told that find() knows more than before. Called on the reading thread, at most 30 times a second and after the
  /// last row of a request; must not throw, and must not destroy the cache.
  using Changed = std::function<void()>;

  /// Keeps the fields of at least the last `capacity` items that were read or found, and of at most twice as many. An
  /// item takes about 80 bytes; makers' and models' names are kept once, 65,536 different ones at most.
  explicit PhotoFieldsCache(Changed changed = {}, std::size_t capacity = std::size_t{1} << 19U);
  PhotoFieldsCache(const PhotoFieldsCache&) = delete;
  PhotoFieldsCache& operator=(const PhotoFieldsCache&) = delete;
  /// Waits for the file that is being read; what is still requested is dropped.
  ~PhotoFieldsCache();

  /// The fields of a row, read from the file by the calling thread unless they are known. All empty for a folder, and
  /// for what is no picture. For sorting on a worker, and for the command line; not for a thread that draws.
  PhotoFields fields(const FileList& files, std::size_t row);

  /// The fields of a row if they are known; never touches the disk.
  std::optional<PhotoFields> find(const FileList& files, std::size_t row);

  /// Has a thread of the cache's own read the rows that are not known, in this order: what a view shows. Replaces the
  /// request before, of which only the file being read is finished.
  void request(const FileList& files, std::span<const std::size_t> rows);

  /// Forgets everything, also what is being read and what is requested.
  void clear();

 private:
  class Store;
  class Reader;
  std::unique_ptr<Store> store_;
  std::unique_ptr<Reader> reader_;
};

}  // namespace brindle
