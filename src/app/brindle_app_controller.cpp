#include "app/brindle_app_controller.h"

#include <utility>

#include "app/documents_controller.h"
#include "app/options_controller.h"
#include "app/order_controller.h"
#include "app/preferences_controller.h"
#include "app/renaming_controller.h"
#include "log/undo_progress.h"
#include "methods/rename_operation.h"
#include "methods/rule_file.h"
#include "platform/data_folders.h"
#include "platform/file_name.h"
#include "plist/keyed_archive.h"
#include "run/recovery.h"
#include "texts/shown_text.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

std::string path_of(std::u16string_view text) {
  std::string path;
  return encode_path(text, path) ? path : std::string();
}

std::string_view bytes_of(const PropertyValue::Data& data) {
  return {reinterpret_cast<const char*>(data.data()), data.size()};
}

bool make_data_folders(const Ports& ports) {
  for (const std::string_view name : {"", "Logs", "Profiles", "Rules"}) {
    const Status status = createApplicationUsersFolder(name);
    if (status.ok()) continue;
    show_alert(ports, make_alert("APPLICATIONINITTITLE", "APPLICATIONCREATEFOLDERFAILED"), AlertStyle::critical,
               status.reason());
    ports.desktop.quit();
    return false;
  }
  return true;
}

/// Renamings and undos that the program's last run did not come to the end of.
class InterruptedRuns {
 public:
  /// Finishes the logs of those that the folder (on-disk bytes) holds, and keeps what is to be said of them.
  void finish(const std::string& log_folder);
  /// Says it, once. True when the person wants to see the logs.
  bool tell(const Ports& ports);

 private:
  // A line each.
  std::string finished_;
  std::string waiting_;
  std::string lost_;
  std::string undos_;
};

std::string name_of(const std::string& path) {
  return in_sentence(decode_file_name(std::string_view(path).substr(path.rfind('/') + 1)));
}

void InterruptedRuns::finish(const std::string& log_folder) {
  const RecoveryResult result = recover(log_folder);
  for (const std::string& problem : result.problems) waiting_ += problem + "\n";
  for (const std::string& journal : result.set_aside) lost_ += journal + "\n";
  for (const RecoveredRun& run : result.runs) {
    if (run.log_path.empty()) continue;
    finished_ += name_of(run.log_path) + ": " + localized_format("TOTALNOSRENAMEDITEMSFOUND", run.renamed) + "\n";
  }
  for (const BrokenOffUndo& undo : broken_off_undos(log_folder)) {
    undos_ += name_of(undo.log_path) + ": " + localized_format("UNDOBROKENOFF", undo.restored, undo.entries) + "\n";
  }
}

bool InterruptedRuns::tell(const Ports& ports) {
  bool wanted = false;
  const auto tell_of = [&](std::string_view key, std::string logs) {
    if (logs.empty()) return;
    logs.pop_back();
    Alert question = make_alert("", key);
    question.informative_text = std::move(logs);
    question.style = AlertStyle::informational;
    wanted = ask(ports, std::move(question), "SHOWLOGS", "NOTNOW") || wanted;
  };
  tell_of("INTERRUPTEDRUNFINISHED", std::exchange(finished_, {}));
  tell_of("INTERRUPTEDRUNWAITS", std::exchange(waiting_, {}));
  tell_of("INTERRUPTEDRUNLOST", std::exchange(lost_, {}));
  tell_of("INTERRUPTEDUNDOFOUND", std::exchange(undos_, {}));
  return wanted;
}

}  // namespace

/// In the order of who needs whom.
struct BrindleAppController::Parts final : private JobsOwner {
  Parts(const Ports& ports, std::function<Date()> clock) : model(ports, std::move(clock)) {
    model.settings().add_observer([this](const SettingsChange& change) { settings_changed(change); });
  }

  void settings_changed(const SettingsChange& change) {
    if (change.contains("selectedTab")) chain.rules().tabChanged(selected_method(model.values()));
    options.rebuild_masks(change);
    preview.settings_changed(change);
    model.tell(Changed::settings | Changed::state);
  }
  void set_executing(bool executing) override { chain.rules().setIsExecuting(executing); }
  void remake_live_preview() override { preview.remake(); }

  MutableWindowModel model;
  JobsController jobs{model, *this};
  OptionsController options{model};
  ChainController chain{model};
  PreviewController preview{model, jobs, chain.rules()};
  RenamingController renaming{model, jobs, preview};
  ListController list{model, jobs};
  OrderController order{model, jobs};
  PreferencesController preferences{model};
  ProfilesController profiles{model, jobs, list, chain.rules()};
  DocumentsController documents{model, jobs, list, chain, profiles};
  InterruptedRuns interrupted_runs;
};

