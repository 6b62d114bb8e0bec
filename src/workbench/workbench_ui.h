// The workbench's od::UiHost: dialog models through DialogWindow, message boxes through
// QMessageBox, file dialogs through QFileDialog, and palettes as dock widgets.
#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <string>

#include "od/ui_host.h"

class QWidget;

namespace veltor::workbench {

class WorkbenchUi : public od::UiHost {
 public:
  // Shows a palette the workbench knows; false for one it does not.
  using PaletteShower = std::function<bool(od::Palette&)>;
  // `parent` owns the dialogs shown (the main window); it must outlive this object.
  WorkbenchUi(QWidget* parent, PaletteShower palettes)
      : parent_(parent), palettes_(std::move(palettes)) {}

  od::DialogResult ShowModal(od::DialogModel& dialog) override;
  od::MessageAnswer MessageBox(const std::string& title, const std::string& text,
                               od::MessageButtons buttons) override;
  std::optional<std::string> OpenFileDialog(const std::string& title,
                                            const std::string& filter) override;
  std::optional<std::string> SaveFileDialog(const std::string& title, const std::string& filter,
                                            const std::string& default_name) override;
  bool ShowPalette(od::Palette& palette) override;

 private:
  QWidget* parent_;
  PaletteShower palettes_;
};

// A "Description (*.a;*.b)|*.a;*.b||" filter as QFileDialog reads it:
// "Description (*.a *.b);;...". Empty when the filter names nothing.
QString QtFileFilter(const std::string& filter);

}  // namespace veltor::workbench
