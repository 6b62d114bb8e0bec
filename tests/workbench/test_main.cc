// The workbench tests need one QApplication for the whole run; they draw on the offscreen
// platform, so no display is needed (also when the test list is read).
#include <gtest/gtest.h>

#include <QApplication>
#include <QStandardPaths>
#include <clocale>

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  // Recent files and other settings go to a test folder, not the user's.
  QStandardPaths::setTestModeEnabled(true);
  QApplication app(argc, argv);
  QApplication::setOrganizationName("veltor-tests");
  std::setlocale(LC_NUMERIC, "C");
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
