#include "workbench/dialog_window.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "od/text.h"

namespace veltor::workbench {

namespace {

using od::Control;
using od::ControlKind;

QString Q(const std::string& text) { return QString::fromStdString(text); }

// Dialog units are about two pixels on a common screen.
constexpr int kPixelsPerUnit = 2;
// A dialog opens no larger than this (the user may make it larger).
const QSize kLargest(1100, 800);

}  // namespace

DialogWindow::DialogWindow(od::DialogModel& model, QWidget* parent) : QDialog(parent), model_(model) {
  setWindowTitle(Q(model_.title()));
  model_.OnInit();
  Build();
  Sync();
}

od::DialogResult DialogWindow::Run() {
  result_ = od::DialogResult::kCancel;
  exec();
  return result_;
}

QWidget* DialogWindow::WidgetOf(int id) const {
  auto it = widgets_.find(id);
  return it == widgets_.end() ? nullptr : it->second;
}

void DialogWindow::Build() {
  auto* layout = new QVBoxLayout(this);
  auto* buttons = new QHBoxLayout();
  buttons->addStretch(1);
  for (const Control& control : model_.controls()) {
    if (control.kind == ControlKind::kButton) {
      auto* button = new QPushButton(Q(control.label), this);
      button->setObjectName(QString("control_%1").arg(control.id));
      button->setAutoDefault(false);
      if (control.id == od::kIdOk) button->setDefault(true);
      const int id = control.id;
      connect(button, &QPushButton::clicked, this, [this, id] { PressButton(id); });
      widgets_[id] = button;
      buttons->addWidget(button);
      continue;
    }
    layout->addWidget(BuildControl(control, this));
  }
  // Every dialog can be closed both ways, also one whose model has no such buttons.
  for (int id : {od::kIdOk, od::kIdCancel}) {
    if (model_.Find(id)) continue;
    auto* button = new QPushButton(id == od::kIdOk ? tr("OK") : tr("Cancel"), this);
    button->setObjectName(QString("control_%1").arg(id));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, id] { PressButton(id); });
    widgets_[id] = button;
    buttons->addWidget(button);
  }
  refusal_ = new QLabel(this);
  refusal_->setObjectName("refusal");
  refusal_->setWordWrap(true);
  refusal_->setStyleSheet("color: #c62828;");
  refusal_->setVisible(false);
  layout->addWidget(refusal_);
  layout->addLayout(buttons);
  const od::DialogSize size = model_.size();
  if (size.width > 0 && size.height > 0)
    resize(std::clamp(size.width * kPixelsPerUnit, sizeHint().width(), kLargest.width()),
           std::clamp(size.height * kPixelsPerUnit, sizeHint().height(), kLargest.height()));
}

