#include "list/disk_names.h"

#include <time.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <string>

#include "platform/ascii.h"
#include "settings/preferences.h"
#include "text/hash.h"
#include "text/name_fold.h"
#include "text/unicode_fold.h"

namespace brindle {
namespace {

// Below so many tests a listing does not pay, and a folder with more than so many other entries a test is not listed
// whole.
constexpr std::size_t fewest_tests = 24;
constexpr std::size_t most_entries_a_test = 40;

// 0 marks a free place in the set.
std::uint64_t name_hash(std::string_view name) {
  return hash_bytes(name) | 1U;
}

// A file system stamps a change with the time of its last tick, so a change right after a listing can leave the stamp
// as it was. A stamp counts only when it was old already at the time of the listing.
bool is_settled(const FolderStamp& stamp) {
  constexpr std::int64_t tick_ns = 20'000'000;
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  const std::int64_t now_ns = std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
  return std::max(stamp.modified_ns, stamp.changed_ns) + tick_ns < now_ns;
}

}  // namespace

void DiskNames::begin_listing(FolderId folder, const FolderHandle& handle) {
  if (folder >= listings_.size()) listings_.resize(folder + 1);
  listings_[folder] = Listing();
  filling_ = handle.stamp(listings_[folder].stamp) && is_settled(listings_[folder].stamp) ? folder : SIZE_MAX;
}

void DiskNames::add_listed(std::string_view name) {
  if (filling_ != SIZE_MAX) listings_[filling_].hashes.push_back(name_hash(name));
}

void DiskNames::end_listing() {
  if (filling_ != SIZE_MAX) listings_[filling_].complete = true;
  filling_ = SIZE_MAX;
}

void DiskNames::make_set(Listing& listing) {
  if (listing.hashed) return;
  const std::size_t size = std::bit_ceil(std::max<std::size_t>(8, listing.hashes.size() + listing.hashes.size() / 2));
  std::vector<std::uint64_t> set(size, 0);
  for (const std::uint64_t hash : listing.hashes) {
    std::size_t place = (hash >> 1U) & (size - 1);
    while (set[place] != 0 && set[place] != hash) place = (place + 1) & (size - 1);
    set[place] = hash;
  }
  listing.hashes = std::move(set);
  listing.hashed = true;
}

bool DiskNames::contains(const Listing& listing, std::uint64_t hash) {
  const std::size_t mask = listing.hashes.size() - 1;
  std::size_t place = (hash >> 1U) & mask;
  while (listing.hashes[place] != 0 && listing.hashes[place] != hash) place = (place + 1) & mask;
  return listing.hashes[place] == hash;
}

// A disk that is known to be exact is believed once a name of the folder in other letters is not found (some disks can
// be made to ignore case without saying so).
bool DiskNames::is_case_sensitive(const Listing& listing, std::string_view sample) {
  const std::string other = in_other_letters(sample);
  const bool listed_too = contains(listing, name_hash(other));
  return (listed_too || !ask_disk(other.c_str())) && handle().tells_case_apart();
}

const FolderHandle& DiskNames::handle() {
  open_.open(*folders_, folder_);
  return open_.handle();
}

bool DiskNames::ask_disk(const char* name) {
  return handle() && handle().exists(name);
}

bool DiskNames::list_now(Listing& listing, std::size_t most) {
  listing = Listing();
  if (!handle().stamp(listing.stamp)) return false;
  // An unsettled stamp answers for this run, and never again.
  if (!is_settled(listing.stamp)) listing.stamp = {};
  FolderEntry entry;
  for (reader_.start(handle()); reader_.next(entry);) {
    if (listing.hashes.size() == most) return false;
    listing.hashes.push_back(name_hash(entry.name));
  }
  listing.complete = reader_.error() == 0;
  return listing.complete;
}

// Brings a listing up to date for this run. False when there is none and none pays.
bool DiskNames::refresh(Listing& listing, std::size_t expected_tests) {
  const bool is_open = static_cast<bool>(handle());
  error_ = handle().error();
  name_limit_ = is_open ? handle().name_limit() : name_limit_;
  rename_error_ = is_open ? handle().rename_access(only_own_) : 0;
  FolderStamp stamp;
  const bool kept = is_open && listing.complete && handle().stamp(stamp) && stamp == listing.stamp;
  if (!kept) {
    const bool listed =
        is_open && expected_tests >= fewest_tests && list_now(listing, expected_tests * most_entries_a_test);
    if (!listed) listing = Listing();
    if (!listed) return false;
  }
  // A set of a long listing takes longer to make than a few tests take.
  if (!listing.hashed && expected_tests < fewest_tests) return false;
  make_set(listing);
  listing.run = run_;
  listing.name_limit = name_limit_;
  listing.rename_error = rename_error_;
  listing.only_own = only_own_;
  return true;
}

void DiskNames::begin_run(const FolderTable& folders) {
  folders_ = &folders;
  own_folders_ = OwnFolders::with_logs_in(default_log_folder());
  listings_.resize(folders.size());
  folder_ = FolderTable::none;
  open_.close();
  ++run_;
}

void DiskNames::enter(FolderId folder, std::size_t expected_tests) {
  if (folder == folder_) return;
  folder_ = folder;
  error_ = 0;
  rename_error_ = 0;
  only_own_ = false;
  Listing& listing = listings_[folder];
  current_ = listing.run == run_ || refresh(listing, expected_tests) ? &listing : nullptr;
  if (current_ == nullptr) return;
  name_limit_ = listing.name_limit;
  rename_error_ = listing.rename_error;
  only_own_ = listing.only_own;
}

bool DiskNames::exists(std::string_view name) {
  if (current_ == nullptr) return ask_disk(name.data());
  if (contains(*current_, name_hash(name))) {
    if (!current_->case_known && std::any_of(name.begin(), name.end(), is_ascii_letter)) {
      current_->case_sensitive = is_case_sensitive(*current_, name);
      current_->case_known = true;
    }
    return true;
  }
  return !current_->case_sensitive && ask_disk(name.data());
}

int DiskNames::rename_error(std::string_view name) {
  if (rename_error_ != 0 || !only_own_) return rename_error_;
  return handle().is_own(name.data()) ? 0 : EPERM;
}

bool DiskNames::is_same_entry(std::string_view name, const std::string& other) {
  EntryFacts first;
  EntryFacts second;
  return handle() && handle().look_up(name.data(), first) && handle().look_up(other.c_str(), second) &&
         first.device == second.device && first.inode == second.inode;
}

// Told by an entry that is there: can it be reached by its name in other letters, or in its other form?
bool DiskNames::tells_apart(std::string_view a, std::string_view b, std::string_view sample) {
  if (handle() && handle().tells_case_apart()) return true;
  const std::string kept(sample);
  if (differ_in_case_only(a, b)) return !is_same_entry(kept, in_other_letters(kept));
  const std::string other = in_other_form(sample);
  return other == kept || !is_same_entry(kept, other);
}

bool DiskNames::is_another_entry(std::string_view name, std::string_view other) {
  if (current_ != nullptr) return contains(*current_, name_hash(other));
  if (!ask_disk(other.data())) return false;
  if (!is_same_entry(name, std::string(other))) return true;
  // One file: by one entry, or by two hard links.
  FolderEntry entry;
  bool is_listed = false;
  for (reader_.start(handle()); reader_.next(entry);) is_listed = is_listed || entry.name == other;
  return is_listed;
}

bool DiskNames::holds_own_data(std::string_view name, std::uint64_t inode) {
  return own_folders_.may_hang_on(name, inode) && own_folders_.hang_on(handle(), name.data());
}

}  // namespace brindle
