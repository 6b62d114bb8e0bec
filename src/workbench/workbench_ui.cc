#include "workbench/workbench_ui.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QStringList>

#include "workbench/dialog_window.h"

namespace veltor::workbench {

namespace {

QString Q(const std::string& text) { return QString::fromStdString(text); }

}  // namespace

QString QtFileFilter(const std::string& filter) {
  // The filter alternates descriptions and pattern lists, separated by "|".
  const QStringList fields = Q(filter).split('|');
  QStringList out;
  for (int i = 0; i + 1 < fields.size(); i += 2) {
    QString description = fields[i].trimmed();
    QString patterns = fields[i + 1].trimmed();
    if (patterns.isEmpty()) continue;
    patterns.replace(';', ' ');
    // A description that already names its patterns keeps them in Qt's form.
    const int open = description.indexOf('(');
    if (open >= 0) description = description.left(open).trimmed();
    if (description.isEmpty()) description = patterns;
    out << description + " (" + patterns + ")";
  }
  return out.join(";;");
}

od::DialogResult WorkbenchUi::ShowModal(od::DialogModel& dialog) {
  DialogWindow window(dialog, parent_);
  return window.Run();
}

od::MessageAnswer WorkbenchUi::MessageBox(const std::string& title, const std::string& text,
                                          od::MessageButtons buttons) {
  QMessageBox::StandardButtons shown = QMessageBox::Ok;
  switch (buttons) {
    case od::MessageButtons::kOk: shown = QMessageBox::Ok; break;
    case od::MessageButtons::kOkCancel: shown = QMessageBox::Ok | QMessageBox::Cancel; break;
    case od::MessageButtons::kYesNo: shown = QMessageBox::Yes | QMessageBox::No; break;
    case od::MessageButtons::kYesNoCancel:
      shown = QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
      break;
  }
  QString body = Q(text);
  body.remove('\r');
  QMessageBox box(QMessageBox::Information, Q(title), body, shown, parent_);
  switch (box.exec()) {
    case QMessageBox::Ok: return od::MessageAnswer::kOk;
    case QMessageBox::Yes: return od::MessageAnswer::kYes;
    case QMessageBox::No: return od::MessageAnswer::kNo;
    default: return od::MessageAnswer::kCancel;
  }
}

std::optional<std::string> WorkbenchUi::OpenFileDialog(const std::string& title,
                                                       const std::string& filter) {
  const QString path = QFileDialog::getOpenFileName(parent_, Q(title), QString(), QtFileFilter(filter));
  if (path.isEmpty()) return std::nullopt;
  return path.toStdString();
}

std::optional<std::string> WorkbenchUi::SaveFileDialog(const std::string& title,
                                                       const std::string& filter,
                                                       const std::string& default_name) {
  const QString path =
      QFileDialog::getSaveFileName(parent_, Q(title), Q(default_name), QtFileFilter(filter));
  if (path.isEmpty()) return std::nullopt;
  return path.toStdString();
}

bool WorkbenchUi::ShowPalette(od::Palette& palette) { return palettes_ && palettes_(palette); }

}  // namespace veltor::workbench
