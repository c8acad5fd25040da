// limit_make_tree FOLDER COUNT PER_FOLDER: makes a new folder with COUNT empty files in subfolders of PER_FOLDER each
// (0: all in the folder itself). The names look like a camera's and a person's; their order on disk is not their order.

#include <sys/stat.h>

#include "walk.h"

namespace {

constexpr const char* patterns[] = {"IMG_%07zu.jpg", "DSC%06zu.NEF", "Holiday in Brest %zu.jpg",
                                    "%zu. Café du port.txt"};

bool make_file(int folder, std::size_t number) {
  char name[64];
  std::snprintf(name, sizeof name, patterns[number % 4], number);  // NOLINT
  const int file = openat(folder, name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
  return file >= 0 && close(file) == 0;
}

int make_folder(const std::string& path) {
  if (mkdir(path.c_str(), 0755) == 0) return limits::open_folder(path);
  std::perror(path.c_str());
  std::exit(1);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  const std::string root = argv[1];
  const std::size_t count = std::stoul(argv[2]);
  const std::size_t per_folder = std::stoul(argv[3]);
  int folder = make_folder(root);
  for (std::size_t at = 0; at < count; ++at) {
    if (per_folder != 0 && at % per_folder == 0) {
      close(folder);
      folder = make_folder(root + "/Roll " + std::to_string(at / per_folder + 1));
    }
    if (!make_file(folder, at)) {
      std::perror(root.c_str());
      return 1;
    }
  }
}
