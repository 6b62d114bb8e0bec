// The workers of SETXYZ, SETPROP, SETID and SETTEXT as the OD table view calls them: with the
// entities of its rows, nothing selected and no answer for a selection prompt, each writes
// into exactly the entities it was given.
#include "data_command_fixture.h"

#include "commands/edit/set_id.h"
#include "commands/edit/set_prop.h"
#include "commands/edit/set_text.h"
#include "commands/edit/set_xyz.h"
#include "drawing/model/create.h"
#include "od/command_context.h"
#include "ui/od_select.h"
#include "ui/od_select_xyz.h"
#include "ui/options_set_prop.h"
#include "ui/options_wild.h"

namespace veltor::commands {
namespace {

using od::Value;

class SetWorkersTest : public testing::DataCommandTest {
 protected:
  void SetUp() override {
    Define("W", {Column("X", Value::Real(0)), Column("LEN", Value::Real(0)),
                 Column("ID", Value::Integer(0)), Column("NAME", Value::Character(""))});
    for (int i = 0; i < 2; ++i) {
      lines_[i] = session::IdOf(doc(), model::AddLine(doc(), "0", {0, 10.0 * i, 0},
                                                      {4, 10.0 * i, 0}));
      Attach(lines_[i], "W");
    }
    label_ = session::IdOf(doc(), model::AddText(doc(), "0", {2, 0.2, 0}, 1, "north"));
  }

  // Runs `worker` as a command with no pickfirst and no prompt answers; returns the output.
  std::string RunWorker(const std::function<void(od::CommandContext&)>& worker) {
    sdoc().pickfirst.clear();
    Answer({});
    ClearOut();
    EXPECT_TRUE(od::RunCommand(session_, "WORKER", worker));
    return out();
  }

  od::EntityId lines_[2] = {};
  od::EntityId label_ = 0;
};

TEST_F(SetWorkersTest, EachWorkerWritesTheEntitiesHandedInWithoutAskingForMore) {
  ui_.NextDialog()
      .SelectItems(ui::OdSelectXyz::kTableList, {"W"})
      .SelectItems(ui::OdSelectXyz::kXCombo, {"X"})
      .SelectItems(ui::OdSelectXyz::kXyModeCombo, {"Last"})
      .Press(od::kIdOk);
  EXPECT_EQ(RunWorker([&](od::CommandContext& c) { SetXyzWorker(c, {lines_[1]}); }),
            "Completed: 1 out of 1\n");
  ui_.NextDialog()
      .SelectItems(ui::OptionsSetProp::kLengthCombo, {"LEN"})
      .Press(od::kIdOk);
  EXPECT_EQ(RunWorker([&](od::CommandContext& c) { SetPropWorker(c, {lines_[1]}); }),
            "Completed (Length/Area/Volume): 1/0/0 out of 1\n");
  ui_.NextDialog()
      .SelectItems(ui::OptionsWild::kFieldCombo, {"ID"})
      .SetText(ui::OptionsWild::kFirst, "9")
      .Press(od::kIdOk);
  EXPECT_EQ(RunWorker([&](od::CommandContext& c) { SetIdWorker(c, {lines_[1]}); }),
            "Completed: 1\n");
  ui_.NextDialog()
      .SelectItems(ui::OdSelect::kTableList, {"W"})
      .SelectItems(ui::OdSelect::kFieldList, {"NAME"})
      .Press(od::kIdOk);
  EXPECT_EQ(RunWorker([&](od::CommandContext& c) { SetTextWorker(c, {lines_[0], label_}); }),
            "Completed: 1 out of 1\n");

  EXPECT_EQ(Records(lines_[0]), (std::vector<std::string>{"W[0.0|0.0|0|north]"}));
  EXPECT_EQ(Records(lines_[1]), (std::vector<std::string>{"W[4.0|4.0|9|]"}));
}

}  // namespace
}  // namespace veltor::commands
