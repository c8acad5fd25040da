#include "texts/remark_text.h"

#include "platform/file_name.h"
#include "platform/translation.h"
#include "texts/shown_text.h"

namespace brindle {
namespace {

std::string shown_name(std::string_view name) {
  return in_sentence(FileSystemItem::getDisplayFilePath(decode_file_name(name)));
}

std::string taken_text(const ItemRecord& record) {
  const std::string name = shown_name(record.proposed());
  switch (record.holder) {
    case Holder::unlisted:
      return translated("“{}” is already there", name);
    case Holder::stays:
      return translated("“{}” is in the list and keeps that name", name);
    case Holder::leaves:
      return translated("“{}” has that name until it is renamed itself", name);
  }
  return {};
}

std::string unwritable_text(const FileList& files, std::size_t row) {
  const std::size_t over = files[row].bytes_over;
  if (over == 0) return translated(files.reason(row));
  return translated_count(over, "the new name is {} byte too long for this disk",
                          "the new name is {} bytes too long for this disk", over);
}

}  // namespace

std::string problem_text(const FileList& files, std::size_t row) {
  const ItemRecord& record = files[row];
  switch (record.problem) {
    case Problem::none:
      return {};
    case Problem::clash:
      return translated("“{}” gets that name first", shown_name(record.other));
    case Problem::taken:
      return taken_text(record);
    case Problem::unwritable:
      return unwritable_text(files, row);
    case Problem::gone:
      return record.reason == 0 ? translated("it is not there any more") : translated(files.reason(row));
    case Problem::no_access:
      return translated("it must not be renamed: {}", translated(files.reason(row)));
  }
  return {};
}

std::string warning_text(const FileList& files, std::size_t row) {
  const ItemRecord& record = files[row];
  switch (record.warning) {
    case Warning::none:
      return {};
    case Warning::contested:
      return translated("“{}” wants this name too", shown_name(record.other));
    case Warning::alike:
      return translated("“{}” differs in letter case or composed letters alone", shown_name(record.other));
    case Warning::emptied:
      return translated("nothing is left of the name, so it stays");
    case Warning::no_value:
      return translated("the file has no value for a field of the name");
    case Warning::cut:
      return translated("the counter is longer than its mask and was cut");
    case Warning::extension:
      return translated("the extension changes");
    case Warning::hidden:
      return translated("a name that begins with a dot is hidden");
  }
  return {};
}

std::string problem_with(const FileList& files, std::size_t row) {
  const ItemRecord& record = files[row];
  const bool is_taken = record.problem == Problem::taken;
  if (record.problem != Problem::clash && !is_taken) return {};
  std::string path = files.folder_path(row);
  if (path.back() != '/') path.push_back('/');
  return path.append(is_taken ? record.proposed() : std::string_view(record.other));
}

}  // namespace brindle
