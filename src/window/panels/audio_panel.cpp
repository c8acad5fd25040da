#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <algorithm>
#include <memory>
#include <vector>

#include "app/options_controller.h"
#include "app/window_model.h"
#include "window/mask_rows.h"
#include "window/method_panels.h"
#include "window/text.h"
#include "window/token_strip.h"

namespace brindle {
namespace {

constexpr std::int32_t audio_items = 1;

// Widgets side by side, and on the next line where there is no more room.
class FlowLayout final : public QLayout {
 public:
  explicit FlowLayout(QWidget* parent) : QLayout(parent) {
    setContentsMargins(0, 0, 0, 0);
    setSpacing(parent->style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing, nullptr, parent));
  }

  void addItem(QLayoutItem* item) override { items_.emplace_back(item); }
  int count() const override { return static_cast<int>(items_.size()); }
  QLayoutItem* itemAt(int index) const override {
    return index >= 0 && index < count() ? items_[static_cast<std::size_t>(index)].get() : nullptr;
  }
  QLayoutItem* takeAt(int index) override {
    if (itemAt(index) == nullptr) return nullptr;
    QLayoutItem* item = items_[static_cast<std::size_t>(index)].release();
    items_.erase(items_.begin() + index);
    return item;
  }
  Qt::Orientations expandingDirections() const override { return {}; }
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override { return lay_out({0, 0, width, 0}, false); }
  QSize sizeHint() const override;
  QSize minimumSize() const override;
  void setGeometry(const QRect& rect) override;

 private:
  /// The height that it takes; moves the items when it is to.
  int lay_out(const QRect& rect, bool moves) const;

  std::vector<std::unique_ptr<QLayoutItem>> items_;
};

QSize FlowLayout::sizeHint() const {
  QSize size;
  for (const auto& item : items_) {
    const QSize hint = item->sizeHint();
    size = {size.width() + hint.width() + (size.isEmpty() ? 0 : spacing()), std::max(size.height(), hint.height())};
  }
  return size;
}

QSize FlowLayout::minimumSize() const {
  QSize size;
  for (const auto& item : items_) size = size.expandedTo(item->minimumSize());
  return size;
}

void FlowLayout::setGeometry(const QRect& rect) {
  QLayout::setGeometry(rect);
  lay_out(rect, true);
}

int FlowLayout::lay_out(const QRect& rect, bool moves) const {
  QPoint at = rect.topLeft();
  int line_height = 0;
  for (const auto& item : items_) {
    const QSize size = item->sizeHint();
    if (at.x() > rect.left() && at.x() + size.width() > rect.right() + 1) {
      at = {rect.left(), at.y() + line_height + spacing()};
      line_height = 0;
    }
    if (moves) item->setGeometry({at, size});
    at.rx() += size.width() + spacing();
    line_height = std::max(line_height, size.height());
  }
  return at.y() + line_height - rect.top();
}

QWidget* audio_mask_row(const PanelContext& context) {
  BrindleAppController& controller = context.controller;
  TokenStrip* strip = mask_strip(context, "id3RenamingTagsList", "AUDIOMASKHINT");
  QPushButton* remove = push_button("id3RenamingMaskRemoveLast", "REMOVELAST",
                                    [&controller] { controller.options().id3RenamingMaskRemoveLast(); });
  enable_when(context, {"id3RenamingTagsList"}, {remove},
              [](const RenameSettings& settings) { return !settings.id3RenamingTagsList.empty(); });
  return line({"MASKLABEL", strip, remove});
}

QWidget* token_row(const PanelContext& context) {
  auto* buttons = new QWidget;
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
  policy.setHeightForWidth(true);
  buttons->setSizePolicy(policy);
  auto* flow = new FlowLayout(buttons);
  for (const std::u16string_view token : audio_tokens) {
    const std::string name = utf8(qt_text(token.substr(1, token.size() - 2)));
    flow->addWidget(push_button(
        name, name, [token, &controller = context.controller] { controller.options().id3RenamingMaskActions(token); }));
  }
  return line({"ADDFIELD", buttons});
}

QWidget* custom_text_row(const PanelContext& context) {
  auto* text = new QLineEdit;
  text->setObjectName(QStringLiteral("id3CustomText"));
  text->setAccessibleName(localized_text("ADDOWNTEXT"));
  text->setClearButtonEnabled(true);
  const auto add = [text, &controller = context.controller] {
    if (text->text().isEmpty()) return;
    controller.options().id3RenamingMaskActions(utf16(u'<' + text->text() + u'>'));
    text->clear();
  };
  QPushButton* button = push_button("id3AddCustomText", "ADDTOMASK", add);
  button->setEnabled(false);
  QObject::connect(text, &QLineEdit::returnPressed, text, add);
  QObject::connect(text, &QLineEdit::textChanged, button,
                   [button](const QString& typed) { button->setEnabled(!typed.isEmpty()); });
  return line({text, button});
}

}  // namespace

QWidget* make_audio_panel(const PanelContext& context, QWidget* parent) {
  PanelFrame panel(Method::audio, parent);
  panel.head(audio_mask_row(context));
  panel.head(token_row(context));
  FormColumn left(panel.columns());
  left.row("ADDOWNTEXT", custom_text_row(context));
  add_extensions_row(context, left, "id3Extensions", audio_items);
  FormColumn right(panel.columns());
  add_switched_text(context, right, "isID3RenamingSeperator", "WITHSEPARATOR", "id3RenamingSeperator",
                    "MASKSEPARATORTIP");
  add_switched_text(context, right, "isID3RenamingColonReplace", "REPLACECOLONS", "id3RenamingColonReplace",
                    "REPLACECOLONSTIP");
  panel.foot(context.controller.model());
  return panel.widget();
}

}  // namespace brindle
