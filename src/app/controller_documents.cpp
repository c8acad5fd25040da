// Files handed to the application: rule files and profiles are opened, all others are listed.

#include <exception>
#include <utility>

#include "app/brindle_app_controller.h"
#include "app/document_name.h"
#include "methods/rule_file.h"
#include "platform/app_info.h"
#include "platform/file_name.h"
#include "platform/message_log.h"
#include "settings/profile_file.h"
#include "texts/shown_text.h"
#include "texts/string_table.h"

namespace brindle {
namespace {

constexpr std::chrono::milliseconds after_last_request{500};

std::string_view name_of(std::string_view path) {
  return path.substr(path.rfind('/') + 1);
}

bool ask_to_replace(const Ports& ports, std::string_view title_key, std::string_view message_key,
                    const std::string& path) {
  Alert alert;
  alert.title_key = title_key;
  alert.message_key = message_key;
  alert.title = localized_format(title_key, getAppTitle());
  alert.message = localized_format(message_key, in_sentence(decode_file_name(name_of(path))));
  alert.buttons = {"YES", "NO"};
  return ports.alerts.show(alert) == 0;
}

}  // namespace

BrindleAppController::OpenReply BrindleAppController::openFiles(std::vector<std::string> paths) {
  if (state_.isExecuting && !state_.is_quiet) return OpenReply::cancelled;
  if (paths.empty()) return OpenReply::failure;
  try {
    if (paths.size() == 1 && is_document(paths.front())) {
      open_document(paths.front());
      return OpenReply::success;
    }
    // File managers open many files one by one: what comes within half a second replaces what came before.
    ports_.main_thread.cancel_timer(loadFilesTimer_);
    loadFilesTimer_ =
        ports_.main_thread.start_timer(after_last_request, [this, paths = std::move(paths)] { loadFiles(paths); });
    return OpenReply::success;
  } catch (const std::exception& failure) {
    log_failure("application:openFile", failure.what());
    return OpenReply::failure;
  }
}

// What waits is not put off once more: one list of paths would replace another.
void BrindleAppController::openFilesInTurn(std::vector<std::string> paths) {
  const bool is_busy = state_.isExecuting && !state_.is_quiet;
  if (!is_busy) {
    openFiles(std::move(paths));
  } else if (paths.size() == 1 && is_document(paths.front())) {
    put_off([this, paths] { openFiles(paths); });
  } else {
    loadFiles(std::move(paths));
  }
}

bool BrindleAppController::is_document(std::string_view path) const {
  return has_extension(path, rule_extension) || has_extension(path, profile_extension);
}

void BrindleAppController::open_document(const std::string& path) {
  if (has_extension(path, rule_extension)) {
    open_rule_document(path);
  } else {
    open_profile_document(path);
  }
}

void BrindleAppController::open_rule_document(const std::string& path) {
  if (!rules_.rules().empty() && !ask_to_replace(ports_, "RULESETTINGSFILETITLE", "RULEALREADYEXISTS", path)) return;
  if (!rules_.open_rule_file(path)) return;
  ports_.desktop.bring_to_front();
  rules_.setOpen(true);
  rules_.resetData(true);
}

void BrindleAppController::open_profile_document(const std::string& path) {
  if (!currProfileFile_.empty()) {
    if (!ask_to_replace(ports_, "PROFILESETTINGSFILETITLE", "PROFILELOADMESSAGE", path)) return;
    save_left_profile();
  }
  ports_.desktop.bring_to_front();
  setCurrentSettings(path);
}

}  // namespace brindle
