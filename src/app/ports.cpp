#include "app/ports.h"

#include "texts/string_table.h"

namespace brindle {
Alert alert_of_keys(std::string_view title_key, std::string_view message_key) {
  Alert alert;
  alert.title_key = title_key;
  alert.message_key = message_key;
  alert.title = localized(title_key);
  alert.message = localized(message_key);
  return alert;
}

void show_alert(const Ports& ports, std::string_view title_key, std::string_view message_key, AlertStyle style) {
  Alert alert = alert_of_keys(title_key, message_key);
  alert.style = style;
  ports.alerts.show(alert);
}

bool ask(const Ports& ports, std::string_view title_key, std::string_view message_key, std::string_view yes,
         std::string_view no) {
  Alert alert = alert_of_keys(title_key, message_key);
  alert.buttons = {yes, no};
  return ports.alerts.show(alert) == 0;
}

}  // namespace brindle
