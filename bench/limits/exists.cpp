// limit_exists FOLDER: reads the names, then asks the disk of each whether "x" + name exists; says how many do.

#include "walk.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  limits::Tree tree;
  limits::read_tree(argv[1], tree);
  std::size_t found = 0;
  std::string name;
  for (const auto& folder : tree.folders) {
    const int descriptor = limits::open_folder(folder.path);
    for (std::size_t at = folder.first; at < folder.last; ++at) {
      name.assign("x").append(tree.files[at]);
      if (faccessat(descriptor, name.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0) ++found;
    }
    close(descriptor);
  }
  std::printf("%zu\n", found);
}
