#pragma once

// A controller between a real disk and a scripted person.

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

#include "app/brindle_app_controller.h"
#include "app/list_controller.h"
#include "app/scripted_ports.h"
#include "app/window_model.h"
#include "platform/file_name.h"

namespace brindle::test {

class ControllerTest : public testing::Test {
 protected:
  void start() { start(ports_.ports()); }
  void start(const Ports& ports) {
    app_.reset();
    app_.emplace(ports, ports_.clock());
    ASSERT_TRUE(app_->start());
    app_->restore_session();
    ports_.main_thread.run_posted();
  }
  /// Ends the program as a person does, and starts it again.
  void restart() {
    ASSERT_TRUE(app_->applicationShouldTerminate());
    start();
  }

  BrindleAppController& app() { return *app_; }
  void run() { ports_.main_thread.run_posted(); }
  void advance(int milliseconds) { ports_.main_thread.advance(std::chrono::milliseconds(milliseconds)); }
  template <class Edit>
  void set(Edit&& edit) {
    app().model().settings().commit(std::forward<Edit>(edit));
  }
  void add(const std::vector<std::string>& names) {
    std::vector<std::string> paths;
    for (const std::string& name : names) paths.push_back(tree_ / name);
    app().list().acceptDrop(std::move(paths));
    run();
  }
  /// "name" or "name -> new name" of every row.
  std::vector<std::string> rows() {
    std::vector<std::string> rows;
    for (std::size_t row = 0; row < app().model().files().size(); ++row) {
      const std::string name(app().model().files()[row].name());
      const std::string new_name = to_utf8(app().model().files().new_filename(row));
      rows.push_back(new_name.empty() ? name : name + " -> " + new_name);
    }
    return rows;
  }
  std::vector<std::string> alerts() { return ports_.alerts.take(); }

  TempHome home_;
  TempTree tree_;
  ScriptedPorts ports_;
  std::optional<BrindleAppController> app_;
};

}  // namespace brindle::test
