// Logs read back.

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <new>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <utility>

#include "log/journal_format.h"
#include "log/rename_log.h"
#include "platform/atomic_file.h"
#include "platform/byte_text.h"
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

/// Appends an entry to a log for each element it is given. Keeps each folder once, as long as entries of the same
/// folder follow one another.
class LogEntryReader {
 public:
  explicit LogEntryReader(LogFile& log) : log_(log) {}

  void add(const pugi::xml_node& element);

 private:
  struct Side {
    std::string location;     // as it stands in the log
    std::string_view folder;  // its bytes, kept; empty when it is none
    std::string name;
  };

  std::string_view read_side(const char* location, const char* name, const char* exact, Side& side);
  std::string_view read_exact(const char* location, const char* exact, Side& side);
  std::string_view use_folder(std::string bytes, Side& side);
  std::string_view use_location(std::string_view location, Side& side);

  LogFile& log_;
  Side source_;
  Side target_;
};

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

constexpr std::size_t largest_log = std::size_t{4} << 30U;

// Nothing but references is turned into anything else: blanks, tabs and line ends in a name are the name's.
constexpr unsigned parsing = pugi::parse_escapes;

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

std::string_view read_root(const pugi::xml_document& document, LogFile& log) {
  const pugi::xml_node root = document.document_element();
  if (std::string_view(root.name()) != "files") return to_translate("its root element is not “files”");
  for (pugi::xml_node next = root.next_sibling(); next; next = next.next_sibling()) {
    if (next.type() == pugi::node_element) return to_translate("it has more than one root element");
  }
  log.appversion = root.attribute("appversion").value();
  log.type = root.attribute("type").value();
  return {};
}

// Any log, in memory as a whole.
std::string_view read_document(std::string& xml, LogFile& log) {
  log.checksum = checksum_of(xml);
  if (refers_to_nul(xml)) return to_translate("it refers to a character that XML does not have");
  pugi::xml_document document;
  const pugi::xml_parse_result result = document.load_buffer_inplace(xml.data(), xml.size(), parsing);
  if (!result) return result.description();
  const std::string_view fault = read_root(document, log);
  LogEntryReader reader(log);
  if (fault.empty()) {
    for (const pugi::xml_node element : document.document_element().children("file")) reader.add(element);
  }
  return fault;
}

/// Logs laid out as this program writes them, an element a line, are read a piece at a time: a fraction of the memory,
/// and of the time. Whatever looks any different makes read() give up, and the log is read as a whole.
class LineReader {
 public:
  LineReader(FileReader& file, LogFile& log) : file_(file), log_(log), entries_(log) {}

  bool read() {
    fill();
    if (!read_start()) return false;
    while (!rest_.starts_with(end_)) {
      if (!read_lines(whole_lines())) return false;
      fill();
    }
    log_.checksum = checksum_.value();
    return at_end_ && file_.error() == 0 && rest_ == end_;
  }

 private:
  static constexpr std::string_view start_ = R"(<?xml version="1.0" encoding="UTF-8"?>)"
                                             "\n<files ";
  static constexpr std::string_view entry_ = "    <file ";
  static constexpr std::string_view end_ = "</files>\n";
  static constexpr std::size_t piece_ = std::size_t{128} * 1024;

  // Reads on behind what is left of the last piece.
  void fill() {
    const std::size_t kept = rest_.size();
    std::copy(rest_.begin(), rest_.end(), buffer_.begin());
    buffer_.resize(kept + piece_);
    const std::size_t got = file_.read(buffer_.data() + kept, piece_);
    at_end_ = got < piece_;
    rest_ = std::string_view(buffer_.data(), kept + got);
    checksum_.add(rest_.substr(kept));
  }

  // All before the first entry: with the root's end tag it is a document of its own.
  bool read_start() {
    const std::size_t size = rest_.find(entry_);
    if (size == std::string_view::npos || !rest_.starts_with(start_)) return false;
    const std::string start = std::string(rest_.substr(0, size)).append(end_);
    rest_.remove_prefix(size);
    return !refers_to_nul(start) && !is_odd(start) && document_.load_buffer(start.data(), start.size(), parsing) &&
           read_root(document_, log_).empty() && !document_.document_element().first_child();
  }

  // The bytes of the lines at hand that hold an entry each.
  std::size_t whole_lines() const {
    std::size_t size = 0;
    for (;;) {
      const std::size_t end = rest_.find('\n', size);
      if (end == std::string_view::npos || !rest_.substr(size).starts_with(entry_)) return size;
      if (!rest_.substr(0, end).ends_with("/>")) return size;
      size = end + 1;
    }
  }

  // What the parser takes differently in a piece than in a whole.
  static bool is_odd(std::string_view lines) {
    return lines.find("<!") != std::string_view::npos || lines.find('\0') != std::string_view::npos;
  }

  bool read_lines(std::size_t size) {
    const std::string_view lines = rest_.substr(0, size);
    if (lines.empty() || refers_to_nul(lines) || is_odd(lines)) return false;
    char* const start = buffer_.data() + (rest_.data() - buffer_.data());
    rest_.remove_prefix(size);
    if (!document_.load_buffer_inplace(start, size, parsing | pugi::parse_fragment)) return false;
    for (auto element = document_.first_child(); element; element = element.next_sibling()) {
      if (std::string_view(element.name()) != "file") return false;
      entries_.add(element);
    }
    if (!reserved_) log_.entries.reserve(log_.entries.size() * (file_.size() / size + 1));
    reserved_ = true;  // after the first piece the number of the rest can be told
    return true;
  }

  FileReader& file_;
  LogFile& log_;
  LogEntryReader entries_;
  Checksum checksum_;
  std::string buffer_;
  std::string_view rest_;  // of the buffer, not yet read
  bool at_end_ = false;
  bool reserved_ = false;
  pugi::xml_document document_;
};

Result<LogFile> read_file(const std::string& path) {
  FileReader file;
  int error = file.open(path);
  if (error == 0 && file.size() > largest_log) error = EFBIG;
  if (error != 0) return Status(reading_error_text(error, largest_log), error);
  LogFile log;
  if (LineReader(file, log).read()) return log;
  log = {};
  Result<std::string> xml = read_regular_file(path, largest_log);
  return xml.ok() ? read_log_text(*std::move(xml)) : xml.status();
}

}  // namespace

Result<LogFile> read_log_text(std::string xml) {
  LogFile log;
  const std::string_view reason = read_document(xml, log);
  if (!reason.empty()) return Status(translated(reason));
  return log;
}

Result<LogFile> readLogFile(const std::string& path) {
  const auto failure = [&path](std::string_view reason) {
    return Status(translated("“{}” cannot be read as a rename log: {}", path, reason));
  };
  try {
    Result<LogFile> log = read_file(path);
    return log.ok() ? std::move(log) : failure(log.reason());
  } catch (const std::bad_alloc&) {
    return failure(translated("there is not enough memory for it"));
  }
}

}  // namespace brindle
