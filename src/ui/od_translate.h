// ODTranslate: the three alias files of VELTOR_TRANSLATE and the direction to translate in.
#pragma once

#include <optional>
#include <string>

#include "od/dialog_model.h"
#include "od/ui_host.h"

namespace veltor::ui {

class ODTranslate : public od::DialogModel {
 public:
  enum : int {
    kTableFileButton = 102,
    kFieldFileButton = 103,
    kValueFileButton = 104,
    kNameToAlias = 135,
    kAliasToName = 136,
    // The frames around the three file buttons.
    kTableGroup = 202,
    kFieldGroup = 203,
    kValueGroup = 204,
  };

  enum class Direction { kNameToAlias = 0, kAliasToName = 1 };

  // File buttons ask `ui` for a file to open.
  explicit ODTranslate(od::UiHost& ui);

  // A file button asks for its file and keeps the dialog open; the two direction buttons
  // close it with OK, Cancel closes it with Cancel.
  std::optional<od::DialogResult> OnButton(int button_id) override;

  // The chosen files, full paths; "" for a file not chosen.
  const std::string& table_file() const { return table_file_; }
  const std::string& field_file() const { return field_file_; }
  const std::string& value_file() const { return value_file_; }
  Direction direction() const { return direction_; }

 private:
  // Asks for the file of `button`; a chosen file becomes the button's caption.
  void ChooseFile(int button, std::string& path);

  od::UiHost& ui_;
  std::string table_file_;
  std::string field_file_;
  std::string value_file_;
  Direction direction_ = Direction::kNameToAlias;
};

}  // namespace veltor::ui
