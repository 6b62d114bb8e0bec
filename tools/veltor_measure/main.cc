// veltor-measure: prints the engine's geometry of every model space entity of a drawing, one
// tab-separated line each, for comparison with other programs:
//   handle type minx miny minz maxx maxy maxz length area closed
// Missing values are "-".
#include <cstdio>

#include "drawing/model/entity.h"
#include "drawing/model/entity_geometry.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: veltor-measure DRAWING\n");
    return 2;
  }
  auto doc = veltor::model::Document::Open(argv[1]);
  if (!doc.ok()) {
    std::fprintf(stderr, "veltor-measure: %s\n", doc.message().c_str());
    return 3;
  }
  const auto& d = **doc;
  for (auto id : veltor::model::ModelSpaceEntities(d)) {
    std::printf("%s\t%s", veltor::dxf::FormatHandle(d.store().at(id).handle).c_str(),
                d.TypeOf(id).c_str());
    auto e = veltor::model::EntityExtents(d, id);
    if (e)
      std::printf("\t%.17g\t%.17g\t%.17g\t%.17g\t%.17g\t%.17g", e->min().x, e->min().y, e->min().z,
                  e->max().x, e->max().y, e->max().z);
    else
      std::printf("\t-\t-\t-\t-\t-\t-");
    auto length = veltor::model::EntityLength(d, id);
    auto area = veltor::model::EntityArea(d, id);
    if (length) std::printf("\t%.17g", *length); else std::printf("\t-");
    if (area) std::printf("\t%.17g", *area); else std::printf("\t-");
    std::printf("\t%d\n", veltor::model::IsClosedCurve(d, id) ? 1 : 0);
  }
  return 0;
}
