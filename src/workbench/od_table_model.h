// The OD table grid as a Qt table model over the palette's view model. Virtual: rows and
// texts are asked of the view model when the table view paints them, never copied.
#pragma once

#include <QAbstractTableModel>

#include "ui/od_table_view.h"

namespace veltor::workbench {

class OdTableModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  // `view` must outlive the model.
  explicit OdTableModel(ui::OdTableView& view, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  // An edit finished in place: the view model parses and writes it.
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  // Tells the views what the view model changed.
  void Changed(ui::TableViewChange change);

 private:
  ui::OdTableView& view_;
};

}  // namespace veltor::workbench
