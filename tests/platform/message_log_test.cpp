#include "platform/message_log.h"

#include <gmock/gmock.h>

#include <string>

namespace brindle::test {
namespace {

template <class Work>
std::string said_by(Work work) {
  ::testing::internal::CaptureStderr();
  work();
  return ::testing::internal::GetCapturedStderr();
}

TEST(MessageLog, says_what_repeats_once_and_counts_the_rest) {
  report_repeated();
  const std::string said = said_by([] {
    for (int i = 0; i < 10'000; ++i) {
      const auto path = [i] { return "/photos/" + std::to_string(i); };
      const MessageSubject subject(path);
      log_failure("first", "it is damaged");
      log_failure("second", "odd number " + std::to_string(i % 100));
    }
    log_failure("third", "once");
    report_repeated();
    log_failure("third", "once");
  });
  EXPECT_EQ(said,
            "Error in first : it is damaged (in “/photos/0”)\n"
            "Error in second : odd number 0 (in “/photos/0”)\n"
            "Error in second : odd number 1 (in “/photos/1”)\n"
            "Error in second : odd number 2 (in “/photos/2”)\n"
            "Error in second : odd number 3 (in “/photos/3”)\n"
            "Error in second : odd number 4 (in “/photos/4”)\n"
            "Error in third : once\n"
            "Error in first : and 9999 more like this\n"
            "Error in second : and 9995 more like this\n"
            "Error in third : once\n");
  report_repeated();
}

TEST(MessageLog, shows_nothing_that_a_terminal_would_obey) {
  EXPECT_EQ(said_by([] { log_line("a\x1b[2J\nb\x7f\u009b\u202Ec\xff d"); }),
            "a\uFFFD[2J\uFFFDb\uFFFD\uFFFD\uFFFDc\uEFFF d\n");
}

}  // namespace
}  // namespace brindle::test
