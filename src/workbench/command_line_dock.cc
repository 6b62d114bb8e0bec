#include "workbench/command_line_dock.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QVBoxLayout>

#include "workbench/command_driver.h"

namespace veltor::workbench {

namespace {

// The history keeps this many lines; older ones scroll away for good.
constexpr int kHistoryLines = 5000;

// A history that asks for a few lines' height, leaving the window's height to the drawing.
class HistoryView : public QPlainTextEdit {
 public:
  using QPlainTextEdit::QPlainTextEdit;
  QSize sizeHint() const override { return {600, 7 * fontMetrics().lineSpacing()}; }
};

}  // namespace

CommandLineDock::CommandLineDock(CommandDriver& driver, QWidget* parent)
    : QDockWidget(tr("Command line"), parent), driver_(driver) {
  setObjectName("command_line");
  auto* body = new QWidget(this);
  auto* layout = new QVBoxLayout(body);
  layout->setContentsMargins(2, 2, 2, 2);
  history_ = new HistoryView(body);
  history_->setObjectName("history");
  history_->setReadOnly(true);
  history_->setMaximumBlockCount(kHistoryLines);
  history_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  history_->setFocusPolicy(Qt::ClickFocus);
  layout->addWidget(history_, 1);
  auto* row = new QHBoxLayout();
  prompt_ = new QLabel(body);
  prompt_->setFont(history_->font());
  line_ = new QLineEdit(body);
  line_->setObjectName("command_input");
  line_->setFont(history_->font());
  line_->installEventFilter(this);
  row->addWidget(prompt_);
  row->addWidget(line_, 1);
  layout->addLayout(row);
  setWidget(body);
  ShowPrompt(QString());
  connect(line_, &QLineEdit::returnPressed, this, &CommandLineDock::Submit);
}

void CommandLineDock::Append(const QString& text) {
  pending_ += text;
  int end = pending_.lastIndexOf('\n');
  if (end < 0) return;
  history_->appendPlainText(pending_.left(end));
  pending_ = pending_.mid(end + 1);
  history_->verticalScrollBar()->setValue(history_->verticalScrollBar()->maximum());
}

QString CommandLineDock::History() const {
  QString text = history_->toPlainText();
  if (!pending_.isEmpty()) text += '\n' + pending_;
  return text;
}

void CommandLineDock::ShowPrompt(const QString& prompt) {
  QString shown = prompt.isEmpty() ? tr("Command: ") : prompt;
  prompt_->setText(shown.trimmed());
}

void CommandLineDock::Submit() {
  const QString text = line_->text();
  line_->clear();
  if (!text.isEmpty() && (typed_.isEmpty() || typed_.back() != text)) typed_.append(text);
  typed_at_ = typed_.size();
  driver_.Type(text.toStdString());
}

bool CommandLineDock::eventFilter(QObject* watched, QEvent* event) {
  if (watched == line_ && event->type() == QEvent::KeyPress) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Escape) {
      line_->clear();
      driver_.Escape();
      return true;
    }
    if (key->key() == Qt::Key_Up || key->key() == Qt::Key_Down) {
      if (typed_.isEmpty()) return true;
      typed_at_ += key->key() == Qt::Key_Up ? -1 : 1;
      typed_at_ = std::max(0, std::min<int>(typed_at_, typed_.size()));
      line_->setText(typed_at_ < typed_.size() ? typed_[typed_at_] : QString());
      return true;
    }
  }
  return QDockWidget::eventFilter(watched, event);
}

}  // namespace veltor::workbench
