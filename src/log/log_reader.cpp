#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <new>
#include <pugixml.hpp>

#include "log/checksum.h"
#include "log/rename_log.h"
#include "platform/atomic_file.h"
#include "platform/xml_text.h"

namespace brindle {
namespace {

constexpr std::size_t largest_log = std::size_t{4} << 30U;

constexpr std::string_view missing_attribute = "an attribute of the entry is missing";
constexpr std::string_view bad_folder = "the entry's folder is not an absolute path";
constexpr std::string_view bad_name = "the entry's name is not that of a file";
constexpr std::string_view bad_bytes = "the entry's exact name is garbled";

bool can_be_name(std::string_view name) {
  return !name.empty() && name != "." && name != ".." && name.find('/') == std::string_view::npos &&
         name.find('\0') == std::string_view::npos;
}

bool can_be_folder(std::string_view path) {
  return path.starts_with('/') && path.find('\0') == std::string_view::npos;
}

// The attributes of an element "file"; null where one is missing.
struct RawEntry {
  static constexpr std::array<std::string_view, 6> names = {"srclocation", "tarlocation", "srcfilename",
                                                            "tarfilename", "srcbytes",    "tarbytes"};
  std::array<const char*, 6> values{};

  explicit RawEntry(const pugi::xml_node& element) {
    for (const pugi::xml_attribute attribute : element.attributes()) {
      const auto* const name = std::find(names.begin(), names.end(), attribute.name());
      if (name == names.end()) continue;
      const char*& value = values[static_cast<std::size_t>(name - names.begin())];
      if (value == nullptr) value = attribute.value();
    }
  }
  bool complete() const {
    return std::all_of(values.begin(), values.begin() + 4, [](const char* value) { return value != nullptr; });
  }
};

/// Turns elements into entries. Keeps each folder once, as long as entries of the same folder follow one another.
class EntryReader {
 public:
  explicit EntryReader(LogFile& log) : log_(log) {}

  void add(const pugi::xml_node& element) {
    const RawEntry raw(element);
    LogEntry entry;
    std::string_view fault = missing_attribute;
    if (raw.complete()) fault = read_side(raw.values[0], raw.values[2], raw.values[4], source_);
    if (fault.empty()) fault = read_side(raw.values[1], raw.values[3], raw.values[5], target_);
    if (fault.empty()) entry = {source_.folder, keep(source_.name), target_.folder, keep(target_.name), {}};
    entry.fault = fault;
    log_.entries.push_back(entry);
  }

 private:
  struct Side {
    std::string folder_bytes;
    std::string_view folder;  // the same, kept
    std::string name;
  };

  std::string_view keep(std::string_view bytes) { return log_.texts.keep(bytes); }

  std::string_view read_side(const char* location, const char* name, const char* exact, Side& side) {
    scratch_ = location;
    side.name = name;
    if (exact != nullptr) {
      if (!percent_decode(exact, exact_)) return bad_bytes;
      take_exact(side);
    } else {
      std::replace(side.name.begin(), side.name.end(), '/', ':');
      restore_bytes(scratch_);
      restore_bytes(side.name);
    }
    while (scratch_.size() > 1 && scratch_.back() == '/') scratch_.pop_back();
    if (!can_be_folder(scratch_)) return bad_folder;
    if (!can_be_name(side.name)) return bad_name;
    use_folder(side);
    return {};
  }

  // A whole path is known by its leading "/".
  void take_exact(Side& side) {
    if (!exact_.starts_with('/')) {
      restore_bytes(scratch_);
      side.name = exact_;
      return;
    }
    const std::size_t slash = exact_.rfind('/');
    scratch_ = exact_.substr(0, std::max<std::size_t>(slash, 1));
    side.name = exact_.substr(slash + 1);
  }

  void use_folder(Side& side) {
    if (side.folder_bytes == scratch_) return;
    side.folder_bytes = scratch_;
    // Most logs name the same folder on both sides.
    const Side& other = &side == &source_ ? target_ : source_;
    side.folder = other.folder_bytes == scratch_ ? other.folder : keep(scratch_);
  }

  LogFile& log_;
  Side source_;
  Side target_;
  std::string scratch_;
  std::string exact_;
};

// XML has no NUL; the parser would end the value there, and the entry would mean another file.
bool refers_to_nul(std::string_view xml) {
  for (std::size_t at = xml.find("&#"); at != std::string_view::npos; at = xml.find("&#", at)) {
    at += 2;
    if (at < xml.size() && xml[at] == 'x') ++at;
    const std::size_t digits = at;
    while (at < xml.size() && xml[at] == '0') ++at;
    if (at > digits && at < xml.size() && xml[at] == ';') return true;
  }
  return false;
}

std::string_view parse(std::string& content, LogFile& log) {
  log.checksum = checksum_of(content);
  if (refers_to_nul(content)) return "it refers to a character that XML does not have";
  pugi::xml_document document;
  // Nothing but references is turned into anything else: blanks, tabs and line ends in a name are the name's.
  const pugi::xml_parse_result result =
      document.load_buffer_inplace(content.data(), content.size(), pugi::parse_escapes);
  if (!result) return result.description();
  const pugi::xml_node root = document.document_element();
  if (std::string_view(root.name()) != "files") return "its root element is not “files”";
  for (pugi::xml_node next = root.next_sibling(); next; next = next.next_sibling()) {
    if (next.type() == pugi::node_element) return "it has more than one root element";
  }
  log.appversion = root.attribute("appversion").value();
  log.type = root.attribute("type").value();
  EntryReader reader(log);
  for (const pugi::xml_node element : root.children("file")) reader.add(element);
  return {};
}

}  // namespace

LogFile readLogFile(const std::string& path) {
  LogFile log;
  std::string reason;
  try {
    std::string content;
    const int error = read_regular_file(path, largest_log, content);
    reason = error == 0 ? std::string(parse(content, log)) : system_error_text(error);
  } catch (const std::bad_alloc&) {
    reason = "there is not enough memory for it";
  }
  if (!reason.empty()) {
    log = {};
    log.error = fmt::format("“{}” cannot be read as a rename log: {}", path, reason);
  }
  return log;
}

}  // namespace brindle
