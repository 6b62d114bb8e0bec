#include "console/dialog_renderer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "console/console_ui.h"
#include "drawing/model/document.h"
#include "drawing/session/session.h"
#include "ui/text_box_dialog.h"

namespace veltor::console {
namespace {

// A dialog with every kind of control. Picking tables rebuilds the grid of their shared
// columns and the summary above the list, as a search-by-values dialog does.
class TablesDialog : public od::DialogModel {
 public:
  enum : int {
    kIntro = 10,
    kSummary = 11,
    kTables = 20,
    kConditions = 30,
    kExtended = 40,
    kMode = 50,
    kUnit = 55,
    kPrecision = 60,
    kPrefix = 61,
    kHidden = 62,
    kSelectAll = 70,
  };

  TablesDialog() : DialogModel("Find entities", {200, 120}) {
    AddStaticText(kIntro, "Pick tables, then type conditions.");
    AddTextBox(kSummary, "");
    AddListBox(kTables, "Tables:", od::ListMode::kMultiple);
    AddGrid(kConditions, "Conditions", {"Field", "Value"}, {false, true});
    AddCheckBox(kExtended, "Extended (>, <, <>, *)");
    AddComboBox(kMode, "XY mode");
    AddListBox(kUnit, "Unit", od::ListMode::kSingle);
    od::Control& precision = AddEditBox(kPrecision, "Precision", od::EditType::kInteger);
    precision.minimum = 0;
    precision.maximum = 8;
    AddEditBox(kPrefix, "Prefix");
    AddCheckBox(kHidden, "Hidden option").visible = false;
    AddButton(kSelectAll, "Select all/nothing");
    AddButton(od::kIdOk, "OK");
    AddButton(od::kIdCancel, "Cancel");
  }

  void OnInit() override {
    SetItems(kTables, {"Roads", "Parcels", "Wells"});
    SetSelectedIndex(kTables, 0);
    SetItems(kMode, {"First", "Last", "Center"});
    SetSelectedIndex(kMode, 0);
    SetItems(kUnit, {"m", "km"});
    SetSelectedIndex(kUnit, 0);
    SetText(kPrecision, "2");
    Rebuild();
  }

  void OnChanged(int id) override {
    changed.push_back(id);
    if (id == kTables) Rebuild();
  }

  std::optional<od::DialogResult> OnButton(int id) override {
    if (id != kSelectAll) return DialogModel::OnButton(id);
    std::vector<int> all = {0, 1, 2};
    SetSelectedIndices(kTables, SelectedIndices(kTables) == all ? std::vector<int>{} : all);
    Rebuild();
    return std::nullopt;
  }

  Status OnOk() override {
    ++ok_calls;
    if (SelectedIndices(kTables).empty()) return Status::Error("Select at least one table.");
    stored_tables = SelectedItems(kTables);
    return Status::Ok();
  }

  std::vector<int> changed;
  int ok_calls = 0;
  std::vector<std::string> stored_tables;

 private:
  void Rebuild() {
    static const std::map<std::string, std::vector<std::string>> columns = {
        {"Roads", {"NAME", "LENGTH", "OWNER"}},
        {"Parcels", {"NAME", "OWNER", "AREA"}},
        {"Wells", {"NAME", "DEPTH"}}};
    std::vector<std::string> picked = SelectedItems(kTables);
    od::GridRows rows;
    std::string summary = "Selected:";
    for (const std::string& table : picked) summary += " " + table;
    if (!picked.empty()) {
      for (const std::string& column : columns.at(picked[0])) {
        bool shared = true;
        for (const std::string& other : picked) {
          const auto& have = columns.at(other);
          shared = shared && std::find(have.begin(), have.end(), column) != have.end();
        }
        if (shared) rows.push_back({column, "*"});
      }
    }
    SetRows(kConditions, rows);
    SetText(kSummary, summary);
  }
};

class DialogRendererTest : public ::testing::Test {
 protected:
  DialogRendererTest() : session_([this](std::string_view text) { out_ += text; }) {
    session_.AddDocument(model::Document::NewBlank("AC1027"), "t.dxf");
  }

