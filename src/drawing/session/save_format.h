// The file formats SAVEAS offers and what saving a drawing in one of them takes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veltor::session {

struct SaveFormat {
  const char* keyword;  // as the prompt shows it: "R2000"
  const char* acadver;  // $ACADVER of the release: "AC1015"
};

// R12, R2000, R2004, R2007, R2010, R2013 and R2018, oldest first.
const std::vector<SaveFormat>& SaveFormats();

// The release name of a $ACADVER value ("AC1015" -> "R2000"); the value itself when unknown.
std::string ReleaseName(std::string_view acadver);

// The format an answer names: it matches a keyword when, lower-cased, it equals the keyword's
// beginning, and it must match exactly one (or be a whole keyword). Nullptr otherwise.
const SaveFormat* MatchSaveFormat(const std::string& answer);

enum class SavePlan {
  kAsIs,     // the drawing's own release: saved losslessly
  kUpgrade,  // an R12 drawing to R2000 or later: converted first
  kRefuse,   // anything else; `reason` says why
};
struct SaveDecision {
  SavePlan plan = SavePlan::kRefuse;
  std::string reason;
};
// What saving a drawing of release `own` in release `target` (both $ACADVER values) takes.
SaveDecision PlanSave(std::string_view own, std::string_view target);

}  // namespace veltor::session
