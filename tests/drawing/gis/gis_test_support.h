// Shared by the GIS tests: GDAL's command-line tools as an independent
// oracle, and records gathered per table for comparing drawings.
#pragma once

#include <gtest/gtest.h>

#include <unistd.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "../dxf/test_files.h"
#include "drawing/model/entity.h"
#include "drawing/objectdata/od_store.h"

namespace veltor::testing {

// Runs a shell command; returns its standard output (standard error joined), and its exit
// status in `status`.
inline std::string Shell(const std::string& command, int* status = nullptr) {
  std::string out;
  FILE* pipe = ::popen((command + " 2>&1").c_str(), "r");
  if (!pipe) return out;
  std::array<char, 4096> buffer;
  size_t n;
  while ((n = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0) out.append(buffer.data(), n);
  int rc = ::pclose(pipe);
  if (status) *status = WEXITSTATUS(rc);
  return out;
}

inline bool HaveOgrTools() { return ::access("/usr/bin/ogrinfo", X_OK) == 0 && ::access("/usr/bin/ogr2ogr", X_OK) == 0; }

// One value as exact text (reals in hexadecimal floating point), so that equal texts mean
// equal values.
inline std::string ExactText(const od::Value& v) {
  char buffer[128];
  switch (v.type()) {
    case od::ValueType::kInteger:
      return "i" + std::to_string(v.integer());
    case od::ValueType::kReal:
      std::snprintf(buffer, sizeof buffer, "r%a", v.real());
      return buffer;
    case od::ValueType::kPoint:
      std::snprintf(buffer, sizeof buffer, "p%a,%a,%a", v.point().x, v.point().y, v.point().z);
      return buffer;
    default:
      return "c" + v.text();
  }
}

// Per table, the sorted list of every record's values (one exact text per record).
inline std::map<std::string, std::vector<std::string>> RecordsByTable(model::Document& doc) {
  objectdata::ObjectDataStore store(doc);
  std::map<std::string, std::vector<std::string>> out;
  for (model::RecordId e : model::ModelSpaceEntities(doc))
    for (const od::Record& r : store.Records(e)) {
      std::string line;
      for (const od::Value& v : r.values) line += ExactText(v) + "|";
      out[r.table].push_back(line);
    }
  for (auto& [table, lines] : out) std::sort(lines.begin(), lines.end());
  return out;
}

}  // namespace veltor::testing
