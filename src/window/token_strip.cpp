#include "window/token_strip.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "metadata/metadata_catalogue.h"
#include "texts/string_table.h"
#include "window/text.h"

namespace brindle {
namespace {

bool is_audio_token(std::u16string_view token) {
  return std::ranges::find(audio_tokens, token) != audio_tokens.end();
}

QColor mixed(const QColor& a, const QColor& b, double part) {
  const auto mix = [part](double x, double y) { return x * (1 - part) + y * part; };
  return QColor::fromRgbF(static_cast<float>(mix(a.redF(), b.redF())), static_cast<float>(mix(a.greenF(), b.greenF())),
                          static_cast<float>(mix(a.blueF(), b.blueF())));
}

}  // namespace

bool is_custom_field(const MetaDataField& field) {
  return !is_audio_token(field.tagCode) && find_field(field.tagCode) == nullptr;
}

QString field_title(const MetaDataField& field) {
  const std::u16string_view token = field.tagCode;
  if (const MetaDataField* known = find_field(token); known != nullptr) {
    return localized_text(utf8(qt_text(std::u16string_view(known->label))));
  }
  bool is_custom = false;
  const QString inner = qt_text(custom_text(token, is_custom));
  if (is_audio_token(token)) return localized_text(utf8(inner));
  return in_one_line(qt_text(localized_format("QUOTED", utf8(is_custom ? inner : qt_text(token)))));
}

TokenStrip::TokenStrip(const QString& hint, QWidget* parent) : QWidget(parent), hint_(hint) {
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

void TokenStrip::set_fields(const FieldList& fields) {
  chips_.clear();
  for (const MetaDataField& field : fields) chips_.push_back({field_title(field), is_custom_field(field)});
  setAccessibleDescription(chips_.empty() ? hint_ : texts().join(QStringLiteral(", ")));
  updateGeometry();
  update();
}

QStringList TokenStrip::texts() const {
  QStringList texts;
  for (const Chip& chip : chips_) texts.append(chip.text);
  return texts;
}

QMargins TokenStrip::margins() const {
  const int gap = fontMetrics().height() / 4;
  return {gap, gap, gap, gap};
}

int TokenStrip::chip_height() const {
  return fontMetrics().height() + fontMetrics().height() / 3;
}

std::vector<QRect> TokenStrip::places(int width) const {
  const QMargins margin = margins();
  const int gap = margin.left();
  const int right = width - margin.right();
  std::vector<QRect> rects;
  QPoint at(margin.left(), margin.top());
  for (const Chip& chip : chips_) {
    const int wanted = fontMetrics().horizontalAdvance(chip.text) + fontMetrics().height();
    const int chip_width = std::min(wanted, std::max(1, right - margin.left()));
    if (at.x() > margin.left() && at.x() + chip_width > right) at = {margin.left(), at.y() + chip_height() + gap};
    rects.emplace_back(at, QSize(chip_width, chip_height()));
    at.rx() += chip_width + gap;
  }
  return rects;
}

int TokenStrip::heightForWidth(int width) const {
  const std::vector<QRect> rects = places(width);
  const int bottom = rects.empty() ? margins().top() + chip_height() : rects.back().bottom() + 1;
  return bottom + margins().bottom();
}

QSize TokenStrip::sizeHint() const {
  const int width = fontMetrics().averageCharWidth() * 40;
  return {width, heightForWidth(width)};
}

QSize TokenStrip::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * 20, margins().top() + chip_height() + margins().bottom()};
}

void TokenStrip::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QPalette colours = palette();
  const QColor line = mixed(colours.color(QPalette::Base), colours.color(QPalette::Text), 0.25);
  painter.setPen(line);
  painter.setBrush(colours.color(QPalette::Base));
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
  if (chips_.empty()) {
    painter.setPen(colours.color(QPalette::PlaceholderText));
    const QRect inside = rect().marginsRemoved(margins()).adjusted(margins().left(), 0, 0, 0);
    painter.drawText(inside, Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(hint_, Qt::ElideRight, inside.width()));
    return;
  }
  const std::vector<QRect> rects = places(width());
  for (std::size_t i = 0; i < rects.size(); ++i) {
    const QColor accent = chips_[i].is_custom ? colours.color(QPalette::Text) : colours.color(QPalette::Highlight);
    painter.setPen(mixed(colours.color(QPalette::Base), accent, chips_[i].is_custom ? 0.25 : 0.6));
    painter.setBrush(mixed(colours.color(QPalette::Base), accent, chips_[i].is_custom ? 0.06 : 0.2));
    const QRectF shape = QRectF(rects[i]).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.drawRoundedRect(shape, shape.height() / 2, shape.height() / 2);
    painter.setPen(colours.color(QPalette::Text));
    const QRect inside = rects[i].adjusted(fontMetrics().height() / 2, 0, -fontMetrics().height() / 2, 0);
    painter.setClipRect(rects[i]);
    painter.drawText(rects[i], Qt::AlignCenter,
                     fontMetrics().elidedText(chips_[i].text, Qt::ElideRight, inside.width() + 1));
    painter.setClipping(false);
  }
}

}  // namespace brindle
