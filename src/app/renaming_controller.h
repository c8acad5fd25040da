#pragma once

// The Rename button: the question, the job, and what is said afterwards. Main thread.

#include <cstddef>

#include "app/jobs_controller.h"
#include "app/preview_controller.h"
#include "run/apply.h"

namespace brindle {

class RenamingController {
 public:
  RenamingController(MutableWindowModel& model, JobsController& jobs, PreviewController& preview)
      : model_(model), jobs_(jobs), preview_(preview) {}

  void actionApply();

  // For an undo.

  /// The list, for the work of its job: its items follow what is moved back.
  FileList& files_for_undo() { return model_.files(); }
  /// To be called when an undo has moved items back, before its job ends.
  void show_undone(std::size_t restored);

 private:
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
