#pragma once

// The least a program can do to know every file below a folder: getdents64, one copy of each name, and nothing else.

#include <dirent.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace limits {

/// Names one after the other, each with a NUL behind it; they never move.
class Names {
 public:
  const char* keep(const char* name, std::size_t size) {
    if (left_ <= size) {
      blocks_.push_back(std::make_unique_for_overwrite<char[]>(block_size));
      free_ = blocks_.back().get();
      left_ = block_size;
    }
    char* kept = free_;
    std::memcpy(kept, name, size + 1);
    free_ += size + 1;
    left_ -= size + 1;
    return kept;
  }

 private:
  static constexpr std::size_t block_size = 1U << 20U;
  std::vector<std::unique_ptr<char[]>> blocks_;
  char* free_ = nullptr;
  std::size_t left_ = 0;
};

/// A folder and its files: names_[first] up to names_[last].
struct Folder {
  std::string path;
  std::size_t first = 0;
  std::size_t last = 0;
};

struct Tree {
  std::vector<Folder> folders;
  std::vector<const char*> files;
  Names names;
};

inline int open_folder(const std::string& path) {
  const int folder = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder >= 0) return folder;
  std::perror(path.c_str());
  std::exit(2);
}

/// Calls take(name, d_type) for each entry but "." and "..".
template <class Take>
void each_entry(int folder, char* buffer, std::size_t buffer_size, Take take) {
  long filled = 0;
  while ((filled = syscall(SYS_getdents64, folder, buffer, buffer_size)) > 0) {
    for (long at = 0; at < filled;) {
      const auto* entry = reinterpret_cast<const dirent64*>(buffer + at);
      at += entry->d_reclen;
      const char* name = entry->d_name;
      if (name[0] == '.' && (name[1] == 0 || (name[1] == '.' && name[2] == 0))) continue;
      take(name, entry->d_type);
    }
  }
}

inline void read_tree(const std::string& root, Tree& tree) {
  constexpr std::size_t buffer_size = 1U << 18U;
  const auto buffer = std::make_unique_for_overwrite<char[]>(buffer_size);
  tree.folders.push_back({root});
  for (std::size_t at = 0; at < tree.folders.size(); ++at) {
    const std::string path = tree.folders[at].path;
    const int folder = open_folder(path);
    tree.folders[at].first = tree.files.size();
    each_entry(folder, buffer.get(), buffer_size, [&](const char* name, unsigned char kind) {
      if (kind == DT_DIR) {
        tree.folders.push_back({path + "/" + name});
      } else {
        tree.files.push_back(tree.names.keep(name, std::strlen(name)));
      }
    });
    tree.folders[at].last = tree.files.size();
    close(folder);
  }
}

}  // namespace limits
