#pragma once

#include <QObject>
#include <functional>
#include <memory>

class QSocketNotifier;

namespace brindle {

/// Calls `ended` from the event loop when the system asks the program to end (SIGTERM, SIGINT, SIGHUP). One object a
/// program. Main thread.
class TerminationRequests final : public QObject {
 public:
  explicit TerminationRequests(std::function<void()> ended);
  ~TerminationRequests() override;

 private:
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace brindle
