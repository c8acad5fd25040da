#include <fmt/format.h>
#include <sys/stat.h>

#include <string>
#include <string_view>

#include "cli/commands.h"
#include "cli/json_lines.h"
#include "cli/path_arguments.h"
#include "metadata/audio_attributes.h"
#include "metadata/metadata_catalogue.h"
#include "methods/photo_renaming.h"
#include "platform/file_name.h"
#include "platform/translation.h"

namespace brindle {
namespace {

constexpr std::u16string_view audio_group = u"Audio";

/// Prints rows of the catalogue: as a table for people, as lines for programs. With values when a file was named.
class FieldPrinter {
 public:
  FieldPrinter(const CommandLine& line, Console& console)
      : console_(console), json_(line.options.json), with_values_(!line.operands.empty()) {}

  void print(std::u16string_view group, const MetaDataField& field) {
    if (json_) return print_json(group, field);
    if (!console_.out_is_terminal()) return print_line(group, field);
    if (group != group_) console_.out() << console_.style().heading << to_utf8(group) << console_.style().plain << "\n";
    group_ = group;
    const std::string detail = with_values_ ? console_.shown(to_utf8(field.metadataValue)) : to_utf8(field.label);
    console_.out() << fmt::format("  {:<42} {}\n", to_utf8(field.tagCode), detail);
  }

 private:
  void print_json(std::u16string_view group, const MetaDataField& field) {
    JsonLine object(console_.out().buffer());
    object.text("group", to_utf8(group)).text("token", to_utf8(field.tagCode)).text("label", to_utf8(field.label));
    object.text("prefix", to_utf8(field.prefix)).text("source", to_utf8(field.metadataCode));
    if (with_values_) object.text("value", to_utf8(field.metadataValue));
  }
  void print_line(std::u16string_view group, const MetaDataField& field) {
    const std::string last = to_utf8(with_values_ ? field.metadataValue : field.metadataCode);
    console_.out() << fmt::format("{}\t{}\t{}\t{}\n", to_utf8(group), to_utf8(field.tagCode), to_utf8(field.label),
                                  console_.shown(last));
  }

  Console& console_;
  bool json_;
  bool with_values_;
  std::u16string group_;
};

std::string readable_file(const CommandLine& line) {
  std::string path = real_path(line.operands.front());
  struct stat facts {};
  if (::stat(path.c_str(), &facts) != 0) throw UsageError(translated("there is no file {}", line.operands.front()));
  if (!S_ISREG(facts.st_mode)) throw UsageError(translated("{} is not a file with metadata", line.operands.front()));
  return path;
}

void print_audio(FieldPrinter& printer, const AudioAttributes& attributes) {
  for (std::size_t i = 0; i < audio_tokens.size(); ++i) {
    const std::u16string_view token = audio_tokens[i];
    const std::u16string label(token.substr(1, token.size() - 2));
    printer.print(audio_group, {u"AUDIO", label, std::u16string(token), label, attributes[i]});
  }
}

}  // namespace

ExitCode run_fields(const CommandLine& line, Console& console) {
  FieldPrinter printer(line, console);
  const std::string path = line.operands.empty() ? std::string() : readable_file(line);
  const RenameSettings defaults;
  const MetaDataList list =
      path.empty() ? MetaDataList() : read_metadata_values(path, date_parts(defaults, photo_parts));
  for (const MetadataGroup& group : list.groups()) {
    for (const MetaDataField& field : group.FIELDS) printer.print(group.NAME, field);
  }
  print_audio(printer, path.empty() ? AudioAttributes() : read_audio_attributes(path));
  return ExitCode::done;
}

}  // namespace brindle
