#include "settings/settings_store.h"

#include <algorithm>
#include <type_traits>

namespace brindle {
namespace {

template <class Member>
constexpr bool is_absent(const Member& member) {
  if constexpr (std::is_same_v<Member, Text>) return !member;
  return false;
}

bool has_values(const RenameSettings& before, const RenameSettings& after, const SettingSet& rows) {
  for (const SettingRow& row : settings_table()) {
    if (!rows[setting_index(row)]) continue;
    bool absent = false;
    visit_member(row, before, [&absent](const auto& member) { absent = is_absent(member); });
    visit_member(row, after, [&absent](const auto& member) { absent = absent || is_absent(member); });
    if (!absent) return true;
  }
  return false;
}

}  // namespace

void SettingsStore::replace(RenameSettings edited) {
  SettingsChange change{.keys = compare_settings(settings_, edited)};
  if (change.keys.none()) return;
  const SettingSet counting = change.keys & watched_settings();
  change.isSettingsChanged = counting.any();
  change.has_values = has_values(settings_, edited, counting);
  settings_ = std::move(edited);
  tell(change);
}

std::uint32_t SettingsStore::add_observer(Observer observer) {
  observers_.push_back({++last_id_, std::move(observer)});
  return last_id_;
}

void SettingsStore::remove_observer(std::uint32_t id) {
  std::erase_if(observers_, [id](const Entry& entry) { return entry.id == id; });
}

void SettingsStore::tell(SettingsChange change) {
  change.is_quiet = is_quiet_;
  waiting_.push_back(change);
  if (telling_) return;
  telling_ = true;
  struct Reset {
    SettingsStore& store;
    ~Reset() {
      store.telling_ = false;
      store.waiting_.clear();
    }
  } reset{*this};
  for (std::size_t i = 0; i < waiting_.size(); ++i) tell_everyone(SettingsChange(waiting_[i]));
}

void SettingsStore::tell_everyone(const SettingsChange& change) {
  // Copies, since an observer may add or remove observers, itself included.
  const std::vector<Entry> entries = observers_;
  const auto is_present = [this](std::uint32_t id) {
    return std::ranges::find(observers_, id, &Entry::id) != observers_.end();
  };
  for (const Entry& entry : entries) {
    if (is_present(entry.id)) entry.observer(change);
  }
}

}  // namespace brindle
