#include "app/documents_controller.h"

#include <chrono>
#include <exception>
#include <utility>

#include "app/document_name.h"
#include "methods/rule_file.h"
#include "platform/file_name.h"
#include "platform/message_log.h"
#include "settings/profile_file.h"
#include "texts/shown_text.h"

namespace brindle {
namespace {

constexpr std::chrono::milliseconds after_last_request{500};

bool is_document(const std::vector<std::string>& paths) {
  return paths.size() == 1 &&
         (has_extension(paths.front(), rule_extension) || has_extension(paths.front(), profile_extension));
}

bool ask_to_replace(const Ports& ports, std::string_view title_key, std::string_view message_key,
                    const std::string& path) {
  const std::string_view name = std::string_view(path).substr(path.rfind('/') + 1);
  return ask(ports, make_alert(title_key, message_key, in_sentence(decode_file_name(name))));
}

}  // namespace

DocumentsController::~DocumentsController() {
  model_.ports().main_thread.cancel_timer(loadFilesTimer_);
}

DocumentsController::OpenReply DocumentsController::openFiles(std::vector<std::string> paths) {
  if (model_.state().is_busy()) return OpenReply::cancelled;
  if (paths.empty()) return OpenReply::failure;
  try {
    if (is_document(paths)) {
      open_document(paths.front());
      return OpenReply::success;
    }
    // File managers open many files one by one: what comes within half a second replaces what came before.
    MainThreadPort& main_thread = model_.ports().main_thread;
    main_thread.cancel_timer(loadFilesTimer_);
    loadFilesTimer_ =
        main_thread.start_timer(after_last_request, [this, paths = std::move(paths)] { list_.loadFiles(paths); });
    return OpenReply::success;
  } catch (const std::exception& failure) {
    log_failure("application:openFile", failure.what());
    return OpenReply::failure;
  }
}

// What waits is not put off once more: one list of paths would replace another.
void DocumentsController::openFilesInTurn(std::vector<std::string> paths) {
  if (!model_.state().is_busy()) {
    openFiles(std::move(paths));
  } else if (is_document(paths)) {
    jobs_.request([this, paths] { openFiles(paths); });
  } else {
    list_.loadFiles(std::move(paths));
  }
}

void DocumentsController::open_document(const std::string& path) {
  if (has_extension(path, rule_extension)) {
    open_rule_document(path);
  } else {
    open_profile_document(path);
  }
}

void DocumentsController::open_rule_document(const std::string& path) {
  const bool is_free = chain_.rules().rules().empty();
  if (is_free || ask_to_replace(model_.ports(), "RULESETTINGSFILETITLE", "RULEALREADYEXISTS", path))
    chain_.open_document(path);
}

void DocumentsController::open_profile_document(const std::string& path) {
  if (!profiles_.currProfileFile().empty()) {
    if (!ask_to_replace(model_.ports(), "PROFILESETTINGSFILETITLE", "PROFILELOADMESSAGE", path)) return;
    profiles_.save_left_profile();
  }
  model_.ports().desktop.bring_to_front();
  profiles_.setCurrentSettings(path);
}

}  // namespace brindle
