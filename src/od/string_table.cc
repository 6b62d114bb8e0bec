#include "od/string_table.h"

#include <iterator>

namespace veltor::od {

namespace {

struct Entry {
  int id;
  const char* text;
};

// Ordered by id.
constexpr Entry kStrings[] = {
    {101, "Error: unable to open '%s'.\n"},
    {102, "Drawings; Drawing Templates (*.dwg;*.dwt)|*.dwg;*.dwt||"},
    {103, "Error. Operation unsuccessful.\n"},
    {104, "Operation completed.\n"},
    {105, "Selected: %i\n"},
    {106, "Mode (First, Last)<First>: "},
    {107, "first"},
    {108, "last"},
    {109, "Error: invalid parameters.\n"},
    {110, "Completed: %i\n"},
    {111, "Error: no objects selected.\n"},
    {112, "Completed: %i out of %i\n"},
    {118, "Text files (*.txt)|*.txt||"},
    {119, "Select objects: "},
    {120, "Completed (Length/Area/Volume): %i/%i/%i out of %i\n"},
    {123, "Error: column not found.\n"},
    {124, "Precision [1-99]<10>: "},
    {125, "Error: invalid precision.\n"},
    {128, "Warning"},
    {131, "Error: table not found.\n"},
    {144, "Precision [0-99]<0> (> 0 - enable conversion): "},
    {145, "Field"},
    {146, "Value"},
    {152, "First"},
    {153, "Last"},
    {154, "Center"},
    {155, "Min"},
    {156, "Max"},
    {157, "Average"},
    {159, "Error: unable to retrieve default value of '%s'.\n"},
    {160, "Graphical objects with Object Data:\n"},
    {161, "Objects: %i\n"},
    {162, "Objects with no Object Data: %i\n"},
    {163, "Objects with Object Data: %i\n"},
    {164, "Objects containing duplicated Object Data: %i\n"},
    {165, "Objects containing multiple Object Data: %i\n"},
    {166, "Object Data: %i\n"},
    {167, "Unused Object Data: %i\n"},
    {168, "Completed: %i out of %i (%i out of range, %i multiple)\n"},
    {169, "Completed: %i out of %i (%i out of range)\n"},
    {170, "Completed: %i out of %i (%i multiple)\n"},
    {171, "Error: duplicate column names.\n"},
    {175, "Object Data statistics."},
    {176, "Select objects with specific OD."},
    {177, "Select objects without specific OD."},
    {179, "Select reference object: "},
    {180, "This will detach ALL tables from selected objects. Continue?\n"},
};

// Ordered by id.
constexpr Entry kDialogStrings[] = {
    {900, "Error: %s is not available in this build.\n"},
    {901, "Error: %s failed: %s\n"},
    {902, "Error: %s failed.\n"},
    {903, "Warning: 1 damaged record skipped (kept in the drawing as it is).\n"},
    {904, "Warning: %i damaged records skipped (kept in the drawing as they are).\n"},
    {1000, "OK"},
    {1001, "Cancel"},
    {1002, "Object Data"},
    {1003, "Tables"},
    {1004, "Select all/nothing"},
    {1005, "Simultaneous"},
    {1006, "Find entities with specific OD values"},
    {1007, "Conditions"},
    {1008, "Extended (>, <, <>, *)"},
    {1009, "About veltor"},
    {1010,
     "veltor %s\n"
     "Object Data tools for CAD drawings: find, select, detach, copy, compute, translate,\n"
     "summarise and exchange the attribute tables attached to drawing entities.\n"
     "\n"
     "Built %s.\n"
     "Licence: MIT (see LICENSE).\n"
     "Documentation: docs/console.md and docs/object-data-format.md in the source tree;\n"
     "type HELP at the command prompt for the list of commands.\n"},
    {1100, "Detach OD"},
    {1101, "Remove Unused OD"},
    {1102, "Used:"},
    {1103, "Unused:"},
    {1104, "Replace OD values"},
    {1105, "Columns"},
    {1106, "Old value"},
    {1107, "New value"},
    {1108, "-->"},
    {1109, "Choose a table and at least one of its columns."},
};

}  // namespace

const char* Str(int id) {
  for (const Entry& e : kStrings)
    if (e.id == id) return e.text;
  for (const Entry& e : kDialogStrings)
    if (e.id == id) return e.text;
  return "";
}

int StringCount() { return static_cast<int>(std::size(kStrings)); }
int StringIdAt(int index) { return kStrings[index].id; }
int DialogStringCount() { return static_cast<int>(std::size(kDialogStrings)); }
int DialogStringIdAt(int index) { return kDialogStrings[index].id; }

}  // namespace veltor::od
