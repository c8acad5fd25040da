#include "window/list_panel.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QList>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>
#include <array>

#include "app/brindle_app_controller.h"
#include "app/list_controller.h"
#include "app/window_model.h"
#include "window/commands.h"
#include "window/file_table_view.h"
#include "window/icons.h"
#include "window/text.h"
#include "window/theme.h"
#include "window/url_drops.h"

namespace brindle {

/// What a job does and how far it is, with a button that stops it. Main thread.
class LoadingBox final : public QWidget {
 public:
  explicit LoadingBox(QWidget* parent);

  void show_state(const WindowState& state);
  QPushButton* cancel_button() const { return cancel_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void show_path();

  QLabel* title_;
  QLabel* path_;
  QProgressBar* progress_;
  QLabel* count_;
  QPushButton* cancel_;
  QString full_path_;
};

namespace {

constexpr std::array<std::string_view, 8> titles = {"",        "JOBLOADING",   "JOBPREVIEW", "JOBRENAME",
                                                    "JOBUNDO", "JOBEXPORTING", "JOBSORTING", "JOBREMOVING"};

// Progress bars count in int; lists may be longer.
constexpr int steps = 10'000;

int step_of(const WindowState& state) {
  const double part = static_cast<double>(state.done) / static_cast<double>(state.total);
  return static_cast<int>(std::min(part, 1.0) * steps);
}

}  // namespace

LoadingBox::LoadingBox(QWidget* parent)
    : QWidget(parent),
      title_(plain_label(this)),
      path_(plain_label(this)),
      progress_(new QProgressBar(this)),
      count_(plain_label(this)),
      cancel_(new QPushButton(icon("cancel"), text_with_mnemonic("COMMANDCANCEL"), this)) {
  setObjectName(QStringLiteral("loadingBox"));
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 1.25);
  title_->setFont(large);
  path_->setObjectName(QStringLiteral("loadingPath"));
  path_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  progress_->setObjectName(QStringLiteral("loadingProgress"));
  progress_->setAccessibleName(localized_text("PROGRESSNAME"));
  progress_->setTextVisible(false);
  count_->setObjectName(QStringLiteral("loadingCount"));
  cancel_->setObjectName(QStringLiteral("loadingCancel"));

  auto* box = new QVBoxLayout();
  box->setSpacing(spacing(*this));
  box->addStretch(2);
  for (QWidget* row : {static_cast<QWidget*>(title_), static_cast<QWidget*>(path_)}) box->addWidget(row);
  box->addWidget(progress_);
  auto* foot = new QHBoxLayout();
  foot->addWidget(count_, 1);
  foot->addWidget(cancel_);
  box->addLayout(foot);
  box->addStretch(3);
  auto* middle = new QHBoxLayout(this);
  middle->addStretch(1);
  middle->addLayout(box, 4);
  middle->addStretch(1);
}

void LoadingBox::show_state(const WindowState& state) {
  title_->setText(localized_text(titles.at(static_cast<std::size_t>(state.job))));
  full_path_ = in_one_line(qt_text(state.status_label));
  show_path();
  progress_->setRange(0, state.total > 0 ? steps : 0);
  if (state.total > 0) progress_->setValue(step_of(state));
  count_->setText(qt_text(state.count_label));
}

void LoadingBox::show_path() {
  path_->setText(path_->fontMetrics().elidedText(full_path_, Qt::ElideMiddle, path_->width()));
}

void LoadingBox::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  show_path();
}

/// What an empty list says: where files go, and buttons that list them.
QWidget* make_empty_hint(QWidget* parent);
/// Puts the buttons below the text.
void add_buttons_to_hint(QWidget* hint, const QList<QAction*>& actions);

namespace {

class HintPicture final : public QWidget {
 public:
  explicit HintPicture(QWidget* parent) : QWidget(parent), icon_(icon("hub")) {
    const int side = fontMetrics().height() * 3;
    setFixedSize(side, side);
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setOpacity(0.55);
    icon_.paint(&painter, rect());
  }

