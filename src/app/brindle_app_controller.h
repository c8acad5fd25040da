#pragma once

// The window without its views: owns the state of one window and the controllers that work on it, starts them and keeps
// between two runs what is to be kept. A view includes this to get at the controllers it uses, whose own headers say
// what they do. Main thread; nothing here knows a toolkit.

#include <functional>
#include <memory>

#include "app/ports.h"
#include "platform/date.h"

namespace brindle {

class ChainController;
class DocumentsController;
class JobsController;
class ListController;
class OptionsController;
class OrderController;
class PreferencesController;
class PreviewController;
class ProfilesController;
class RenamingController;
class RulesController;
class WindowModel;

class BrindleAppController final {
 public:
  /// `ports` outlive the controller, and no job may be running when it goes. The clock is the system's unless a test
  /// brings its own (milliseconds since 1970).
  explicit BrindleAppController(const Ports& ports, std::function<Date()> clock = {});
  BrindleAppController(const BrindleAppController&) = delete;
  BrindleAppController& operator=(const BrindleAppController&) = delete;
  ~BrindleAppController();

  WindowModel& model();
  JobsController& jobs();
  ListController& list();
  OrderController& order();
  PreviewController& preview();
  RenamingController& renaming();
  OptionsController& options();
  ChainController& chain();
  RulesController& rules_controller();  ///< of the chain
  ProfilesController& profiles();
  PreferencesController& preferences();
  DocumentsController& documents();

  /// Window set-up: folders, preferences, recent folders, live-preview preferences; finishes runs that were
  /// interrupted. False when the data folder cannot be had: that has been told, and the program was asked to quit.
  bool start();
  /// Tells, once, of the renamings and undos that were found interrupted at the start. True when the person wants to
  /// see the undo sheet.
  bool tell_interrupted_runs();
  /// Restores the last session: its profile or its settings, and its chain.
  void restore_session();
  /// The same again, the open profile left and closed.
  void loadDefaultProfile();
  /// Saves the session. False while a job runs (a quiet one is cancelled): ask again when it has ended.
  bool applicationShouldTerminate();

 private:
  struct Parts;

  void restore_rules();
  void keep_session();

  std::unique_ptr<Parts> parts_;
};

}  // namespace brindle
