#pragma once

// The export sheet: the file list as a text file. Main thread; the writing is a job of the main controller, whose state
// shows its progress.

#include <string>
#include <string_view>

#include "app/sheet_controller.h"
#include "gather/list_export.h"

namespace brindle {

class ExportSheetController final : public SheetController {
 public:
  using SheetController::SheetController;
  ~ExportSheetController() override;

  const ExportOptions& options() const { return options_; }
  void setOptions(const ExportOptions& options);
  bool isExporting() const { return isExporting_; }

  /// The Export button: shows the busy state, and a second later checks the options, asks for a place and writes.
  void start_export();
  void cancel();

  /// False while isExporting().
  bool sheetClosed() override;

 private:
  std::string_view help_page() const override { return "Export.html"; }
  void export_list_now();
  void write(const std::string& path);
  void tell_outcome(const std::string& error, const std::string& left_out) const;
  void finish();

  ExportOptions options_;
  bool isExporting_ = false;
  MainThreadPort::TimerId timer_ = 0;
};

}  // namespace brindle
