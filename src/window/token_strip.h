#pragma once

// A mask as a row of chips, a chip a field; texts of the user's own look different. Goes over as many lines as it
// needs.

#include <QStringList>
#include <QWidget>
#include <vector>

#include "settings/rename_settings.h"

namespace brindle {

class TokenStrip final : public QWidget {
 public:
  /// `hint` is shown while there are no chips.
  explicit TokenStrip(const QString& hint, QWidget* parent = nullptr);

  void set_fields(const FieldList& fields);
  /// What the chips say, for tests and screen readers.
  QStringList texts() const;

  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Chip {
    QString text;
    bool is_custom = false;
  };

  std::vector<QRect> places(int width) const;
  QMargins margins() const;
  int chip_height() const;

  QString hint_;
  std::vector<Chip> chips_;
};

/// What a field of a mask is called in the window: "Date", or a text of the user's own in quotation marks.
QString field_title(const MetaDataField& field);
bool is_custom_field(const MetaDataField& field);

}  // namespace brindle
