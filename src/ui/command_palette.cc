#include "ui/command_palette.h"

#include <algorithm>
#include <cstring>
#include <functional>

#include "ui/command_catalogue.h"

namespace veltor::ui {

namespace {

// The palette's tree from the command catalogue: the groups in their display order, each with
// its commands' labels by position, then the top-level leaves by position.
MenuTree BuildMenu() {
  MenuTree tree;
  auto by_position = [](const CommandRow* a, const CommandRow* b) { return a->position < b->position; };
  for (const char* group_label : PaletteGroups()) {
    std::vector<const CommandRow*> rows;
    for (const CommandRow& row : CommandRows())
      if (row.label && row.group && std::strcmp(row.group, group_label) == 0) rows.push_back(&row);
    std::stable_sort(rows.begin(), rows.end(), by_position);
    MenuGroup group;
    group.label = group_label;
    for (const CommandRow* row : rows) group.entries.push_back({row->name, row->label});
    tree.push_back(std::move(group));
  }
  std::vector<const CommandRow*> leaves;
  for (const CommandRow& row : CommandRows())
    if (row.label && row.group && row.group[0] == '\0') leaves.push_back(&row);
  std::stable_sort(leaves.begin(), leaves.end(), by_position);
  for (const CommandRow* row : leaves) {
    MenuGroup leaf;
    leaf.label = row->label;
    leaf.command = row->name;
    tree.push_back(std::move(leaf));
  }
  return tree;
}

const MenuGroup* FindGroupWithItems(const MenuTree& tree, const std::string& label) {
  for (const MenuGroup& group : tree) {
    if (group.label == label && (!group.entries.empty() || !group.children.empty()))
      return &group;
    if (const MenuGroup* found = FindGroupWithItems(group.children, label)) return found;
  }
  return nullptr;
}

}  // namespace

const MenuTree& CommandMenu() {
  static const MenuTree tree = BuildMenu();
  return tree;
}

std::optional<std::string> FindCommand(const MenuTree& tree, const std::string& label) {
  for (const MenuGroup& group : tree) {
    if (group.entries.empty() && group.label == label) return group.command;
    for (const MenuEntry& entry : group.entries)
      if (entry.label == label) return entry.command;
    if (std::optional<std::string> found = FindCommand(group.children, label)) return found;
  }
  return std::nullopt;
}

void RunLabel(od::Host& host, const MenuTree& tree, const std::string& label) {
  RunLabel(host.Ed(), tree, label);
}

void RunLabel(od::Editor& editor, const MenuTree& tree, const std::string& label) {
  editor.PostCommand("CANCELCMD");
  // A group that shows items under it is not runnable, whatever a lookup would find.
  if (FindGroupWithItems(tree, label)) return;
  std::optional<std::string> command = FindCommand(tree, label);
  if (!command || command->empty()) return;
  editor.SendStringToExecute(*command + "\n");
}

std::vector<MenuLine> NumberedMenu(const MenuTree& tree) {
  int runnable = 0;
  std::function<void(const MenuTree&)> count = [&](const MenuTree& groups) {
    for (const MenuGroup& group : groups) {
      count(group.children);
      runnable += group.entries.empty() ? 1 : static_cast<int>(group.entries.size());
    }
  };
  count(tree);
  const size_t width = std::to_string(runnable).size();

  std::vector<MenuLine> lines;
  int number = 0;
  auto numbered = [&](size_t depth, const std::string& label) {
    std::string digits = std::to_string(++number);
    std::string text(2 * depth, ' ');
    text += std::string(width - digits.size(), ' ') + digits + "  " + label;
    lines.push_back({std::move(text), number, label});
  };
  std::function<void(const MenuTree&, size_t)> walk = [&](const MenuTree& groups, size_t depth) {
    for (const MenuGroup& group : groups) {
      if (group.entries.empty() && group.children.empty()) {
        numbered(depth, group.label);
        continue;
      }
      lines.push_back({std::string(2 * depth, ' ') + group.label, 0, group.label});
      walk(group.children, depth + 1);
      for (const MenuEntry& entry : group.entries) numbered(depth + 1, entry.label);
    }
  };
  walk(tree, 0);
  return lines;
}

std::optional<std::string> LabelOfNumber(const MenuTree& tree, int number) {
  if (number < 1) return std::nullopt;
  for (const MenuLine& line : NumberedMenu(tree))
    if (line.number == number) return line.label;
  return std::nullopt;
}

}  // namespace veltor::ui
