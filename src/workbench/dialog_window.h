// Any od::DialogModel as a Qt dialog: one widget per control in the model's order, buttons
// in a row at the bottom. The contract is the console renderer's: OnInit once before
// showing; a change the user makes goes into the model through its setters, then OnChanged
// (only when the control really changed), and every widget is brought up to the model's
// state again; a button is pressed through DialogModel::Press (OnButton, then OnOk), and a
// refusal (of OnOk, or of an edit box's text) is shown under the controls while the dialog
// stays open. Cancel, Escape and closing the window leave
// with kCancel without pressing anything.
#pragma once

#include <QDialog>
#include <map>

#include "od/dialog_model.h"

class QLabel;
class QWidget;

namespace veltor::workbench {

class DialogWindow : public QDialog {
  Q_OBJECT

 public:
  // Calls the model's OnInit and builds the widgets. The model must outlive the window.
  explicit DialogWindow(od::DialogModel& model, QWidget* parent = nullptr);

  // Shows the dialog modally; kOk once the model accepted OK.
  od::DialogResult Run();
  // Presses a button as a click on it does (tests use the buttons themselves).
  void PressButton(int id);
  od::DialogResult result_value() const { return result_; }
  // The widget that shows control `id` (named "control_<id>"), or nullptr.
  QWidget* WidgetOf(int id) const;
  // The refusal shown now, or empty.
  QString refusal() const;

 private:
  void Build();
  QWidget* BuildControl(const od::Control& control, QWidget* parent);
  // Tells the model that control `id` changed from `before`, then shows its new state.
  void Changed(int id, const od::Control& before);
  // Brings every widget up to the model's state.
  void Sync();
  void SyncControl(const od::Control& control);
  // Puts the text of every edit box into the model; false (with a message shown) when one
  // does not fit its type or range.
  bool CommitEdits();
  bool CommitEdit(int id);
  void ShowRefusal(const QString& message);

  od::DialogModel& model_;
  od::DialogResult result_ = od::DialogResult::kCancel;
  std::map<int, QWidget*> widgets_;  // the control's own widget (check box, list, ...)
  std::map<int, QWidget*> labels_;   // its caption, when it has one of its own
  std::map<int, QWidget*> rows_;     // caption and widget together, hidden with the control
  QLabel* refusal_ = nullptr;
  bool syncing_ = false;             // widgets are being set from the model
};

}  // namespace veltor::workbench
