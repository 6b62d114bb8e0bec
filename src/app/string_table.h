// The module's user-visible strings, by id. Formats are printf formats printed as they stand.
#pragma once

namespace veltor::app {

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
  kStrSkippedDamagedRecord = 181,   // "Warning: 1 damaged record skipped ..."
  kStrSkippedDamagedRecords = 182,  // "Warning: %i damaged records skipped ..."
};

// The text of a string id; "" for an id the table does not hold.
const char* Str(int id);
// Every id the table holds, ascending.
int StringCount();
int StringIdAt(int index);

}  // namespace veltor::app
