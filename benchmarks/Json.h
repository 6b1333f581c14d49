#pragma once

#include "benchmarks/Report.h"

// Writes the results of a run as JSON, for tools/compare-benchmarks and whatever else reads them. Seconds and
// bytes; what a figure has not is null. False when the file cannot be written.
bool WriteJson(const RunSettings& settings, const std::vector<Figure>& figures);