QWidget* DialogWindow::BuildControl(const Control& control, QWidget* parent) {
  const int id = control.id;
  auto* box = new QWidget(parent);
  auto* layout = new QVBoxLayout(box);
  layout->setContentsMargins(0, 0, 0, 0);
  auto caption = [&] {
    if (control.label.empty()) return;
    auto* label = new QLabel(Q(control.label), box);
    label->setWordWrap(true);
    labels_[id] = label;
    layout->addWidget(label);
  };
  QWidget* widget = nullptr;
  switch (control.kind) {
    case ControlKind::kStaticText: {
      auto* label = new QLabel(Q(control.label), box);
      label->setWordWrap(true);
      widget = label;
      break;
    }
    case ControlKind::kTextBox: {
      caption();
      auto* text = new QPlainTextEdit(box);
      text->setReadOnly(true);
      widget = text;
      break;
    }
    case ControlKind::kCheckBox: {
      auto* check = new QCheckBox(Q(control.label), box);
      connect(check, &QCheckBox::toggled, this, [this, id](bool on) {
        if (syncing_) return;
        Control before = *model_.Find(id);
        model_.SetChecked(id, on);
        Changed(id, before);
      });
      widget = check;
      break;
    }
    case ControlKind::kEditBox: {
      caption();
      auto* edit = new QLineEdit(box);
      const std::string rule = od::EditRule(control);
      if (!rule.empty()) edit->setPlaceholderText(Q(rule));
      connect(edit, &QLineEdit::editingFinished, this, [this, id] {
        if (!syncing_) CommitEdit(id);
      });
      widget = edit;
      break;
    }
    case ControlKind::kComboBox: {
      caption();
      auto* combo = new QComboBox(box);
      connect(combo, qOverload<int>(&QComboBox::activated), this, [this, id](int index) {
        if (syncing_) return;
        Control before = *model_.Find(id);
        model_.SetSelectedIndex(id, index);
        Changed(id, before);
      });
      widget = combo;
      break;
    }
    case ControlKind::kListBox: {
      caption();
      auto* list = new QListWidget(box);
      switch (control.list_mode) {
        case od::ListMode::kSingle: list->setSelectionMode(QAbstractItemView::SingleSelection); break;
        case od::ListMode::kMultiple: list->setSelectionMode(QAbstractItemView::MultiSelection); break;
        case od::ListMode::kDisplayOnly: list->setSelectionMode(QAbstractItemView::NoSelection); break;
      }
      connect(list, &QListWidget::itemSelectionChanged, this, [this, id, list] {
        if (syncing_) return;
        std::vector<int> rows;
        for (int row = 0; row < list->count(); ++row)
          if (list->item(row)->isSelected()) rows.push_back(row);
        Control before = *model_.Find(id);
        model_.SetSelectedIndices(id, rows);
        Changed(id, before);
      });
      widget = list;
      break;
    }
    case ControlKind::kGrid: {
      caption();
      auto* table = new QTableWidget(box);
      table->setColumnCount(static_cast<int>(control.columns.size()));
      QStringList titles;
      for (const std::string& title : control.columns) titles << Q(title);
      table->setHorizontalHeaderLabels(titles);
      table->horizontalHeader()->setStretchLastSection(true);
      connect(table, &QTableWidget::cellChanged, this, [this, id, table](int row, int column) {
        if (syncing_) return;
        Control before = *model_.Find(id);
        model_.SetCell(id, static_cast<size_t>(row), static_cast<size_t>(column),
                       table->item(row, column)->text().toStdString());
        Changed(id, before);
      });
      widget = table;
      break;
    }
    case ControlKind::kButton:
      break;
  }
  if (widget) {
    widget->setObjectName(QString("control_%1").arg(id));
    widgets_[id] = widget;
    layout->addWidget(widget);
  }
  rows_[id] = box;
  return box;
}

void DialogWindow::Changed(int id, const Control& before) {
  const Control* now = model_.Find(id);
  if (now && *now != before) model_.OnChanged(id);
  Sync();
}

void DialogWindow::Sync() {
  syncing_ = true;
  for (const Control& control : model_.controls()) SyncControl(control);
  syncing_ = false;
}

