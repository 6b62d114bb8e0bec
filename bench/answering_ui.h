// A user interface for benchmarks: every dialog is answered by one function, message boxes by
// one fixed answer, file dialogs to open by the paths queued (cancelled when none is left),
// file dialogs to save are cancelled.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "od/dialog_model.h"
#include "od/ui_host.h"

namespace veltor::bench {

class AnsweringUi : public od::UiHost {
 public:
  using DialogAnswer = std::function<od::DialogResult(od::DialogModel&)>;

  AnsweringUi(DialogAnswer answer, od::MessageAnswer message_answer)
      : answer_(std::move(answer)), message_answer_(message_answer) {}

  od::DialogResult ShowModal(od::DialogModel& dialog) override {
    dialog.OnInit();
    return answer_(dialog);
  }
  od::MessageAnswer MessageBox(const std::string&, const std::string&, od::MessageButtons) override {
    return message_answer_;
  }
  std::optional<std::string> OpenFileDialog(const std::string&, const std::string&) override {
    if (files_.empty()) return std::nullopt;
    std::string path = std::move(files_.front());
    files_.pop_front();
    return path;
  }
  // The answer of the next file dialog to open.
  void NextFile(std::string path) { files_.push_back(std::move(path)); }
  std::optional<std::string> SaveFileDialog(const std::string&, const std::string&,
                                            const std::string&) override {
    return std::nullopt;
  }

  // Selects the line `item` of list or combo `id`, as a click on it does.
  static void Choose(od::DialogModel& dialog, int id, const std::string& item) {
    const std::vector<std::string>& items = dialog.Items(id);
    for (size_t i = 0; i < items.size(); ++i)
      if (items[i] == item) dialog.SetSelectedIndices(id, {static_cast<int>(i)});
    dialog.OnChanged(id);
  }

 private:
  DialogAnswer answer_;
  od::MessageAnswer message_answer_;
  std::deque<std::string> files_;
};

}  // namespace veltor::bench
