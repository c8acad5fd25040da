#include <QLineEdit>
#include <QPushButton>

#include "app/options_controller.h"
#include "app/window_model.h"
#include "window/example_line.h"
#include "window/flow_layout.h"
#include "window/mask_rows.h"
#include "window/method_panels.h"
#include "window/text.h"
#include "window/token_strip.h"

namespace brindle {
namespace {

constexpr std::int32_t audio_items = 1;

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
  panel.foot(new ExampleLine(Method::audio, context.controller.model()));
  return panel.widget();
}

}  // namespace brindle
