#include "console/info_report.h"

#include <map>
#include <sstream>

#include "drawing/model/entity.h"
#include "drawing/model/tables.h"
#include "drawing/objectdata/od_store.h"

namespace veltor::console {

namespace {

std::string ReleaseName(const std::string& acadver) {
  static const std::map<std::string, std::string> kReleases{
      {"AC1006", "R10"},   {"AC1009", "R11/R12"}, {"AC1012", "R13"},   {"AC1014", "R14"},
      {"AC1015", "R2000"}, {"AC1018", "R2004"},   {"AC1021", "R2007"}, {"AC1024", "R2010"},
      {"AC1027", "R2013"}, {"AC1032", "R2018"}};
  auto it = kReleases.find(acadver);
  return it == kReleases.end() ? "unknown release" : it->second;
}

void CountTypes(const model::Document& doc, const std::vector<model::RecordId>& ids,
                std::ostringstream& out) {
  std::map<std::string, size_t> counts;
  for (model::RecordId id : ids) ++counts[doc.TypeOf(id)];
  out << ids.size() << " entities";
  const char* sep = ": ";
  for (const auto& [type, n] : counts) {
    out << sep << type << " " << n;
    sep = ", ";
  }
  out << "\n";
}

}  // namespace

std::string InfoReport(const model::Document& doc) {
  std::ostringstream out;
  const auto& format = doc.store().format();
  out << "Drawing:     " << doc.path() << "\n";
  out << "DXF version: " << doc.version() << " (" << ReleaseName(doc.version()) << "), "
      << (format.binary ? "binary" : "ASCII") << "\n";
  out << "Encoding:    " << doc.codec().charset();
  if (!doc.codec().utf8()) {
    auto page = doc.HeaderVar("$DWGCODEPAGE");
    if (page && !page->empty()) out << " ($DWGCODEPAGE " << (*page)[0].value << ")";
  }
  out << "\n";
  out << "Model space: ";
  CountTypes(doc, model::ModelSpaceEntities(doc), out);
  out << "Paper space: ";
  CountTypes(doc, model::PaperSpaceEntities(doc), out);

  auto layers = model::Layers(doc);
  out << "Layers:      " << layers.size() << "\n";
  for (const auto& layer : layers) {
    out << "  " << layer.name;
    std::string states;
    if (layer.frozen) states += " frozen";
    if (layer.locked) states += " locked";
    if (layer.off) states += " off";
    if (layer.hidden) states += " hidden";
    if (!states.empty()) out << " (" << states.substr(1) << ")";
    out << "\n";
  }

  objectdata::ObjectDataStore od(const_cast<model::Document&>(doc));
  auto names = od.TableNames();
  out << "Object Data: " << names.size() << " table" << (names.size() == 1 ? "" : "s") << "\n";
  if (!names.empty()) {
    auto counts = od.RecordCounts();
    for (const auto& name : names) {
      auto def = od.GetTable(name);
      if (!def.ok()) continue;
      out << "  " << name << " (" << counts[name] << " record" << (counts[name] == 1 ? "" : "s")
          << "):";
      const char* sep = " ";
      for (const auto& c : def->columns) {
        out << sep << c.name << " " << od::TypeName(c.type);
        sep = ", ";
      }
      out << "\n";
    }
  }
  for (const auto& w : doc.warnings()) out << "Warning:     " << w << "\n";
  for (const auto& w : od.DamageReport()) out << "Warning:     " << w << "\n";
  return out.str();
}

}  // namespace veltor::console
