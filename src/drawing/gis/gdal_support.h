// What every use of GDAL here shares: registering the drivers once, and GDAL's error
// messages captured rather than printed.
#pragma once

#include <string>

namespace veltor::gis {

// Registers GDAL's drivers (once per process).
void EnsureGdal();

// While alive, GDAL's errors and warnings are kept instead of printed; Last() is the latest
// error message ("" when none since construction).
class GdalErrorCapture {
 public:
  GdalErrorCapture();
  ~GdalErrorCapture();
  GdalErrorCapture(const GdalErrorCapture&) = delete;
  GdalErrorCapture& operator=(const GdalErrorCapture&) = delete;
  std::string Last() const;
  // "context: GDAL's message" or "context" alone when GDAL said nothing.
  std::string Explain(const std::string& context) const;
};

// True for a PostgreSQL connection string ("PG:...").
bool IsPostgres(const std::string& target);

}  // namespace veltor::gis
