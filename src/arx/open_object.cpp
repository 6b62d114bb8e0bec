#include "arx/open_object.h"

#include "arx/wide_text.h"

namespace veltor::arx {

std::string TakeHostString(ACHAR* text) {
  std::string result = Narrow(text);
  if (text) acutDelString(text);
  return result;
}

}  // namespace veltor::arx
