// Lays out an od::DialogModel as a dialog template: one window per control, top to bottom.
//
// The flow, in dialog units: a 7-unit margin; the controls other than buttons in the model's
// order, each across the whole width, with its caption (a static text) above it when it has
// one of its own (edit, combo box, list box, grid, text box; a check box and a static text
// show their label themselves), 4 units apart; under them a two-line static text that shows
// a refusal (empty until one occurs); then every button in one right-aligned row, the model's
// own buttons in their order and OK and Cancel added when the model has none of that id. The
// width is the model's requested width within [160, 600] (240 when none is given); the height
// is what the flow needs. Heights follow the content known when the dialog opens (a list box
// shows 3 to 10 items, a grid 3 to 12 rows, a text box 3 to 12 lines). Hidden controls keep
// their place, so showing them later moves nothing.
//
// Window ids: OK and Cancel are IDOK and IDCANCEL (so Enter and Esc reach them); every other
// window gets kFirstItemId + 2 * (its control's position), its caption the next id, and the
// refusal line kRefusalId. `items` says for every template item which control it shows.
#pragma once

#include <cstdint>
#include <vector>

#include "arx/dialog_template.h"
#include "od/dialog_model.h"

namespace veltor::arx {

inline constexpr uint32_t kRefusalId = 900;
inline constexpr uint32_t kFirstItemId = 1000;

enum class ItemRole {
  kWidget,   // the control itself (for OK/Cancel added by the layout: no model control)
  kCaption,  // the static text above it
  kRefusal,  // the refusal line (control_id 0)
};

struct LaidOutItem {
  int control_id = 0;  // the model's id
  ItemRole role = ItemRole::kWidget;
};

struct DialogLayout {
  TemplateDialog dialog;
  std::vector<LaidOutItem> items;  // one per dialog.items, in the same order
};

DialogLayout LayoutDialog(const od::DialogModel& model);

// The window id of a control's widget or caption; 0 when the model has no such control.
uint32_t WindowIdOf(const od::DialogModel& model, int control_id, ItemRole role);

}  // namespace veltor::arx
