#include "log/log_entry_reader.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "platform/translation.h"
#include "platform/xml_text.h"

namespace brindle {
namespace {

constexpr std::string_view missing_attribute = to_translate("an attribute of the entry is missing");
constexpr std::string_view bad_folder = to_translate("the entry's folder is not an absolute path");
constexpr std::string_view bad_name = to_translate("the entry's name is not that of a file");
constexpr std::string_view bad_bytes = to_translate("the entry's exact name is garbled");

constexpr std::array<std::string_view, 6> attribute_names = {"srclocation", "tarlocation", "srcfilename",
                                                             "tarfilename", "srcbytes",    "tarbytes"};

bool can_be_name(std::string_view name) {
  return !name.empty() && name != "." && name != ".." && name.find('/') == name.npos && name.find('\0') == name.npos;
}

/// The values of the attributes above; null where one is missing.
struct RawEntry {
  std::array<const char*, attribute_names.size()> values{};

  explicit RawEntry(const pugi::xml_node& element) {
    std::size_t next = 0;  // they usually come in order
    for (auto attribute = element.first_attribute(); attribute; attribute = attribute.next_attribute()) {
      const std::string_view name = attribute.name();
      if (next == values.size() || name != attribute_names[next]) next = index_of(name);
      if (next == values.size()) continue;
      if (values[next] == nullptr) values[next] = attribute.value();
      ++next;
    }
  }
  bool complete() const {
    return std::all_of(values.begin(), values.begin() + 4, [](const char* value) { return value != nullptr; });
  }

 private:
  static std::size_t index_of(std::string_view name) {
    const auto* const found = std::find(attribute_names.begin(), attribute_names.end(), name);
    return static_cast<std::size_t>(found - attribute_names.begin());
  }
};

}  // namespace

void LogEntryReader::add(const pugi::xml_node& element) {
  const RawEntry raw(element);
  LogEntry entry;
  std::string_view fault = missing_attribute;
  if (raw.complete()) fault = read_side(raw.values[0], raw.values[2], raw.values[4], source_);
  if (fault.empty()) fault = read_side(raw.values[1], raw.values[3], raw.values[5], target_);
  if (fault.empty()) {
    entry = {source_.folder, log_.texts.keep(source_.name), target_.folder, log_.texts.keep(target_.name), {}};
  }
  entry.fault = fault;
  log_.entries.push_back(entry);
}

std::string_view LogEntryReader::read_side(const char* location, const char* name, const char* exact, Side& side) {
  if (exact != nullptr) return read_exact(location, exact, side);
  side.name = name;
  std::replace(side.name.begin(), side.name.end(), '/', ':');
  restore_bytes(side.name);
  const std::string_view fault = use_location(location, side);
  return !fault.empty() ? fault : can_be_name(side.name) ? std::string_view() : bad_name;
}

// A whole path is known by its leading "/".
std::string_view LogEntryReader::read_exact(const char* location, const char* exact, Side& side) {
  if (!percent_decode(exact, side.name)) return bad_bytes;
  std::string_view fault;
  if (side.name.starts_with('/')) {
    const std::size_t slash = side.name.rfind('/');
    side.location.clear();  // what it says is not the folder
    fault = use_folder(side.name.substr(0, slash + 1), side);
    side.name.erase(0, slash + 1);
  } else {
    fault = use_location(location, side);
  }
  return !fault.empty() ? fault : can_be_name(side.name) ? std::string_view() : bad_name;
}

std::string_view LogEntryReader::use_location(std::string_view location, Side& side) {
  if (side.location == location && !location.empty()) return side.folder.empty() ? bad_folder : std::string_view();
  side.location = location;
  std::string bytes(location);
  restore_bytes(bytes);
  return use_folder(std::move(bytes), side);
}

std::string_view LogEntryReader::use_folder(std::string bytes, Side& side) {
  while (bytes.size() > 1 && bytes.back() == '/') bytes.pop_back();
  const bool usable = bytes.starts_with('/') && bytes.find('\0') == std::string::npos;
  // Most logs name the same folder on both sides.
  const Side& other = &side == &source_ ? target_ : source_;
  if (!usable) {
    side.folder = {};
  } else if (side.folder != bytes) {
    side.folder = other.folder == bytes ? other.folder : log_.texts.keep(bytes);
  }
  return usable ? std::string_view() : bad_folder;
}

}  // namespace brindle
