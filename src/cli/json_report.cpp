#include "cli/json_report.h"

#include "cli/json_lines.h"
#include "platform/file_name.h"

namespace brindle {

void print_summary(std::string& buffer, const RunSummary& summary) {
  JsonLine line(buffer, "summary");
  line.text("command", summary.command)
      .number("items", summary.counts.items)
      .number("renameable", summary.counts.renameable)
      .number("renamed", summary.counts.renamed);
  if (summary.log.empty()) {
    line.null("log");
  } else {
    line.bytes("log", summary.log);
  }
  line.seconds("seconds", summary.seconds);
}

void print_left_out(std::string& buffer, std::string_view path, std::string_view reason) {
  JsonLine(buffer, "leftOut").bytes("path", path).text("reason", reason);
}

void print_unreadable(std::string& buffer, std::string_view path, std::string_view reason) {
  JsonLine(buffer, "unreadable").bytes("path", path).text("reason", reason);
}

void print_refusal(std::string& buffer, const Refusal& refusal, std::string_view text) {
  JsonLine(buffer, "refusal").text("title", refusal.title).text("message", refusal.message).text("text", text);
}

void ItemPrinter::print(std::size_t row, std::string_view old_path) {
  const ItemRecord& record = files_[row];
  if (record.folder != folder_) {
    folder_ = record.folder;
    path_ = files_.folders().path(folder_);
    if (path_.back() != '/') path_ += '/';
    folder_size_ = path_.size();
  }
  path_.resize(folder_size_);
  path_ += record.name();
  JsonLine line(buffer_, "item");
  line.bytes("path", path_);
  if (!old_path.empty()) line.bytes("oldPath", old_path);
  if (record.status == ItemStatus::proposed) {
    line.bytes("newFilename", record.proposed());
  } else {
    line.text("newFilename", to_utf8(status_text(record.status)));
  }
  if (const std::string_view wanted = files_.wanted(row); !wanted.empty()) line.bytes("wanted", wanted);
  line.flag("renamed", record.status == ItemStatus::renaming_ok);
  if (record.reason != 0) line.text("reason", files_.reason(row));
}

}  // namespace brindle
