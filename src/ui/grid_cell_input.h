// How the table grid reads what a user typed into a cell, and how it names a value's type.
#pragma once

#include <string>
#include <string_view>

#include "od/value.h"

namespace veltor::ui {

// Sets `value` from `text`, keeping its type:
//   Integer    the leading decimal integer (no digits: 0)
//   Real       the leading floating-point number (no number: 0)
//   Character  the text as it stands
//   Point      x before the first comma, y between the first and the last comma, z after the
//              last one, each its leading number; "1,2,3,4" gives y 2 (read from "2,3").
//              With fewer than two commas the value stays as it was.
//   other      unchanged
// Unlike the commands' text rule there is no "*" substitution and no error.
void ParseCellInput(od::Value& value, std::string_view text);

// "integer", "real", "character", "point"; "unknown" for anything else.
const char* CellTypeName(const od::Value& value);

}  // namespace veltor::ui
