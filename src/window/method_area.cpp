#include "window/method_area.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedWidget>
#include <algorithm>

#include "app/options_controller.h"
#include "app/window_model.h"
#include "window/icons.h"
#include "window/keyboard.h"
#include "window/method_panels.h"
#include "window/setting_bindings.h"
#include "window/text.h"

namespace brindle {
namespace {

struct Prefix {
  std::string_view text;
  std::int32_t tab;
};

// What a method's settings begin with, behind an "is".
constexpr auto prefixes = std::to_array<Prefix>({{"alphaNumeric", 0},
                                                 {"insertDelete", 1},
                                                 {"replaceRemove", 2},
                                                 {"prefixSuffix", 3},
                                                 {"dateTime", 4},
                                                 {"general", 5},
                                                 {"id3", 6},
                                                 {"photo", 7},
                                                 {"pathComponents", 8},
                                                 {"renameFile", 9}});

std::string without_is(std::string_view key) {
  std::string name(key);
  if (name.starts_with("is") && name.size() > 2 && name[2] >= 'A' && name[2] <= 'Z') {
    name.erase(0, 2);
    name[0] = static_cast<char>(name[0] - 'A' + 'a');
    if (name.starts_with("iD3")) name.replace(0, 3, "id3");
  }
  return name;
}

std::int32_t tab_of(std::string_view key, std::int32_t otherwise) {
  const std::string name = without_is(key);
  const auto found = std::ranges::find_if(prefixes, [&](const Prefix& p) { return name.starts_with(p.text); });
  return found == prefixes.end() ? otherwise : found->tab;
}

}  // namespace

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
  for (QScrollArea*& frame : frames_) {
    frame = new QScrollArea(panels_);
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
  for (const MethodTitle& title : method_titles) {
    auto* item = new QListWidgetItem(icon(title.icon), localized_text(title.key), list_);
    item->setSizeHint({0, line + line / 3});
    text_width = std::max(text_width, list_->fontMetrics().horizontalAdvance(item->text()));
  }
  const int width = text_width + list_->iconSize().width() + line * 3 / 2;
  list_->setMinimumWidth(width);
  list_->setMaximumWidth(width * 3 / 2);
  splitter_->setSizes({width, width * 4});
  connect(list_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row >= 0 && row != app_.model().values().selectedTab) app_.options().select_tab(row);
  });
}

void MethodArea::make_panel(std::int32_t tab) {
  QScrollArea* frame = frames_.at(static_cast<std::size_t>(tab));
  if (frame->widget() != nullptr) return;
  frame->setWidget(make_method_panel(tab, app_, *bindings_, frame));
  order_tabs(*this);
}

void MethodArea::show_tab() {
  const std::int32_t tab =
      std::clamp(app_.model().values().selectedTab, 0, static_cast<std::int32_t>(frames_.size()) - 1);
  if (panels_->currentIndex() == tab && frames_.at(static_cast<std::size_t>(tab))->widget() != nullptr) return;
  list_->setCurrentRow(tab);
  make_panel(tab);
  panels_->setCurrentIndex(tab);
}

void MethodArea::focus_methods() const {
  list_->setFocus();
}

void MethodArea::focus_setting(std::string_view key) {
  const std::int32_t tab = tab_of(key, app_.model().values().selectedTab);
  if (tab != app_.model().values().selectedTab) app_.options().select_tab(tab);
  make_panel(tab);
  QWidget* field = bindings_->field_of(key);
  if (field == nullptr) return;
  frames_.at(static_cast<std::size_t>(tab))->ensureWidgetVisible(field);
  field->setFocus(Qt::OtherFocusReason);
}

}  // namespace brindle
