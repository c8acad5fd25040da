#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "app/disposal.h"
#include "support/no_more_threads.h"
#include "window/application_service.h"
#include "window/main_thread.h"
#include "window/window_fixture.h"

namespace brindle::test {
namespace {

TEST(Worker, does_its_work_also_where_the_system_has_no_thread_for_it) {
  QtMainThread main_thread;
  QtWorker worker(main_thread);
  for (const bool scarce : {false, true, false}) {
    const auto no_more = scarce ? std::make_unique<NoMoreThreads>() : nullptr;
    bool is_finished = false;
    std::thread::id at_work;
    worker.run([&] { at_work = std::this_thread::get_id(); }, [&] { is_finished = true; });
    while (!is_finished) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(at_work == std::this_thread::get_id(), scarce);
  }
}

TEST(Disposal, frees_what_it_was_given_whatever_thread_is_to_be_had) {
  const auto thing = std::make_shared<int>();
  {
    Disposal disposal;
    disposal.throw_away(std::shared_ptr<int>(thing));
    const NoMoreThreads no_more;
    disposal.throw_away(std::shared_ptr<int>(thing));
    disposal.throw_away(std::shared_ptr<int>(thing));
  }
  EXPECT_EQ(thing.use_count(), 1);
}

TEST(ApplicationService, HandsOnInOnePieceWhatComesInQuickSuccession) {
  std::vector<std::vector<std::string>> handed;
  ApplicationService service;
  service.request({"/before"});
  service.set_handler([&](std::vector<std::string> paths) { handed.push_back(std::move(paths)); });
  service.Open({QStringLiteral("file:///a%FF"), QStringLiteral("sftp://x/y")}, {});
  EXPECT_TRUE(QTest::qWaitFor([&] { return handed.size() >= 2; }));
  EXPECT_EQ(handed, (std::vector<std::vector<std::string>>{{}, {"/before", "/a\xff"}}));  // to the front first
}

}  // namespace
}  // namespace brindle::test
