// Gathering, and the preview again after an edit: the folders are listed already, so only names and look-ups in memory
// are paid for. Works on a tree in the current folder.

#include <filesystem>
#include <fstream>
#include <string>

#include "gather/gather.h"
#include "methods/rename_plan.h"
#include "run/preview.h"
#include "run/second_look.h"
#include "sample_list.h"

namespace brindle::bench {
namespace {

namespace fs = std::filesystem;

/// A tree of empty files, a thousand a folder; removed with the object.
class DiskTree {
 public:
  explicit DiskTree(std::size_t count) : root_(fs::current_path() / "tree") {
    fs::remove_all(root_);
    const auto names = sample_names(count);
    for (std::size_t at = 0; at < count; ++at) {
      const fs::path folder = root_ / std::to_string(at / 1000);
      if (at % 1000 == 0) fs::create_directories(folder);
      std::ofstream(folder / names[at]);
    }
  }
  DiskTree(const DiskTree&) = delete;
  DiskTree& operator=(const DiskTree&) = delete;
  ~DiskTree() { fs::remove_all(root_); }

  std::string path() const { return root_.string(); }

 private:
  fs::path root_;
};

std::size_t gather(const std::string& path, FileList& files, DiskNames& disk_names) {
  return addFiles(files, {&path, 1}, {}, &disk_names, {}).searchFilesCount;
}

constexpr std::size_t count = 100'000;

void gather_a_tree(benchmark::State& state) {
  const DiskTree tree(count);
  for (auto _ : state) {
    FileList files;
    DiskNames disk_names;
    benchmark::DoNotOptimize(gather(tree.path(), files, disk_names));
  }
  report_time_an_item(state, count);
}

void preview_again(benchmark::State& state) {
  const DiskTree tree(count);
  FileList files;
  DiskNames disk_names;
  gather(tree.path(), files, disk_names);
  RenameSettings settings;
  settings.selectedTab = 1;
  settings.insertDeleteInsert = u"Brest - ";
  RenamePlan plan(settings, Date{});
  for (auto _ : state) benchmark::DoNotOptimize(preview(files, plan, disk_names, {}).renameable);
  report_time_an_item(state, count);
}

// A million rows, named as if a preview had just checked them: new names, every tenth that of the row before it.
FileList named_rows(std::size_t rows_a_folder) {
  constexpr std::size_t rows = 1'000'000;
  FileList files;
  const auto names = sample_names(rows);
  files.begin_new_names();
  for (std::size_t row = 0; row < rows; ++row) {
    const FolderId folder = files.folders().intern("/tree/" + std::to_string(row / rows_a_folder));
    files.add_listed(files.begin_listing(folder), names[row], 0, row + 1);
    files.promise(files.size() - 1, "Brest - " + names[row % 10 == 9 ? row - 1 : row]);
  }
  return files;
}

void look_again_at_a_million(benchmark::State& state) {
  FileList files = named_rows(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(look_again(files, {}, nullptr, false).promised);
  report_time_an_item(state, files.size());
}

BENCHMARK(look_again_at_a_million)->Arg(1000)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(gather_a_tree)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(preview_again)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace brindle::bench
