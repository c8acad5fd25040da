// limit_floor preview|rename FOLDER: the whole work with none of the care. Lists, makes "x" + name, checks it against
// the listing, and prints "old -> new" or renames. No sorting, no journal, no log, no second look at anything.

#include <functional>
#include <string_view>

#include "walk.h"

namespace {

/// The names of one folder, for "is there one?". Open addressing, at most half full.
class NameSet {
 public:
  void fill(const char* const* names, std::size_t count) {
    std::size_t size = 16;
    while (size < 2 * count) size *= 2;
    slots_.assign(size, nullptr);
    for (std::size_t at = 0; at < count; ++at) slots_[place_of(names[at])] = names[at];
  }
  bool holds(std::string_view name) const { return slots_[place_of(name)] != nullptr; }

 private:
  std::size_t place_of(std::string_view name) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t place = std::hash<std::string_view>()(name) & mask;
    while (slots_[place] != nullptr && slots_[place] != name) place = (place + 1) & mask;
    return place;
  }
  std::vector<const char*> slots_;
};

bool do_one(bool renames, int folder, const char* old_name, const std::string& new_name) {
  if (renames) return renameat2(folder, old_name, folder, new_name.c_str(), RENAME_NOREPLACE) == 0;
  return std::printf("%s -> %s\n", old_name, new_name.c_str()) > 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const bool renames = std::string_view(argv[1]) == "rename";
  limits::Tree tree;
  limits::read_tree(argv[2], tree);
  std::size_t done = 0;
  std::string name;
  NameSet taken;
  for (const auto& folder : tree.folders) {
    const int descriptor = limits::open_folder(folder.path);
    taken.fill(tree.files.data() + folder.first, folder.last - folder.first);
    for (std::size_t at = folder.first; at < folder.last; ++at) {
      name.assign("x").append(tree.files[at]);
      if (!taken.holds(name) && do_one(renames, descriptor, tree.files[at], name)) ++done;
    }
    close(descriptor);
  }
  std::printf("%zu\n", done);
}
