// The command context: exceptions stay inside, a failed or cancelled command is taken back,
// a finished one is one undo step, and the LUPREC bracket and the lock end with the command.
// Run against the embedded host, both inside the session's own group for a typed command and
// alone (where the context opens the group itself).
#include "od/command_context.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "../session/session_fixture.h"
#include "app/command_table.h"
#include "drawing/dxf/writer.h"

namespace veltor::od {
namespace {

class CommandContextTest : public testing::SessionFixture {
 protected:
  void SetUp() override { ASSERT_TRUE(doc().SetLuprec(3).ok()); }

  // The drawing as it would be saved.
  std::string Bytes() {
    char* buffer = nullptr;
    size_t size = 0;
    std::FILE* out = open_memstream(&buffer, &size);
    EXPECT_TRUE(dxf::WriteDxf(doc().store(), out).ok());
    std::fclose(out);
    std::string bytes(buffer, size);
    std::free(buffer);
    return bytes;
  }

  // Registers `handler` as the typed command NAME, run through the context as the module runs
  // its commands.
  void Register(const std::string& name, std::function<void(CommandContext&)> handler) {
    ASSERT_TRUE(session_
                    .AddCommand({"TEST", name, name, kCmdModal, ""},
                                [this, name, handler] { (void)RunCommand(session_, name, handler); })
                    .ok());
  }

  // Adds a point, attaches a record and raises LUPREC: three kinds of change to take back.
 public:
  void Change(CommandContext& context) {
    Table("T", {"NAME"});
    Attach(AddPoint("NEW"), "T");
    ASSERT_TRUE(context.host().WorkingDatabase()->SetIntVar("LUPREC", 7).ok());
  }
};

TEST_F(CommandContextTest, AThrowingCommandPrintsTheErrorAndLeavesTheDrawingAsItWas) {
  std::string before = Bytes();
  bool was_modified = doc().modified();
  Register("BOOM", [this](CommandContext& c) {
    Change(c);
    throw std::runtime_error("disk on fire");
  });
  ASSERT_TRUE(session_.Execute("BOOM"));
  EXPECT_EQ(out(), "Error: BOOM failed: disk on fire\n");
  EXPECT_EQ(Bytes(), before);
  EXPECT_EQ(doc().modified(), was_modified);
  EXPECT_TRUE(container().TableNames().empty());
}

TEST_F(CommandContextTest, WithoutTheSessionsGroupTheContextOpensItsOwn) {
  std::string before = Bytes();
  EXPECT_FALSE(RunCommand(session_, "ALONE", [this](CommandContext& c) {
    Change(c);
    throw 42;  // not a std::exception
  }));
  EXPECT_EQ(out(), "Error: ALONE failed.\n");
  EXPECT_EQ(Bytes(), before);
  EXPECT_FALSE(doc().store().recording());
}

TEST_F(CommandContextTest, ACancelledCommandLeavesNothing) {
  std::string before = Bytes();
  Register("CANCELS", [this](CommandContext& c) {
    Change(c);
    c.Cancel();
  });
  ASSERT_TRUE(session_.Execute("CANCELS"));
  EXPECT_EQ(out(), "");
  EXPECT_EQ(Bytes(), before);
  // Not even an undo step is left: undo finds the step before it, of which there is none.
  EXPECT_TRUE(session_.Undo(1).empty());
}

TEST_F(CommandContextTest, LuprecBracketRestoresAtEveryExit) {
  Database& database = db();
  {
    LuprecBracket bracket(session_);
    EXPECT_EQ(database.GetIntVar("LUPREC"), 8);
  }
  EXPECT_EQ(database.GetIntVar("LUPREC"), 3);

  // Left by an exception, with no undo group to take anything back.
  try {
    LuprecBracket bracket(session_);
    EXPECT_EQ(database.GetIntVar("LUPREC"), 8);
    throw std::runtime_error("x");
  } catch (const std::runtime_error&) {
  }
  EXPECT_EQ(database.GetIntVar("LUPREC"), 3);

  // In commands that finish, cancel and throw.
  int seen = 0;
  auto with_bracket = [&](CommandContext& c, int how) {
    LuprecBracket bracket(c.host());
    seen = *c.host().WorkingDatabase()->GetIntVar("LUPREC");
    if (how == 1) c.Cancel();
    if (how == 2) throw std::runtime_error("x");
  };
  for (int how : {0, 1, 2}) {
    seen = 0;
    (void)RunCommand(session_, "L", [&](CommandContext& c) { with_bracket(c, how); });
    EXPECT_EQ(seen, 8) << how;
    EXPECT_EQ(database.GetIntVar("LUPREC"), 3) << how;
  }
}

TEST_F(CommandContextTest, TheWriteLockEndsWithTheCommand) {
  const session::EmbeddedDatabase& database = sdoc().database;
  for (bool fail : {false, true}) {
    bool locked_inside = false;
    (void)RunCommand(session_, "LOCKS", [&](CommandContext& c) {
      ASSERT_TRUE(c.LockForWrite().ok());
      ASSERT_TRUE(c.LockForWrite().ok());  // a second call keeps the first lock
      locked_inside = database.locked();
      if (fail) throw std::runtime_error("x");
    });
    EXPECT_TRUE(locked_inside);
    EXPECT_FALSE(database.locked()) << fail;
  }
}

TEST_F(CommandContextTest, ModuleHandlersRunThroughTheContext) {
  // A handler of the command table, called outside the session's own catch: the module's
  // wrapper reports the failure and takes the change back.
  std::string before = Bytes();
  static CommandContextTest* self = nullptr;
  self = this;
  od::CommandHandler handler = app::WrapHandler(session_, "VELTOR_X", [](CommandContext& c) {
    self->Change(c);
    throw std::logic_error("bad state");
  });
  handler();
  EXPECT_EQ(out(), "Error: VELTOR_X failed: bad state\n");
  EXPECT_EQ(Bytes(), before);
  // A row without a handler says so and changes nothing.
  ClearOut();
  app::WrapHandler(session_, "VELTOR_Y", nullptr)();
  EXPECT_EQ(out(), "Error: VELTOR_Y is not available in this build.\n");
}

}  // namespace
}  // namespace veltor::od
