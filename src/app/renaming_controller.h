#pragma once

// The Rename button, and Redo: the question, the job, and what is said afterwards. Main thread.

#include <cstddef>
#include <functional>
#include <memory>

#include "app/jobs_controller.h"
#include "app/preview_controller.h"
#include "run/apply.h"

namespace brindle {

class RenamingController {
 public:
  RenamingController(MutableWindowModel& model, JobsController& jobs, PreviewController& preview)
      : model_(model), jobs_(jobs), preview_(preview) {}

  void actionApply();
  /// Does the renaming again that was undone last, after the same question; the items of the list follow. `done` is
  /// called at its end, whichever that is. No job may be running.
  void redo(std::function<void()> done = {});

  // For an undo.

  /// The list, for the work of its job: its items follow what is moved back.
  FileList& files_for_undo() { return model_.files(); }
  /// To be called when an undo has moved items back, before its job ends.
  void show_undone(std::size_t restored);

 private:
  struct Redo;

  static void look_at(Redo& redo, const JobControl& control);
  void ask_to_redo(const std::shared_ptr<Redo>& redo);
  void rename_again(Redo& redo, const JobControl& control);
  void show_redone(const Redo& redo);
  void tell_redone(const Redo& redo);
  void end_redo(const Redo& redo);

  ApplyOptions options() const;
  void apply_names(const ApplyOptions& options);
  void show_apply(const ApplyResult& result, const ApplyOptions& options);
  void after_apply(const ApplyResult& result, ApplyOptions options);
  void tell_failures(const ApplyResult& result, const ApplyOptions& options);

  MutableWindowModel& model_;
  JobsController& jobs_;
  PreviewController& preview_;
};

}  // namespace brindle
