#include "methods/path_components.h"

#include "text/string_utilities.h"

namespace brindle {
namespace {

Placement folder_placement(const PathComponentsArguments& arguments) {
  return Placement({.option_index = arguments.pathComponentsOptionsIndex,
                    .position = arguments.pathComponentsAtPositionNo,
                    .direction = arguments.pathComponentsAtPositionDirection,
                    .before_text = arguments.pathComponentsAtBeforeText,
                    .before_occurrence = arguments.pathComponentsAtBeforeOccurrence,
                    .after_text = arguments.pathComponentsAtAfterText,
                    .after_occurrence = arguments.pathComponentsAtAfterOccurrence});
}

// The end of `path` that holds the last `levels` components.
std::u16string_view last_components(std::u16string_view path, std::uint64_t levels) {
  std::size_t start = path.size();
  for (std::uint64_t taken = 0; taken < levels; ++taken) {
    const std::size_t last = start == 0 ? std::u16string_view::npos : path.find_last_not_of(u'/', start - 1);
    if (last == std::u16string_view::npos) break;
    start = path.rfind(u'/', last) + 1;
  }
  return path.substr(start);
}

}  // namespace

PathComponentsParameters::PathComponentsParameters(const PathComponentsArguments& arguments)
    : placement_(folder_placement(arguments)),
      levels_(static_cast<std::uint64_t>(std::int64_t{arguments.pathComponentsLevelNo})),
      separator_(on_disk(arguments.pathComponentsSeparator)),
      prefix_(on_disk(arguments.pathComponentsPrefix)),
      suffix_(on_disk(arguments.pathComponentsSuffix)) {}

void PathComponentsParameters::write_text(std::u16string_view folder, std::u16string& text) const {
  text = prefix_;
  bool is_first = true;
  std::u16string_view rest = last_components(folder, levels_);
  while (!rest.empty()) {
    const std::size_t slash = rest.find(u'/');
    const std::u16string_view component = rest.substr(0, slash);
    if (!component.empty()) {
      if (!is_first) text.append(separator_);
      text.append(component);
      is_first = false;
    }
    rest = slash == std::u16string_view::npos ? std::u16string_view() : rest.substr(slash + 1);
  }
  text.append(suffix_);
}

NameOutcome path_components(const PathComponentsParameters& parameters, std::u16string_view folder, WorkingName& name) {
  parameters.write_text(folder, name.scratch);
  return parameters.placement().place(name.scratch, name);
}

bool renameByPathComponents(FileSystemItem& item, const PathComponentsParameters& parameters, WorkingName& name,
                            std::u16string& error) {
  return rename_operation(item, name, error, [&](WorkingName& working) {
    return path_components(parameters, item.fileLocation(), working);
  });
}

}  // namespace brindle
