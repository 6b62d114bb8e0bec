// A command that is cancelled (script end, "*Cancel*", Ctrl-C, CANCELCMD) or that fails
// leaves nothing of itself behind; a command that ends normally is one undo step, also when
// it changed nothing; a person is asked again after a refused answer.
#include "../drawing/dxf/test_files.h"
#include "session_fixture.h"

namespace veltor::session {
namespace {

class CancelTest : public testing::SessionFixture {
 protected:
  CancelTest() {
    RegisterObjectDataCommands(session_);
    RegisterInfoCommands(session_);
  }
  // A command that adds a point, then asks a question, then adds another point.
  void RegisterTwoStep() {
    od::CommandInfo info{"TEST", "TWOSTEP", "TWOSTEP", od::kCmdModal, ""};
    ASSERT_TRUE(session_
                    .AddCommand(info,
                                [this] {
                                  AddPoint("0", 1, 1);
                                  od::PromptResult<std::string> a = session_.Ed().GetString("Go on? ", false);
                                  if (a.status != od::PromptStatus::kOk) return;
                                  AddPoint("0", 2, 2);
                                })
                    .ok());
  }
  std::string Bytes() { return testing::WriteToString(doc().store()); }
};

TEST_F(CancelTest, ACommandCutOffByTheScriptsEndLeavesNothingBehind) {
  std::string before = Bytes();
  // ODTABLE New with one column typed and the script ending before the list is finished.
  Answer({"New", "Wells", "", "ID", "Integer", "0", ""});
  ASSERT_TRUE(session_.Execute("ODTABLE"));
  EXPECT_FALSE(container().GetTable("Wells").ok());
  EXPECT_EQ(Bytes(), before);
  EXPECT_FALSE(doc().modified());
  // The transcript says the command was cancelled where the input ended.
  EXPECT_NE(out().find("Column name or Enter to finish: *Cancel*\n"), std::string::npos) << out();
  // Nothing is left to undo either.
  ClearOut();
  ASSERT_TRUE(session_.Execute("U"));
  EXPECT_EQ(out(), "Everything has been undone\n");
}

TEST_F(CancelTest, CancelTypedOrPostedTakesBackWhatTheCommandDid) {
  RegisterTwoStep();
  std::string before = Bytes();
  Answer({"*Cancel*"});
  ASSERT_TRUE(session_.Execute("TWOSTEP"));
  EXPECT_EQ(Bytes(), before);
  EXPECT_EQ(db().ModelSpaceEntities().size(), 0u);

  // The handle seed is taken back too: the next entity gets the handle it would have had.
  session_.Ed().PostCommand("CANCELCMD");  // no command runs: nothing to cancel
  Answer({"yes"});
  ASSERT_TRUE(session_.Execute("TWOSTEP"));
  ASSERT_EQ(db().ModelSpaceEntities().size(), 2u);
  EXPECT_TRUE(doc().modified());
}

TEST_F(CancelTest, AFailingCommandIsTakenBackAndReported) {
  od::CommandInfo info{"TEST", "BROKEN", "BROKEN", od::kCmdModal, ""};
  ASSERT_TRUE(session_
                  .AddCommand(info,
                              [this] {
                                AddPoint();
                                throw std::runtime_error("out of cheese");
                              })
                  .ok());
  std::string before = Bytes();
  Answer({});
  ASSERT_TRUE(session_.Execute("BROKEN"));
  EXPECT_EQ(out(), "Error: BROKEN failed: out of cheese\n");
  EXPECT_EQ(Bytes(), before);
  EXPECT_FALSE(doc().modified());
}

TEST_F(CancelTest, ACancelledTransparentCommandDoesNotCancelTheOneItInterrupted) {
  RegisterTwoStep();
  // 'ZOOM runs inside the prompt and is cancelled at its own prompt; TWOSTEP goes on.
  Answer({"'ZOOM", "*Cancel*", "yes"});
  ASSERT_TRUE(session_.Execute("TWOSTEP"));
  EXPECT_EQ(db().ModelSpaceEntities().size(), 2u) << out();
}

TEST_F(CancelTest, EveryFinishedCommandIsAnUndoStepNamedByU) {
  od::EntityId point = AddPoint();
  bool modified = doc().modified();
  std::string before = Bytes();
  session_.Ed().SetPickfirst({point});
  Answer({});
  ASSERT_TRUE(session_.Execute("LIST"));
  ClearOut();
  ASSERT_TRUE(session_.Execute("U"));
  EXPECT_EQ(out(), "LIST\n");
  // Undoing a step that changed nothing changes nothing.
  EXPECT_EQ(Bytes(), before);
  EXPECT_EQ(doc().modified(), modified);
}

TEST_F(CancelTest, APersonIsAskedAgainAfterARefusedKeyword) {
  AddPoint("Roads");
  input_ = std::make_unique<LinesInput>(std::vector<std::string>{"Frost", "Freeze", "roads"},
                                        [this](const std::string& t) { out_ += t; },
                                        /*stop_at_refusal=*/false);
  session_.SetInput(input_.get());
  ASSERT_TRUE(session_.Execute("LAYER"));
  EXPECT_NE(out().find("Requires ?, Freeze"), std::string::npos);
  EXPECT_NE(out().find("1 layer changed.\n"), std::string::npos) << out();
  for (const model::LayerInfo& layer : model::Layers(doc()))
    EXPECT_EQ(layer.frozen, layer.name == "Roads") << layer.name;
}

TEST_F(CancelTest, LayerNamesMatchWithoutRegardToCaseInAnyScript) {
  AddPoint("Дороги");
  Answer({"Freeze", "дороги"});
  ASSERT_TRUE(session_.Execute("LAYER"));
  EXPECT_NE(out().find("1 layer changed.\n"), std::string::npos) << out();
  EXPECT_NE(db().FindLayer("ДОРОГИ"), od::kNullId);
}

// A terminal: lines and Ctrl-D (end of input) as a person types them.
class TypedInput : public InputSource {
 public:
  explicit TypedInput(std::vector<InputLine> lines) : lines_(std::move(lines)) {}
  InputLine ReadLine(const std::string& prompt) override {
    prompts += prompt + "\n";
    if (next_ >= lines_.size()) return {InputLine::Kind::kEnd, {}};
    return lines_[next_++];
  }
  std::string prompts;