 private:
  QIcon icon_;
};

}  // namespace

QWidget* make_empty_hint(QWidget* parent) {
  auto* hint = new QWidget(parent);
  hint->setObjectName(QStringLiteral("emptyHint"));
  hint->setBackgroundRole(QPalette::Base);
  hint->setAutoFillBackground(true);
  QLabel* title = plain_label(localized_text("HINTTITLE"), hint);
  QFont large = title->font();
  large.setPointSizeF(large.pointSizeF() * 1.4);
  title->setFont(large);
  title->setAlignment(Qt::AlignCenter);
  QLabel* text = plain_label(localized_text("HINTTEXT"), hint);
  text->setWordWrap(true);
  text->setAlignment(Qt::AlignCenter);
  auto* rows = new QVBoxLayout(hint);
  rows->setSpacing(spacing(*hint));
  rows->addStretch(2);
  rows->addWidget(new HintPicture(hint), 0, Qt::AlignHCenter);
  rows->addWidget(title);
  rows->addWidget(text);
  rows->addStretch(3);
  return hint;
}

void add_buttons_to_hint(QWidget* hint, const QList<QAction*>& actions) {
  auto* row = new QHBoxLayout();
  row->setSpacing(spacing(*hint));
  row->addStretch();
  for (QAction* action : actions) {
    auto* button = new QPushButton(action->icon(), action->text(), hint);
    button->setObjectName(QStringLiteral("hint_") + action->objectName());
    QObject::connect(button, &QPushButton::clicked, action, &QAction::trigger);
    QObject::connect(action, &QAction::changed, button, [button, action] { button->setEnabled(action->isEnabled()); });
    row->addWidget(button);
  }
  row->addStretch();
  auto* rows = static_cast<QVBoxLayout*>(hint->layout());  // NOLINT(cppcoreguidelines-pro-type-static-cast-downcast)
  rows->insertLayout(rows->count() - 1, row);
}

namespace {

// Shorter jobs change the list without a box flashing up.
constexpr int milliseconds_before_loading_box = 150;

}  // namespace

ListPanel::ListPanel(BrindleAppController& app, QWidget* parent)
    : QStackedWidget(parent),
      model_(app.model()),
      list_commands_(app.list()),
      table_(new FileTableView(app, this)),
      loading_(new LoadingBox(this)),
      hint_(make_empty_hint(this)),
      loading_timer_(new QTimer(this)) {
  setObjectName(QStringLiteral("listPanel"));
  setFrameShape(StyledPanel);
  for (QWidget* page : {static_cast<QWidget*>(table_), static_cast<QWidget*>(loading_), hint_}) addWidget(page);
  accept_file_drops(this, [this](std::vector<std::string> paths) { list_commands_.acceptDrop(std::move(paths)); });
  loading_timer_->setSingleShot(true);
  loading_timer_->setInterval(milliseconds_before_loading_box);
  loading_timer_->callOnTimeout(this, [this] { setCurrentWidget(loading_); });
  observer_ = model_.add_observer([this](ChangedSet changed) {
    if (has(changed, Changed::state)) show_job();
  });
  show_page();
}

ListPanel::~ListPanel() {
  model_.remove_observer(observer_);
}

void ListPanel::add_buttons(const Commands& commands) {
  add_buttons_to_hint(hint_,
                      {commands.action("addFiles"), commands.action("addFolder"), commands.action("addClipboard")});
  connect(loading_->cancel_button(), &QPushButton::clicked, commands.action("cancel"), &QAction::trigger);
}

void ListPanel::show_job() {
  const WindowState& state = model_.state();
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
  setCurrentWidget(model_.state().shows_empty_hint ? hint_ : static_cast<QWidget*>(table_));
  if (was_loading && std::exchange(had_focus_, false)) table_->setFocus();
}

}  // namespace brindle