void DialogWindow::SyncControl(const Control& control) {
  const int id = control.id;
  if (auto row = rows_.find(id); row != rows_.end())
    row->second->setVisible(control.visible);
  if (auto label = labels_.find(id); label != labels_.end()) {
    static_cast<QLabel*>(label->second)->setText(Q(control.label));
    label->second->setEnabled(control.enabled);
  }
  QWidget* widget = WidgetOf(id);
  if (!widget) return;
  widget->setEnabled(control.enabled);
  if (control.kind == ControlKind::kButton) {
    widget->setVisible(control.visible);
    static_cast<QPushButton*>(widget)->setText(Q(control.label));
    return;
  }
  switch (control.kind) {
    case ControlKind::kStaticText:
      static_cast<QLabel*>(widget)->setText(Q(control.label));
      break;
    case ControlKind::kTextBox: {
      auto* text = static_cast<QPlainTextEdit*>(widget);
      if (text->toPlainText() != Q(control.text)) text->setPlainText(Q(control.text));
      break;
    }
    case ControlKind::kCheckBox: {
      auto* check = static_cast<QCheckBox*>(widget);
      check->setText(Q(control.label));
      check->setChecked(control.checked);
      break;
    }
    case ControlKind::kEditBox: {
      auto* edit = static_cast<QLineEdit*>(widget);
      if (edit->text() != Q(control.text)) edit->setText(Q(control.text));
      break;
    }
    case ControlKind::kComboBox: {
      auto* combo = static_cast<QComboBox*>(widget);
      QStringList items;
      for (const std::string& item : control.items) items << Q(item);
      QStringList shown;
      for (int i = 0; i < combo->count(); ++i) shown << combo->itemText(i);
      if (shown != items) {
        combo->clear();
        combo->addItems(items);
      }
      combo->setCurrentIndex(control.SelectedIndex());
      break;
    }
    case ControlKind::kListBox: {
      auto* list = static_cast<QListWidget*>(widget);
      QStringList items;
      for (const std::string& item : control.items) items << Q(item);
      QStringList shown;
      for (int i = 0; i < list->count(); ++i) shown << list->item(i)->text();
      if (shown != items) {
        list->clear();
        list->addItems(items);
      }
      for (int i = 0; i < list->count(); ++i) list->item(i)->setSelected(control.IsSelected(i));
      break;
    }
    case ControlKind::kGrid: {
      auto* table = static_cast<QTableWidget*>(widget);
      table->setRowCount(static_cast<int>(control.rows.size()));
      for (size_t r = 0; r < control.rows.size(); ++r)
        for (size_t c = 0; c < control.columns.size(); ++c) {
          const QString text = c < control.rows[r].size() ? Q(control.rows[r][c]) : QString();
          QTableWidgetItem* item = table->item(static_cast<int>(r), static_cast<int>(c));
          if (!item) {
            item = new QTableWidgetItem();
            table->setItem(static_cast<int>(r), static_cast<int>(c), item);
          }
          if (item->text() != text) item->setText(text);
          const bool editable = c < control.editable.size() && control.editable[c];
          item->setFlags(editable ? (Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable)
                                  : (Qt::ItemIsEnabled | Qt::ItemIsSelectable));
        }
      break;
    }
    case ControlKind::kButton:
      break;
  }
}

bool DialogWindow::CommitEdit(int id) {
  const Control* control = model_.Find(id);
  auto* edit = static_cast<QLineEdit*>(WidgetOf(id));
  if (!control || !edit || !control->visible || !control->enabled) return true;
  std::string text = edit->text().toStdString();
  if (control->edit_type != od::EditType::kText) text = std::string(od::TrimBlanks(text));
  if (text == control->text) return true;
  Status fits = od::CheckEditText(*control, text);
  if (!fits.ok()) {
    ShowRefusal(Q(fits.message() + "."));
    edit->setFocus();
    return false;
  }
  Control before = *control;
  model_.SetText(id, text);
  Changed(id, before);
  return true;
}

bool DialogWindow::CommitEdits() {
  std::vector<int> edits;
  for (const Control& control : model_.controls())
    if (control.kind == ControlKind::kEditBox) edits.push_back(control.id);
  for (int id : edits)
    if (!CommitEdit(id)) return false;
  return true;
}

void DialogWindow::PressButton(int id) {
  if (id == od::kIdCancel) {
    result_ = od::DialogResult::kCancel;
    reject();
    return;
  }
  if (!CommitEdits()) return;
  od::PressOutcome outcome = model_.Press(id);
  if (outcome.closes) {
    result_ = outcome.result;
    if (result_ == od::DialogResult::kOk) accept();
    else reject();
    return;
  }
  Sync();
  ShowRefusal(outcome.refusal.ok() ? QString() : Q(outcome.refusal.message()));
}

void DialogWindow::ShowRefusal(const QString& message) {
  refusal_->setText(message);
  refusal_->setVisible(!message.isEmpty());
}

QString DialogWindow::refusal() const { return refusal_->text(); }

}  // namespace veltor::workbench
