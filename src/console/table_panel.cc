#include "console/table_panel.h"

#include <algorithm>
#include <cstdlib>

#include "od/text.h"

namespace veltor::console {
namespace {

// The keywords of the panel's prompt; an answer picks the first keyword it begins.
const std::vector<std::string>& Keywords() {
  static const std::vector<std::string> keywords = {
      "Table", "Refresh", "Sort", "Select", "Cell",   "Column", "Delete", "File",
      "Edit",  "View",    "Key",  "Synchronize", "Double", "Next", "Previous"};
  return keywords;
}

// The widest a column is shown; longer texts are cut and end in "~".
constexpr size_t kMaxColumnWidth = 24;

size_t Width(const std::string& text) {
  size_t width = 0;
  for (unsigned char c : text)
    if ((c & 0xC0) != 0x80) ++width;
  return width;
}

std::string Cut(const std::string& text, size_t width) {
  if (Width(text) <= width) return text + std::string(width - Width(text), ' ');
  std::string out;
  size_t shown = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    unsigned char c = static_cast<unsigned char>(text[i]);
    if ((c & 0xC0) != 0x80 && ++shown == width) break;
    out += text[i];
  }
  return out + "~";
}

// `line` without the blanks padding its last column, ended by a line break.
std::string WithoutTrailingBlanks(const std::string& line) {
  return line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
}

std::optional<size_t> ParseIndex(const std::string& text) {
  if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos) return {};
  return static_cast<size_t>(std::strtoul(text.c_str(), nullptr, 10));
}

}  // namespace

std::optional<std::vector<size_t>> ParseRowList(const std::string& text, size_t count) {
  std::vector<size_t> rows;
  size_t start = 0;
  while (start <= text.size()) {
    size_t end = text.find(',', start);
    if (end == std::string::npos) end = text.size();
    std::string part(od::TrimBlanks(std::string_view(text).substr(start, end - start)));
    size_t dash = part.find('-');
    std::optional<size_t> first = ParseIndex(part.substr(0, dash));
    std::optional<size_t> last = dash == std::string::npos ? first : ParseIndex(part.substr(dash + 1));
    if (!first || !last || *first == 0 || *first > *last || *last > count) return {};
    for (size_t row = *first; row <= *last; ++row) rows.push_back(row - 1);
    start = end + 1;
  }
  return rows;
}

TablePanel::TablePanel(od::Editor& editor, ui::OdTableView& view) : editor_(editor), view_(view) {
  view_.SetListener([this](ui::TableViewChange) { changed_ = true; });
}

size_t TablePanel::PageCount() const {
  return std::max<size_t>(1, (view_.RowCount() + kPageRows - 1) / kPageRows);
}

std::string TablePanel::PageText() const {
  std::string text;
  const std::string& table = view_.current_table();
  if (table.empty()) return "OD table: no table chosen (Table chooses one)\n";
  size_t pages = PageCount();
  size_t page = std::min(page_, pages - 1);
  text += "OD table " + table + ": " + std::to_string(view_.RowCount()) + " rows, page " +
          std::to_string(page + 1) + " of " + std::to_string(pages) + ", Synchronize " +
          (view_.synchronize() ? "on" : "off") + "\n";
  size_t first = page * kPageRows;
  size_t last = std::min(view_.RowCount(), first + kPageRows);
  std::vector<size_t> widths;
  for (size_t c = 0; c < view_.ColumnCount(); ++c) {
    size_t width = Width(view_.ColumnTitle(c));
    for (size_t r = first; r < last; ++r) width = std::max(width, Width(view_.CellText(r, c)));
    widths.push_back(std::min(width, kMaxColumnWidth));
  }
  // Each line: a selection mark, the row's position on the grid (right-aligned under "row"),
  // then the grid's columns.
  std::string titles = "  row";
  for (size_t c = 0; c < widths.size(); ++c) titles += "  " + Cut(view_.ColumnTitle(c), widths[c]);
  text += WithoutTrailingBlanks(titles);
  for (size_t r = first; r < last; ++r) {
    std::string position = std::to_string(r + 1);
    std::string line = view_.IsSelected(r) ? "*" : " ";
    if (position.size() < 4) line += std::string(4 - position.size(), ' ');
    line += position;
    for (size_t c = 0; c < widths.size(); ++c) line += "  " + Cut(view_.CellText(r, c), widths[c]);
    text += WithoutTrailingBlanks(line);
  }
  return text;
}

