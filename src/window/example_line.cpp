#include "window/example_line.h"

#include "app/name_example.h"
#include "texts/shown_text.h"
#include "texts/string_table.h"
#include "window/text.h"

namespace brindle {

ExampleLine::ExampleLine(Method method, WindowModel& model) : method_(method), model_(model) {
  setObjectName(QStringLiteral("example"));
  setTextFormat(Qt::PlainText);
  setForegroundRole(QPalette::PlaceholderText);
  // A long name is cut off rather than widening the window.
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  observer_ = model_.add_observer([this](ChangedSet changed) {
    if (has(changed, Changed::rows) || has(changed, Changed::state)) refresh();
  });
  refresh();
}

ExampleLine::~ExampleLine() {
  model_.remove_observer(observer_);
}

void ExampleLine::refresh() {
  if (selected_method(model_.values()) != method_) return;
  const FileList* files = model_.state().isExecuting ? nullptr : &model_.files();
  const NameExample example = name_example(model_.values(), files, model_.now());
  const std::string after = example.problem.empty() ? in_sentence(example.after) : example.problem;
  setText(qt_text(localized_format("EXAMPLELINE", in_sentence(example.before), after)));
  setToolTip(text());
}

}  // namespace brindle
