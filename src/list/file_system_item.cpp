#include "list/file_system_item.h"

#include <algorithm>
#include <utility>

#include "platform/file_name.h"
#include "text/date_format.h"

namespace brindle {
namespace {

std::u16string replaced(std::u16string_view text, char16_t from, char16_t to) {
  std::u16string result(text);
  std::replace(result.begin(), result.end(), from, to);
  return result;
}

std::u16string shown(std::u16string_view name) {
  return replaced(name, u':', u'/');
}

}  // namespace

NameParts split_extension(std::u16string_view name) {
  const std::size_t dot = name.rfind(u'.');
  if (dot == std::u16string_view::npos || dot == 0) return {name, name.substr(name.size())};
  return {name.substr(0, dot), name.substr(dot + 1)};
}

void FileSystemItem::set_path(std::string_view location, std::string_view name) {
  folders_ = nullptr;
  location_bytes_ = location;
  location_made_ = true;
  location_decoded_ = false;
  set_name(name);
}

void FileSystemItem::set_path(const FolderTable& folders, FolderId folder, std::string_view name) {
  if (folders_ != &folders || folder_ != folder) location_made_ = location_decoded_ = false;
  folders_ = &folders;
  folder_ = folder;
  set_name(name);
}

const std::string& FileSystemItem::disk_location() const {
  if (!location_made_) {
    location_bytes_.clear();
    folders_->append_path(folder_, location_bytes_);
    location_made_ = true;
  }
  return location_bytes_;
}

void FileSystemItem::set_name(std::string_view name) {
  name_.clear();
  append_decoded(name, name_);
  const NameParts parts = split_extension(name_);
  extension_ = {parts.base.size(), name_.size() - parts.extension.size()};
  newFilename_.clear();
  reason_.clear();
  if (std::exchange(has_photo_, false)) photo_ = {};
}

const std::u16string& FileSystemItem::fileLocation() const {
  if (!location_decoded_) {
    location_.clear();
    append_decoded(disk_location(), location_);
    location_decoded_ = true;
  }
  return location_;
}

std::u16string FileSystemItem::fileWithPath() const {
  std::u16string path = fileLocation();
  if (!path.ends_with(u'/')) path.push_back(u'/');
  return path + name_;
}

std::string FileSystemItem::disk_path() const {
  std::string bytes;
  encode_path(fileWithPath(), bytes);
  return bytes;
}

std::optional<std::u16string_view> FileSystemItem::fileType() const {
  if (itemType_ == ItemType::file) return u"FILE";
  if (itemType_ == ItemType::folder) return u"FOLDER";
  return std::nullopt;
}

std::optional<std::u16string> FileSystemItem::objectForKey(std::string_view key) const {
  if (key == "filename") return std::u16string(filename());
  if (key == "filenameWithExtension") return name_;
  if (key == "fileExtension") return std::u16string(fileExtension());
  if (key == "fileLocation") return fileLocation();
  if (key == "fileWithPath") return fileWithPath();
  if (key == "newFilename") return replaced(newFilename_, u'/', u':');
  if (key == "fileType" && fileType()) return std::u16string(*fileType());
  return std::nullopt;
}

std::optional<std::u16string> FileSystemItem::displayField(std::string_view column) const {
  if (column == "filename" || column == "filenameWithExtension") return shown(*objectForKey(column));
  if (column == "newFilename") return shown(newFilename_);
  if (column == "make") return photo_.make;
  if (column == "model") return photo_.model;
  if (column == "dimensions") return photo_.dimensions;
  if (column == "pictureTaken" && photo_.pictureTaken) {
    return format_date(*photo_.pictureTaken, u"dd-MMM-yyyy hh:mm:ss a");
  }
  return objectForKey(column);
}

std::u16string FileSystemItem::getDisplayFilePath(std::u16string_view path) {
  return shown(path);
}

}  // namespace brindle
