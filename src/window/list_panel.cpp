#include "window/list_panel.h"

#include <QPushButton>
#include <QTimer>

#include "window/commands.h"
#include "window/empty_hint.h"
#include "window/file_table_view.h"
#include "window/loading_box.h"
#include "window/url_drops.h"

namespace brindle {
namespace {

// Shorter jobs change the list without a box flashing up.
constexpr int milliseconds_before_loading_box = 150;

}  // namespace

ListPanel::ListPanel(BrindleAppController& app, QWidget* parent)
    : QStackedWidget(parent),
      app_(app),
      table_(new FileTableView(app, this)),
      loading_(new LoadingBox(this)),
      hint_(make_empty_hint(this)),
      loading_timer_(new QTimer(this)) {
  setObjectName(QStringLiteral("listPanel"));
  setFrameShape(StyledPanel);
  for (QWidget* page : {static_cast<QWidget*>(table_), static_cast<QWidget*>(loading_), hint_}) addWidget(page);
  accept_file_drops(this, [this](std::vector<std::string> paths) { app_.acceptDrop(std::move(paths)); });
  loading_timer_->setSingleShot(true);
  loading_timer_->setInterval(milliseconds_before_loading_box);
  loading_timer_->callOnTimeout(this, [this] { setCurrentWidget(loading_); });
  observer_ = app_.add_observer([this](ChangedSet changed) {
    if (has(changed, Changed::state)) follow();
  });
  show_page();
}

ListPanel::~ListPanel() {
  app_.remove_observer(observer_);
}

void ListPanel::add_doors(const Commands& commands) {
  add_doors_to_hint(hint_,
                    {commands.action("addFiles"), commands.action("addFolder"), commands.action("addClipboard")});
  connect(loading_->cancel_button(), &QPushButton::clicked, commands.action("cancel"), &QAction::trigger);
}

void ListPanel::follow() {
  const WindowState& state = app_.state();
  if (!state.isExecuting) return show_page();
  hold_still();
  if (state.is_quiet) return;
  loading_->show_state(state);
  if (currentWidget() != loading_ && !loading_timer_->isActive()) loading_timer_->start();
}

// The list belongs to the job: what was drawn of it stays as it is.
void ListPanel::hold_still() {
  if (!table_->updatesEnabled()) return;
  had_focus_ = table_->hasFocus();
  table_->setUpdatesEnabled(false);
}

void ListPanel::show_page() {
  loading_timer_->stop();
  table_->setUpdatesEnabled(true);
  const bool was_loading = currentWidget() == loading_;
  setCurrentWidget(app_.state().shows_empty_hint ? hint_ : static_cast<QWidget*>(table_));
  if (was_loading && std::exchange(had_focus_, false)) table_->setFocus();
}

}  // namespace brindle
