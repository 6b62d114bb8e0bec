#include "drawing/gis/gdal_support.h"

#include <mutex>

#include <cpl_error.h>
#include <gdal.h>

namespace veltor::gis {

void EnsureGdal() {
  static std::once_flag once;
  std::call_once(once, [] { GDALAllRegister(); });
}

GdalErrorCapture::GdalErrorCapture() {
  CPLPushErrorHandler(CPLQuietErrorHandler);
  CPLErrorReset();
}

GdalErrorCapture::~GdalErrorCapture() { CPLPopErrorHandler(); }

std::string GdalErrorCapture::Last() const {
  const char* message = CPLGetLastErrorMsg();
  return message ? message : "";
}

std::string GdalErrorCapture::Explain(const std::string& context) const {
  std::string last = Last();
  return last.empty() ? context : context + ": " + last;
}

bool IsPostgres(const std::string& target) {
  return target.size() >= 3 && (target.compare(0, 3, "PG:") == 0 || target.compare(0, 3, "pg:") == 0);
}

}  // namespace veltor::gis
