// What a batch report keeps of a worker's output.
#pragma once

#include <string>
#include <vector>

namespace veltor::console {

// The lines of a script's output that say what it did: those that begin with "Selected:",
// "Completed" or "Updated" (the counts commands print), in order, without line ends.
std::vector<std::string> ResultLines(const std::string& out);

// The first error of a worker: the first line of its standard error that is not a warning,
// else the first line of its output that begins with "Error"; empty when there is neither.
std::string FirstError(const std::string& out, const std::string& err);

}  // namespace veltor::console
