// Any od::DialogModel as a modal Win32 dialog, built in memory (dialog_layout.h) and run by
// DialogBoxIndirectParamW. The contract is the console's and the workbench's: OnInit once
// before the window exists; a change the user makes goes into the model through its setters,
// then OnChanged (only when the control really changed), and every window is brought up to
// the model's state again; a button is pressed through DialogModel::Press (OnButton, then
// OnOk) after the edit boxes' texts were taken in, and a refusal (of OnOk, or of an edit
// box's text) is shown above the buttons while the dialog stays open. Cancel, Esc and closing
// the window leave with kCancel without pressing anything. Grids are owner-data list views;
// a double click on an editable cell edits it in place.
#pragma once

#include "arx/windows_include.h"

#include "od/dialog_model.h"

namespace veltor::arx {

// Runs `model` modally over `owner` (may be null). kCancel also when the dialog could not be
// created.
od::DialogResult ShowDialog(od::DialogModel& model, HWND owner);

}  // namespace veltor::arx
