#include "ui/command_palette.h"

#include <functional>

namespace veltor::ui {

namespace {

MenuGroup Group(std::string label, std::vector<MenuEntry> entries) {
  MenuGroup group;
  group.label = std::move(label);
  group.entries = std::move(entries);
  return group;
}

MenuGroup Leaf(std::string label, std::string command) {
  MenuGroup leaf;
  leaf.label = std::move(label);
  leaf.command = std::move(command);
  return leaf;
}

MenuTree BuildMenu() {
  return {
      Group("OD management", {{"VELTOR_LOAD_DEFINITION", "Copy definitions from file"},
                              {"VELTOR_STAT", "Usage stats"},
                              {"VELTOR_TRANSLATE", "Translate"},
                              {"VELTOR_RMUNUSED", "Remove unused"}}),
      Group("Search OD", {{"VELTOR_HAS_NO_OD", "Find entities with no OD"},
                          {"VELTOR_HAS_OD", "Find entities with OD"},
                          {"VELTOR_HAS_DUPLICATE_OD", "Find entities with duplicate OD"},
                          {"VELTOR_HAS_MULTIPLE_OD", "Find entities with multiple OD"},
                          {"VELTOR_HAS_NO_SPECIFIC_OD", "Find entities with no specific OD"},
                          {"VELTOR_HAS_SPECIFIC_OD", "Find entities with specific OD"},
                          {"VELTOR_HAS_SPECIFIC_VALUES", "Find entities with specific OD values"}}),
      Group("Attach/detach OD", {{"VELTOR_ADEATTACHDATA", "Attach/detach"},
                                 {"VELTOR_RM_ALL", "Detach all"},
                                 {"VELTOR_RM", "Detach specified"},
                                 {"VELTOR_REMOVE_DUPLICATE_OD", "Detach duplicate"}}),
      Group("Copy OD", {{"VELTOR_COPY_OD", "Copy OD from reference"},
                        {"VELTOR_COPY_OD_VALUE", "Copy OD/values from reference"},
                        {"VELTOR_COPY_ALL", "Copy properties/OD from reference"},
                        {"VELTOR_COPY_ALL_VALUE", "Copy properties/OD/values from reference"},
                        {"VELTOR_COPY_VALUE", "Copy values from reference"}}),
      Group("Set/edit OD values", {{"VELTOR_SETXYZ", "Set from XYZ"},
                                   {"VELTOR_SETPROP", "Set from geometric properties"},
                                   {"VELTOR_SETTEXT", "Set from text"},
                                   {"VELTOR_LOAD_ATTRS", "Set from attributes"},
                                   {"VELTOR_STORE_ATTRS", "Upload to attributes"},
                                   {"VELTOR_SETID", "Create IDs"},
                                   {"VELTOR_REPLACE", "Replace"},
                                   {"VELTOR_ADDVAL", "Add from field in field"},
                                   {"VELTOR_ADDVAL_OD2OD", "Add values from OD to OD"}}),
      // "Covert" is the label users know; it is shown as it stands.
      Group("Modify entities", {{"VELTOR_2POLY", "Covert to 2D polylines"},
                                {"VELTOR_23DPOLY", "Convert to 3D polylines"},
                                {"VELTOR_BREAK", "Break"}}),
      Group("Export/import", {{"VELTOR_EXPL", "Explication"}}),
      Leaf("OD table", "VELTOR_TABLE"),
      Leaf("About", "VELTOR_ABOUT"),
  };
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
