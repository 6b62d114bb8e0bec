// The command palette: the module's commands as a tree of plain-language labels grouped by
// task. Choosing a label runs its command in the active drawing. The palette holds nothing
// but the tree; every action goes through the command line.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "od/host.h"
#include "od/palette.h"

namespace veltor::ui {

struct MenuEntry {
  std::string command;
  std::string label;
};

// A group of entries, or a leaf: a group without entries that runs its own command.
struct MenuGroup {
  std::string label;
  std::string command;  // a leaf's command; empty for a group with entries
  std::vector<MenuEntry> entries;
  std::vector<MenuGroup> children;  // shown after the label, before the entries
};

using MenuTree = std::vector<MenuGroup>;

// The shipped tree, built from the command catalogue (ui/command_catalogue.h), in display order.
const MenuTree& CommandMenu();

// The command of `label`: groups are walked depth first in order; within a group the label is
// compared (exactly) with each entry's label, then the group's children are searched; a group
// without entries matches its own label and yields its own command. The first match wins.
// Nothing when no node matches.
std::optional<std::string> FindCommand(const MenuTree& tree, const std::string& label);

// Runs what choosing `label` runs: first cancels any command in progress ("CANCELCMD"), then,
// unless the label is a group with entries or children, queues "<COMMAND>\n" for the active
// drawing. A group label or an unknown label queues nothing.
void RunLabel(od::Host& host, const MenuTree& tree, const std::string& label);
void RunLabel(od::Editor& editor, const MenuTree& tree, const std::string& label);
inline void RunLabel(od::Host& host, const std::string& label) {
  RunLabel(host, CommandMenu(), label);
}

// The tree as text lines, for front ends without a tree control. Groups show their label
// indented two spaces per level; every runnable label (entries and leaves) gets a number,
// counted from 1 in display order: "OD management", "   1  Copy definitions from file", ...,
// "34  OD table".
struct MenuLine {
  std::string text;
  int number = 0;     // 0 for a group line
  std::string label;  // the label the line shows
};
std::vector<MenuLine> NumberedMenu(const MenuTree& tree);

// The label numbered `number` in NumberedMenu, or nothing.
std::optional<std::string> LabelOfNumber(const MenuTree& tree, int number);

// The command palette: a launcher holding its own copy of the menu tree.
class CommandPalette : public od::Palette {
 public:
  CommandPalette() : tree_(CommandMenu()) {}
  std::string Name() const override { return "VELTOR_CTL"; }
  const MenuTree& tree() const { return tree_; }

 private:
  MenuTree tree_;
};

}  // namespace veltor::ui
