// The command stack: names and prefixes, the pick-set and transparent flags, the queue,
// CANCELCMD, LISP functions and the script rules for refused answers.
#include "session_fixture.h"

namespace veltor::session {
namespace {

class CommandStackTest : public testing::SessionFixture {
 protected:
  void Add(const std::string& name, int flags, std::function<void()> handler,
           const std::string& local = "") {
    od::CommandInfo info{"TEST", name, local.empty() ? name : local, flags, ""};
    ASSERT_TRUE(session_.AddCommand(info, std::move(handler)).ok());
  }
  std::vector<std::string> ran_;
};

TEST_F(CommandStackTest, NamesMatchInAnyCaseWithPrefixes) {
  Add("VELTOR_X", od::kCmdModal, [this] { ran_.push_back("x"); }, "VELTOR_LOCAL");
  Answer({});
  EXPECT_TRUE(session_.Execute("veltor_x"));
  EXPECT_TRUE(session_.Execute("_VELTOR_X"));
  EXPECT_TRUE(session_.Execute("veltor_local"));
  EXPECT_FALSE(session_.Execute("_VELTOR_LOCAL"));  // "_" asks for the global name
  EXPECT_FALSE(session_.Execute(".VELTOR_X"));      // "." asks for the host's own command
  EXPECT_TRUE(session_.Execute("._select"));
  EXPECT_EQ(ran_.size(), 3u);
  EXPECT_FALSE(session_.Execute("VELTOR_RENAME_COLUMNS"));
  EXPECT_NE(out().find("Unknown command \"VELTOR_RENAME_COLUMNS\".  Type HELP for a list of commands.\n"),
            std::string::npos);
  EXPECT_FALSE(session_.AddCommand({"TEST", "veltor_x", "veltor_x", 0, ""}, [] {}).ok());
}

TEST_F(CommandStackTest, PickSetCommandsSeeThePickfirstAndModalOnesClearIt) {
  od::EntityId a = AddPoint();
  od::EntityList seen;
  Add("PICKSET", od::kCmdUsePickSet, [&] { seen = session_.Ed().ImpliedSelection(); });
  Add("MODAL", od::kCmdModal, [&] { seen = session_.Ed().ImpliedSelection(); });
  Answer({});
  sdoc().pickfirst = {a};
  session_.Execute("PICKSET");
  EXPECT_EQ(seen, od::EntityList{a});
  session_.Execute("MODAL");
  EXPECT_TRUE(seen.empty());
  EXPECT_TRUE(sdoc().pickfirst.empty());
}

TEST_F(CommandStackTest, TransparentCommandsRunInsideAPrompt) {
  Add("INNER", od::kCmdTransparent, [this] { ran_.push_back("inner"); });
  Add("NOTTRANSPARENT", od::kCmdModal, [this] { ran_.push_back("modal"); });
  std::string answer;
  Add("OUTER", od::kCmdModal, [&] { answer = session_.Ed().GetString("Name: ", false).value; });
  Answer({"OUTER", "'INNER", "'NOTTRANSPARENT", "done"});
  session_.RunLoop();
  EXPECT_EQ(ran_, (std::vector<std::string>{"inner"}));
  EXPECT_EQ(answer, "done");
  EXPECT_NE(out().find("** That command may not be invoked transparently **"), std::string::npos);
}

TEST_F(CommandStackTest, QueuedStringsRunAfterTheCurrentCommand) {
  Add("FIRST", od::kCmdModal, [this] {
    session_.Ed().SendStringToExecute("SECOND\n");
    ran_.push_back("first");
  });
  Add("SECOND", od::kCmdModal, [this] { ran_.push_back("second"); });
  Answer({"FIRST"});
  session_.RunLoop();
  EXPECT_EQ(ran_, (std::vector<std::string>{"first", "second"}));
}

TEST_F(CommandStackTest, QueuedTextAnswersPromptsWithSpacesEndingAnswers) {
  std::vector<std::string> answers;
  Add("ASK", od::kCmdModal, [&] {
    answers.push_back(session_.Ed().GetString("A: ", false).value);
    answers.push_back(session_.Ed().GetString("B: ", true).value);
  });
  session_.Ed().SendStringToExecute("_ASK one two three\n");
  Answer({});
  session_.RunQueue();
  EXPECT_EQ(answers, (std::vector<std::string>{"one", "two three"}));
}

TEST_F(CommandStackTest, CancelCmdCancelsTheRunningCommandsPrompt) {
  od::PromptStatus status = od::PromptStatus::kOk;
  Add("ASK", od::kCmdModal, [&] {
    session_.Ed().PostCommand("CANCELCMD");
    status = session_.Ed().GetString("A: ", false).status;
  });
  Answer({"not read"});
  session_.Execute("ASK");
  EXPECT_EQ(status, od::PromptStatus::kCancel);
  EXPECT_EQ(input_->line_number(), 0u);
  // With nothing running, CANCELCMD does nothing.
  session_.Ed().PostCommand("CANCELCMD");
  EXPECT_TRUE(session_.queue().empty());
}

TEST_F(CommandStackTest, EnterRepeatsTheLastCommand) {
  Add("AGAIN", od::kCmdModal, [this] { ran_.push_back("again"); });
  Answer({"AGAIN", "", ""});
  session_.RunLoop();
  EXPECT_EQ(ran_.size(), 3u);
}

TEST_F(CommandStackTest, ScriptsStopAtARefusedAnswer) {
  int asked = 0;
  Add("NUMBER", od::kCmdModal, [&] {
    ++asked;
    (void)session_.Ed().GetInt("Count: ");
  });
  Add("AFTER", od::kCmdModal, [this] { ran_.push_back("after"); });
  Answer({"NUMBER", "abc", "12", "AFTER"});
  session_.RunLoop();
  EXPECT_TRUE(input_->failed());
  EXPECT_EQ(input_->line_number(), 2u);
  EXPECT_TRUE(ran_.empty());
  EXPECT_NE(out().find("Requires an integer value."), std::string::npos);

  Answer({"NOSUCHCOMMAND", "AFTER"});
  session_.RunLoop();
  EXPECT_TRUE(input_->failed());
  EXPECT_TRUE(ran_.empty());
}

TEST_F(CommandStackTest, LispFunctionsCallTheirModule) {
  std::vector<int> messages;
  int invoked = -1;
  session_.LoadModule([&](int message, void*) {
    messages.push_back(message);
    if (message == od::kLoadDwgMsg) (void)session_.DefineLispFunction("MyLispFunction", 0);
    if (message == od::kInvkSubrMsg) invoked = session_.CurrentLispFunction();
    return od::kRetOk;
  });
  EXPECT_EQ(messages, (std::vector<int>{od::kInitAppMsg, od::kLoadDwgMsg}));
  Answer({});
  EXPECT_TRUE(session_.Execute("(mylispfunction)"));
  EXPECT_EQ(invoked, 0);
  EXPECT_NE(out().find("nil\n"), std::string::npos);
  EXPECT_FALSE(session_.Execute("(nosuch)"));
  session_.NewDocument();
  session_.CloseActiveDocument();
  session_.UnloadModules();
  EXPECT_EQ(messages, (std::vector<int>{od::kInitAppMsg, od::kLoadDwgMsg, od::kInvkSubrMsg,
                                        od::kLoadDwgMsg,
                                        od::kUnloadDwgMsg, od::kUnloadDwgMsg, od::kUnloadAppMsg}));
}

}  // namespace
}  // namespace veltor::session