 private:
  std::vector<InputLine> lines_;
  size_t next_ = 0;
};

TEST_F(CancelTest, EndOfInputAtATerminalAsksAboutUnsavedWorkAsQuitDoes) {
  RegisterFileCommands(session_);
  session_.SetInteractive(true);
  AddPoint();
  const InputLine ctrl_d{InputLine::Kind::kEnd, {}};
  // Ctrl-D, then Cancel at the question: the session goes on; Ctrl-D again, then No: it ends.
  TypedInput typed({ctrl_d, {InputLine::Kind::kLine, "Cancel"}, ctrl_d, {InputLine::Kind::kLine, "No"},
                    {InputLine::Kind::kLine, "LIST"}});
  session_.SetInput(&typed);
  session_.RunLoop();
  EXPECT_EQ(typed.prompts,
            "Command: \nSave changes to test.dxf? [Yes/No/Cancel] <Yes>: \n"
            "Command: \nSave changes to test.dxf? [Yes/No/Cancel] <Yes>: \n");
  EXPECT_TRUE(session_.quit_requested());
}

TEST_F(CancelTest, InputThatStaysAtItsEndDoesNotKeepTheSessionAsking) {
  RegisterFileCommands(session_);
  session_.SetInteractive(true);
  AddPoint();
  TypedInput typed({});
  session_.SetInput(&typed);
  session_.RunLoop();  // must return
  EXPECT_FALSE(session_.quit_requested());
}

}  // namespace
}  // namespace veltor::session
