#pragma once

// What the controllers ask of a user interface. The window implements these ports, tests script them. Texts are UTF-8
// and localised already; paths are on-disk bytes.
//
// Everything is called on the main thread except where it is said otherwise.

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "texts/string_table.h"

namespace brindle {

enum class AlertStyle : std::uint8_t { informational, warning, critical };

/// A question or a message that must be answered before anything goes on.
struct Alert {
  std::string_view title_key;    ///< key of the string table; what tests and help look it up by
  std::string_view message_key;  ///< "" for a message that has no key
  std::string title;
  std::string message;
  std::string informative_text;             ///< smaller, below the message; may be empty
  std::vector<std::string_view> buttons{};  ///< keys: "YES", "NO", …; the first is the default. Empty: "OK" alone
  AlertStyle style = AlertStyle::warning;
};

class AlertPort {
 public:
  virtual ~AlertPort() = default;
  /// Shows the alert and waits. The index of the chosen button; closing it answers with the last one.
  virtual std::size_t show(const Alert& alert) = 0;
};

/// An open panel.
struct OpenRequest {
  std::string title;
  std::string folder;  ///< where it starts; "" where the platform thinks best
  bool files = true;
  bool folders = false;
  bool multiple = false;
  std::vector<std::string_view> extensions{};  ///< without dots, compared without case; empty: every file
};

/// A save panel, which may create folders and asks before a file is replaced.
struct SaveRequest {
  std::string title;
  std::string folder;
  std::string name;               ///< proposed
  std::string_view extension;     ///< appended when it is missing …
  bool other_extensions = false;  ///< … unless another may be typed
};

class ChooserPort {
 public:
  virtual ~ChooserPort() = default;
  /// The chosen paths, links not resolved; none when cancelled.
  virtual std::vector<std::string> choose(const OpenRequest& request) = 0;
  virtual std::optional<std::string> choose(const SaveRequest& request) = 0;
};

/// The main thread: its queue and its timers.
class MainThreadPort {
 public:
  using TimerId = std::uint64_t;
  virtual ~MainThreadPort() = default;
  /// Calls `call` on the main thread, later and in order. Any thread may post.
  virtual void post(std::function<void()> call) = 0;
  /// Calls `call` once after a while. The id is never 0.
  virtual TimerId start_timer(std::chrono::milliseconds after, std::function<void()> call) = 0;
  /// Forgets a timer; one that has fired or was cancelled is no mistake.
  virtual void cancel_timer(TimerId timer) = 0;
};

/// Where long work runs.
class WorkerPort {
 public:
  virtual ~WorkerPort() = default;
  /// Runs `work` (elsewhere, or before it returns), then `finished` on the main thread. One piece of work at a time.
  virtual void run(std::function<void()> work, std::function<void()> finished) = 0;
};

/// The view that a balloon tooltip points at.
enum class TooltipAnchor : std::uint8_t { file_list, remove_button, export_button };

/// What else the desktop does.
class DesktopPort {
 public:
  virtual ~DesktopPort() = default;

  virtual void show_tooltip(TooltipAnchor anchor, std::string_view key, const std::string& text) = 0;
  virtual void hide_tooltip() = 0;

  /// Commits what is being typed: fields write their texts into the settings before this returns.
  virtual void end_editing() = 0;
  /// Puts the keyboard into the field of a setting, on its tab.
  virtual void focus_setting(std::string_view key) = 0;
  virtual void focus_list() = 0;
  virtual void bring_to_front() = 0;
  virtual void beep() = 0;

  /// Opens a file with the program that the desktop has for it; false when that failed.
  virtual bool open_with_default_application(const std::string& path) = 0;
  virtual void show_help(std::string_view page) = 0;

  /// The files on the clipboard (as file managers put them there), in order; empty when there are none.
  virtual std::vector<std::string> files_on_clipboard() = 0;

  /// Asks for the text of a custom tag; none or "" when it was cancelled.
  virtual std::optional<std::u16string> ask_custom_tag() = 0;

  /// Ends the program, after a start that failed.
  virtual void quit() = 0;
};

/// All of them. They outlive every controller.
struct Ports {
  AlertPort& alerts;
  ChooserPort& chooser;
  MainThreadPort& main_thread;
  WorkerPort& worker;
  DesktopPort& desktop;
};

// Every alert is made and shown by these.

/// A message of the program's own words. Without a title's key the title is the program's name.
Alert make_alert_of(std::string_view title_key, std::string_view message_key, std::string message);
/// The same with the text of a key, filled with the values.
template <class... Values>
Alert make_alert(std::string_view title_key, std::string_view message_key, const Values&... values) {
  return make_alert_of(title_key, message_key, localized_format(message_key, values...));
}

/// With an OK button; `informative_text` stands below the message.
void show_alert(const Ports& ports, Alert alert, AlertStyle style = AlertStyle::warning,
                std::string informative_text = {});
/// With two buttons. Whether the first was chosen.
bool ask(const Ports& ports, Alert question, std::string_view yes = "YES", std::string_view no = "NO");

}  // namespace brindle
