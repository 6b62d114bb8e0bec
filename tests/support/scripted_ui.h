// A user interface for tests: each dialog a command shows is answered by a script of steps
// addressed by control id (set a text, select items, check a box, edit a grid cell, press a
// button), message boxes by queued answers and file dialogs by queued paths.
//
// A step on a control the dialog lacks, or cannot be changed now (hidden, disabled, a
// display-only list), is a test failure, as are a dialog shown without a script and a script
// that leaves its dialog open. What every dialog looked like when it opened is kept.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "od/dialog_model.h"
#include "od/ui_host.h"

namespace veltor::testing {

class DialogScript {
 public:
  // Applies itself to the dialog; true when the dialog closed (with `result`). Refusals of OK
  // are added to `refusals`.
  using Step = std::function<bool(od::DialogModel&, od::DialogResult& result,
                                  std::vector<std::string>& refusals)>;

  DialogScript& SetText(int id, std::string text) {
    return Change(id, [text](od::DialogModel& d, int c) { d.SetText(c, text); });
  }
  DialogScript& Select(int id, std::vector<int> indices) {
    return Change(id, [indices](od::DialogModel& d, int c) { d.SetSelectedIndices(c, indices); });
  }
  // Selects the items with these texts; naming an item the list lacks fails the test.
  DialogScript& SelectItems(int id, std::vector<std::string> texts) {
    return Change(id, [texts](od::DialogModel& d, int c) {
      std::vector<int> indices;
      const std::vector<std::string>& items = d.Items(c);
      for (const std::string& text : texts) {
        auto at = std::find(items.begin(), items.end(), text);
        if (at == items.end()) ADD_FAILURE() << "no item \"" << text << "\" in control " << c;
        else indices.push_back(static_cast<int>(at - items.begin()));
      }
      d.SetSelectedIndices(c, indices);
    });
  }
  DialogScript& Check(int id, bool checked) {
    return Change(id, [checked](od::DialogModel& d, int c) { d.SetChecked(c, checked); });
  }
  // Edits the cell of the row whose first column reads `key`.
  DialogScript& SetCell(int id, const std::string& key, size_t column, std::string text) {
    return Change(id, [key, column, text](od::DialogModel& d, int c) {
      const od::GridRows& rows = d.Rows(c);
      for (size_t r = 0; r < rows.size(); ++r)
        if (!rows[r].empty() && rows[r][0] == key) return d.SetCell(c, r, column, text);
      ADD_FAILURE() << "no row \"" << key << "\" in grid " << c;
    });
  }
  // Presses a button; the dialog closes when the model says so. A refusal by OnOk is kept
  // (ScriptedUi::refusals) and the dialog stays open for the next steps.
  DialogScript& Press(int id) {
    steps_.push_back([id](od::DialogModel& d, od::DialogResult& result,
                         std::vector<std::string>& refusals) {
      const od::Control* button = d.Find(id);
      if (!button || button->kind != od::ControlKind::kButton || !button->enabled ||
          !button->visible) {
        ADD_FAILURE() << "no button " << id << " to press in \"" << d.title() << "\"";
        return false;
      }
      od::PressOutcome outcome = d.Press(id);
      if (!outcome.refusal.ok()) refusals.push_back(outcome.refusal.message());
      result = outcome.result;
      return outcome.closes;
    });
    return *this;
  }
  // Looks at the dialog at this point of the script.
  DialogScript& Inspect(std::function<void(const od::DialogModel&)> look) {
    steps_.push_back([look](od::DialogModel& d, od::DialogResult&, std::vector<std::string>&) {
      look(d);
      return false;
    });
    return *this;
  }

  const std::vector<Step>& steps() const { return steps_; }

 private:
  DialogScript& Change(int id, std::function<void(od::DialogModel&, int)> change) {
    steps_.push_back([id, change](od::DialogModel& d, od::DialogResult&, std::vector<std::string>&) {
      const od::Control* control = d.Find(id);
      if (!control || !control->Answerable()) {
        ADD_FAILURE() << "control " << id << " of \"" << d.title() << "\" cannot be changed";
        return false;
      }
      change(d, id);
      d.OnChanged(id);
      return false;
    });
    return *this;
  }

  std::vector<Step> steps_;
};

class ScriptedUi : public od::UiHost {
 public:
  // A dialog as it opened (after OnInit).
  struct Opened {
    std::string title;
    std::deque<od::Control> controls;
    // The control with `id`, or an empty one.
    od::Control Find(int id) const {
      for (const od::Control& c : controls)
        if (c.id == id) return c;
      return {};
    }
  };

  // The script for the next dialog shown (scripts are used in the order they were made).
  DialogScript& NextDialog() { return scripts_.emplace_back(); }
  void NextMessageAnswer(od::MessageAnswer answer) { answers_.push_back(answer); }
  void NextFile(std::optional<std::string> path) { files_.push_back(std::move(path)); }

  const std::vector<Opened>& opened() const { return opened_; }
  // Dialog scripts not used yet.
  size_t pending() const { return scripts_.size(); }
  // The messages of every OK that a dialog refused, in order.
  const std::vector<std::string>& refusals() const { return refusals_; }
  // The message boxes shown, as "title: text".
  const std::vector<std::string>& messages() const { return messages_; }

  od::DialogResult ShowModal(od::DialogModel& dialog) override {
    dialog.OnInit();
    opened_.push_back({dialog.title(), dialog.controls()});
    if (scripts_.empty()) {
      ADD_FAILURE() << "dialog \"" << dialog.title() << "\" shown without a script";
      return od::DialogResult::kCancel;
    }
    DialogScript script = std::move(scripts_.front());
    scripts_.pop_front();
    od::DialogResult result = od::DialogResult::kCancel;
    for (const DialogScript::Step& step : script.steps())
      if (step(dialog, result, refusals_)) return result;
    ADD_FAILURE() << "the script left \"" << dialog.title() << "\" open";
    return od::DialogResult::kCancel;
  }

  od::MessageAnswer MessageBox(const std::string& title, const std::string& text,
                               od::MessageButtons) override {
    messages_.push_back(title + ": " + text);
    if (answers_.empty()) {
      ADD_FAILURE() << "message box \"" << title << "\" shown without an answer";
      return od::MessageAnswer::kCancel;
    }
    od::MessageAnswer answer = answers_.front();
    answers_.pop_front();
    return answer;
  }

  std::optional<std::string> OpenFileDialog(const std::string& title, const std::string&) override {
    return NextPath(title);
  }
  std::optional<std::string> SaveFileDialog(const std::string& title, const std::string&,
                                            const std::string&) override {
    return NextPath(title);
  }

 private:
  std::optional<std::string> NextPath(const std::string& title) {
    if (files_.empty()) {
      ADD_FAILURE() << "file dialog \"" << title << "\" shown without a path";
      return std::nullopt;
    }
    std::optional<std::string> path = std::move(files_.front());
    files_.pop_front();
    return path;
  }

  std::deque<DialogScript> scripts_;
  std::deque<od::MessageAnswer> answers_;
  std::deque<std::optional<std::string>> files_;
  std::vector<Opened> opened_;
  std::vector<std::string> refusals_;
  std::vector<std::string> messages_;
};

}  // namespace veltor::testing
