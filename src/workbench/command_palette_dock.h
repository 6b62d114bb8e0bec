// The command palette as a dock: the module's menu tree in a tree view. A double click on a
// label runs it as ui::RunLabel does (cancel what runs, queue the label's command); then the
// driver is asked to run what was queued.
#pragma once

#include <QDockWidget>
#include <functional>
#include <string>

#include "ui/command_palette.h"

class QTreeWidget;
class QTreeWidgetItem;

namespace veltor::workbench {

class CommandPaletteDock : public QDockWidget {
  Q_OBJECT

 public:
  // `run_label` runs a chosen label (the main window wires it to RunLabel and the driver).
  CommandPaletteDock(const ui::CommandPalette& palette,
                     std::function<void(const std::string&)> run_label, QWidget* parent = nullptr);

  QTreeWidget* tree() const { return tree_; }

 private:
  void AddGroup(const ui::MenuGroup& group, QTreeWidgetItem* parent);
  void Activated(QTreeWidgetItem* item);

  QTreeWidget* tree_ = nullptr;
  std::function<void(const std::string&)> run_label_;
};

}  // namespace veltor::workbench
