#include "workbench/command_palette_dock.h"

#include <QHeaderView>
#include <QTreeWidget>

namespace veltor::workbench {

CommandPaletteDock::CommandPaletteDock(const ui::CommandPalette& palette,
                                       std::function<void(const std::string&)> run_label,
                                       QWidget* parent)
    : QDockWidget(tr("Commands"), parent), run_label_(std::move(run_label)) {
  setObjectName(QString::fromStdString(palette.Name()));
  tree_ = new QTreeWidget(this);
  tree_->setObjectName("command_tree");
  tree_->setHeaderHidden(true);
  tree_->setExpandsOnDoubleClick(true);
  for (const ui::MenuGroup& group : palette.tree()) AddGroup(group, nullptr);
  tree_->expandAll();
  setWidget(tree_);
  connect(tree_, &QTreeWidget::itemDoubleClicked, this,
          [this](QTreeWidgetItem* item, int) { Activated(item); });
}

void CommandPaletteDock::AddGroup(const ui::MenuGroup& group, QTreeWidgetItem* parent) {
  auto* node = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(tree_);
  node->setText(0, QString::fromStdString(group.label));
  for (const ui::MenuGroup& child : group.children) AddGroup(child, node);
  for (const ui::MenuEntry& entry : group.entries) {
    auto* leaf = new QTreeWidgetItem(node);
    leaf->setText(0, QString::fromStdString(entry.label));
  }
}

void CommandPaletteDock::Activated(QTreeWidgetItem* item) {
  if (!item || !run_label_) return;
  // RunLabel decides what a label does: a group's label only cancels what runs.
  run_label_(item->text(0).toStdString());
}

}  // namespace veltor::workbench
