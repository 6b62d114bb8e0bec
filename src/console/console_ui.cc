#include "console/console_ui.h"

#include <cstdlib>

#include "console/table_panel.h"
#include "ui/command_palette.h"
#include "ui/od_table_view.h"

#include <filesystem>
#include <vector>

#include "console/dialog_renderer.h"
#include "od/text.h"

namespace veltor::console {

namespace {

std::string Trim(const std::string& text) { return std::string(od::TrimBlanks(text)); }

std::string Title(const std::string& title) {
  if (title.empty()) return "";
  size_t width = 0;
  for (char c : title)
    if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++width;
  return title + "\n" + std::string(width, '-') + "\n";
}

}  // namespace

std::string FilterPatterns(const std::string& filter) {
  std::string patterns;
  size_t start = 0;
  for (int field = 0; start <= filter.size(); ++field) {
    size_t end = filter.find('|', start);
    if (end == std::string::npos) end = filter.size();
    std::string piece = Trim(filter.substr(start, end - start));
    if (field % 2 == 1 && !piece.empty()) patterns += (patterns.empty() ? "" : ";") + piece;
    start = end + 1;
  }
  return patterns;
}

od::DialogResult ConsoleUi::ShowModal(od::DialogModel& dialog) {
  return DialogRenderer(editor_).Show(dialog);
}

od::MessageAnswer ConsoleUi::MessageBox(const std::string& title, const std::string& text,
                                        od::MessageButtons buttons) {
  std::string shown = text;
  for (size_t at = shown.find('\r'); at != std::string::npos; at = shown.find('\r', at))
    shown.erase(at, 1);
  if (!shown.empty() && shown.back() != '\n') shown += '\n';
  editor_.Print(Title(title) + shown);

  struct Choice {
    const char* keyword;
    od::MessageAnswer answer;
  };
  std::vector<Choice> choices;
  switch (buttons) {
    case od::MessageButtons::kOk:
      return od::MessageAnswer::kOk;
    case od::MessageButtons::kOkCancel:
      choices.push_back({"OK", od::MessageAnswer::kOk});
      choices.push_back({"Cancel", od::MessageAnswer::kCancel});
      break;
    case od::MessageButtons::kYesNo:
      choices.push_back({"Yes", od::MessageAnswer::kYes});
      choices.push_back({"No", od::MessageAnswer::kNo});
      break;
    case od::MessageButtons::kYesNoCancel:
      choices.push_back({"Yes", od::MessageAnswer::kYes});
      choices.push_back({"No", od::MessageAnswer::kNo});
      choices.push_back({"Cancel", od::MessageAnswer::kCancel});
      break;
  }
  if (choices.empty()) return od::MessageAnswer::kCancel;
  std::string names;
  for (const Choice& choice : choices) names += (names.empty() ? "" : "/") + std::string(choice.keyword);
  const std::string prompt = "Answer [" + names + "] <" + choices.front().keyword + ">: ";
  for (;;) {
    od::PromptResult<std::string> answer = editor_.GetString(prompt, true);
    if (answer.status == od::PromptStatus::kCancel) return od::MessageAnswer::kCancel;
    std::string typed = Trim(answer.value);
    if (typed.empty()) return choices.front().answer;
    if (od::EqualsIgnoreCase(typed, "Cancel")) return od::MessageAnswer::kCancel;
    for (const Choice& choice : choices)
      if (MatchesKeyword(typed, choice.keyword)) return choice.answer;
    if (!editor_.Refuse("Requires one of: " + names + ".")) return od::MessageAnswer::kCancel;
  }
}

bool ConsoleUi::ShowPalette(od::Palette& palette) {
  if (auto* table = dynamic_cast<ui::OdTableView*>(&palette)) {
    if (!open_panel_) return false;
    table_panel_ = std::make_shared<TablePanel>(editor_, *table);
    std::shared_ptr<TablePanel> panel = table_panel_;
    open_panel_([panel] { return panel->Step(); });
    return true;
  }
  auto* commands = dynamic_cast<ui::CommandPalette*>(&palette);
  if (!commands) return false;
  for (const ui::MenuLine& line : ui::NumberedMenu(commands->tree())) editor_.Print(line.text + "\n");
  for (;;) {
    od::PromptResult<std::string> answer =
        editor_.GetString("Entry number or label (Enter to close): ", true);
    if (answer.status != od::PromptStatus::kOk || answer.value.empty()) return true;
    std::string label = answer.value;
    char* end = nullptr;
    long number = std::strtol(answer.value.c_str(), &end, 10);
    if (end && *end == '\0') {
      std::optional<std::string> numbered = ui::LabelOfNumber(commands->tree(), static_cast<int>(number));
      if (!numbered) {
        if (!editor_.Refuse("No entry " + answer.value + ".")) return true;
        continue;
      }
      label = *numbered;
    }
    ui::RunLabel(editor_, commands->tree(), label);
    return true;
  }
}

std::optional<std::string> ConsoleUi::AskPath(const std::string& prompt) {
  od::PromptResult<std::string> answer = editor_.GetString(prompt, true);
  if (answer.status == od::PromptStatus::kCancel) return std::nullopt;
  std::string path = Trim(answer.value);
  if (path.size() >= 2 && path.front() == '"' && path.back() == '"')
    path = path.substr(1, path.size() - 2);
  if (path.empty() || od::EqualsIgnoreCase(path, "Cancel")) return std::nullopt;
  return path;
}

std::optional<std::string> ConsoleUi::OpenFileDialog(const std::string& title,
                                                     const std::string& filter) {
  std::string patterns = FilterPatterns(filter);
  const std::string prompt =
      title + (patterns.empty() ? "" : " (" + patterns + ")") + ", Enter to cancel: ";
  for (;;) {
    std::optional<std::string> path = AskPath(prompt);
    if (!path) return std::nullopt;
    std::error_code error;
    // A file dialog hands back a full path, whatever folder the user started from.
    if (std::filesystem::is_regular_file(*path, error)) {
      std::filesystem::path full = std::filesystem::absolute(*path, error);
      return error ? *path : full.lexically_normal().string();
    }
    editor_.Print("No such file: " + *path + "\n");
  }
}

std::optional<std::string> ConsoleUi::SaveFileDialog(const std::string& title,
                                                     const std::string& filter,
                                                     const std::string& default_name) {
  std::string patterns = FilterPatterns(filter);
  std::string prompt = title + (patterns.empty() ? "" : " (" + patterns + ")");
  if (!default_name.empty()) prompt += ", * for " + default_name;
  prompt += ", Enter to cancel: ";
  std::optional<std::string> path = AskPath(prompt);
  if (path && *path == "*") {
    if (default_name.empty()) return std::nullopt;
    return default_name;
  }
  return path;
}

}  // namespace veltor::console
