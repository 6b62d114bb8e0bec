#include <cstdio>

#include "drawing/model/document.h"

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  auto doc = veltor::model::Document::Open(argv[1]);
  if (!doc.ok()) {
    std::fprintf(stderr, "%s\n", doc.message().c_str());
    return 3;
  }
  for (auto& w : (*doc)->warnings()) std::fprintf(stderr, "warning: %s\n", w.c_str());
  if (argc > 3) {
    veltor::Status s = (*doc)->Save(argv[3]);
    if (!s.ok()) {
      std::fprintf(stderr, "%s\n", s.message().c_str());
      return 4;
    }
  }
  return 0;
}
