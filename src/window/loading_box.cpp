#include "window/loading_box.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <array>

#include "window/icons.h"
#include "window/plain_text.h"
#include "window/text.h"
#include "window/theme.h"

namespace brindle {
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
      cancel_(new QPushButton(icon("cancel"), localized_text("COMMANDCANCEL"), this)) {
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

}  // namespace brindle
