#pragma once

// One entry of the file list as the rename methods and the views see it: a path on disk and the proposed new name,
// which doubles as the entry's status. The list itself keeps its entries packed (list/file_list.h) and lends them
// out as FileSystemItem objects; a loop over many entries uses one object and reads each row into it, so that its
// buffers are allocated once.
//
// An object belongs to one thread at a time. Texts are UTF-16; views stay valid until the item is next changed.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "list/folder_table.h"
#include "list/item_status.h"
#include "platform/date.h"

namespace brindle {

/// What an image says about itself. Empty for everything that is not an image.
struct PhotoFields {
  std::u16string make;        ///< camera maker, trimmed
  std::u16string model;       ///< camera model, trimmed
  std::u16string dimensions;  ///< "4000 x 3000"; "" when either side is unknown
  std::optional<WallTime> pictureTaken;
  std::int32_t dimensionValue = 0;  ///< width plus height in pixels: the sort key of the dimensions column
};

class FileSystemItem {
 public:
  FileSystemItem() = default;

  // The parts of the path. `fileWithPath` is fileLocation + "/" + filenameWithExtension.

  const std::u16string& filenameWithExtension() const { return name_; }
  std::u16string_view filename() const { return std::u16string_view(name_).substr(0, extension_.base_size); }
  std::u16string_view fileExtension() const { return std::u16string_view(name_).substr(extension_.start); }
  const std::u16string& fileLocation() const;  ///< no trailing "/"; "/" itself for what lies in the root
  std::u16string fileWithPath() const;
  std::optional<std::u16string_view> fileType() const;  ///< "FILE", "FOLDER", or none

  /// Bytes of the full path and of the folder, for calls to the system.
  std::string disk_path() const;
  const std::string& disk_location() const;

  // Kind.

  ItemType itemType() const { return itemType_; }
  void set_type(ItemType type) { itemType_ = type; }

  // The new name.

  /// The field as stored, in display form: "/" stands for the ":" of the disk. Empty when nothing has been computed.
  const std::u16string& newFilename() const { return newFilename_; }
  void setNewFilename(std::u16string_view text) { newFilename_ = text; }
  void setNewFilename(ItemStatus status) { newFilename_ = status_text(status); }
  ItemStatus status() const { return status_of(newFilename_); }
  /// Exchanges the field with `text`: how a rename operation stores its result without a copy.
  void swap_new_filename(std::u16string& text) { newFilename_.swap(text); }

  /// Why the item has its status, in words for a person; empty when there is nothing to add.
  const std::u16string& reason() const { return reason_; }
  void set_reason(std::u16string_view reason) { reason_ = reason; }

  // Access by key, for callers that hold a key: "filename", "filenameWithExtension", "fileExtension", "fileLocation",
  // "fileWithPath", "newFilename" (in on-disk form: every "/" turned into ":") and "fileType"; none for any other key.

  std::optional<std::u16string> objectForKey(std::string_view key) const;

  /// The text of a table cell by column identifier: the keys above with ":" shown as "/" in names, and "make", "model",
  /// "dimensions", "pictureTaken". None for "icon" (the window draws it) and for anything unknown.
  std::optional<std::u16string> displayField(std::string_view column) const;

  /// `path` with every ":" shown as "/".
  static std::u16string getDisplayFilePath(std::u16string_view path);

  /// Empty until someone puts them here (metadata/photo_fields_cache.h reads and keeps them); empty again for the next
  /// entry.
  const PhotoFields& photo() const { return photo_; }
  PhotoFields& photo() {
    has_photo_ = true;
    return photo_;
  }

  // For the list: point the object at another entry. `location` is the folder's path, `name` the last component
  // (bytes). A folder of a table must stay as it is while the object stands for an entry in it: its path is made when
  // somebody asks for it, since most names are made without it, and it is as long as its tree is deep.
  void set_path(std::string_view location, std::string_view name);
  void set_path(const FolderTable& folders, FolderId folder, std::string_view name);

 private:
  struct ExtensionSplit {
    std::size_t base_size = 0;
    std::size_t start = 0;
  };

  void set_name(std::string_view name);

  std::u16string name_;
  ExtensionSplit extension_;
  const FolderTable* folders_ = nullptr;  // null: location_bytes_ was given
  FolderId folder_ = FolderTable::none;
  mutable std::string location_bytes_;
  mutable bool location_made_ = true;
  mutable std::u16string location_;  // decoded on first use
  mutable bool location_decoded_ = true;
  std::u16string newFilename_;
  std::u16string reason_;
  ItemType itemType_ = ItemType::file;
  PhotoFields photo_;
  bool has_photo_ = false;  // someone may have written into it
};

/// A name taken apart at its last dot. A name whose only dot comes first has no extension; a trailing dot has an empty
/// one.
struct NameParts {
  std::u16string_view base;
  std::u16string_view extension;
};
NameParts split_extension(std::u16string_view name);

}  // namespace brindle
