// Adding one field's value into another field of the same record: replacing it, appending
// to its text, or adding to its number. The OD table palette's "Copy Values" calls
// AddFieldToField with the entities of its selected rows.
#pragma once

#include "commands/edit/write_tally.h"
#include "od/object_data.h"
#include "ui/add_value_dialog.h"

namespace veltor::commands {

struct WrittenCounts {
  WriteTally writes;  // of values (AddFieldToField) or records (CopyOdToOd)
  size_t failed = 0;  // values that did not convert and were left as they were
};

// Gives `target` the value of `source`, keeping the target's type: a value of the same type
// is copied exactly, any other through its text (ValueToText, then the target type's text
// rule, in which "*" is an ordinary character). False, with `target` unchanged, when the text
// does not convert (a Point from text that is not three numbers).
bool ConvertInto(const od::Value& source, od::Value& target);

// Puts `source` into `target` as `mode` says:
//   kReplace     the target takes the source's value (ConvertInto);
//   kAppend      the target takes its own text followed by the source's, converted back;
//   kAddNumbers  the source, converted to the target's type, is added to the target, which
//                must be Integer or Real; a sum outside the type's range does not convert.
// False, with `target` unchanged, when the result does not convert.
bool AddValue(const od::Value& source, od::Value& target, ui::AddMode mode);

// Does AddValue in every record of the choice's table on `entities` and writes the records
// back. Nothing when the table or one of its fields is missing.
WrittenCounts AddFieldToField(od::ObjectDataContainer& container, const od::EntityList& entities,
                              const ui::AddValueChoice& choice);

}  // namespace veltor::commands
