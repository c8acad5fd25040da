#include "window/example_line.h"

#include "app/name_example.h"
#include "texts/shown_text.h"
#include "texts/string_table.h"
#include "window/text.h"

namespace brindle {

ExampleLine::ExampleLine(Method method, BrindleAppController& controller) : method_(method), controller_(controller) {
  setObjectName(QStringLiteral("example"));
  setTextFormat(Qt::PlainText);
  setForegroundRole(QPalette::PlaceholderText);
  // A long name is cut off rather than widening the window.
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  settings_observer_ = controller_.settings().add_observer([this](const SettingsChange&) { refresh(); });
  observer_ = controller_.add_observer([this](ChangedSet changed) {
    if (has(changed, Changed::rows) || has(changed, Changed::state)) refresh();
  });
  refresh();
}

ExampleLine::~ExampleLine() {
  controller_.remove_observer(observer_);
  controller_.settings().remove_observer(settings_observer_);
}

void ExampleLine::refresh() {
  if (selected_method(controller_.values()) != method_) return;
  const FileList* files = controller_.state().isExecuting ? nullptr : &controller_.files();
  const NameExample example = name_example(controller_.values(), files, controller_.now());
  const std::string after = example.problem.empty() ? in_sentence(example.after) : example.problem;
  setText(qt_text(localized_format("EXAMPLELINE", in_sentence(example.before), after)));
  setToolTip(text());
}

}  // namespace brindle
