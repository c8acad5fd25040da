#pragma once

// Files handed to the application: rule files and profiles are opened, all others are listed. Main thread.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/chain_controller.h"
#include "app/profiles_controller.h"

namespace brindle {

class DocumentsController {
 public:
  DocumentsController(MutableWindowModel& model, JobsController& jobs, ListController& list, ChainController& chain,
                      ProfilesController& profiles)
      : model_(model), jobs_(jobs), list_(list), chain_(chain), profiles_(profiles) {}
  DocumentsController(const DocumentsController&) = delete;
  DocumentsController& operator=(const DocumentsController&) = delete;
  ~DocumentsController();

  enum class OpenReply : std::uint8_t { success, cancelled, failure };
  /// At once, or not: cancelled while a job runs.
  OpenReply openFiles(std::vector<std::string> paths);
  /// The same for callers who do not wait for the reply: what comes while a job runs is opened after it.
  void openFilesInTurn(std::vector<std::string> paths);

 private:
  void open_document(const std::string& path);
  void open_rule_document(const std::string& path);
  void open_profile_document(const std::string& path);

  MutableWindowModel& model_;
  JobsController& jobs_;
  ListController& list_;
  ChainController& chain_;
  ProfilesController& profiles_;
  MainThreadPort::TimerId loadFilesTimer_ = 0;
};

}  // namespace brindle
