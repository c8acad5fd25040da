// limit_rename FOLDER: reads the names, then renames each file to "x" + name; says how many.
// limit_rename --back FOLDER: takes the first character off again, which also restores what the other programs renamed.

#include "walk.h"

int main(int argc, char** argv) {
  const bool back = argc == 3 && std::string_view(argv[1]) == "--back";
  if (argc != (back ? 3 : 2)) return 2;
  limits::Tree tree;
  limits::read_tree(argv[argc - 1], tree);
  std::size_t renamed = 0;
  std::string name;
  for (const auto& folder : tree.folders) {
    const int descriptor = limits::open_folder(folder.path);
    for (std::size_t at = folder.first; at < folder.last; ++at) {
      if (back && tree.files[at][0] != 'x') continue;
      name.assign(back ? "" : "x").append(tree.files[at] + (back ? 1 : 0));
      if (renameat2(descriptor, tree.files[at], descriptor, name.c_str(), RENAME_NOREPLACE) == 0) ++renamed;
    }
    close(descriptor);
  }
  std::printf("%zu\n", renamed);
}