  // Answers the prompts with `lines` as a person would (a refused answer is asked again);
  // prompts and answers are echoed into out_.
  void Answer(std::vector<std::string> lines, bool script = false) {
    input_ = std::make_unique<session::LinesInput>(
        std::move(lines), [this](const std::string& text) { out_ += text; }, script);
    session_.SetInput(input_.get());
  }

  od::DialogResult Show(od::DialogModel& dialog, std::vector<std::string> lines) {
    Answer(std::move(lines));
    return DialogRenderer(session_.Ed()).Show(dialog);
  }

  // How many times `text` occurs in the output.
  size_t Count(const std::string& text) const {
    size_t n = 0;
    for (size_t at = out_.find(text); at != std::string::npos; at = out_.find(text, at + 1)) ++n;
    return n;
  }

  std::string out_;
  session::Session session_;
  std::unique_ptr<session::LinesInput> input_;
  TablesDialog dialog_;
};

// Prompts of TablesDialog with its opening state: tables, grid, check box, combo box, single
// list, two edit boxes, buttons.
const std::vector<std::string> kKeepAll(8, "");

// --- the whole block --------------------------------------------------------------------------

TEST_F(DialogRendererTest, ReadsAsATitledBlockOfPrompts) {
  EXPECT_EQ(Show(dialog_, {"1,3", "1", "road*", "", "y", "last", "2", "5", "ID-", ""}),
            od::DialogResult::kOk);
  EXPECT_EQ(out_,
            "Find entities\n"
            "-------------\n"
            "Pick tables, then type conditions.\n"
            "Selected: Roads\n"
            "Tables:\n"
            "  [x] 1  Roads\n"
            "  [ ] 2  Parcels\n"
            "  [ ] 3  Wells\n"
            "Tables (numbers, names, * all, - none) <1>: 1,3\n"
            "Selected: Roads Wells\n"
            "Conditions:\n"
            "  Row  Field  Value\n"
            "    1  NAME   *\n"
            "Conditions: row to change in Value (Enter when done): 1\n"
            "Row 1 Value <*>: road*\n"
            "Conditions: row to change in Value (Enter when done): \n"
            "Extended (>, <, <>, *) [Yes/No] <No>: y\n"
            "XY mode:\n"
            "  (*) 1  First\n"
            "  ( ) 2  Last\n"
            "  ( ) 3  Center\n"
            "XY mode (number or name) <First>: last\n"
            "Unit:\n"
            "  (*) 1  m\n"
            "  ( ) 2  km\n"
            "Unit (number or name) <m>: 2\n"
            "Precision (integer from 0 to 8) <2>: 5\n"
            "Prefix: ID-\n"
            "Finish (OK, Select all/nothing, Cancel) <OK>: \n");
}

TEST_F(DialogRendererTest, AnswersChangeEveryKindOfControl) {
  ASSERT_EQ(Show(dialog_, {"1,3", "1", "road*", "", "y", "last", "2", "5", "ID-", ""}),
            od::DialogResult::kOk);
  EXPECT_EQ(dialog_.SelectedIndices(TablesDialog::kTables), (std::vector<int>{0, 2}));
  EXPECT_EQ(dialog_.Rows(TablesDialog::kConditions), (od::GridRows{{"NAME", "road*"}}));
  EXPECT_TRUE(dialog_.Checked(TablesDialog::kExtended));
  EXPECT_EQ(dialog_.SelectedIndex(TablesDialog::kMode), 1);
  EXPECT_EQ(dialog_.SelectedIndex(TablesDialog::kUnit), 1);
  EXPECT_EQ(dialog_.Text(TablesDialog::kPrecision), "5");
  EXPECT_EQ(dialog_.Text(TablesDialog::kPrefix), "ID-");
  EXPECT_EQ(dialog_.stored_tables, (std::vector<std::string>{"Roads", "Wells"}));
  // One notification per change, in the order the user made them.
  EXPECT_EQ(dialog_.changed, (std::vector<int>{20, 30, 40, 50, 55, 60, 61}));
  EXPECT_TRUE(input_->exhausted());
}

TEST_F(DialogRendererTest, BlankAnswersKeepTheDialogsState) {
  ASSERT_EQ(Show(dialog_, kKeepAll), od::DialogResult::kOk);
  EXPECT_TRUE(input_->exhausted());
  EXPECT_TRUE(dialog_.changed.empty());
  EXPECT_EQ(dialog_.SelectedIndices(TablesDialog::kTables), (std::vector<int>{0}));
  EXPECT_EQ(dialog_.Rows(TablesDialog::kConditions).size(), 3u);
  EXPECT_FALSE(dialog_.Checked(TablesDialog::kExtended));
  EXPECT_EQ(dialog_.Text(TablesDialog::kPrecision), "2");
  EXPECT_EQ(dialog_.Text(TablesDialog::kPrefix), "");
  EXPECT_EQ(dialog_.ok_calls, 1);
}

TEST_F(DialogRendererTest, AnsweringTheCurrentStateAgainIsNoChange) {
  ASSERT_EQ(Show(dialog_, {"Roads", "", "n", "1", "m", "2", "", ""}), od::DialogResult::kOk);
  EXPECT_TRUE(dialog_.changed.empty());
}

TEST_F(DialogRendererTest, HiddenControlsAreNeitherShownNorAsked) {
  ASSERT_EQ(Show(dialog_, kKeepAll), od::DialogResult::kOk);
  EXPECT_EQ(Count("Hidden option"), 0u);
}

TEST_F(DialogRendererTest, DisabledControlsAreShownButNotAsked) {
  dialog_.SetEnabled(TablesDialog::kPrefix, false);
  dialog_.SetText(TablesDialog::kPrefix, "P-");
  ASSERT_EQ(Show(dialog_, std::vector<std::string>(7, "")), od::DialogResult::kOk);
  EXPECT_TRUE(input_->exhausted());
  EXPECT_EQ(Count("Prefix (unavailable): P-\n"), 1u);
}

// --- cancelling -------------------------------------------------------------------------------

class CancelAt : public DialogRendererTest, public ::testing::WithParamInterface<int> {};

TEST_P(CancelAt, CancelAnswerCancelsTheDialogAtAnyPrompt) {
  std::vector<std::string> lines(GetParam(), "");
  lines.push_back(GetParam() % 2 ? "cancel" : "Cancel");
  lines.push_back("never read");
  EXPECT_EQ(Show(dialog_, lines), od::DialogResult::kCancel);
  EXPECT_EQ(dialog_.ok_calls, 0);
  EXPECT_EQ(input_->line_number(), static_cast<size_t>(GetParam()) + 1);
}

INSTANTIATE_TEST_SUITE_P(EveryPrompt, CancelAt, ::testing::Range(0, 8));

TEST_F(DialogRendererTest, CancelAtTheCellPromptCancels) {
  EXPECT_EQ(Show(dialog_, {"", "2", "Cancel"}), od::DialogResult::kCancel);
  EXPECT_EQ(dialog_.Rows(TablesDialog::kConditions)[1][1], "*");
}

TEST_F(DialogRendererTest, EndOfInputCancels) {
  EXPECT_EQ(Show(dialog_, {"2", ""}), od::DialogResult::kCancel);
  EXPECT_EQ(dialog_.ok_calls, 0);
}

TEST_F(DialogRendererTest, FinishKeywordCancelCancels) {
  std::vector<std::string> lines(7, "");
  lines.push_back("c");
  EXPECT_EQ(Show(dialog_, lines), od::DialogResult::kCancel);
  EXPECT_EQ(dialog_.ok_calls, 0);
}

// --- refused answers are asked again --------------------------------------------------------

TEST_F(DialogRendererTest, OutOfRangeEditIsRefusedAndAskedAgain) {
  ASSERT_EQ(Show(dialog_, {"", "", "", "", "", "9", "abc", "-1", "8", "", ""}),
            od::DialogResult::kOk);
  EXPECT_EQ(Count("Precision: requires an integer from 0 to 8.\n"), 3u);
  EXPECT_EQ(Count("Precision (integer from 0 to 8) <2>: "), 4u);
  EXPECT_EQ(dialog_.Text(TablesDialog::kPrecision), "8");
  EXPECT_EQ(dialog_.changed, (std::vector<int>{60}));
}

TEST_F(DialogRendererTest, AScriptStopsAtARefusedAnswerAndTheDialogCancels) {
  Answer({"", "", "", "", "", "9", "8", "", ""}, /*script=*/true);
  EXPECT_EQ(DialogRenderer(session_.Ed()).Show(dialog_), od::DialogResult::kCancel);
  EXPECT_TRUE(input_->failed());
  EXPECT_EQ(input_->line_number(), 6u);
  EXPECT_EQ(dialog_.Text(TablesDialog::kPrecision), "2");
}

TEST_F(DialogRendererTest, CheckBoxTakesYesOrNoByTheirBeginnings) {
  ASSERT_EQ(Show(dialog_, {"", "", "maybe", "YE", "", "", "", "", ""}), od::DialogResult::kOk);
  EXPECT_EQ(Count("Requires Yes or No.\n"), 1u);
  EXPECT_TRUE(dialog_.Checked(TablesDialog::kExtended));
}

TEST_F(DialogRendererTest, RefusedOkKeepsTheDialogOpenAndAsksItAgain) {
  // No table: the grid empties (no prompt), OK is refused, and the dialog is asked again.
  ASSERT_EQ(Show(dialog_, {"-", "", "", "", "", "", "", "2", "", "", "", "", "", "", ""}),
            od::DialogResult::kOk);
  EXPECT_EQ(Count("Select at least one table.\n"), 1u);
  EXPECT_EQ(dialog_.ok_calls, 2);
  EXPECT_EQ(dialog_.stored_tables, (std::vector<std::string>{"Parcels"}));
  EXPECT_TRUE(input_->exhausted());
}

// --- dependent controls -------------------------------------------------------------------------

TEST_F(DialogRendererTest, ListChangeRebuildsTheGridShownAtItsPrompt) {
  ASSERT_EQ(Show(dialog_, {"1-2", "", "", "", "", "", "", ""}), od::DialogResult::kOk);
  EXPECT_EQ(dialog_.Rows(TablesDialog::kConditions), (od::GridRows{{"NAME", "*"}, {"OWNER", "*"}}));
  const size_t answer = out_.find("<1>: 1-2\n");
  const size_t summary = out_.find("Selected: Roads Parcels\n");
  const size_t grid = out_.find("    2  OWNER  *\n");
  ASSERT_NE(answer, std::string::npos);
  EXPECT_LT(answer, summary);  // the summary above the list is shown again at once
  EXPECT_LT(summary, grid);
  // The grid shows at its own prompt only, so its rows before the change never appear.
  EXPECT_EQ(Count("Row  Field  Value"), 1u);
  EXPECT_EQ(Count("LENGTH"), 0u);
}

TEST_F(DialogRendererTest, GridCellsByRowOrRowAndColumn) {
  ASSERT_EQ(Show(dialog_, {"", "2,Value", ">10", "3,2", "\"\"", "1,1", "4", "1", "", "", "", "",
                           "", "", "", ""}),
            od::DialogResult::kOk);
  EXPECT_EQ(dialog_.Rows(TablesDialog::kConditions),
            (od::GridRows{{"NAME", "*"}, {"LENGTH", ">10"}, {"OWNER", ""}}));
  EXPECT_EQ(Count("Requires a row from 1 to 3.\n"), 2u);  // column 1 is not editable; no row 4
  EXPECT_EQ(dialog_.changed, (std::vector<int>{30, 30}));  // a blank value keeps the cell
  EXPECT_TRUE(input_->exhausted());
}

TEST_F(DialogRendererTest, ExtraButtonRunsAndTheDialogIsAskedAgain) {
  std::vector<std::string> lines(7, "");
  lines.push_back("s");
  lines.insert(lines.end(), 8, "");
  ASSERT_EQ(Show(dialog_, lines), od::DialogResult::kOk);
  EXPECT_EQ(dialog_.SelectedIndices(TablesDialog::kTables), (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(dialog_.Rows(TablesDialog::kConditions), (od::GridRows{{"NAME", "*"}}));
  EXPECT_EQ(Count("Tables (numbers, names, * all, - none) <1-3>: "), 1u);
  EXPECT_TRUE(input_->exhausted());
}

// --- list answers ------------------------------------------------------------------------------

class OneList : public od::DialogModel {
 public:
  explicit OneList(od::ListMode mode) : DialogModel("Pick", {}) {
    od::Control& list = AddListBox(1, "Tables", mode);
    list.items = {"Roads", "Parcels", "Wells", "2019", "Town roads"};
    list.selection = {0};
  }
};

struct ListCase {
  od::ListMode mode;
  std::vector<std::string> answers;  // before the final Enter
  std::vector<int> selected;
  size_t refusals;
};

class ListAnswers : public DialogRendererTest, public ::testing::WithParamInterface<ListCase> {};

TEST_P(ListAnswers, SelectByNumbersRangesAndNames) {
  OneList dialog(GetParam().mode);
  std::vector<std::string> lines = GetParam().answers;
  lines.push_back("");
  ASSERT_EQ(Show(dialog, lines), od::DialogResult::kOk);
  EXPECT_EQ(dialog.SelectedIndices(1), GetParam().selected);
  EXPECT_EQ(Count("Requires") + Count("No item"), GetParam().refusals);
}

const od::ListMode kMany = od::ListMode::kMultiple;
const od::ListMode kOne = od::ListMode::kSingle;

INSTANTIATE_TEST_SUITE_P(
    Cases, ListAnswers,
    ::testing::Values(ListCase{kMany, {""}, {0}, 0}, ListCase{kMany, {"2"}, {1}, 0},
                      ListCase{kMany, {"1-3,5"}, {0, 1, 2, 4}, 0},
                      ListCase{kMany, {"3 1"}, {0, 2}, 0}, ListCase{kMany, {"*"}, {0, 1, 2, 3, 4}, 0},
                      ListCase{kMany, {"-"}, {}, 0}, ListCase{kMany, {"wells"}, {2}, 0},
                      ListCase{kMany, {"Wells, town roads"}, {2, 4}, 0},
                      ListCase{kMany, {"Town roads"}, {4}, 0},
                      // A number beyond the list is read as a name when an item has it.
                      ListCase{kMany, {"2019"}, {3}, 0},
                      ListCase{kMany, {"6", "Lakes", "3-1", "1"}, {0}, 3},
                      ListCase{kOne, {"1,2", "Parcels"}, {1}, 1}, ListCase{kOne, {"5"}, {4}, 0},
                      ListCase{kOne, {"*", "-", "1"}, {0}, 2}));

// --- read-only text -------------------------------------------------------------------------------

TEST_F(DialogRendererTest, ReportClosesWithOkWithoutAskingAndPrintsPlainLines) {
  ui::TextBoxDialog report("Object Data statistics.", 350, 400);
  report.SetText("Entities: 3\nTables: 1\n");
  EXPECT_EQ(Show(report, {"not read"}), od::DialogResult::kOk);
  EXPECT_EQ(input_->line_number(), 0u);
  EXPECT_EQ(out_,
            "Object Data statistics.\n"
            "-----------------------\n"
            "Entities: 3\n"
            "Tables: 1\n");
}

// --- keyword rule ---------------------------------------------------------------------------------

TEST(MatchesKeyword, LowerCasedAnswerMustBeginTheKeyword) {
  EXPECT_TRUE(MatchesKeyword("y", "Yes"));
  EXPECT_TRUE(MatchesKeyword("YES", "Yes"));
  EXPECT_FALSE(MatchesKeyword("yess", "Yes"));
  EXPECT_FALSE(MatchesKeyword("", "Yes"));
  EXPECT_FALSE(MatchesKeyword("es", "Yes"));
  EXPECT_TRUE(MatchesKeyword("\xC3\x89T", "\xC3\xA9t\xC3\xA9"));  // "ÉT" begins "été"
}

// --- the console user interface ---------------------------------------------------------------

class ConsoleUiTest : public DialogRendererTest {
 protected:
  ConsoleUiTest() : ui_(session_.Ed()) {}
  ConsoleUi ui_;
};

TEST_F(ConsoleUiTest, MessageBoxAnswersByKeywordAndEnterTakesTheFirstButton) {
  Answer({"n", "", "maybe", "yes", "Cancel", "c"});
  EXPECT_EQ(ui_.MessageBox("Save", "Save changes?", od::MessageButtons::kYesNo),
            od::MessageAnswer::kNo);
  EXPECT_EQ(ui_.MessageBox("Save", "Save changes?", od::MessageButtons::kYesNo),
            od::MessageAnswer::kYes);
  EXPECT_EQ(ui_.MessageBox("Save", "Save changes?", od::MessageButtons::kYesNo),
            od::MessageAnswer::kYes);
  EXPECT_EQ(ui_.MessageBox("Save", "Save changes?", od::MessageButtons::kYesNo),
            od::MessageAnswer::kCancel);
  EXPECT_EQ(ui_.MessageBox("Go", "Go on?", od::MessageButtons::kOkCancel),
            od::MessageAnswer::kCancel);
  EXPECT_EQ(Count("Requires one of: Yes/No.\n"), 1u);
  EXPECT_EQ(Count("Answer [Yes/No] <Yes>: "), 5u);
}

TEST_F(ConsoleUiTest, OkOnlyMessageBoxDoesNotAsk) {
  Answer({"not read"});
  EXPECT_EQ(ui_.MessageBox("Note", "Done.", od::MessageButtons::kOk), od::MessageAnswer::kOk);
  EXPECT_EQ(input_->line_number(), 0u);
  EXPECT_EQ(out_, "Note\n----\nDone.\n");
}

TEST_F(ConsoleUiTest, OpenFileAsksForAnExistingPath) {
  const std::string existing = std::string(VELTOR_SOURCE_DIR) + "/CMakeLists.txt";
  Answer({"/no/such/file.txt", "\"" + existing + "\"", ""});
  EXPECT_EQ(ui_.OpenFileDialog("Alias file", "Text files (*.txt;*.csv)|*.txt;*.csv||"),
            existing);
  EXPECT_EQ(Count("No such file: /no/such/file.txt\n"), 1u);
  EXPECT_EQ(Count("Alias file (*.txt;*.csv), Enter to cancel: "), 2u);
  EXPECT_EQ(ui_.OpenFileDialog("Alias file", ""), std::nullopt);
}

TEST_F(ConsoleUiTest, OpenFileGivesARelativePathInFull) {
  // A relative answer is read from the current folder and handed back as a full path, as a
  // file dialog gives it (commands that reach a file through its drive need the root).
  const std::filesystem::path here = std::filesystem::current_path();
  std::filesystem::current_path(VELTOR_SOURCE_DIR);
  Answer({"./tests/../CMakeLists.txt"});
  std::optional<std::string> path = ui_.OpenFileDialog("Drawing", "");
  std::filesystem::current_path(here);
  EXPECT_EQ(path, (std::filesystem::path(VELTOR_SOURCE_DIR) / "CMakeLists.txt").lexically_normal().string());
}

TEST_F(ConsoleUiTest, SaveFileTakesAPathTheDefaultOrNothing) {
  Answer({"out/template.txt", "*", "", "Cancel"});
  const std::string filter = "Text (*.txt)|*.txt||";
  EXPECT_EQ(ui_.SaveFileDialog("Template", filter, "attrs.txt"), "out/template.txt");
  EXPECT_EQ(ui_.SaveFileDialog("Template", filter, "attrs.txt"), "attrs.txt");
  EXPECT_EQ(ui_.SaveFileDialog("Template", filter, "attrs.txt"), std::nullopt);
  EXPECT_EQ(ui_.SaveFileDialog("Template", filter, "attrs.txt"), std::nullopt);
  EXPECT_EQ(Count("Template (*.txt), * for attrs.txt, Enter to cancel: "), 4u);
}

TEST_F(ConsoleUiTest, ShowModalRendersTheDialog) {
  Answer(kKeepAll);
  EXPECT_EQ(ui_.ShowModal(dialog_), od::DialogResult::kOk);
  EXPECT_EQ(dialog_.ok_calls, 1);
}

TEST(FilterPatterns, TakesThePatternOfEveryPair) {
  EXPECT_EQ(FilterPatterns("Text (*.txt)|*.txt|All (*.*)|*.*||"), "*.txt;*.*");
  EXPECT_EQ(FilterPatterns(""), "");
}

}  // namespace
}  // namespace veltor::console
