#include "log/log_outline.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "log/rename_log.h"
#include "platform/atomic_file.h"

namespace brindle {
namespace {

/// Copies a log without the entries that name the folder of one before, a piece at a time.
class Condenser {
 public:
  explicit Condenser(FileReader& file) : file_(file) {}

  /// False for a log of any other layout, and for one that is cut off.
  bool condense(std::string& xml) {
    std::string buffer;
    bool is_at_end = false;
    while (!is_at_end) {
      const std::size_t kept = buffer.size();
      if (kept > longest_line_) return false;
      buffer.resize(kept + piece_);
      const std::size_t got = file_.read(buffer.data() + kept, piece_);
      is_at_end = got < piece_;
      buffer.resize(kept + got);
      buffer.erase(0, take_lines(buffer, xml));
      if (is_odd_) return false;
    }
    return buffer.empty() && file_.error() == 0 && has_ended_;
  }

 private:
  static constexpr std::string_view entry_ = "    <file srclocation=\"";
  static constexpr std::string_view end_ = "</files>\n";
  static constexpr std::size_t piece_ = std::size_t{256} * 1024;
  static constexpr std::size_t longest_line_ = std::size_t{4} << 20U;

  std::size_t take_lines(std::string_view text, std::string& xml) {
    std::size_t start = 0;
    for (;;) {
      const std::size_t end = text.find('\n', start);
      if (end == std::string_view::npos) return start;
      take_line(text.substr(start, end + 1 - start), xml);
      start = end + 1;
    }
  }

  void take_line(std::string_view line, std::string& xml) {
    is_odd_ = is_odd_ || has_ended_ || line.find('\0') != std::string_view::npos;
    if (is_odd_) return;
    if (line.starts_with(entry_)) {
      is_odd_ = !line.ends_with("/>\n");
      if (!is_of_known_folder(line)) xml += line;
    } else {
      has_ended_ = line == end_;
      is_odd_ = !folders_.empty() && !has_ended_;
      xml += line;
    }
  }

  // An entry with exact bytes says its folder elsewhere, too.
  bool is_of_known_folder(std::string_view line) {
    const std::string_view start = line.substr(0, line.find('"', entry_.size()) + 1);
    if (line.find("\" srcbytes=\"", start.size()) != std::string_view::npos) return false;
    if (start == last_) return true;
    last_ = start;
    return !folders_.emplace(start).second;
  }

  FileReader& file_;
  std::string last_;
  std::unordered_set<std::string> folders_;
  bool has_ended_ = false;
  bool is_odd_ = false;
};

// Up to the last "/" that both paths have in common.
void narrow(std::string& common, std::string_view folder) {
  const auto [a, b] = std::mismatch(common.begin(), common.end(), folder.begin(), folder.end());
  const bool ends_whole = (a == common.end() || *a == '/') && (b == folder.end() || *b == '/');
  const auto same = static_cast<std::size_t>(a - common.begin());
  if (!ends_whole) {
    common.erase(std::max<std::size_t>(common.rfind('/', same == 0 ? 0 : same - 1), 1));
  } else {
    common.erase(std::max<std::size_t>(same, 1));
  }
}

LogOutline outline_of(const LogFile& log) {
  LogOutline outline;
  std::unordered_set<std::string_view> folders;
  for (const LogEntry& entry : log.entries) {
    if (!entry.fault.empty() || !folders.insert(entry.source_folder).second) continue;
    if (folders.size() == 1) {
      outline = {0, std::string(entry.source_folder), std::string(entry.source_name), std::string(entry.target_name)};
    } else {
      narrow(outline.common_folder, entry.source_folder);
    }
  }
  outline.folders = folders.size();
  return outline;
}

}  // namespace

Result<LogOutline> read_log_outline(const std::string& path) {
  FileReader file;
  std::string xml;
  if (file.open(path) == 0 && Condenser(file).condense(xml)) {
    if (const Result<LogFile> log = read_log_text(std::move(xml)); log.ok()) return outline_of(*log);
  }
  const Result<LogFile> log = readLogFile(path);
  if (!log.ok()) return log.status();
  return outline_of(*log);
}

}  // namespace brindle