BrindleAppController::BrindleAppController(const Ports& ports, std::function<Date()> clock)
    : parts_(std::make_unique<Parts>(ports, std::move(clock))) {}
BrindleAppController::~BrindleAppController() = default;

WindowModel& BrindleAppController::model() {
  return parts_->model;
}
JobsController& BrindleAppController::jobs() {
  return parts_->jobs;
}
ListController& BrindleAppController::list() {
  return parts_->list;
}
OrderController& BrindleAppController::order() {
  return parts_->order;
}
PreviewController& BrindleAppController::preview() {
  return parts_->preview;
}
RenamingController& BrindleAppController::renaming() {
  return parts_->renaming;
}
OptionsController& BrindleAppController::options() {
  return parts_->options;
}
ChainController& BrindleAppController::chain() {
  return parts_->chain;
}
RulesController& BrindleAppController::rules_controller() {
  return parts_->chain.rules();
}
ProfilesController& BrindleAppController::profiles() {
  return parts_->profiles;
}
PreferencesController& BrindleAppController::preferences() {
  return parts_->preferences;
}
DocumentsController& BrindleAppController::documents() {
  return parts_->documents;
}

bool BrindleAppController::start() {
  MutableWindowModel& model = parts_->model;
  set_failure_format(decode_file_name(localized("UNABLETOGENERATENEWFILENAMEERROR")));
  if (!make_data_folders(model.ports())) return false;
  parts_->preferences.read();
  RenameSettings empty;
  loadEmptyProfile(empty, model.now());
  model.commit_quietly(std::move(empty));
  model.tell(Changed::state | Changed::preferences | Changed::recent_items);
  parts_->interrupted_runs.finish(model.preferences().defaultLogFolderPath);
  return true;
}

bool BrindleAppController::tell_interrupted_runs() {
  return parts_->interrupted_runs.tell(parts_->model.ports());
}

void BrindleAppController::restore_session() {
  MutableWindowModel& model = parts_->model;
  if (model.state().isExecuting) return;
  const std::string profile = path_of(model.user_defaults().text(user_default::last_profile, u""));
  restore_rules();
  // A profile that cannot be opened stays closed: saved at quit, it would be overwritten by other settings.
  if (!profile.empty() && parts_->profiles.open_profile(profile)) return;
  parts_->profiles.forget_profile();
  const PropertyValue* record = model.user_defaults().find(user_default::settings);
  const auto* dictionary = record ? record->get_if<PropertyDictionary>() : nullptr;
  if (dictionary) parts_->profiles.setSettings(SettingsRecord(*dictionary));
}

void BrindleAppController::restore_rules() {
  MutableWindowModel& model = parts_->model;
  const PropertyValue* stored = model.user_defaults().find(user_default::last_rule);
  if (!stored) return;
  const auto* data = stored->get_if<PropertyValue::Data>();
  const auto chain = data ? unarchive_value(bytes_of(*data), meta_data_field_class) : std::nullopt;
  Result<std::vector<Rule>> rules =
      chain ? rules_from_property_value(*chain, MethodNames::as_read) : Status("it is no keyed archive");
  if (rules.ok()) return rules_controller().setRules(*std::move(rules));
  rules_controller().setRules({});
  model.user_defaults().remove(user_default::last_rule);
  model.save_user_defaults();
}

void BrindleAppController::loadDefaultProfile() {
  parts_->jobs.command([this] {
    parts_->profiles.save_left_profile();
    parts_->profiles.close_profile();
    restore_session();
  });
}

bool BrindleAppController::applicationShouldTerminate() {
  // A job that renames is never broken off behind a person's back: it can be cancelled, and then the program ended. A
  // quiet one stops at once.
  if (!parts_->jobs.make_way()) return false;
  parts_->model.ports().desktop.end_editing();
  parts_->profiles.save_left_profile();
  keep_session();
  return true;
}

void BrindleAppController::keep_session() {
  MutableWindowModel& model = parts_->model;
  UserDefaults& defaults = model.user_defaults();
  defaults.set(user_default::settings, getCurrentSettings(model.values()));
  defaults.set(user_default::recent_items, model.recent().to_property_value());
  defaults.set(user_default::last_profile, decode_file_name(parts_->profiles.currProfileFile()));
  defaults.set(user_default::last_rule, archive_value(rules_to_property_value(rules_controller().rules())));
  model.save_user_defaults();
}

}  // namespace brindle
