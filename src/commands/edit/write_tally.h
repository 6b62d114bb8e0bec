// What a data command wrote and what the drawing refused to take, for its closing lines.
#pragma once

#include <cstddef>
#include <string>

#include "od/host.h"
#include "od/status.h"

namespace veltor::commands {

struct WriteTally {
  size_t written = 0;
  size_t refused = 0;
  std::string reason;  // why the first refused write was refused

  // Counts one write by its outcome; true when it was written.
  bool Count(const Status& outcome) {
    if (outcome.ok()) {
      ++written;
      return true;
    }
    if (refused++ == 0) reason = outcome.message();
    return false;
  }
};

// Says how many writes the drawing refused, and why the first one was; nothing for none.
void ReportRefused(od::Host& host, const WriteTally& tally);

}  // namespace veltor::commands
