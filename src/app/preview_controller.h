#pragma once

// The new names of the list: made on demand, made as one types, and typed by hand. Main thread; making them is a job,
// save for the live preview of a short list.

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "app/jobs_controller.h"
#include "app/rules_controller.h"
#include "methods/rename_plan.h"
#include "run/preview.h"

namespace brindle {

class PreviewController {
 public:
  PreviewController(MutableWindowModel& model, JobsController& jobs, RulesController& rules)
      : model_(model), jobs_(jobs), rules_(rules) {}
  PreviewController(const PreviewController&) = delete;
  PreviewController& operator=(const PreviewController&) = delete;
  ~PreviewController();

  // Full previews (preview_controller.cpp), which look at the disk.

  /// Of the chain when the drawer is open and holds rules, else of the method shown.
  void actionPreview();
  void actionPreviewRule();
  /// Puts a name typed by hand into a row, in display form, and settles its status.
  void set_new_name(std::size_t row, std::u16string_view text);

  /// What the next runs do about items that cannot get their names; remembered. Names are made anew where they follow
  /// by themselves.
  void set_choices(const RunChoices& choices);

  // The live preview (live_preview.cpp).

  void setLivePreviewPreferences(const LivePreviewPreferences& preferences);
  void settings_changed(const SettingsChange& change);
  /// One that was broken off is made again when nothing follows for a while.
  void remake();
  /// What is shown stays until something wakes the live preview anew.
  void cancel_pending();

 private:
  const RenameSettings& values() const { return model_.values(); }
  bool begin_preview();
  void doPreview();
  void doPreviewRule();
  void run_preview(const std::shared_ptr<RenamePlan>& plan);
  void tell_operation_error(const PreviewResult& result);
  void names_made(const RenamePlan& plan);
  bool wakes(const SettingsChange& change) const;
  void schedule(std::chrono::milliseconds after);
  void drop_live_names();
  void quickPreviewTimerMethod();
  void quickPreview();

  MutableWindowModel& model_;
  JobsController& jobs_;
  RulesController& rules_;
  MainThreadPort::TimerId quickPreviewTimer_ = 0;
  MainThreadPort::TimerId previewRuleTimer_ = 0;
};

/// Says what a method misses, and puts the keyboard there.
void tell_refusal(const Ports& ports, const Refusal& refusal);

}  // namespace brindle
