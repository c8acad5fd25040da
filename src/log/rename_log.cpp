#include "log/rename_log.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "platform/app_info.h"
#include "platform/byte_text.h"
#include "platform/translation.h"
#include "platform/xml_text.h"

namespace brindle {
namespace {

constexpr std::size_t flush_size = std::size_t{64} * 1024;

Status status_of(std::string_view what, const std::string& path, int error) {
  if (error == 0) return {};
  return Status(
      translated("the log “{}” cannot be {}: {}", path, translated(what), translated(system_error_text(error))), error);
}

// The document up to its entries; the root's start tag is still open.
std::string document_start(std::string_view type, std::string_view appversion) {
  std::string xml = R"(<?xml version="1.0" encoding="UTF-8"?>)"
                    "\n<files appversion=\"";
  append_xml_attribute(appversion, xml);
  xml += "\" type=\"";
  append_xml_attribute(type, xml);
  return xml += '"';
}

constexpr std::string_view end_of_empty_root = "/>\n";

// A name as people see it: what is ":" on disk is "/" to them.
bool append_shown_name(std::string_view name, std::string& xml) {
  const auto start = static_cast<std::ptrdiff_t>(xml.size());
  const bool representable = append_xml_attribute(name, xml);
  std::replace(xml.begin() + start, xml.end(), ':', '/');
  return representable;
}

// The name alone; the whole path, known by its leading "/", where the folder's path needs it too.
void append_exact(const std::string& folder, bool folder_representable, std::string_view name, std::string& xml) {
  if (!folder_representable) {
    append_percent_encoded(folder, xml);
    if (folder.back() != '/') xml.push_back('/');
  }
  append_percent_encoded(name, xml);
}

}  // namespace

LogRoom::Folder::Folder(std::string_view path, std::size_t growth)
    : attribute_(most_attribute_bytes(path) + 6 * growth),
      exact_(3 * (path.size() + growth) + 1),
      is_plain_(growth == 0 && is_surely_representable(path)) {}

void LogRoom::add(const Folder& folder, std::string_view old_name, std::string_view new_name) {
  constexpr std::size_t markup = 100;  // tags, and all but the values of the six attributes
  bytes_ += markup + 2 * folder.attribute_ + most_attribute_bytes(old_name) + most_attribute_bytes(new_name);
  if (folder.is_plain_ && is_surely_representable(old_name) && is_surely_representable(new_name)) return;
  bytes_ += 2 * folder.exact_ + 3 * (old_name.size() + new_name.size());
}

Status RenameLogWriter::createLogFile(const std::string& path, std::string_view type, std::string_view appversion) {
  if (appversion.empty()) appversion = appVersion();
  const int error = write_new_file(path, document_start(type, appversion).append(end_of_empty_root), private_file_mode);
  if (error != 0) return status_of(to_translate("created"), path, error);
  Status status = begin(path, type, appversion, file_.open(unfinished_log_path(path)));
  if (!status.ok()) ::unlink(path.c_str());
  return status;
}

Status RenameLogWriter::take_over(const std::string& path, std::string_view type, std::string_view appversion) {
  return begin(path, type, appversion, file_.take_over(unfinished_log_path(path)));
}

Status RenameLogWriter::begin(const std::string& path, std::string_view type, std::string_view appversion, int error) {
  path_ = path;
  count_ = 0;
  buffer_ = document_start(type, appversion);
  return status_of(to_translate("created"), path, error);
}

Status RenameLogWriter::reserve(const LogRoom& room) {
  return status_of(to_translate("created"), path_, file_.reserve(room.bytes()));
}

void RenameLogWriter::use_folder(Folder& folder, std::string_view bytes) {
  if (folder.bytes == bytes && !folder.attribute.empty()) return;
  folder.bytes = bytes;
  folder.attribute.clear();
  folder.representable = append_xml_attribute(bytes, folder.attribute);
}

void RenameLogWriter::addLogEntry(std::string_view source, std::string_view target) {
  const std::size_t source_slash = source.rfind('/');
  const std::size_t target_slash = target.rfind('/');
  addLogEntry(source.substr(0, std::max<std::size_t>(source_slash, 1)), source.substr(source_slash + 1),
              target.substr(0, std::max<std::size_t>(target_slash, 1)), target.substr(target_slash + 1));
}

void RenameLogWriter::addLogEntry(std::string_view source_folder, std::string_view source_name,
                                  std::string_view target_folder, std::string_view target_name) {
  use_folder(source_, source_folder);
  use_folder(target_, target_folder);
  buffer_ += count_ == 0 ? ">\n    <file srclocation=\"" : "    <file srclocation=\"";
  buffer_ += source_.attribute;
  buffer_ += "\" tarlocation=\"";
  buffer_ += target_.attribute;
  buffer_ += "\" srcfilename=\"";
  bool representable = append_shown_name(source_name, buffer_);
  buffer_ += "\" tarfilename=\"";
  representable = append_shown_name(target_name, buffer_) && representable;
  if (!representable || !source_.representable || !target_.representable) append_exact_names(source_name, target_name);
  buffer_ += "\"/>\n";
  ++count_;
  flush_if_full();
}

void RenameLogWriter::append_exact_names(std::string_view source_name, std::string_view target_name) {
  buffer_ += "\" srcbytes=\"";
  append_exact(source_.bytes, source_.representable, source_name, buffer_);
  buffer_ += "\" tarbytes=\"";
  append_exact(target_.bytes, target_.representable, target_name, buffer_);
}

void RenameLogWriter::flush_if_full() {
  if (buffer_.size() < flush_size) return;
  file_.write(buffer_);
  buffer_.clear();
}

Status RenameLogWriter::saveLog() {
  buffer_ += count_ == 0 ? end_of_empty_root : "</files>\n";
  file_.write(buffer_);
  buffer_.clear();
  int error = file_.sync();
  if (error == 0) error = place();
  // On a disk that is full to the last entry of a folder, the "#" log makes room for the finished one.
  if ((error == ENOSPC || error == EDQUOT) && ::unlink(path_.c_str()) == 0) error = place();
  if (error == 0) {
    ::unlink(path_.c_str());
    return {};
  }
  file_.give_up();
  saved_path_.clear();
  return status_of(to_translate("saved"), path_, error);
}

int RenameLogWriter::place() {
  int error = EEXIST;
  for (std::string path = path_; error == EEXIST && !path.empty(); path = next_log_path(path)) {
    saved_path_ = finished_log_path(path, count_);
    error = file_.place_exclusively(saved_path_);
  }
  return error;
}

void RenameLogWriter::discard() {
  file_.discard();
  if (!path_.empty()) ::unlink(path_.c_str());
}

}  // namespace brindle
