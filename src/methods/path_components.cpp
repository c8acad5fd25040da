#include "methods/path_components.h"

#include "text/string_utilities.h"

namespace brindle {
namespace {

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

// A negative level is more than there are folders.
PathComponentsParameters::PathComponentsParameters(const RenameSettings& settings)
    : placement_(settings, path_placement),
      levels_(static_cast<std::uint64_t>(std::int64_t{settings.pathComponentsLevelNo})),
      separator_(on_disk(text_of(settings.pathComponentsSeparator))),
      prefix_(on_disk(text_of(settings.pathComponentsPrefix))),
      suffix_(on_disk(text_of(settings.pathComponentsSuffix))) {}

NameOutcome PathComponentsParameters::make_name(StepRun& run) const {
  return renameByPathComponents(*this, run.item.fileLocation(), run.name);
}

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

NameOutcome renameByPathComponents(const PathComponentsParameters& parameters, std::u16string_view folder,
                                   WorkingName& name) {
  parameters.write_text(folder, name.scratch);
  return parameters.placement().place(name.scratch, name);
}

namespace {

void select_path_flags(RenameSettings& settings, RuleVariant) {
  select_flag(settings, path_placement.flags, settings.*path_placement.option);
}

void add_path_rows(RuleRows& rows, RuleVariant) {
  rows.number("Parent folders level", rows.settings.pathComponentsLevelNo);
  rows.text_if_any("Separator", &RenameSettings::pathComponentsSeparator);
  rows.text_if_any("PREFIX", &RenameSettings::pathComponentsPrefix);
  rows.text_if_any("SUFFIX", &RenameSettings::pathComponentsSuffix);
  add_place(rows, path_placement);
}

constexpr auto path_kinds = std::to_array<RuleKind>({{RuleVariant::path_components, u"Path Components"}});

constexpr auto absent_path_options = std::to_array<AbsentOption>({{&RenameSettings::pathComponentsSeparator},
                                                                  {&RenameSettings::pathComponentsPrefix},
                                                                  {&RenameSettings::pathComponentsSuffix}});

constexpr auto path_requirements = std::to_array<Requirement>({
    {path_placement.before_text, "PATHTEXTATBEFORETEXT", "ENTERSOMETEXT", path_placement.option,
     Placement::before_text},
    {path_placement.after_text, "PATHTEXTATAFTERTEXT", "ENTERSOMETEXT", path_placement.option, Placement::after_text},
});

}  // namespace

constexpr MethodRow path_components_method = {
    .method = Method::path_components,
    .title = "METHODPATHCOMPONENTS",
    .icon = "path_components",
    .rule = u"PathComponents",
    .kinds = path_kinds,
    .absent = absent_path_options,
    .required = path_requirements,
    .step = step_of<PathComponentsParameters>,
    .add_rows = add_path_rows,
    .select = select_path_flags,
};

}  // namespace brindle