bool TablePanel::Step() {
  if (!view_.visible()) return false;
  if (changed_) {
    page_ = std::min(page_, PageCount() - 1);
    editor_.Print(PageText());
    changed_ = false;
  }
  view_.SetGridFocused(true);
  std::string prompt = "OD table [";
  for (const std::string& keyword : Keywords()) prompt += keyword + (keyword == "Previous" ? "" : "/");
  prompt += "] <Close>: ";
  od::PromptResult<std::string> answer = editor_.GetString(prompt, false);
  bool open = true;
  if (answer.status == od::PromptStatus::kCancel) {
    view_.Hide(true);
    open = false;
  } else if (answer.status == od::PromptStatus::kNone || answer.value.empty()) {
    view_.Hide(false);
    open = false;
  } else {
    open = Act(answer.value);
  }
  // Between prompts the command line has the focus: what the session runs next (commands the
  // panel queued) changes the drawing's selection, and the grid follows it.
  view_.SetGridFocused(false);
  return open;
}

bool TablePanel::Act(const std::string& answer) {
  auto keyword = std::find_if(Keywords().begin(), Keywords().end(),
                              [&](const std::string& k) { return od::MatchesKeyword(answer, k); });
  if (keyword == Keywords().end()) {
    editor_.Refuse("Requires one of the keywords in brackets, or Enter to close.");
    return true;
  }
  const std::string& k = *keyword;
  if (k == "Table") ChooseTable();
  else if (k == "Refresh") view_.Reload(true);
  else if (k == "Sort") Sort();
  else if (k == "Select") Select();
  else if (k == "Cell") EditCell();
  else if (k == "Column") SetColumn();
  else if (k == "Delete") view_.DeleteSelectedRows();
  else if (k == "File") RunMenu("File", ui::TableFileMenu());
  else if (k == "Edit") RunMenu("Edit", ui::TableEditMenu());
  else if (k == "View") RunMenu("View", ui::TableViewMenu());
  else if (k == "Key") PressKey();
  else if (k == "Synchronize") AskSynchronize();
  else if (k == "Double") DoubleClick();
  else if (k == "Next") page_ = std::min(page_ + 1, PageCount() - 1), changed_ = true;
  else if (k == "Previous") page_ = page_ == 0 ? 0 : page_ - 1, changed_ = true;
  return view_.visible();
}

void TablePanel::ChooseTable() {
  view_.FillTableChoices();
  const std::vector<std::string>& choices = view_.table_choices();
  for (size_t i = 0; i < choices.size(); ++i)
    editor_.Print("  " + std::to_string(i) + "  " + (i == 0 ? "(none)" : choices[i]) + "\n");
  od::PromptResult<std::string> answer =
      editor_.GetString("Table number or name <" + std::to_string(view_.chosen_index()) + ">: ", true);
  if (answer.status != od::PromptStatus::kOk) return;
  std::string typed(od::TrimBlanks(answer.value));
  std::optional<size_t> number = ParseIndex(typed);
  if (number && *number < choices.size()) return view_.ChooseTable(choices[*number]);
  auto named = std::find(choices.begin() + 1, choices.end(), typed);
  if (named == choices.end()) {
    editor_.Refuse("No table " + typed + ".");
    return;
  }
  page_ = 0;
  view_.ChooseTable(*named);
}

std::optional<size_t> TablePanel::AskColumn(const std::string& prompt) {
  od::PromptResult<std::string> answer = editor_.GetString(prompt, true);
  if (answer.status != od::PromptStatus::kOk) return {};
  std::string typed(od::TrimBlanks(answer.value));
  std::optional<size_t> number = ParseIndex(typed);
  if (number && *number < view_.ColumnCount()) return number;
  for (size_t c = 0; c < view_.ColumnCount(); ++c)
    if (view_.ColumnTitle(c) == typed) return c;
  editor_.Refuse("No column " + typed + ".");
  return {};
}

std::optional<size_t> TablePanel::AskRow() {
  od::PromptResult<int> answer = editor_.GetInt("Row: ");
  if (answer.status != od::PromptStatus::kOk) return {};
  if (answer.value < 1 || static_cast<size_t>(answer.value) > view_.RowCount()) {
    editor_.Refuse("No row " + std::to_string(answer.value) + ".");
    return {};
  }
  return static_cast<size_t>(answer.value - 1);
}

void TablePanel::Sort() {
  if (std::optional<size_t> column = AskColumn("Sort by column (number, 0 for #, or name): "))
    view_.SortByColumn(*column);
}

