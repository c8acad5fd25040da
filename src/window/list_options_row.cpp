#include "window/list_options_row.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QSignalBlocker>

#include "app/brindle_app_controller.h"
#include "app/list_controller.h"
#include "app/preferences_controller.h"
#include "app/window_model.h"
#include "window/setting_bindings.h"
#include "window/text.h"
#include "window/theme.h"

namespace brindle {
namespace {

template <class Button>
Button* button(QWidget* parent, const char* name, std::string_view key) {
  auto* made = new Button(text_with_mnemonic(key), parent);
  made->setObjectName(QString::fromLatin1(name));
  return made;
}

// Shows what the controller says, and calls it: neither the mode nor the hidden items are plain fields.
class ListOptionsRow final : public QWidget {
 public:
  ListOptionsRow(BrindleAppController& app, SettingBindings& bindings, QWidget* parent)
      : QWidget(parent),
        model_(app.model()),
        list_commands_(app.list()),
        preferences_(app.preferences()),
        files_(button<QRadioButton>(this, "modeFiles", "LISTMODEFILES")),
        folders_(button<QRadioButton>(this, "modeFolders", "LISTMODEFOLDERS")),
        subfolders_(button<QCheckBox>(this, "isIncludeSubFolders", "LISTSUBFOLDERS")),
        hidden_(button<QCheckBox>(this, "optionHidden", "LISTHIDDEN")) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(spacing(*this) * 3 / 2);
    row->addWidget(plain_label(localized_text("LISTMODE"), this));
    for (QWidget* part : {static_cast<QWidget*>(files_), static_cast<QWidget*>(folders_)}) row->addWidget(part);
    row->addSpacing(spacing(*this));
    for (QWidget* part : {static_cast<QWidget*>(subfolders_), static_cast<QWidget*>(hidden_)}) row->addWidget(part);
    row->addStretch();
    call_controller();
    bindings.follow({"isFiles", "isFolders", "isIncludeSubFolders"}, [this](const RenameSettings&) { show_state(); });
    observer_ = model_.add_observer([this](ChangedSet) { show_state(); });
  }
  ~ListOptionsRow() override { model_.remove_observer(observer_); }

 private:
  void call_controller() {
    connect(folders_, &QRadioButton::toggled, this, [this](bool folders) {
      if (folders == model_.values().isFolders) return;
      list_commands_.filesFoldersOptionChanged(folders);
      show_state();
    });
    connect(subfolders_, &QCheckBox::clicked, this, [this](bool on) { list_commands_.setIncludeSubFolders(on); });
    connect(hidden_, &QCheckBox::clicked, this, [this](bool on) { preferences_.setIncludeHidden(on); });
  }

  void show_state() {
    const WindowState& state = model_.state();
    setEnabled(!state.is_busy());
    (model_.values().isFolders ? folders_ : files_)->setChecked(true);
    subfolders_->setChecked(model_.values().isIncludeSubFolders);
    hidden_->setChecked(model_.include_hidden());
  }

  WindowModel& model_;
  ListController& list_commands_;
  PreferencesController& preferences_;
  QRadioButton* files_;
  QRadioButton* folders_;
  QCheckBox* subfolders_;
  QCheckBox* hidden_;
  std::uint32_t observer_ = 0;
};

}  // namespace

QWidget* make_list_options_row(BrindleAppController& app, SettingBindings& bindings, QWidget* parent) {
  return new ListOptionsRow(app, bindings, parent);
}

}  // namespace brindle
