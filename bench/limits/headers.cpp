// limit_headers [--rename] FOLDER: reads the first 16 KiB of each file, where its metadata is; with --rename it then
// puts "x" before the name. Says how many bytes were read.

#include "walk.h"

int main(int argc, char** argv) {
  const bool renames = argc == 3 && std::strcmp(argv[1], "--rename") == 0;
  if (argc != (renames ? 3 : 2)) return 2;
  limits::Tree tree;
  limits::read_tree(argv[argc - 1], tree);
  static char buffer[16384];
  std::size_t total = 0;
  std::string name;
  for (const auto& folder : tree.folders) {
    const int descriptor = limits::open_folder(folder.path);
    for (std::size_t at = folder.first; at < folder.last; ++at) {
      const int file = openat(descriptor, tree.files[at], O_RDONLY | O_CLOEXEC);
      const ssize_t got = pread(file, buffer, sizeof buffer, 0);
      close(file);
      total += got > 0 ? static_cast<std::size_t>(got) : 0;
      if (!renames) continue;
      name.assign("x").append(tree.files[at]);
      if (renameat2(descriptor, tree.files[at], descriptor, name.c_str(), RENAME_NOREPLACE) != 0) return 1;
    }
    close(descriptor);
  }
  std::printf("%zu\n", total);
}
