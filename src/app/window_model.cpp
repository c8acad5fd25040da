#include "app/window_model.h"

#include <algorithm>

#include "platform/message_log.h"
#include "settings/settings_record.h"
#include "texts/string_table.h"

namespace brindle {

WindowModel::WindowModel(const Ports& ports, std::function<Date()> clock)
    : ports_(ports),
      clock_(clock ? std::move(clock) : current_time),
      // Told on the cache's thread.
      photo_fields_([this, alive = std::weak_ptr(alive_)] {
        ports_.main_thread.post([this, alive] {
          if (alive.lock()) tell_observers(static_cast<ChangedSet>(Changed::names));
        });
      }) {}

std::uint32_t WindowModel::add_observer(Observer observer) {
  observers_.emplace_back(++last_observer_, std::move(observer));
  return last_observer_;
}

void WindowModel::remove_observer(std::uint32_t id) {
  std::erase_if(observers_, [id](const auto& entry) { return entry.first == id; });
}

void WindowModel::tell_observers(ChangedSet changed) {
  const auto observers = observers_;  // one may add or remove observers
  for (const auto& [id, observer] : observers) {
    const bool is_there = std::ranges::any_of(observers_, [id = id](const auto& entry) { return entry.first == id; });
    if (is_there) observer(changed);
  }
}

MutableWindowModel::MutableWindowModel(const Ports& ports, std::function<Date()> clock)
    : WindowModel(ports, std::move(clock)) {}

void MutableWindowModel::update_state() {
  if (!state_.isExecuting) state_.item_count = files_.size();
  const bool has_items = state_.item_count > 0;
  state_.preview_enabled = !state_.is_busy() && has_items && selected_method(values()) != Method::from_list;
  state_.rename_enabled =
      !state_.isExecuting && has_items && state_.isHasFilesForRenaming && files_.renameable_count() > 0;
  state_.shows_empty_hint = !has_items;
}

void MutableWindowModel::tell(ChangedSet changed) {
  update_state();
  tell_observers(changed);
}

void MutableWindowModel::count_list() {
  state_.isHasFilesForRenaming = false;
  state_.count_label =
      localized_format(values().isFolders ? "TOTALFOLDERSSELECTED" : "TOTALFILESSELECTED", files_.size());
}

void MutableWindowModel::commit_quietly(RenameSettings edited) {
  const SettingsStore::Quiet quiet(settings_);
  settings_.replace(std::move(edited));
}

void MutableWindowModel::save_user_defaults() {
  const Status status = defaults_.flush();
  if (!status.ok()) log_failure("flush", status.reason());
}

bool MutableWindowModel::ask_about_list(Alert question, std::string_view yes, std::string_view no) {
  const bool was_asking = std::exchange(is_asking_, true);
  const bool is_yes = ask(ports_, std::move(question), yes, no);
  is_asking_ = was_asking;
  return is_yes;
}

}  // namespace brindle
