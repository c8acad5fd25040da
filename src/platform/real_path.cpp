#include "platform/real_path.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <utility>

#include "platform/folder_handle.h"
#include "platform/path.h"

namespace brindle {
namespace {

void append_component(std::string_view name, std::string& path) {
  path.append("/").append(name);
}

// Without ".", and without "/" that mean nothing; the root is "". False when it goes up somewhere, which only the disk
// can follow.
bool append_clean(std::string_view path, std::string& clean) {
  bool goes_up = false;
  while (!path.empty()) {
    const std::string_view component = take_component(path);
    goes_up = goes_up || component == "..";
    if (!component.empty() && component != ".") append_component(component, clean);
  }
  return !goes_up;
}

/// Goes down a path a component at a time, and into the targets of the links on the way.
class Descent {
 public:
  explicit Descent(std::string_view path) : rest_(path), at_(FolderHandle::open_real("/")), error_(at_.error()) {}

  int run() {
    for (std::string name; error_ == 0 && next(name);) step(name);
    return error_;
  }
  /// The folder that was reached; "" is the root.
  const std::string& path() const { return path_; }
  /// What lies beyond it, when that does not exist.
  const std::string& rest() const { return rest_; }

 private:
  bool next(std::string& name) {
    std::string_view rest = rest_;
    name = take_component(rest);
    pending_ = rest;
    return !name.empty();
  }

  void step(const std::string& name) {
    FolderHandle below = name == "." ? FolderHandle() : at_.open_child(name.c_str());
    if (below.error() == ELOOP) return follow(name);
    error_ = below.error();
    if (error_ != 0) return;  // rest_ still begins with what could not be opened
    if (below) at_ = std::move(below);
    if (name == "..") {
      path_.resize(path_.empty() ? 0 : path_.rfind('/'));
    } else if (name != ".") {
      append_component(name, path_);
    }
    rest_ = pending_;
  }

  void follow(const std::string& name) {
    std::string target;
    error_ = ++links_ > most_links ? ELOOP : read_link(at_.descriptor(), name.c_str(), target);
    if (error_ != 0) return;
    if (target.front() == '/') {
      at_ = FolderHandle::open_real("/");
      error_ = at_.error();
      path_.clear();
    }
    rest_ = join_path(target, pending_);
  }

  std::string path_;
  std::string rest_;
  std::string pending_;  // of rest_, behind the component at hand
  FolderHandle at_;
  int error_ = 0;
  int links_ = 0;
};

bool leads_to_nothing(int error) {
  return error == ENOENT || error == ENOTDIR;
}

std::string or_root(std::string path) {
  return path.empty() ? "/" : std::move(path);
}

// Splits off the last component; false when there is none that stands for itself.
bool split_last(std::string_view path, std::string_view& parent, std::string_view& name) {
  const std::size_t slash = path.rfind('/');
  parent = path.substr(0, slash);
  name = path.substr(slash + 1);
  return !name.empty() && name != "." && name != "..";
}

}  // namespace

// Most parents are real already, which one call tells; "" is the root, here too.
const RealPaths::Place& RealPaths::parent_place(std::string_view parent) {
  if (place_.error == 0 && parent == parent_ && !parent.empty()) return place_;
  parent_ = parent;
  place_ = {};
  const bool may_be_real = append_clean(parent, place_.path);
  if (may_be_real && FolderHandle::open_real(or_root(place_.path))) return place_;
  Descent descent(parent);
  place_ = {{}, descent.run()};
  place_.path = descent.path();
  // Nothing is there, so no link is either: the rest is what it says.
  if (leads_to_nothing(place_.error) && append_clean(descent.rest(), place_.path)) place_.error = 0;
  return place_;
}

RealPath RealPaths::of(std::string_view given) {
  if (given.empty() || (given.front() != '/' && current_folder_.empty())) return {std::string(given), ENOENT};
  const std::string absolute = given.front() == '/' ? std::string(given) : join_path(current_folder_, given);
  std::string_view path = absolute;
  while (path.ends_with('/')) path.remove_suffix(1);
  std::string_view parent;
  std::string_view name;
  if (!split_last(path, parent, name)) {
    Descent descent(path);
    const int error = descent.run();
    return {error == 0 ? or_root(descent.path()) : absolute, error};
  }
  const Place& place = parent_place(parent);
  if (place.error != 0) return {absolute, place.error};
  std::string result = place.path;
  append_component(name, result);
  return {std::move(result), 0};
}

std::string current_folder() {
  const std::unique_ptr<char, decltype(&std::free)> folder(::getcwd(nullptr, 0), &std::free);
  return folder ? folder.get() : "";
}

}  // namespace brindle
