#include "methods/rename_operation.h"

#include <exception>

#include "platform/file_name.h"
#include "platform/translation.h"

namespace brindle {
namespace {

std::u16string& failure_format() {
  static std::u16string format = decode_file_name(to_translate("Unable to generate the new file name")) + u": %@";
  return format;
}

void take_apart(const FileSystemItem& item, WorkingName& name) {
  if (item.newFilename().empty()) {
    name.base = item.filename();
    name.extension = item.fileExtension();
  } else {
    const NameParts parts = split_extension(item.newFilename());
    name.base = parts.base;
    name.extension = parts.extension;
  }
}

void store(FileSystemItem& item, WorkingName& name, NameOutcome outcome) {
  if (outcome == NameOutcome::absent) name.result.clear();
  if (outcome == NameOutcome::base && !name.extension.empty()) {
    name.result.push_back(u'.');
    name.result.append(name.extension);
  }
  item.swap_new_filename(name.result);
  if (item.newFilename().empty()) name.note(Warning::emptied);
}

void report_failure(std::u16string& error, const char* reason) {
  error = failure_format();
  const std::u16string text = decode_file_name(reason);
  const std::size_t placeholder = error.find(u"%@");
  if (placeholder == std::u16string::npos) {
    error += text;
  } else {
    error.replace(placeholder, 2, text);
  }
}

}  // namespace

void set_failure_format(std::u16string_view format) {
  failure_format() = format;
}

bool run_step(const RenameStep& step, StepRun& run, std::u16string& error) {
  try {
    take_apart(run.item, run.name);
    run.name.result.clear();
    store(run.item, run.name, step.make_name(run));
  } catch (const std::exception& failure) {
    report_failure(error, failure.what());
  }
  return error.empty();
}

}  // namespace brindle
