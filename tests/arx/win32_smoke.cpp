// A Win32 program that shows one dialog model through the plug-in's dialog template builder
// and renderer, without the host SDK: the dialog code linked for Windows as it is, for a
// person to run on Windows (make check-arx builds it; Linux cannot run it). It exits with 0
// when the dialog was closed with OK and the model took the answers, 1 on Cancel.
#include "arx/windows_include.h"

#include <string>

#include "arx/win32_dialog.h"
#include "od/dialog_model.h"

namespace {

using veltor::od::DialogModel;
using veltor::od::EditType;
using veltor::od::ListMode;

// Every kind of control, with non-ASCII text, and a check that refuses OK until a layer is
// chosen (so the refusal line shows).
class SampleDialog : public DialogModel {
 public:
  SampleDialog() : DialogModel("veltor \xE2\x80\x94 smoke", {260, 0}) {
    AddStaticText(10, "Every control kind; \xD0\xA1\xD0\xBB\xD0\xBE\xD0\xB9 \xF0\x9F\x98\x80");
    AddEditBox(11, "Precision:", EditType::kInteger);
    Find(11)->minimum = 0;
    Find(11)->maximum = 8;
    AddCheckBox(12, "Keep the values", true);
    AddComboBox(13, "Table:").items = {"Parcels", "Roads", "\xD0\x94\xD0\xBE\xD0\xBC\xD0\xB0"};
    AddListBox(14, "Layers:", ListMode::kMultiple).items = {"0", "WALLS", "NOTES"};
    AddGrid(15, "Fields:", {"Field", "Value"}, {false, true});
    SetRows(15, {{"NAME", "Main St"}, {"LANES", "2"}});
    AddTextBox(16, "Report:").text = "first line\nsecond line";
    AddButton(20, "Clear");
    AddButton(veltor::od::kIdOk, "OK");
    AddButton(veltor::od::kIdCancel, "Cancel");
  }

  void OnChanged(int id) override {
    if (id == 13) SetText(16, "Table chosen: " + SelectedItems(13).front());
  }
  std::optional<veltor::od::DialogResult> OnButton(int id) override {
    if (id == 20) {
      SetSelectedIndices(14, {});
      return std::nullopt;
    }
    return DialogModel::OnButton(id);
  }
  veltor::Status OnOk() override {
    if (SelectedIndices(14).empty()) return veltor::Status::Error("Layers: choose at least one");
    return veltor::Status::Ok();
  }
};

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  SampleDialog dialog;
  return veltor::arx::ShowDialog(dialog, nullptr) == veltor::od::DialogResult::kOk ? 0 : 1;
}
