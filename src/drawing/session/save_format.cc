#include "drawing/session/save_format.h"

#include "od/text.h"

namespace veltor::session {

const std::vector<SaveFormat>& SaveFormats() {
  static const std::vector<SaveFormat> formats{
      {"R12", "AC1009"},   {"R2000", "AC1015"}, {"R2004", "AC1018"}, {"R2007", "AC1021"},
      {"R2010", "AC1024"}, {"R2013", "AC1027"}, {"R2018", "AC1032"}};
  return formats;
}

std::string ReleaseName(std::string_view acadver) {
  for (const SaveFormat& f : SaveFormats())
    if (acadver == f.acadver) return f.keyword;
  if (acadver == "AC1006") return "R10";
  if (acadver == "AC1012") return "R13";
  if (acadver == "AC1014") return "R14";
  return std::string(acadver);
}

const SaveFormat* MatchSaveFormat(const std::string& answer) {
  const SaveFormat* found = nullptr;
  for (const SaveFormat& f : SaveFormats()) {
    std::string keyword = f.keyword;
    for (char& c : keyword) c = static_cast<char>(c == 'R' ? 'r' : c);
    if (!od::MatchesKeyword(answer, keyword)) continue;
    if (answer.size() == keyword.size()) return &f;  // a whole keyword is never ambiguous
    if (found) return nullptr;                         // "r20" names five releases
    found = &f;
  }
  return found;
}

SaveDecision PlanSave(std::string_view own, std::string_view target) {
  if (own == target) return {SavePlan::kAsIs, ""};
  std::string cannot = "cannot save an " + std::string(own) + " drawing as " + ReleaseName(target);
  if (target < own)
    return {SavePlan::kRefuse, cannot + ": veltor does not convert drawings down"};
  if (own < "AC1012" && target >= "AC1015") return {SavePlan::kUpgrade, ""};
  return {SavePlan::kRefuse, cannot + ": veltor converts only R12 drawings to a later release; "
                                      "save it in its own release (" + ReleaseName(own) + ")"};
}

}  // namespace veltor::session
