// limit_list FOLDER [PREFIX]: reads the names of all files below a folder and says how many there are (with PREFIX: how
// many begin with it).

#include "walk.h"

int main(int argc, char** argv) {
  if (argc != 2 && argc != 3) return 2;
  limits::Tree tree;
  limits::read_tree(argv[1], tree);
  std::size_t count = tree.files.size();
  if (argc == 3) {
    count = 0;
    for (const char* name : tree.files) count += std::strncmp(name, argv[2], std::strlen(argv[2])) == 0 ? 1U : 0U;
  }
  std::printf("%zu\n", count);
}
