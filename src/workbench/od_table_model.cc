#include "workbench/od_table_model.h"

#include <QApplication>
#include <QPalette>

namespace veltor::workbench {

OdTableModel::OdTableModel(ui::OdTableView& view, QObject* parent)
    : QAbstractTableModel(parent), view_(view) {}

int OdTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(view_.RowCount());
}

int OdTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(view_.ColumnCount());
}

QVariant OdTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  auto row = static_cast<size_t>(index.row());
  auto column = static_cast<size_t>(index.column());
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return QString::fromStdString(view_.CellText(row, column));
    case Qt::BackgroundRole:
      // The running numbers are drawn on the colour of the window's menus and buttons.
      if (column == 0) return QApplication::palette().brush(QPalette::Button);
      return {};
    default:
      return {};
  }
}

QVariant OdTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) return {};
  return QString::fromStdString(view_.ColumnTitle(static_cast<size_t>(section)));
}

Qt::ItemFlags OdTableModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  if (index.isValid() && index.column() > 0) flags |= Qt::ItemIsEditable;
  return flags;
}

bool OdTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!index.isValid() || role != Qt::EditRole) return false;
  view_.EditCell(static_cast<size_t>(index.row()), static_cast<size_t>(index.column()),
                 value.toString().toStdString());
  return true;
}

void OdTableModel::Changed(ui::TableViewChange change) {
  switch (change) {
    case ui::TableViewChange::kLayout:
    case ui::TableViewChange::kRows:
      // The view model has already changed; a reset makes the views ask for everything again.
      beginResetModel();
      endResetModel();
      return;
    case ui::TableViewChange::kCells:
      if (rowCount() > 0 && columnCount() > 0)
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
      return;
    case ui::TableViewChange::kSelection:
    case ui::TableViewChange::kTables:
      return;
  }
}

}  // namespace veltor::workbench
