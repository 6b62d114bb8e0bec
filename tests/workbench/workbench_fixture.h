// A workbench window on the offscreen platform, and helpers that act as a person would while
// a command waits in its nested event loop.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>

#include "workbench/command_driver.h"
#include "workbench/command_line_dock.h"
#include "workbench/line_input.h"
#include "workbench/main_window.h"

namespace veltor::workbench {

class WorkbenchTest : public testing::Test {
 protected:
  void SetUp() override { window_ = std::make_unique<MainWindow>(); }
  void TearDown() override { window_.reset(); }

  MainWindow& window() { return *window_; }
  std::string History() { return window_->command_line().History().toStdString(); }

  // Runs `step` once the event loop runs next: inside the nested loop of a waiting prompt.
  static void Later(std::function<void()> step) { QTimer::singleShot(0, qApp, std::move(step)); }

  // Closes the next message box shown, keeping its text in `text`.
  static void AnswerMessageBox(std::string* text) {
    Later([text] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (!box) return;
      *text = box->text().toStdString();
      box->done(QMessageBox::Ok);
    });
  }

  // Presses `button` in the next message box shown, keeping its text in `text`.
  static void PressInMessageBox(QMessageBox::StandardButton button, std::string* text) {
    Later([button, text] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (!box || !box->button(button)) return;
      *text = box->text().toStdString();
      box->button(button)->click();
    });
  }

  std::unique_ptr<MainWindow> window_;
};

inline size_t Count(const std::string& text, const std::string& part) {
  size_t n = 0;
  for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
  return n;
}

}  // namespace veltor::workbench
