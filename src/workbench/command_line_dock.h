// The command line dock: the history of what the session printed, the prompt waiting for an
// answer ("Command: " when none is), and the input line. Enter sends the line to the
// CommandDriver; Escape cancels; Up and Down walk the lines typed before.
#pragma once

#include <QDockWidget>
#include <QStringList>

class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace veltor::workbench {

class CommandDriver;

class CommandLineDock : public QDockWidget {
  Q_OBJECT

 public:
  CommandLineDock(CommandDriver& driver, QWidget* parent = nullptr);

  // Appends printed text to the history (text may hold several lines or part of one).
  void Append(const QString& text);
  // What the history holds, as plain text.
  QString History() const;
  // The prompt shown before the input line; empty shows "Command: ".
  void ShowPrompt(const QString& prompt);
  QLineEdit* input() const { return line_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Submit();

  CommandDriver& driver_;
  QPlainTextEdit* history_ = nullptr;
  QLabel* prompt_ = nullptr;
  QLineEdit* line_ = nullptr;
  QStringList typed_;
  int typed_at_ = 0;
  QString pending_;  // printed text after the last line end, not yet in the history
};

}  // namespace veltor::workbench
