#pragma once

// A temporary folder for one test, and short words for making and reading trees in it.

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace brindle::test {

class TempTree {
 public:
  TempTree() {
    std::string pattern = (std::filesystem::temp_directory_path() / "brindle-test-XXXXXX").string();
    path_ = std::filesystem::canonical(::mkdtemp(pattern.data())).string();
  }
  TempTree(const TempTree&) = delete;
  TempTree& operator=(const TempTree&) = delete;
  ~TempTree() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  const std::string& path() const { return path_; }
  std::string operator/(std::string_view relative) const { return path_ + "/" + std::string(relative); }

  /// Makes files and folders (a trailing "/" makes a folder, "a -> b" a symbolic link), with their parents. A file
  /// holds its own name.
  void make(const std::vector<std::string>& entries) const {
    for (const std::string& entry : entries) make_one(entry);
  }

  /// Every entry below, relative, with its inode; links not followed.
  std::map<std::string, std::uint64_t> inodes() const {
    std::map<std::string, std::uint64_t> found;
    collect("", found);
    return found;
  }
  std::vector<std::string> names() const {
    std::vector<std::string> names;
    for (const auto& [name, inode] : inodes()) names.push_back(name);
    return names;
  }

 private:
  void make_one(const std::string& entry) const {
    const std::size_t arrow = entry.find(" -> ");
    const std::string path = *this / entry.substr(0, arrow);
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    if (arrow != std::string::npos) {
      std::filesystem::create_symlink(entry.substr(arrow + 4), path);
    } else if (path.back() == '/') {
      std::filesystem::create_directories(path);
    } else {
      std::ofstream(path) << entry;
    }
  }
  void collect(const std::string& below, std::map<std::string, std::uint64_t>& found) const {
    DIR* folder = ::opendir((*this / below).c_str());
    if (folder == nullptr) return;
    while (const dirent* entry = ::readdir(folder)) {
      const std::string name = entry->d_name;
      if (name == "." || name == "..") continue;
      found[below + name] = entry->d_ino;
      if (entry->d_type == DT_DIR) collect(below + name + "/", found);
    }
    ::closedir(folder);
  }

  std::string path_;
};

}  // namespace brindle::test
