// The order of folders by their paths, without ever making a path: trees may be deep.

#include <algorithm>
#include <numeric>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "list/file_order.h"

namespace brindle {
namespace {

/// Ranks folders as the keys of their whole paths order them. A folder comes before what lies below it, though not
/// always right before it: as text, "a b" lies between "a" and "a/x". Folders whose paths compare as equal ("a" and
/// "A") are gone through as one, for what lies in one may belong between what lies in the other.
class Ranking {
 public:
  explicit Ranking(const FileList& files)
      : folders_(files.folders()), ranks_(folders_.size()), has_items_(folders_.size()) {
    for (const ItemRecord& record : files.items()) has_items_[record.folder] = true;
    find_children();
    make_keys();
  }

  std::vector<std::uint32_t> make() {
    order_.push_back(FolderTable::root);
    stack_ = {{0, 1, true}, {0, 1, false}};
    while (!stack_.empty()) {
      const Visit visit = stack_.back();
      stack_.pop_back();
      if (visit.below) {
        go_below(visit);
      } else {
        rank(visit);
      }
    }
    return std::move(ranks_);
  }

 private:
  /// Folders of equal paths (a part of order_) themselves, or what lies below them.
  struct Visit {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
    bool below = false;
  };

  void find_children();
  void make_keys();
  std::string_view key(FolderId folder) const {
    return std::string_view(keys_).substr(key_ends_[folder], key_ends_[folder + 1] - key_ends_[folder]);
  }
  bool comes_before(const Visit& a, const Visit& b) const;
  void rank(const Visit& visit);
  void go_below(const Visit& visit);

  const FolderTable& folders_;
  std::vector<std::uint32_t> ranks_;
  std::uint32_t next_rank_ = 0;
  std::vector<bool> has_items_;
  std::vector<std::uint32_t> first_child_;  // by folder: where its children begin in children_
  std::vector<FolderId> children_;
  std::string keys_;
  std::vector<std::size_t> key_ends_;
  std::vector<FolderId> order_;  // folders met so far, those of equal paths together
  std::vector<Visit> stack_;
  std::vector<Visit> visits_;
};

// Only of folders that lead to items.
void Ranking::find_children() {
  const auto count = static_cast<FolderId>(folders_.size());
  std::vector<bool> leads(count);
  leads[FolderTable::root] = true;
  for (FolderId folder = 1; folder < count; ++folder) {
    if (!has_items_[folder]) continue;
    for (FolderId at = folder; !leads[at]; at = folders_.parent(at)) leads[at] = true;
  }
  first_child_.resize(count + 1);
  for (FolderId folder = 1; folder < count; ++folder)
    first_child_[folders_.parent(folder) + 1] += leads[folder] ? 1 : 0;
  std::partial_sum(first_child_.begin(), first_child_.end(), first_child_.begin());
  children_.resize(first_child_.back());
  std::vector<std::uint32_t> next = first_child_;
  for (FolderId folder = 1; folder < count; ++folder) {
    if (leads[folder]) children_[next[folders_.parent(folder)]++] = folder;
  }
}

void Ranking::make_keys() {
  key_ends_.reserve(folders_.size() + 1);
  key_ends_.push_back(0);
  for (FolderId folder = 0; folder < folders_.size(); ++folder) {
    append_sort_key(folders_.name(folder), keys_);
    key_ends_.push_back(keys_.size());
  }
}

// As their paths would, where a "/" follows the name of what is gone below.
bool Ranking::comes_before(const Visit& a, const Visit& b) const {
  const std::string_view key_a = key(order_[a.begin]);
  const std::string_view key_b = key(order_[b.begin]);
  const std::size_t common = std::min(key_a.size(), key_b.size());
  if (const int order = key_a.substr(0, common).compare(key_b.substr(0, common)); order != 0) return order < 0;
  const auto next = [common](std::string_view key, bool below) {
    return key.size() > common ? static_cast<unsigned char>(key[common]) : below ? int{'/'} : -1;
  };
  return next(key_a, a.below) < next(key_b, b.below);
}

void Ranking::rank(const Visit& visit) {
  const std::span<FolderId> equals = std::span(order_).subspan(visit.begin, visit.end - visit.begin);
  if (equals.size() > 1) std::ranges::sort(equals, {}, [this](FolderId folder) { return folders_.path(folder); });
  for (const FolderId folder : equals) {
    if (has_items_[folder]) ranks_[folder] = next_rank_++;
  }
}

void Ranking::go_below(const Visit& visit) {
  const auto begin = static_cast<std::uint32_t>(order_.size());
  for (std::uint32_t i = visit.begin; i < visit.end; ++i) {
    const auto first = children_.begin() + first_child_[order_[i]];
    order_.insert(order_.end(), first, children_.begin() + first_child_[order_[i] + 1]);
  }
  std::sort(order_.begin() + begin, order_.end(),
            [this](FolderId a, FolderId b) { return std::tuple(key(a), a) < std::tuple(key(b), b); });
  const auto end = static_cast<std::uint32_t>(order_.size());
  visits_.clear();
  for (std::uint32_t at = begin; at < end;) {
    std::uint32_t next = at + 1;
    while (next < end && key(order_[next]) == key(order_[at])) ++next;
    visits_.push_back({at, next, false});
    visits_.push_back({at, next, true});
    at = next;
  }
  std::sort(visits_.begin(), visits_.end(), [this](const Visit& a, const Visit& b) { return comes_before(b, a); });
  stack_.insert(stack_.end(), visits_.begin(), visits_.end());
}

}  // namespace

std::vector<std::uint32_t> folder_ranks(const FileList& files) {
  return Ranking(files).make();
}

}  // namespace brindle
