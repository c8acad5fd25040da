// gather_only FOLDER: fills the file list from a folder, as every command of brindle begins, and says how many items it
// holds.

#include <cstdio>
#include <string>

#include "gather/gather.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  brindle::FileList files;
  brindle::DiskNames disk_names;
  const std::string path = argv[1];
  brindle::addFiles(files, {&path, 1}, {}, &disk_names, {});
  std::printf("%zu\n", files.size());
}
