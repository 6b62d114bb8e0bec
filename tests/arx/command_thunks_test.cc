// The fixed table of command functions the plug-in registers with the host.
#include <gtest/gtest.h>

#include <set>

#include "app/command_table.h"
#include "arx/command_thunks.h"

namespace veltor::arx {
namespace {

class CommandThunks : public ::testing::Test {
 protected:
  void SetUp() override { UnbindAllThunks(); }
  void TearDown() override { UnbindAllThunks(); }
};

TEST_F(CommandThunks, ThereIsOneForEveryCommandTheModuleRegisters) {
  EXPECT_EQ(kCommandThunkCount, app::CommandTable().size() + app::AutoCommands().size());
  std::set<CommandThunk> distinct;
  for (size_t i = 0; i < kCommandThunkCount; ++i) distinct.insert(ThunkAt(i));
  EXPECT_EQ(distinct.size(), kCommandThunkCount);
  EXPECT_EQ(distinct.count(nullptr), 0u);
  EXPECT_EQ(ThunkAt(kCommandThunkCount), nullptr);
}

TEST_F(CommandThunks, EachRunsItsOwnHandlerAndAFreeOneNothing) {
  int first = 0, second = 0;
  CommandThunk a = BindFreeThunk([&] { ++first; });
  CommandThunk b = BindFreeThunk([&] { ++second; });
  ASSERT_NE(a, nullptr);
  ASSERT_NE(b, nullptr);
  EXPECT_NE(a, b);
  b();
  b();
  a();
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 2);
  EXPECT_EQ(BoundThunkCount(), 2u);
  UnbindThunk(b);
  b();
  EXPECT_EQ(second, 2);
  EXPECT_EQ(BoundThunkCount(), 1u);
  // The freed slot is the next one bound.
  EXPECT_EQ(BindFreeThunk([&] { second += 10; }), b);
  b();
  EXPECT_EQ(second, 12);
  UnbindAllThunks();
  a();
  EXPECT_EQ(first, 1);
  EXPECT_EQ(BoundThunkCount(), 0u);
}

TEST_F(CommandThunks, AnExceptionStopsAtTheThunkAndTheTableRunsOut) {
  CommandThunk throwing = BindFreeThunk([] { throw 42; });
  EXPECT_NO_THROW(throwing());
  for (size_t i = 1; i < kCommandThunkCount; ++i) EXPECT_NE(BindFreeThunk([] {}), nullptr);
  EXPECT_EQ(BindFreeThunk([] {}), nullptr);
}

}  // namespace
}  // namespace veltor::arx
