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
    {905, "Warning: 1 record could not be written: %s\n"},
    {906, "Warning: %i records could not be written; the first: %s\n"},
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
    {1200, "Attach/detach OD"},
    {1201, "Table"},
    {1202, "Type"},
    {1203, "Values"},
    {1204, "Attach"},
    {1205, "Detach"},
    {1206, "Add from field in field"},
    {1207, "Source field"},
    {1208, "Target field"},
    {1209, "How to add"},
    {1210, "Replace the target with the source"},
    {1211, "Append the source's text to the target's"},
    {1212, "Add the source's number to the target's"},
    {1213, "Add values from OD to OD"},
    {1214, "Source table"},
    {1215, "Target table"},
    {1216, "Fields"},
    {1217, "Attach a target record where there is none"},
    {1230, "%s: choose a table."},
    {1231, "%s: choose a field."},
    {1232, "%s: \"%s\" does not convert to %s."},
    {1233, "%s: adding numbers needs an Integer or Real field."},
    {1234, "%s: choose a table other than the source table."},
    {1235, "%s: table %s has no field \"%s\"."},
    {1236, "%s: type a source field in at least one row."},
    {1250, "Warning: 1 value could not be converted and was left as it was.\n"},
    {1251, "Warning: %i values could not be converted and were left as they were.\n"},
    {1300, "Set OD from object coordinates"},
    {1301, "Set OD from object properties"},
    {1302, "Generate IDs"},
    {1303, "Set OD from text"},
    {1304, "X"},
    {1305, "Y"},
    {1306, "Z"},
    {1307, "XY from"},
    {1308, "Z from"},
    {1309, "Precision"},
    {1310, "XY precision"},
    {1311, "Z precision"},
    {1312, "Length"},
    {1313, "Area"},
    {1314, "Volume"},
    {1315, "Prefix"},
    {1316, "Suffix"},
    {1317, "First"},
    {1318, "Tolerance:"},
    {1350, "Warning: the volume of 1 3D solid was not measured: this host has no solid "
           "modeller.\n"},
    {1351, "Warning: the volumes of %i 3D solids were not measured: this host has no solid "
           "modeller.\n"},
    {1400, "Drawing to copy table definitions from"},
    {1401, "Explication report"},
    {1402, "Group by"},
    {1403, "(none)"},
    {1404, "Explication report file"},
    {1405, "CSV files (*.csv)|*.csv||"},
    {1410, "Handle"},
    {1411, "Type"},
    {1412, "Layer"},
    {1413, "Length"},
    {1414, "Area"},
    {1415, "Records"},
    {1416, "Total length"},
    {1417, "Total area"},
    {1450, "Error: unable to write %s\n"},
    {1460, "Loading table aliases from '%s'\n"},
    {1461, "Error: incorrect table alias '%s'\n"},
    {1462, "%i table aliases loaded\n"},
    {1463, "Loading field aliases from '%s'\n"},
    {1464, "Error: incorrect field alias '%s'\n"},
    {1465, "%i field aliases loaded\n"},
    {1466, "Loading value aliases from '%s'\n"},
    {1467, "Error: incorrect value alias '%s'\n"},
    {1468, "%i value aliases loaded\n"},
    {1469, "Error: duplicate destination table '%s'\n"},
    {1470, "Error: duplicate destination table(s)\n"},
    {1471, "Updated %i records with new values\n"},
    {1472, "Updated %i columns\n"},
    {1480, "VELTOR_TRANSLATE"},
    {1481, "OD name"},
    {1482, "Field"},
    {1483, "Values"},
    {1484, "Name --> Alias"},
    {1485, "Name <-- Alias"},
    {1486, "Table alias file"},
    {1487, "Field alias file"},
    {1488, "Value alias file"},
    {1500, "Select object: "},
    {1501, "Specify first break point: "},
    {1502, "Specify second break point <same point>: "},
    {1503, "the object is on a frozen, hidden, locked or off layer"},
    {1550, "Error: invalid mapping '%s'\n"},
    {1551, "Error: table %s not found\n"},
    {1552, "Error: column %s not found in table %s\n"},
    {1553, "%i attribute mappings loaded\n"},
    {1554, "Error: unable to read '%s'\n"},
    {1555, "%s\t%s\t?TableName\t?ColumnName\n"},
    {1556, "?BlockName\t?AttributeName\t%s\t%s\t?%s\n"},
    {1557, "Generated template for %i block(s), %i table(s)\n"},
    {1558, "No valid entities selected\n"},
    {1559, "Loaded %i definition(s) for %i block reference(s)\n"},
    {1560, "Loaded %i attribute(s) for %i block reference(s)\n"},
    {1561, "Text files (*.txt)|*.txt|All files (*.*)|*.*||"},
    {1562, "Attribute map file"},
    {1563, "Attribute map template"},
    {1600, "OD table"},
    {1601, "Detach selected Object Data?"},
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
