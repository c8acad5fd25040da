#include "window/method_area.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedWidget>
#include <algorithm>

#include "app/options_controller.h"
#include "app/window_model.h"
#include "methods/method_table.h"
#include "window/icons.h"
#include "window/keyboard.h"
#include "window/method_panels.h"
#include "window/setting_bindings.h"
#include "window/text.h"

namespace brindle {
MethodArea::MethodArea(BrindleAppController& app, QWidget* parent)
    : QWidget(parent),
      app_(app),
      bindings_(new SettingBindings(app.model().settings(), this)),
      splitter_(new QSplitter(Qt::Horizontal, this)),
      list_(new QListWidget(splitter_)),
      panels_(new QStackedWidget(splitter_)) {
  setObjectName(QStringLiteral("methodArea"));
  splitter_->setObjectName(QStringLiteral("methodSplitter"));
  splitter_->setChildrenCollapsible(false);
  splitter_->setStretchFactor(0, 0);
  splitter_->setStretchFactor(1, 1);
  panels_->setObjectName(QStringLiteral("methodPanels"));
  make_list();
  while (frames_.size() < method_table().size()) {
    QScrollArea* frame = frames_.emplace_back(new QScrollArea(panels_));
    frame->setWidgetResizable(true);
    frame->setFrameShape(QFrame::NoFrame);
    frame->setFocusPolicy(Qt::NoFocus);  // its fields scroll it
    frame->setAccessibleName(localized_text("METHODPANELNAME"));
    panels_->addWidget(frame);
  }
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(splitter_);
  show_tab();
  observer_ = app_.model().add_observer([this](ChangedSet changed) {
    if (has(changed, Changed::settings)) show_tab();
  });
}

MethodArea::~MethodArea() {
  app_.model().remove_observer(observer_);
}

void MethodArea::make_list() {
  list_->setObjectName(QStringLiteral("methodList"));
  list_->setAccessibleName(localized_text("METHODLISTNAME"));
  list_->setUniformItemSizes(true);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  const int line = list_->fontMetrics().height();
  list_->setIconSize({line + 2, line + 2});
  int text_width = 0;
  for (const MethodRow* method : method_table()) {
    auto* item = new QListWidgetItem(icon(method->icon), localized_text(method->title), list_);
    item->setSizeHint({0, line + line / 3});
    text_width = std::max(text_width, list_->fontMetrics().horizontalAdvance(item->text()));
  }
  const int width = text_width + list_->iconSize().width() + line * 3 / 2;
  list_->setMinimumWidth(width);
  list_->setMaximumWidth(width * 3 / 2);
  splitter_->setSizes({width, width * 4});
  connect(list_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row >= 0 && row != app_.model().values().selectedTab) app_.options().select_tab(static_cast<Method>(row));
  });
}

void MethodArea::make_panel(Method method) {
  QScrollArea* frame = frames_.at(static_cast<std::size_t>(method));
  if (frame->widget() != nullptr) return;
  frame->setWidget(method_panel(method).make({app_, *bindings_}, frame));
  order_tabs(*this);
}

// Settings of no method show the nearest one's panel, and change nothing.
void MethodArea::show_tab() {
  const std::int32_t tab =
      std::clamp(app_.model().values().selectedTab, 0, static_cast<std::int32_t>(frames_.size()) - 1);
  if (panels_->currentIndex() == tab && frames_.at(static_cast<std::size_t>(tab))->widget() != nullptr) return;
  list_->setCurrentRow(tab);
  make_panel(static_cast<Method>(tab));
  panels_->setCurrentIndex(tab);
}

void MethodArea::focus_methods() const {
  list_->setFocus();
}

void MethodArea::focus_setting(std::string_view key) {
  const SettingRow* row = find_setting(key);
  const std::optional<Method> owner = row != nullptr ? row->method : std::nullopt;
  const std::optional<Method> method = owner ? owner : selected_method(app_.model().values());
  if (!method) return;
  if (selected_method(app_.model().values()) != method) app_.options().select_tab(*method);
  make_panel(*method);
  QWidget* field = bindings_->field_of(key);
  if (field == nullptr) return;
  frames_.at(static_cast<std::size_t>(*method))->ensureWidgetVisible(field);
  field->setFocus(Qt::OtherFocusReason);
}

}  // namespace brindle
