#include "console/dialog_renderer.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "od/text.h"

namespace veltor::console {

namespace {

using od::Control;
using od::ControlKind;

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

std::string Trim(std::string_view text) { return std::string(od::TrimBlanks(text)); }

// Columns a text takes on a terminal, counted as code points.
size_t Width(std::string_view utf8) {
  size_t width = 0;
  for (char c : utf8)
    if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++width;
  return width;
}

std::string PadRight(const std::string& text, size_t width) {
  size_t shown = Width(text);
  return shown >= width ? text : text + std::string(width - shown, ' ');
}

std::string PadLeft(const std::string& text, size_t width) {
  size_t shown = Width(text);
  return shown >= width ? text : std::string(width - shown, ' ') + text;
}

void TrimLineEnd(std::string& line) {
  while (!line.empty() && line.back() == ' ') line.pop_back();
}

// The label as prompts use it: without a trailing ":" and blanks; a name for unlabelled ones.
std::string Caption(const Control& control) {
  std::string caption = Trim(control.label);
  while (!caption.empty() && (caption.back() == ':' || IsBlank(caption.back()))) caption.pop_back();
  if (!caption.empty()) return caption;
  switch (control.kind) {
    case ControlKind::kCheckBox: return "Option";
    case ControlKind::kEditBox: return "Value";
    case ControlKind::kComboBox: return "Choice";
    case ControlKind::kListBox: return "Items";
    case ControlKind::kGrid: return "Grid";
    default: return "";
  }
}

std::string YesNo(bool yes) { return yes ? "Yes" : "No"; }

// Text without carriage returns, ending with a line end when not empty.
std::string PlainLines(const std::string& text) {
  std::string plain;
  for (char c : text)
    if (c != '\r') plain += c;
  if (!plain.empty() && plain.back() != '\n') plain += '\n';
  return plain;
}

// 0-based indices as the 1-based numbers users type, runs compressed: "1-3,5".
std::string NumberList(const std::vector<int>& indices) {
  std::string text;
  for (size_t i = 0; i < indices.size();) {
    size_t j = i;
    while (j + 1 < indices.size() && indices[j + 1] == indices[j] + 1) ++j;
    if (!text.empty()) text += ',';
    text += std::to_string(indices[i] + 1);
    if (j > i) text += (j == i + 1 ? "," : "-") + std::to_string(indices[j] + 1);
    i = j + 1;
  }
  return text;
}

std::string ItemText(const std::string& item) { return item.empty() ? "(empty)" : item; }

bool IsNumber(const std::string& text) {
  return !text.empty() && text.size() <= 9 &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::vector<std::string> Split(const std::string& text, std::string_view separators) {
  std::vector<std::string> pieces;
  size_t start = 0;
  for (;;) {
    size_t end = text.find_first_of(separators, start);
    pieces.push_back(Trim(text.substr(start, end == std::string::npos ? end : end - start)));
    if (end == std::string::npos) return pieces;
    start = end + 1;
  }
}

bool Editable(const Control& grid, size_t column) {
  return column < grid.columns.size() && column < grid.editable.size() && grid.editable[column];
}

enum class Pick { kOk, kNotNumbers, kRefused };

// Reads item numbers and ranges ("2", "1-3", "1,4 6") into 0-based indices.
Pick PickNumbers(const std::string& answer, size_t count, std::vector<int>* picked,
                 std::string* error) {
  std::vector<std::string> tokens;
  for (const std::string& token : Split(answer, ", \t"))
    if (!token.empty()) tokens.push_back(token);
  if (tokens.empty()) return Pick::kNotNumbers;
  std::vector<std::pair<int, int>> ranges;
  for (const std::string& token : tokens) {
    size_t dash = token.find('-');
    std::string first = token.substr(0, dash);
    std::string last = dash == std::string::npos ? first : token.substr(dash + 1);
    if (!IsNumber(first) || !IsNumber(last)) return Pick::kNotNumbers;
    ranges.emplace_back(std::stoi(first), std::stoi(last));
  }
  for (auto [first, last] : ranges) {
    if (first < 1 || last < first || static_cast<size_t>(last) > count) {
      *error = count == 0 ? "The list is empty."
                          : "Requires item numbers from 1 to " + std::to_string(count) + ".";
      return Pick::kRefused;
    }
    for (int n = first; n <= last; ++n) picked->push_back(n - 1);
  }
  return Pick::kOk;
}

// The item named `name`: an exact match first, then one that differs only in case.
int FindItem(const std::vector<std::string>& items, const std::string& name) {
  for (size_t i = 0; i < items.size(); ++i)
    if (items[i] == name) return static_cast<int>(i);
  for (size_t i = 0; i < items.size(); ++i)
    if (od::EqualsIgnoreCase(items[i], name)) return static_cast<int>(i);
  return -1;
}

// Reads names: the whole answer as one name, or (for several choices) names separated by ",".
bool PickNames(const std::string& answer, const std::vector<std::string>& items, bool multiple,
               std::vector<int>* picked, std::string* error) {
  if (int whole = FindItem(items, answer); whole >= 0) {
    picked->push_back(whole);
    return true;
  }
  if (multiple && answer.find(',') != std::string::npos) {
    for (const std::string& name : Split(answer, ",")) {
      int index = FindItem(items, name);
      if (index < 0) {
        *error = "No item named \"" + name + "\".";
        return false;
      }
      picked->push_back(index);
    }
    return true;
  }
  *error = "No item named \"" + answer + "\".";
  return false;
}

std::string DescribeChoices(const Control& control, const std::string& caption) {
  if (control.items.empty()) return caption + ": (no items)\n";
  std::string text = caption.empty() ? "" : caption + ":\n";
  const bool display_only =
      control.kind == ControlKind::kListBox && control.list_mode == od::ListMode::kDisplayOnly;
  const bool multiple =
      control.kind == ControlKind::kListBox && control.list_mode == od::ListMode::kMultiple;
  const size_t width = std::to_string(control.items.size()).size();
  for (size_t i = 0; i < control.items.size(); ++i) {
    const bool on = control.IsSelected(static_cast<int>(i));
    std::string line = "  ";
    if (!display_only) line += multiple ? (on ? "[x] " : "[ ] ") : (on ? "(*) " : "( ) ");
    line += PadLeft(std::to_string(i + 1), width) + "  " + ItemText(control.items[i]);
    text += line + "\n";
  }
  return text;
}

std::string DescribeGrid(const Control& control, const std::string& caption) {
  std::vector<size_t> widths;
  widths.push_back(std::max<size_t>(3, std::to_string(control.rows.size()).size()));
  for (size_t c = 0; c < control.columns.size(); ++c) {
    size_t width = Width(control.columns[c]);
    for (const auto& row : control.rows)
      if (c < row.size()) width = std::max(width, Width(row[c]));
    widths.push_back(width);
  }
  auto line = [&](const std::string& first, const std::vector<std::string>& cells, bool number) {
    std::string text = "  " + (number ? PadLeft(first, widths[0]) : PadRight(first, widths[0]));
    for (size_t c = 0; c < control.columns.size(); ++c)
      text += "  " + PadRight(c < cells.size() ? cells[c] : "", widths[c + 1]);
    TrimLineEnd(text);
    return text + "\n";
  };
  std::string text = caption.empty() ? "" : caption + ":\n";
  text += line("Row", control.columns, false);
  for (size_t r = 0; r < control.rows.size(); ++r)
    text += line(std::to_string(r + 1), control.rows[r], true);
  if (control.rows.empty()) text += "  (no rows)\n";
  return text;
}

class DialogRun {
 public:
  DialogRun(od::Editor& editor, od::DialogModel& dialog) : editor_(editor), dialog_(dialog) {}

  od::DialogResult Run() {
    dialog_.OnInit();
    PrintTitle();
    bool may_close_at_once = true;
    for (;;) {
      bool asked = false;
      for (size_t i = 0; i < dialog_.controls().size(); ++i) {
        const Control& control = dialog_.controls()[i];
        if (!control.visible) continue;
        if (!control.Answerable()) {
          editor_.Print(DescribeControl(control));
          continue;
        }
        asked = true;
        if (!AskControl(i)) return od::DialogResult::kCancel;
      }
      int button = od::kIdOk;
      // A dialog with nothing to answer (a report) closes with OK without asking.
      if (asked || !ExtraButtons().empty() || !OkAvailable() || !may_close_at_once) {
        std::optional<int> chosen = AskButton();
        if (!chosen) return od::DialogResult::kCancel;
        button = *chosen;
      }
      if (button == kNoButton) {
        editor_.Print("OK is not available now; change the dialog or answer Cancel.\n");
        continue;
      }
      od::PressOutcome outcome = dialog_.Press(button);
      if (outcome.closes) return outcome.result;
      if (!outcome.refusal.ok()) {
        if (!editor_.Refuse(outcome.refusal.message())) return od::DialogResult::kCancel;
        may_close_at_once = false;
      }
      // The dialog stays open: it is asked again from its first control.
    }
  }

 private:
  static constexpr int kNoButton = -1;

  void PrintTitle() {
    const std::string& title = dialog_.title();
    if (title.empty()) return;
    editor_.Print(title + "\n" + std::string(Width(title), '-') + "\n");
  }

  // One answer with its trailing line end removed; nothing when the user cancelled (the
  // editor's cancel, or the answer "Cancel").
  std::optional<std::string> Ask(const std::string& prompt) {
    od::PromptResult<std::string> answer = editor_.GetString(prompt, true);
    if (answer.status == od::PromptStatus::kCancel) return std::nullopt;
    std::string text = answer.value;
    while (!text.empty() && (text.back() == '\r' || text.back() == '\n')) text.pop_back();
    if (od::EqualsIgnoreCase(Trim(text), "Cancel")) return std::nullopt;
    return text;
  }

  // A script stops here: its following prompts are cancelled, and so is the dialog.
  void Refuse(const std::string& message) { (void)editor_.Refuse(message); }

  const Control& At(size_t index) const { return dialog_.controls()[index]; }

  bool AskControl(size_t index) {
    switch (At(index).kind) {
      case ControlKind::kCheckBox: return AskCheck(index);
      case ControlKind::kEditBox: return AskEdit(index);
      case ControlKind::kComboBox:
      case ControlKind::kListBox: return AskChoice(index);
      case ControlKind::kGrid: return AskGrid(index);
      default: return true;
    }
  }

  bool AskCheck(size_t index) {
    const std::string prompt =
        Caption(At(index)) + " [Yes/No] <" + YesNo(At(index).checked) + ">: ";
    for (;;) {
      std::optional<std::string> answer = Ask(prompt);
      if (!answer) return false;
      std::string text = Trim(*answer);
      if (text.empty()) return true;
      if (!MatchesKeyword(text, "Yes") && !MatchesKeyword(text, "No")) {
        Refuse("Requires Yes or No.");
        continue;
      }
      Control before = At(index);
      dialog_.SetChecked(before.id, MatchesKeyword(text, "Yes"));
      Changed(index, before);
      return true;
    }
  }

  bool AskEdit(size_t index) {
    const Control& edit = At(index);
    std::string prompt = Caption(edit);
    if (edit.edit_type != od::EditType::kText) prompt += " (" + od::EditRule(edit) + ")";
    if (!edit.text.empty()) prompt += " <" + edit.text + ">";
    prompt += ": ";
    for (;;) {
      std::optional<std::string> answer = Ask(prompt);
      if (!answer) return false;
      if (Trim(*answer).empty()) return true;
      std::string text = Trim(*answer) == "\"\"" ? "" : *answer;
      if (At(index).edit_type != od::EditType::kText) text = Trim(text);
      Status fits = od::CheckEditText(At(index), text);
      if (!fits.ok()) {
        Refuse(fits.message() + ".");
        continue;
      }
      Control before = At(index);
      dialog_.SetText(before.id, text);
      Changed(index, before);
      return true;
    }
  }

  bool AskChoice(size_t index) {
    editor_.Print(DescribeControl(At(index)));
    const bool multiple = At(index).kind == ControlKind::kListBox &&
                          At(index).list_mode == od::ListMode::kMultiple;
    std::string prompt = Caption(At(index));
    if (multiple) {
      std::string current = NumberList(At(index).selection);
      prompt += " (numbers, names, * all, - none) <" + (current.empty() ? "none" : current) + ">";
    } else {
      prompt += " (number or name)";
      int selected = At(index).SelectedIndex();
      if (selected >= 0 && static_cast<size_t>(selected) < At(index).items.size()) prompt += " <" + ItemText(At(index).items[selected]) + ">";
    }
    prompt += ": ";
    for (;;) {
      std::optional<std::string> answer = Ask(prompt);
      if (!answer) return false;
      std::string text = Trim(*answer);
      if (text.empty()) return true;
      const std::vector<std::string>& items = At(index).items;
      std::vector<int> picked;
      std::string error;
      if (multiple && text == "*") {
        for (size_t i = 0; i < items.size(); ++i) picked.push_back(static_cast<int>(i));
      } else if (multiple && text == "-") {
        // nothing selected
      } else {
        // Numbers first; an answer that is not valid numbers may still be an item's name.
        Pick numbers = PickNumbers(text, items.size(), &picked, &error);
        if (numbers != Pick::kOk) {
          picked.clear();
          std::string name_error;
          if (!PickNames(text, items, multiple, &picked, &name_error)) {
            Refuse(numbers == Pick::kRefused ? error : name_error);
            continue;
          }
        }
        std::sort(picked.begin(), picked.end());
        picked.erase(std::unique(picked.begin(), picked.end()), picked.end());
        if (!multiple && picked.size() != 1) {
          Refuse("Requires one item.");
          continue;
        }
      }
      Control before = At(index);
      dialog_.SetSelectedIndices(before.id, picked);
      Changed(index, before);
      return true;
    }
  }

  bool AskGrid(size_t index) {
    editor_.Print(DescribeControl(At(index)));
    while (At(index).Answerable()) {
      const Control& grid = At(index);
      std::vector<size_t> editable;
      for (size_t c = 0; c < grid.columns.size(); ++c)
        if (Editable(grid, c)) editable.push_back(c);
      std::string names;
      for (size_t c : editable) names += (names.empty() ? "" : ", ") + grid.columns[c];
      const bool one_column = editable.size() == 1;
      const std::string prompt =
          Caption(grid) + (one_column ? ": row to change in " + names
                                      : ": cell to change as row,column") +
          " (Enter when done): ";
      std::optional<std::string> answer = Ask(prompt);
      if (!answer) return false;
      std::string text = Trim(*answer);
      if (text.empty()) return true;

      std::vector<std::string> parts = Split(text, ",");
      size_t row = 0, column = one_column ? editable[0] : grid.columns.size();
      bool read = parts.size() <= 2 && IsNumber(parts[0]);
      if (read) row = static_cast<size_t>(std::stoi(parts[0]));
      if (read && parts.size() == 2) {
        column = grid.columns.size();
        if (IsNumber(parts[1])) {
          column = static_cast<size_t>(std::stoi(parts[1])) - 1;
        } else {
          for (size_t c = 0; c < grid.columns.size(); ++c)
            if (od::EqualsIgnoreCase(grid.columns[c], parts[1])) column = c;
        }
      }
      if (!read || row < 1 || row > grid.rows.size() || !Editable(grid, column)) {
        std::string rows = "a row from 1 to " + std::to_string(grid.rows.size());
        Refuse(one_column ? "Requires " + rows + "."
                          : "Requires row,column with " + rows + " and a column to edit: " +
                                names + ".");
        continue;
      }
      const std::vector<std::string>& cells = grid.rows[row - 1];
      const std::string current = column < cells.size() ? cells[column] : "";
      std::string cell_prompt = "Row " + std::to_string(row) + " " + grid.columns[column];
      if (!current.empty()) cell_prompt += " <" + current + ">";
      std::optional<std::string> value = Ask(cell_prompt + ": ");
      if (!value) return false;
      if (Trim(*value).empty()) continue;
      Control before = grid;
      dialog_.SetCell(before.id, row - 1, column, Trim(*value) == "\"\"" ? "" : *value);
      Changed(index, before);
    }
    return true;
  }

  // After the user changed control `index` (it was `before`): tells the model, then shows
  // every control the model changed in turn that the user has already passed; controls
  // further on show their new state when their prompt comes.
  void Changed(size_t index, const Control& before) {
    if (At(index) == before) return;
    std::deque<Control> answered = dialog_.controls();
    dialog_.OnChanged(before.id);
    const auto& now = dialog_.controls();
    for (size_t i = 0; i <= index && i < now.size() && i < answered.size(); ++i)
      if (now[i] != answered[i]) editor_.Print(DescribeControl(now[i]));
  }

  bool OkAvailable() const {
    const Control* ok = dialog_.Find(od::kIdOk);
    return !ok || (ok->visible && ok->enabled);
  }

  std::vector<const Control*> ExtraButtons() const {
    std::vector<const Control*> buttons;
    for (const Control& control : dialog_.controls())
      if (control.kind == ControlKind::kButton && control.visible && control.enabled &&
          control.id != od::kIdOk && control.id != od::kIdCancel)
        buttons.push_back(&control);
    return buttons;
  }

  // The button prompt: a button id, kNoButton for Enter while OK is unavailable, nothing when
  // cancelled.
  std::optional<int> AskButton() {
    struct Choice {
      std::string label;
      int id;
    };
    std::vector<Choice> choices;
    const Control* ok = dialog_.Find(od::kIdOk);
    if (OkAvailable()) choices.push_back({ok ? Caption(*ok) : "OK", od::kIdOk});
    for (const Control* button : ExtraButtons()) choices.push_back({Caption(*button), button->id});
    choices.push_back({"Cancel", od::kIdCancel});
    std::string names;
    for (const Choice& choice : choices) names += (names.empty() ? "" : ", ") + choice.label;
    std::string prompt = "Finish (" + names + ")";
    if (OkAvailable()) prompt += " <" + choices.front().label + ">";
    prompt += ": ";
    for (;;) {
      std::optional<std::string> answer = Ask(prompt);
      if (!answer) return std::nullopt;
      std::string text = Trim(*answer);
      if (text.empty()) return OkAvailable() ? od::kIdOk : kNoButton;
      for (const Choice& choice : choices) {
        if (!MatchesKeyword(text, choice.label)) continue;
        if (choice.id == od::kIdCancel) return std::nullopt;
        return choice.id;
      }
      Refuse("Requires one of: " + names + ".");
    }
  }

  od::Editor& editor_;
  od::DialogModel& dialog_;
};

}  // namespace

od::DialogResult DialogRenderer::Show(od::DialogModel& dialog) {
  return DialogRun(editor_, dialog).Run();
}

std::string DescribeControl(const Control& control) {
  if (!control.visible) return "";
  std::string caption = Caption(control);
  if (!control.enabled && control.kind != ControlKind::kStaticText) caption += " (unavailable)";
  switch (control.kind) {
    case ControlKind::kStaticText:
      return control.label.empty() ? "" : control.label + "\n";
    case ControlKind::kTextBox:
      return (control.label.empty() ? "" : control.label + "\n") + PlainLines(control.text);
    case ControlKind::kCheckBox:
      return caption + ": " + YesNo(control.checked) + "\n";
    case ControlKind::kEditBox:
      return caption + ": " + control.text + "\n";
    case ControlKind::kComboBox:
    case ControlKind::kListBox:
      return DescribeChoices(control, caption);
    case ControlKind::kGrid:
      return DescribeGrid(control, caption);
    case ControlKind::kButton:
      return "";
  }
  return "";
}

}  // namespace veltor::console