void TablePanel::Select() {
  od::PromptResult<std::string> answer =
      editor_.GetString("Rows to select (such as 1-3,7; None for none): ", true);
  if (answer.status != od::PromptStatus::kOk) return;
  std::string typed(od::TrimBlanks(answer.value));
  std::vector<size_t> rows;
  if (!od::MatchesKeyword(typed, "None")) {
    std::optional<std::vector<size_t>> parsed = ParseRowList(typed, view_.RowCount());
    if (!parsed) {
      editor_.Refuse("Requires rows from 1 to " + std::to_string(view_.RowCount()) + ".");
      return;
    }
    rows = std::move(*parsed);
  }
  view_.SelectOnly(rows);
  view_.ClickRow(rows.empty() ? 0 : rows.front());
}

void TablePanel::EditCell() {
  std::optional<size_t> row = AskRow();
  if (!row) return;
  std::optional<size_t> column = AskColumn("Column (number or name): ");
  if (!column) return;
  od::PromptResult<std::string> text =
      editor_.GetString("New text <" + view_.CellText(*row, *column) + ">: ", true);
  if (text.status == od::PromptStatus::kCancel) return view_.EditCell(*row, *column, std::nullopt);
  // Enter keeps the text the cell shows, as leaving the in-place editor unchanged does.
  view_.EditCell(*row, *column, text.status == od::PromptStatus::kOk ? text.value
                                                                      : view_.CellText(*row, *column));
}

void TablePanel::SetColumn() {
  if (std::optional<size_t> column = AskColumn("Set the whole column (number or name): "))
    view_.SetWholeColumn(*column);
}

void TablePanel::RunMenu(const std::string& name, const std::vector<std::string>& entries) {
  for (size_t i = 0; i < entries.size(); ++i)
    editor_.Print("  " + std::to_string(i + 1) + "  " + entries[i] + "\n");
  od::PromptResult<std::string> answer = editor_.GetString(name + " menu entry (number or label): ", true);
  if (answer.status != od::PromptStatus::kOk) return;
  std::string typed(od::TrimBlanks(answer.value));
  std::optional<size_t> number = ParseIndex(typed);
  size_t index = entries.size();
  if (number && *number >= 1 && *number <= entries.size()) index = *number - 1;
  for (size_t i = 0; i < entries.size() && index == entries.size(); ++i)
    if (od::EqualsIgnoreCase(entries[i], typed)) index = i;
  if (index == entries.size()) {
    editor_.Refuse("No entry " + typed + ".");
    return;
  }
  if (name == "File") view_.RunFileEntry(index);
  if (name == "Edit") view_.RunEditEntry(static_cast<ui::TableEditEntry>(index));
  if (name == "View") view_.RunViewEntry(static_cast<ui::TableViewEntry>(index));
}

void TablePanel::PressKey() {
  static const std::vector<std::pair<std::string, ui::TableKey>> keys = {
      {"Delete", ui::TableKey::kDelete}, {"Ctrl+A", ui::TableKey::kCtrlA},
      {"Ctrl+C", ui::TableKey::kCtrlC},  {"Ctrl+F", ui::TableKey::kCtrlF},
      {"Ctrl+Z", ui::TableKey::kCtrlZ},  {"Ctrl+Y", ui::TableKey::kCtrlY}};
  od::PromptResult<std::string> answer =
      editor_.GetString("Key [Delete/Ctrl+A/Ctrl+C/Ctrl+F/Ctrl+Z/Ctrl+Y]: ", false);
  if (answer.status != od::PromptStatus::kOk) return;
  for (const auto& [name, key] : keys)
    if (od::EqualsIgnoreCase(answer.value, name)) return view_.PressKey(key);
  view_.PressKey(ui::TableKey::kOther);
}

void TablePanel::AskSynchronize() {
  std::string current = view_.synchronize() ? "On" : "Off";
  od::PromptResult<std::string> answer =
      editor_.GetString("Synchronize [On/Off] <" + current + ">: ", false);
  if (answer.status != od::PromptStatus::kOk) return;
  if (od::MatchesKeyword(answer.value, "On")) view_.SetSynchronize(true);
  else if (od::MatchesKeyword(answer.value, "Off")) view_.SetSynchronize(false);
  else return (void)editor_.Refuse("Requires On or Off.");
  changed_ = true;
}

void TablePanel::DoubleClick() {
  if (std::optional<size_t> row = AskRow()) view_.DoubleClickRow(*row);
}

}  // namespace veltor::console
