#include "arx/dialog_layout.h"

#include <algorithm>
#include <string>

#include "arx/win32_constants.h"

namespace veltor::arx {

namespace {

using od::Control;
using od::ControlKind;
using namespace win32;

constexpr int kMargin = 7;
constexpr int kGap = 4;
constexpr int kCaptionHeight = 8;
constexpr int kLineHeight = 8;
constexpr int kCharWidth = 4;  // an average character, in horizontal dialog units
constexpr int kEditHeight = 14;
constexpr int kCheckHeight = 10;
constexpr int kRowHeight = 9;  // a list box item or grid row
constexpr int kButtonHeight = 14;
constexpr int kButtonWidth = 50;
constexpr int kRefusalHeight = 2 * kLineHeight;
constexpr int kDefaultWidth = 240;
constexpr int kMinWidth = 160;
constexpr int kMaxWidth = 600;
constexpr int kLargest = 0x7FFF;

constexpr uint32_t kChild = kWsChild | kWsVisible;

int16_t Units(int value) { return static_cast<int16_t>(std::clamp(value, 0, kLargest)); }

// Code points of a UTF-8 text (what its width on screen roughly follows).
int CodePoints(const std::string& text) {
  int count = 0;
  for (char c : text)
    if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++count;
  return count;
}

// Lines a text takes when wrapped to `width` units.
int WrappedLines(const std::string& text, int width) {
  const int per_line = std::max(1, width / kCharWidth);
  int lines = 0;
  size_t start = 0;
  for (;;) {
    size_t end = text.find('\n', start);
    std::string line = text.substr(start, end == std::string::npos ? end : end - start);
    lines += std::max(1, (CodePoints(line) + per_line - 1) / per_line);
    if (end == std::string::npos) return lines;
    start = end + 1;
  }
}

bool HasOwnCaption(const Control& control) {
  switch (control.kind) {
    case ControlKind::kTextBox:
    case ControlKind::kEditBox:
    case ControlKind::kComboBox:
    case ControlKind::kListBox:
    case ControlKind::kGrid:
      return !control.label.empty();
    default:
      return false;
  }
}

uint32_t Common(const Control& control) {
  return (control.visible ? kChild : kWsChild) | (control.enabled ? 0u : kWsDisabled);
}

// The item that shows `control` (not a button), `width` wide; its height set, its place left to the caller.
TemplateItem Widget(const Control& control, int width) {
  TemplateItem item;
  item.cx = Units(width);
  item.style = Common(control);
  switch (control.kind) {
    case ControlKind::kStaticText:
      item.class_atom = kAtomStatic;
      item.style |= kSsLeft | kSsNoPrefix;
      item.text = control.label;
      item.cy = Units(WrappedLines(control.label, width) * kLineHeight);
      break;
    case ControlKind::kTextBox:
      item.class_atom = kAtomEdit;
      item.style |= kEsMultiline | kEsReadOnly | kEsAutoVScroll | kWsVScroll | kWsTabStop;
      item.ex_style = kWsExClientEdge;
      item.cy = Units(std::clamp(WrappedLines(control.text, width), 3, 12) * kLineHeight + 4);
      break;
    case ControlKind::kCheckBox:
      item.class_atom = kAtomButton;
      item.style |= kBsAutoCheckBox | kWsTabStop;
      item.text = control.label;
      item.cy = kCheckHeight;
      break;
    case ControlKind::kEditBox:
      item.class_atom = kAtomEdit;
      item.style |= kEsAutoHScroll | kWsTabStop;
      item.ex_style = kWsExClientEdge;
      item.cy = kEditHeight;
      break;
    case ControlKind::kComboBox: {
      item.class_atom = kAtomComboBox;
      item.style |= kCbsDropDownList | kWsVScroll | kWsTabStop;
      // A combo box's height in a template includes its dropped-down list.
      const int shown = std::clamp(static_cast<int>(control.items.size()), 4, 12);
      item.cy = Units(kEditHeight + shown * kRowHeight + 2);
      break;
    }
    case ControlKind::kListBox: {
      item.class_atom = kAtomListBox;
      item.style |= kLbsNotify | kLbsNoIntegralHeight | kWsVScroll | kWsBorder | kWsTabStop;
      if (control.list_mode == od::ListMode::kMultiple) item.style |= kLbsMultipleSel;
      if (control.list_mode == od::ListMode::kDisplayOnly) item.style |= kLbsNoSel;
      const int shown = std::clamp(static_cast<int>(control.items.size()), 3, 10);
      item.cy = Units(shown * kRowHeight + 4);
      break;
    }
    case ControlKind::kGrid: {
      item.class_name = kListViewClass;
      item.style |= kLvsReport | kLvsOwnerData | kLvsSingleSel | kLvsShowSelAlways | kWsBorder |
                    kWsTabStop;
      // The header takes about one row more.
      const int shown = std::clamp(static_cast<int>(control.rows.size()), 3, 12) + 1;
      item.cy = Units(shown * kRowHeight + 6);
      break;
    }
    case ControlKind::kButton:
      break;
  }
  return item;
}

struct ButtonChoice {
  int control_id;
  std::string label;
  uint32_t style;
};

int ButtonWidth(const std::string& label) {
  return std::max(kButtonWidth, CodePoints(label) * kCharWidth + 12);
}

// The index of a control in the model, or -1.
int PositionOf(const od::DialogModel& model, int control_id) {
  const auto& controls = model.controls();
  for (size_t i = 0; i < controls.size(); ++i)
    if (controls[i].id == control_id) return static_cast<int>(i);
  return -1;
}

bool IsOkOrCancel(int control_id) { return control_id == od::kIdOk || control_id == od::kIdCancel; }

}  // namespace

uint32_t WindowIdOf(const od::DialogModel& model, int control_id, ItemRole role) {
  const int position = PositionOf(model, control_id);
  if (role == ItemRole::kRefusal) return kRefusalId;
  if (role == ItemRole::kWidget && IsOkOrCancel(control_id)) {
    const Control* control = model.Find(control_id);
    if (!control || control->kind == ControlKind::kButton) return static_cast<uint32_t>(control_id);
  }
  if (position < 0) return 0;
  return kFirstItemId + 2 * static_cast<uint32_t>(position) + (role == ItemRole::kCaption ? 1 : 0);
}

DialogLayout LayoutDialog(const od::DialogModel& model) {
  DialogLayout layout;
  TemplateDialog& dialog = layout.dialog;
  dialog.title = model.title();
  dialog.style = kWsPopup | kWsCaption | kWsSysMenu | kDsModalFrame | kDsCenter;
  const int requested = model.size().width > 0 ? model.size().width : kDefaultWidth;
  int width = std::clamp(requested, kMinWidth, kMaxWidth);

  auto add = [&](TemplateItem item, int control_id, ItemRole role) {
    item.id = WindowIdOf(model, control_id, role);
    layout.dialog.items.push_back(std::move(item));
    layout.items.push_back({control_id, role});
  };

  // The buttons first, to know how wide their row is.
  std::vector<ButtonChoice> buttons;
  for (const Control& control : model.controls()) {
    if (control.kind != ControlKind::kButton) continue;
    uint32_t style = Common(control) | kWsTabStop;
    style |= control.id == od::kIdOk ? kBsDefPushButton : kBsPushButton;
    buttons.push_back({control.id, control.label, style});
  }
  for (int id : {od::kIdOk, od::kIdCancel}) {
    if (model.Find(id)) continue;
    const uint32_t style =
        kChild | kWsTabStop | (id == od::kIdOk ? kBsDefPushButton : kBsPushButton);
    buttons.push_back({id, id == od::kIdOk ? "OK" : "Cancel", style});
  }
  int row_width = 0;
  for (const ButtonChoice& button : buttons)
    row_width += ButtonWidth(button.label) + (row_width > 0 ? kGap : 0);
  width = std::max(width, row_width + 2 * kMargin);
  const int inner = width - 2 * kMargin;

  int y = kMargin;
  for (const Control& control : model.controls()) {
    if (control.kind == ControlKind::kButton) continue;
    if (HasOwnCaption(control)) {
      TemplateItem caption;
      caption.class_atom = kAtomStatic;
      caption.style = Common(control) | kSsLeft | kSsNoPrefix;
      caption.text = control.label;
      caption.x = kMargin;
      caption.y = Units(y);
      caption.cx = Units(inner);
      caption.cy = kCaptionHeight;
      add(std::move(caption), control.id, ItemRole::kCaption);
      y += kCaptionHeight + 2;
    }
    TemplateItem widget = Widget(control, inner);
    widget.x = kMargin;
    widget.y = Units(y);
    y += widget.cy + kGap;
    add(std::move(widget), control.id, ItemRole::kWidget);
  }

  TemplateItem refusal;
  refusal.class_atom = kAtomStatic;
  refusal.style = kChild | kSsLeft | kSsNoPrefix;
  refusal.x = kMargin;
  refusal.y = Units(y);
  refusal.cx = Units(inner);
  refusal.cy = kRefusalHeight;
  add(std::move(refusal), 0, ItemRole::kRefusal);
  y += kRefusalHeight + kGap;

  int x = width - kMargin - row_width;
  for (const ButtonChoice& choice : buttons) {
    TemplateItem button;
    button.class_atom = kAtomButton;
    button.style = choice.style;
    button.text = choice.label;
    button.x = Units(x);
    button.y = Units(y);
    button.cx = Units(ButtonWidth(choice.label));
    button.cy = kButtonHeight;
    x += button.cx + kGap;
    add(std::move(button), choice.control_id, ItemRole::kWidget);
  }
  y += kButtonHeight + kMargin;

  dialog.cx = Units(width);
  dialog.cy = Units(y);
  return layout;
}

}  // namespace veltor::arx
