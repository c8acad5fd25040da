
#include <algorithm>
#include <cerrno>
#include <new>
#include <pugixml.hpp>
#include <utility>

#include "log/checksum.h"
#include "log/log_entry_reader.h"
#include "log/rename_log.h"
#include "platform/atomic_file.h"
#include "platform/translation.h"

namespace brindle {
namespace {

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
