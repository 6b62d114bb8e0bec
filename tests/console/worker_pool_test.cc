// Worker processes: what they print, how they end (exit status, a signal, never started),
// and no more of them at once than asked.
#include "console/worker_pool.h"

#include <gtest/gtest.h>

#include <map>

#include "console/batch_progress.h"
#include "console/worker_output.h"

namespace veltor::console {
namespace {

TEST(WorkerPool, CapturesOutputAndExitStatusOfEachJob) {
  WorkerPool pool("/bin/sh");
  ASSERT_TRUE(pool.Open().ok());
  pool.Start(4, {"-c", "echo out; echo err >&2; exit 3"});
  pool.Start(9, {"-c", "read line; echo \"[$line]\"; exit 0"});  // standard input is empty
  std::map<size_t, WorkerOutcome> ended;
  while (pool.running() > 0) {
    WorkerOutcome w = pool.Wait();
    ended[w.job] = w;
  }
  ASSERT_EQ(ended.size(), 2u);
  EXPECT_EQ(ended[4].exit_code, 3);
  EXPECT_EQ(ended[4].out, "out\n");
  EXPECT_EQ(ended[4].err, "err\n");
  EXPECT_FALSE(ended[4].signal.has_value());
  EXPECT_EQ(ended[9].exit_code, 0);
  EXPECT_EQ(ended[9].out, "[]\n");
}

TEST(WorkerPool, AWorkerKilledByASignalIsReportedWithTheSignal) {
  WorkerPool pool("sh");  // looked up in PATH
  ASSERT_TRUE(pool.Open().ok());
  pool.Start(0, {"-c", "echo partial; kill -SEGV $$"});
  WorkerOutcome w = pool.Wait();
  EXPECT_EQ(w.signal, 11);
  EXPECT_FALSE(w.exit_code.has_value());
  EXPECT_EQ(w.out, "partial\n");
}

TEST(WorkerPool, AProgramThatCannotStartIsAnOutcomeNotACrash) {
  WorkerPool pool("/no/such/program");
  ASSERT_TRUE(pool.Open().ok());
  pool.Start(1, {});
  ASSERT_EQ(pool.running(), 1u);
  WorkerOutcome w = pool.Wait();
  EXPECT_EQ(w.job, 1u);
  EXPECT_NE(w.start_error.find("/no/such/program"), std::string::npos) << w.start_error;
  EXPECT_EQ(pool.running(), 0u);
}

TEST(WorkerOutput, KeepsTheCountsAndTheFirstRealError) {
  std::string out =
      "Command: VELTOR_HAS_OD\nSelect objects: \nSelected: 167\nError: table not found.\n"
      "Completed: 3 out of 4\r\nUpdated 2 records\nCommand: Selected\n";
  EXPECT_EQ(ResultLines(out),
            (std::vector<std::string>{"Selected: 167", "Completed: 3 out of 4", "Updated 2 records"}));
  EXPECT_EQ(FirstError(out, ""), "Error: table not found.");
  EXPECT_EQ(FirstError(out, "veltor: warning: dropped 2 tags\n\nveltor: script line 4 refused: x\n"),
            "veltor: script line 4 refused: x");
  EXPECT_EQ(FirstError("Selected: 1\n", "veltor: warning: w\n"), "");
}

TEST(BatchProgress, SaysWhatIsLeftAndEstimatesOnceADrawingHasFinished) {
  EXPECT_EQ(BatchProgressText({0, 0, 40}, 3), "0 done, 0 failed, 40 left");
  // 10 finished in 20 s: 2 s each, 30 left.
  EXPECT_EQ(BatchProgressText({8, 2, 30}, 20), "8 done, 2 failed, 30 left, about 1 min 0 s to go");
  EXPECT_EQ(BatchProgressText({1, 0, 3}, 1.5), "1 done, 0 failed, 3 left, about 5 s to go");
  EXPECT_EQ(BatchProgressText({1, 0, 2000}, 10), "1 done, 0 failed, 2000 left, about 5 h 33 min to go");
  EXPECT_EQ(BatchProgressText({5, 0, 0}, 10), "5 done, 0 failed, 0 left");
}

}  // namespace
}  // namespace veltor::console
