// The module's user-visible strings, by id: what commands print and what dialogs show. Formats
// are printf formats printed as they stand.
//
// Three ranges: 101-180 are the command-line messages of the commands; 900-999 the
// command-line messages of the module itself (a failed or missing command, damaged records
// skipped); 1000 and up
// the titles, labels and texts of dialogs. An id means the same text in every front end, so
// a translated table replaces texts, never ids.
#pragma once

namespace veltor::od {

enum StringId : int {
  kStrUnableToOpen = 101,          // "Error: unable to open '%s'.\n"
  kStrDrawingFilter = 102,
  kStrOperationUnsuccessful = 103,
  kStrOperationCompleted = 104,
  kStrSelected = 105,              // "Selected: %i\n"
  kStrModePrompt = 106,
  kStrFirst = 107,
  kStrLast = 108,
  kStrInvalidParameters = 109,
  kStrCompleted = 110,             // "Completed: %i\n"
  kStrNoObjectsSelected = 111,
  kStrCompletedOutOf = 112,        // "Completed: %i out of %i\n"
  kStrTextFilter = 118,
  kStrSelectObjects = 119,
  kStrCompletedLengthAreaVolume = 120,
  kStrColumnNotFound = 123,
  kStrPrecisionPrompt = 124,
  kStrInvalidPrecision = 125,
  kStrWarning = 128,
  kStrTableNotFound = 131,
  kStrConversionPrecisionPrompt = 144,
  kStrField = 145,
  kStrValue = 146,
  kStrXyFirst = 152,
  kStrXyLast = 153,
  kStrXyCenter = 154,
  kStrZMin = 155,
  kStrZMax = 156,
  kStrZAverage = 157,
  kStrNoDefaultValue = 159,
  kStrStatHeader = 160,
  kStrStatObjects = 161,
  kStrStatNoOd = 162,
  kStrStatWithOd = 163,
  kStrStatDuplicated = 164,
  kStrStatMultiple = 165,
  kStrStatTable = 166,
  kStrStatUnused = 167,
  kStrCompletedRangeMultiple = 168,
  kStrCompletedRange = 169,
  kStrCompletedMultiple = 170,
  kStrDuplicateColumns = 171,
  kStrStatTitle = 175,
  kStrWithSpecificOdTitle = 176,
  kStrWithoutSpecificOdTitle = 177,
  kStrSelectReference = 179,
  kStrDetachAllWarning = 180,

  // --- messages of the module shell ---
  kStrNotAvailable = 900,            // "Error: %s is not available in this build.\n"
  kStrCommandFailed = 901,           // "Error: %s failed: %s\n" (command, reason)
  kStrCommandFailedUnknown = 902,    // "Error: %s failed.\n"
  kStrSkippedDamagedRecord = 903,    // "Warning: 1 damaged record skipped ..."
  kStrSkippedDamagedRecords = 904,   // "Warning: %i damaged records skipped ..."

  // --- dialog texts ---
  kStrDialogOk = 1000,               // "OK"
  kStrDialogCancel = 1001,           // "Cancel"
  kStrObjectDataTitle = 1002,        // "Object Data"
  kStrTablesLabel = 1003,            // "Tables"
  kStrSelectAllNothing = 1004,       // "Select all/nothing"
  kStrSimultaneous = 1005,           // "Simultaneous"
  kStrValueQueryTitle = 1006,        // "Find entities with specific OD values"
  kStrConditionsLabel = 1007,        // "Conditions"
  kStrExtendedPatterns = 1008,       // "Extended (>, <, <>, *)"
  kStrAboutTitle = 1009,             // "About veltor"
  kStrAboutText = 1010,              // the About box: version and build date ("%s", "%s")

  // --- dialog texts of the detach, remove and replace commands ---
  kStrDetachOdTitle = 1100,          // "Detach OD"
  kStrRemoveUnusedTitle = 1101,      // "Remove Unused OD"
  kStrUsedLabel = 1102,              // "Used:"
  kStrUnusedLabel = 1103,            // "Unused:"
  kStrReplaceTitle = 1104,           // "Replace OD values"
  kStrColumnsLabel = 1105,           // "Columns"
  kStrOldValueLabel = 1106,          // "Old value"
  kStrNewValueLabel = 1107,          // "New value"
  kStrReplaceArrow = 1108,           // "-->"
  kStrChooseColumns = 1109,          // refusal of OK without a column
};

// The first ids of the shell's messages and of the dialog texts.
inline constexpr int kFirstShellStringId = 900;
inline constexpr int kFirstDialogStringId = 1000;

// The text of a string id (either range); "" for an id the table does not hold.
const char* Str(int id);
// Every message id of the commands (101-180), ascending.
int StringCount();
int StringIdAt(int index);
// Every id of the shell's messages and the dialog texts (900 and up), ascending.
int DialogStringCount();
int DialogStringIdAt(int index);

}  // namespace veltor::od
