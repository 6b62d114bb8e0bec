// veltor-workbench: the Qt desktop front end. See docs/workbench.md.
#include <QApplication>
#include <QPixmap>
#include <QString>
#include <string>
#include <vector>
#include <clocale>
#include <cstdio>
#include <cstring>

#include "workbench/drawing_view.h"
#include "workbench/main_window.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setOrganizationName("veltor");
  QApplication::setApplicationName("veltor-workbench");
  // Numbers are read and printed with "." whatever the user's locale (Qt sets it from the
  // environment).
  std::setlocale(LC_NUMERIC, "C");

  std::vector<std::string> drawings;
  std::string screenshot;
  std::string table;
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--help") == 0 || std::strcmp(argv[i], "-h") == 0) {
      std::puts("usage: veltor-workbench [--table NAME] [--screenshot PNG] [DRAWING...]");
      return 0;
    }
    if (std::strcmp(argv[i], "--table") == 0 && i + 1 < argc) {
      table = argv[++i];
      continue;
    }
    if (std::strcmp(argv[i], "--screenshot") == 0 && i + 1 < argc) {
      screenshot = argv[++i];
      continue;
    }
    drawings.push_back(argv[i]);
  }
  veltor::workbench::MainWindow window;
  for (const std::string& path : drawings) window.OpenDrawingAndReport(path);
  if (window.session().document_count() == 0) window.session().NewDocument();
  window.SyncWithSession();
  window.show();
  if (!table.empty()) window.ShowTable(table);
  if (!screenshot.empty()) {
    // Draws the window once, writes it as a picture and leaves (documentation, checks).
    QApplication::processEvents();
    window.view().ZoomExtents();
    QApplication::processEvents();
    if (!window.grab().save(QString::fromStdString(screenshot))) {
      std::fprintf(stderr, "veltor-workbench: %s: cannot be written\n", screenshot.c_str());
      return 1;
    }
    return 0;
  }
  return app.exec();
}
