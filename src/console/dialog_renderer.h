// Any dialog model shown on the command line as a titled block of prompts, answered by a
// person or a script line by line. The text form is described in docs/console.md
// ("Dialogs").
#pragma once

#include <string>
#include <string_view>

#include "od/dialog_model.h"
#include "od/editor.h"
#include "od/text.h"

namespace veltor::console {

class DialogRenderer {
 public:
  // Prompts go through `editor` (Print and GetString only); it must outlive the renderer.
  explicit DialogRenderer(od::Editor& editor) : editor_(editor) {}

  // Runs `dialog` to its end: OnInit, one prompt per control the user can change (each change
  // followed by OnChanged), then the button prompt. Returns kOk once OnOk accepted; kCancel
  // when the answer "Cancel" was given or the editor cancelled (end of input, Esc).
  od::DialogResult Show(od::DialogModel& dialog);

 private:
  od::Editor& editor_;
};

// How a control reads on the command line (label and state, several lines for lists and
// grids); empty for buttons and invisible controls. Exposed for the palette front ends.
std::string DescribeControl(const od::Control& control);

// Keyword answers ("y" selects "Yes") follow the module's one rule.
using od::MatchesKeyword;

}  // namespace veltor::console
