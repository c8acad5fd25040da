#include "app/ports.h"

#include <utility>

#include "platform/app_info.h"

namespace brindle {

Alert make_alert_of(std::string_view title_key, std::string_view message_key, std::string message) {
  Alert alert;
  alert.title_key = title_key;
  alert.message_key = message_key;
  alert.title = title_key.empty() ? getAppTitle() : localized(title_key);
  alert.message = std::move(message);
  return alert;
}

void show_alert(const Ports& ports, Alert alert, AlertStyle style, std::string informative_text) {
  alert.style = style;
  alert.informative_text = std::move(informative_text);
  ports.alerts.show(alert);
}

bool ask(const Ports& ports, Alert question, std::string_view yes, std::string_view no) {
  question.buttons = {yes, no};
  return ports.alerts.show(question) == 0;
}

}  // namespace brindle
