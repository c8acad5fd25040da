#include "window/sample_folder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>

namespace brindle::bench {
namespace {

constexpr std::size_t files_a_folder = 1000;

// In no order, with numbers that sort by value: about what a camera and a person leave.
void fill(const std::string& folder, std::size_t first, std::size_t last) {
  std::filesystem::create_directory(folder);
  for (std::size_t i = first; i < last; ++i) {
    const std::size_t number = i * 7919 % 1'000'003;
    const std::string name = folder +
                             (i % 3 == 0   ? "/IMG_"
                              : i % 3 == 1 ? "/Holiday "
                                           : "/scan-") +
                             std::to_string(number) + (i % 5 == 0 ? ".txt" : ".jpg");
    const int file = ::open(name.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644);
    if (file >= 0) ::close(file);
  }
}

}  // namespace

bool make_sample_folder(const std::string& folder, std::size_t files) {
  const std::string mark = folder + ".complete";
  std::size_t made = 0;
  std::ifstream(mark) >> made;
  if (made == files) return true;
  std::error_code error;
  std::filesystem::remove_all(folder, error);
  if (!std::filesystem::create_directories(folder, error) && error) return false;
  for (std::size_t first = 0; first < files; first += files_a_folder)
    fill(folder + "/folder " + std::to_string(first / files_a_folder), first, std::min(files, first + files_a_folder));
  std::ofstream(mark) << files << '\n';
  return true;
}

}  // namespace brindle::bench
