// limit_list FOLDER: reads the names of all files below a folder and says how many there are.

#include "walk.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  limits::Tree tree;
  limits::read_tree(argv[1], tree);
  std::printf("%zu\n", tree.files.size());
}
