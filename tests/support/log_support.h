#pragma once

// Short words for the tests of log, journal, recovery and undo.

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "log/rename_log.h"
#include "support/temp_tree.h"

namespace brindle::test {

/// A tree with a log folder in it, and a data folder (with the trash) of its own.
class LogTree : public TempTree {
 public:
  LogTree() {
    make({"logs/", "data/", "files/"});
    ::setenv("XDG_DATA_HOME", (*this / "data").c_str(), 1);
  }
  ~LogTree() { ::unsetenv("XDG_DATA_HOME"); }
  LogTree(const LogTree&) = delete;
  LogTree& operator=(const LogTree&) = delete;

  std::string logs() const { return *this / "logs"; }
  std::string files() const { return *this / "files"; }
  /// The names in one folder, sorted.
  std::vector<std::string> names_in(const std::string& folder) const {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(*this / folder))
      found.push_back(entry.path().filename());
    std::sort(found.begin(), found.end());
    return found;
  }
  /// What stands below files/, with inodes.
  std::map<std::string, std::uint64_t> state() const {
    std::map<std::string, std::uint64_t> found;
    for (const auto& [name, inode] : inodes()) {
      if (name.starts_with("files/")) found.emplace(name.substr(6), inode);
    }
    return found;
  }
};

inline std::string content_of(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

inline void write_file(const std::string& path, std::string_view content) {
  std::ofstream(path, std::ios::binary) << content;
}

/// Old path, new path.
using Pair = std::pair<std::string, std::string>;

inline std::string join(std::string_view folder, std::string_view name) {
  return std::string(folder) + (folder == "/" ? "" : "/") + std::string(name);
}

/// A finished log with these entries; its path.
inline std::string make_log(const std::string& folder, const std::vector<Pair>& entries, std::time_t when = 1'000'000) {
  RenameLogWriter log;
  EXPECT_EQ(log.createLogFile(folder + "/" + getNewLogFileName(when), "FILES").reason(), "");
  for (const auto& [source, target] : entries) log.addLogEntry(source, target);
  EXPECT_EQ(log.saveLog().reason(), "");
  return log.saved_path();
}

inline std::vector<Pair> pairs_in(const LogFile& log) {
  std::vector<Pair> pairs;
  for (const LogEntry& entry : log.entries) {
    pairs.emplace_back(join(entry.source_folder, entry.source_name), join(entry.target_folder, entry.target_name));
  }
  return pairs;
}

/// While it lives, no file grows beyond `bytes`: a full disk, as far as the writer can tell.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    ::getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{bytes, before_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;
  ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &before_); }

 private:
  rlimit before_{};
};

}  // namespace brindle::test
